#include <ORMIXMath/Estimation/AcontrarioLoop.h>
#include <ORMIXMath/Estimation/CoordinateStep.h>
#include <ORMIXMath/Estimation/InlierDeviation.h>
#include <ORMIXUtil/NumericLimits.h>

#include <algorithm>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
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
// Sets drawn near a model that is improved, where models are local.
constexpr std::size_t s_nbInnerDraws = 100;
// Models with so much of the evidence for each other are found alike.
constexpr omReal64 s_alike = 0.9;
constexpr std::size_t s_nbFinalRounds = 20;

bool isFinite(const omReal64* row, std::size_t dimension) {
  return std::all_of(row, row + dimension, [](omReal64 value) { return std::isfinite(value); });
}

}  // namespace

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
      _rest(SampleView{}),
      _byScale(0) {
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
  _byScale = ScaleScore(std::max(_rounding, std::numeric_limits<omReal64>::min()));
  if (_samples.nbSamples >= _drawn.size())
    _ranked = RankedDraw(_samples.nbSamples, _drawn.size(), options.nbMaxIterations);
  for (Hypothesis* hypothesis : {&_trial, &_refit, &_inner, &_best, &_epochBest}) {
    hypothesis->params.resize(estimator.getNbParams(), false);
    hypothesis->loss = s_infinity;
  }
}

/// Fits a model near to samples.
bool AcontrarioLoop::refine(const SampleView& samples, RealVector& params) {
  if (_rough) return _rough->refineRoughly(samples, params);
  return static_cast<bool>(_estimator.processViewEstimation(samples, params));
}

/// The codimension, and the usual chance of samples to be near a model, from a few models. False where there are none.
bool AcontrarioLoop::prepareChance() {
  std::vector<std::size_t> codimensions;
  std::size_t nbModels = 0;
  for (std::size_t k = 0; k < _options.nbMaxIterations && nbModels < s_nbPilots; ++k) {
    if (_options.progress && !_options.progress(0)) {
      _end = eRO_Stopped;
      return false;
    }
    ++_nbIterations;
    if (drawModels() == 0 || !(isKnown() || _chance.evaluate(_models.front()))) {
      ++_nbDegenerate;
      continue;
    }
    const std::size_t codimension = _chance.codimensionOf(_models.front(), _gathered.data());
    if (codimension == 0) continue;
    codimensions.push_back(codimension);
    std::sort(codimensions.begin(), codimensions.end());
    _chance.setCodimension(codimensions[codimensions.size() / 2]);
    ++nbModels;
    if (!isKnown()) _byScale.addChance(_chance);
  }
  if (nbModels == 0) return false;
  if (!isKnown()) _byScale.useChance();
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
  if (!isKnown()) _byScale.setSizes(size, _drawn.size());
  if (_rough && _rough->isLocal())
    _near.assign({_partRows.data(), std::min(size, s_firstPart), dimension}, _drawn.size());
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
    const ScaleScore::Agreement agreement = _byScale.agreement(_squares);
    hypothesis.loss = agreement.logChance;
    hypothesis.scale = agreement.distance;
    hypothesis.nbInliers = agreement.nbInliers;
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

/// What speaks for a hypothesis: nothing where its loss is the one of a model far from all samples.
omReal64 AcontrarioLoop::evidence(const Hypothesis& hypothesis) const {
  const omReal64 most = isKnown() ? static_cast<omReal64>(_partSize) * _options.threshold * _options.threshold : 0;
  return most - hypothesis.loss;
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
    _refit.params = hypothesis.params;
    if (!refine(near, _refit.params) || !_first.evaluate(_estimator, _refit.params) || !score(_refit)) return;
    scale = _refit.scale;
    // Improvements below a thousandth are left to the last refits.
    const bool isSettled = !(_refit.loss < hypothesis.loss - 1e-3 * std::abs(hypothesis.loss));
    if (_refit.loss < hypothesis.loss) std::swap(_refit, hypothesis);
    if (round >= 2 && isSettled) return;
  }
}

/// Draws minimal sets among the samples of the part near a hypothesis, where inliers are denser than elsewhere also
/// when it is not right yet (the inner draws of Chum2003), and takes each better model through one.
void AcontrarioLoop::drawNear(Hypothesis& hypothesis) {
  const SampleView part{_partRows.data(), _partSize, _samples.dimension};
  const omReal64 factor = isKnown() ? 3 : 2;
  std::vector<std::size_t> near;
  for (std::size_t k = 0; k < s_nbInnerDraws; ++k) {
    if (near.empty()) {
      if (!_first.evaluate(_estimator, hypothesis.params) || !score(hypothesis)) return;
      const omReal64 limit = factor * hypothesis.scale;
      for (std::size_t i = 0; i < _partSize; ++i)
        if (_squares[i] <= limit * limit) near.push_back(i);
      if (near.size() <= _drawn.size()) return;
    }
    _draw.draw(near.size(), _drawn);
    for (std::size_t& index : _drawn) index = near[index];
    const std::size_t nbModels = estimateMinimal(copied(part));
    for (std::size_t m = 0; m < nbModels; ++m) {
      _inner.params.swap(_models[m]);
      if (!_first.evaluate(_estimator, _inner.params) || !score(_inner) || !(_inner.loss < hypothesis.loss)) continue;
      improve(_inner);
      std::swap(_inner, hypothesis);
      near.clear();
      break;
    }
  }
}

/// Improves a hypothesis, which was scored last, and makes it the best if it is.
void AcontrarioLoop::take(Hypothesis& hypothesis) {
  if (_options.localOptimisation) {
    improve(hypothesis);
    if (_near.isUsable() && evidence(hypothesis) < s_alike * evidence(_best)) drawNear(hypothesis);
  }
  const bool isMuchBetter = evidence(_best) < s_alike * evidence(hypothesis);
  if (isMuchBetter || s_alike * evidence(_best) <= evidence(hypothesis)) _nbFinds = isMuchBetter ? 1 : _nbFinds + 1;
  if (!(hypothesis.loss < _best.loss)) return;
  std::swap(hypothesis, _best);
  const bool beatsChance = isSignificant();
  // As few of the first samples as a twentieth of models of half the best share have.
  const omReal64 mean = _bestShare / 2 * static_cast<omReal64>(s_nbFirst);
  const omReal64 least = mean - 1.6 * std::sqrt(mean);
  _nbFirstNeeded = std::max(_nbFirstNeeded, least > 0    ? static_cast<std::size_t>(std::ceil(least))
                                            : mean > 1.5 ? 1
                                                         : 0);
  if (beatsChance && (isMuchBetter || !_near.isUsable())) considerInliers();
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

/// Scores the trial and makes it the best, or of its epoch.
void AcontrarioLoop::consider(omReal64& rawBest, omReal64& nbNeeded) {
  if (!isPromising(_trial.params) || !score(_trial)) return;
  if (_trial.loss < rawBest) {
    rawBest = _trial.loss;
    take(_trial);
    nbNeeded = nbDrawsNeeded();
  } else if (_trial.loss < _epochBest.loss) {
    std::swap(_trial, _epochBest);
  }
}

/// Draws models until the confidence, the number of iterations or the callback ends the search, and keeps the best one.
void AcontrarioLoop::search() {
  const auto nbAllowed = static_cast<omReal64>(_options.nbMaxIterations);
  omReal64 rawBest = s_infinity;
  omReal64 nbNeeded = s_infinity;
  _end = eRO_IterationLimit;
  _epochBest.loss = s_infinity;
  _drawsNear = false;
  for (std::size_t k = 0; k < _options.nbMaxIterations; ++k) {
    if (_options.progress) {
      _progress = std::max(_progress, std::min(static_cast<omReal64>(k) / std::min(nbNeeded, nbAllowed), 1.0));
      if (!_options.progress(_progress)) {
        _end = eRO_Stopped;
        return;
      }
    }
    ++_nbIterations;
    const std::size_t nbModels = drawModels();
    _nbDegenerate += nbModels == 0 ? 1 : 0;
    for (std::size_t m = 0; m < nbModels; ++m) {
      _trial.params.swap(_models[m]);
      consider(rawBest, nbNeeded);
    }
    // What is easy was found among all.
    if (k == s_epoch) _drawsNear = _near.isUsable() && !(_bestShare > 0);
    // By accident none of the first may be an inlier.
    if (k == s_longEpoch && !(_bestShare > 0)) _nbFirstNeeded = 0;
    const std::size_t epoch = _bestShare > 0 && !_near.isUsable() ? s_longEpoch : s_epoch;
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
  const bool isRefined = _rough && _rough->isRefinedFully();
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
    _refit.params = params;
    const bool isFitted = isRefined ? _rough->refineRoughly(inliers, _refit.params)
                                    : static_cast<bool>(_estimator.processViewEstimation(inliers, _refit.params));
    if (!isFitted) return true;
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
    _nbFinds = 0;
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
