#pragma once

#include <ORMIXGeometry/Estimation/2d/Estimation2d.h>
#include <ORMIXGeometry/Message/EstimationMessage.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>
#include <ORMIXUtil/Object/DynamicRegistrator.h>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <cstddef>

namespace ormix::geom {

template <class Self>
Estimation2d<Self>::Estimation2d() {
  this->initBase(Self::s_minimalDataSize, Self::s_nbParams, Self::s_sampleDimension);
}

namespace detail {

/// A failed result with the message of the estimation domain.
template <class... Arguments>
BoolResult estimationFailure(eEstimationMessage::eId id, const Arguments&... arguments) {
  return failure(formatMessage<eEstimationMessage>(id, arguments...));
}

/// One residual a sample of `Dimension` values: what the function object answers for its row.
template <std::size_t Dimension, class Residual>
BoolResult fillResiduals(const SampleView& samples, RealVector& residuals, const Residual& residual) {
  omReal64* values = residuals.data().begin();
  for (std::size_t i = 0; i < samples.nbSamples; ++i) values[i] = residual(samples.data + Dimension * i);
  return {};
}

/// Distance of p2 to the image (a x + b y + tx, c x + d y + ty) of p1, for a row (x1, y1, x2, y2).
struct LinearMapDistance2d {
  omReal64 a, b, c, d, tx, ty;

  omReal64 operator()(const omReal64* p) const {
    return euclideanNorm(p[2] - (a * p[0] + b * p[1] + tx), p[3] - (c * p[0] + d * p[1] + ty));
  }
};

}  // namespace detail
}  // namespace ormix::geom
