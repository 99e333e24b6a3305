#include <ORMIXMath/Estimation/AcontrarioLoop.h>
#include <ORMIXUtil/NumericLimits.h>

#include <algorithm>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <cstring>
#include <limits>
#include <numeric>
#include <string>

namespace ormix::detail {
namespace {

constexpr omReal64 s_infinity = std::numeric_limits<omReal64>::infinity();
// Samples on which models are scored at first.
constexpr std::size_t s_firstPart = 256;
constexpr std::size_t s_growth = 8;
// Samples that decide whether a model is scored on the others, where these are many.
constexpr std::size_t s_nbFirst = 16;
// Models of which the codimension and the usual chance are taken.
constexpr std::size_t s_nbPilots = 5;
// The best model of so many draws is improved, also if it is not the best so far.
constexpr std::size_t s_epoch = 100;
// The same once the best model beats chance.
constexpr std::size_t s_longEpoch = 1000;
constexpr std::size_t s_nbRounds = 6;
constexpr std::size_t s_nbTries = 16;
constexpr std::size_t s_nbFinalRounds = 20;

bool isFinite(const omReal64* row, std::size_t dimension) {
  return std::all_of(row, row + dimension, [](omReal64 value) { return std::isfinite(value); });
}

/// Half the step of coordinates that were rounded to multiples of one, as pixels are; 0 where they were not. Samples of
/// noise lie exactly on lines of such a grid.
omReal64 halfStepOf(const SampleView& samples) {
  constexpr std::size_t nbLooks = 256;
  const std::size_t stride = samples.nbSamples / nbLooks + 1;
  std::vector<omReal64> values;
  omReal64 largest = 0;
  for (std::size_t c = 0; c < samples.dimension; ++c) {
    values.clear();
    for (std::size_t i = 0; i < samples.nbSamples; i += stride) values.push_back(samples[i][c]);
    std::sort(values.begin(), values.end());
    std::size_t nbEqual = 0;
    omReal64 step = s_infinity;
    for (std::size_t i = 1; i < values.size(); ++i) {
      const omReal64 gap = values[i] - values[i - 1];
      nbEqual += gap == 0 ? 1 : 0;
      if (gap > 0) step = std::min(step, gap);
    }
    // Values that are not rounded repeat where samples do, but not between others.
    const std::size_t nbDifferent = values.size() - nbEqual;
    if (nbDifferent > 2 && step < s_infinity && nbEqual > 0 &&
        std::all_of(values.begin(), values.end(), [&](omReal64 value) {
          const omReal64 count = (value - values.front()) / step;
          return std::abs(count - std::round(count)) < 1e-6;
        }))
      largest = std::max(largest, step / 2);
  }
  return largest;
}

/// The exponent of a positive number.
int exponentOf(omReal64 value) {
  omUInt64 bits;
  std::memcpy(&bits, &value, sizeof bits);
  return static_cast<int>(bits >> 52U) - 1023;
}

/// The largest distance in a bin.
omReal64 binEdge(omReal64 lowest, std::size_t bin) {
  return lowest * std::sqrt(std::ldexp(1.0, static_cast<int>(bin)));
}

}  // namespace

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

AcontrarioLoop::AcontrarioLoop(BaseEstimator& estimator, const SampleView& samples, const RobustOptions& options,
                               omReal64 rounding)
    : _estimator(estimator),
      _rough(dynamic_cast<const RobustModel*>(&estimator)),
      _all(samples),
      _samples(samples),
      _options(options),
      _rounding(rounding),
      _draw(options.seed),
      _chance(estimator, samples),
      _drawn(estimator.getMinimalDataSize()),
      _ranked(1, 1, 1),
      _first(SampleView{}),
      _rest(SampleView{}) {
  if (_rough && !_rough->hasRoughEstimation()) _rough = nullptr;
  const std::size_t dimension = samples.dimension;
  std::size_t nbFinite = 0;
  while (nbFinite < samples.nbSamples && isFinite(samples[nbFinite], dimension)) ++nbFinite;
  if (nbFinite < samples.nbSamples) {
    for (std::size_t i = 0; i < samples.nbSamples; ++i)
      if (isFinite(samples[i], dimension)) _finite.insert(_finite.end(), samples[i], samples[i] + dimension);
    _samples = {_finite.data(), _finite.size() / dimension, dimension};
  }
  if (!isKnown()) _rounding = std::max(_rounding, halfStepOf(_samples));
  if (_samples.nbSamples >= _drawn.size())
    _ranked = RankedDraw(_samples.nbSamples, _drawn.size(), options.nbMaxIterations);
  for (Hypothesis* hypothesis : {&_trial, &_refit, &_best, &_epochBest}) {
    hypothesis->params.resize(estimator.getNbParams(), false);
    hypothesis->loss = s_infinity;
  }
}

bool AcontrarioLoop::estimate(const SampleView& samples, RealVector& params) {
  if (_rough) return _rough->estimateRoughly(samples, params);
  return static_cast<bool>(_estimator.processViewEstimation(samples, params));
}

/// Draws a minimal set of samples and makes the model through it the trial; false when there is none.
bool AcontrarioLoop::drawModel() {
  if (_options.isRanked)
    _ranked.draw(_draw, _drawn);
  else
    _draw.draw(_samples.nbSamples, _drawn);
  _gathered.resize(std::max(_gathered.size(), _drawn.size() * _samples.dimension));
  auto target = _gathered.begin();
  for (const std::size_t i : _drawn) target = std::copy(_samples[i], _samples[i] + _samples.dimension, target);
  return estimate({_gathered.data(), _drawn.size(), _samples.dimension}, _trial.params);
}

/// The codimension, and the usual chance of samples to be near a model, from a few models. False where there are none.
bool AcontrarioLoop::prepareChance() {
  std::vector<std::size_t> codimensions;
  std::vector<omReal64> logs(s_nbBins);
  const omReal64 lowest = std::max(_rounding, std::numeric_limits<omReal64>::min());
  std::size_t nbModels = 0;
  for (std::size_t k = 0; k < _options.nbMaxIterations && nbModels < s_nbPilots; ++k) {
    if (_options.progress && !_options.progress(0)) {
      _end = eRO_Stopped;
      return false;
    }
    ++_nbIterations;
    if (!drawModel() || !(isKnown() || _chance.evaluate(_trial.params))) {
      ++_nbDegenerate;
      continue;
    }
    const std::size_t codimension = _chance.codimensionOf(_trial.params, _gathered.data());
    if (codimension == 0) continue;
    codimensions.push_back(codimension);
    std::sort(codimensions.begin(), codimensions.end());
    _chance.setCodimension(codimensions[codimensions.size() / 2]);
    ++nbModels;
    if (isKnown()) continue;
    omReal64 probability = 0;
    // What half of the background is within is left out below.
    for (std::size_t b = 0; b < s_nbBins && probability < 0.7; ++b) {
      probability = _chance.probability(binEdge(lowest, b));
      logs[b] += std::log(std::max(probability, 1e-300));
    }
  }
  if (nbModels == 0) return false;
  if (isKnown()) return true;
  for (std::size_t b = 0; b < s_nbBins; ++b) {
    _logChance[b] = std::min(logs[b] / static_cast<omReal64>(nbModels), -1e-9);
    _logMiss[b] = std::log(-std::expm1(_logChance[b]));
    // A distance that half of the background is within says nothing.
    if (_logChance[b] < -0.7) _nbBinsUsed = b + 1;
  }
  return true;
}

/// Makes the first `size` samples of the order, which is shuffled as far as that, the part.
void AcontrarioLoop::choosePart(std::size_t size) {
  const std::size_t dimension = _samples.dimension;
  if (_order.empty()) {
    _order.resize(_samples.nbSamples);
    std::iota(_order.begin(), _order.end(), std::size_t{0});
  }
  for (std::size_t i = _partSize; i < size; ++i)
    std::swap(_order[i], _order[i + _draw.below(static_cast<omUInt32>(_order.size() - i))]);
  _partSize = size;
  _partRows.clear();
  for (std::size_t i = 0; i < size; ++i)
    _partRows.insert(_partRows.end(), _samples[_order[i]], _samples[_order[i]] + dimension);
  const std::size_t nbFirst = std::min(s_nbFirst, size);
  _first = ModelDistances({_partRows.data(), nbFirst, dimension});
  _rest = ModelDistances({_partRows.data() + nbFirst * dimension, size - nbFirst, dimension});
  _squares.resize(size);
  _gathered.resize(std::max(_gathered.size(), size * dimension));
  if (isKnown()) return;
  _entropy.resize(size + 1);
  const auto n = static_cast<omReal64>(size);
  for (std::size_t k = 0; k <= size; ++k) {
    const omReal64 p = static_cast<omReal64>(k) / n;
    _entropy[k] = (k > 0 ? n * p * std::log(p) : 0) + (k < size ? n * (1 - p) * std::log1p(-p) : 0);
  }
}

/// The loss where no threshold is known: the least logarithm, over all bins, of the chance that as many are within.
void AcontrarioLoop::scoreByScale(Hypothesis& hypothesis) {
  std::array<std::size_t, s_nbBins> counts{};
  const omReal64 lowest = std::max(_rounding, std::numeric_limits<omReal64>::min());
  const omReal64 unit = 1 / lowest;
  for (const omReal64 square : _squares) {
    const omReal64 relative = square * unit * unit;
    // Bin b holds distances of at most 2^(b / 2) times the lowest.
    const int bin = relative > 1 ? exponentOf(relative) + 1 : 0;
    ++counts[static_cast<std::size_t>(std::min(bin, static_cast<int>(s_nbBins) - 1))];
  }
  const std::size_t m = _drawn.size();
  std::size_t within = 0;
  hypothesis.loss = 0;
  hypothesis.scale = 0;
  hypothesis.nbInliers = 0;
  std::size_t best = 0;
  for (std::size_t b = 0; b < _nbBinsUsed; ++b) {
    if (counts[b] == 0) continue;
    within += counts[b];
    if (within <= m) continue;
    const std::size_t k = within - m;
    const std::size_t n = _partSize;
    const auto nReal = static_cast<omReal64>(n);
    if (!(static_cast<omReal64>(k) > nReal * std::exp(_logChance[b]))) continue;
    const omReal64 loss =
        -_entropy[k] + static_cast<omReal64>(k) * _logChance[b] + static_cast<omReal64>(n - k) * _logMiss[b];
    if (!(loss < hypothesis.loss)) continue;
    hypothesis.loss = loss;
    hypothesis.nbInliers = within;
    best = b;
  }
  hypothesis.scale = binEdge(lowest, best);
}

/// Whether as many of the first samples are near a model as would be at half the best one's share of inliers.
bool AcontrarioLoop::isPromising(const RealVector& params) {
  if (!_first.evaluate(_estimator, params)) return false;
  if (isKnown()) return _first.countWithin(_options.threshold) >= _nbFirstNeeded;
  return _nbFirstNeeded == 0 || _first.countWithin(_best.scale) >= _nbFirstNeeded;
}

/// Scores a hypothesis whose first distances were taken. False where the others cannot be.
bool AcontrarioLoop::score(Hypothesis& hypothesis) {
  if (_partSize > s_nbFirst && !_rest.evaluate(_estimator, hypothesis.params)) return false;
  std::copy(_first.squares().begin(), _first.squares().end(), _squares.begin());
  std::copy(_rest.squares().begin(), _rest.squares().end(),
            _squares.begin() + static_cast<std::ptrdiff_t>(_first.squares().size()));
  if (!isKnown()) {
    scoreByScale(hypothesis);
    return true;
  }
  hypothesis.scale = _options.threshold;
  hypothesis.nbInliers = _first.countWithin(hypothesis.scale) + _rest.countWithin(hypothesis.scale);
  hypothesis.loss = _first.truncatedSum(hypothesis.scale) + _rest.truncatedSum(hypothesis.scale);
  return true;
}

/// The rows within a threshold, copied.
SampleView AcontrarioLoop::gather(const SampleView& rows, const std::vector<omReal64>& squares, omReal64 threshold) {
  _gathered.resize(std::max(_gathered.size(), rows.nbSamples * rows.dimension));
  auto target = _gathered.begin();
  std::size_t count = 0;
  for (std::size_t i = 0; i < rows.nbSamples; ++i) {
    if (!(squares[i] <= threshold * threshold)) continue;
    target = std::copy(rows[i], rows[i] + rows.dimension, target);
    ++count;
  }
  return {_gathered.data(), count, rows.dimension};
}

/// Refits a hypothesis, which was scored last, to the samples of the part near it, from a wider distance to its own
/// (Lebeda2012), as long as that makes it better.
void AcontrarioLoop::improve(Hypothesis& hypothesis) {
  const SampleView part{_partRows.data(), _partSize, _samples.dimension};
  omReal64 scale = hypothesis.scale;
  for (std::size_t round = 0; round < s_nbRounds; ++round) {
    const omReal64 widening = round == 0 ? 2 : round == 1 ? 1.5 : 1;
    const SampleView near = gather(part, _squares, widening * scale);
    if (near.nbSamples <= _drawn.size()) return;
    if (!estimate(near, _refit.params) || !_first.evaluate(_estimator, _refit.params) || !score(_refit)) return;
    scale = _refit.scale;
    // Improvements below a thousandth are left to the last refits.
    const bool isSettled = !(_refit.loss < hypothesis.loss - 1e-3 * std::abs(hypothesis.loss));
    if (_refit.loss < hypothesis.loss) std::swap(_refit, hypothesis);
    if (round >= 2 && isSettled) return;
  }
}

/// Improves a hypothesis, which was scored last, and makes it the best if it is.
void AcontrarioLoop::take(Hypothesis& hypothesis) {
  if (_options.localOptimisation) improve(hypothesis);
  if (!(hypothesis.loss < _best.loss)) return;
  std::swap(hypothesis, _best);
  const bool beatsChance = isSignificant();
  // As few of the first samples as a twentieth of models of half the best share have.
  const omReal64 mean = _bestShare / 2 * static_cast<omReal64>(s_nbFirst);
  const omReal64 least = mean - 1.6 * std::sqrt(mean);
  _nbFirstNeeded = std::max(_nbFirstNeeded, least > 0    ? static_cast<std::size_t>(std::ceil(least))
                                            : mean > 1.5 ? 1
                                                         : 0);
  if (beatsChance) considerInliers();
}

/// Whether the best model beats chance in the part; sets its share of inliers in excess of chance.
bool AcontrarioLoop::isSignificant() {
  _bestShare = 0;
  if (!(_best.loss < s_infinity) || !_chance.evaluate(_best.params)) return false;
  const omReal64 p = _chance.probability(_best.scale);
  const omReal64 logAlarms = _chance.logFalseAlarms(_partSize, _best.nbInliers, _best.scale, isKnown() ? 1 : _partSize);
  if (!(logAlarms < std::log(_options.maxFalseAlarms))) return false;
  const omReal64 share = static_cast<omReal64>(_best.nbInliers) / static_cast<omReal64>(_partSize);
  _bestShare = p < 1 ? std::max((share - p) / (1 - p), 0.0) : 0;
  return true;
}

/// Sets what share of minimal sets of inliers of the best model determine a model, and where samples are ranked the
/// largest share of inliers among the first of them, from as many as draws were from.
void AcontrarioLoop::considerInliers() {
  const std::size_t dimension = _samples.dimension;
  _determinedShare = 1;
  if (!_first.evaluate(_estimator, _best.params) || !score(_best)) return;
  std::vector<std::size_t> inliers;
  for (std::size_t i = 0; i < _partSize; ++i)
    if (_squares[i] <= _best.scale * _best.scale) inliers.push_back(i);
  if (inliers.size() < _drawn.size()) return;
  if (_options.isRanked) {
    constexpr std::size_t fewest = 20;
    for (std::size_t count = _samples.nbSamples; count >= std::max(_ranked.pool(), fewest); count -= count / 5) {
      const auto isAmong = [&](std::size_t i) { return _order[i] < count; };
      const auto nbAmong = std::count_if(_order.begin(), _order.begin() + static_cast<std::ptrdiff_t>(_partSize),
                                         [&](std::size_t rank) { return rank < count; });
      const auto nbInliers = std::count_if(inliers.begin(), inliers.end(), isAmong);
      if (static_cast<std::size_t>(nbAmong) < fewest) break;
      _bestShare = std::max(_bestShare, static_cast<omReal64>(nbInliers) / static_cast<omReal64>(nbAmong));
    }
  }
  std::size_t nbModels = 0;
  for (std::size_t k = 0; k < s_nbTries; ++k) {
    _draw.draw(inliers.size(), _drawn);
    auto target = _gathered.begin();
    for (const std::size_t i : _drawn)
      target = std::copy_n(_partRows.begin() + static_cast<std::ptrdiff_t>(inliers[i] * dimension), dimension, target);
    nbModels += estimate({_gathered.data(), _drawn.size(), dimension}, _refit.params) ? 1 : 0;
  }
  _determinedShare = static_cast<omReal64>(std::max(nbModels, std::size_t{1})) / static_cast<omReal64>(s_nbTries);
}

/// The number of draws after which, with the confidence asked for, one had inliers only and determined a model.
omReal64 AcontrarioLoop::nbDrawsNeeded() const {
  omReal64 allInliers = _determinedShare;
  for (std::size_t k = 0; k < _drawn.size(); ++k) allInliers *= _bestShare;
  if (allInliers >= 1) return 1;
  if (!(allInliers > 0)) return s_infinity;
  return std::ceil(std::log1p(-_options.confidence) / std::log1p(-allInliers));
}

/// Draws models until the confidence, the number of iterations or the callback ends the search, and keeps the best one.
void AcontrarioLoop::search() {
  const auto nbAllowed = static_cast<omReal64>(_options.nbMaxIterations);
  omReal64 rawBest = s_infinity;
  omReal64 nbNeeded = s_infinity;
  _end = eRO_IterationLimit;
  _epochBest.loss = s_infinity;
  for (std::size_t k = 0; k < _options.nbMaxIterations; ++k) {
    if (_options.progress) {
      _progress = std::max(_progress, std::min(static_cast<omReal64>(k) / std::min(nbNeeded, nbAllowed), 1.0));
      if (!_options.progress(_progress)) {
        _end = eRO_Stopped;
        return;
      }
    }
    ++_nbIterations;
    if (!drawModel()) {
      ++_nbDegenerate;
    } else if (isPromising(_trial.params) && score(_trial)) {
      if (_trial.loss < rawBest) {
        rawBest = _trial.loss;
        take(_trial);
        nbNeeded = nbDrawsNeeded();
      } else if (_trial.loss < _epochBest.loss) {
        std::swap(_trial, _epochBest);
      }
    }
    // By accident none of the first may be an inlier.
    if (k == s_longEpoch && !(_bestShare > 0)) _nbFirstNeeded = 0;
    const std::size_t epoch = _bestShare > 0 ? s_longEpoch : s_epoch;
    if (k % epoch == epoch - 1 && _epochBest.loss < s_infinity) {
      if (_first.evaluate(_estimator, _epochBest.params) && score(_epochBest)) take(_epochBest);
      nbNeeded = nbDrawsNeeded();
      _epochBest.loss = s_infinity;
    }
    if (static_cast<omReal64>(k + 1) < nbNeeded) continue;
    _end = eRO_Confident;
    return;
  }
}

/// Fits the model to its inliers among all samples until these no longer change.
bool AcontrarioLoop::polish(RealVector& params, omReal64& threshold) {
  ModelDistances distances(_samples);
  const omReal64 largest = isKnown() ? threshold : 2 * threshold;
  const std::size_t m = _drawn.size();
  std::size_t lastCount = 0;
  omReal64 lastSum = s_infinity;
  for (std::size_t round = 0; round < s_nbFinalRounds; ++round) {
    if (!distances.evaluate(_estimator, params)) return false;
    if (!isKnown() && _chance.evaluate(params)) deviationWithin(distances, _chance, m, _rounding, largest, threshold);
    const std::size_t count = distances.countWithin(threshold);
    const omReal64 sum = distances.truncatedSum(threshold);
    if (count == lastCount && !(sum < lastSum * (1 - 1e-9))) return true;
    lastCount = count;
    lastSum = sum;
    const SampleView inliers = gather(_samples, distances.squares(), threshold);
    if (inliers.nbSamples < m) return true;
    if (!_estimator.processViewEstimation(inliers, _refit.params)) return true;
    if (std::any_of(_refit.params.begin(), _refit.params.end(), [](omReal64 p) { return !std::isfinite(p); }))
      return true;
    params = _refit.params;
  }
  return true;
}

BoolResult AcontrarioLoop::finish(RobustResult& result) {
  RealVector params = _best.params;
  omReal64 threshold = _best.scale;
  ModelDistances distances(_all);
  if (!polish(params, threshold) || !distances.evaluate(_estimator, params) || !_chance.evaluate(params))
    return failure("The robust model cannot be evaluated");
  const std::size_t nbInliers = distances.countWithin(threshold);
  if (nbInliers < _drawn.size())
    return failure("Only " + std::to_string(nbInliers) + " of " + std::to_string(_all.nbSamples) +
                   " samples agree on a model that " + std::to_string(_drawn.size()) + " determine");
  std::vector<bool> inliers(_all.nbSamples);
  for (std::size_t i = 0; i < inliers.size(); ++i) inliers[i] = distances.isWithin(i, threshold);
  const omReal64 logAlarms =
      _chance.logFalseAlarms(_all.nbSamples, nbInliers, threshold, isKnown() ? 1 : _all.nbSamples);
  result.params.swap(params);
  result.inliers.swap(inliers);
  result.nbInliers = nbInliers;
  result.threshold = threshold;
  result.nbIterations = _nbIterations;
  result.nbDegenerate = _nbDegenerate;
  omReal64 within = threshold;
  result.sigma = deviationWithin(distances, _chance, _drawn.size(), _rounding, threshold, within);
  result.nbFalseAlarms = std::exp(logAlarms);
  result.score = logAlarms / std::log(10.0);
  result.end = _end;
  const bool isByChance = nbInliers <= _drawn.size() || !(result.nbFalseAlarms <= _options.maxFalseAlarms);
  if (_end == eRO_Confident && isByChance) result.end = eRO_NotConfident;
  return {};
}

BoolResult AcontrarioLoop::run(RobustResult& result) {
  if (_samples.nbSamples < _drawn.size() || !prepareChance()) {
    if (_end == eRO_Stopped) return failure("The robust estimation was stopped before it found a model");
    return failure("None of " + std::to_string(_nbIterations) + " drawn samples led to a model; " +
                   std::to_string(_nbDegenerate) + " of them were degenerate");
  }
  for (std::size_t size = s_firstPart;; size *= s_growth) {
    choosePart(std::min(size, _samples.nbSamples));
    _best.loss = s_infinity;
    // One of the first near a model is asked of all where it can be (T(1,1) of MatasChum2004).
    _nbFirstNeeded = isKnown() && _partSize >= s_firstPart / 2 ? 1 : 0;
    _bestShare = 0;
    search();
    if (_end == eRO_Stopped || isSignificant() || _partSize == _samples.nbSamples) break;
  }
  if (!(_best.loss < s_infinity)) {
    if (_end == eRO_Stopped) return failure("The robust estimation was stopped before it found a model");
    return failure("None of " + std::to_string(_nbIterations) + " drawn samples led to a model; " +
                   std::to_string(_nbDegenerate) + " of them were degenerate");
  }
  return finish(result);
}

}  // namespace ormix::detail
