#include <ORMIXGeometry/Entity/3d/Point/Point3dDataArchive.h>
#include <ORMIXGeometry/Entity/3d/Triangle/LightTriangle3d.h>
#include <ORMIXGeometry/Entity/ScalarInstances.h>

#include <ostream>

namespace ormix::geom {

template <class T>
std::ostream& operator<<(std::ostream& stream, const LightTriangle3d<T>& triangle) {
  return stream << "[pt0=" << triangle.getPoint0() << ", pt1=" << triangle.getPoint1()
                << ", pt2=" << triangle.getPoint2() << ']';
}

template <class T>
bool compare(const LightTriangle3d<T>& a, const LightTriangle3d<T>& b, std::common_type_t<T> tolerance) {
  return compare(a.getPoint0(), b.getPoint0(), tolerance) && compare(a.getPoint1(), b.getPoint1(), tolerance) &&
         compare(a.getPoint2(), b.getPoint2(), tolerance);
}

template <class T>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const LightTriangle3d<T>& triangle) {
  BoolResult result = archive.beginSection(key);
  if (result) result = writeItem(archive, "pt0", triangle.getPoint0());
  if (result) result = writeItem(archive, "pt1", triangle.getPoint1());
  if (result) result = writeItem(archive, "pt2", triangle.getPoint2());
  return result ? archive.endSection() : result;
}

template <class T>
BoolResult readItem(BaseIArchive& archive, std::string_view key, LightTriangle3d<T>& triangle) {
  Point3dData<T> pt0;
  Point3dData<T> pt1;
  Point3dData<T> pt2;
  BoolResult result = archive.beginSection(key);
  if (result) result = readItem(archive, "pt0", pt0);
  if (result) result = readItem(archive, "pt1", pt1);
  if (result) result = readItem(archive, "pt2", pt2);
  if (result) result = archive.endSection();
  if (result) triangle.setCoords(pt0, pt1, pt2);
  return result;
}

ORMIX_GEOMETRY_INSTANTIATE_PRINT(LightTriangle3d)

#define ORMIX_GEOMETRY_INSTANTIATE_TRIANGLE(T)                                                                  \
  template ORMIX_GEOMETRY_API bool compare(const LightTriangle3d<T>&, const LightTriangle3d<T>&,                \
                                           std::common_type_t<T>);                                              \
  template ORMIX_GEOMETRY_API BoolResult writeItem(BaseOArchive&, std::string_view, const LightTriangle3d<T>&); \
  template ORMIX_GEOMETRY_API BoolResult readItem(BaseIArchive&, std::string_view, LightTriangle3d<T>&);
ORMIX_GEOMETRY_INSTANTIATE_TRIANGLE(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_TRIANGLE(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_TRIANGLE(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_TRIANGLE(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_TRIANGLE

}  // namespace ormix::geom
