#pragma once

#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXMath/Scalar/Twofold.h>

#include <cmath>
#include <limits>
#include <type_traits>

/// \file
/// Sums and conversions that are rounded to one side, for the sides of boxes and the like; not installed.

namespace ormix::detail {

/// The smallest omReal64 that is not less than x + y; x + y where that is not finite.
inline omReal64 sumUp(omReal64 x, omReal64 y) {
  const Twofold sum = difference(x, -y);
  return sum.low > 0 ? std::nextafter(sum.high, std::numeric_limits<omReal64>::infinity()) : sum.high;
}

/// The largest omReal64 that is not greater than x + y; x + y where that is not finite.
inline omReal64 sumDown(omReal64 x, omReal64 y) { return -sumUp(-x, -y); }

/// The smallest value of T that is not less than `value`; where there is none, the largest of all finite ones. `value`
/// must not be NaN.
template <class T>
T roundUp(omReal64 value) {
  if constexpr (std::is_integral_v<T>) {
    return round<T>(std::ceil(value));
  } else {
    using Limits = std::numeric_limits<T>;
    if (value > omReal64(Limits::max())) return Limits::max();
    if (value < omReal64(Limits::lowest())) return Limits::lowest();
    const T rounded = static_cast<T>(value);
    return omReal64(rounded) < value ? std::nextafter(rounded, Limits::max()) : rounded;
  }
}

/// The largest value of T that is not greater than `value`; where there is none, the least of all finite ones. `value`
/// must not be NaN.
template <class T>
T roundDown(omReal64 value) {
  if constexpr (std::is_integral_v<T>)
    return round<T>(std::floor(value));
  else
    return -roundUp<T>(-value);
}

}  // namespace ormix::detail
