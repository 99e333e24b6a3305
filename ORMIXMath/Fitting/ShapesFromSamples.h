#pragma once

#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Export.h>
#include <ORMIXMath/Shape/EllipsoidQuadric.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>

/// \file
/// Algebraic least-squares shapes of any number of points, in one pass over contiguous samples and without allocation:
/// coordinates shifted and scaled to the cloud, for ellipses also laid along it where it is flat, rows folded into a
/// triangle (TallQr), singular values of that. The answers therefore move with the data and scale with it, as far as
/// double precision allows. Samples have dimension 2 (3 for sphere and ellipsoid), not checked. Each answers false, the
/// shape untouched, when the samples do not determine it; `rank` tells what they do determine and is 0 when a sample is
/// NaN or infinite. O(samples).

namespace ormix {

/// The circle that minimises the sum of ((x - cx)² + (y - cy)² - r²)²: the system with the rows (2x, 2y, 1 | x² + y²)
/// (Kåsa 1976). False for a rank below 3.
ORMIX_MATH_API bool circleFromSamples(const SampleView& samples, omReal64& cx, omReal64& cy, omReal64& radius,
                                      std::size_t& rank);

/// The sphere likewise, rows (2x, 2y, 2z, 1 | x² + y² + z²). False for a rank below 4.
ORMIX_MATH_API bool sphereFromSamples(const SampleView& samples, omReal64& cx, omReal64& cy, omReal64& cz,
                                      omReal64& radius, std::size_t& rank);

/// The ellipse whose conic A x² + B xy + C y² + D x + E y + F = 0 minimises the sum of squares of that expression under
/// A² + B²/2 + C² = 1, a constraint that moves and turns with the data and admits conics through the origin (Bookstein
/// 1979; solved as in Gander, Golub and Strebel 1994). a >= b > 0, theta in [0, pi) is the direction of a, 0 for a
/// circle. `rank` is that of the system with six columns: 5 or 6 where the conic is unique. False below, and when the
/// conic is not an ellipse.
ORMIX_MATH_API bool ellipseFromSamples(const SampleView& samples, omReal64& cx, omReal64& cy, omReal64& a, omReal64& b,
                                       omReal64& theta, std::size_t& rank);

/// The ellipsoid likewise, of the quadric with xx² + yy² + zz² + (xy² + xz² + yz²)/2 = 1, in the form of
/// convertEllipsoidFromQuadratic(). The system has ten columns and never fewer than ten rows: below ten samples those
/// that are missing are zeros, which leave the quadric through nine as it is. `rank` is 9 or 10 where the quadric is
/// unique, 6 for coplanar and 3 for collinear samples. False below 9, and when the quadric is not an ellipsoid.
ORMIX_MATH_API bool ellipsoidFromSamples(const SampleView& samples, EllipsoidParameters& ellipsoid, std::size_t& rank);

}  // namespace ormix
