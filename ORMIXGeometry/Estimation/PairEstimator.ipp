#pragma once

#include <ORMIXGeometry/Estimation/2d/PairSums2d.h>
#include <ORMIXGeometry/Estimation/3d/PairSums3d.h>
#include <ORMIXGeometry/Estimation/PairEstimator.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

#include <algorithm>
#include <string>
#include <utility>

namespace ormix::geom {
namespace detail {

/// What computeEstimation() on pairs would ask of them.
inline BoolResult checkHalves(const BaseEstimator& estimator, const SampleView& sources, const SampleView& targets) {
  if (sources.nbSamples != targets.nbSamples)
    return estimationFailure(eEstimationMessage::eEsM_CollectionSizeMismatch, sources.nbSamples, targets.nbSamples);
  if (sources.nbSamples < estimator.getMinimalDataSize())
    return failure(estimator.getClassName() + ": " + std::to_string(sources.nbSamples) +
                   " pairs were given, at least " + std::to_string(estimator.getMinimalDataSize()) + " are needed");
  for (const SampleView& half : {sources, targets})
    if (2 * half.dimension != estimator.getSampleDimension())
      return failure(estimator.getClassName() + ": the points are of dimension " + std::to_string(half.dimension) +
                     " while dimension " + std::to_string(estimator.getSampleDimension() / 2) + " is needed");
  return {};
}

}  // namespace detail

template <class Self, std::size_t D>
BoolResult PairEstimator<Self, D>::computeEstimation(const SampleView& sources, const SampleView& targets,
                                                     RealVector& params) {
  BoolResult result = detail::checkHalves(*this, sources, targets);
  if (!result) return result;
  RealVector found(Self::s_nbParams);
  result = estimateFrom(Sums::of(sources, targets), found);
  if (!result) return result;
  if (!std::all_of(found.begin(), found.end(), [](omReal64 value) { return std::isfinite(value); }))
    return failure(this->getClassName() + ": the points lead to parameters that are NaN or infinite");
  params.swap(found);
  return result;
}

template <class Self, std::size_t D>
BoolResult PairEstimator<Self, D>::processViewEstimation(const SampleView& samples, RealVector& params) {
  return estimateFrom(Sums::of(samples), params);
}

template <class Self, std::size_t D>
BoolResult PairEstimator<Self, D>::estimateFrom(const Sums& sums, RealVector& params) {
  BoolResult result = Self::estimate(sums, params);
  if (result) return result;
  const detail::PairVerdict verdict = Self::whyNot(sums);
  return this->fail(verdict.code, verdict.quantity, verdict.value, verdict.threshold, std::move(result));
}

}  // namespace ormix::geom
