#pragma once

#include <ORMIXMath/Estimation/BaseEstimator.h>
#include <ORMIXMath/Estimation/RobustEstimation.h>

#include <vector>

namespace ormix::detail {

/// How good a model is in the sense of a method: smaller is better, `tie` decides between equals.
struct ModelScore {
  omReal64 loss = 0;
  omReal64 tie = 0;
};

inline bool operator<(const ModelScore& a, const ModelScore& b) {
  return a.loss < b.loss || (a.loss == b.loss && a.tie < b.tie);
}

/// Squared distances of all samples to one model, and what the methods make of them. The memory serves every model.
class ModelDistances {
 public:
  /// Rows of samples, as they stay until the end of this object.
  explicit ModelDistances(const SampleView& samples);

  /// Takes the distances to the model; false when it has none (parameters that are not finite, residuals that cannot be
  /// computed, no scale). A NaN distance counts as infinite.
  bool evaluate(const BaseEstimator& estimator, const RealVector& params);

  std::size_t countWithin(omReal64 threshold) const;
  /// Sum of squared distances, each cut off at the threshold's square.
  omReal64 truncatedSum(omReal64 threshold) const;
  /// The squared distance that (n + nbParams + 1) / 2 samples do not exceed (Rousseeuw and Leroy 1987).
  omReal64 median(std::size_t nbParams);
  /// The same when it is below `limit`, else infinite, which is quicker to say.
  omReal64 medianBelow(omReal64 limit, std::size_t nbParams);

  /// A threshold that fits the spread of the samples within it, found from a larger one: 2.5 standard deviations of
  /// those (Rousseeuw and Leroy 1987, the reweighted scale, here repeated). A median of distances counts outliers, too,
  /// and with nearly half of them says too much. Never below `smallest`.
  omReal64 refinedThreshold(omReal64 threshold, std::size_t minimalDataSize, omReal64 smallest) const;

  bool isWithin(std::size_t sample, omReal64 threshold) const { return _squares[sample] <= threshold * threshold; }

 private:
  SampleView _samples;
  RealVector _residuals;
  std::vector<omReal64> _squares;
  std::vector<omReal64> _sorted;
};

/// The threshold of inliers that a median of squared distances suggests: 2.5 robust standard deviations.
omReal64 thresholdFromMedian(omReal64 median, std::size_t nbSamples, std::size_t minimalDataSize);

}  // namespace ormix::detail
