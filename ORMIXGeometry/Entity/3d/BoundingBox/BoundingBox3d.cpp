#include <ORMIXGeometry/Entity/3d/BoundingBox/BoundingBox3d.h>
#include <ORMIXGeometry/Entity/3d/Entity3d.ipp>

#include <algorithm>
#include <ostream>

namespace ormix::geom {

namespace {

template <class T>
Point3dData<T> lower(const Point3dData<T>& a, const Point3dData<T>& b) {
  return {std::min(a.getX(), b.getX()), std::min(a.getY(), b.getY()), std::min(a.getZ(), b.getZ())};
}

template <class T>
Point3dData<T> upper(const Point3dData<T>& a, const Point3dData<T>& b) {
  return {std::max(a.getX(), b.getX()), std::max(a.getY(), b.getY()), std::max(a.getZ(), b.getZ())};
}

}  // namespace

template <class T>
std::ostream& operator<<(std::ostream& stream, const BoundingBox3d<T>& box) {
  return stream << "[min=" << box.getMinCornerPt() << ", max=" << box.getMaxCornerPt() << ']';
}

template <class T>
bool compare(const BoundingBox3d<T>& a, const BoundingBox3d<T>& b, std::common_type_t<T> tolerance) {
  return compare(a.getMinCornerPt(), b.getMinCornerPt(), tolerance) &&
         compare(a.getMaxCornerPt(), b.getMaxCornerPt(), tolerance);
}

template <class T>
void intersection(const BoundingBox3d<T>& a, const BoundingBox3d<T>& b, BoundingBox3d<T>& result) {
  result.setCoords(upper(a.getMinCornerPt(), b.getMinCornerPt()), lower(a.getMaxCornerPt(), b.getMaxCornerPt()));
  // A comparison with NaN is false: the box as computed is then kept.
  if (result.getXMin() > result.getXMax() || result.getYMin() > result.getYMax() || result.getZMin() > result.getZMax())
    result = BoundingBox3d<T>();
}

template <class T>
void merge(const BoundingBox3d<T>& a, const BoundingBox3d<T>& b, BoundingBox3d<T>& result) {
  result.setCoords(lower(a.getMinCornerPt(), b.getMinCornerPt()), upper(a.getMaxCornerPt(), b.getMaxCornerPt()));
}

#define ORMIX_GEOMETRY_INSTANTIATE_BOX(T)                                                                             \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const BoundingBox3d<T>&);                       \
  template ORMIX_GEOMETRY_API bool compare(const BoundingBox3d<T>&, const BoundingBox3d<T>&, std::common_type_t<T>);  \
  template ORMIX_GEOMETRY_API void intersection(const BoundingBox3d<T>&, const BoundingBox3d<T>&, BoundingBox3d<T>&); \
  template ORMIX_GEOMETRY_API void merge(const BoundingBox3d<T>&, const BoundingBox3d<T>&, BoundingBox3d<T>&);
ORMIX_GEOMETRY_INSTANTIATE_BOX(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_BOX(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_BOX(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_BOX(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_BOX

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY3D_TEMPLATE_LEVELS(, BoundingBox3d)
