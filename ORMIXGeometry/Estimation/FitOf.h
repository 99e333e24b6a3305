#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <boost/numeric/ublas/vector.hpp>

namespace ormix::geom::detail {

/// Estimates from samples, or from sources and targets apart, and hands the parameters on when that succeeded: the
/// one-call fits; not installed.
template <class Estimator, class Use, class... Views>
BoolResult fitOf(const Use& use, const Views&... samples) {
  RealVector params;
  BoolResult result = Estimator().computeEstimation(samples..., params);
  if (result) use(params);
  return result;
}

}  // namespace ormix::geom::detail
