#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cstddef>

/// \file
/// Roots of polynomials up to degree four; not installed.

namespace ormix::detail {

/// The real roots of a polynomial in an interval, ascending. Between neighbouring roots of its derivative a polynomial
/// is monotone and has one root at most, which is where its sign changes; so the roots of the highest derivative are
/// found first. None is missed for want of a start; two that rounding does not tell from a touching may be.
class PolynomialRoots {
 public:
  static constexpr std::size_t s_degree = 4;

  /// \param coefficients of 1, x, x^2, x^3, x^4; leading ones may be 0; there are no roots where one is not finite
  PolynomialRoots(const std::array<omReal64, s_degree + 1>& coefficients, omReal64 low, omReal64 high);

  const omReal64* begin() const { return _roots.data(); }
  const omReal64* end() const { return _roots.data() + _nbRoots; }

 private:
  std::array<omReal64, s_degree> _roots{};
  std::size_t _nbRoots = 0;
};

}  // namespace ormix::detail
