#include <ORMIXGeometry/Entity/2d/Segment/Segment2d.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXMath/Distance/SegmentsDistance.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <cmath>
#include <ostream>

namespace ormix::geom {

namespace {

template <class T>
PlanarPoint planar(const Point2dData<T>& point) {
  return toPlanarPoint(point.getX(), point.getY());
}

template <class T>
PlanarSegment planar(const Segment2d<T>& segment) {
  return {planar(segment.getPoint0()), planar(segment.getPoint1())};
}

}  // namespace

template <class T>
omReal64 Segment2d<T>::getLength() const {
  return geom::distance(_pt0, _pt1);
}

template <class T>
Vector2d Segment2d<T>::getDirection() const {
  Vector2d direction;
  // Vector2d::setCoords() computes its first argument minus its second.
  direction.setCoords(_pt1, _pt0);
  return direction;
}

template <class T>
Vector2d Segment2d<T>::getUnitDirection() const {
  return {1, getDirection().getTheta()};
}

template <class T>
Vector2d Segment2d<T>::getUnitNormal() const {
  // Written as x0 - x1 with 0 added, since -0 would give the angle -pi or -0.
  const omReal64 across = omReal64(_pt0.getX()) - omReal64(_pt1.getX()) + 0.0;
  return {1, std::atan2(across, omReal64(_pt1.getY()) - omReal64(_pt0.getY()) + 0.0)};
}

template <class T>
omReal64 Segment2d<T>::distance(const Point2dData<T>& point) const {
  Point2dData<omReal64> nearest;
  return distance(point, nearest);
}

template <class T>
omReal64 Segment2d<T>::distance(const Point2dData<T>& point, Point2dData<omReal64>& nearest) const {
  PlanarPoint onThis;
  const omReal64 result = pointSegmentDistance(planar(point), planar(*this), onThis);
  nearest.setCoords(onThis.x, onThis.y);
  return result;
}

template <class T>
omReal64 Segment2d<T>::distance(const Segment2d& other) const {
  Point2dData<omReal64> nearestOnThis;
  Point2dData<omReal64> nearestOnOther;
  return distance(other, nearestOnThis, nearestOnOther);
}

template <class T>
omReal64 Segment2d<T>::distance(const Segment2d& other, Point2dData<omReal64>& nearestOnThis,
                                Point2dData<omReal64>& nearestOnOther) const {
  PlanarPoint onThis;
  PlanarPoint onOther;
  const omReal64 result = segmentsDistance(planar(*this), planar(other), onThis, onOther);
  nearestOnThis.setCoords(onThis.x, onThis.y);
  nearestOnOther.setCoords(onOther.x, onOther.y);
  return result;
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Segment2d<T>& segment) {
  return stream << "[p0=" << segment.getPoint0() << ", p1=" << segment.getPoint1() << ']';
}

ORMIX_GEOMETRY_INSTANTIATE_PRINT(Segment2d)

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(, Segment2d)
