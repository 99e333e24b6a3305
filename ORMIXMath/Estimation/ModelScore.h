#pragma once

#include <ORMIXMath/Estimation/BaseEstimator.h>
#include <ORMIXMath/Estimation/RobustEstimation.h>

#include <vector>

namespace ormix::detail {

/// The loss of a model by the criterion of a robust method; smaller is better.
struct ModelScore {
  omReal64 loss = 0;
  omReal64 tie = 0;  ///< Decides between models of equal loss; smaller is better.
};

/// Whether model a is better than model b.
inline bool operator<(const ModelScore& a, const ModelScore& b) {
  return a.loss < b.loss || (a.loss == b.loss && a.tie < b.tie);
}

/// The squared distances of all samples to the model evaluated last, and the scores computed from them. Memory is
/// allocated once and reused for every model.
class ModelDistances {
 public:
  /// The samples must remain valid and unchanged for the life of this object.
  explicit ModelDistances(const SampleView& samples);

  /// Computes the squared distances to a model. Returns false when there are none: a parameter is not finite, the
  /// residuals cannot be computed, or their scale is not positive and finite. A NaN distance counts as infinite.
  bool evaluate(const BaseEstimator& estimator, const RealVector& params);

  /// The number of samples at most `threshold` from the model.
  std::size_t countWithin(omReal64 threshold) const;
  /// The same with the sum of their squared distances.
  std::size_t countWithin(omReal64 threshold, omReal64& sum) const;
  /// Sum of squared distances, each cut off at the threshold's square.
  omReal64 truncatedSum(omReal64 threshold) const;
  /// The smallest squared distance that at least (n + nbParams + 1) / 2 of the n samples do not exceed
  /// (RousseeuwLeroy1987).
  omReal64 median(std::size_t nbParams);
  /// median() if it is below `limit`, else infinity, which takes one pass without sorting.
  omReal64 medianBelow(omReal64 limit, std::size_t nbParams);

  /// A threshold of 2.5 standard deviations of the samples within it, by iteration from a larger threshold: the
  /// reweighted scale of RousseeuwLeroy1987, repeated until it no longer shrinks. The scale from a median is too large
  /// when nearly half of the samples are outliers, since it counts some of them. Never below `smallest`.
  omReal64 refinedThreshold(omReal64 threshold, std::size_t minimalDataSize, omReal64 smallest) const;

  /// The squared distances, in the order of the samples.
  const std::vector<omReal64>& squares() const { return _squares; }
  /// Whether a sample is at most `threshold` from the model.
  bool isWithin(std::size_t sample, omReal64 threshold) const { return _squares[sample] <= threshold * threshold; }

 private:
  SampleView _samples;
  RealVector _residuals;
  std::vector<omReal64> _squares;
  std::vector<omReal64> _sorted;
};

/// The threshold of inliers from a median of squared distances: 2.5 robust standard deviations (RousseeuwLeroy1987).
omReal64 thresholdFromMedian(omReal64 median, std::size_t nbSamples, std::size_t minimalDataSize);

}  // namespace ormix::detail
