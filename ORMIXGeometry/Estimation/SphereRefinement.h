#pragma once

#include <ORMIXMath/Estimation/IterativeRefinement.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

namespace ormix::geom::detail {

/// Implements refineEstimation() of circles and spheres: improves `start` on the samples by iterative refinement of the
/// cost function. If that cannot be initialised, the failure has the message `id` with the reason. Not installed.
template <class CostFunction>
BoolResult refineBy(eEstimationMessage::eId id, const DataSet& dataSet, const RealVector& start, RealVector& params,
                    const RefinementOptions& options) {
  CostFunction function;
  const BoolResult initialised = function.init(dataSet);
  if (!initialised) return estimationFailure(id, initialised.getMessage());
  RefinementResult refined;
  BoolResult result = refineIteratively(function, start, options, refined);
  if (result) params = refined.params;
  return result;
}

}  // namespace ormix::geom::detail
