#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <limits>
#include <type_traits>

namespace ormix {

/// A point of the plane as the distance functions compute with it, whatever the coordinate type of the caller.
struct PlanarPoint {
  omReal64 x;
  omReal64 y;
};

/// The closed segment { p0 + t (p1 − p0) : 0 <= t <= 1 }; a single point when both ends are equal.
struct PlanarSegment {
  PlanarPoint p0;
  PlanarPoint p1;
};

/// A point from coordinates of a type whose values are all exact as omReal64.
template <class T>
constexpr PlanarPoint toPlanarPoint(T x, T y) {
  static_assert(std::is_arithmetic_v<T> && std::numeric_limits<T>::digits <= std::numeric_limits<omReal64>::digits);
  return {static_cast<omReal64>(x), static_cast<omReal64>(y)};
}

/// A segment from its ends' coordinates, see toPlanarPoint().
template <class T>
constexpr PlanarSegment toPlanarSegment(T x0, T y0, T x1, T y1) {
  return {toPlanarPoint(x0, y0), toPlanarPoint(x1, y1)};
}

}  // namespace ormix
