#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cmath>

/// \file
/// Determinants of two rows without cancellation; not installed.

namespace ormix::detail {

/// a b - c d to at most 1.5 units in the last place of the result (Kahan's algorithm, Jeannerod2013), as long as
/// nothing overflows or underflows.
inline omReal64 differenceOfProducts(omReal64 a, omReal64 b, omReal64 c, omReal64 d) {
  const omReal64 cd = c * d;
  return std::fma(a, b, -cd) + std::fma(-c, d, cd);
}

}  // namespace ormix::detail
