#include <ORMIXGeometry/Estimation/2d/Fit2d.h>
#include <ORMIXGeometry/Estimation/2d/Line2dIntersectionEstimator.h>
#include <ORMIXGeometry/Estimation/ConditionReport.h>

#include <algorithm>

namespace ormix::geom {

namespace {

/// Lines about the point that was found, and scaled by a power of two.
class IntersectionFrame {
 public:
  using Estimator = Line2dIntersectionEstimator;
  using Model = IntersectionConditions;

  IntersectionFrame(const SampleView& lines, const RealVector& params) : _point{params(0), params(1)} {
    omReal64 largest = std::max(std::abs(_point[0]), std::abs(_point[1]));
    for (std::size_t i = 0; i < lines.nbSamples; ++i) largest = std::max(largest, std::abs(lines[i][1]));
    if (largest > 0) _unit = std::ldexp(1.0, std::clamp(-std::ilogb(largest), -1000, 1000));
  }

  Model start() const { return {}; }
  /// rho about the point, and its derivatives by theta and rho.
  std::array<omReal64, 3> distance(const omReal64* line) const {
    const omReal64 co = std::cos(line[0]), si = std::sin(line[0]);
    return {(line[1] - _point[0] * co - _point[1] * si) * _unit, (_point[0] * si - _point[1] * co) * _unit, _unit};
  }
  omReal64 unit() const { return _unit; }
  SampleFrame<2> samples() const { return {}; }
  std::vector<omReal64> params(const Model& model, bool) const {
    return {_point[0] + model.a / _unit, _point[1] + model.b / _unit};
  }
  std::vector<omReal64> parts(const Model& model, bool isMoved) const { return params(model, isMoved); }
  std::vector<omReal64> byTangent(const Model&) const { return {1 / _unit, 0, 0, 1 / _unit}; }

 private:
  std::array<omReal64, 2> _point;
  omReal64 _unit = 1;
};

}  // namespace

/// Lines by their angle and what distance() says, with covariances to first order.
template <>
struct detail::FramedSamples<IntersectionFrame> {
  SampleView samples, weights;

  FramedSamples(const IntersectionFrame& frame, const SampleView& given, const SampleView& theirWeights)
      : samples{nullptr, given.nbSamples, 2}, weights(theirWeights) {
    const bool hasCovariances = weights.dimension > 1;
    _values.reserve(2 * given.nbSamples);
    for (std::size_t i = 0; i < given.nbSamples; ++i) {
      const auto [distance, byTheta, byRho] = frame.distance(given[i]);
      _values.insert(_values.end(), {given[i][0], distance});
      if (!hasCovariances) continue;
      const omReal64* c = theirWeights[i];
      const omReal64 mixed = byTheta * c[0] + byRho * c[2];
      const omReal64 ofDistance = byTheta * mixed + byRho * (byTheta * c[1] + byRho * c[3]);
      _covariances.insert(_covariances.end(), {c[0], mixed, mixed, ofDistance});
    }
    samples.data = _values.data();
    if (hasCovariances) weights.data = _covariances.data();
  }

 private:
  std::vector<omReal64> _values, _covariances;
};

BoolResult fitIntersection(const SampleView& lines, const FitOptions& options, Point2d<omReal64>& point,
                           FitReport& report) {
  return detail::reportOf<IntersectionFrame>("Point2d", {"x", "y"}, lines, options, report,
                                             [&](const std::vector<omReal64>& p) { point.setCoords(p[0], p[1]); });
}

}  // namespace ormix::geom
