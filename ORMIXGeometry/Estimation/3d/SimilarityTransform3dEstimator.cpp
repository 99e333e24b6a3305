#include <ORMIXGeometry/Estimation/3d/SimilarityTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/PairEstimator.ipp>

ORMIX_GEOMETRY_PAIR_ESTIMATOR_LEVELS(, PairEstimator, SimilarityTransform3dEstimator, 3)

namespace ormix::geom {

BoolResult SimilarityTransform3dEstimator::estimate(const detail::PairSums3d& sums, RealVector& params) {
  EulerAngles angles;
  omReal64 sumOfTurned = 0;
  if (!sums.bestRotation(angles, sumOfTurned))
    return detail::estimationFailure(eEstimationMessage::eEsM_Similarity3dRank);
  const auto map = detail::SimilarityDistance3d::ofMeans(sumOfTurned / sums.spread1, angles, sums);
  params(0) = map.scale;
  params(1) = angles.alpha;
  params(2) = angles.beta;
  params(3) = angles.chi;
  std::copy(map.translation.begin(), map.translation.end(), params.begin() + 4);
  return {};
}

detail::PairVerdict SimilarityTransform3dEstimator::whyNot(const detail::PairSums3d& sums) {
  return sums.whyNoRotation();
}

BoolResult SimilarityTransform3dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                                RealVector& residuals) const {
  return detail::fillResiduals<s_sampleDimension>(
      samples, residuals,
      detail::SimilarityDistance3d(params(0), {params(1), params(2), params(3)}, {params(4), params(5), params(6)}));
}

}  // namespace ormix::geom
