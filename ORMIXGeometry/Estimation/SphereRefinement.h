#pragma once

#include <ORMIXMath/Estimation/IterativeRefinement.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

namespace ormix::geom::detail {

/// What the estimators of circle and sphere do to refine: improves `start` on the samples by the cost function, whose
/// failure to be initialised is told by the message with that id; not installed.
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
