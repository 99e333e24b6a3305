#include <ORMIXGeometry/Estimation/3d/Circle3dEstimator.h>
#include <ORMIXGeometry/Estimation/ShapeParams.h>
#include <ORMIXMath/Fitting/SpatialShapesFromSamples.h>
#include <ORMIXMath/Shape/RoundSolid.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(, Circle3dEstimator)

namespace ormix::geom {

BoolResult Circle3dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  SpatialCircle circle;
  const EstimationStatus status = circleFromSamples(samples, circle);
  if (!status)
    return fail(status.code, status.quantity, status.value, status.threshold, detail::shapeFailure("a circle", status));
  detail::setParams(circle, params);
  return {};
}

BoolResult Circle3dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                   RealVector& residuals) const {
  SpatialCircle circle = detail::shapeOf<SpatialCircle>(params);
  circle.normal = unitVector(circle.normal);
  return detail::fillResiduals<s_sampleDimension>(samples, residuals, [&circle](const omReal64* p) {
    return distanceTo(circle, {p[0], p[1], p[2]});
  });
}

}  // namespace ormix::geom
