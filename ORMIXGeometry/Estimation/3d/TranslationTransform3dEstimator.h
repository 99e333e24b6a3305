#pragma once

#include <ORMIXGeometry/Estimation/PairEstimator.h>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(extern, PairEstimator, TranslationTransform3dEstimator, 3)

namespace ormix::geom {

/// Translation of pairs (x1, y1, z1, x2, y2, z2): tx, ty, tz, the difference of the means of targets and sources, and
/// three parameters that are 0 and that residuals do not use.
///
/// The six parameters and the minimum of three pairs are intended. Fails with message 17 when all sums of products of a
/// centred source coordinate and a centred target coordinate are below sqrt(epsilon), an absolute threshold (intended);
/// therefore also when all sources or all targets coincide, although a translation exists (intended). The residual of a
/// pair is the distance of p2 from the image of p1. O(pairs); nothing is allocated.
class ORMIX_GEOMETRY_API TranslationTransform3dEstimator : public PairEstimator<TranslationTransform3dEstimator, 3> {
 public:
  static constexpr const char* s_className = "ormix::geom::TranslationTransform3dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 3;                                         ///< pairs
  static constexpr std::size_t s_nbParams = 6;                                                ///< tx, ty, tz, 0, 0, 0
  static constexpr std::size_t s_sampleDimension = 6;  ///< x1, y1, z1, x2, y2, z2

  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;

 private:
  friend PairEstimator<TranslationTransform3dEstimator, 3>;
  static BoolResult estimate(const detail::PairSums3d& sums, RealVector& params);
  static detail::PairVerdict whyNot(const detail::PairSums3d& sums);
};

}  // namespace ormix::geom
