#pragma once

#include <ORMIXGeometry/Estimation/PairEstimator.h>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(extern, PairEstimator, TranslationTransform2dEstimator, 2)

namespace ormix::geom {

/// Translation of pairs (x1, y1, x2, y2): tx, ty, the difference of the means of targets and sources.
///
/// Fails with message 16 under the condition of RigidTransform2dEstimator, therefore also when all sources or all
/// targets coincide, although a translation exists (intended). The residual of a pair is the distance of p2 from the
/// image of p1. O(pairs); nothing is allocated.
class ORMIX_GEOMETRY_API TranslationTransform2dEstimator : public PairEstimator<TranslationTransform2dEstimator, 2> {
 public:
  static constexpr const char* s_className = "ormix::geom::TranslationTransform2dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 2;                                         ///< pairs
  static constexpr std::size_t s_nbParams = 2;                                                ///< tx, ty
  static constexpr std::size_t s_sampleDimension = 4;                                         ///< x1, y1, x2, y2

  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;

 private:
  friend PairEstimator<TranslationTransform2dEstimator, 2>;
  static BoolResult estimate(const detail::PairSums2d& sums, RealVector& params);
  static detail::PairVerdict whyNot(const detail::PairSums2d& sums);
};

}  // namespace ormix::geom
