#pragma once

#include <ORMIXGeometry/Estimation/PairEstimator.h>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(extern, PairEstimator, SimilarityTransform3dEstimator, 3)

namespace ormix::geom {

/// Scaled rotation and translation of pairs (x1, y1, z1, x2, y2, z2): scale, alpha, beta, chi, tx, ty, tz as of
/// Similarity3d, the rotation being Rz(alpha)·Ry(beta)·Rx(chi). Minimises the sum of squared residuals, by unit
/// quaternion (Horn 1987): always a proper rotation, also for sets that are mirror images of each other, and a positive
/// scale.
///
/// Fails with message 19 under the conditions of RigidTransform3dEstimator. The residual of a pair is the distance of
/// p2 from the image of p1. O(pairs); nothing is allocated.
class ORMIX_GEOMETRY_API SimilarityTransform3dEstimator : public PairEstimator<SimilarityTransform3dEstimator, 3> {
 public:
  static constexpr const char* s_className = "ormix::geom::SimilarityTransform3dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 3;                                        ///< pairs
  static constexpr std::size_t s_nbParams = 7;         ///< scale, alpha, beta, chi, tx, ty, tz
  static constexpr std::size_t s_sampleDimension = 6;  ///< x1, y1, z1, x2, y2, z2

  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;

 private:
  friend PairEstimator<SimilarityTransform3dEstimator, 3>;
  static BoolResult estimate(const detail::PairSums3d& sums, RealVector& params);
  static detail::PairVerdict whyNot(const detail::PairSums3d& sums);
};

}  // namespace ormix::geom
