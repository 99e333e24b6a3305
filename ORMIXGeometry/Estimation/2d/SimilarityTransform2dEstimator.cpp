#include <ORMIXGeometry/Estimation/2d/SimilarityTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/PairEstimator.ipp>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(, PairEstimator, SimilarityTransform2dEstimator, 2)

namespace ormix::geom {

BoolResult SimilarityTransform2dEstimator::estimate(const detail::PairSums2d& sums, RealVector& params) {
  if (!sums.determineRotation()) return detail::estimationFailure(eEstimationMessage::eEsM_Similarity2dRank);
  const omReal64 theta = sums.rotationAngle();
  const omReal64 scale = std::hypot(sums.s, sums.c) / sums.spread1;
  const omReal64 co = scale * std::cos(theta);
  const omReal64 si = scale * std::sin(theta);
  params(0) = scale;
  params(1) = theta;
  params(2) = sums.mx2 - (co * sums.mx1 - si * sums.my1);
  params(3) = sums.my2 - (si * sums.mx1 + co * sums.my1);
  return {};
}

detail::PairVerdict SimilarityTransform2dEstimator::whyNot(const detail::PairSums2d& sums) {
  return sums.whyNoRotation();
}

BoolResult SimilarityTransform2dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                                RealVector& residuals) const {
  const omReal64 co = params(0) * std::cos(params(1));
  const omReal64 si = params(0) * std::sin(params(1));
  return detail::fillResiduals<s_sampleDimension>(samples, residuals,
                                                  detail::LinearMapDistance2d{co, -si, si, co, params(2), params(3)});
}

}  // namespace ormix::geom
