#include <ORMIXGeometry/Entity/3d/Cone/Cone3d.h>
#include <ORMIXGeometry/Entity/3d/RoundSolidOf.h>
#include <ORMIXMath/Scalar/Compare.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <cmath>
#include <ostream>

namespace ormix::geom {

template <class T>
omReal64 Cone3d<T>::getHeight() const {
  return detail::roundSolidOf(*this).height;
}

template <class T>
Point3dData<omReal64> Cone3d<T>::getAxis() const {
  return detail::toData(detail::roundSolidOf(*this).axis);
}

template <class T>
omReal64 Cone3d<T>::getHalfAngle() const {
  const RoundSolid solid = detail::roundSolidOf(*this);
  return std::atan2(std::abs(solid.radius1 - solid.radius0), solid.height);
}

template <class T>
omReal64 Cone3d<T>::area() const {
  return ormix::area(detail::roundSolidOf(*this));
}

template <class T>
omReal64 Cone3d<T>::volume() const {
  return ormix::volume(detail::roundSolidOf(*this));
}

template <class T>
omReal64 Cone3d<T>::signedDistance(const Point3dData<omReal64>& point) const {
  return ormix::signedDistance(detail::roundSolidOf(*this), detail::toSpatial(point));
}

template <class T>
omReal64 Cone3d<T>::distance(const Point3dData<omReal64>& point) const {
  return std::abs(signedDistance(point));
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Cone3d<T>& cone) {
  return stream << "[p0=" << cone.getPoint0() << ", p1=" << cone.getPoint1() << ", radius0=" << cone.getRadius0()
                << ", radius1=" << cone.getRadius1() << ']';
}

template <class T>
bool compare(const Cone3d<T>& a, const Cone3d<T>& b, std::common_type_t<T> tolerance) {
  return compare(a.getPoint0(), b.getPoint0(), tolerance) && compare(a.getPoint1(), b.getPoint1(), tolerance) &&
         ormix::compare(a.getRadius0(), b.getRadius0(), tolerance) &&
         ormix::compare(a.getRadius1(), b.getRadius1(), tolerance);
}

#define ORMIX_GEOMETRY_INSTANTIATE_CONE(T)                                               \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Cone3d<T>&); \
  template ORMIX_GEOMETRY_API bool compare(const Cone3d<T>&, const Cone3d<T>&, std::common_type_t<T>);
ORMIX_GEOMETRY_INSTANTIATE_CONE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_CONE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_CONE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_CONE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_CONE

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, Cone3d)
