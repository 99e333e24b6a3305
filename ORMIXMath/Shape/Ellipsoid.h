#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

/// \file
/// Helpers on ellipsoids given by their radii a, b, c along three perpendicular axes. Nothing asks for an order of the
/// radii. Signs of radii are ignored (the volume excepted), zero radii are flat ellipsoids, needles or points, and a
/// NaN radius or angle gives NaN. Angles are radians. All are constant time.
///
/// Directions are angles (theta, phi) in the ellipsoid's own axes, as an ellipse's angle is relative to its axis: theta
/// from the axis of c, phi about it from the axis of a toward that of b, so the direction
/// a: sin theta cos phi, b: sin theta sin phi, c: cos theta.

namespace ormix {

/// Volume 4/3·π·a·b·c, multiplied in this order; no absolute value is taken. Infinite or zero only where the product
/// is beyond the range, whatever its parts are.
ORMIX_MATH_API omReal64 ellipsoidVolume(omReal64 a, omReal64 b, omReal64 c);

/// Surface area 4π·R_G(a²b², a²c², b²c²) with Carlson's completely symmetric integral of the second kind (Carlson1995),
/// taken of quotients of the radii: at most 2 units in the last place wrong at every ratio and scale. Both sides of a
/// flat ellipsoid (2π·a·b for c = 0), 0 when two radii are, also for an infinite third; else infinite when a radius is.
ORMIX_MATH_API omReal64 ellipsoidArea(omReal64 a, omReal64 b, omReal64 c);

/// Excentricity of the section through the largest and the smallest radius, √(1 − (m/M)²): 0 for a sphere and for three
/// zero radii, 1 for a flat one, independent of the third radius. See ellipseExcentricity().
ORMIX_MATH_API omReal64 ellipsoidExcentricity(omReal64 a, omReal64 b, omReal64 c);

/// Polar radius: the distance from the centre to the surface in the direction (theta, phi) of the ellipsoid's own axes,
/// 1 / √((u/a)² + (v/b)² + (w/c)²) for the unit vector (u, v, w). Not the parameters of the usual parametrisation. The
/// matrix, which turns the axes into space, moves the point but not its distance.
///
/// A flat ellipsoid answers the radius of its ellipse in its plane and 0 elsewhere, a needle its length along its axis;
/// components of the direction up to epsilon count as zero there, since few angles have sines that are. 0 for three
/// zero radii.
ORMIX_MATH_API omReal64 ellipsoidRadius(omReal64 a, omReal64 b, omReal64 c, const Matrix3x3& rotation, omReal64 theta,
                                        omReal64 phi);

/// Surface point in the sense of ellipsoidRadius(): centre + rotation · radius · (u, v, w). The columns of the rotation
/// are the directions of the axes of a, b and c in space.
ORMIX_MATH_API void ellipsoidPoint(omReal64 cx, omReal64 cy, omReal64 cz, omReal64 a, omReal64 b, omReal64 c,
                                   const Matrix3x3& rotation, omReal64 theta, omReal64 phi, omReal64& x, omReal64& y,
                                   omReal64& z);

}  // namespace ormix
