#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/ConnectedComponents.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3dData.h>
#include <ORMIXGeometry/Entity/3d/Shape/RowIntersections3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelConnectivity.h>

#include <vector>

namespace ormix::geom {

/// The components of the voxels: to which one each run belongs, in the order of the slices and in each that of
/// `RowIntersections::getRunColl()`. They are numbered in order of their first voxel, slice by slice and row by row.
/// Nearly linear in the runs and linear in the rows, by union and find over runs.
/// \throw ORMIXGeometryException, logged, if there are 2³² - 1 runs or more
ORMIX_GEOMETRY_API RunComponents componentsOf(const RowIntersections3d& voxels, eVoxelConnectivity connectivity);

/// Each component as a set of its own, in the same order, without adjacent runs. Linear as componentsOf().
/// \throw as componentsOf()
ORMIX_GEOMETRY_API std::vector<RowIntersections3d> connectedComponents(const RowIntersections3d& voxels,
                                                                       eVoxelConnectivity connectivity);

/// Size and place of a component of voxels, of which (x, y, z) is the cube [x, x + 1) × [y, y + 1) × [z, z + 1).
struct VoxelComponent {
  omUInt64 nbVoxels = 0;           ///< the volume
  Point3dData<omReal64> centroid;  ///< mean of the voxels' centres, (x + 0.5, y + 0.5, z + 0.5) for a single one
  omUInt32 xBegin = 0;             ///< smallest column
  omUInt32 xEnd = 0;               ///< after the largest column
  omUInt64 yBegin = 0;             ///< smallest row
  omUInt64 yEnd = 0;               ///< after the largest row
  omUInt64 zBegin = 0;             ///< first slice
  omUInt64 zEnd = 0;               ///< after the last slice
};

/// Measures each component, without making it: linear in the runs and rows, and no image of labels. Sums are exact; a
/// centroid is off by the rounding of its quotient and of one addition.
/// \param components those of these voxels, from componentsOf()
/// \throw ORMIXGeometryException, logged, if there are not as many numbers as runs, or one of them is no component's
ORMIX_GEOMETRY_API std::vector<VoxelComponent> measureComponents(const RowIntersections3d& voxels,
                                                                 const RunComponents& components);

}  // namespace ormix::geom
