#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cmath>

/// \file
/// Arithmetic with twice the precision of omReal64; not installed.

namespace ormix::detail {

/// A number of about 106 bits: the unevaluated sum high + low (Dekker1971). Operations are right to about 2^-104 of
/// their largest operand (sums) or of their result (products, quotients) as long as no `low` underflows; results that
/// overflow become NaN.
struct Twofold {
  omReal64 high;  ///< The number rounded to omReal64.
  omReal64 low;   ///< The rest, at most half a unit in the last place of `high`.
};

/// x - y, exact.
inline Twofold difference(omReal64 x, omReal64 y) {
  const omReal64 high = x - y;
  const omReal64 back = high - x;
  return {high, (x - (high - back)) - (y + back)};
}

/// high + low, exact if |low| <= |high|.
inline Twofold joined(omReal64 high, omReal64 low) {
  const omReal64 total = high + low;
  return {total, low - (total - high)};
}

/// -x, exact.
inline Twofold negated(const Twofold& x) { return {-x.high, -x.low}; }

/// x + y.
inline Twofold sum(const Twofold& x, const Twofold& y) {
  const Twofold high = difference(x.high, -y.high);
  return joined(high.high, high.low + (x.low + y.low));
}

/// x - y.
inline Twofold difference(const Twofold& x, const Twofold& y) { return sum(x, negated(y)); }

/// x y.
inline Twofold product(const Twofold& x, const Twofold& y) {
  const omReal64 high = x.high * y.high;
  return joined(high, std::fma(x.high, y.high, -high) + (x.high * y.low + x.low * y.high));
}

/// factor x.
inline Twofold times(omReal64 factor, const Twofold& x) { return product({factor, 0}, x); }

/// x / y; y.high must not be 0.
inline Twofold quotient(const Twofold& x, const Twofold& y) {
  const omReal64 first = x.high / y.high;
  const Twofold rest = difference(x, times(first, y));
  return joined(first, rest.high / y.high);
}

}  // namespace ormix::detail
