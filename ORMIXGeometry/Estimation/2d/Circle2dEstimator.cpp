#include <ORMIXGeometry/Estimation/2d/Circle2dCostFunction.h>
#include <ORMIXGeometry/Estimation/2d/Circle2dEstimator.h>
#include <ORMIXMath/Fitting/ShapesFromPoints.h>
#include <ORMIXMath/Fitting/ShapesFromSamples.h>
#include <ORMIXGeometry/Estimation/2d/Estimation2d.ipp>

namespace ormix {
template class VersionedLevel<geom::Circle2dEstimator, BaseEstimator>;
template class RegisteredObject<geom::Circle2dEstimator, BaseEstimator>;
}  // namespace ormix

namespace ormix::geom {

template class Estimation2d<Circle2dEstimator>;

namespace {
const DynamicRegistrator<Circle2dEstimator> g_classRegistrator;
}  // namespace

BoolResult Circle2dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  bool found = false;
  if (samples.nbSamples == s_minimalDataSize) {
    const omReal64* p = samples.data;
    found = circleFromPoints(p[0], p[1], p[2], p[3], p[4], p[5], params(0), params(1), params(2));
  } else {
    std::size_t rank = 0;
    found = circleFromSamples(samples, params(0), params(1), params(2), rank);
  }
  return found ? BoolResult() : detail::estimationFailure(eEstimationMessage::eEsM_CircleRank);
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

BoolResult Circle2dEstimator::refineEstimation(const DataSet& dataSet, const RealVector& start, RealVector& params,
                                               const RefinementOptions& options) const {
  Circle2dCostFunction function;
  const BoolResult initialised = function.init(dataSet);
  if (!initialised)
    return detail::estimationFailure(eEstimationMessage::eEsM_CircleCostFunction, initialised.getMessage());
  RefinementResult refined;
  BoolResult result = refineIteratively(function, start, options, refined);
  if (result) params = refined.params;
  return result;
}

}  // namespace ormix::geom
