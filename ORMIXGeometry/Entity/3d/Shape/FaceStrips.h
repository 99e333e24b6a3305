#pragma once

#include <ORMIXGeometry/Entity/3d/Shape/VoxelBackground.h>

#include <vector>

/// \file
/// The faces of rows of voxels towards the background, as strips along x; not installed.

namespace ormix::geom::detail {

/// Faces of neighbouring voxels of a row towards one component of the background: those of the voxels [begin, end), or
/// for the axis x the one at x = begin = end.
struct FaceStrip {
  omUInt8 axis;  ///< 0 to 2: x, y, z
  bool isUpper;  ///< whether the background is above the voxels along the axis
  omUInt32 begin;
  omUInt32 end;
  omUInt32 shell;  ///< the boundary, see FaceStrips
};

/// Lists the faces of rows. The boundary around the component of voxels c has the number c; that of the component of
/// the background b > 0, which is a cavity, the number nbComponents + b - 1.
class FaceStrips {
 public:
  FaceStrips(const NumberedRows& rows, eVoxelConnectivity connectivity, RunComponents components);

  std::size_t nbShells() const { return _components.nbComponents + _background.nbComponents - 1; }
  std::size_t nbExteriors() const { return _components.nbComponents; }
  /// The component of the background around the component of voxels.
  omUInt32 surrounding(std::size_t component) const { return _surroundings[component]; }
  /// The component of voxels around a cavity.
  omUInt32 enclosingOf(std::size_t background) const { return _enclosing[background]; }

  /// Replaces `strips` by those of a row, in ascending order for each side.
  void collect(std::size_t slice, omUInt64 y, std::vector<FaceStrip>& strips) const;

 private:
  void collectSide(const NumberedRow& row, const NumberedRow& neighbour, FaceStrip strip,
                   std::vector<FaceStrip>& strips) const;
  omUInt32 shellOf(omUInt32 run, omUInt32 background) const;

  const NumberedRows& _rows;
  RunComponents _components;
  VoxelBackground _background;
  std::vector<omUInt32> _surroundings;
  std::vector<omUInt32> _enclosing;
};

}  // namespace ormix::geom::detail
