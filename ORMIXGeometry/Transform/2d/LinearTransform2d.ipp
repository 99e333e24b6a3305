#pragma once

#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Entity/2d/Line/Line2d.h>
#include <ORMIXGeometry/Entity/2d/Parabola/Parabola2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/PointCloud/PointCloud2d.h>
#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonTree.h>
#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Rectangle/Rectangle2d.h>
#include <ORMIXGeometry/Entity/2d/Segment/Segment2d.h>
#include <ORMIXGeometry/Entity/2d/Square/Square2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>
#include <ORMIXGeometry/Message/TransformMessage.h>
#include <ORMIXGeometry/ORMIXGeometryLogger.h>
#include <ORMIXGeometry/Transform/2d/LinearTransform2d.h>
#include <ORMIXMath/Transform/2d/PointRun2d.h>

#include <cmath>
#include <utility>
#include <vector>

// The rule of each entity under a linear transform, once for all seven. An entity's new fields are computed first and
// stored last, so that a failure changes nothing.

namespace ormix::geom {

namespace detail {

template <class T>
bool reportUndefinedImage(eTransform2dType type, T x, T y) {
  logMessage(getORMIXGeometryLogger(), s_errorLogLevel,
             formatMessage<eTransformMessage>(eTransformMessage::eTM_Point2dFailed, toString(type),
                                              static_cast<omReal64>(x), static_cast<omReal64>(y)));
  return false;
}

template <class Math, class T>
bool mapPoint(eTransform2dType type, const Math& math, Point2dData<T>& point) {
  T x{};
  T y{};
  if (!math.apply(point.getX(), point.getY(), x, y)) return reportUndefinedImage(type, point.getX(), point.getY());
  point.setCoords(x, y);
  return true;
}

template <class Math, class T>
bool hasImage(eTransform2dType type, const Math& math, const std::vector<Point2dData<T>>& points) {
  const std::size_t undefined = firstUndefinedImage(math, coordinates(points), points.size());
  if (undefined == points.size()) return true;
  return reportUndefinedImage(type, points[undefined].getX(), points[undefined].getY());
}

template <class Math, class T>
bool mapPoints(eTransform2dType type, const Math& math, std::vector<Point2dData<T>>& points) {
  if (!hasImage(type, math, points)) return false;
  applyToRun(math, coordinates(points), points.size());
  return true;
}

/// The factor by which lengths grow, 1 for an isometry. No absolute value is taken (intended).
template <class Math>
omReal64 lengthFactor(const Math& math) {
  if constexpr (Preserves2d<Math>::lengths)
    return 1;
  else
    return math.getScale();
}

/// The length as the transform makes it, brought to its type; false when it is not finite.
template <class T>
bool scaleLength(omReal64 factor, T& length) {
  const omReal64 scaled = factor * static_cast<omReal64>(length);
  const T rounded = round<T, omReal64>(scaled);
  if (!std::isfinite(scaled) || !std::isfinite(static_cast<omReal64>(rounded))) return false;
  length = rounded;
  return true;
}

/// The angle of the image of the unit direction at `angle` under the map's linear part; unchanged, to the bit, where
/// the map keeps directions.
template <class Math>
omReal64 turnedAngle(const Math& math, omReal64 angle) {
  if constexpr (Preserves2d<Math>::directions) {
    return angle;
  } else {
    const AffineCoefficients2d& c = math.getCoefficients();
    const omReal64 cosAngle = std::cos(angle);
    const omReal64 sinAngle = std::sin(angle);
    return std::atan2(c.yx * cosAngle + c.yy * sinAngle, c.xx * cosAngle + c.xy * sinAngle);
  }
}

}  // namespace detail

template <class Self, class Math>
template <class T>
bool LinearTransform2d<Self, Math>::processInSitu(Point2d<T>& point) const {
  Point2dData<T> image = point.getCoords();
  if (!detail::mapPoint(Self::s_transform2dType, _transform, image)) return false;
  point.setCoords(image);
  return true;
}

// A vector is treated as a position: offsets shift it (intended).
template <class Self, class Math>
bool LinearTransform2d<Self, Math>::processInSitu(Vector2d& vector) const {
  Point2d<omReal64> point(vector.getX(), vector.getY());
  if (!processInSitu(point)) return false;
  vector.setCoords(point);
  return true;
}

template <class Self, class Math>
template <class T>
bool LinearTransform2d<Self, Math>::processInSitu(Segment2d<T>& segment) const {
  Point2dData<T> pt0 = segment.getPoint0();
  Point2dData<T> pt1 = segment.getPoint1();
  if (!detail::mapPoint(Self::s_transform2dType, _transform, pt0)) return false;
  if (!detail::mapPoint(Self::s_transform2dType, _transform, pt1)) return false;
  segment.setCoords(pt0, pt1);
  return true;
}

template <class Self, class Math>
template <class T>
bool LinearTransform2d<Self, Math>::processInSitu(Polygon2d<T>& polygon) const {
  return detail::mapPoints(Self::s_transform2dType, _transform, polygon.getPointColl());
}

template <class Self, class Math>
template <class T>
bool LinearTransform2d<Self, Math>::processInSitu(PolygonWithHoles2d<T>& polygon) const {
  // All rings are asked before the first one changes.
  const bool isDefined = visitNodes(std::as_const(polygon), [this](const PolygonWithHoles2d<T>& node) {
    return detail::hasImage(Self::s_transform2dType, _transform, node.getExteriorPolygon().getPointColl());
  });
  if (!isDefined) return false;
  return visitNodes(polygon, [this](PolygonWithHoles2d<T>& node) {
    applyToRun(_transform, coordinates(node.getExteriorPolygon().getPointColl()), node.getNbExteriorPoints());
    return true;
  });
}

template <class Self, class Math>
template <class T>
bool LinearTransform2d<Self, Math>::processInSitu(PointCloud2d<T>& cloud) const {
  return detail::mapPoints(Self::s_transform2dType, _transform, cloud.getCollection());
}

template <class Self, class Math>
template <class T, class M, std::enable_if_t<Preserves2d<M>::axes, int>>
bool LinearTransform2d<Self, Math>::processInSitu(BoundingBox2d<T>& box) const {
  Point2dData<T> minCorner = box.getMinCornerPt();
  Point2dData<T> maxCorner = box.getMaxCornerPt();
  if (!detail::mapPoint(Self::s_transform2dType, _transform, minCorner)) return false;
  if (!detail::mapPoint(Self::s_transform2dType, _transform, maxCorner)) return false;
  box.setCoords(minCorner, maxCorner);
  return true;
}

template <class Self, class Math>
template <class T, class M, std::enable_if_t<Preserves2d<M>::angles, int>>
bool LinearTransform2d<Self, Math>::processInSitu(Circle2d<T>& circle) const {
  Point2dData<T> center = circle.center();
  T radius = circle.getRadius();
  if (!detail::mapPoint(Self::s_transform2dType, _transform, center)) return false;
  if (!detail::scaleLength(detail::lengthFactor(_transform), radius)) return false;
  circle.setCoords(center, radius);
  return true;
}

template <class Self, class Math>
template <class T, class M, std::enable_if_t<Preserves2d<M>::angles, int>>
bool LinearTransform2d<Self, Math>::processInSitu(Ellipse2d<T>& ellipse) const {
  const omReal64 factor = detail::lengthFactor(_transform);
  Point2dData<T> center = ellipse.center();
  T majorRadius = ellipse.getMajorRadius();
  T minorRadius = ellipse.getMinorRadius();
  if (!detail::mapPoint(Self::s_transform2dType, _transform, center)) return false;
  if (!detail::scaleLength(factor, majorRadius) || !detail::scaleLength(factor, minorRadius)) return false;
  ellipse.setCoords(center, majorRadius, minorRadius, detail::turnedAngle(_transform, ellipse.getTheta()));
  return true;
}

template <class Self, class Math>
template <class T, class M, std::enable_if_t<Preserves2d<M>::angles, int>>
bool LinearTransform2d<Self, Math>::processInSitu(Square2d<T>& square) const {
  Point2dData<T> center = square.center();
  T halfLength = square.getHalfLength();
  if (!detail::mapPoint(Self::s_transform2dType, _transform, center)) return false;
  if (!detail::scaleLength(detail::lengthFactor(_transform), halfLength)) return false;
  square = Square2d<T>(center, halfLength, detail::turnedAngle(_transform, square.getOrientation()));
  return true;
}

template <class Self, class Math>
template <class T, class M, std::enable_if_t<Preserves2d<M>::angles, int>>
bool LinearTransform2d<Self, Math>::processInSitu(Rectangle2d<T>& rectangle) const {
  const omReal64 factor = detail::lengthFactor(_transform);
  Point2dData<T> center = rectangle.center();
  T halfLength = rectangle.getHalfLength();
  T halfWidth = rectangle.getHalfWidth();
  if (!detail::mapPoint(Self::s_transform2dType, _transform, center)) return false;
  if (!detail::scaleLength(factor, halfLength) || !detail::scaleLength(factor, halfWidth)) return false;
  const omReal64 orientation = detail::turnedAngle(_transform, rectangle.getOrientation());
  rectangle = Rectangle2d<T>(center, halfLength, halfWidth, orientation);
  return true;
}

// The direction is a vector, and so shifted by offsets as every vector is (intended).
template <class Self, class Math>
template <class M, std::enable_if_t<Preserves2d<M>::lengths, int>>
bool LinearTransform2d<Self, Math>::processInSitu(Line2d& line) const {
  Point2dData<omReal64> point = line.getNearestPointFromOrigin();
  Vector2d direction = line.getDirection();
  if (!detail::mapPoint(Self::s_transform2dType, _transform, point) || !processInSitu(direction)) return false;
  line.setCoords(point, direction);
  return true;
}

template <class Self, class Math>
template <class M, std::enable_if_t<Preserves2d<M>::lengths, int>>
bool LinearTransform2d<Self, Math>::processInSitu(Parabola2d& parabola) const {
  Point2dData<omReal64> focus = parabola.getFocus();
  Line2d directrix = parabola.getDirectrix();
  if (!detail::mapPoint(Self::s_transform2dType, _transform, focus) || !processInSitu(directrix)) return false;
  parabola.setFocus(focus);
  parabola.setDirectrix(directrix);
  return true;
}

}  // namespace ormix::geom
