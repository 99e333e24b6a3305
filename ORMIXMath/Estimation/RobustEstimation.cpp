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
// Refits of one new best model on its consensus, at most; few are ever needed (Chum, Matas and Kittler 2003).
constexpr std::size_t s_nbLocalRounds = 4;
// Refits at the end, at most, until the mask no longer changes.
constexpr std::size_t s_nbFinalRounds = 20;

/// Distances below this are rounding of the samples, whatever the model.
omReal64 roundingOf(const SampleView& samples) {
  omReal64 largest = 0;
  for (std::size_t k = 0; k < samples.nbSamples * samples.dimension; ++k) {
    const omReal64 magnitude = std::abs(samples.data[k]);
    if (magnitude > largest && std::isfinite(magnitude)) largest = magnitude;
  }
  return 16 * NumericLimits<omReal64>::s_eps * largest;
}

/// How many minimal samples make it as likely as asked that one of them is all inliers.
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

/// The part of the whole progress that one search is.
struct ProgressRange {
  omReal64 from;
  omReal64 to;
};

/// One robust estimation. All its memory is taken in the constructor.
class RobustLoop {
 public:
  RobustLoop(BaseEstimator& estimator, const SampleView& samples, const RobustOptions& options)
      : _estimator(estimator),
        _samples(samples),
        _options(options),
        _draw(options.seed),
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
  bool goesOn(omReal64 part, const ProgressRange& range);
  void takeTrial(eRobustMethod method, omReal64 threshold, const detail::ModelScore& score);
  omReal64 nbNeededBy(eRobustMethod method, omReal64 threshold) const;
  BoolResult noModel() const;
  bool drawModel();
  omReal64 thresholdFor(eRobustMethod method, omReal64 given, const detail::ModelScore& score) const;
  detail::ModelScore scoreOf(eRobustMethod method, omReal64 threshold);
  bool fitTrialToConsensus(omReal64 threshold);
  void improveLocally(eRobustMethod method, omReal64 threshold);
  omReal64 estimateThreshold();
  void refitBest(omReal64 threshold);
  SampleView gather(omReal64 threshold);
  BoolResult moveTo(RobustResult& result, omReal64 threshold);

  BaseEstimator& _estimator;
  SampleView _samples;
  const RobustOptions& _options;
  detail::SampleDraw _draw;
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

/// The model through a minimal sample into the trial, with its distances; false when there is none.
bool RobustLoop::drawModel() {
  _draw.draw(_samples.nbSamples, _drawn);
  auto target = _rows.begin();
  for (const std::size_t i : _drawn) target = std::copy(_samples[i], _samples[i] + _samples.dimension, target);
  const SampleView minimal{_rows.data(), _drawn.size(), _samples.dimension};
  return _estimator.processViewEstimation(minimal, _trial.params) && _distances.evaluate(_estimator, _trial.params);
}

/// The threshold given, or what the median that is the score suggests.
omReal64 RobustLoop::thresholdFor(eRobustMethod method, omReal64 given, const detail::ModelScore& score) const {
  if (method != eRM_LMedS || given > 0) return given;
  return std::max(detail::thresholdFromMedian(score.loss, _samples.nbSamples, _drawn.size()), _rounding);
}

/// The score of the model whose distances are at hand; an infinite one when the best model's median is smaller.
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

/// The samples within the threshold of the model whose distances are at hand, one after the other.
SampleView RobustLoop::gather(omReal64 threshold) {
  auto target = _rows.begin();
  std::size_t count = 0;
  for (std::size_t i = 0; i < _samples.nbSamples; ++i) {
    if (!_distances.isWithin(i, threshold)) continue;
    target = std::copy(_samples[i], _samples[i] + _samples.dimension, target);
    ++count;
  }
  return {_rows.data(), count, _samples.dimension};
}

/// The estimator's own fit to the consensus of the model whose distances are at hand, into the trial.
bool RobustLoop::fitTrialToConsensus(omReal64 threshold) {
  const SampleView consensus = gather(threshold);
  if (consensus.nbSamples < _drawn.size()) return false;
  return _estimator.processViewEstimation(consensus, _trial.params) && _distances.evaluate(_estimator, _trial.params);
}

/// Fits the new best model, whose distances are at hand, to its consensus as long as that makes it better.
void RobustLoop::improveLocally(eRobustMethod method, omReal64 threshold) {
  for (std::size_t round = 0; round < s_nbLocalRounds; ++round) {
    if (!fitTrialToConsensus(thresholdFor(method, threshold, _best.score))) return;
    const detail::ModelScore score = scoreOf(method, threshold);
    if (!(score < _best.score)) return;
    _best.params.swap(_trial.params);
    _best.score = score;
  }
}

/// Asks the callback, with a part of the work done that never goes back.
bool RobustLoop::goesOn(omReal64 part, const ProgressRange& range) {
  if (!_options.progress) return true;
  _progress = std::max(_progress, range.from + (range.to - range.from) * std::min(part, 1.0));
  if (_options.progress(_progress)) return true;
  _end = eRO_Stopped;
  return false;
}

/// The trial becomes the best model and is improved; its distances are at hand afterwards.
void RobustLoop::takeTrial(eRobustMethod method, omReal64 threshold, const detail::ModelScore& score) {
  _best.params.swap(_trial.params);
  _best.score = score;
  if (!_options.localOptimisation) return;
  improveLocally(method, threshold);
  // It had distances before: that they can be had again is the estimator's business.
  _distances.evaluate(_estimator, _best.params);
}

/// How many models the confidence asks for, given the consensus of the best one, whose distances are at hand.
omReal64 RobustLoop::nbNeededBy(eRobustMethod method, omReal64 threshold) const {
  std::size_t nbInliers = _distances.countWithin(thresholdFor(method, threshold, _best.score));
  // A threshold that comes from the model's own median lets a bad model be content with itself: nearly everything is
  // near it. A median vouches for half of the samples and no more.
  if (method == eRM_LMedS && !(threshold > 0)) nbInliers = std::min(nbInliers, (_samples.nbSamples + 1) / 2);
  return nbDrawsFor(_options.confidence, nbInliers, _samples.nbSamples, _drawn.size());
}

void RobustLoop::search(eRobustMethod method, omReal64 threshold, const ProgressRange& range) {
  const auto nbAllowed = static_cast<omReal64>(_options.nbMaxIterations);
  omReal64 nbNeeded = isFound() ? nbNeededBy(method, threshold) : s_infinity;
  std::size_t nbModels = 0;
  _end = eRO_IterationLimit;
  for (std::size_t k = 0; k < _options.nbMaxIterations; ++k) {
    if (!goesOn(static_cast<omReal64>(k) / std::min(nbNeeded, nbAllowed), range)) return;
    ++_nbIterations;
    if (!drawModel()) {
      ++_nbDegenerate;
      continue;
    }
    ++nbModels;
    const detail::ModelScore score = scoreOf(method, threshold);
    if (score < _best.score) {
      takeTrial(method, threshold, score);
      nbNeeded = nbNeededBy(method, threshold);
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

/// Least squares on the inliers in place of the best minimal or local model, as long as the distances, cut off at the
/// threshold, do not become worse.
void RobustLoop::refitBest(omReal64 threshold) {
  if (!_distances.evaluate(_estimator, _best.params)) return;
  omReal64 sum = _distances.truncatedSum(threshold);
  for (std::size_t round = 0; round < s_nbFinalRounds; ++round) {
    if (!fitTrialToConsensus(threshold)) return;
    const omReal64 refitSum = _distances.truncatedSum(threshold);
    if (!(refitSum <= sum)) return;
    const bool isSame = refitSum == sum;
    _best.params.swap(_trial.params);
    sum = refitSum;
    if (isSame) return;
  }
}

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
  result.params.swap(_best.params);
  result.inliers.swap(inliers);
  result.nbInliers = nbInliers;
  result.threshold = threshold;
  result.nbIterations = _nbIterations;
  result.nbDegenerate = _nbDegenerate;
  result.end = _end;
  return {};
}

/// The threshold that the model of least median suggests. That model bends towards outliers when they are about half:
/// refitting to what is near and looking at the spread again, as long as it shrinks, lets go of them.
omReal64 RobustLoop::estimateThreshold() {
  omReal64 threshold = thresholdFor(eRM_LMedS, 0, _best.score);
  for (std::size_t round = 0; round < s_nbFinalRounds && _distances.evaluate(_estimator, _best.params); ++round) {
    threshold = _distances.refinedThreshold(threshold, _drawn.size(), _rounding);
    if (!fitTrialToConsensus(threshold)) break;
    if (!(_distances.refinedThreshold(threshold, _drawn.size(), _rounding) < threshold)) break;
    _best.params.swap(_trial.params);
  }
  return threshold;
}

/// The median model first where the threshold has to be estimated, then, with that threshold, the method's own.
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
