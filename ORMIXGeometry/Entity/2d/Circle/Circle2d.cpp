#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <cmath>
#include <ostream>

namespace ormix::geom {

template <class T>
omReal64 Circle2d<T>::area() const {
  const auto radius = static_cast<omReal64>(_radius);
  return s_pi * radius * radius;
}

template <class T>
omReal64 Circle2d<T>::perimeter() const {
  return s_twoPi * static_cast<omReal64>(_radius);
}

template <class T>
omReal64 Circle2d<T>::signedDistance(const Point2dData<T>& point) const {
  return geom::distance(_centerPt, point) - static_cast<omReal64>(_radius);
}

template <class T>
omReal64 Circle2d<T>::distance(const Point2dData<T>& point) const {
  return std::abs(signedDistance(point));
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Circle2d<T>& circle) {
  return stream << "[center=" << circle.center() << ", radius=" << circle.getRadius() << ']';
}

ORMIX_GEOMETRY_INSTANTIATE_PRINT(Circle2d)

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(, Circle2d)
