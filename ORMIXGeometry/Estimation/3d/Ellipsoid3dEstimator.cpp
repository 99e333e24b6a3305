#include <ORMIXGeometry/Estimation/3d/Ellipsoid3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/EllipsoidDistance.h>
#include <ORMIXGeometry/Estimation/ShapeParams.h>
#include <ORMIXMath/Fitting/MinimalShapes.h>
#include <ORMIXMath/Fitting/ShapesFromSamples.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(, Ellipsoid3dEstimator)

namespace ormix::geom {

BoolResult Ellipsoid3dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  std::size_t rank = 0;
  EllipsoidParameters found;
  const bool isEllipsoid = ellipsoidFromSamples(samples, found, rank);
  constexpr std::size_t smallestRank = 5;
  if (rank < smallestRank)
    return failOf(samples, eEC_RankDeficient, detail::estimationFailure(eEstimationMessage::eEsM_EllipsoidRank));
  if (!isEllipsoid)
    return failOf(samples, eEC_NotOfThisType,
                  detail::estimationFailure(eEstimationMessage::eEsM_EllipsoidNotAnEllipsoid));
  if (!(found.c > 0))
    return failOf(samples, eEC_NullRadius, detail::estimationFailure(eEstimationMessage::eEsM_EllipsoidNullRadius));
  detail::setParams(found, params);
  return {};
}

BoolResult Ellipsoid3dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                      RealVector& residuals) const {
  const detail::EllipsoidDistance distance(
      {params(0), params(1), params(2), params(3), params(4), params(5), params(6), params(7), params(8)});
  return detail::fillResiduals<s_sampleDimension>(samples, residuals,
                                                  [&](const omReal64* p) { return distance(p[0], p[1], p[2]); });
}

std::size_t Ellipsoid3dEstimator::estimateMinimal(const SampleView& samples, std::size_t nbParams,
                                                  std::vector<RealVector>& models) const {
  std::array<EllipsoidParameters, 1> found;
  return detail::setModels(found, ormix::detail::ellipsoidThrough(samples, found[0]) ? 1 : 0, nbParams, models);
}

bool Ellipsoid3dEstimator::refineRoughly(const SampleView& samples, RealVector& params) const {
  std::size_t rank = 0;
  EllipsoidParameters found;
  if (!ellipsoidFromSamples(samples, found, rank) || !(found.c > 0)) return false;
  detail::setParams(found, params);
  return true;
}

}  // namespace ormix::geom
