#include <ORMIXGeometry/Entity/2d/Arc/CircularArcOf.h>
#include <ORMIXGeometry/Transform/2d/MinEnclosingCircleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/PlanarParts.h>
#include <ORMIXGeometry/Transform/EnclosingRadius.h>
#include <ORMIXMath/Enclosing/SmallestBall.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXGeometry/Transform/DerivedTransform.ipp>

#include <algorithm>
#include <cmath>

ORMIX_GEOMETRY_DERIVED_TRANSFORM2D_LEVELS(, MinEnclosingCircleTransform2d)

namespace ormix::geom {

namespace {

template <class Entity>
bool enclose(const Entity& entity, Circle2d<omReal64>& circle) {
  return detail::useHullPoints(entity, [&circle](const auto* xy, std::size_t nbPoints) {
    EnclosingCircle ball;
    if (!smallestEnclosingCircle(xy, nbPoints, ball)) return false;
    circle.setCoords({ball.center[0], ball.center[1]}, detail::enclosingRadius(ball.radius));
    return true;
  });
}
template <class T>
bool encloseRound(const Point2dData<T>& center, omReal64 radius, Circle2d<omReal64>& circle) {
  circle.setCoords({omReal64(center.getX()), omReal64(center.getY())}, radius);
  return std::isfinite(circle.centerX()) && std::isfinite(circle.centerY()) && std::isfinite(radius);
}
template <class T>
bool enclose(const Circle2d<T>& entity, Circle2d<omReal64>& circle) {
  return encloseRound(entity.center(), std::abs(omReal64(entity.getRadius())), circle);
}
template <class T>
bool enclose(const Ellipse2d<T>& ellipse, Circle2d<omReal64>& circle) {
  const omReal64 a = std::abs(omReal64(ellipse.getMajorRadius()));
  const omReal64 b = std::abs(omReal64(ellipse.getMinorRadius()));
  return std::isfinite(b) && encloseRound(ellipse.center(), std::max(a, b), circle);
}
// Of less than half a turn the circle around the chord.
template <class T>
bool enclose(const Arc2d<T>& entity, Circle2d<omReal64>& circle) {
  const CircularArc arc = detail::circularArcOf(entity);
  const omReal64 half = std::abs(arc.sweep) / 2;
  if (half >= s_pi / 2) return encloseRound(entity.center(), arc.radius, circle);
  const PlanarPoint middle =
      pointAt({arc.center, arc.radius * std::cos(half), arc.start, arc.sweep}, arc.start + arc.sweep / 2);
  return encloseRound(Point2dData<omReal64>(middle.x, middle.y), arc.radius * std::sin(half), circle);
}

}  // namespace

template <class Entity>
bool MinEnclosingCircleTransform2d::derive(const Entity& entity, Result<Entity>& result) const {
  return enclose(entity, result);
}

namespace {
[[gnu::used]] constexpr auto s_instances = detail::derivationsOfAll<MinEnclosingCircleTransform2d>(PlanarEntityList());
}  // namespace

}  // namespace ormix::geom
