#pragma once

#include "../Frame/Arrays.h"

#include <ORMIXGeometry/Entity/3d/Shape/RowIntersections3d.h>

/// \file
/// Sets of pixels and voxels from and to arrays of their runs.

namespace ormix::python {

/// The runs of all rows, one array row `[y, begin, end]` each, in order.
py::array_t<omInt64> runsOf(const geom::RowIntersections& pixels);
/// The runs of all slices, one array row `[z, y, begin, end]` each, in order.
py::array_t<omInt64> runsOf(const geom::RowIntersections3d& voxels);

/// The set of pixels or voxels of runs in any order, without empty rows or slices at its ends.
/// \throw py::type_error, py::value_error for what is not an array of integers of 3 or 4 columns, and for numbers out of
/// range; `Error` for runs that are empty or share pixels
/// @{
geom::RowIntersections pixelsOfRuns(const py::handle& runs);
geom::RowIntersections3d voxelsOfRuns(const py::handle& runs);
/// @}

/// The most rows of a set that Python makes, those without runs included: each takes memory, however few runs there
/// are.
constexpr omUInt64 s_mostRows = omUInt64{1} << 28;

}  // namespace ormix::python
