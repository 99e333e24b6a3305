#pragma once

#include <ORMIXMath/Distance/PlanarSegment.h>
#include <ORMIXMath/Export.h>

namespace ormix {

/// Side of the directed line from a to b on which c lies: 1 on the left (x to the right, y up), -1 on the right, 0
/// exactly on the line and when a and b are equal.
///
/// The sign is that of the exact determinant for all finite coordinates, since overflow and underflow are taken into
/// account. 0 when a coordinate is NaN or infinite. Constant time, no allocation: an error bound decides nearly every
/// call, the others are summed without rounding (Shewchuk1997), or computed in wide integers where a nonzero magnitude
/// is outside [2^-400, 2^500].
ORMIX_MATH_API int orientation(const PlanarPoint& a, const PlanarPoint& b, const PlanarPoint& c);

/// The determinant (b − a) × (c − a), twice the signed area of the triangle a, b, c, with a relative error of at most
/// 2^-48 and the exact sign, for finite coordinates whose nonzero magnitudes lie in [2^-400, 2^500]: zero exactly when
/// the points are collinear. Outside this range products may underflow or overflow. NaN when a coordinate is not
/// finite.
ORMIX_MATH_API omReal64 orientationDeterminant(const PlanarPoint& a, const PlanarPoint& b, const PlanarPoint& c);

}  // namespace ormix
