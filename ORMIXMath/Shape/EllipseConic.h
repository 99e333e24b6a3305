#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

namespace ormix {

/// The conic A u² + B uv + C v² + D u + E v + F = 0 with u = x - originX, v = y - originY.
///
/// The origin is a part of it because the coefficients about a distant origin do not determine the curve accurately:
/// the relative error is about epsilon · (distance / radius)².
struct EllipseConic {
  omReal64 a = 0;        ///< A, of u².
  omReal64 b = 0;        ///< B, of uv.
  omReal64 c = 0;        ///< C, of v².
  omReal64 d = 0;        ///< D, of u.
  omReal64 e = 0;        ///< E, of v.
  omReal64 f = 0;        ///< F, the constant.
  omReal64 originX = 0;  ///< The coordinate x where u = 0.
  omReal64 originY = 0;  ///< The coordinate y where v = 0.
};

/// The conic of the ellipse with the centre (cx, cy), the radius a in the direction theta (radians) and the radius b
/// across it. Its origin is the centre, the form is negative inside, and the largest eigenvalue of the quadratic part
/// is 1.
///
/// Returns false, the conic untouched, when a radius is not positive or a value not finite, when the larger radius
/// exceeds 1e7 times the smaller one, and when the square of the smaller radius, which is -F, is not a normal number
/// (radii below 1e-154 or above 1e154).
ORMIX_MATH_API bool conicFromEllipse(omReal64 cx, omReal64 cy, omReal64 a, omReal64 b, omReal64 theta,
                                     EllipseConic& conic);

/// The same curve about another origin. The new coefficients are computed with twice the precision and rounded once.
ORMIX_MATH_API EllipseConic conicAbout(const EllipseConic& conic, omReal64 originX, omReal64 originY);

/// The ellipse of a conic, whose coefficients may have any common factor of either sign: a >= b > 0 and theta in [0,
/// pi) radians, the direction of the axis of a, 0 for a circle. The centre and the value there are computed with twice
/// the precision, so the result is accurate for the given coefficients also where the ellipse is far from the origin.
///
/// Returns false, the outputs untouched, when the conic is not an ellipse of positive area (a hyperbola, a parabola to
/// rounding, a point, the empty set) and when a coefficient is NaN or infinite.
ORMIX_MATH_API bool ellipseFromConic(const EllipseConic& conic, omReal64& cx, omReal64& cy, omReal64& a, omReal64& b,
                                     omReal64& theta);

}  // namespace ormix
