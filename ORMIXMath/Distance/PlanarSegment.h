#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>

namespace ormix {

/// The closed segment { p0 + t (p1 − p0) : 0 <= t <= 1 }; a single point when both ends are equal.
struct PlanarSegment {
  PlanarPoint p0;  ///< First end, at t = 0.
  PlanarPoint p1;  ///< Second end, at t = 1.
};

/// The segment from (x0, y0) to (x1, y1), for types that toPlanarPoint() accepts.
template <class T>
constexpr PlanarSegment toPlanarSegment(T x0, T y0, T x1, T y1) {
  return {toPlanarPoint(x0, y0), toPlanarPoint(x1, y1)};
}

}  // namespace ormix
