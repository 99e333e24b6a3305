#pragma once

#include <ORMIXMath/Estimation/ModelScore.h>
#include <ORMIXMath/Estimation/RobustModel.h>

#include <vector>

/// \file
/// How likely samples agree with a model by accident; not installed.

namespace ormix::detail {

/// The samples as chance might have them: some of them, each moved at random by a part of their spread, so that what
/// they have in common is lost and where they are dense is kept. A consensus is judged by how many samples of this
/// background would take part in it (a-contrario: MoisanStival2004; for backgrounds that are uniform: Stewart1995).
class ChanceModel {
 public:
  /// Samples that are NaN or infinite are left out. The samples need not outlive the constructor.
  ChanceModel(const BaseEstimator& estimator, const SampleView& samples);

  /// The number of independent equations that one sample gives: the rank of the second differences of its squared
  /// distance from the model. 0 where the model cannot be evaluated.
  /// \param sample  near the model
  std::size_t codimensionOf(const RealVector& params, const omReal64* sample) const;
  /// Sets what codimensionOf() said; 1 before.
  void setCodimension(std::size_t codimension) { _codimension = codimension; }
  std::size_t codimension() const { return _codimension; }

  /// Takes the distances of the background from a model. False where it cannot be evaluated; then every sample agrees.
  bool evaluate(const RealVector& params);
  /// The probability that a sample is by accident at most `distance` from the model evaluated last, a little more than
  /// the share of the background and, below its smallest distances, by the power of the distance by the codimension.
  omReal64 probability(omReal64 distance) const;
  /// The natural logarithm of an upper bound of the number of models through minimal sets of samples with which by
  /// accident `nbInliers` of `nbSamples` agree within `distance`, `nbScales` such distances having been tried.
  omReal64 logFalseAlarms(std::size_t nbSamples, std::size_t nbInliers, omReal64 distance, std::size_t nbScales) const;

 private:
  const BaseEstimator& _estimator;
  std::vector<omReal64> _rows;
  std::vector<omReal64> _spreads;  ///< of each coordinate, the largest of its unit
  std::size_t _nbRows = 0;
  std::size_t _codimension = 1;
  ModelDistances _distances;
  std::vector<omReal64> _nearest;
  omReal64 _near = 0;  ///< the distance that few of the background are within
  bool _isEvaluated = false;
};

/// The logarithm of Chernoff's bound of the probability that at least k of n samples agree by accident, each with
/// probability p: 0 when k is no more than n p.
omReal64 logTail(omReal64 n, omReal64 k, omReal64 p);

}  // namespace ormix::detail
