#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Entity2d.ipp>

#include <algorithm>
#include <ostream>

namespace ormix::geom {

template <class T>
T BoundingBox2d<T>::getArea() const {
  if constexpr (std::is_integral_v<T>) {
    const auto width = static_cast<omUInt32>(getXMax()) - static_cast<omUInt32>(getXMin());
    const auto height = static_cast<omUInt32>(getYMax()) - static_cast<omUInt32>(getYMin());
    return static_cast<T>(width * height);
  } else {
    return (getXMax() - getXMin()) * (getYMax() - getYMin());
  }
}

template <class T>
std::ostream& operator<<(std::ostream& stream, const BoundingBox2d<T>& box) {
  return stream << "[min=" << box.getMinCornerPt() << ", max=" << box.getMaxCornerPt() << ']';
}

template <class T>
bool compare(const BoundingBox2d<T>& a, const BoundingBox2d<T>& b, std::common_type_t<T> tolerance) {
  return compare(a.getMinCornerPt(), b.getMinCornerPt(), tolerance) &&
         compare(a.getMaxCornerPt(), b.getMaxCornerPt(), tolerance);
}

template <class T>
void intersection(const BoundingBox2d<T>& a, const BoundingBox2d<T>& b, BoundingBox2d<T>& result) {
  result.setCoords(std::max(a.getXMin(), b.getXMin()), std::max(a.getYMin(), b.getYMin()),
                   std::min(a.getXMax(), b.getXMax()), std::min(a.getYMax(), b.getYMax()));
  // These comparisons are false for a NaN coordinate, which leaves the computed box (intended).
  if (result.getXMin() > result.getXMax() || result.getYMin() > result.getYMax()) result.setCoords(0, 0, 0, 0);
}

template <class T>
void merge(const BoundingBox2d<T>& a, const BoundingBox2d<T>& b, BoundingBox2d<T>& result) {
  result.setCoords(std::min(a.getXMin(), b.getXMin()), std::min(a.getYMin(), b.getYMin()),
                   std::max(a.getXMax(), b.getXMax()), std::max(a.getYMax(), b.getYMax()));
}

#define ORMIX_GEOMETRY_INSTANTIATE_BOX(T)                                                                             \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const BoundingBox2d<T>&);                       \
  template ORMIX_GEOMETRY_API bool compare(const BoundingBox2d<T>&, const BoundingBox2d<T>&, std::common_type_t<T>);  \
  template ORMIX_GEOMETRY_API void intersection(const BoundingBox2d<T>&, const BoundingBox2d<T>&, BoundingBox2d<T>&); \
  template ORMIX_GEOMETRY_API void merge(const BoundingBox2d<T>&, const BoundingBox2d<T>&, BoundingBox2d<T>&);
ORMIX_GEOMETRY_INSTANTIATE_BOX(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_BOX(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_BOX(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_BOX(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_BOX

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(, BoundingBox2d)
