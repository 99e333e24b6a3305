#pragma once

#include <ORMIXMath/Scalar/Cast.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cmath>
#include <limits>
#include <type_traits>

namespace ormix {

namespace detail {

/// The largest value below one half, added before truncating. With one half itself, 0.49999999999999994 and the odd
/// integers from 2^52 on would be rounded up by the addition. Ties still round away from zero: the sum of k + 0.5 and
/// this value rounds to k + 1.
inline constexpr omReal64 s_belowHalf = 0x1.fffffffffffffp-2;

/// Converts an integer to TOut, saturated to its range.
template <class TOut, class TIn>
constexpr TOut saturateInteger(TIn value) {
  using Limits = std::numeric_limits<TOut>;
  if constexpr (std::is_signed_v<TIn>) {
    if (value < TIn{0}) {
      if constexpr (std::is_unsigned_v<TOut>) return TOut{0};
      return static_cast<omInt64>(value) < static_cast<omInt64>(Limits::min()) ? Limits::min()
                                                                               : static_cast<TOut>(value);
    }
  }
  return static_cast<omUInt64>(value) > static_cast<omUInt64>(Limits::max()) ? Limits::max() : static_cast<TOut>(value);
}

}  // namespace detail

/// Rounds a computed value to a coordinate type.
///
/// - Integral TOut: the nearest integer, ties away from zero (2.5 gives 3, -2.5 gives -3), saturated to the range of
///   TOut (infinities too), 0 for NaN. An integral value is only saturated.
/// - Real TOut: the value itself as an ordinary conversion; a double beyond the range of omReal32 becomes infinite.
///
/// Defined for every value. Loops over coordinates vectorise.
template <class TOut, class TIn>
inline TOut round(TIn value) {
  static_assert(std::is_arithmetic_v<TOut> && std::is_arithmetic_v<TIn> && !std::is_same_v<TOut, bool>);
  if constexpr (std::is_floating_point_v<TOut>) {
    static_assert(std::numeric_limits<TOut>::is_iec559, "conversions out of range must give infinity");
    return static_cast<TOut>(value);
  } else if constexpr (std::is_integral_v<TIn>) {
    return detail::saturateInteger<TOut>(value);
  } else {
    static_assert(sizeof(TIn) <= sizeof(omReal64), "a wider real would be rounded twice");
    const omReal64 real = static_cast<omReal64>(value);
    return detail::truncateReal<TOut>(real + std::copysign(detail::s_belowHalf, real));
  }
}

}  // namespace ormix
