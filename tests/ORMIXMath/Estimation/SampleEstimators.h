#pragma once

#include <ORMIXMath/Estimation/BaseEstimator.h>
#include <ORMIXMath/Fitting/ShapesFromPoints.h>
#include <ORMIXMath/Fitting/ShapesFromSamples.h>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

#include <boost/numeric/ublas/vector.hpp>
#include <cmath>

/// \file
/// Estimators as small as can be, to drive the loops with.

namespace ormix::sample {

/// x cos theta + y sin theta = rho, through two points or by the direction of the largest moment.
class LineEstimator : public RegisteredObject<LineEstimator, BaseEstimator> {
 public:
  static constexpr const char* s_className = "ormix::sample::LineEstimator";

  LineEstimator() { initBase(2, 2, 2); }

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override {
    if (samples.nbSamples == 2) {
      const omReal64* p = samples.data;
      return lineFromPoints(p[0], p[1], p[2], p[3], params(0), params(1)) ? BoolResult() : failure("one point");
    }
    const auto n = static_cast<omReal64>(samples.nbSamples);
    omReal64 mx = 0, my = 0, xx = 0, xy = 0, yy = 0;
    for (std::size_t i = 0; i < samples.nbSamples; ++i) {
      mx += samples[i][0] / n;
      my += samples[i][1] / n;
    }
    for (std::size_t i = 0; i < samples.nbSamples; ++i) {
      const omReal64 x = samples[i][0] - mx, y = samples[i][1] - my;
      xx += x * x;
      xy += x * y;
      yy += y * y;
    }
    params(0) = std::atan2(-2 * xy, yy - xx) / 2;
    params(1) = mx * std::cos(params(0)) + my * std::sin(params(0));
    return {};
  }

  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override {
    const omReal64 co = std::cos(params(0)), si = std::sin(params(0));
    for (std::size_t i = 0; i < samples.nbSamples; ++i)
      residuals(i) = samples[i][0] * co + samples[i][1] * si - params(1);
    return {};
  }

 private:
  friend struct ormix::FieldAccess;
  template <class S, class F>
  static bool fields(S&, F&&) {
    return true;
  }
};

/// Algebraic residuals (x - cx)² + (y - cy)² - r².
class CircleEstimator : public RegisteredObject<CircleEstimator, BaseEstimator> {
 public:
  static constexpr const char* s_className = "ormix::sample::CircleEstimator";

  CircleEstimator() { initBase(3, 3, 2); }

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override {
    const omReal64* p = samples.data;
    std::size_t rank = 0;
    const bool isFound = samples.nbSamples == 3
                             ? circleFromPoints(p[0], p[1], p[2], p[3], p[4], p[5], params(0), params(1), params(2))
                             : circleFromSamples(samples, params(0), params(1), params(2), rank);
    return isFound ? BoolResult() : failure("no circle");
  }

  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override {
    for (std::size_t i = 0; i < samples.nbSamples; ++i) {
      const omReal64 x = samples[i][0] - params(0), y = samples[i][1] - params(1);
      residuals(i) = x * x + y * y - params(2) * params(2);
    }
    return {};
  }

  omReal64 getResidualScale(const RealVector& params) const override { return 2 * params(2); }

 private:
  friend struct ormix::FieldAccess;
  template <class S, class F>
  static bool fields(S&, F&&) {
    return true;
  }
};

}  // namespace ormix::sample
