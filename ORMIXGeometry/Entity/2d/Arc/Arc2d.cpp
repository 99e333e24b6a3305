#include <ORMIXGeometry/Entity/2d/Arc/Arc2d.h>
#include <ORMIXGeometry/Entity/2d/Arc/CircularArcOf.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <algorithm>
#include <cmath>
#include <ostream>

namespace ormix::geom {

template <class T>
void Arc2d<T>::setAngles(omReal64 startAngle, omReal64 sweep) {
  if (!std::isfinite(startAngle) || !std::isfinite(sweep))
    logAndThrow(formatMessage<eEntityMessage>(eEntityMessage::eEM_ArcAngleNotFinite, startAngle, sweep),
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
  _startAngle = startAngle;
  _sweep = std::clamp(sweep, -s_twoPi, s_twoPi);
}

template <class T>
bool Arc2d<T>::isFull() const {
  return ormix::isFull(detail::circularArcOf(*this));
}

template <class T>
omReal64 Arc2d<T>::length() const {
  return std::abs(static_cast<omReal64>(_radius)) * std::abs(_sweep);
}

template <class T>
Point2dData<omReal64> Arc2d<T>::pointAt(omReal64 share) const {
  const PlanarPoint point = ormix::pointAt(detail::circularArcOf(*this), _startAngle + share * _sweep);
  return {point.x, point.y};
}

template <class T>
Point2dData<omReal64> Arc2d<T>::nearestPoint(const Point2dData<omReal64>& point) const {
  const PlanarPoint nearest = nearestOn(detail::circularArcOf(*this), {point.getX(), point.getY()});
  return {nearest.x, nearest.y};
}

template <class T>
omReal64 Arc2d<T>::distance(const Point2dData<omReal64>& point) const {
  return geom::distance(nearestPoint(point), point);
}

template <class T>
BoolResult Arc2d<T>::validate(const Arc2d& self) {
  if (!std::isfinite(self._startAngle)) return failure("_startAngle is not finite");
  return std::abs(self._sweep) <= s_twoPi ? BoolResult() : failure("_sweep is not within a full turn");
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Arc2d<T>& arc) {
  return stream << "[center=" << arc.center() << ", radius=" << arc.getRadius() << ", start=" << arc.getStartAngle()
                << ", sweep=" << arc.getSweep() << ']';
}

ORMIX_GEOMETRY_INSTANTIATE_PRINT(Arc2d)

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(, Arc2d)
