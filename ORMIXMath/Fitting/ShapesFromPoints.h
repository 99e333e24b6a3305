#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

/// \file
/// Shapes through as many points as determine them. All are computed relative to one of the points, so they are as
/// precise far from the origin as near it, and judge degeneracy relative to the points' own spread, at any scale. Each
/// answers false, the outputs untouched, when the points do not determine the shape, a coordinate is NaN or infinite,
/// or the result is not finite. Constant time.

namespace ormix {

/// The circle through three points; false when they coincide or are collinear to rounding.
ORMIX_MATH_API bool circleFromPoints(omReal64 x0, omReal64 y0, omReal64 x1, omReal64 y1, omReal64 x2, omReal64 y2,
                                     omReal64& cx, omReal64& cy, omReal64& radius);

/// The line x cos theta + y sin theta = rho through two points; false when they coincide. rho >= 0 and theta in
/// (-pi, pi]; through the origin (rho = 0) theta in [0, pi).
ORMIX_MATH_API bool lineFromPoints(omReal64 x0, omReal64 y0, omReal64 x1, omReal64 y1, omReal64& theta, omReal64& rho);

/// The plane n · p = rho through three points, with the unit normal n = (sin theta cos phi, sin theta sin phi, cos
/// theta); false when they coincide or are collinear to rounding. rho >= 0, theta in [0, pi), phi in (-pi, pi]; through
/// the origin the first component of n that is not zero, from z to x, is positive. A normal that would point straight
/// down points up instead and rho is negative, since theta = pi is folded to 0 where vectors are normalised.
ORMIX_MATH_API bool planFromPoints(omReal64 x0, omReal64 y0, omReal64 z0, omReal64 x1, omReal64 y1, omReal64 z1,
                                   omReal64 x2, omReal64 y2, omReal64 z2, omReal64& rho, omReal64& theta,
                                   omReal64& phi);

/// The plane through a point with a normal of any length, in the form of planFromPoints(), whatever the normal's sign:
/// the same plane has the same parameters. The point satisfies the equation with the normal as rebuilt from the angles,
/// so that rounding of these does not grow with its distance from the origin. False when the normal is 0.
ORMIX_MATH_API bool planFromNormal(omReal64 px, omReal64 py, omReal64 pz, omReal64 nx, omReal64 ny, omReal64 nz,
                                   omReal64& rho, omReal64& theta, omReal64& phi);

/// The sphere through four points; false when they are coplanar to rounding.
ORMIX_MATH_API bool sphereFromPoints(omReal64 x0, omReal64 y0, omReal64 z0, omReal64 x1, omReal64 y1, omReal64 z1,
                                     omReal64 x2, omReal64 y2, omReal64 z2, omReal64 x3, omReal64 y3, omReal64 z3,
                                     omReal64& cx, omReal64& cy, omReal64& cz, omReal64& radius);

}  // namespace ormix
