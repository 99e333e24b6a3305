#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <limits>

namespace ormix {

namespace detail {
/// Square root at compile time by Newton's iteration; enough for the machine epsilons it is asked for.
constexpr omReal64 constexprSqrt(omReal64 value) {
  if (!(value > 0)) return 0;
  omReal64 root = 1;
  for (int step = 0; step < 64; ++step) root = 0.5 * (root + value / root);
  return root;
}
}  // namespace detail

/// Limits of a scalar type.
template <class T>
struct NumericLimits {
  /// The distance from 1 to the next value; 0 for integers.
  static constexpr T s_eps = std::numeric_limits<T>::epsilon();
  /// The largest finite value.
  static constexpr T s_max = std::numeric_limits<T>::max();
  /// The lowest finite value, not the smallest positive one.
  static constexpr T s_min = std::numeric_limits<T>::lowest();
  /// The square root of `s_eps`: the relative threshold of most estimations.
  static constexpr T s_sqrt_eps = static_cast<T>(detail::constexprSqrt(static_cast<omReal64>(s_eps)));
};

}  // namespace ormix
