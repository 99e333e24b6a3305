#include <ORMIXMath/Estimation/AcontrarioLoop.h>
#include <ORMIXMath/Estimation/InlierDeviation.h>
#include <ORMIXMath/Estimation/ModelScore.h>
#include <ORMIXMath/Estimation/RobustEstimation.h>
#include <ORMIXMath/Estimation/SampleDraw.h>
#include <ORMIXMath/Estimation/Samples.h>
#include <ORMIXUtil/NumericLimits.h>

#include <algorithm>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <limits>
#include <string>

namespace ormix {
namespace {

constexpr omReal64 s_infinity = std::numeric_limits<omReal64>::infinity();
// Most refits of one new best model to its inliers; few are ever needed (Chum2003).
constexpr std::size_t s_nbLocalRounds = 4;
// Most refits of the final model, which end when the score no longer changes.
constexpr std::size_t s_nbFinalRounds = 20;

/// Distances up to this may be due to rounding of the coordinates, of which the largest finite magnitude counts.
omReal64 roundingOf(const SampleView& samples) {
  omReal64 largest = 0;
  for (std::size_t k = 0; k < samples.nbSamples * samples.dimension; ++k) {
    const omReal64 magnitude = std::abs(samples.data[k]);
    if (magnitude > largest && std::isfinite(magnitude)) largest = magnitude;
  }
  return 16 * NumericLimits<omReal64>::s_eps * largest;
}

/// The number of minimal sets after which, with probability `confidence`, one of them had no outlier.
omReal64 nbDrawsFor(omReal64 confidence, std::size_t nbInliers, std::size_t nbSamples, std::size_t minimalDataSize) {
  const auto share = static_cast<omReal64>(nbInliers) / static_cast<omReal64>(nbSamples);
  omReal64 allInliers = 1;
  for (std::size_t k = 0; k < minimalDataSize; ++k) allInliers *= share;
  if (allInliers >= 1) return 1;
  if (!(allInliers > 0)) return s_infinity;
  return std::ceil(std::log1p(-confidence) / std::log1p(-allInliers));
}

/// A model with its score.
struct Candidate {
  RealVector params;
  detail::ModelScore score{s_infinity, -s_infinity};
};

/// The interval of the reported progress that one search covers.
struct ProgressRange {
  omReal64 from;
  omReal64 to;
};

/// One robust estimation. Allocates in the constructor only.
///
/// `_distances` always belongs to the model evaluated last: the trial, or the best model after takeTrial(). The
/// functions that count or gather inliers use those distances.
class RobustLoop {
 public:
  RobustLoop(BaseEstimator& estimator, const SampleView& samples, const RobustOptions& options)
      : _estimator(estimator),
        _samples(samples),
        _options(options),
        _draw(options.seed),
        _ranked(samples.nbSamples, estimator.getMinimalDataSize(), options.nbMaxIterations),
        _distances(samples),
        _drawn(estimator.getMinimalDataSize()),
        _rows(samples.nbSamples * samples.dimension),
        _rounding(roundingOf(samples)) {
    _best.params.resize(estimator.getNbParams(), false);
    _trial.params.resize(estimator.getNbParams(), false);
  }

  BoolResult run(RobustResult& result);

 private:
  bool isFound() const { return _best.score.loss < s_infinity; }
  void search(eRobustMethod method, omReal64 threshold, const ProgressRange& range);
  bool reportProgress(omReal64 part, const ProgressRange& range);
  void takeTrial(eRobustMethod method, omReal64 threshold, const detail::ModelScore& score);
  omReal64 nbModelsNeeded(eRobustMethod method, omReal64 threshold) const;
  BoolResult noModel() const;
  bool drawModel();
  omReal64 thresholdFor(eRobustMethod method, omReal64 given, const detail::ModelScore& score) const;
  detail::ModelScore scoreOf(eRobustMethod method, omReal64 threshold);
  bool fitTrialToInliers(omReal64 threshold);
  void improveLocally(eRobustMethod method, omReal64 threshold);
  omReal64 estimateThreshold();
  void refitBest(omReal64 threshold);
  SampleView gatherInliers(omReal64 threshold);
  void judge(RobustResult& result, std::size_t nbInliers, omReal64 threshold);
  BoolResult moveTo(RobustResult& result, omReal64 threshold);

  BaseEstimator& _estimator;
  SampleView _samples;
  const RobustOptions& _options;
  detail::SampleDraw _draw;
  detail::RankedDraw _ranked;
  detail::ModelDistances _distances;
  std::vector<std::size_t> _drawn;
  std::vector<omReal64> _rows;
  omReal64 _rounding;
  Candidate _best;
  Candidate _trial;
  std::size_t _nbIterations = 0;
  std::size_t _nbDegenerate = 0;
  omReal64 _progress = 0;
  eRobustEnd _end = eRO_IterationLimit;
};

/// Draws a minimal set of samples and makes the model through it the trial, evaluated; false when there is none.
bool RobustLoop::drawModel() {
  if (_options.isRanked)
    _ranked.draw(_draw, _drawn);
  else
    _draw.draw(_samples.nbSamples, _drawn);
  auto target = _rows.begin();
  for (const std::size_t i : _drawn) target = std::copy(_samples[i], _samples[i] + _samples.dimension, target);
  const SampleView minimal{_rows.data(), _drawn.size(), _samples.dimension};
  return _estimator.processViewEstimation(minimal, _trial.params) && _distances.evaluate(_estimator, _trial.params);
}

/// The threshold of inliers: the given one, or for eRM_LMedS without one that of the score, a median.
omReal64 RobustLoop::thresholdFor(eRobustMethod method, omReal64 given, const detail::ModelScore& score) const {
  if (method != eRM_LMedS || given > 0) return given;
  return std::max(detail::thresholdFromMedian(score.loss, _samples.nbSamples, _drawn.size()), _rounding);
}

/// The score of the model evaluated last. For eRM_LMedS it is infinite when the best model's median is not larger.
detail::ModelScore RobustLoop::scoreOf(eRobustMethod method, omReal64 threshold) {
  switch (method) {
    case eRM_Ransac:
      return {-static_cast<omReal64>(_distances.countWithin(threshold)), _distances.truncatedSum(threshold)};
    case eRM_LMedS:
      return {_distances.medianBelow(_best.score.loss, _drawn.size()), 0};
    default:
      return {_distances.truncatedSum(threshold), 0};
  }
}

/// Copies the inliers of the model evaluated last into `_rows`.
SampleView RobustLoop::gatherInliers(omReal64 threshold) {
  auto target = _rows.begin();
  std::size_t count = 0;
  for (std::size_t i = 0; i < _samples.nbSamples; ++i) {
    if (!_distances.isWithin(i, threshold)) continue;
    target = std::copy(_samples[i], _samples[i] + _samples.dimension, target);
    ++count;
  }
  return {_rows.data(), count, _samples.dimension};
}

/// Fits the trial to the inliers of the model evaluated last and evaluates it; false when that is not possible.
bool RobustLoop::fitTrialToInliers(omReal64 threshold) {
  const SampleView inliers = gatherInliers(threshold);
  if (inliers.nbSamples < _drawn.size()) return false;
  return _estimator.processViewEstimation(inliers, _trial.params) && _distances.evaluate(_estimator, _trial.params);
}

/// Refits the best model, which must have been evaluated last, to its inliers as long as that improves its score.
void RobustLoop::improveLocally(eRobustMethod method, omReal64 threshold) {
  for (std::size_t round = 0; round < s_nbLocalRounds; ++round) {
    if (!fitTrialToInliers(thresholdFor(method, threshold, _best.score))) return;
    const detail::ModelScore score = scoreOf(method, threshold);
    if (!(score < _best.score)) return;
    _best.params.swap(_trial.params);
    _best.score = score;
  }
}

/// Calls the callback with a fraction that never decreases; returns whether to continue.
bool RobustLoop::reportProgress(omReal64 part, const ProgressRange& range) {
  if (!_options.progress) return true;
  _progress = std::max(_progress, range.from + (range.to - range.from) * std::min(part, 1.0));
  if (_options.progress(_progress)) return true;
  _end = eRO_Stopped;
  return false;
}

/// Makes the trial the best model, improves it, and evaluates it last.
void RobustLoop::takeTrial(eRobustMethod method, omReal64 threshold, const detail::ModelScore& score) {
  _best.params.swap(_trial.params);
  _best.score = score;
  if (!_options.localOptimisation) return;
  improveLocally(method, threshold);
  // A local refit that was no better may have replaced its distances. No failure is expected: the same parameters have
  // been evaluated before.
  _distances.evaluate(_estimator, _best.params);
}

/// The number of models to draw for the confidence, from the number of inliers of the best one, evaluated last.
omReal64 RobustLoop::nbModelsNeeded(eRobustMethod method, omReal64 threshold) const {
  std::size_t nbInliers = _distances.countWithin(thresholdFor(method, threshold, _best.score));
  // A threshold from the model's own median accepts nearly every sample, also for a bad model. The median supports only
  // the half of the samples that it was taken from.
  if (method == eRM_LMedS && !(threshold > 0)) nbInliers = std::min(nbInliers, (_samples.nbSamples + 1) / 2);
  return nbDrawsFor(_options.confidence, nbInliers, _samples.nbSamples, _drawn.size());
}

/// Draws models until the confidence, the number of iterations or the callback ends the search, and keeps the best one.
void RobustLoop::search(eRobustMethod method, omReal64 threshold, const ProgressRange& range) {
  const auto nbAllowed = static_cast<omReal64>(_options.nbMaxIterations);
  omReal64 nbNeeded = isFound() ? nbModelsNeeded(method, threshold) : s_infinity;
  std::size_t nbModels = 0;
  _end = eRO_IterationLimit;
  for (std::size_t k = 0; k < _options.nbMaxIterations; ++k) {
    if (!reportProgress(static_cast<omReal64>(k) / std::min(nbNeeded, nbAllowed), range)) return;
    ++_nbIterations;
    if (!drawModel()) {
      ++_nbDegenerate;
      continue;
    }
    ++nbModels;
    const detail::ModelScore score = scoreOf(method, threshold);
    if (score < _best.score) {
      takeTrial(method, threshold, score);
      nbNeeded = nbModelsNeeded(method, threshold);
    }
    if (static_cast<omReal64>(nbModels) < nbNeeded) continue;
    _end = eRO_Confident;
    return;
  }
}

BoolResult RobustLoop::noModel() const {
  if (_end == eRO_Stopped) return failure("The robust estimation was stopped before it found a model");
  return failure("None of " + std::to_string(_nbIterations) + " drawn samples led to a model; " +
                 std::to_string(_nbDegenerate) + " of them were degenerate");
}

/// Refits the best model to its inliers as long as the sum of squared distances, cut off at the threshold, does not
/// grow.
void RobustLoop::refitBest(omReal64 threshold) {
  if (!_distances.evaluate(_estimator, _best.params)) return;
  omReal64 sum = _distances.truncatedSum(threshold);
  for (std::size_t round = 0; round < s_nbFinalRounds; ++round) {
    if (!fitTrialToInliers(threshold)) return;
    const omReal64 refitSum = _distances.truncatedSum(threshold);
    if (!(refitSum <= sum)) return;
    const bool isSame = refitSum == sum;
    _best.params.swap(_trial.params);
    sum = refitSum;
    if (isSame) return;
  }
}

/// Moves the best model, with its inliers and score, to the result.
BoolResult RobustLoop::moveTo(RobustResult& result, omReal64 threshold) {
  if (!_distances.evaluate(_estimator, _best.params)) return failure("The robust model cannot be evaluated");
  const std::size_t nbInliers = _distances.countWithin(threshold);
  if (nbInliers < _drawn.size())
    return failure("Only " + std::to_string(nbInliers) + " of " + std::to_string(_samples.nbSamples) +
                   " samples agree on a model that " + std::to_string(_drawn.size()) + " determine");
  std::vector<bool> inliers(_samples.nbSamples);
  for (std::size_t i = 0; i < inliers.size(); ++i) inliers[i] = _distances.isWithin(i, threshold);
  switch (_options.method) {
    case eRM_Ransac:
      result.score = static_cast<omReal64>(nbInliers);
      break;
    case eRM_LMedS:
      result.score = _distances.median(_drawn.size());
      break;
    default:
      result.score = _distances.truncatedSum(threshold) / static_cast<omReal64>(_samples.nbSamples);
  }
  judge(result, nbInliers, threshold);
  result.params.swap(_best.params);
  result.inliers.swap(inliers);
  result.nbInliers = nbInliers;
  result.threshold = threshold;
  result.nbIterations = _nbIterations;
  result.nbDegenerate = _nbDegenerate;
  return {};
}

/// Sets what can be said of the best model, evaluated last, by chance: the standard deviation of its inliers, how many
/// such models are expected by accident, and whether the search ended confident nevertheless.
void RobustLoop::judge(RobustResult& result, std::size_t nbInliers, omReal64 threshold) {
  detail::ChanceModel chance(_estimator, _samples);
  const auto& squares = _distances.squares();
  const auto nearest = static_cast<std::size_t>(std::min_element(squares.begin(), squares.end()) - squares.begin());
  chance.setCodimension(std::max(chance.codimensionOf(_best.params, _samples[nearest]), std::size_t{1}));
  chance.evaluate(_best.params);
  const bool isGiven = _options.threshold > 0;
  result.nbFalseAlarms =
      std::exp(chance.logFalseAlarms(_samples.nbSamples, nbInliers, threshold, isGiven ? 1 : _samples.nbSamples));
  omReal64 within = threshold;
  result.sigma = detail::deviationWithin(_distances, chance, _drawn.size(), _rounding, threshold, within);
  const bool isByChance = nbInliers <= _drawn.size() || !(result.nbFalseAlarms <= _options.maxFalseAlarms);
  result.end = _end == eRO_Confident && isByChance ? eRO_NotConfident : _end;
}

/// The threshold from the spread of the samples about the model of least median. Outliers pull that model towards them
/// when they are about one half of the samples, so it is refitted to the samples within the threshold as long as this
/// makes the threshold smaller.
omReal64 RobustLoop::estimateThreshold() {
  omReal64 threshold = thresholdFor(eRM_LMedS, 0, _best.score);
  for (std::size_t round = 0; round < s_nbFinalRounds && _distances.evaluate(_estimator, _best.params); ++round) {
    threshold = _distances.refinedThreshold(threshold, _drawn.size(), _rounding);
    if (!fitTrialToInliers(threshold)) break;
    if (!(_distances.refinedThreshold(threshold, _drawn.size(), _rounding) < threshold)) break;
    _best.params.swap(_trial.params);
  }
  return threshold;
}

/// Where the threshold has to be estimated, searches the model of least median first and then, with the threshold from
/// it, the best model by the method.
BoolResult RobustLoop::run(RobustResult& result) {
  omReal64 threshold = _options.threshold;
  const bool isMedian = _options.method == eRM_LMedS;
  const bool isEstimated = !isMedian && !(threshold > 0);
  if (isMedian || isEstimated) {
    search(eRM_LMedS, threshold, {0, isEstimated ? 0.5 : 1.0});
    if (!isFound()) return noModel();
    if (!(threshold > 0)) threshold = estimateThreshold();
  }
  if (!isMedian && _end != eRO_Stopped) {
    if (isFound() && _distances.evaluate(_estimator, _best.params)) _best.score = scoreOf(_options.method, threshold);
    search(_options.method, threshold, {isEstimated ? 0.5 : 0.0, 1});
  }
  if (!isFound()) return noModel();
  refitBest(threshold);
  return moveTo(result, threshold);
}

BoolResult checkOptions(const RobustOptions& options) {
  if (!(options.threshold >= 0) || !std::isfinite(options.threshold))
    return failure("The threshold of the robust estimation is negative or not finite");
  if (!(options.confidence > 0 && options.confidence < 1))
    return failure("The confidence of the robust estimation is not between 0 and 1");
  if (!(options.maxFalseAlarms > 0))
    return failure("The number of false alarms of the robust estimation is not above 0");
  if (options.nbMaxIterations == 0) return failure("The robust estimation is allowed no iteration");
  return {};
}

BoolResult checkSamples(const BaseEstimator& estimator, const SampleView& samples) {
  if (samples.nbSamples < estimator.getMinimalDataSize())
    return failure(estimator.getClassName() + ": " + std::to_string(samples.nbSamples) +
                   " samples were given, at least " + std::to_string(estimator.getMinimalDataSize()) + " are needed");
  if (samples.nbSamples > std::numeric_limits<omUInt32>::max())
    return failure("The robust estimation draws from at most 2^32 - 1 samples");
  if (samples.dimension != estimator.getSampleDimension())
    return failure(estimator.getClassName() + ": the samples are of dimension " + std::to_string(samples.dimension) +
                   " while dimension " + std::to_string(estimator.getSampleDimension()) + " is needed");
  return {};
}

}  // namespace

BoolResult robustEstimation(BaseEstimator& estimator, const SampleView& samples, const RobustOptions& options,
                            RobustResult& result) {
  BoolResult checked = checkOptions(options);
  if (checked) checked = checkSamples(estimator, samples);
  if (!checked) return checked;
  if (options.method == eRM_Acontrario)
    return detail::AcontrarioLoop(estimator, samples, options, roundingOf(samples)).run(result);
  return RobustLoop(estimator, samples, options).run(result);
}

BoolResult robustEstimation(BaseEstimator& estimator, const DataSet& dataSet, const RobustOptions& options,
                            RobustResult& result) {
  Samples samples;
  const BoolResult copied = samples.assign(dataSet);
  if (!copied) return copied;
  return robustEstimation(estimator, samples.view(), options, result);
}

}  // namespace ormix
