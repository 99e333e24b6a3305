#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

/// \file
/// Functions of ellipsoids given by their radii a, b, c along three perpendicular axes, in any order of size. Signs of
/// radii are ignored, except by ellipsoidVolume(). An ellipsoid with one zero radius is flat (an ellipse), with two a
/// segment, with three a point. A NaN radius or angle gives NaN. Angles are in radians. Constant time.
///
/// Directions are given by angles (theta, phi) relative to the ellipsoid's axes: theta from the axis of c, phi about it
/// from the axis of a toward that of b. The components of the unit vector along the axes of a, b and c are therefore
/// u = sin theta cos phi, v = sin theta sin phi and w = cos theta.

namespace ormix {

/// Volume 4/3·π·a·b·c, multiplied in this order. No absolute value is taken: one or three negative radii give a
/// negative volume. Overflows or underflows only where the result does, not in intermediate products.
ORMIX_MATH_API omReal64 ellipsoidVolume(omReal64 a, omReal64 b, omReal64 c);

/// Surface area 4π·R_G(a²b², a²c², b²c²) with Carlson's completely symmetric elliptic integral of the second kind
/// (Carlson1995), right to 2 units in the last place at every ratio and scale. For a flat ellipsoid the area of both
/// sides, 2π·a·b for c = 0. Zero when two radii are zero, even for an infinite third; otherwise infinite when a radius
/// is.
ORMIX_MATH_API omReal64 ellipsoidArea(omReal64 a, omReal64 b, omReal64 c);

/// Excentricity √(1 − (m/M)²) of the section through the axes of the smallest radius m and the largest radius M, in
/// [0, 1]: 0 for a sphere and for three zero radii, 1 for a flat ellipsoid. See ellipseExcentricity().
ORMIX_MATH_API omReal64 ellipsoidExcentricity(omReal64 a, omReal64 b, omReal64 c);

/// Polar radius 1 / √((u/a)² + (v/b)² + (w/c)²): the distance from the centre to the surface in the direction (theta,
/// phi) relative to the ellipsoid's axes. These angles are not parameters of (a sin s cos t, b sin s sin t, c cos s).
/// The distance does not depend on the rotation.
///
/// For a flat ellipsoid, the radius of its ellipse for directions in its plane and 0 otherwise; for a segment, its
/// larger radius along its axis and 0 otherwise; for a point 0. A component of the direction along an axis of zero
/// radius counts as zero when it is at most epsilon, since most multiples of π/2 are not exactly representable.
ORMIX_MATH_API omReal64 ellipsoidRadius(omReal64 a, omReal64 b, omReal64 c, const Matrix3x3& rotation, omReal64 theta,
                                        omReal64 phi);

/// The surface point (x, y, z) = centre + rotation · radius · (u, v, w) at the distance ellipsoidRadius() from the
/// centre. The columns of the rotation are the directions of the axes of a, b and c in space.
ORMIX_MATH_API void ellipsoidPoint(omReal64 cx, omReal64 cy, omReal64 cz, omReal64 a, omReal64 b, omReal64 c,
                                   const Matrix3x3& rotation, omReal64 theta, omReal64 phi, omReal64& x, omReal64& y,
                                   omReal64& z);

}  // namespace ormix
