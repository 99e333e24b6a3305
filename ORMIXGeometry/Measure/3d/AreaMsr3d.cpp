#include <ORMIXGeometry/Measure/3d/AreaMsr3d.h>
#include <ORMIXGeometry/Measure/3d/MeasureInstances3d.h>
#include <ORMIXGeometry/Measure/3d/MeshMeasure.h>
#include <ORMIXGeometry/Measure/MeasureParts.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/Ellipsoid.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.ipp>

#include <functional>

namespace ormix {
template class VersionedLevel<geom::AreaMsr3d, geom::BaseTypedGeometryMeasure3d<omReal64>>;
template class RegisteredObject<geom::AreaMsr3d, geom::BaseTypedGeometryMeasure3d<omReal64>>;
}  // namespace ormix

namespace ormix::geom {

template class GeometryMeasure<AreaMsr3d, BaseTypedGeometryMeasure3d<omReal64>>;

namespace {
const DynamicRegistrator<AreaMsr3d> g_classRegistrator;

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
  const omReal64 radius = omReal64(sphere.getRadius());
  return 4 * s_pi * radius * radius;
}

template <class T>
omReal64 areaOf(const Ellipsoid3d<T>& ellipsoid) {
  return ellipsoidArea(omReal64(ellipsoid.getMajorRadius()), omReal64(ellipsoid.getMediumRadius()),
                       omReal64(ellipsoid.getMinorRadius()));
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
  return meshArea(triangleView(mesh));
}

}  // namespace

omReal64 AreaMsr3d::measure(const BaseGeometryEntity3d& entity) {
  return measureOrThrow<AreaMsr3d>(entity, toString(eM3DT_Area), toString(entity.getEntity3dType()),
                                   __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

template <class Measured, std::enable_if_t<isMeasured<Measured>, int>>
bool AreaMsr3d::process(const Measured& entity, omReal64& value) const {
  const auto simple = [](const auto& part) { return areaOf(part); };
  return measureParts(entity, getHoleMsrPolicy(), value, simple, std::plus<>());
}

ORMIX_GEOMETRY_INSTANTIATE_MEASURE3D(AreaMsr3d)

}  // namespace ormix::geom
