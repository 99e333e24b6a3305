#include <ORMIXGeometry/Estimation/2d/RigidTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/PairEstimator.ipp>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(, PairEstimator, RigidTransform2dEstimator, 2)

namespace ormix::geom {

BoolResult RigidTransform2dEstimator::estimate(const detail::PairSums2d& sums, RealVector& params) {
  if (!sums.determineRotation()) return detail::estimationFailure(eEstimationMessage::eEsM_Rigid2dRank);
  const omReal64 theta = sums.rotationAngle();
  const omReal64 co = std::cos(theta);
  const omReal64 si = std::sin(theta);
  params(0) = theta;
  params(1) = sums.mx2 - (co * sums.mx1 - si * sums.my1);
  params(2) = sums.my2 - (si * sums.mx1 + co * sums.my1);
  return {};
}

detail::PairVerdict RigidTransform2dEstimator::whyNot(const detail::PairSums2d& sums) { return sums.whyNoRotation(); }

BoolResult RigidTransform2dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                           RealVector& residuals) const {
  const omReal64 co = std::cos(params(0));
  const omReal64 si = std::sin(params(0));
  return detail::fillResiduals<s_sampleDimension>(samples, residuals,
                                                  detail::LinearMapDistance2d{co, -si, si, co, params(1), params(2)});
}

}  // namespace ormix::geom
