#include <ORMIXGeometry/Estimation/3d/Cone3dEstimator.h>
#include <ORMIXGeometry/Estimation/ShapeParams.h>
#include <ORMIXMath/Fitting/MinimalShapes.h>
#include <ORMIXMath/Fitting/SpatialShapesFromSamples.h>
#include <ORMIXMath/Shape/RoundSolid.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(, Cone3dEstimator)

namespace ormix::geom {

BoolResult Cone3dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  SpatialCone cone;
  const EstimationStatus status = coneFromSamples(samples, cone);
  if (!status)
    return fail(status.code, status.quantity, status.value, status.threshold, detail::shapeFailure("a cone", status));
  detail::setParams(cone, params);
  return {};
}

BoolResult Cone3dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                 RealVector& residuals) const {
  SpatialCone cone = detail::shapeOf<SpatialCone>(params);
  cone.direction = unitVector(cone.direction);
  return detail::fillResiduals<s_sampleDimension>(samples, residuals, [&cone](const omReal64* p) {
    return distanceTo(cone, {p[0], p[1], p[2]});
  });
}

std::size_t Cone3dEstimator::estimateMinimal(const SampleView& samples, std::size_t nbParams,
                                             std::vector<RealVector>& models) const {
  std::array<SpatialCone, 6> found;
  return detail::setModels(found, ormix::detail::conesThrough(samples, found), nbParams, models);
}

bool Cone3dEstimator::refineRoughly(const SampleView& samples, RealVector& params) const {
  auto shape = detail::shapeOf<SpatialCone>(params);
  if (!refineCone(samples, shape)) return false;
  detail::setParams(shape, params);
  return true;
}

}  // namespace ormix::geom
