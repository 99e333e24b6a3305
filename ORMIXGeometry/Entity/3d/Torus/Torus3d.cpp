#include <ORMIXGeometry/Entity/3d/RoundSolidOf.h>
#include <ORMIXGeometry/Entity/3d/Torus/Torus3d.h>
#include <ORMIXMath/Scalar/Compare.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <cmath>
#include <ostream>

namespace ormix::geom {

template <class T>
void Torus3d<T>::setAxis(const Point3dData<omReal64>& axis) {
  _axis = detail::unitDirection(axis);
}

template <class T>
BoolResult Torus3d<T>::validate(const Torus3d& self) {
  return detail::isUnitDirection(self._axis) ? BoolResult() : failure("_axis is not a unit vector");
}

template <class T>
omReal64 Torus3d<T>::area() const {
  return ormix::area(detail::roundSolidOf(*this));
}

template <class T>
omReal64 Torus3d<T>::volume() const {
  return ormix::volume(detail::roundSolidOf(*this));
}

template <class T>
omReal64 Torus3d<T>::signedDistance(const Point3dData<omReal64>& point) const {
  return ormix::signedDistance(detail::roundSolidOf(*this), detail::toSpatial(point));
}

template <class T>
omReal64 Torus3d<T>::distance(const Point3dData<omReal64>& point) const {
  return std::abs(signedDistance(point));
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Torus3d<T>& torus) {
  return stream << "[center=" << torus.center() << ", axis=" << torus.getAxis() << ", R=" << torus.getMajorRadius()
                << ", r=" << torus.getMinorRadius() << ']';
}

template <class T>
bool compare(const Torus3d<T>& a, const Torus3d<T>& b, std::common_type_t<T> tolerance, omReal64 angleTolerance) {
  return compare(a.center(), b.center(), tolerance) &&
         ormix::compare(a.getMajorRadius(), b.getMajorRadius(), tolerance) &&
         ormix::compare(a.getMinorRadius(), b.getMinorRadius(), tolerance) &&
         detail::areDirectionsNear(a.getAxis(), b.getAxis(), angleTolerance);
}

#define ORMIX_GEOMETRY_INSTANTIATE_TORUS(T)                                               \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Torus3d<T>&); \
  template ORMIX_GEOMETRY_API bool compare(const Torus3d<T>&, const Torus3d<T>&, std::common_type_t<T>, omReal64);
ORMIX_GEOMETRY_INSTANTIATE_TORUS(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_TORUS(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_TORUS(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_TORUS(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_TORUS

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, Torus3d)
