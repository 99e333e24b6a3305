#include <ORMIXGeometry/Estimation/2d/TranslationTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/PairEstimator.ipp>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(, PairEstimator, TranslationTransform2dEstimator, 2)

namespace ormix::geom {

BoolResult TranslationTransform2dEstimator::estimate(const detail::PairSums2d& sums, RealVector& params) {
  // Asked although no angle is needed: intended.
  if (!sums.determineRotation()) return detail::estimationFailure(eEstimationMessage::eEsM_Translation2dRank);
  params(0) = sums.mx2 - sums.mx1;
  params(1) = sums.my2 - sums.my1;
  return {};
}

detail::PairVerdict TranslationTransform2dEstimator::whyNot(const detail::PairSums2d& sums) {
  return sums.whyNoRotation();
}

BoolResult TranslationTransform2dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                                 RealVector& residuals) const {
  const omReal64 tx = params(0);
  const omReal64 ty = params(1);
  return detail::fillResiduals<s_sampleDimension>(
      samples, residuals, [=](const omReal64* p) { return euclideanNorm(p[2] - p[0] - tx, p[3] - p[1] - ty); });
}

}  // namespace ormix::geom
