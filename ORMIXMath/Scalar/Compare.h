#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <type_traits>

namespace ormix {

namespace detail {
/// |a − b| of two integers without overflow: the difference of two values of a type always fits its unsigned type.
template <class T>
constexpr std::make_unsigned_t<T> integerGap(T a, T b) {
  using Unsigned = std::make_unsigned_t<T>;
  const Unsigned forward = static_cast<Unsigned>(static_cast<Unsigned>(a) - static_cast<Unsigned>(b));
  return a < b ? static_cast<Unsigned>(Unsigned{0} - forward) : forward;
}
}  // namespace detail

/// Whether two scalars agree within a tolerance: |a − b| <= tolerance, equality included.
///
/// - Integers: the difference is exact for every pair, also for unsigned a < b and for signed pairs whose difference
///   overflows.
/// - Reals: the difference is the rounded one. Equal infinities agree. False when one of the three arguments is NaN.
/// - A negative tolerance: false, also for equal values.
///
/// Takes part in overload resolution for arithmetic types only, so that it never competes with the comparisons of
/// geometric objects.
template <class T>
constexpr std::enable_if_t<std::is_arithmetic_v<T>, bool> compare(T a, T b, T tolerance) {
  if constexpr (std::is_integral_v<T>) {
    return tolerance >= T{0} && detail::integerGap(a, b) <= static_cast<std::make_unsigned_t<T>>(tolerance);
  } else {
    // Equality first, since the difference of equal infinities is NaN.
    if (a == b) return tolerance >= T{0};
    return (a < b ? b - a : a - b) <= tolerance;
  }
}

}  // namespace ormix
