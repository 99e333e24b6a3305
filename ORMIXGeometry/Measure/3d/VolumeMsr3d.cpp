#include <ORMIXGeometry/Entity/3d/BoundingBox/BoundingBox3d.h>
#include <ORMIXGeometry/Entity/3d/Cube/Cube3d.h>
#include <ORMIXGeometry/Entity/3d/Cuboid/Cuboid3d.h>
#include <ORMIXGeometry/Entity/3d/Ellipsoid/Ellipsoid3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/Shape3d.h>
#include <ORMIXGeometry/Entity/3d/Sphere/Sphere3d.h>
#include <ORMIXGeometry/Entity/3d/Triangle/Triangle3d.h>
#include <ORMIXGeometry/Entity/3d/Vector/Vector3d.h>
#include <ORMIXGeometry/Measure/3d/MeshMeasure.h>
#include <ORMIXGeometry/Measure/3d/VolumeMsr3d.h>
#include <ORMIXGeometry/Measure/HoleTreeMeasure.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/Ellipsoid.h>
#include <ORMIXGeometry/Measure/GeometryMeasure.ipp>

#include <cmath>
#include <functional>

namespace ormix {
template class VersionedLevel<geom::VolumeMsr3d, geom::BaseTypedGeometryMeasure3d<omReal64>>;
template class RegisteredObject<geom::VolumeMsr3d, geom::BaseTypedGeometryMeasure3d<omReal64>>;
}  // namespace ormix

namespace ormix::geom {

template class GeometryMeasure<VolumeMsr3d, BaseTypedGeometryMeasure3d<omReal64>>;

namespace {
const DynamicRegistrator<VolumeMsr3d> g_classRegistrator;
}  // namespace

omReal64 VolumeMsr3d::measure(const BaseGeometryEntity3d& entity) {
  return measureOrThrow<VolumeMsr3d>(entity, toString(eM3DT_Volume), toString(entity.getEntity3dType()),
                                     __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

bool VolumeMsr3d::process(const Vector3d&, omReal64& value) const {
  value = 0;
  return true;
}

template <class T>
bool VolumeMsr3d::process(const Point3d<T>&, omReal64& value) const {
  value = 0;
  return true;
}

template <class T>
bool VolumeMsr3d::process(const BoundingBox3d<T>& box, omReal64& value) const {
  const omReal64 dx = omReal64(box.getXMax()) - omReal64(box.getXMin());
  const omReal64 dy = omReal64(box.getYMax()) - omReal64(box.getYMin());
  const omReal64 dz = omReal64(box.getZMax()) - omReal64(box.getZMin());
  value = dx * dy * dz;
  return true;
}

template <class T>
bool VolumeMsr3d::process(const Sphere3d<T>& sphere, omReal64& value) const {
  const omReal64 radius = omReal64(sphere.getRadius());
  value = s_pi * radius * radius * radius * 4 / 3;
  return true;
}

template <class T>
bool VolumeMsr3d::process(const Ellipsoid3d<T>& ellipsoid, omReal64& value) const {
  value = ellipsoidVolume(omReal64(ellipsoid.getMajorRadius()), omReal64(ellipsoid.getMediumRadius()),
                          omReal64(ellipsoid.getMinorRadius()));
  return true;
}

template <class T>
bool VolumeMsr3d::process(const Cube3d<T>& cube, omReal64& value) const {
  const omReal64 edge = 2 * omReal64(cube.getHalfLength());
  value = edge * edge * edge;
  return true;
}

template <class T>
bool VolumeMsr3d::process(const Cuboid3d<T>& cuboid, omReal64& value) const {
  value = (2 * omReal64(cuboid.getHalfLength())) * (2 * omReal64(cuboid.getHalfWidth())) *
          (2 * omReal64(cuboid.getHalfHeight()));
  return true;
}

template <class T>
bool VolumeMsr3d::process(const Triangle3d<T>&, omReal64& value) const {
  value = 0;
  return true;
}

template <class T>
bool VolumeMsr3d::process(const Mesh3d<T>& mesh, omReal64& value) const {
  value =
      std::abs(overTriangles(mesh, [](const TriangleMeshView<T>& triangles) { return meshSignedVolume(triangles); }));
  return true;
}

template <class T>
bool VolumeMsr3d::process(const MeshWithHoles3d<T>& mesh, omReal64& value) const {
  const auto measureExterior = [this](const MeshWithHoles3d<T>& node, omReal64& result) {
    return process(node.getExteriorMesh(), result);
  };
  return measureHoleTree(mesh, getHoleMsrPolicy(), value, measureExterior, std::minus<>());
}

bool VolumeMsr3d::process(const Shape3d& shape, omReal64& value) const { return measureMeshes(*this, shape, value); }

#define ORMIX_GEOMETRY_INSTANTIATE_PROCESS(T)                                   \
  template bool VolumeMsr3d::process(const Point3d<T>&, omReal64&) const;       \
  template bool VolumeMsr3d::process(const BoundingBox3d<T>&, omReal64&) const; \
  template bool VolumeMsr3d::process(const Sphere3d<T>&, omReal64&) const;      \
  template bool VolumeMsr3d::process(const Ellipsoid3d<T>&, omReal64&) const;   \
  template bool VolumeMsr3d::process(const Cube3d<T>&, omReal64&) const;        \
  template bool VolumeMsr3d::process(const Cuboid3d<T>&, omReal64&) const;      \
  template bool VolumeMsr3d::process(const Triangle3d<T>&, omReal64&) const;    \
  template bool VolumeMsr3d::process(const Mesh3d<T>&, omReal64&) const;        \
  template bool VolumeMsr3d::process(const MeshWithHoles3d<T>&, omReal64&) const;
ORMIX_GEOMETRY_INSTANTIATE_PROCESS(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_PROCESS(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_PROCESS(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_PROCESS(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_PROCESS

}  // namespace ormix::geom
