#include <ORMIXGeometry/Estimation/2d/Fit2d.h>
#include <ORMIXGeometry/Estimation/2d/Line2dIntersectionEstimator.h>
#include <ORMIXGeometry/Estimation/ConditionReport.h>

#include <algorithm>

namespace ormix::geom {

namespace {

/// Lines (theta, rho) about the point that was found, and scaled by a power of two.
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
  omReal64 unit() const { return _unit; }
  void toFrame(const omReal64* line, omReal64* framed) const {
    framed[0] = line[0];
    framed[1] = (line[1] - _point[0] * std::cos(line[0]) - _point[1] * std::sin(line[0])) * _unit;
  }
  void byFrame(const omReal64* line, std::array<std::array<omReal64, 2>, 2>& rows) const {
    rows[0] = {1, 0};
    rows[1] = {(_point[0] * std::sin(line[0]) - _point[1] * std::cos(line[0])) * _unit, _unit};
  }
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

BoolResult fitIntersection(const SampleView& lines, const FitOptions& options, Point2d<omReal64>& point,
                           FitReport& report) {
  return detail::reportOf<IntersectionFrame>("Point2d", {"x", "y"}, lines, options, report,
                                             [&](const std::vector<omReal64>& p) { point.setCoords(p[0], p[1]); });
}

}  // namespace ormix::geom
