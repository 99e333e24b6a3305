#pragma once

#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>

/// \file
/// How far points reach along their principal axes; not installed.

namespace ormix::detail {

/// The extents of points about their mean: roots of the sums of squares along the principal axes, descending, the third
/// one 0 in the plane. All are 0 where a coordinate is not finite. Computed from the triangle of a QR decomposition, so
/// that the least is right to the rounding of the largest. O(points); nothing is allocated.
/// \param points of dimension 2 or 3, at least one
/// \param largest the largest magnitude of a coordinate
ORMIX_MATH_API std::array<omReal64, 3> cloudExtents(const SampleView& points, omReal64& largest);

}  // namespace ormix::detail
