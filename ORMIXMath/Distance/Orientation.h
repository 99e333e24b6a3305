#pragma once

#include <ORMIXMath/Distance/PlanarSegment.h>
#include <ORMIXMath/Export.h>

namespace ormix {

/// Side of the line from a to b on which c lies: 1 to the left (x to the right, y up), -1 to the right, 0 exactly on
/// it.
///
/// The sign is that of the exact determinant, not of a rounded one, for finite coordinates whose nonzero magnitudes lie
/// in [2^-400, 2^500]; outside, products may underflow or overflow. 0 when a coordinate is NaN. Constant time: an error
/// bound settles nearly every call, the others are summed without rounding (Shewchuk 1997, Adaptive Precision
/// Floating-Point Arithmetic and Fast Robust Geometric Predicates).
ORMIX_MATH_API int orientation(const PlanarPoint& a, const PlanarPoint& b, const PlanarPoint& c);

/// The determinant (b − a) × (c − a), twice the signed area of the triangle: right to 2^-48 of itself and, like
/// orientation(), exact in sign and zero exactly when the points are collinear. NaN when a coordinate is not finite.
ORMIX_MATH_API omReal64 orientationDeterminant(const PlanarPoint& a, const PlanarPoint& b, const PlanarPoint& c);

}  // namespace ormix
