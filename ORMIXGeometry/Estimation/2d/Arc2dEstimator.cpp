#include <ORMIXGeometry/Estimation/2d/Arc2dEstimator.h>
#include <ORMIXGeometry/Estimation/ShapeParams.h>
#include <ORMIXMath/Fitting/SpatialShapesFromSamples.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

#include <cmath>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(, Arc2dEstimator)

namespace ormix::geom {

BoolResult Arc2dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  PlanarArc arc;
  const EstimationStatus status = arcFromSamples(samples, arc);
  if (!status)
    return fail(status.code, status.quantity, status.value, status.threshold, detail::shapeFailure("an arc", status));
  detail::setParams(arc, params);
  return {};
}

BoolResult Arc2dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                RealVector& residuals) const {
  const PlanarArc arc = detail::shapeOf<PlanarArc>(params);
  return detail::fillResiduals<s_sampleDimension>(samples, residuals, [&arc](const omReal64* p) {
    return std::hypot(p[0] - arc.center.x, p[1] - arc.center.y) - arc.radius;
  });
}

}  // namespace ormix::geom
