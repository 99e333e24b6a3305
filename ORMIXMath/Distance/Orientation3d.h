#pragma once

#include <ORMIXMath/Distance/SpatialSegment.h>
#include <ORMIXMath/Export.h>

namespace ormix {

/// Side of the plane through a, b and c on which d lies: 1 on the side of (b − a) × (c − a), from which a, b, c are
/// counter-clockwise; -1 on the other side; 0 exactly in the plane and when a, b and c are collinear.
///
/// The sign is that of the exact determinant |b − a, c − a, d − a| for all finite coordinates, since overflow and
/// underflow are taken into account. 0 when a coordinate is NaN or infinite. Constant time, no allocation: an error
/// bound decides nearly every call (Shewchuk1997) and arithmetic of twice the precision most calls with coplanar points
/// of rounded coordinates; the others are computed in integers of the smallest sufficient width, 128 bits for
/// coordinates of 32-bit types and from grids of up to 2^40 steps.
ORMIX_MATH_API int orientation3d(const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c,
                                 const SpatialPoint& d);

/// The same from the coordinates of a, b, c and d, for types that toSpatialPoint() accepts.
template <class T>
int orientation3d(T ax, T ay, T az, T bx, T by, T bz, T cx, T cy, T cz, T dx, T dy, T dz) {
  return orientation3d(toSpatialPoint(ax, ay, az), toSpatialPoint(bx, by, bz), toSpatialPoint(cx, cy, cz),
                       toSpatialPoint(dx, dy, dz));
}

}  // namespace ormix
