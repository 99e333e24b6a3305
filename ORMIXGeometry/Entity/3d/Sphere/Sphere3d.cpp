#include <ORMIXGeometry/Entity/3d/Sphere/Sphere3d.h>
#include <ORMIXMath/Scalar/Compare.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <cmath>
#include <ostream>

namespace ormix::geom {

template <class T>
omReal64 Sphere3d<T>::area() const {
  const auto radius = static_cast<omReal64>(_radius);
  return 4 * s_pi * radius * radius;
}

template <class T>
omReal64 Sphere3d<T>::volume() const {
  const auto radius = static_cast<omReal64>(_radius);
  return s_pi * radius * radius * radius * 4 / 3;
}

template <class T>
omReal64 Sphere3d<T>::signedDistance(const Point3dData<T>& point) const {
  return geom::distance(_centerPt, point) - static_cast<omReal64>(_radius);
}

template <class T>
omReal64 Sphere3d<T>::distance(const Point3dData<T>& point) const {
  return std::abs(signedDistance(point));
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const Sphere3d<T>& sphere) {
  return stream << "[center=" << sphere.center() << ", radius=" << sphere.getRadius() << ']';
}

template <class T>
bool compare(const Sphere3d<T>& a, const Sphere3d<T>& b, std::common_type_t<T> tolerance) {
  return compare(a.center(), b.center(), tolerance) && ormix::compare(a.getRadius(), b.getRadius(), tolerance);
}

#define ORMIX_GEOMETRY_INSTANTIATE_SPHERE(T)                                               \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Sphere3d<T>&); \
  template ORMIX_GEOMETRY_API bool compare(const Sphere3d<T>&, const Sphere3d<T>&, std::common_type_t<T>);
ORMIX_GEOMETRY_INSTANTIATE_SPHERE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_SPHERE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_SPHERE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_SPHERE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_SPHERE

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, Sphere3d)
