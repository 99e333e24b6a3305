#include <ORMIXGeometry/Entity/3d/Cuboid/Cuboid3d.h>
#include <ORMIXGeometry/Entity/3d/Cuboid/RotatedCorner.h>
#include <ORMIXGeometry/Entity/PointArithmetic.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <ostream>

namespace ormix::geom {

template <class T>
T Cuboid3d<T>::getLength() const {
  return detail::fullSize(_halfLength);
}

template <class T>
T Cuboid3d<T>::getWidth() const {
  return detail::fullSize(_halfWidth);
}

template <class T>
T Cuboid3d<T>::getHeight() const {
  return detail::fullSize(_halfHeight);
}

template <class T>
Point3dData<omReal64> Cuboid3d<T>::corner(omReal64 sideX, omReal64 sideY, omReal64 sideZ) const {
  // Multiplied after the conversion, since the negative of an unsigned size is not representable.
  return detail::rotatedCorner(_centerPt, sideX * static_cast<omReal64>(_halfLength),
                               sideY * static_cast<omReal64>(_halfWidth), sideZ * static_cast<omReal64>(_halfHeight),
                               _alpha, _beta, _chi);
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Cuboid3d<T>& cuboid) {
  return stream << "[center=" << cuboid.center() << ", l=" << cuboid.getLength() << ", w=" << cuboid.getWidth()
                << ", h=" << cuboid.getHeight() << ", chi=" << cuboid.getChi() << ", beta=" << cuboid.getBeta()
                << ", alpha=" << cuboid.getAlpha() << ']';
}

ORMIX_GEOMETRY_INSTANTIATE_PRINT(Cuboid3d)

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, Cuboid3d)
