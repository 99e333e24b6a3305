#include <ORMIXGeometry/Estimation/3d/Cylinder3dEstimator.h>
#include <ORMIXGeometry/Estimation/ShapeParams.h>
#include <ORMIXMath/Fitting/MinimalShapes.h>
#include <ORMIXMath/Fitting/SpatialShapesFromSamples.h>
#include <ORMIXMath/Shape/RoundSolid.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(, Cylinder3dEstimator)

namespace ormix::geom {

BoolResult Cylinder3dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  SpatialCylinder cylinder;
  const EstimationStatus status = cylinderFromSamples(samples, cylinder);
  if (!status)
    return fail(status.code, status.quantity, status.value, status.threshold,
                detail::shapeFailure("a cylinder", status));
  detail::setParams(cylinder, params);
  return {};
}

BoolResult Cylinder3dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                     RealVector& residuals) const {
  SpatialCylinder cylinder = detail::shapeOf<SpatialCylinder>(params);
  cylinder.direction = unitVector(cylinder.direction);
  return detail::fillResiduals<s_sampleDimension>(samples, residuals, [&cylinder](const omReal64* p) {
    return distanceTo(cylinder, {p[0], p[1], p[2]});
  });
}

std::size_t Cylinder3dEstimator::estimateMinimal(const SampleView& samples, std::size_t nbParams,
                                                 std::vector<RealVector>& models) const {
  std::array<SpatialCylinder, 6> found;
  return detail::setModels(found, ormix::detail::cylindersThrough(samples, found), nbParams, models);
}

bool Cylinder3dEstimator::refineRoughly(const SampleView& samples, RealVector& params) const {
  auto shape = detail::shapeOf<SpatialCylinder>(params);
  if (!refineCylinder(samples, shape)) return false;
  detail::setParams(shape, params);
  return true;
}

}  // namespace ormix::geom
