#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

/// \file
/// Shapes through the smallest number of points that determines them.
///
/// All are computed relative to one of the points, so that precision does not depend on the distance from the origin;
/// whether points are degenerate is decided relative to their spread and the rounding of their coordinates. Each
/// function returns false, the outputs untouched, when the points do not determine the shape, when a coordinate is NaN
/// or infinite, and when the result is not finite. Angles are in radians. Constant time, no allocation.

namespace ormix {

/// The circle through three points. Returns false when two coincide or all are collinear to rounding.
ORMIX_MATH_API bool circleFromPoints(omReal64 x0, omReal64 y0, omReal64 x1, omReal64 y1, omReal64 x2, omReal64 y2,
                                     omReal64& cx, omReal64& cy, omReal64& radius);

/// The line x cos theta + y sin theta = rho through two points. rho >= 0 and theta in (-pi, pi]; for a line through the
/// origin (rho = 0) theta in [0, pi). Returns false when the points coincide.
ORMIX_MATH_API bool lineFromPoints(omReal64 x0, omReal64 y0, omReal64 x1, omReal64 y1, omReal64& theta, omReal64& rho);

/// The plane n · p = rho through three points, with the unit normal
/// n = (sin theta cos phi, sin theta sin phi, cos theta).
///
/// rho >= 0, theta in [0, pi), phi in (-pi, pi]. For a plane through the origin the first nonzero one of n's components
/// z, y, x is positive. Where rho >= 0 requires the normal (0, 0, -1), theta = pi, the result is theta = phi = 0 and a
/// negative rho instead, as normalised spherical coordinates have no theta of pi. Returns false when points coincide or
/// are collinear to rounding.
ORMIX_MATH_API bool planFromPoints(omReal64 x0, omReal64 y0, omReal64 z0, omReal64 x1, omReal64 y1, omReal64 z1,
                                   omReal64 x2, omReal64 y2, omReal64 z2, omReal64& rho, omReal64& theta,
                                   omReal64& phi);

/// The plane through a point with a given normal of any length and either sign, in the form of planFromPoints(), which
/// is the same for both signs. rho is computed with the normal as rebuilt from theta and phi, so the plane contains the
/// point to rounding also where that is far from the origin. Returns false when the normal is 0.
ORMIX_MATH_API bool planFromNormal(omReal64 px, omReal64 py, omReal64 pz, omReal64 nx, omReal64 ny, omReal64 nz,
                                   omReal64& rho, omReal64& theta, omReal64& phi);

/// The sphere through four points. Returns false when they are coplanar to rounding.
ORMIX_MATH_API bool sphereFromPoints(omReal64 x0, omReal64 y0, omReal64 z0, omReal64 x1, omReal64 y1, omReal64 z1,
                                     omReal64 x2, omReal64 y2, omReal64 z2, omReal64 x3, omReal64 y3, omReal64 z3,
                                     omReal64& cx, omReal64& cy, omReal64& cz, omReal64& radius);

}  // namespace ormix
