#include <ORMIXGeometry/Estimation/3d/TranslationTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/PairEstimator.ipp>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(, PairEstimator, TranslationTransform3dEstimator, 3)

namespace ormix::geom {

BoolResult TranslationTransform3dEstimator::estimate(const detail::PairSums3d& sums, RealVector& params) {
  // Required although the translation does not depend on it (intended).
  if (!sums.determineTranslation()) return detail::estimationFailure(eEstimationMessage::eEsM_Translation3dRank);
  for (std::size_t k = 0; k < 3; ++k) {
    params(k) = sums.mean2[k] - sums.mean1[k];
    params(3 + k) = 0;
  }
  return {};
}

detail::PairVerdict TranslationTransform3dEstimator::whyNot(const detail::PairSums3d& sums) {
  return sums.whyNoTranslation();
}

BoolResult TranslationTransform3dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                                 RealVector& residuals) const {
  const omReal64 tx = params(0);
  const omReal64 ty = params(1);
  const omReal64 tz = params(2);
  return detail::fillResiduals<s_sampleDimension>(samples, residuals, [=](const omReal64* p) {
    return euclideanNorm(p[3] - p[0] - tx, p[4] - p[1] - ty, p[5] - p[2] - tz);
  });
}

}  // namespace ormix::geom
