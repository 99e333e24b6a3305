#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Measure/3d/AreaMsr3d.h>
#include <ORMIXGeometry/Measure/3d/TriMeshMeasures.h>
#include <ORMIXGeometry/Measure/MeasureParts.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/Ellipsoid.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.ipp>

#include <functional>

ORMIX_GEOMETRY_MEASURE_LEVELS(, AreaMsr3d, BaseTypedGeometryMeasure3d<omReal64>)

namespace ormix::geom {

namespace {
omReal64 areaOf(const Vector3d&) { return 0; }

template <class T>
omReal64 areaOf(const Point3d<T>&) {
  return 0;
}

template <class T>
omReal64 areaOf(const BoundingBox3d<T>& box) {
  const omReal64 dx = omReal64(box.getXMax()) - omReal64(box.getXMin());
  const omReal64 dy = omReal64(box.getYMax()) - omReal64(box.getYMin());
  const omReal64 dz = omReal64(box.getZMax()) - omReal64(box.getZMin());
  return 2 * (((dy * dx) + (dy * dz)) + (dz * dx));
}

template <class T>
omReal64 areaOf(const Sphere3d<T>& sphere) {
  return sphere.area();
}

template <class T>
omReal64 areaOf(const Ellipsoid3d<T>& ellipsoid) {
  return ellipsoid.area();
}

template <class T>
omReal64 areaOf(const Cube3d<T>& cube) {
  const omReal64 edge = 2 * omReal64(cube.getHalfLength());
  return 6 * edge * edge;
}

template <class T>
omReal64 areaOf(const Cuboid3d<T>& cuboid) {
  const omReal64 length = 2 * omReal64(cuboid.getHalfLength());
  const omReal64 width = 2 * omReal64(cuboid.getHalfWidth());
  const omReal64 height = 2 * omReal64(cuboid.getHalfHeight());
  return 2 * (length * width + length * height + width * height);
}

template <class T>
omReal64 areaOf(const Triangle3d<T>& triangle) {
  return triangle.area();
}

template <class T>
omReal64 areaOf(const Mesh3d<T>& mesh) {
  return area(mesh);
}

template <class T>
omReal64 areaOf(const Cylinder3d<T>& cylinder) {
  return cylinder.area();
}

template <class T>
omReal64 areaOf(const Cone3d<T>& cone) {
  return cone.area();
}

template <class T>
omReal64 areaOf(const Torus3d<T>& torus) {
  return torus.area();
}

}  // namespace

omReal64 AreaMsr3d::measure(const BaseGeometryEntity3d& entity) {
  return measureOrThrow<AreaMsr3d>(entity, __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

template <class Measured,
          std::enable_if_t<std::conjunction_v<std::is_class<Measured>, AreaMsr3d::Supports<Measured>>, int>>
bool AreaMsr3d::process(const Measured& entity, omReal64& value) const {
  const auto simple = [](const auto& part) { return areaOf(part); };
  return detail::measureParts(entity, getHoleMsrPolicy(), value, simple, std::plus<>());
}

namespace {
[[gnu::used]] constexpr auto s_instances = detail::processOfAll<AreaMsr3d>(SpatialEntityList());
}  // namespace

}  // namespace ormix::geom
