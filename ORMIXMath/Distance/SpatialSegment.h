#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>

namespace ormix {

/// The closed segment { p0 + t (p1 − p0) : 0 <= t <= 1 }; a single point when both ends are equal.
struct SpatialSegment {
  SpatialPoint p0;  ///< First end, at t = 0.
  SpatialPoint p1;  ///< Second end, at t = 1.
};

/// The segment from (x0, y0, z0) to (x1, y1, z1), for types that toSpatialPoint() accepts.
template <class T>
constexpr SpatialSegment toSpatialSegment(T x0, T y0, T z0, T x1, T y1, T z1) {
  return {toSpatialPoint(x0, y0, z0), toSpatialPoint(x1, y1, z1)};
}

}  // namespace ormix
