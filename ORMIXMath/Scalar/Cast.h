#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <limits>
#include <type_traits>

namespace ormix {

namespace detail {

/// Truncates a real toward zero to an integer, saturated to the range of TOut; 0 for NaN. The upper limit of the test
/// is the power of two above the largest integer, since not every largest integer is exactly representable as a real.
/// Written so that loops over coordinates vectorise.
template <class TOut>
constexpr TOut truncateReal(omReal64 value) {
  using Limits = std::numeric_limits<TOut>;
  constexpr omReal64 above = 2.0 * static_cast<omReal64>(TOut{1} << (Limits::digits - 1));
  constexpr omReal64 lowest = static_cast<omReal64>(Limits::min());
  const omReal64 known = value == value ? value : 0.0;
  if (known >= above) return Limits::max();
  if (known <= lowest) return Limits::min();
  return static_cast<TOut>(known);
}

}  // namespace detail

/// Converts a coordinate between scalar types the way entity casts do.
///
/// - Real to signed integer: truncated toward zero (-2.7 gives -2), saturated to the range, 0 for NaN.
/// - Real to unsigned integer (up to 32 bits): truncated into a 64-bit signed integer as above, of which the low bits
///   are kept. So negative values wrap (-1.5 gives 4294967295), +infinity gives 4294967295 and -infinity gives 0; this
///   is intended.
/// - Integer to integer: wraps modulo 2^bits.
/// - Any to real: the ordinary conversion to the nearest value; a double beyond the range of omReal32 becomes infinite.
///
/// Defined for every value.
template <class TOut, class TIn>
constexpr TOut castScalar(TIn value) {
  static_assert(std::is_arithmetic_v<TOut> && std::is_arithmetic_v<TIn> && !std::is_same_v<TOut, bool>);
  if constexpr (std::is_floating_point_v<TOut> || std::is_integral_v<TIn>) {
    static_assert(std::is_integral_v<TOut> || std::numeric_limits<TOut>::is_iec559,
                  "conversions out of range must give infinity");
    return static_cast<TOut>(value);
  } else if constexpr (std::is_signed_v<TOut>) {
    return detail::truncateReal<TOut>(static_cast<omReal64>(value));
  } else {
    static_assert(sizeof(TOut) < sizeof(omInt64), "a 64-bit signed integer must hold every value");
    return static_cast<TOut>(detail::truncateReal<omInt64>(static_cast<omReal64>(value)));
  }
}

}  // namespace ormix
