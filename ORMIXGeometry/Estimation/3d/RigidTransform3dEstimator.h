#pragma once

#include <ORMIXGeometry/Estimation/PairEstimator.h>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(extern, PairEstimator, RigidTransform3dEstimator, 3)

namespace ormix::geom {

/// Rotation and translation of pairs (x1, y1, z1, x2, y2, z2): alpha, beta, chi, tx, ty, tz as of Rigid3d, the rotation
/// being Rz(alpha)·Ry(beta)·Rx(chi). Minimises the sum of squared residuals, by unit quaternion (Horn 1987): always a
/// proper rotation, also for sets that are mirror images of each other.
///
/// Fails with message 15 when the pairs do not determine a rotation: the sources or the targets coincide or are
/// collinear, or another rotation is as good to half of the digits. The residual of a pair is the distance of p2 from
/// the image of p1. O(pairs); nothing is allocated.
class ORMIX_GEOMETRY_API RigidTransform3dEstimator : public PairEstimator<RigidTransform3dEstimator, 3> {
 public:
  static constexpr const char* s_className = "ormix::geom::RigidTransform3dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 3;                                   ///< pairs
  static constexpr std::size_t s_nbParams = 6;         ///< alpha, beta, chi, tx, ty, tz
  static constexpr std::size_t s_sampleDimension = 6;  ///< x1, y1, z1, x2, y2, z2

  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;

 private:
  friend PairEstimator<RigidTransform3dEstimator, 3>;
  static BoolResult estimate(const detail::PairSums3d& sums, RealVector& params);
  static detail::PairVerdict whyNot(const detail::PairSums3d& sums);
};

}  // namespace ormix::geom
