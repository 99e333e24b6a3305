#pragma once

#include <ORMIXGeometry/Entity/2d/Arc/Arc2d.h>
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
#include <ORMIXGeometry/Entity/2d/Shape/Shape2d.h>
#include <ORMIXGeometry/Entity/2d/Skeleton/Skeleton2d.h>
#include <ORMIXGeometry/Entity/2d/Square/Square2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2d.h>
#include <ORMIXMath/Scalar/Constants.h>
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
bool mapAngle(const Map& map, omReal64& angle) {
  if constexpr (!preserves<std::decay_t<decltype(map.math)>>(eMR_Directions)) {
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
  if (!mapPoint(map, center) || !mapLength(map, majorRadius, minorRadius) || !mapAngle(map, theta)) return false;
  ellipse.setCoords(center, majorRadius, minorRadius, theta);
  return true;
}

template <class Map, class T>
bool mapInSitu(const Map& map, Square2d<T>& square) {
  Point2dData<T> center = square.center();
  T halfLength = square.getHalfLength();
  omReal64 orientation = square.getOrientation();
  if (!mapPoint(map, center) || !mapLength(map, halfLength) || !mapAngle(map, orientation)) return false;
  square = Square2d<T>(center, halfLength, orientation);
  return true;
}

template <class Map, class T>
bool mapInSitu(const Map& map, Rectangle2d<T>& rectangle) {
  Point2dData<T> center = rectangle.center();
  T halfLength = rectangle.getHalfLength();
  T halfWidth = rectangle.getHalfWidth();
  omReal64 orientation = rectangle.getOrientation();
  if (!mapPoint(map, center) || !mapLength(map, halfLength, halfWidth) || !mapAngle(map, orientation)) return false;
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

// The image of its set of points: a negative scale turns the arc by half a turn.
template <class Map, class T>
bool mapInSitu(const Map& map, Arc2d<T>& arc) {
  using Math = std::decay_t<decltype(map.math)>;
  Point2dData<T> center = arc.center();
  T radius = arc.getRadius();
  omReal64 start = arc.getStartAngle();
  const omReal64 factor = lengthFactor(map.math);
  if (!mapPoint(map, center) || !scaleLength(std::abs(factor), radius) || !mapAngle(map, start)) return false;
  if constexpr (preserves<Math>(eMR_Directions))
    if (factor < 0) start = std::remainder(start + s_pi, s_twoPi);
  arc.setCoords(center, radius, start, arc.getSweep());
  return true;
}

/// Radii stay positive, whatever the sign of the scale.
/// @{
template <class Map>
bool mapInSitu(const Map& map, SkeletonVertex2d& vertex) {
  Point2dData<omReal64> point = vertex.getPoint();
  omReal64 radius = vertex.getRadius();
  if (!mapPoint(map, point) || !mapLength(map, radius)) return false;
  vertex.setPoint(point);
  vertex.setRadius(std::abs(radius));
  return true;
}
template <class Map>
bool mapInSitu(const Map& map, Skeleton2d& skeleton) {
  MedialAxis axis = skeleton.toMedialAxis();
  const auto mapPlace = [&map](PlanarPoint& place) {
    Point2dData<omReal64> point(place.x, place.y);
    const bool isMapped = mapPoint(map, point);
    place = {point.getX(), point.getY()};
    return isMapped;
  };
  for (AxisVertex& vertex : axis.vertices) {
    if (!mapPlace(vertex.point) || !mapLength(map, vertex.radius)) return false;
    vertex.radius = std::abs(vertex.radius);
  }
  for (AxisPart& part : axis.parts)
    if (!mapPlace(part.start) || !mapPlace(part.end)) return false;
  skeleton = Skeleton2d(axis);
  return true;
}
/// @}

/// \name Runs of points and trees of them.
/// @{
template <class Map, class T>
bool mapInSitu(const Map& map, PointCloud2d<T>& cloud) {
  return mapPoints(map, cloud.getCollection());
}
template <class Map, class T>
bool mapToImage(const Map& map, const PointCloud2d<T>& cloud, PointCloud2d<T>& image) {
  return mapPoints(map, cloud.getCollection(), image.getCollection());
}
template <class Map, class T>
bool mapInSitu(const Map& map, Polygon2d<T>& polygon) {
  return mapPoints(map, polygon.getPointColl());
}
template <class Map, class T>
bool mapToImage(const Map& map, const Polygon2d<T>& polygon, Polygon2d<T>& image) {
  image.setPolygon2dType(polygon.getPolygon2dType());
  return mapPoints(map, polygon.getPointColl(), image.getPointColl());
}
inline constexpr auto s_verticesOfNode2d = [](auto& node) -> auto& { return node.getExteriorPolygon().getPointColl(); };
template <class Map, class T>
bool mapInSitu(const Map& map, PolygonWithHoles2d<T>& polygon) {
  return mapTree(map, polygon, s_verticesOfNode2d);
}
// The pixels stay: they are of the image that the shape was found in.
template <class Map>
bool mapInSitu(const Map& map, Shape2d& shape) {
  return mapTrees(map, shape.getPolygonWithHolesColl(), s_verticesOfNode2d);
}
/// @}

}  // namespace ormix::geom::detail
