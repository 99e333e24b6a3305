#pragma once

#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cmath>
#include <functional>
#include <type_traits>

/// \file
/// Arithmetic of coordinates and sizes as entities of the plane and of space do it; not installed.

namespace ormix::geom::detail {

/// Sums, differences and products in the coordinate type itself: integers wrap around, by way of unsigned arithmetic.
template <class Operation, class T>
T inCoordinateType(Operation operation, T a, T b) {
  if constexpr (std::is_integral_v<T>)
    return static_cast<T>(operation(static_cast<omUInt32>(a), static_cast<omUInt32>(b)));
  else
    return operation(a, b);
}

/// Twice a half size in its own type; integers wrap around instead of overflowing.
template <class T>
T fullSize(T halfSize) {
  return inCoordinateType(std::plus<>(), halfSize, halfSize);
}

/// Integer quotients that would trap: by zero that of the reals, rounded and saturated; lowest by -1 wraps to the
/// lowest again, as the product by -1 does.
template <class T>
T quotient(T a, T b) {
  if constexpr (std::is_integral_v<T>) {
    if (b == 0) return round<T, omReal64>(static_cast<omReal64>(a) / 0.0);
    return static_cast<T>(static_cast<omInt64>(a) / static_cast<omInt64>(b));
  } else {
    return a / b;
  }
}

/// For integers a component of a vector is rounded to the nearest integer before it is used, and the result again
/// (intended); to a signed one of 64 bits, so that unsigned coordinates also move down. A component of a real point is
/// rounded to its type.
template <class Operation, class T>
T withComponent(Operation operation, T coordinate, omReal64 component) {
  using Rounded = std::conditional_t<std::is_integral_v<T>, omInt64, T>;
  const auto rounded = static_cast<omReal64>(round<Rounded, omReal64>(component));
  return round<T, omReal64>(operation(static_cast<omReal64>(coordinate), rounded));
}

/// Root of the sum of squares, all but the root in 32-bit arithmetic that wraps around.
template <class... T>
omReal64 wrappedNorm(T... components) {
  using Coordinate = std::common_type_t<T...>;
  static_assert(sizeof(Coordinate) == sizeof(omUInt32));
  const omUInt32 sum = (... + (static_cast<omUInt32>(components) * static_cast<omUInt32>(components)));
  return std::sqrt(static_cast<omReal64>(static_cast<Coordinate>(sum)));
}

}  // namespace ormix::geom::detail
