#pragma once

#include <ORMIXMath/Distance/SpatialSegment.h>
#include <ORMIXMath/Export.h>

namespace ormix {

/// Side of the plane through a, b and c on which d lies: 1 on the side from which a, b, c turn counter-clockwise (that
/// of (b − a) × (c − a)), -1 on the other, 0 exactly in the plane and when a, b and c do not span one.
///
/// The sign of the exact determinant |b − a, c − a, d − a|, not of a rounded one, for all finite coordinates: no
/// product overflows or underflows unnoticed. 0 when a coordinate is NaN or infinite. Constant time: an error bound
/// settles nearly every call (Shewchuk1997), twice the precision those of points that lie in a plane but for their
/// rounding, and the others are computed in integers just wide enough, of 128 bits for coordinates from every 32-bit
/// type and from grids of up to 2^40 steps.
ORMIX_MATH_API int orientation3d(const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c,
                                 const SpatialPoint& d);

/// From coordinates, see toSpatialPoint().
template <class T>
int orientation3d(T ax, T ay, T az, T bx, T by, T bz, T cx, T cy, T cz, T dx, T dy, T dz) {
  return orientation3d(toSpatialPoint(ax, ay, az), toSpatialPoint(bx, by, bz), toSpatialPoint(cx, cy, cz),
                       toSpatialPoint(dx, dy, dz));
}

}  // namespace ormix
