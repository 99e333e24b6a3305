#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Measure/3d/TriMeshMeasures.h>
#include <ORMIXGeometry/Measure/3d/VolumeMsr3d.h>
#include <ORMIXGeometry/Measure/MeasureParts.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/Ellipsoid.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.ipp>

#include <cmath>
#include <functional>

ORMIX_GEOMETRY_MEASURE_LEVELS(, VolumeMsr3d, BaseTypedGeometryMeasure3d<omReal64>)

namespace ormix::geom {

namespace {
omReal64 volumeOf(const Vector3d&) { return 0; }

template <class T>
omReal64 volumeOf(const Point3d<T>&) {
  return 0;
}

template <class T>
omReal64 volumeOf(const BoundingBox3d<T>& box) {
  const omReal64 dx = omReal64(box.getXMax()) - omReal64(box.getXMin());
  const omReal64 dy = omReal64(box.getYMax()) - omReal64(box.getYMin());
  const omReal64 dz = omReal64(box.getZMax()) - omReal64(box.getZMin());
  return dx * dy * dz;
}

template <class T>
omReal64 volumeOf(const Sphere3d<T>& sphere) {
  return sphere.volume();
}

template <class T>
omReal64 volumeOf(const Ellipsoid3d<T>& ellipsoid) {
  return ellipsoid.volume();
}

template <class T>
omReal64 volumeOf(const Cube3d<T>& cube) {
  const omReal64 edge = 2 * omReal64(cube.getHalfLength());
  return edge * edge * edge;
}

template <class T>
omReal64 volumeOf(const Cuboid3d<T>& cuboid) {
  return (2 * omReal64(cuboid.getHalfLength())) * (2 * omReal64(cuboid.getHalfWidth())) *
         (2 * omReal64(cuboid.getHalfHeight()));
}

template <class T>
omReal64 volumeOf(const Triangle3d<T>&) {
  return 0;
}

template <class T>
omReal64 volumeOf(const Mesh3d<T>& mesh) {
  return volume(mesh);
}

template <class T>
omReal64 volumeOf(const Cylinder3d<T>& cylinder) {
  return cylinder.volume();
}

template <class T>
omReal64 volumeOf(const Cone3d<T>& cone) {
  return cone.volume();
}

template <class T>
omReal64 volumeOf(const Torus3d<T>& torus) {
  return torus.volume();
}

}  // namespace

omReal64 VolumeMsr3d::measure(const BaseGeometryEntity3d& entity) {
  return measureOrThrow<VolumeMsr3d>(entity, __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

template <class Measured,
          std::enable_if_t<std::conjunction_v<std::is_class<Measured>, VolumeMsr3d::Supports<Measured>>, int>>
bool VolumeMsr3d::process(const Measured& entity, omReal64& value) const {
  const auto simple = [](const auto& part) { return volumeOf(part); };
  return detail::measureParts(entity, getHoleMsrPolicy(), value, simple, std::minus<>());
}

namespace {
[[gnu::used]] constexpr auto s_instances = detail::processOfAll<VolumeMsr3d>(SpatialEntityList());
}  // namespace

}  // namespace ormix::geom
