#include <ORMIXGeometry/Entity/2d/Rectangle/OrientedCorner.h>
#include <ORMIXGeometry/Entity/2d/Square/Square2d.h>
#include <ORMIXGeometry/Entity/PointArithmetic.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <ostream>

namespace ormix::geom {

template <class T>
T Square2d<T>::getLength() const {
  return detail::fullSize(_halfLength);
}

template <class T>
Point2dData<omReal64> Square2d<T>::corner(omReal64 sideX, omReal64 sideY) const {
  const auto halfLength = static_cast<omReal64>(_halfLength);
  return detail::orientedCorner(_centerPt, sideX * halfLength, sideY * halfLength, _orientation);
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Square2d<T>& square) {
  return stream << "[center=" << square.center() << ", l=" << square.getLength()
                << ", theta=" << square.getOrientation() << ']';
}

ORMIX_GEOMETRY_INSTANTIATE_PRINT(Square2d)

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(, Square2d)
