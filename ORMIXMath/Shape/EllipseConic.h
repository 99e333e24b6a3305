#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

namespace ormix {

/// The quadratic form A u² + B uv + C v² + D u + E v + F = 0 with u = x - originX, v = y - originY. The origin is part
/// of it since about a distant one the coefficients cannot hold the curve: they lose a part epsilon · (distance /
/// radius)² of it.
struct EllipseConic {
  omReal64 a = 0;
  omReal64 b = 0;
  omReal64 c = 0;
  omReal64 d = 0;
  omReal64 e = 0;
  omReal64 f = 0;
  omReal64 originX = 0;
  omReal64 originY = 0;
};

/// The conic of the ellipse with the centre (cx, cy) and the radii a, along the direction theta, and b: about the
/// centre, positive inside F's sign reversed, the largest of A and C about 1. False, the conic untouched, unless the
/// radii are positive and all is finite, or where F is no number of omReal64 any more (radii beyond 1e154 or below
/// 1e-154) or the radii differ by more than 1e7.
ORMIX_MATH_API bool conicFromEllipse(omReal64 cx, omReal64 cy, omReal64 a, omReal64 b, omReal64 theta,
                                     EllipseConic& conic);

/// The same curve about another origin, the products summed with twice the precision and rounded once.
ORMIX_MATH_API EllipseConic conicAbout(const EllipseConic& conic, omReal64 originX, omReal64 originY);

/// The ellipse of a conic, given with either sign and any factor: a >= b > 0 and theta in [0, pi), 0 for a circle. The
/// centre and the value there are computed with twice the precision, so the result is that of the coefficients as they
/// stand also far from the origin. False, the outputs untouched, for all that is no ellipse with a positive area:
/// hyperbolas and parabolas to rounding, points, empty sets, coefficients that are NaN or infinite.
ORMIX_MATH_API bool ellipseFromConic(const EllipseConic& conic, omReal64& cx, omReal64& cy, omReal64& a, omReal64& b,
                                     omReal64& theta);

}  // namespace ormix
