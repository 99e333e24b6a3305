#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

/// \file
/// Helpers on ellipses given by their radii a, along the axis that carries the orientation, and b, across it. Nothing
/// asks for a >= b. Signs of radii are ignored (the area excepted), zero radii are flat ellipses or points, and a NaN
/// radius or angle gives NaN. Angles are radians. All are constant time.

namespace ormix {

/// Area π·a·b, multiplied in this order; no absolute value is taken.
ORMIX_MATH_API omReal64 ellipseArea(omReal64 a, omReal64 b);

/// \name Bounds of the perimeter
/// The perimeter P has no closed form, but with h = ((a − b) / (a + b))² and Ramanujan's second approximation
/// R = π (a + b) (1 + 3h / (10 + √(4 − 3h))):  R <= P <= R + π (a + b) (4/π − 14/11) h⁵, with best possible constants
/// (Villarino 2006, A Note on the Accuracy of Ramanujan's Approximative Formula for the Perimeter of an Ellipse,
/// Journal of Inequalities in Pure and Applied Mathematics 7(1), 21). Both are widened by 8 epsilon, relative, so that
/// they hold for the computed values too, and so that an R computed elsewhere lies between them. Besides that the lower
/// bound is off by at most 4.1e-4 P (flat ellipses) and the upper one by at most 1.3e-4 P; both are exact for circles,
/// the upper one for flat ellipses too. Zero when both radii are; the guarantee ends where the perimeter is no normal
/// number.
/// @{
ORMIX_MATH_API omReal64 ellipsePerimeterLowerBound(omReal64 a, omReal64 b);
ORMIX_MATH_API omReal64 ellipsePerimeterUpperBound(omReal64 a, omReal64 b);
/// @}

/// Excentricity √(1 − (m/M)²) with m the smaller and M the larger radius, whichever is a: 0 for a circle and for two
/// zero radii, 1 for a flat ellipse, never outside [0, 1]. Right to a few units in the last place also for nearly equal
/// radii.
ORMIX_MATH_API omReal64 ellipseExcentricity(omReal64 a, omReal64 b);

/// Polar radius: the distance from the centre to the boundary in the direction that makes the angle with the axis of a,
/// a·b / √((b cos)² + (a sin)²). Not the parameter of the usual parametrisation.
///
/// A flat ellipse answers its length along its axis and 0 elsewhere; angles whose sine (or cosine, when a is the zero
/// radius) is at most epsilon count as along it, since no multiple of π but 0 is a number. 0 for two zero radii,
/// whatever the angle.
ORMIX_MATH_API omReal64 ellipseRadius(omReal64 a, omReal64 b, omReal64 angle);

/// Boundary point in the sense of ellipseRadius(): the point at that distance from the centre (cx, cy) in the direction
/// theta + angle, for an ellipse whose axis of a has the direction theta, given by its cosine and sine, which entities
/// have at hand.
ORMIX_MATH_API void ellipsePoint(omReal64 cx, omReal64 cy, omReal64 a, omReal64 b, omReal64 cosTheta, omReal64 sinTheta,
                                 omReal64 angle, omReal64& x, omReal64& y);

}  // namespace ormix
