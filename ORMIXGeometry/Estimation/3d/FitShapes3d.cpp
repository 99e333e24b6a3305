#include <ORMIXGeometry/Entity/3d/Circle/Circle3d.h>
#include <ORMIXGeometry/Entity/3d/Cone/Cone3d.h>
#include <ORMIXGeometry/Entity/3d/Cylinder/Cylinder3d.h>
#include <ORMIXGeometry/Entity/3d/Line/Line3d.h>
#include <ORMIXGeometry/Entity/3d/Torus/Torus3d.h>
#include <ORMIXGeometry/Entity/3d/UnitDirection.h>
#include <ORMIXGeometry/Estimation/3d/Circle3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Cone3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Cylinder3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Fit3d.h>
#include <ORMIXGeometry/Estimation/3d/Line3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Torus3dEstimator.h>
#include <ORMIXGeometry/Estimation/FitOf.h>
#include <ORMIXGeometry/Estimation/FitWithReport.h>
#include <ORMIXGeometry/Estimation/ShapeModel.h>
#include <ORMIXGeometry/Estimation/ShapeParams.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Fitting/SpatialShapes.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace ormix::geom {

using detail::fitOf;
using detail::shapeOf;
using detail::toData;

namespace {

using ormix::detail::operator+;
using ormix::detail::operator-;
using ormix::detail::operator*;
using ormix::detail::dot;

/// How far samples reach along an axis from one of its points.
struct Reach {
  omReal64 low = std::numeric_limits<omReal64>::infinity();
  omReal64 high = -std::numeric_limits<omReal64>::infinity();
};
/// Of the samples with a weight; all where there are no weights.
Reach reachAlong(const SampleView& points, const std::vector<omReal64>& weights, const SpatialPoint& from,
                 const SpatialPoint& direction) {
  Reach reach;
  for (std::size_t i = 0; i < points.nbSamples; ++i) {
    if (!weights.empty() && !(weights[i] > 0)) continue;
    const omReal64* p = points[i];
    const omReal64 at = dot(SpatialPoint{p[0], p[1], p[2]} - from, direction);
    reach.low = std::min(reach.low, at);
    reach.high = std::max(reach.high, at);
  }
  return reach;
}

void setTo(Cylinder3d<omReal64>& cylinder, const SpatialCylinder& found, const SampleView& points,
           const std::vector<omReal64>& weights) {
  const Reach reach = reachAlong(points, weights, found.point, found.direction);
  cylinder.setCoords(toData(found.point + found.direction * reach.low),
                     toData(found.point + found.direction * reach.high), found.radius);
}
void setTo(Cone3d<omReal64>& cone, const SpatialCone& found, const SampleView& points,
           const std::vector<omReal64>& weights) {
  Reach reach = reachAlong(points, weights, found.apex, found.direction);
  // What is behind the apex belongs to that.
  reach.low = std::max(reach.low, 0.0);
  reach.high = std::max(reach.high, 0.0);
  const omReal64 slope = std::tan(found.halfAngle);
  cone.setCoords(toData(found.apex + found.direction * reach.low), toData(found.apex + found.direction * reach.high),
                 slope * reach.low, slope * reach.high);
}
void setTo(Torus3d<omReal64>& torus, const SpatialTorus& found, const SampleView&, const std::vector<omReal64>&) {
  torus.setCoords(toData(found.center), toData(found.axis), found.majorRadius, found.minorRadius);
}
void setTo(Line3d& line, const SpatialLine& found, const SampleView&, const std::vector<omReal64>&) {
  line.setCoords(toData(found.point), toData(found.direction));
}
void setTo(Circle3d<omReal64>& circle, const SpatialCircle& found, const SampleView&, const std::vector<omReal64>&) {
  circle.setCoords(toData(found.center), toData(found.normal), found.radius);
}

/// The names of a point, a direction and the sizes.
std::vector<std::string> namesOf(const std::string& point, const std::string& direction,
                                 const std::vector<std::string>& sizes) {
  std::vector<std::string> names;
  for (const std::string& each : {point, direction})
    for (const char* axis : {" x", " y", " z"}) names.push_back(each + axis);
  names.insert(names.end(), sizes.begin(), sizes.end());
  return names;
}

template <detail::eShapeKind kind, class Estimator, class Shape, class Entity>
BoolResult fitShape(const char* name, const std::vector<std::string>& parameterNames, const SampleView& points,
                    const FitOptions& options, Entity& entity, FitReport& report) {
  using Model = detail::ShapeModelOf<kind>;
  Estimator estimator;
  RealVector params(Estimator::s_nbParams);
  const BoolResult result = detail::fitWithReport<Model>(
      estimator, name, parameterNames, points, options, report,
      [](const Model& model, const RealVector& p) {
        const std::array<omReal64, 2> sizes{p.size() > 6 ? p(6) : 0, p.size() > 7 ? p(7) : 0};
        return model.stateOf({p(0), p(1), p(2)}, {p(3), p(4), p(5)}, sizes);
      },
      [&](const std::vector<omReal64>& p) { std::copy(p.begin(), p.end(), params.begin()); });
  // The weights of the report are 0 where a sample was left out.
  if (result) setTo(entity, shapeOf<Shape>(params), points, report.weights);
  return result;
}

}  // namespace

BoolResult fitCylinder(const SampleView& points, const FitOptions& options, Cylinder3d<omReal64>& cylinder,
                       FitReport& report) {
  return fitShape<detail::eSK_Cylinder, Cylinder3dEstimator, SpatialCylinder>(
      "Cylinder3d", namesOf("point", "direction", {"radius"}), points, options, cylinder, report);
}

BoolResult fitCone(const SampleView& points, const FitOptions& options, Cone3d<omReal64>& cone, FitReport& report) {
  return fitShape<detail::eSK_Cone, Cone3dEstimator, SpatialCone>(
      "Cone3d", namesOf("apex", "direction", {"half angle"}), points, options, cone, report);
}

BoolResult fitTorus(const SampleView& points, const FitOptions& options, Torus3d<omReal64>& torus, FitReport& report) {
  return fitShape<detail::eSK_Torus, Torus3dEstimator, SpatialTorus>(
      "Torus3d", namesOf("center", "axis", {"major radius", "minor radius"}), points, options, torus, report);
}

BoolResult fitLine(const SampleView& points, const FitOptions& options, Line3d& line, FitReport& report) {
  return fitShape<detail::eSK_Line, Line3dEstimator, SpatialLine>("Line3d", namesOf("point", "direction", {}), points,
                                                                  options, line, report);
}

BoolResult fitCircle(const SampleView& points, const FitOptions& options, Circle3d<omReal64>& circle,
                     FitReport& report) {
  return fitShape<detail::eSK_Circle, Circle3dEstimator, SpatialCircle>(
      "Circle3d", namesOf("center", "normal", {"radius"}), points, options, circle, report);
}

BoolResult fitCylinder(const SampleView& points, Cylinder3d<omReal64>& cylinder) {
  return fitOf<Cylinder3dEstimator>(
      [&](const RealVector& params) { setTo(cylinder, shapeOf<SpatialCylinder>(params), points, {}); }, points);
}

BoolResult fitCone(const SampleView& points, Cone3d<omReal64>& cone) {
  return fitOf<Cone3dEstimator>(
      [&](const RealVector& params) { setTo(cone, shapeOf<SpatialCone>(params), points, {}); }, points);
}

BoolResult fitTorus(const SampleView& points, Torus3d<omReal64>& torus) {
  return fitOf<Torus3dEstimator>(
      [&](const RealVector& params) { setTo(torus, shapeOf<SpatialTorus>(params), points, {}); }, points);
}

BoolResult fitLine(const SampleView& points, Line3d& line) {
  return fitOf<Line3dEstimator>(
      [&](const RealVector& params) { setTo(line, shapeOf<SpatialLine>(params), points, {}); }, points);
}

BoolResult fitCircle(const SampleView& points, Circle3d<omReal64>& circle) {
  return fitOf<Circle3dEstimator>(
      [&](const RealVector& params) { setTo(circle, shapeOf<SpatialCircle>(params), points, {}); }, points);
}

}  // namespace ormix::geom
