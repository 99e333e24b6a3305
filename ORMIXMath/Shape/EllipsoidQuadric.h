#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>

namespace ormix {

/// The quadric xx u² + yy v² + zz w² + xy uv + xz uw + yz vw + x u + y v + z w + constant = 0 with u = X - originX,
/// v = Y - originY, w = Z - originZ.
///
/// The origin is a part of it because the coefficients about a distant origin do not determine the surface accurately:
/// the relative error is about epsilon · (distance / radius)².
struct EllipsoidQuadric {
  omReal64 xx = 0;        ///< Coefficient of u².
  omReal64 yy = 0;        ///< Coefficient of v².
  omReal64 zz = 0;        ///< Coefficient of w².
  omReal64 xy = 0;        ///< Coefficient of uv.
  omReal64 xz = 0;        ///< Coefficient of uw.
  omReal64 yz = 0;        ///< Coefficient of vw.
  omReal64 x = 0;         ///< Coefficient of u.
  omReal64 y = 0;         ///< Coefficient of v.
  omReal64 z = 0;         ///< Coefficient of w.
  omReal64 constant = 0;  ///< The constant.
  omReal64 originX = 0;   ///< The coordinate X where u = 0.
  omReal64 originY = 0;   ///< The coordinate Y where v = 0.
  omReal64 originZ = 0;   ///< The coordinate Z where w = 0.
};

/// An ellipsoid by its centre, its radii and the angles, in radians, of the rotation Rz(alpha)·Ry(beta)·Rx(chi), whose
/// columns are the directions of the axes of a, b and c; see EulerAngles.
struct EllipsoidParameters {
  omReal64 cx = 0;     ///< First coordinate of the centre.
  omReal64 cy = 0;     ///< Second coordinate of the centre.
  omReal64 cz = 0;     ///< Third coordinate of the centre.
  omReal64 a = 0;      ///< Radius along the first axis.
  omReal64 b = 0;      ///< Radius along the second axis.
  omReal64 c = 0;      ///< Radius along the third axis.
  omReal64 alpha = 0;  ///< Angle about z, applied last.
  omReal64 beta = 0;   ///< Angle about y.
  omReal64 chi = 0;    ///< Angle about x, applied first.
};

/// The quadric of an ellipsoid. Its origin is the centre, the form is negative inside, and the largest eigenvalue of
/// its quadratic part is 1.
///
/// Returns false, the quadric untouched, when a radius is not positive or a value not finite, when the largest radius
/// exceeds 1e7 times the smallest one (convertEllipsoidFromQuadratic() could not tell the surface from a cylinder), and
/// when the square of the smallest radius, the constant, is not a normal number (radii below 1e-154 or above 1e154).
ORMIX_MATH_API bool convertEllipsoidToQuadratic(const EllipsoidParameters& ellipsoid, EllipsoidQuadric& quadric);

/// The same surface about another origin. The new coefficients are computed with twice the precision and rounded once.
ORMIX_MATH_API EllipsoidQuadric quadricAbout(const EllipsoidQuadric& quadric, omReal64 originX, omReal64 originY,
                                             omReal64 originZ);

/// The ellipsoid of a quadric, whose coefficients may have any common factor of either sign: a >= b >= c > 0.
///
/// The centre, the value there and the radii are computed with twice the precision, so the result is accurate for the
/// given coefficients also where the ellipsoid is far from the origin. Of the four rotations that describe one
/// ellipsoid, the result is the one whose first two columns have a positive component of largest magnitude (the first
/// of equals). For a sphere all angles are 0. The axes of two equal radii are any two perpendicular to each other and
/// to the third.
///
/// Returns false, the output untouched, when the quadric is not an ellipsoid of positive volume (a hyperboloid, a cone,
/// to rounding a paraboloid or a cylinder, which is at a ratio of radii of 2.4e7, a point, the empty set) and when a
/// coefficient is NaN or infinite.
ORMIX_MATH_API bool convertEllipsoidFromQuadratic(const EllipsoidQuadric& quadric, EllipsoidParameters& ellipsoid);

/// \name Coefficients about the origin of coordinates
/// `coefficients` are xx, yy, zz, xy, xz, yz, x, y, z, constant of EllipsoidQuadric with the origin 0. The distance of
/// the centre from the origin, relative to the radii, costs precision as described there. Returned values as above.
/// @{

/// The coefficients of an ellipsoid; false also when one of them is not finite.
ORMIX_MATH_API bool convertEllipsoidToQuadratic(omReal64 cx, omReal64 cy, omReal64 cz, omReal64 a, omReal64 b,
                                                omReal64 c, omReal64 alpha, omReal64 beta, omReal64 chi,
                                                std::array<omReal64, 10>& coefficients);
/// The ellipsoid of coefficients.
ORMIX_MATH_API bool convertEllipsoidFromQuadratic(const std::array<omReal64, 10>& coefficients, omReal64& cx,
                                                  omReal64& cy, omReal64& cz, omReal64& a, omReal64& b, omReal64& c,
                                                  omReal64& alpha, omReal64& beta, omReal64& chi);
/// @}

}  // namespace ormix
