#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <ORMIXGeometry/Message/TransformMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Extent/PlanarExtents.h>
#include <ORMIXGeometry/Transform/2d/ConvexHullTransform2d.h>
#include <ORMIXGeometry/Transform/2d/PlanarParts.h>
#include <ORMIXMath/Enclosing/LargestInscribedCircle.h>
#include <ORMIXMath/Hull/ConvexHull2d.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <cmath>
#include <deque>

namespace ormix::geom {

namespace {

/// A circle or an ellipse, whose hull has no vertices, with a >= b >= 0.
struct RoundFigure {
  Point2dData<omReal64> center;
  omReal64 a;
  omReal64 b;
  omReal64 theta;  ///< of the axis a
};

/// The hull of an entity: its vertices, or a round figure where there are none.
struct Hull {
  std::vector<omReal64> xy;
  RoundFigure round{};

  std::size_t nbVertices() const { return xy.size() / 2; }
};

/// The same direction, in (−π/2, π/2].
omReal64 directionOf(omReal64 angle) {
  const omReal64 rest = std::remainder(angle, s_pi);
  return rest <= -s_pi / 2 ? rest + s_pi : rest;
}

template <class T>
bool takeHull(const Circle2d<T>& circle, Hull& hull) {
  const omReal64 radius = std::abs(omReal64(circle.getRadius()));
  hull.round = {{omReal64(circle.centerX()), omReal64(circle.centerY())}, radius, radius, 0};
  return ConvexHullTransform2d().process(circle) != nullptr;
}
template <class T>
bool takeHull(const Ellipse2d<T>& ellipse, Hull& hull) {
  const omReal64 a = std::abs(omReal64(ellipse.getMajorRadius()));
  const omReal64 b = std::abs(omReal64(ellipse.getMinorRadius()));
  const omReal64 theta = ellipse.getTheta();
  const Point2dData<omReal64> center(omReal64(ellipse.centerX()), omReal64(ellipse.centerY()));
  hull.round =
      a >= b ? RoundFigure{center, a, b, directionOf(theta)} : RoundFigure{center, b, a, directionOf(theta + s_pi / 2)};
  return ConvexHullTransform2d().process(ellipse) != nullptr;
}
template <class Entity>
bool takeHull(const Entity& entity, Hull& hull) {
  if constexpr (ConvexHullTransform2d::Supports<Entity>::value) {
    return detail::useHullPoints(entity, [&hull](const auto* xy, std::size_t nbPoints) {
      std::vector<std::decay_t<decltype(*xy)>> vertices;
      if (!convexHull2d(xy, nbPoints, vertices)) return false;
      hull.xy.assign(vertices.begin(), vertices.end());
      return true;
    });
  } else {
    return false;
  }
}

[[noreturn]] void throwNone(const BaseGeometryEntity2d& entity, const std::string& what, const char* function,
                            int line) {
  logAndThrow(formatMessage<eTransformMessage>(eTransformMessage::eTM_TransformFailed, what,
                                               toString(entity.getEntity2dType())),
              function, __FILE__, line);
}

Hull hullOf(const BaseGeometryEntity2d& entity) {
  Hull hull;
  if (!detail::callTyped(PlanarEntityList(), entity, [&hull](const auto& typed) { return takeHull(typed, hull); }))
    throwNone(entity, ConvexHullTransform2d::getTypeName(), __PRETTY_FUNCTION__, __LINE__);
  return hull;
}

/// The diameter of a round figure across a direction, with the points where the lines touch.
FeretDiameter diameterAt(const RoundFigure& figure, omReal64 angle) {
  const omReal64 x = figure.a * std::cos(angle - figure.theta);
  const omReal64 y = figure.b * std::sin(angle - figure.theta);
  const omReal64 half = std::hypot(x, y);
  // The point a·cos, b·sin of the ellipse that is outermost in the direction, in its own axes.
  const omReal64 along = half == 0 ? 0 : figure.a * (x / half);
  const omReal64 across = half == 0 ? 0 : figure.b * (y / half);
  const omReal64 c = std::cos(figure.theta);
  const omReal64 s = std::sin(figure.theta);
  const PlanarPoint reach{c * along - s * across, s * along + c * across};
  const omReal64 cx = figure.center.getX();
  const omReal64 cy = figure.center.getY();
  return {2 * half, directionOf(angle), {cx - reach.x, cy - reach.y}, {cx + reach.x, cy + reach.y}};
}

template <class T>
void addRing(const T* xy, std::size_t nbVertices, std::deque<std::vector<omReal64>>& rings) {
  rings.emplace_back(xy, xy + 2 * nbVertices);
}

/// The rings that bound the area of an entity; false where it has none.
template <class Entity>
bool takeRings(const Entity& entity, std::deque<std::vector<omReal64>>& rings) {
  const auto add = [&rings](const auto* xy, std::size_t nbVertices) {
    if (nbVertices > 0) addRing(xy, nbVertices, rings);
    return true;
  };
  if constexpr (isListed<Entity>(ScalarClassList<Polygon2d, PolygonWithHoles2d>()) || std::is_same_v<Entity, Shape2d>)
    return detail::visitRuns(entity, add);
  else if constexpr (isListed<Entity>(ScalarClassList<BoundingBox2d, Square2d, Rectangle2d>()))
    return detail::useHullPoints(entity, add);
  else
    return false;
}

}  // namespace

Rectangle2d<omReal64> smallestRectangle(const BaseGeometryEntity2d& entity, eRectangleSize size) {
  const Hull hull = hullOf(entity);
  if (hull.xy.empty()) return {hull.round.center, hull.round.a, hull.round.b, hull.round.theta};
  const OrientedRectangle found = ormix::smallestRectangle(hull.xy.data(), hull.nbVertices(), size);
  return {{found.center.x, found.center.y}, found.halfLength, found.halfWidth, found.angle};
}

FeretDiameter greatestFeretDiameter(const BaseGeometryEntity2d& entity) {
  const Hull hull = hullOf(entity);
  return hull.xy.empty() ? diameterAt(hull.round, hull.round.theta)
                         : ormix::greatestFeretDiameter(hull.xy.data(), hull.nbVertices());
}

FeretDiameter leastFeretDiameter(const BaseGeometryEntity2d& entity) {
  const Hull hull = hullOf(entity);
  return hull.xy.empty() ? diameterAt(hull.round, hull.round.theta + s_pi / 2)
                         : ormix::leastFeretDiameter(hull.xy.data(), hull.nbVertices());
}

FeretDiameter feretDiameterAt(const BaseGeometryEntity2d& entity, omReal64 angle) {
  const Hull hull = hullOf(entity);
  return hull.xy.empty() ? diameterAt(hull.round, angle)
                         : ormix::feretDiameterAt(hull.xy.data(), hull.nbVertices(), angle);
}

Circle2d<omReal64> largestInscribedCircle(const BaseGeometryEntity2d& entity, omReal64* excess) {
  std::deque<std::vector<omReal64>> rings;
  if (detail::callTyped(PlanarEntityList(), entity, [&rings](const auto& typed) { return takeRings(typed, rings); })) {
    std::vector<RingView> views;
    for (const std::vector<omReal64>& ring : rings) views.push_back({ring.data(), ring.size() / 2});
    InscribedCircle found;
    if (const BoolResult result = ormix::largestInscribedCircle(views, found); !result)
      logAndThrow(result.getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
    if (excess) *excess = found.excess;
    return {{found.center.x, found.center.y}, found.radius};
  }
  Hull hull;
  if (!detail::callTyped(PlanarEntityList(), entity, [&hull](const auto& typed) { return takeHull(typed, hull); }) ||
      hull.round.b == 0)
    throwNone(entity, "largestInscribedCircle", __PRETTY_FUNCTION__, __LINE__);
  if (excess) *excess = 0;
  return {hull.round.center, hull.round.b};
}

}  // namespace ormix::geom
