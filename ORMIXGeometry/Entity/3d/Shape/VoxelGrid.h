#pragma once

#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>

namespace ormix::geom {

/// Voxels in space: the voxel (i, j, k) with 0 <= i < width, 0 <= j < height and 0 <= k < depth is the box of the size
/// `spacing` whose corner with the lowest coordinates is origin + (i, j, k) · spacing. Its centre has the coordinates
/// origin + (index + 0.5) · spacing as they are rounded to omReal64.
struct VoxelGrid {
  Point3dData<omReal64> origin{0, 0, 0};   ///< corner of the voxel (0, 0, 0), finite
  Point3dData<omReal64> spacing{1, 1, 1};  ///< finite, positive
  omUInt32 width = 0;                      ///< number of columns
  omUInt32 height = 0;                     ///< number of rows
  omUInt32 depth = 0;                      ///< number of slices
};

}  // namespace ormix::geom
