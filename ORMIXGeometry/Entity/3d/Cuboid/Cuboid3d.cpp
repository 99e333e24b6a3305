#include <ORMIXGeometry/Entity/3d/Cuboid/Cuboid3d.h>
#include <ORMIXGeometry/Entity/3d/Cuboid/TurnedCorner.h>
#include <ORMIXGeometry/Entity/PointArithmetic.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <ostream>

namespace ormix::geom {

namespace {
const ScalarRegistrators<Cuboid3d> g_classRegistrator;
}  // namespace

template <class T>
T Cuboid3d<T>::getLength() const {
  return fullSize(_halfLength);
}

template <class T>
T Cuboid3d<T>::getWidth() const {
  return fullSize(_halfWidth);
}

template <class T>
T Cuboid3d<T>::getHeight() const {
  return fullSize(_halfHeight);
}

template <class T>
Point3dData<omReal64> Cuboid3d<T>::corner(omReal64 sideX, omReal64 sideY, omReal64 sideZ) const {
  // Signs are applied after the conversion, as unsigned sizes have no negative.
  const Point3dData<omReal64> offset(sideX * static_cast<omReal64>(_halfLength),
                                     sideY * static_cast<omReal64>(_halfWidth),
                                     sideZ * static_cast<omReal64>(_halfHeight));
  return detail::turnedAboutOrigin(cast<omReal64>(_centerPt) + offset, _alpha, _beta, _chi);
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Cuboid3d<T>& cuboid) {
  return stream << "[center=" << cuboid.center() << ", l=" << cuboid.getLength() << ", w=" << cuboid.getWidth()
                << ", h=" << cuboid.getHeight() << ", chi=" << cuboid.getChi() << ", beta=" << cuboid.getBeta()
                << ", alpha=" << cuboid.getAlpha() << ']';
}

template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Cuboid3d<omInt32>&);
template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Cuboid3d<omUInt32>&);
template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Cuboid3d<omReal32>&);
template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Cuboid3d<omReal64>&);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, Cuboid3d)
