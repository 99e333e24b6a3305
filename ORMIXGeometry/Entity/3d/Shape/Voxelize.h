#pragma once

#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/RowIntersections3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelGrid.h>
#include <ORMIXGeometry/Enumeration.h>

#include <array>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <string_view>
#include <vector>

namespace ormix::geom {

/// What is inside surfaces.
enum eInsideRule {
  eIR_EvenOdd,  ///< from where a ray crosses them an odd number of times, whatever their orientations
  eIR_NonZero   ///< from where a ray leaves more often than it enters: bodies that overlap are united
};

/// A grid has at most this many rows, in all of its slices together; each takes 8 bytes, also one without voxels.
constexpr std::size_t s_maxNbGridRows = std::size_t{1} << 26;

/// The voxels of a grid whose centres are inside a mesh, a mesh with all its holes and what is in these, or several of
/// these: (x, y, z) of the result is the voxel (x, y, z) of the grid. Runs are not adjacent, and there are no rows and
/// slices without voxels at either end.
///
/// A centre on a surface counts where the body is at higher x, or at higher y where the surface is parallel to x, or at
/// higher z: of bodies that divide space exactly one has the voxel. Exact for all finite coordinates of every type and
/// size: a rounded number decides only where its error bound allows it. voxelize() of what voxelSurfaces() has made, in
/// a grid of the spacing 1 from the origin on, is the same set of voxels.
///
/// Surfaces may have any triangles, which need not share vertices, but each row of centres must leave them as often as
/// it enters them; for eIR_EvenOdd, cross them an even number of times. So one that is open is refused, unless no row
/// meets the opening: then the result is the one of every surface that closes it there. For eIR_NonZero the triangles
/// are counter-clockwise as seen from outside the body, also those of cavities.
///
/// Linear in the triangles, the slices that each extends over and the crossings of rows with triangles, of which those
/// of a slice are sorted; memory for the crossings, the rows and the runs.
/// \throw ORMIXGeometryException, logged, for a surface that is refused (the text names a row), if a coordinate is not
/// finite (the text names mesh and vertex), a mesh of a collection is null, origin or spacing of the grid are not
/// finite, the spacing is not positive or below 2^-48 of the largest coordinate, or the grid has more than
/// `s_maxNbGridRows` rows
/// @{
template <class T>
RowIntersections3d voxelize(const Mesh3d<T>& mesh, const VoxelGrid& grid, eInsideRule rule = eIR_EvenOdd);
template <class T>
RowIntersections3d voxelize(const MeshWithHoles3d<T>& mesh, const VoxelGrid& grid, eInsideRule rule = eIR_EvenOdd);
template <class T>
RowIntersections3d voxelize(const std::vector<boost::shared_ptr<MeshWithHoles3d<T>>>& meshes, const VoxelGrid& grid,
                            eInsideRule rule = eIR_EvenOdd);
/// @}

}  // namespace ormix::geom

namespace ormix {

/// Texts of eInsideRule.
template <>
struct EnumerationNames<geom::eInsideRule> {
  static constexpr std::string_view typeName = "eInsideRule";  ///< name of the enumeration
  /// Names of the enumerators, in order of their values.
  static constexpr std::array<std::string_view, 2> names{"eIR_EvenOdd", "eIR_NonZero"};
};

}  // namespace ormix
