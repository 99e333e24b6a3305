#include <ORMIXMath/Estimation/ChanceModel.h>

#include <algorithm>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <limits>

namespace ormix::detail {
namespace {

// Samples of the background, and the nearest of them that tell the chance of being nearer still, by their share and one
// and a half standard deviations of what that may be off.
constexpr std::size_t s_nbBackground = 512;
constexpr std::size_t s_nbNearest = 32;
constexpr omReal64 s_margin = 1.27;
constexpr std::size_t s_nbForSpread = 128;
// Samples are moved by up to this many times the distance from the median that three quarters of them have: enough to
// lose a common curve, not enough to thin out what is dense.
constexpr omReal64 s_move = 0.6;

/// A sequence of numbers that are the same everywhere (Steele2014).
class SplitMix {
 public:
  omUInt64 next() {
    omUInt64 z = _state += 0x9e3779b97f4a7c15U;
    z = (z ^ (z >> 30U)) * 0xbf58476d1ce4e5b9U;
    z = (z ^ (z >> 27U)) * 0x94d049bb133111ebU;
    return z ^ (z >> 31U);
  }
  std::size_t below(std::size_t bound) {
    return static_cast<std::size_t>((next() >> 32U) * static_cast<omUInt64>(bound) >> 32U);
  }
  /// In (-1, 1), small ones more often: the sum of two uniform numbers.
  omReal64 triangular() {
    const omUInt64 bits = next();
    constexpr omReal64 unit = 1.0 / 4294967296.0;
    return (static_cast<omReal64>(bits >> 32U) + static_cast<omReal64>(bits & 0xffffffffU)) * unit - 1;
  }

 private:
  omUInt64 _state = 0;
};

bool isFinite(const omReal64* row, std::size_t dimension) {
  return std::all_of(row, row + dimension, [](omReal64 value) { return std::isfinite(value); });
}

/// The distance from the median that three quarters of the values do not exceed.
omReal64 spreadOf(std::vector<omReal64>& values) {
  const auto at = [&values](std::size_t place) {
    const auto it = values.begin() + static_cast<std::ptrdiff_t>(place);
    std::nth_element(values.begin(), it, values.end());
    return *it;
  };
  const omReal64 median = at(values.size() / 2);
  for (omReal64& value : values) value = std::abs(value - median);
  return at(3 * values.size() / 4);
}

}  // namespace

omReal64 logTail(omReal64 n, omReal64 k, omReal64 p) {
  if (!(k > n * p)) return 0;
  if (!(p > 0)) return -std::numeric_limits<omReal64>::infinity();
  const omReal64 misses = n - k;
  return -k * std::log(k / (n * p)) - (misses > 0 ? misses * (std::log(misses / n) - std::log1p(-p)) : 0);
}

ChanceModel::ChanceModel(const BaseEstimator& estimator, const SampleView& samples)
    : _estimator(estimator), _spreads(samples.dimension), _distances(SampleView{}) {
  const std::size_t dimension = samples.dimension;
  SplitMix random;
  _rows.reserve(s_nbBackground * dimension);
  for (std::size_t k = 0; k < 4 * s_nbBackground && _nbRows < s_nbBackground; ++k) {
    // Without repetition where there are few.
    const omReal64* row =
        samples[samples.nbSamples <= s_nbBackground ? k % samples.nbSamples : random.below(samples.nbSamples)];
    if (!isFinite(row, dimension)) continue;
    _rows.insert(_rows.end(), row, row + dimension);
    ++_nbRows;
  }
  if (_nbRows == 0) return;
  const auto* model = dynamic_cast<const RobustModel*>(&estimator);
  const RobustModel usual;
  const auto unitOf = [&](std::size_t c) { return (model ? model : &usual)->getUnitOfCoordinate(c, dimension); };
  std::vector<omReal64> values(std::min(_nbRows, s_nbForSpread));
  std::vector<omReal64> own(dimension);
  for (std::size_t c = 0; c < dimension; ++c) {
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = _rows[i * dimension + c];
    own[c] = spreadOf(values);
  }
  for (std::size_t c = 0; c < dimension; ++c)
    for (std::size_t other = 0; other < dimension; ++other)
      if (unitOf(other) == unitOf(c)) _spreads[c] = std::max(_spreads[c], own[other]);
  for (std::size_t i = 0; i < _nbRows; ++i)
    for (std::size_t c = 0; c < dimension; ++c) _rows[i * dimension + c] += s_move * _spreads[c] * random.triangular();
  _distances = ModelDistances({_rows.data(), _nbRows, dimension});
}

std::size_t ChanceModel::codimensionOf(const RealVector& params, const omReal64* sample) const {
  const std::size_t dimension = _spreads.size();
  // Small against the bends of models, large against rounding.
  constexpr omReal64 step = 1e-3;
  // The sample moved by each coordinate's step to either side, and by each two steps.
  std::vector<omReal64> rows;
  const auto add = [&](std::size_t i, omReal64 first, std::size_t j, omReal64 second) {
    const std::size_t start = rows.size();
    rows.insert(rows.end(), sample, sample + dimension);
    rows[start + i] += first * step * _spreads[i];
    rows[start + j] += second * step * _spreads[j];
  };
  add(0, 0, 0, 0);
  for (std::size_t i = 0; i < dimension; ++i)
    for (std::size_t j = 0; j <= i; ++j) add(i, 1, j, j == i ? 0 : 1);
  for (std::size_t i = 0; i < dimension; ++i) add(i, -1, i, 0);
  ModelDistances moved({rows.data(), rows.size() / dimension, dimension});
  if (!moved.evaluate(_estimator, params)) return 0;
  // Squared distances of a sample moved by v are a number, a linear form and v' G v.
  const omReal64 start = moved.squares()[0];
  const omReal64* next = moved.squares().data() + 1;
  std::vector<omReal64> gram(dimension * dimension);
  const auto at = [&](std::size_t i, std::size_t j) -> omReal64& { return gram[i * dimension + j]; };
  for (std::size_t i = 0; i < dimension; ++i)
    for (std::size_t j = 0; j <= i; ++j) at(i, j) = *next++;
  for (std::size_t i = 0; i < dimension; ++i)
    for (std::size_t j = 0; j < i; ++j) at(i, j) = at(j, i) = (at(i, j) - at(i, i) - at(j, j) + start) / 2;
  for (std::size_t i = 0; i < dimension; ++i) at(i, i) = (at(i, i) + *next++) / 2 - start;
  // Its rank by elimination with the largest pivot.
  omReal64 first = 0;
  std::size_t rank = 0;
  for (; rank < dimension; ++rank) {
    std::size_t pivot = 0;
    for (std::size_t i = 1; i < dimension; ++i)
      if (at(i, i) > at(pivot, pivot)) pivot = i;
    const omReal64 largest = at(pivot, pivot);
    if (rank == 0) first = largest;
    if (!(largest > 0.01 * first) || !std::isfinite(largest)) break;
    std::vector<omReal64> column(dimension);
    for (std::size_t i = 0; i < dimension; ++i) column[i] = at(i, pivot);
    for (std::size_t i = 0; i < dimension; ++i)
      for (std::size_t j = 0; j < dimension; ++j) at(i, j) -= column[i] * column[j] / largest;
  }
  return rank;
}

bool ChanceModel::evaluate(const RealVector& params) {
  _isEvaluated = _nbRows > 0 && _distances.evaluate(_estimator, params);
  if (!_isEvaluated) return false;
  _nearest = _distances.squares();
  const auto place = _nearest.begin() + static_cast<std::ptrdiff_t>(std::min(s_nbNearest, _nbRows) - 1);
  std::nth_element(_nearest.begin(), place, _nearest.end());
  _near = std::sqrt(*place);
  return true;
}

omReal64 ChanceModel::probability(omReal64 distance) const {
  if (!_isEvaluated) return 1;
  const auto total = static_cast<omReal64>(_nbRows);
  if (distance < _near) {
    const omReal64 share = static_cast<omReal64>(std::min(s_nbNearest, _nbRows)) / total;
    return std::min(s_margin * share * std::pow(distance / _near, static_cast<omReal64>(_codimension)), 1.0);
  }
  return std::min(s_margin * static_cast<omReal64>(_distances.countWithin(distance)) / total, 1.0);
}

omReal64 ChanceModel::logFalseAlarms(std::size_t nbSamples, std::size_t nbInliers, omReal64 distance,
                                     std::size_t nbScales) const {
  const std::size_t m = _estimator.getMinimalDataSize();
  const auto n = static_cast<omReal64>(nbSamples);
  const auto drawn = static_cast<omReal64>(m);
  omReal64 nbModels = 1;  // the binomial coefficient
  for (omReal64 k = 0; k < drawn; k += 1) nbModels *= (n - k) / (drawn - k);
  return std::log(nbModels) + std::log(static_cast<omReal64>(nbScales)) +
         logTail(n - drawn, static_cast<omReal64>(nbInliers) - drawn, probability(distance));
}

}  // namespace ormix::detail
