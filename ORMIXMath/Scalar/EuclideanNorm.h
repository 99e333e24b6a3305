#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cmath>

namespace ormix {

/// Length of (x, y) or (x, y, z), which neither overflows nor loses digits to underflow; NaN where a component is NaN.
/// The square root alone is several times faster than std::hypot, which is left to where the squares leave the safe
/// range.
template <class... Component>
omReal64 euclideanNorm(omReal64 x, omReal64 y, Component... z) {
  // Squares in here are far from both ends of the range.
  constexpr omReal64 smallestSafe = 1e-280;
  constexpr omReal64 largestSafe = 1e300;
  const omReal64 squared = ((x * x + y * y) + ... + (z * z));
  if (squared >= smallestSafe && squared <= largestSafe) return std::sqrt(squared);
  return std::isnan(squared) ? squared : std::hypot(x, y, z...);
}

}  // namespace ormix
