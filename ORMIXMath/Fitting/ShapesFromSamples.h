#pragma once

#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Export.h>
#include <ORMIXMath/Shape/EllipsoidQuadric.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>

/// \file
/// Algebraic least-squares fits of shapes to any number of points.
///
/// Coordinates are shifted and scaled to the cloud of points, and for ellipses sheared where the cloud is long and
/// narrow; the rows of the linear system are folded into a triangle (TallQr), whose singular value decomposition gives
/// the shape and the rank. Translated or scaled samples therefore give a translated or scaled shape, to rounding.
///
/// Samples have dimension 2 (3 for sphere and ellipsoid), which is not checked. Each function returns false, the shape
/// untouched, when the samples do not determine the shape. `rank` is always set, to the rank of the system, and is 0
/// when there are no samples or a sample is NaN or infinite. One pass over the samples, a second one where many of them
/// coincide: O(samples), no allocation.

namespace ormix {

/// The circle that minimises the sum of ((x - cx)² + (y - cy)² - radius²)²: the least-squares solution of the system
/// with the rows (2x, 2y, 1 | x² + y²) (Kasa1976). Returns false for a rank below 3.
ORMIX_MATH_API bool circleFromSamples(const SampleView& samples, omReal64& cx, omReal64& cy, omReal64& radius,
                                      std::size_t& rank);

/// The sphere as circleFromSamples(), from the rows (2x, 2y, 2z, 1 | x² + y² + z²). Returns false for a rank below 4.
ORMIX_MATH_API bool sphereFromSamples(const SampleView& samples, omReal64& cx, omReal64& cy, omReal64& cz,
                                      omReal64& radius, std::size_t& rank);

/// The ellipse whose conic A x² + B xy + C y² + D x + E y + F = 0 minimises the sum of squares of the left-hand side
/// under A² + B²/2 + C² = 1 (Bookstein1979; solved as in Gander1994). The constraint is invariant to translation and
/// rotation and admits conics through the origin.
///
/// The radii are a >= b > 0; theta, in [0, pi) radians, is the direction of the axis of a, 0 for a circle. `rank` is
/// that of the system with six columns: the conic is unique for 5 and 6. Returns false for a rank below 5, and when the
/// conic is not an ellipse.
ORMIX_MATH_API bool ellipseFromSamples(const SampleView& samples, omReal64& cx, omReal64& cy, omReal64& a, omReal64& b,
                                       omReal64& theta, std::size_t& rank);

/// The ellipsoid as ellipseFromSamples(), from the quadric of EllipsoidQuadric under the constraint
/// xx² + yy² + zz² + (xy² + xz² + yz²)/2 = 1, in the form of convertEllipsoidFromQuadratic().
///
/// `rank` is that of the system with ten columns: the quadric is unique for 9 and 10; coplanar samples have rank 6,
/// collinear ones 3. Nine samples in general position determine the quadric through them. Returns false for a rank
/// below 9, and when the quadric is not an ellipsoid.
ORMIX_MATH_API bool ellipsoidFromSamples(const SampleView& samples, EllipsoidParameters& ellipsoid, std::size_t& rank);

}  // namespace ormix
