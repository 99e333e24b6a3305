#pragma once

#include <ORMIXGeometry/Estimation/CloudVerdict.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.h>
#include <ORMIXGeometry/Message/EstimationMessage.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <cstddef>
#include <utility>

namespace ormix::geom {

template <class Self>
GeometryEstimator<Self>::GeometryEstimator() {
  static_assert(isListed<Self>(EstimatorList()),
                "an estimator is missing in EstimatorList: add it in Estimation/EstimatorClasses.h");
  this->initBase(Self::s_minimalDataSize, Self::s_nbParams, Self::s_sampleDimension);
}

template <class Self>
BoolResult GeometryEstimator<Self>::failOf(const SampleView& points, eEstimationCode otherwise, BoolResult prescribed) {
  const detail::PairVerdict verdict = detail::cloudVerdict(points, otherwise);
  return this->fail(verdict.code, verdict.quantity, verdict.value, verdict.threshold, std::move(prescribed));
}

namespace detail {

/// A failed result with the message of the estimation domain.
template <class... Arguments>
BoolResult estimationFailure(eEstimationMessage::eId id, const Arguments&... arguments) {
  return failure(formatMessage<eEstimationMessage>(id, arguments...));
}

/// Sets one residual for each sample of `Dimension` values: what `residual` returns for the address of its first value.
template <std::size_t Dimension, class Residual>
BoolResult fillResiduals(const SampleView& samples, RealVector& residuals, const Residual& residual) {
  omReal64* values = residuals.data().begin();
  for (std::size_t i = 0; i < samples.nbSamples; ++i) values[i] = residual(samples.data + Dimension * i);
  return {};
}

}  // namespace detail
}  // namespace ormix::geom
