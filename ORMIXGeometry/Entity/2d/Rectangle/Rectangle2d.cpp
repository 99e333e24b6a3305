#include <ORMIXGeometry/Entity/2d/Rectangle/OrientedCorner.h>
#include <ORMIXGeometry/Entity/2d/Rectangle/Rectangle2d.h>
#include <ORMIXGeometry/Entity/PointArithmetic.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <ostream>

namespace ormix::geom {

template <class T>
T Rectangle2d<T>::getLength() const {
  return detail::fullSize(_halfLength);
}

template <class T>
T Rectangle2d<T>::getWidth() const {
  return detail::fullSize(_halfWidth);
}

template <class T>
omReal64 Rectangle2d<T>::getArea() const {
  return (2 * static_cast<omReal64>(_halfLength)) * (2 * static_cast<omReal64>(_halfWidth));
}

template <class T>
Point2dData<omReal64> Rectangle2d<T>::corner(omReal64 sideX, omReal64 sideY) const {
  // Signs are applied after the conversion, as unsigned sizes cannot be negated.
  return detail::orientedCorner(_centerPt, sideX * static_cast<omReal64>(_halfLength),
                                sideY * static_cast<omReal64>(_halfWidth), _orientation);
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Rectangle2d<T>& rectangle) {
  return stream << "[center=" << rectangle.center() << ", length=" << rectangle.getLength()
                << ", width=" << rectangle.getWidth() << ", theta=" << rectangle.getOrientation() << ']';
}

ORMIX_GEOMETRY_INSTANTIATE_PRINT(Rectangle2d)

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(, Rectangle2d)
