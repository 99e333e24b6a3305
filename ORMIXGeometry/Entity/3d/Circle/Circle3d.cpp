#include <ORMIXGeometry/Entity/3d/Circle/Circle3d.h>
#include <ORMIXGeometry/Entity/3d/RoundSolidOf.h>
#include <ORMIXMath/Scalar/Compare.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <cmath>
#include <ostream>

namespace ormix::geom {

template <class T>
void Circle3d<T>::setNormal(const Point3dData<omReal64>& normal) {
  _normal = detail::unitDirection(normal);
}

template <class T>
BoolResult Circle3d<T>::validate(const Circle3d& self) {
  return detail::isUnitDirection(self._normal) ? BoolResult() : failure("_normal is not a unit vector");
}

template <class T>
omReal64 Circle3d<T>::length() const {
  return s_twoPi * std::abs(static_cast<omReal64>(_radius));
}

template <class T>
omReal64 Circle3d<T>::distance(const Point3dData<omReal64>& point) const {
  return std::abs(ormix::signedDistance(detail::roundSolidOf(*this), detail::toSpatial(point)));
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Circle3d<T>& circle) {
  return stream << "[center=" << circle.center() << ", normal=" << circle.getNormal()
                << ", radius=" << circle.getRadius() << ']';
}

template <class T>
bool compare(const Circle3d<T>& a, const Circle3d<T>& b, std::common_type_t<T> tolerance, omReal64 angleTolerance) {
  return compare(a.center(), b.center(), tolerance) && ormix::compare(a.getRadius(), b.getRadius(), tolerance) &&
         detail::areDirectionsNear(a.getNormal(), b.getNormal(), angleTolerance);
}

#define ORMIX_GEOMETRY_INSTANTIATE_CIRCLE(T)                                               \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Circle3d<T>&); \
  template ORMIX_GEOMETRY_API bool compare(const Circle3d<T>&, const Circle3d<T>&, std::common_type_t<T>, omReal64);
ORMIX_GEOMETRY_INSTANTIATE_CIRCLE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_CIRCLE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_CIRCLE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_CIRCLE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_CIRCLE

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, Circle3d)
