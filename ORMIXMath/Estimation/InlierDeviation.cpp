#include <ORMIXMath/Estimation/InlierDeviation.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <cmath>

namespace ormix::detail {

omReal64 chiProbability(std::size_t dimension, omReal64 length) {
  const omReal64 x = length * length / 2;
  if (!(x < 700)) return 1;
  const bool isOdd = dimension % 2 == 1;
  omReal64 probability = isOdd ? std::erf(std::sqrt(x)) : -std::expm1(-x);
  // P(a + 1, x) = P(a, x) - x^a e^-x / Gamma(a + 1)
  omReal64 a = isOdd ? 0.5 : 1;
  omReal64 term = isOdd ? 2 * std::sqrt(x / s_pi) * std::exp(-x) : x * std::exp(-x);
  for (; 2 * a < static_cast<omReal64>(dimension); a += 1) {
    probability -= term;
    term *= x / (a + 1);
  }
  return std::max(probability, 0.0);
}

InlierBand inlierBand(std::size_t dimension) {
  // The 99.73 % quantile of chi² by the cube of a normal variable (WilsonHilferty1931), exact for one coordinate.
  const auto d = static_cast<omReal64>(dimension);
  const omReal64 cube = 1 - 2 / (9 * d) + 2.782 * std::sqrt(2 / (9 * d));
  const omReal64 deviations = dimension == 1 ? 3 : std::sqrt(d * cube * cube * cube);
  return {deviations, chiProbability(dimension + 2, deviations) / chiProbability(dimension, deviations)};
}

omReal64 deviationWithin(const ModelDistances& distances, const ChanceModel& chance, std::size_t minimalDataSize,
                         omReal64 smallest, omReal64 largest, omReal64& threshold) {
  const InlierBand band = inlierBand(chance.codimension());
  const auto d = static_cast<omReal64>(chance.codimension());
  const auto n = static_cast<omReal64>(distances.squares().size());
  const auto m = static_cast<omReal64>(minimalDataSize);
  omReal64 sigma = threshold / band.deviations;
  constexpr int nbRounds = 20;
  for (int round = 0; round < nbRounds; ++round) {
    const omReal64 limit = threshold * threshold;
    omReal64 sum = 0;
    const auto count = static_cast<omReal64>(distances.countWithin(threshold, sum));
    // Outliers within the threshold are spread evenly there.
    const omReal64 p = std::min(chance.probability(threshold), 0.9);
    const omReal64 nbByChance = std::max((n - count) * p / (1 - p), 0.0);
    const omReal64 surplus = count - nbByChance - m;
    if (!(surplus > m)) return sigma;
    const omReal64 square = std::max(sum - nbByChance * limit * d / (d + 2), sum / 100);
    sigma = std::sqrt(square / (d * surplus * band.variance));
    const omReal64 next = std::max(std::min(band.deviations * sigma, largest), smallest);
    const bool isSettled = std::abs(next - threshold) <= 0.005 * threshold;
    threshold = next;
    if (isSettled) break;
  }
  return sigma;
}

}  // namespace ormix::detail
