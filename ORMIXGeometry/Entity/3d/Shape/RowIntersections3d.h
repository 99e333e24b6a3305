#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

#include <string_view>
#include <utility>
#include <vector>

namespace ormix {
class BaseIArchive;
class BaseOArchive;
}  // namespace ormix

namespace ormix::geom {

/// A set of voxels, slice by slice: the slice z has the pixels of `rowIntersectionsColl[z - zOffset]`, and slices
/// before the first and after the last have none. Rows have constant y, runs extend along x.
struct RowIntersections3d {
  /// No slices.
  RowIntersections3d() = default;
  /// The slices from z = `firstZ` on.
  RowIntersections3d(omUInt64 firstZ, std::vector<RowIntersections> slices)
      : zOffset(firstZ), rowIntersectionsColl(std::move(slices)) {}
  RowIntersections3d(const RowIntersections3d&) = default;
  RowIntersections3d(RowIntersections3d&&) noexcept = default;
  /// When allocation fails, nothing changes.
  RowIntersections3d& operator=(const RowIntersections3d& other) { return *this = RowIntersections3d(other); }
  RowIntersections3d& operator=(RowIntersections3d&&) noexcept = default;
  ~RowIntersections3d() = default;

  omUInt64 zOffset = 0;                                ///< z of the first slice
  std::vector<RowIntersections> rowIntersectionsColl;  ///< the slices, in ascending z without gaps

  friend bool operator==(const RowIntersections3d& a, const RowIntersections3d& b) {
    return a.zOffset == b.zOffset && a.rowIntersectionsColl == b.rowIntersectionsColl;
  }
  friend bool operator!=(const RowIntersections3d& a, const RowIntersections3d& b) { return !(a == b); }
};

/// The number of voxels: the sum of the numbers of pixels of the slices.
ORMIX_GEOMETRY_API omUInt64 getNbVoxels(const RowIntersections3d& rowIntersections);

/// Writes or reads a section with "zOffset" and the section "rowIntersectionsColl", which has four numeric arrays:
/// "startRowColl" and "nbRowsColl" with one number for each slice, "nbRunsColl" with one for each row of all slices,
/// and "runColl" with begin and end of each run of all rows. Reading fails, with `rowIntersections` unchanged, when the
/// lengths of the arrays contradict each other and when `RowIntersections::setRows` refuses a slice.
/// @{
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const RowIntersections3d& rowIntersections);
BoolResult readItem(BaseIArchive& archive, std::string_view key, RowIntersections3d& rowIntersections);
/// @}

}  // namespace ormix::geom
