#include <ORMIXGeometry/Estimation/2d/Ellipse2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/EllipseDistance.h>
#include <ORMIXGeometry/Estimation/ShapeParams.h>
#include <ORMIXMath/Fitting/MinimalShapes.h>
#include <ORMIXMath/Fitting/ShapesFromSamples.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(, Ellipse2dEstimator)

namespace ormix::geom {

BoolResult Ellipse2dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  std::size_t rank = 0;
  const bool found = ellipseFromSamples(samples, params(0), params(1), params(2), params(3), params(4), rank);
  constexpr std::size_t smallestRank = 2;
  if (rank < smallestRank)
    return failOf(samples, eEC_RankDeficient, detail::estimationFailure(eEstimationMessage::eEsM_EllipseRank));
  if (!found)
    return failOf(samples, eEC_NotOfThisType, detail::estimationFailure(eEstimationMessage::eEsM_EllipseNotAnEllipse));
  if (!(params(2) > 0) || !(params(3) > 0))
    return failOf(samples, eEC_NullRadius, detail::estimationFailure(eEstimationMessage::eEsM_EllipseNullRadius));
  return {};
}

BoolResult Ellipse2dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                    RealVector& residuals) const {
  const detail::EllipseDistance distance(params(0), params(1), params(2), params(3), params(4));
  return detail::fillResiduals<s_sampleDimension>(samples, residuals,
                                                  [&](const omReal64* p) { return distance(p[0], p[1]); });
}

std::size_t Ellipse2dEstimator::estimateMinimal(const SampleView& samples, std::size_t nbParams,
                                                std::vector<RealVector>& models) const {
  std::array<ormix::detail::PlanarEllipse, 1> found;
  return detail::setModels(found, ormix::detail::ellipseThrough(samples, found[0]) ? 1 : 0, nbParams, models);
}

bool Ellipse2dEstimator::refineRoughly(const SampleView& samples, RealVector& params) const {
  std::size_t rank = 0;
  return ellipseFromSamples(samples, params(0), params(1), params(2), params(3), params(4), rank) && params(3) > 0;
}

}  // namespace ormix::geom
