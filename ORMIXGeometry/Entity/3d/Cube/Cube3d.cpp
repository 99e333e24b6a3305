#include <ORMIXGeometry/Entity/3d/Cube/Cube3d.h>
#include <ORMIXGeometry/Entity/3d/Cuboid/RotatedCorner.h>
#include <ORMIXGeometry/Entity/PointArithmetic.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <ostream>

namespace ormix::geom {

template <class T>
T Cube3d<T>::getLength() const {
  return detail::fullSize(_halfLength);
}

template <class T>
Point3dData<omReal64> Cube3d<T>::corner(omReal64 sideX, omReal64 sideY, omReal64 sideZ) const {
  const auto halfLength = static_cast<omReal64>(_halfLength);
  return detail::rotatedCorner(_centerPt, sideX * halfLength, sideY * halfLength, sideZ * halfLength, _alpha, _beta,
                               _chi);
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Cube3d<T>& cube) {
  return stream << "[center=" << cube.center() << ", l=" << cube.getLength() << ", chi=" << cube.getChi()
                << ", beta=" << cube.getBeta() << ", alpha=" << cube.getAlpha() << ']';
}

ORMIX_GEOMETRY_INSTANTIATE_PRINT(Cube3d)

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, Cube3d)
