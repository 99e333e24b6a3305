#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/OpenParts.h>
#include <ORMIXGeometry/Entity/2d/Shape/PixelConnectivity.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelConnectivity.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelRuns.h>

#include <vector>

/// \file
/// Connected components of slices that arrive one after the other; not installed.

namespace ormix::geom::detail {

/// The connected components of voxels whose slices arrive one after the other, for volumes larger than memory. Held are
/// the last slice, the components that a later slice may still touch, which are those with voxels in the last one, and
/// the others until they are taken: memory does not grow with the number of slices. Time is nearly linear in the runs,
/// times at most the logarithm of the runs of a component that has parts which met in a later row or slice.
class OpenVoxelComponents {
 public:
  /// No slices yet.
  explicit OpenVoxelComponents(eVoxelConnectivity connectivity) : _connectivity(connectivity) {}

  /// Adds the next slice; the slices between the last one and this one have no voxels.
  /// \return a failure, with nothing changed, if `z` is not above the last slice or is the largest number there is
  BoolResult addSlice(omUInt64 z, const RowIntersections& slice);

  /// Takes out the components that no later slice can touch, in order of their first voxel, without adjacent runs.
  std::vector<RowIntersections3d> takeFinished() { return _parts.takeClosed(); }

  /// Takes out all components, in the same order, and forgets the slices.
  std::vector<RowIntersections3d> finish();

 private:
  template <ePixelConnectivity InSlice>
  void linkSlice(omUInt64 z, const RowIntersections& slice);
  template <ePixelConnectivity InSlice, class PartOf>
  void joinRow(const RowIntersections& slice, omUInt64 y, const RowIntersections::Row& row, PartOf partOf);
  void addRow(omUInt64 z, omUInt64 y, const RowIntersections& slice);

  eVoxelConnectivity _connectivity;
  bool _hasSlices = false;
  omUInt64 _lastZ = 0;
  RowIntersections _lastSlice;
  std::vector<std::size_t> _rowParts;  // of the row that is being added, or none
  OpenParts<VoxelRun, RowIntersections3d> _parts;
};

}  // namespace ormix::geom::detail
