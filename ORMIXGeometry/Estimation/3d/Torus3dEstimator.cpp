#include <ORMIXGeometry/Estimation/3d/Torus3dEstimator.h>
#include <ORMIXGeometry/Estimation/ShapeParams.h>
#include <ORMIXMath/Fitting/MinimalShapes.h>
#include <ORMIXMath/Fitting/SpatialShapesFromSamples.h>
#include <ORMIXMath/Shape/RoundSolid.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(, Torus3dEstimator)

namespace ormix::geom {

BoolResult Torus3dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  SpatialTorus torus;
  const EstimationStatus status = torusFromSamples(samples, torus);
  if (!status)
    return fail(status.code, status.quantity, status.value, status.threshold, detail::shapeFailure("a torus", status));
  detail::setParams(torus, params);
  return {};
}

BoolResult Torus3dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                  RealVector& residuals) const {
  SpatialTorus torus = detail::shapeOf<SpatialTorus>(params);
  torus.axis = unitVector(torus.axis);
  return detail::fillResiduals<s_sampleDimension>(samples, residuals, [&torus](const omReal64* p) {
    return distanceTo(torus, {p[0], p[1], p[2]});
  });
}

std::size_t Torus3dEstimator::estimateMinimal(const SampleView& samples, std::size_t nbParams,
                                              std::vector<RealVector>& models) const {
  std::array<SpatialTorus, 12> found;
  return detail::setModels(found, ormix::detail::toriThrough(samples, found), nbParams, models);
}

bool Torus3dEstimator::refineRoughly(const SampleView& samples, RealVector& params) const {
  auto shape = detail::shapeOf<SpatialTorus>(params);
  if (!refineTorus(samples, shape)) return false;
  detail::setParams(shape, params);
  return true;
}

}  // namespace ormix::geom
