#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

/// \file
/// Failures that everything has in common which is given rows of runs; not installed.

namespace ormix::geom::detail {

/// A failure if a run of one row is empty, or the runs do not ascend or share pixels.
BoolResult checkRuns(const RowIntersections::Row& runs);

/// The failure of a set with too many rows, or with the last row that omUInt64 holds.
BoolResult tooManyRows();

}  // namespace ormix::geom::detail
