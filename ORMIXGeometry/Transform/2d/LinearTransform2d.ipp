#pragma once

#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Entity/2d/Line/Line2d.h>
#include <ORMIXGeometry/Entity/2d/Parabola/Parabola2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/PointCloud/PointCloud2d.h>
#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Rectangle/Rectangle2d.h>
#include <ORMIXGeometry/Entity/2d/Segment/Segment2d.h>
#include <ORMIXGeometry/Entity/2d/Square/Square2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2d.h>
#include <ORMIXGeometry/Transform/FewPointsMapping.ipp>
#include <ORMIXGeometry/Transform/LinearTransform.ipp>

#include <cmath>

// The rule of each planar entity under a linear transform, once for all seven. An entity's new fields are computed
// first and stored last, so that a failure changes nothing.

namespace ormix::geom::detail {

/// \name What is mapped as its counterpart in space.
/// @{
template <class Map, class T>
bool mapInSitu(const Map& map, Point2d<T>& point) {
  return mapCoords(map, point);
}
template <class Map>
bool mapInSitu(const Map& map, Vector2d& vector) {
  return mapAsPosition(map, vector, Point2dData<omReal64>(vector.getX(), vector.getY()));
}
template <class Map, class T>
bool mapInSitu(const Map& map, Segment2d<T>& segment) {
  return mapEnds(map, segment);
}
template <class Map, class T>
bool mapInSitu(const Map& map, BoundingBox2d<T>& box) {
  return mapCorners(map, box);
}
template <class Map, class T>
bool mapInSitu(const Map& map, Circle2d<T>& circle) {
  return mapBall(map, circle);
}
/// @}

/// Makes of an angle that of the image of the unit direction there under the map's linear part; unchanged, to the bit,
/// where the map keeps directions. False where it is not finite, and so no direction.
template <class Map>
bool turn(const Map& map, omReal64& angle) {
  if constexpr (!s_preserved<std::decay_t<decltype(map.math)>>.directions) {
    const AffineCoefficients2d& c = map.math.getCoefficients();
    const omReal64 cosAngle = std::cos(angle);
    const omReal64 sinAngle = std::sin(angle);
    const omReal64 turned = std::atan2(c.yx * cosAngle + c.yy * sinAngle, c.xx * cosAngle + c.xy * sinAngle);
    if (!std::isfinite(turned)) return false;
    angle = turned;
  }
  return true;
}

template <class Map, class T>
bool mapInSitu(const Map& map, Ellipse2d<T>& ellipse) {
  Point2dData<T> center = ellipse.center();
  T majorRadius = ellipse.getMajorRadius();
  T minorRadius = ellipse.getMinorRadius();
  omReal64 theta = ellipse.getTheta();
  if (!mapPoint(map, center) || !mapLength(map, majorRadius, minorRadius) || !turn(map, theta)) return false;
  ellipse.setCoords(center, majorRadius, minorRadius, theta);
  return true;
}

template <class Map, class T>
bool mapInSitu(const Map& map, Square2d<T>& square) {
  Point2dData<T> center = square.center();
  T halfLength = square.getHalfLength();
  omReal64 orientation = square.getOrientation();
  if (!mapPoint(map, center) || !mapLength(map, halfLength) || !turn(map, orientation)) return false;
  square = Square2d<T>(center, halfLength, orientation);
  return true;
}

template <class Map, class T>
bool mapInSitu(const Map& map, Rectangle2d<T>& rectangle) {
  Point2dData<T> center = rectangle.center();
  T halfLength = rectangle.getHalfLength();
  T halfWidth = rectangle.getHalfWidth();
  omReal64 orientation = rectangle.getOrientation();
  if (!mapPoint(map, center) || !mapLength(map, halfLength, halfWidth) || !turn(map, orientation)) return false;
  rectangle = Rectangle2d<T>(center, halfLength, halfWidth, orientation);
  return true;
}

// The direction is a vector, and so shifted by offsets as every vector is (intended).
template <class Map>
bool mapInSitu(const Map& map, Line2d& line) {
  Point2dData<omReal64> point = line.getNearestPointFromOrigin();
  Vector2d direction = line.getDirection();
  if (!mapPoint(map, point) || !mapInSitu(map, direction)) return false;
  line.setCoords(point, direction);
  return true;
}

template <class Map>
bool mapInSitu(const Map& map, Parabola2d& parabola) {
  Point2dData<omReal64> focus = parabola.getFocus();
  Line2d directrix = parabola.getDirectrix();
  if (!mapPoint(map, focus) || !mapInSitu(map, directrix)) return false;
  parabola.setFocus(focus);
  parabola.setDirectrix(directrix);
  return true;
}

template <class T>
struct RunOf<PointCloud2d<T>> {
  static constexpr bool isRun = true;
  template <class Cloud>
  static auto& points(Cloud& cloud) {
    return cloud.getCollection();
  }
  static void copyRest(const PointCloud2d<T>&, PointCloud2d<T>&) {}
};

template <class T>
struct RunOf<Polygon2d<T>> {
  static constexpr bool isRun = true;
  template <class Polygon>
  static auto& points(Polygon& polygon) {
    return polygon.getPointColl();
  }
  static void copyRest(const Polygon2d<T>& from, Polygon2d<T>& to) { to.setPolygon2dType(from.getPolygon2dType()); }
};

template <class T>
struct TreeOf<PolygonWithHoles2d<T>> {
  static constexpr bool isTree = true;
  template <class Node>
  static auto& body(Node& node) {
    return node.getExteriorPolygon();
  }
  template <class Node>
  static auto& holes(Node& node) {
    return node.getPolygonHoles();
  }
};

}  // namespace ormix::geom::detail
