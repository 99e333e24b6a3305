#include <ORMIXGeometry/Entity/3d/Cylinder/Cylinder3d.h>
#include <ORMIXGeometry/Entity/3d/RoundSolidOf.h>
#include <ORMIXMath/Scalar/Compare.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <cmath>
#include <ostream>

namespace ormix::geom {

template <class T>
omReal64 Cylinder3d<T>::getHeight() const {
  return detail::roundSolidOf(*this).height;
}

template <class T>
Point3dData<omReal64> Cylinder3d<T>::getAxis() const {
  return detail::toData(detail::roundSolidOf(*this).axis);
}

template <class T>
omReal64 Cylinder3d<T>::area() const {
  return ormix::area(detail::roundSolidOf(*this));
}

template <class T>
omReal64 Cylinder3d<T>::volume() const {
  return ormix::volume(detail::roundSolidOf(*this));
}

template <class T>
omReal64 Cylinder3d<T>::signedDistance(const Point3dData<omReal64>& point) const {
  return ormix::signedDistance(detail::roundSolidOf(*this), detail::toSpatial(point));
}

template <class T>
omReal64 Cylinder3d<T>::distance(const Point3dData<omReal64>& point) const {
  return std::abs(signedDistance(point));
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Cylinder3d<T>& cylinder) {
  return stream << "[p0=" << cylinder.getPoint0() << ", p1=" << cylinder.getPoint1()
                << ", radius=" << cylinder.getRadius() << ']';
}

template <class T>
bool compare(const Cylinder3d<T>& a, const Cylinder3d<T>& b, std::common_type_t<T> tolerance) {
  return compare(a.getPoint0(), b.getPoint0(), tolerance) && compare(a.getPoint1(), b.getPoint1(), tolerance) &&
         ormix::compare(a.getRadius(), b.getRadius(), tolerance);
}

#define ORMIX_GEOMETRY_INSTANTIATE_CYLINDER(T)                                               \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Cylinder3d<T>&); \
  template ORMIX_GEOMETRY_API bool compare(const Cylinder3d<T>&, const Cylinder3d<T>&, std::common_type_t<T>);
ORMIX_GEOMETRY_INSTANTIATE_CYLINDER(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_CYLINDER(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_CYLINDER(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_CYLINDER(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_CYLINDER

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, Cylinder3d)
