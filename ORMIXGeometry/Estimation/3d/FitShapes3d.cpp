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
#include <ORMIXGeometry/Estimation/ShapeParams.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Fitting/SpatialShapes.h>

#include <algorithm>
#include <cmath>
#include <limits>

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
Reach reachAlong(const SampleView& points, const SpatialPoint& from, const SpatialPoint& direction) {
  Reach reach;
  for (std::size_t i = 0; i < points.nbSamples; ++i) {
    const omReal64* p = points[i];
    const omReal64 at = dot(SpatialPoint{p[0], p[1], p[2]} - from, direction);
    reach.low = std::min(reach.low, at);
    reach.high = std::max(reach.high, at);
  }
  return reach;
}

}  // namespace

BoolResult fitCylinder(const SampleView& points, Cylinder3d<omReal64>& cylinder) {
  return fitOf<Cylinder3dEstimator>(
      [&](const RealVector& params) {
        const auto found = shapeOf<SpatialCylinder>(params);
        const Reach reach = reachAlong(points, found.point, found.direction);
        cylinder.setCoords(toData(found.point + found.direction * reach.low),
                           toData(found.point + found.direction * reach.high), found.radius);
      },
      points);
}

BoolResult fitCone(const SampleView& points, Cone3d<omReal64>& cone) {
  return fitOf<Cone3dEstimator>(
      [&](const RealVector& params) {
        const auto found = shapeOf<SpatialCone>(params);
        Reach reach = reachAlong(points, found.apex, found.direction);
        // What is behind the apex belongs to that.
        reach.low = std::max(reach.low, 0.0);
        reach.high = std::max(reach.high, 0.0);
        const omReal64 slope = std::tan(found.halfAngle);
        cone.setCoords(toData(found.apex + found.direction * reach.low),
                       toData(found.apex + found.direction * reach.high), slope * reach.low, slope * reach.high);
      },
      points);
}

BoolResult fitTorus(const SampleView& points, Torus3d<omReal64>& torus) {
  return fitOf<Torus3dEstimator>(
      [&](const RealVector& params) {
        const auto found = shapeOf<SpatialTorus>(params);
        torus.setCoords(toData(found.center), toData(found.axis), found.majorRadius, found.minorRadius);
      },
      points);
}

BoolResult fitLine(const SampleView& points, Line3d& line) {
  return fitOf<Line3dEstimator>(
      [&](const RealVector& params) {
        const auto found = shapeOf<SpatialLine>(params);
        line.setCoords(toData(found.point), toData(found.direction));
      },
      points);
}

BoolResult fitCircle(const SampleView& points, Circle3d<omReal64>& circle) {
  return fitOf<Circle3dEstimator>(
      [&](const RealVector& params) {
        const auto found = shapeOf<SpatialCircle>(params);
        circle.setCoords(toData(found.center), toData(found.normal), found.radius);
      },
      points);
}

}  // namespace ormix::geom
