#pragma once

#include <ORMIXGeometry/Estimation/PairEstimator.h>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(extern, PairEstimator, SimilarityTransform2dEstimator, 2)

namespace ormix::geom {

/// Scale, rotation and translation of pairs (x1, y1, x2, y2): scale > 0, theta in (-pi, pi], tx, ty. Minimises the sum
/// of squared residuals: the scale is sqrt(S² + C²) over the spread of the sources (Umeyama 1991).
///
/// Fails with message 18 where RigidTransform2dEstimator fails with message 14. The residual of a pair is the distance
/// of p2 from the image of p1. O(pairs); nothing is allocated.
class ORMIX_GEOMETRY_API SimilarityTransform2dEstimator : public PairEstimator<SimilarityTransform2dEstimator, 2> {
 public:
  static constexpr const char* s_className = "ormix::geom::SimilarityTransform2dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 2;                                        ///< pairs
  static constexpr std::size_t s_nbParams = 4;                                               ///< scale, theta, tx, ty
  static constexpr std::size_t s_sampleDimension = 4;                                        ///< x1, y1, x2, y2

  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;

 private:
  friend PairEstimator<SimilarityTransform2dEstimator, 2>;
  static BoolResult estimate(const detail::PairSums2d& sums, RealVector& params);
  static detail::PairVerdict whyNot(const detail::PairSums2d& sums);
};

}  // namespace ormix::geom
