#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <limits>
#include <type_traits>

/// \file
/// Points and vectors of the plane and of space as the functions of this library compute with them, whatever the
/// coordinate type of the caller. Coordinates are in the caller's unit and not initialised by default.

namespace ormix {

/// A point or a vector of the plane.
struct PlanarPoint {
  omReal64 x;  ///< First coordinate.
  omReal64 y;  ///< Second coordinate.
};

/// A point or a vector of space.
struct SpatialPoint {
  omReal64 x;  ///< First coordinate.
  omReal64 y;  ///< Second coordinate.
  omReal64 z;  ///< Third coordinate.
};

/// A point from coordinates of a type of which omReal64 represents every value exactly; other types do not compile.
template <class T>
constexpr PlanarPoint toPlanarPoint(T x, T y) {
  static_assert(std::is_arithmetic_v<T> && std::numeric_limits<T>::digits <= std::numeric_limits<omReal64>::digits);
  return {static_cast<omReal64>(x), static_cast<omReal64>(y)};
}

/// The same in space, see toPlanarPoint().
template <class T>
constexpr SpatialPoint toSpatialPoint(T x, T y, T z) {
  static_assert(std::is_arithmetic_v<T> && std::numeric_limits<T>::digits <= std::numeric_limits<omReal64>::digits);
  return {static_cast<omReal64>(x), static_cast<omReal64>(y), static_cast<omReal64>(z)};
}

}  // namespace ormix
