#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <array>

namespace ormix {

/// The quadratic form xx u² + yy v² + zz w² + xy uv + xz uw + yz vw + x u + y v + z w + constant = 0 with
/// u = X - originX, v = Y - originY, w = Z - originZ. The origin is part of it since about a distant one the
/// coefficients cannot hold the surface: they lose a part epsilon · (distance / radius)² of it.
struct EllipsoidQuadric {
  omReal64 xx = 0;
  omReal64 yy = 0;
  omReal64 zz = 0;
  omReal64 xy = 0;
  omReal64 xz = 0;
  omReal64 yz = 0;
  omReal64 x = 0;
  omReal64 y = 0;
  omReal64 z = 0;
  omReal64 constant = 0;
  omReal64 originX = 0;
  omReal64 originY = 0;
  omReal64 originZ = 0;
};

/// An ellipsoid by its centre, its radii and the angles, in radians, of the rotation Rz(alpha)·Ry(beta)·Rx(chi) whose
/// columns are the directions of the axes of a, b and c.
struct EllipsoidParameters {
  omReal64 cx = 0;
  omReal64 cy = 0;
  omReal64 cz = 0;
  omReal64 a = 0;
  omReal64 b = 0;
  omReal64 c = 0;
  omReal64 alpha = 0;
  omReal64 beta = 0;
  omReal64 chi = 0;
};

/// The quadric of an ellipsoid: about its centre, negative inside, its quadratic part of norm 1. False, the quadric
/// untouched, unless the radii are positive and all is finite, or where the constant is no number of omReal64 any more
/// (radii beyond 1e154 or below 1e-154) or the radii differ by more than 1e7, which is not told from a cylinder again.
ORMIX_MATH_API bool convertEllipsoidToQuadratic(const EllipsoidParameters& ellipsoid, EllipsoidQuadric& quadric);

/// The same surface about another origin, the products summed with twice the precision and rounded once.
ORMIX_MATH_API EllipsoidQuadric quadricAbout(const EllipsoidQuadric& quadric, omReal64 originX, omReal64 originY,
                                             omReal64 originZ);

/// The ellipsoid of a quadric, given with either sign and any factor: a >= b >= c > 0.
///
/// The centre, the value there and the radii are computed with twice the precision, so the result is that of the
/// coefficients as they stand also far from the origin. Of the four rotations that describe one ellipsoid the one is
/// answered whose first two columns have a positive component of largest magnitude (the first of equals); no turn for a
/// sphere; where two radii are equal their axes are any two that are perpendicular to the third and to each other.
/// False, the output untouched, for all that is no ellipsoid with a volume: hyperboloids, cones, and to rounding
/// paraboloids and cylinders (a ratio of radii of 2.4e7), points, empty sets, coefficients that are NaN or infinite.
ORMIX_MATH_API bool convertEllipsoidFromQuadratic(const EllipsoidQuadric& quadric, EllipsoidParameters& ellipsoid);

/// \name From and to plain values
/// The ten coefficients in the order of EllipsoidQuadric, about the origin of coordinates. An ellipsoid far away from
/// it in its radii loses digits to the coefficients.
/// @{
ORMIX_MATH_API bool convertEllipsoidToQuadratic(omReal64 cx, omReal64 cy, omReal64 cz, omReal64 a, omReal64 b,
                                                omReal64 c, omReal64 alpha, omReal64 beta, omReal64 chi,
                                                std::array<omReal64, 10>& coefficients);
ORMIX_MATH_API bool convertEllipsoidFromQuadratic(const std::array<omReal64, 10>& coefficients, omReal64& cx,
                                                  omReal64& cy, omReal64& cz, omReal64& a, omReal64& b, omReal64& c,
                                                  omReal64& alpha, omReal64& beta, omReal64& chi);
/// @}

}  // namespace ormix
