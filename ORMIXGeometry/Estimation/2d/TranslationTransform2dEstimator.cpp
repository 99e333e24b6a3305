#include <ORMIXGeometry/Estimation/2d/PairSums2d.h>
#include <ORMIXGeometry/Estimation/2d/TranslationTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Estimation2d.ipp>

namespace ormix {
template class VersionedLevel<geom::TranslationTransform2dEstimator, BaseEstimator>;
template class RegisteredObject<geom::TranslationTransform2dEstimator, BaseEstimator>;
}  // namespace ormix

namespace ormix::geom {

template class Estimation2d<TranslationTransform2dEstimator>;

namespace {
const DynamicRegistrator<TranslationTransform2dEstimator> g_classRegistrator;
}  // namespace

BoolResult TranslationTransform2dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  const detail::PairSums2d sums = detail::pairSums(samples);
  // Asked although no angle is needed: intended.
  if (!sums.determineRotation()) return detail::estimationFailure(eEstimationMessage::eEsM_Translation2dRank);
  params(0) = sums.mx2 - sums.mx1;
  params(1) = sums.my2 - sums.my1;
  return {};
}

BoolResult TranslationTransform2dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                                 RealVector& residuals) const {
  const omReal64 tx = params(0);
  const omReal64 ty = params(1);
  return detail::fillResiduals<s_sampleDimension>(
      samples, residuals, [=](const omReal64* p) { return euclideanNorm(p[2] - p[0] - tx, p[3] - p[1] - ty); });
}

}  // namespace ormix::geom
