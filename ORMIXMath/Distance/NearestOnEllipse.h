#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Export.h>

namespace ormix {

/// The point nearest to `point` on the ellipse with the radii a and b along the axes, both at least 0 and in either
/// order of size: on the curve, also for a point inside. Of two that are equally near, that with positive coordinates.
/// A radius of 0 makes it a segment, two make it the origin. Right to 1e-14 of the largest value. A hundred steps or
/// fewer of some operations, at most 1100 for hostile radii.
ORMIX_MATH_API PlanarPoint nearestOnEllipse(const PlanarPoint& point, omReal64 a, omReal64 b);

}  // namespace ormix
