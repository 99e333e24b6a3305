#include <ORMIXMath/Estimation/Loss.h>

#include <array>
#include <cassert>
#include <cmath>
#include <limits>

namespace ormix {

omReal64 lossWeight(eLoss loss, omReal64 u) {
  switch (loss) {
    case eLS_Huber:
      return u <= 1 ? 1 : 1 / u;
    case eLS_Tukey:
      return u < 1 ? (1 - u * u) * (1 - u * u) : 0;
    case eLS_Welsch:
      return std::exp(-u * u);
    case eLS_Cauchy:
      return 1 / (1 + u * u);
    default:
      return 1;
  }
}

omReal64 lossWeightSlope(eLoss loss, omReal64 u) {
  const omReal64 weight = lossWeight(loss, u);
  switch (loss) {
    case eLS_Huber:
      return u <= 1 ? 0 : -weight;
    case eLS_Tukey:
      return u < 1 ? -4 * u * u * (1 - u * u) : 0;
    case eLS_Welsch:
      return weight > 0 ? -2 * u * u * weight : 0;
    case eLS_Cauchy:
      return -2 * weight * (1 - weight);
    default:
      return 0;
  }
}

omReal64 lossValue(eLoss loss, omReal64 u) {
  switch (loss) {
    case eLS_Huber:
      return u <= 1 ? u * u : 2 * u - 1;
    case eLS_Tukey:
      // A third of 1 - (1 - u²)³, which would cancel.
      return u < 1 ? u * u * (1 - u * u * (1 - u * u / 3)) : 1.0 / 3;
    case eLS_Welsch:
      return -std::expm1(-u * u);
    case eLS_Cauchy:
      return std::log1p(u * u);
    default:
      return u * u;
  }
}

omReal64 efficientLossScale(eLoss loss, std::size_t dimension) {
  assert(dimension >= 1 && dimension <= 3);
  constexpr omReal64 none = std::numeric_limits<omReal64>::infinity();
  // Solutions of E[w + w' r / d]² = 0.95 E[w² r²] / d for the length r of d normal coordinates.
  static constexpr std::array<std::array<omReal64, 3>, 5> scales{{{none, none, none},
                                                                  {1.3450, 1.5012, 1.6280},
                                                                  {4.6851, 5.1230, 5.4902},
                                                                  {2.9847, 3.2510, 3.4691},
                                                                  {2.3850, 2.5486, 2.6656}}};
  return scales[static_cast<std::size_t>(loss)][dimension - 1];
}

omReal64 medianLength(std::size_t dimension) {
  assert(dimension >= 1 && dimension <= 3);
  // Square roots of the medians of the chi-squared distributions.
  static constexpr std::array<omReal64, 3> medians{0.674489750196, 1.177410022515, 1.538172254455};
  return medians[dimension - 1];
}

}  // namespace ormix
