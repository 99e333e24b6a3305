#include <ORMIXGeometry/Entity/3d/Segment/Segment3d.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXMath/Distance/SpatialSegmentsDistance.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <ostream>

namespace ormix::geom {

namespace {

template <class T>
SpatialPoint spatial(const Point3dData<T>& point) {
  return toSpatialPoint(point.getX(), point.getY(), point.getZ());
}

template <class T>
SpatialSegment spatial(const Segment3d<T>& segment) {
  return {spatial(segment.getPoint0()), spatial(segment.getPoint1())};
}

}  // namespace

template <class T>
omReal64 Segment3d<T>::getLength() const {
  return geom::distance(_pt0, _pt1);
}

template <class T>
Vector3d Segment3d<T>::getDirection() const {
  Vector3d direction;
  direction.setCoords(_pt0, _pt1);
  return direction;
}

template <class T>
Vector3d Segment3d<T>::getUnitDirection() const {
  const Vector3d direction = getDirection();
  return {1, direction.getTheta(), direction.getPhi()};
}

template <class T>
omReal64 Segment3d<T>::distance(const Point3dData<T>& point) const {
  Point3dData<omReal64> nearest;
  return distance(point, nearest);
}

template <class T>
omReal64 Segment3d<T>::distance(const Point3dData<T>& point, Point3dData<omReal64>& nearest) const {
  SpatialPoint onThis;
  const omReal64 result = pointSegmentDistance(spatial(point), spatial(*this), onThis);
  nearest.setCoords(onThis.x, onThis.y, onThis.z);
  return result;
}

template <class T>
omReal64 Segment3d<T>::distance(const Segment3d& other) const {
  Point3dData<omReal64> nearestOnThis;
  Point3dData<omReal64> nearestOnOther;
  return distance(other, nearestOnThis, nearestOnOther);
}

template <class T>
omReal64 Segment3d<T>::distance(const Segment3d& other, Point3dData<omReal64>& nearestOnThis,
                                Point3dData<omReal64>& nearestOnOther) const {
  SpatialPoint onThis;
  SpatialPoint onOther;
  const omReal64 result = segmentsDistance(spatial(*this), spatial(other), onThis, onOther);
  nearestOnThis.setCoords(onThis.x, onThis.y, onThis.z);
  nearestOnOther.setCoords(onOther.x, onOther.y, onOther.z);
  return result;
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Segment3d<T>& segment) {
  return stream << "[p0=" << segment.getPoint0() << ", p1=" << segment.getPoint1() << ']';
}

ORMIX_GEOMETRY_INSTANTIATE_PRINT(Segment3d)

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, Segment3d)
