#include <ORMIXGeometry/Estimation/3d/Line3dEstimator.h>
#include <ORMIXGeometry/Estimation/ShapeParams.h>
#include <ORMIXMath/Fitting/SpatialShapesFromSamples.h>
#include <ORMIXMath/Shape/RoundSolid.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(, Line3dEstimator)

namespace ormix::geom {

BoolResult Line3dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  SpatialLine line;
  const EstimationStatus status = lineFromSamples(samples, line);
  if (!status)
    return fail(status.code, status.quantity, status.value, status.threshold, detail::shapeFailure("a line", status));
  detail::setParams(line, params);
  return {};
}

BoolResult Line3dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                 RealVector& residuals) const {
  SpatialLine line = detail::shapeOf<SpatialLine>(params);
  line.direction = unitVector(line.direction);
  return detail::fillResiduals<s_sampleDimension>(samples, residuals, [&line](const omReal64* p) {
    return distanceTo(line, {p[0], p[1], p[2]});
  });
}

}  // namespace ormix::geom
