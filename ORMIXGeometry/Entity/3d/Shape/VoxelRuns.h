#pragma once

#include <ORMIXGeometry/Entity/3d/Shape/RowIntersections3d.h>

#include <vector>

/// \file
/// Sets of voxels made of runs, and their rows as they are walked; not installed.

namespace ormix::geom::detail {

/// A run and its place.
struct VoxelRun {
  omUInt64 z;
  omUInt64 y;
  PixelRun run;

  omUInt64 layer() const { return z; }
  friend bool operator<(const VoxelRun& a, const VoxelRun& b) {
    return a.z != b.z ? a.z < b.z : a.y != b.y ? a.y < b.y : a.run.begin < b.run.begin;
  }
};

/// The set of the voxels of runs in order, with adjacent ones joined and without rows or slices that have no voxels at
/// either end. Linear in the runs, and in the slices from the first to the last.
/// @{
RowIntersections3d makeVoxels(const VoxelRun* first, const VoxelRun* last);
inline RowIntersections3d makeSet(const std::vector<VoxelRun>& runs) {
  return makeVoxels(runs.data(), runs.data() + runs.size());
}
/// @}

/// Removes slices without rows from both ends; no slice is left where none has any, and zOffset is 0.
void dropEmptySlices(RowIntersections3d& voxels);

/// The same voxels with every slice as normalized() makes it, and without slices that have no voxels at either end.
RowIntersections3d normalized(const RowIntersections3d& voxels);

/// Some runs and the index of the first of them among all runs of a set of voxels.
struct NumberedRow {
  RowIntersections::Row runs;
  omUInt32 first;

  omUInt32 indexOf(const PixelRun& run) const { return first + static_cast<omUInt32>(&run - runs.begin()); }
};

/// The rows of a set of voxels, by the index of their slice; there are none where the set has no slice or no row.
class NumberedRows {
 public:
  explicit NumberedRows(const RowIntersections3d& voxels);

  std::size_t nbSlices() const { return _voxels->rowIntersectionsColl.size(); }
  std::size_t nbRuns() const { return _firstColl.back(); }
  omUInt64 z(std::size_t slice) const { return _voxels->zOffset + slice; }
  const RowIntersections& slice(std::size_t index) const { return _voxels->rowIntersectionsColl[index]; }
  /// The number of the first run of the slice.
  omUInt32 firstRun(std::size_t slice) const { return static_cast<omUInt32>(_firstColl[slice]); }
  /// Whether the set has such a row, with runs or without.
  bool has(std::size_t slice, omUInt64 y) const {
    return slice < nbSlices() && y >= this->slice(slice).getStartRow() && y < this->slice(slice).getEndRow();
  }
  NumberedRow row(std::size_t slice, omUInt64 y) const {
    if (!has(slice, y)) return {{nullptr, nullptr}, 0};
    const RowIntersections::Row runs = this->slice(slice).getRow(y);
    return {runs, firstRun(slice) + static_cast<omUInt32>(runs.begin() - this->slice(slice).getRunColl().data())};
  }

 private:
  const RowIntersections3d* _voxels;
  std::vector<std::size_t> _firstColl;  // of each slice, and the number of all runs
};

}  // namespace ormix::geom::detail
