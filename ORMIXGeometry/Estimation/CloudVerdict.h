#pragma once

#include <ORMIXGeometry/Estimation/PairVerdict.h>
#include <ORMIXMath/Estimation/SampleView.h>

/// \file
/// Why a cloud of points does not determine an entity; not installed.

namespace ormix::geom::detail {

/// Whether points of the plane or of space are one point, on one line or, of space, in one plane, to rounding of their
/// coordinates; `otherwise` where they are not. O(points); nothing is allocated.
PairVerdict cloudVerdict(const SampleView& points, eEstimationCode otherwise);

}  // namespace ormix::geom::detail
