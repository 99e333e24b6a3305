#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <limits>
#include <type_traits>

namespace ormix {

/// A point of space as the distance functions compute with it, whatever the coordinate type of the caller.
struct SpatialPoint {
  omReal64 x;
  omReal64 y;
  omReal64 z;
};

/// The closed segment { p0 + t (p1 − p0) : 0 <= t <= 1 }; a single point when both ends are equal.
struct SpatialSegment {
  SpatialPoint p0;
  SpatialPoint p1;
};

/// A point from coordinates of a type whose values are all exact as omReal64.
template <class T>
constexpr SpatialPoint toSpatialPoint(T x, T y, T z) {
  static_assert(std::is_arithmetic_v<T> && std::numeric_limits<T>::digits <= std::numeric_limits<omReal64>::digits);
  return {static_cast<omReal64>(x), static_cast<omReal64>(y), static_cast<omReal64>(z)};
}

/// A segment from its ends' coordinates, see toSpatialPoint().
template <class T>
constexpr SpatialSegment toSpatialSegment(T x0, T y0, T z0, T x1, T y1, T z1) {
  return {toSpatialPoint(x0, y0, z0), toSpatialPoint(x1, y1, z1)};
}

}  // namespace ormix
