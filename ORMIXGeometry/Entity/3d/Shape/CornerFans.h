#pragma once

#include <ORMIXGeometry/Entity/3d/Shape/VoxelConnectivity.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>

/// \file
/// How the faces of voxels meet at a corner; not installed.

namespace ormix::geom::detail {

/// The eight voxels around a corner are numbered bx + 2·by + 4·bz, where bx is 0 for those at lower x, and so on. Bit i
/// of a pattern tells whether voxel i is in the set. The face between two of them, one behind the other along an axis,
/// has the slot 4·axis + bu + 2·bv, where u and v are the axes after it in the order x, y, z, x, y.
constexpr std::size_t faceSlot(std::size_t axis, std::size_t bu, std::size_t bv) { return 4 * axis + bu + 2 * bv; }

/// The faces between voxels and background around one corner, as fans: cycles in which each face shares an edge with
/// the next one. Each fan is a vertex of its own.
///
/// Along an edge with voxels at two opposite sides only there are four faces. They are paired so that the surface
/// passes the edge twice: with 6-connectivity each voxel has its two faces, so that the voxels are apart; with
/// 26-connectivity each of the two background voxels has them, so that the voxels are joined. Of the two passes, the
/// first is that of the owner (voxel or background) at the lower side along the first of the axes across the edge.
struct CornerFans {
  std::array<omUInt8, 12> fanOfSlot{};  ///< for each face, and 0 where there is none
  omUInt8 nbFans = 0;                   ///< 0 to 4
  omUInt8 doubleEdges = 0;  ///< bit 2·axis + (1 upwards, 0 downwards): both passes along this edge are in one fan
};

/// The fans of all patterns.
using CornerFansTable = std::array<CornerFans, 256>;

/// The table of voxels with this connectivity.
const CornerFansTable& cornerFans(eVoxelConnectivity connectivity);

}  // namespace ormix::geom::detail
