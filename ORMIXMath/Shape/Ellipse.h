#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

/// \file
/// Functions of ellipses given by their radii: a along the axis whose direction is the ellipse's orientation, and b
/// along the other axis, in either order of size. Signs of radii are ignored, except by ellipseArea(). An ellipse with
/// one zero radius is flat (a segment), one with two is a point. A NaN radius or angle gives NaN. Angles are in
/// radians. Constant time.

namespace ormix {

/// Area π·a·b, multiplied in this order. No absolute value is taken: radii of opposite signs give a negative area.
ORMIX_MATH_API omReal64 ellipseArea(omReal64 a, omReal64 b);

/// \name Bounds of the perimeter
/// The perimeter P has no closed form. With h = ((a − b) / (a + b))² and Ramanujan's second approximation
/// (Ramanujan1914) R = π (a + b) (1 + 3h / (10 + √(4 − 3h))), the bounds R <= P <= R + π (a + b) (4/π − 14/11) h⁵ hold
/// with best possible constants (Villarino2006).
///
/// Both are widened by 8 epsilon, relative, so that they hold in spite of rounding and an R computed elsewhere lies
/// between them. Apart from that the lower bound differs from P by at most 4.1e-4 P (at flat ellipses) and the upper
/// one by at most 1.3e-4 P; both are exact for circles, the upper one also for flat ellipses. Zero when both radii are
/// zero. Not guaranteed where the perimeter is subnormal or overflows.
/// @{

/// A value that is not larger than the perimeter, in the unit of the radii.
ORMIX_MATH_API omReal64 ellipsePerimeterLowerBound(omReal64 a, omReal64 b);
/// A value that is not smaller than the perimeter, in the unit of the radii.
ORMIX_MATH_API omReal64 ellipsePerimeterUpperBound(omReal64 a, omReal64 b);
/// @}

/// Excentricity √(1 − (m/M)²) with m the smaller and M the larger radius, in [0, 1]: 0 for a circle and for two zero
/// radii, 1 for a flat ellipse. Right to a few units in the last place also for nearly equal radii.
ORMIX_MATH_API omReal64 ellipseExcentricity(omReal64 a, omReal64 b);

/// Polar radius a·b / √((b cos)² + (a sin)²): the distance from the centre to the boundary in the direction at the
/// given angle to the axis of a. This angle is not the parameter t of (a cos t, b sin t).
///
/// For a flat ellipse, its larger radius along its axis and 0 in other directions; an angle counts as along the axis
/// when its sine (its cosine where a is zero) is at most epsilon, since multiples of π are not exactly representable. 0
/// for two zero radii.
ORMIX_MATH_API omReal64 ellipseRadius(omReal64 a, omReal64 b, omReal64 angle);

/// The boundary point (x, y) at the distance ellipseRadius() from the centre (cx, cy) in the direction theta + angle.
/// The direction theta of the axis of a is given by its cosine and sine, which entities store.
ORMIX_MATH_API void ellipsePoint(omReal64 cx, omReal64 cy, omReal64 a, omReal64 b, omReal64 cosTheta, omReal64 sinTheta,
                                 omReal64 angle, omReal64& x, omReal64& y);

}  // namespace ormix
