#pragma once

#include <ORMIXGeometry/Estimation/PairEstimator.h>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(extern, PairEstimator, RigidTransform2dEstimator, 2)

namespace ormix::geom {

/// Rotation and translation of pairs (x1, y1, x2, y2): theta in (-pi, pi], tx, ty. Minimises the sum of squared
/// residuals (Umeyama 1991).
///
/// Fails with message 14 when the sums S of dy1 dx2 - dx1 dy2 and C of dx1 dx2 + dy1 dy2 over the centred pairs are
/// both below sqrt(epsilon), an absolute threshold (intended). It fails as well when sources or targets coincide to
/// rounding of their coordinates, and when sqrt(S² + C²) is at most sqrt(epsilon) of its value for congruent sets, so
/// that all angles fit equally well (a regular polygon and its mirror image). The residual of a pair is the distance of
/// p2 from the image of p1. O(pairs); nothing is allocated.
class ORMIX_GEOMETRY_API RigidTransform2dEstimator : public PairEstimator<RigidTransform2dEstimator, 2> {
 public:
  static constexpr const char* s_className = "ormix::geom::RigidTransform2dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 2;                                   ///< pairs
  static constexpr std::size_t s_nbParams = 3;                                          ///< theta, tx, ty
  static constexpr std::size_t s_sampleDimension = 4;                                   ///< x1, y1, x2, y2

  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;

 private:
  friend PairEstimator<RigidTransform2dEstimator, 2>;
  static BoolResult estimate(const detail::PairSums2d& sums, RealVector& params);
  static detail::PairVerdict whyNot(const detail::PairSums2d& sums);
};

}  // namespace ormix::geom
