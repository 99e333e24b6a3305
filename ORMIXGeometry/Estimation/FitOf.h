#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <boost/numeric/ublas/vector.hpp>

namespace ormix::geom::detail {

/// Estimates the parameters from samples, or from sources and targets, and calls `use(params)` on success. Implements
/// the functions of Fit2d.h and Fit3d.h; not installed.
template <class Estimator, class Use, class... Views>
BoolResult fitOf(const Use& use, const Views&... samples) {
  RealVector params;
  BoolResult result = Estimator().computeEstimation(samples..., params);
  if (result) use(params);
  return result;
}

}  // namespace ormix::geom::detail
