#include <ORMIXMath/Distance/PolynomialRoots.h>

#include <cmath>

namespace ormix::detail {

namespace {

constexpr std::size_t s_nbCoefficients = PolynomialRoots::s_degree + 1;

/// A polynomial of this degree, the coefficients above it being of no meaning.
struct Polynomial {
  std::array<omReal64, s_nbCoefficients> coefficients;
  std::size_t degree;

  omReal64 operator()(omReal64 x) const {
    omReal64 value = coefficients[degree];
    for (std::size_t k = degree; k-- > 0;) value = value * x + coefficients[k];
    return value;
  }
  Polynomial derivative() const {
    Polynomial result{{}, degree - 1};
    for (std::size_t k = 1; k <= degree; ++k) result.coefficients[k - 1] = static_cast<omReal64>(k) * coefficients[k];
    return result;
  }
};

/// Where a polynomial that is monotone in an interval changes its sign there.
omReal64 signChange(const Polynomial& polynomial, omReal64 low, omReal64 high, bool isLowPositive) {
  // Halved to neighbouring numbers; from 1 to the smallest number are 1074 halvings.
  constexpr int s_mostSteps = 2100;
  for (int step = 0; step < s_mostSteps; ++step) {
    const omReal64 middle = 0.5 * low + 0.5 * high;
    if (middle <= low || middle >= high) break;
    ((polynomial(middle) > 0) == isLowPositive ? low : high) = middle;
  }
  return high;
}

}  // namespace

PolynomialRoots::PolynomialRoots(const std::array<omReal64, s_degree + 1>& coefficients, omReal64 low, omReal64 high) {
  omReal64 sum = 0;
  for (const omReal64 coefficient : coefficients) sum += std::abs(coefficient);
  if (!std::isfinite(sum)) return;
  std::array<Polynomial, s_degree> derivatives;
  derivatives[0] = {coefficients, s_degree};
  for (std::size_t order = 1; order < s_degree; ++order) derivatives[order] = derivatives[order - 1].derivative();
  for (std::size_t order = s_degree; order-- > 0;) {
    const Polynomial& polynomial = derivatives[order];
    std::array<omReal64, s_degree> found{};
    std::size_t nbFound = 0;
    omReal64 from = low;
    bool isPositive = polynomial(from) > 0;
    for (std::size_t i = 0; i <= _nbRoots; ++i) {
      const omReal64 to = i < _nbRoots ? _roots[i] : high;
      const bool isNextPositive = polynomial(to) > 0;
      if (isNextPositive != isPositive) found[nbFound++] = signChange(polynomial, from, to, isPositive);
      from = to;
      isPositive = isNextPositive;
    }
    _roots = found;
    _nbRoots = nbFound;
  }
}

}  // namespace ormix::detail
