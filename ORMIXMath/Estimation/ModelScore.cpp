#include <ORMIXMath/Estimation/ModelScore.h>

#include <algorithm>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <limits>

namespace ormix::detail {

namespace {

constexpr omReal64 s_infinity = std::numeric_limits<omReal64>::infinity();
// Number of partial sums, added in a fixed order: faster than one sum, and the same bits on every processor.
constexpr std::size_t s_nbLanes = 4;

// Samples up to this many standard deviations from the model count as inliers.
constexpr omReal64 s_inlierDeviations = 2.5;
// Standard deviation of the standard normal distribution truncated at ±2.5.
constexpr omReal64 s_truncatedDeviation = 0.95459;

}  // namespace

ModelDistances::ModelDistances(const SampleView& samples)
    : _samples(samples), _residuals(samples.nbSamples), _squares(samples.nbSamples) {}

bool ModelDistances::evaluate(const BaseEstimator& estimator, const RealVector& params) {
  if (params.size() != estimator.getNbParams()) return false;
  for (const omReal64 param : params)
    if (!std::isfinite(param)) return false;
  const omReal64 scale = estimator.getResidualScale(params);
  if (!(scale > 0) || !std::isfinite(scale)) return false;
  if (!estimator.processViewResiduals(_samples, params, _residuals) || _residuals.size() != _squares.size())
    return false;
  const omReal64* residuals = _residuals.data().begin();
  for (std::size_t i = 0; i < _squares.size(); ++i) {
    const omReal64 distance = residuals[i] / scale;
    const omReal64 square = distance * distance;
    _squares[i] = square < s_infinity ? square : s_infinity;
  }
  return true;
}

std::size_t ModelDistances::countWithin(omReal64 threshold) const {
  const omReal64 limit = threshold * threshold;
  std::size_t count = 0;
  for (const omReal64 square : _squares) count += square <= limit ? 1 : 0;
  return count;
}

std::size_t ModelDistances::countWithin(omReal64 threshold, omReal64& sum) const {
  const omReal64 limit = threshold * threshold;
  omReal64 sums[s_nbLanes] = {};
  std::size_t counts[s_nbLanes] = {};
  const auto add = [&](std::size_t i, std::size_t l) {
    const bool isWithin = _squares[i] <= limit;
    sums[l] += isWithin ? _squares[i] : 0;
    counts[l] += isWithin ? 1 : 0;
  };
  std::size_t i = 0;
  for (; i + s_nbLanes <= _squares.size(); i += s_nbLanes)
    for (std::size_t l = 0; l < s_nbLanes; ++l) add(i + l, l);
  for (; i < _squares.size(); ++i) add(i, 0);
  sum = (sums[0] + sums[1]) + (sums[2] + sums[3]);
  return (counts[0] + counts[1]) + (counts[2] + counts[3]);
}

omReal64 ModelDistances::truncatedSum(omReal64 threshold) const {
  const omReal64 limit = threshold * threshold;
  omReal64 sums[s_nbLanes] = {};
  std::size_t i = 0;
  for (; i + s_nbLanes <= _squares.size(); i += s_nbLanes)
    for (std::size_t l = 0; l < s_nbLanes; ++l) sums[l] += std::min(_squares[i + l], limit);
  for (; i < _squares.size(); ++i) sums[0] += std::min(_squares[i], limit);
  return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

omReal64 ModelDistances::median(std::size_t nbParams) {
  const std::size_t place = std::min((_squares.size() + nbParams + 1) / 2, _squares.size()) - 1;
  _sorted = _squares;
  const auto middle = _sorted.begin() + static_cast<std::ptrdiff_t>(place);
  std::nth_element(_sorted.begin(), middle, _sorted.end());
  return *middle;
}

omReal64 ModelDistances::medianBelow(omReal64 limit, std::size_t nbParams) {
  const std::size_t needed = std::min((_squares.size() + nbParams + 1) / 2, _squares.size());
  std::size_t count = 0;
  for (const omReal64 square : _squares) count += square < limit ? 1 : 0;
  return count < needed ? s_infinity : median(nbParams);
}

omReal64 ModelDistances::refinedThreshold(omReal64 threshold, std::size_t minimalDataSize, omReal64 smallest) const {
  constexpr int nbRounds = 20;
  for (int round = 0; round < nbRounds; ++round) {
    const omReal64 limit = threshold * threshold;
    omReal64 sum = 0;
    std::size_t count = 0;
    for (const omReal64 square : _squares) {
      if (!(square <= limit)) continue;
      sum += square;
      ++count;
    }
    if (count <= 2 * minimalDataSize) return threshold;
    const omReal64 deviation = std::sqrt(sum / static_cast<omReal64>(count - minimalDataSize)) / s_truncatedDeviation;
    const omReal64 next = std::max(s_inlierDeviations * deviation, smallest);
    // Converged: the threshold fits the spread to within a percent, or would grow.
    if (!(next < 0.99 * threshold)) return threshold;
    threshold = next;
  }
  return threshold;
}

omReal64 thresholdFromMedian(omReal64 median, std::size_t nbSamples, std::size_t minimalDataSize) {
  // 1.4826 times the median of absolute values is the standard deviation of a normal distribution. The term 5 / surplus
  // corrects the median for small numbers of samples.
  const auto surplus = static_cast<omReal64>(nbSamples > minimalDataSize ? nbSamples - minimalDataSize : 1);
  return s_inlierDeviations * (1.4826 * (1 + 5 / surplus) * std::sqrt(median));
}

}  // namespace ormix::detail
