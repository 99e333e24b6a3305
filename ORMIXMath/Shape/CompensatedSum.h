#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cmath>
#include <cstddef>

/// \file
/// Compensated summation; not installed.

namespace ormix::detail {

/// Adds `value` to `sum` and the rounding error of that addition, which is exactly representable (Knuth1969), to
/// `error`. For reals and vectors of reals.
template <class V>
inline void addCompensated(V value, V& sum, V& error) {
  const V total = sum + value;
  const V added = total - sum;
  error += (sum - (total - added)) + (value - added);
  sum = total;
}

/// The compensated sum, rounded. Where the sum is infinite its error is NaN (inf - inf), so the plain sum is returned.
inline omReal64 roundedSum(omReal64 sum, omReal64 error) {
  const omReal64 rounded = sum + error;
  return std::isnan(rounded) ? sum : rounded;
}

/// n compensated sums ("lanes"), with sums and errors in separate arrays so that a vector register holds several. Terms
/// are distributed round-robin over the n lanes, whatever the length of the processor's vectors, which fixes the bits
/// of the result.
template <std::size_t n>
struct Lanes {
  omReal64 sum[n] = {};
  omReal64 error[n] = {};
};

/// The sum of all n lanes, n a power of two: halves are added repeatedly, so that the additions of a step are
/// independent.
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
