#include <ORMIXGeometry/Estimation/3d/Sphere3dCostFunction.h>
#include <ORMIXGeometry/Estimation/3d/Sphere3dEstimator.h>
#include <ORMIXGeometry/Estimation/SphereRefinement.h>
#include <ORMIXMath/Fitting/ShapesFromPoints.h>
#include <ORMIXMath/Fitting/ShapesFromSamples.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(, Sphere3dEstimator)

namespace ormix::geom {

BoolResult Sphere3dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  bool found = false;
  if (samples.nbSamples == s_minimalDataSize) {
    const omReal64* p = samples.data;
    found = sphereFromPoints(p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7], p[8], p[9], p[10], p[11], params(0),
                             params(1), params(2), params(3));
  } else {
    std::size_t rank = 0;
    found = sphereFromSamples(samples, params(0), params(1), params(2), params(3), rank);
  }
  if (found) return {};
  return failOf(samples, eEC_RankDeficient, detail::estimationFailure(eEstimationMessage::eEsM_SphereRank));
}

BoolResult Sphere3dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                   RealVector& residuals) const {
  const omReal64 cx = params(0);
  const omReal64 cy = params(1);
  const omReal64 cz = params(2);
  const omReal64 square = params(3) * params(3);
  return detail::fillResiduals<s_sampleDimension>(samples, residuals, [=](const omReal64* p) {
    return (p[0] - cx) * (p[0] - cx) + (p[1] - cy) * (p[1] - cy) + (p[2] - cz) * (p[2] - cz) - square;
  });
}

omReal64 Sphere3dEstimator::getResidualScale(const RealVector& params) const { return 2 * std::abs(params(3)); }

BoolResult Sphere3dEstimator::refineEstimation(const DataSet& dataSet, const RealVector& start,
                                               RefinementResult& result, const RefinementOptions& options) const {
  return detail::refineBy<Sphere3dCostFunction>(eEstimationMessage::eEsM_SphereCostFunction, dataSet, start, result,
                                                options);
}

BoolResult Sphere3dEstimator::refineEstimation(const DataSet& dataSet, const RealVector& start, RealVector& params,
                                               const RefinementOptions& options) const {
  return detail::refineBy<Sphere3dCostFunction>(eEstimationMessage::eEsM_SphereCostFunction, dataSet, start, params,
                                                options);
}

}  // namespace ormix::geom
