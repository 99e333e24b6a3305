#include <ORMIXGeometry/Estimation/3d/RigidTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/PairEstimator.ipp>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(, PairEstimator, RigidTransform3dEstimator, 3)

namespace ormix::geom {

BoolResult RigidTransform3dEstimator::estimate(const detail::PairSums3d& sums, RealVector& params) {
  EulerAngles angles;
  omReal64 sumOfTurned = 0;
  if (!sums.bestRotation(angles, sumOfTurned)) return detail::estimationFailure(eEstimationMessage::eEsM_Rigid3dRank);
  const auto map = detail::SimilarityDistance3d::ofMeans(1, angles, sums);
  params(0) = angles.alpha;
  params(1) = angles.beta;
  params(2) = angles.chi;
  std::copy(map.translation.begin(), map.translation.end(), params.begin() + 3);
  return {};
}

detail::PairVerdict RigidTransform3dEstimator::whyNot(const detail::PairSums3d& sums) { return sums.whyNoRotation(); }

BoolResult RigidTransform3dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                           RealVector& residuals) const {
  return detail::fillResiduals<s_sampleDimension>(
      samples, residuals,
      detail::SimilarityDistance3d(1, {params(0), params(1), params(2)}, {params(3), params(4), params(5)}));
}

}  // namespace ormix::geom
