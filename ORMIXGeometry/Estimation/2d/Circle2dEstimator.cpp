#include <ORMIXGeometry/Estimation/2d/Circle2dCostFunction.h>
#include <ORMIXGeometry/Estimation/2d/Circle2dEstimator.h>
#include <ORMIXGeometry/Estimation/SphereRefinement.h>
#include <ORMIXMath/Fitting/ShapesFromPoints.h>
#include <ORMIXMath/Fitting/ShapesFromSamples.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(, Circle2dEstimator)

namespace ormix::geom {

BoolResult Circle2dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  bool found = false;
  if (samples.nbSamples == s_minimalDataSize) {
    const omReal64* p = samples.data;
    found = circleFromPoints(p[0], p[1], p[2], p[3], p[4], p[5], params(0), params(1), params(2));
  } else {
    std::size_t rank = 0;
    found = circleFromSamples(samples, params(0), params(1), params(2), rank);
  }
  if (found) return {};
  return failOf(samples, eEC_RankDeficient, detail::estimationFailure(eEstimationMessage::eEsM_CircleRank));
}

BoolResult Circle2dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                   RealVector& residuals) const {
  const omReal64 cx = params(0);
  const omReal64 cy = params(1);
  const omReal64 square = params(2) * params(2);
  return detail::fillResiduals<s_sampleDimension>(samples, residuals, [=](const omReal64* p) {
    return (p[0] - cx) * (p[0] - cx) + (p[1] - cy) * (p[1] - cy) - square;
  });
}

omReal64 Circle2dEstimator::getResidualScale(const RealVector& params) const { return 2 * std::abs(params(2)); }

BoolResult Circle2dEstimator::refineEstimation(const DataSet& dataSet, const RealVector& start,
                                               RefinementResult& result, const RefinementOptions& options) const {
  return detail::refineBy<Circle2dCostFunction>(eEstimationMessage::eEsM_CircleCostFunction, dataSet, start, result,
                                                options);
}

BoolResult Circle2dEstimator::refineEstimation(const DataSet& dataSet, const RealVector& start, RealVector& params,
                                               const RefinementOptions& options) const {
  return detail::refineBy<Circle2dCostFunction>(eEstimationMessage::eEsM_CircleCostFunction, dataSet, start, params,
                                                options);
}

}  // namespace ormix::geom
