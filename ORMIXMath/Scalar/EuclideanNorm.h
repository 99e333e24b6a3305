#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cmath>

namespace ormix {

/// Length of the vector (x, y) or (x, y, z), without spurious overflow and underflow; NaN when a component is NaN.
///
/// Several times faster than std::hypot, which is called only where the sum of squares leaves the safe range.
template <class... Component>
omReal64 euclideanNorm(omReal64 x, omReal64 y, Component... z) {
  // Sums of squares between these have lost no digits to underflow.
  constexpr omReal64 smallestSafe = 1e-280;
  constexpr omReal64 largestSafe = 1e300;
  const omReal64 squared = ((x * x + y * y) + ... + (z * z));
  if (squared >= smallestSafe && squared <= largestSafe) return std::sqrt(squared);
  return std::isnan(squared) ? squared : std::hypot(x, y, z...);
}

}  // namespace ormix
