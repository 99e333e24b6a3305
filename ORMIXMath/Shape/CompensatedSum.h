#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cmath>
#include <cstddef>

/// \file
/// Sums that keep what rounding drops; not installed.

namespace ormix::detail {

/// The rounding error of sum + value is itself a number (Knuth1969), kept in `error`; of reals or vectors of them.
template <class V>
inline void addCompensated(V value, V& sum, V& error) {
  const V total = sum + value;
  const V added = total - sum;
  error += (sum - (total - added)) + (value - added);
  sum = total;
}

/// Once the sum is infinite its error is inf - inf: the plain sum then tells what happened.
inline omReal64 roundedSum(omReal64 sum, omReal64 error) {
  const omReal64 rounded = sum + error;
  return std::isnan(rounded) ? sum : rounded;
}

/// n compensated sums, sums and errors apart so that one vector holds several of either. What is summed is dealt to
/// them in turn, whatever vectors the processor has: that fixes the bits of the result.
template <std::size_t n>
struct Lanes {
  omReal64 sum[n] = {};
  omReal64 error[n] = {};
};

/// Joins the lanes by halves, so that no addition waits for those beside it; n is a power of two.
template <std::size_t n>
omReal64 joined(Lanes<n>& lanes) {
  for (std::size_t half = n / 2; half > 0; half /= 2) {
    for (std::size_t l = 0; l < half; ++l) {
      addCompensated(lanes.sum[l + half], lanes.sum[l], lanes.error[l]);
      lanes.error[l] += lanes.error[l + half];
    }
  }
  return roundedSum(lanes.sum[0], lanes.error[0]);
}

}  // namespace ormix::detail
