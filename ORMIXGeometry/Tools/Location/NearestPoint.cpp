#include <ORMIXGeometry/Entity/2d/Arc/CircularArcOf.h>
#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Location/NearestPoint.h>
#include <ORMIXGeometry/Tools/Location/PointLocation.h>
#include <ORMIXGeometry/Tools/Location/RingsOf.h>
#include <ORMIXMath/Distance/NearestOnEllipse.h>
#include <ORMIXMath/Location/NearestOnRing.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ormix::geom {

namespace {

constexpr omReal64 s_nan = std::numeric_limits<omReal64>::quiet_NaN();
constexpr PlanarPoint s_nowhere{s_nan, s_nan};

/// The nearest point of the region of an entity, or of its boundary; NaN where there is none.
struct Query {
  PlanarPoint point;
  bool isOfBoundary;
};

template <class T>
PlanarPoint nearestOf(const Point2d<T>& point, const Query&) {
  return toPlanarPoint(point.getX(), point.getY());
}
template <class T>
PlanarPoint nearestOf(const Segment2d<T>& segment, const Query& query) {
  const T xy[] = {segment.getPoint0().getX(), segment.getPoint0().getY(), segment.getPoint1().getX(),
                  segment.getPoint1().getY()};
  return nearestOnRing(xy, 2, query.point.x, query.point.y).point;
}
template <class T>
PlanarPoint nearestOf(const PointCloud2d<T>& cloud, const Query& query) {
  return nearestOfPoints(coordinates(cloud.getCollection()), cloud.getCollection().size(), query.point.x, query.point.y)
      .point;
}

/// For polygons, polygons with holes and shapes.
template <class Region>
PlanarPoint nearestOfRings(const Region& region, const Query& query) {
  NearestOnRing nearest{s_nowhere, std::numeric_limits<omReal64>::infinity(), 0};
  RingCrossings crossings;
  detail::visitRings(region, [&](const auto* xy, std::size_t nbPoints) {
    if (!query.isOfBoundary) crossings += ringCrossings(xy, nbPoints, query.point.x, query.point.y);
    const NearestOnRing onRing = nearestOnRing(xy, nbPoints, query.point.x, query.point.y);
    if (onRing.distance < nearest.distance) nearest = onRing;
  });
  const bool isInside = crossings.isOnBoundary || crossings.isOdd;
  return isInside ? query.point : nearest.point;
}
template <class T>
PlanarPoint nearestOf(const Polygon2d<T>& polygon, const Query& query) {
  return nearestOfRings(polygon, query);
}
template <class T>
PlanarPoint nearestOf(const PolygonWithHoles2d<T>& polygon, const Query& query) {
  return nearestOfRings(polygon, query);
}
PlanarPoint nearestOf(const Shape2d& shape, const Query& query) { return nearestOfRings(shape, query); }

/// Of the upright rectangle |x| <= halfX, |y| <= halfY.
PlanarPoint nearestOfHalfSizes(PlanarPoint p, omReal64 halfX, omReal64 halfY, bool isOfBoundary) {
  const bool isInside = std::abs(p.x) < halfX && std::abs(p.y) < halfY;
  if (!isInside) return {std::clamp(p.x, -halfX, halfX), std::clamp(p.y, -halfY, halfY)};
  if (!isOfBoundary) return p;
  if (halfX - std::abs(p.x) < halfY - std::abs(p.y)) return {std::copysign(halfX, p.x), p.y};
  return {p.x, std::copysign(halfY, p.y)};
}

/// Calls `nearest` with the point in a frame at the centre, turned by an angle, and brings its answer back; a point
/// that is its own nearest point there stays as it is.
template <class T, class Nearest>
PlanarPoint inFrame(const Point2dData<T>& center, omReal64 angle, const PlanarPoint& p, Nearest&& nearest) {
  const omReal64 c = std::cos(angle);
  const omReal64 s = std::sin(angle);
  const omReal64 x = p.x - omReal64(center.getX());
  const omReal64 y = p.y - omReal64(center.getY());
  const PlanarPoint local{x * c + y * s, y * c - x * s};
  const PlanarPoint found = nearest(local);
  if (found.x == local.x && found.y == local.y) return p;
  return {omReal64(center.getX()) + (found.x * c - found.y * s), omReal64(center.getY()) + (found.x * s + found.y * c)};
}

template <class T>
PlanarPoint nearestOf(const BoundingBox2d<T>& box, const Query& query) {
  const auto [xMin, xMax] = std::minmax({omReal64(box.getXMin()), omReal64(box.getXMax())});
  const auto [yMin, yMax] = std::minmax({omReal64(box.getYMin()), omReal64(box.getYMax())});
  const PlanarPoint& p = query.point;
  PlanarPoint result{std::clamp(p.x, xMin, xMax), std::clamp(p.y, yMin, yMax)};
  if (!query.isOfBoundary || result.x != p.x || result.y != p.y) return result;
  const omReal64 toX = std::min(p.x - xMin, xMax - p.x);
  const omReal64 toY = std::min(p.y - yMin, yMax - p.y);
  if (toX < toY)
    result.x = p.x - xMin < xMax - p.x ? xMin : xMax;
  else
    result.y = p.y - yMin < yMax - p.y ? yMin : yMax;
  return result;
}
template <class T>
PlanarPoint nearestOf(const Square2d<T>& square, const Query& query) {
  const omReal64 half = std::abs(omReal64(square.getHalfLength()));
  return inFrame(square.center(), square.getOrientation(), query.point,
                 [&](const PlanarPoint& p) { return nearestOfHalfSizes(p, half, half, query.isOfBoundary); });
}
template <class T>
PlanarPoint nearestOf(const Rectangle2d<T>& rectangle, const Query& query) {
  const omReal64 halfX = std::abs(omReal64(rectangle.getHalfLength()));
  const omReal64 halfY = std::abs(omReal64(rectangle.getHalfWidth()));
  return inFrame(rectangle.center(), rectangle.getOrientation(), query.point,
                 [&](const PlanarPoint& p) { return nearestOfHalfSizes(p, halfX, halfY, query.isOfBoundary); });
}

template <class T>
PlanarPoint nearestOf(const Circle2d<T>& circle, const Query& query) {
  const omReal64 radius = std::abs(omReal64(circle.getRadius()));
  const PlanarPoint center = toPlanarPoint(circle.centerX(), circle.centerY());
  const omReal64 dx = query.point.x - center.x;
  const omReal64 dy = query.point.y - center.y;
  const omReal64 distance = std::hypot(dx, dy);
  if (!query.isOfBoundary && distance <= radius) return query.point;
  if (distance == 0) return {center.x + radius, center.y};
  return {center.x + dx / distance * radius, center.y + dy / distance * radius};
}

template <class T>
PlanarPoint nearestOf(const Ellipse2d<T>& ellipse, const Query& query) {
  const omReal64 a = std::abs(omReal64(ellipse.getMajorRadius()));
  const omReal64 b = std::abs(omReal64(ellipse.getMinorRadius()));
  return inFrame(ellipse.center(), ellipse.getTheta(), query.point, [&](const PlanarPoint& p) {
    const bool isInside = a > 0 && b > 0 && std::hypot(p.x / a, p.y / b) <= 1;
    return isInside && !query.isOfBoundary ? p : nearestOnEllipse(p, a, b);
  });
}

template <class T>
PlanarPoint nearestOf(const Arc2d<T>& arc, const Query& query) {
  return nearestOn(detail::circularArcOf(arc), query.point);
}

PlanarPoint nearestOf(const Line2d&, const Query&) { return s_nowhere; }
PlanarPoint nearestOf(const Parabola2d&, const Query&) { return s_nowhere; }
PlanarPoint nearestOf(const Vector2d&, const Query&) { return s_nowhere; }
PlanarPoint nearestOf(const Skeleton2d&, const Query&) { return s_nowhere; }
PlanarPoint nearestOf(const SkeletonVertex2d& vertex, const Query&) {
  return {vertex.getPoint().getX(), vertex.getPoint().getY()};
}

Point2d<omReal64> nearestOrThrow(const BaseGeometryEntity2d& entity, const Query& query) {
  PlanarPoint result = s_nowhere;
  if (std::isfinite(query.point.x) && std::isfinite(query.point.y))
    detail::callTyped(PlanarEntityList(), entity, [&](const auto& typed) {
      result = nearestOf(typed, query);
      return true;
    });
  if (!std::isfinite(result.x) || !std::isfinite(result.y))
    logAndThrow("No point of geometry entity " + std::string(toString(entity.getEntity2dType())) +
                    " is nearest to the point {" + std::to_string(query.point.x) + ", " +
                    std::to_string(query.point.y) + "}",
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return {result.x, result.y};
}

}  // namespace

Point2d<omReal64> nearestPoint(const BaseGeometryEntity2d& entity, const Point2dData<omReal64>& point) {
  return nearestOrThrow(entity, {{point.getX(), point.getY()}, false});
}

Point2d<omReal64> nearestBoundaryPoint(const BaseGeometryEntity2d& entity, const Point2dData<omReal64>& point) {
  return nearestOrThrow(entity, {{point.getX(), point.getY()}, true});
}

template <class Entity>
void PreparedBoundary2d::prepare(const Entity& entity) {
  bool hasVertices = false;
  detail::visitRings(entity, [&](const auto* xy, std::size_t nbPoints) {
    _edges.add(xy, nbPoints);
    hasVertices = true;
  });
  if (!hasVertices || !_edges.build())
    logAndThrow("A boundary cannot be prepared: it has no vertices, or a coordinate is not finite", __PRETTY_FUNCTION__,
                __FILE__, __LINE__);
}

template <class T>
PreparedBoundary2d::PreparedBoundary2d(const Polygon2d<T>& polygon) {
  prepare(polygon);
}
template <class T>
PreparedBoundary2d::PreparedBoundary2d(const PolygonWithHoles2d<T>& polygon) {
  prepare(polygon);
}
PreparedBoundary2d::PreparedBoundary2d(const Shape2d& shape) { prepare(shape); }

Point2d<omReal64> PreparedBoundary2d::nearestPoint(const Point2dData<omReal64>& point) const {
  const PlanarPoint nearest = _edges.nearest(point.getX(), point.getY()).point;
  if (!std::isfinite(nearest.x) || !std::isfinite(nearest.y))
    logAndThrow("No point of a boundary is nearest to the point {" + std::to_string(point.getX()) + ", " +
                    std::to_string(point.getY()) + "}",
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return {nearest.x, nearest.y};
}

#define ORMIX_GEOMETRY_INSTANTIATE_BOUNDARY(T)                                             \
  template ORMIX_GEOMETRY_API PreparedBoundary2d::PreparedBoundary2d(const Polygon2d<T>&); \
  template ORMIX_GEOMETRY_API PreparedBoundary2d::PreparedBoundary2d(const PolygonWithHoles2d<T>&);
ORMIX_GEOMETRY_INSTANTIATE_BOUNDARY(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_BOUNDARY(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_BOUNDARY(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_BOUNDARY(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_BOUNDARY

}  // namespace ormix::geom
