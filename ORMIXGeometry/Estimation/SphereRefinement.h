#pragma once

#include <ORMIXMath/Estimation/IterativeRefinement.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

#include <sstream>

namespace ormix::geom::detail {

/// Implements refineEstimation() of circles and spheres: improves `start` on the samples by iterative refinement of the
/// cost function. If that cannot be initialised, the failure has the message `id` with the reason. Not installed.
template <class CostFunction>
BoolResult refineBy(eEstimationMessage::eId id, const DataSet& dataSet, const RealVector& start,
                    RefinementResult& refined, const RefinementOptions& options) {
  CostFunction function;
  const BoolResult initialised = function.init(dataSet);
  if (!initialised) return estimationFailure(id, initialised.getMessage());
  return refineIteratively(function, start, options, refined);
}

/// The same for the parameters alone, which cannot tell a start that is best from one that no step could improve: the
/// latter fails.
template <class CostFunction>
BoolResult refineBy(eEstimationMessage::eId id, const DataSet& dataSet, const RealVector& start, RealVector& params,
                    const RefinementOptions& options) {
  RefinementResult refined;
  BoolResult result = refineBy<CostFunction>(id, dataSet, start, refined, options);
  if (!result) return result;
  if (refined.end == eRE_NoDecrease && refined.cost == refined.initialCost) {
    std::ostringstream text;
    text << "The refinement did not leave its start: it ended with " << refined.end << " after " << refined.nbIterations
         << " steps tried, the cost is " << refined.cost << " before and after";
    return failure(text.str());
  }
  params = refined.params;
  return result;
}

}  // namespace ormix::geom::detail
