#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

#include <string_view>
#include <vector>

namespace ormix {
class BaseIArchive;
class BaseOArchive;
}  // namespace ormix

namespace ormix::geom {

/// A set of voxels, slice by slice: the pixels of the slice z are those of `rowIntersectionsColl[z - zOffset]`. Rows
/// are at constant y, runs along x.
struct RowIntersections3d {
  omUInt64 zOffset = 0;  ///< z of the first slice
  std::vector<RowIntersections> rowIntersectionsColl;

  friend bool operator==(const RowIntersections3d& a, const RowIntersections3d& b) {
    return a.zOffset == b.zOffset && a.rowIntersectionsColl == b.rowIntersectionsColl;
  }
  friend bool operator!=(const RowIntersections3d& a, const RowIntersections3d& b) { return !(a == b); }
};

/// The number of voxels, the sum over the slices of their pixels.
ORMIX_GEOMETRY_API omUInt64 getNbVoxels(const RowIntersections3d& rowIntersections);

/// \name Archive.
/// A section with "zOffset" and the section "rowIntersectionsColl", in it four numeric arrays: "startRowColl" and
/// "nbRowsColl" with a number a slice, "nbRunsColl" with a number a row of all slices, "runColl" with begin and end of
/// each run of all rows. Reading refuses arrays that do not fit each other and what `RowIntersections` would not hold.
/// @{
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const RowIntersections3d& rowIntersections);
BoolResult readItem(BaseIArchive& archive, std::string_view key, RowIntersections3d& rowIntersections);
/// @}

}  // namespace ormix::geom
