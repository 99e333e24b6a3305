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
#include <ORMIXGeometry/Measure/3d/AreaMsr3d.h>
#include <ORMIXGeometry/Measure/3d/MeshMeasure.h>
#include <ORMIXGeometry/Measure/HoleTreeMeasure.h>
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
}  // namespace

omReal64 AreaMsr3d::measure(const BaseGeometryEntity3d& entity) {
  return measureOrThrow<AreaMsr3d>(entity, toString(eM3DT_Area), toString(entity.getEntity3dType()),
                                   __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

bool AreaMsr3d::process(const Vector3d&, omReal64& value) const {
  value = 0;
  return true;
}

template <class T>
bool AreaMsr3d::process(const Point3d<T>&, omReal64& value) const {
  value = 0;
  return true;
}

template <class T>
bool AreaMsr3d::process(const BoundingBox3d<T>& box, omReal64& value) const {
  const omReal64 dx = omReal64(box.getXMax()) - omReal64(box.getXMin());
  const omReal64 dy = omReal64(box.getYMax()) - omReal64(box.getYMin());
  const omReal64 dz = omReal64(box.getZMax()) - omReal64(box.getZMin());
  value = 2 * (((dy * dx) + (dy * dz)) + (dz * dx));
  return true;
}

template <class T>
bool AreaMsr3d::process(const Sphere3d<T>& sphere, omReal64& value) const {
  const omReal64 radius = omReal64(sphere.getRadius());
  value = 4 * s_pi * radius * radius;
  return true;
}

template <class T>
bool AreaMsr3d::process(const Ellipsoid3d<T>& ellipsoid, omReal64& value) const {
  value = ellipsoidArea(omReal64(ellipsoid.getMajorRadius()), omReal64(ellipsoid.getMediumRadius()),
                        omReal64(ellipsoid.getMinorRadius()));
  return true;
}

template <class T>
bool AreaMsr3d::process(const Cube3d<T>& cube, omReal64& value) const {
  const omReal64 edge = 2 * omReal64(cube.getHalfLength());
  value = 6 * edge * edge;
  return true;
}

template <class T>
bool AreaMsr3d::process(const Cuboid3d<T>& cuboid, omReal64& value) const {
  const omReal64 length = 2 * omReal64(cuboid.getHalfLength());
  const omReal64 width = 2 * omReal64(cuboid.getHalfWidth());
  const omReal64 height = 2 * omReal64(cuboid.getHalfHeight());
  value = 2 * (length * width + length * height + width * height);
  return true;
}

template <class T>
bool AreaMsr3d::process(const Triangle3d<T>& triangle, omReal64& value) const {
  value = triangle.area();
  return true;
}

template <class T>
bool AreaMsr3d::process(const Mesh3d<T>& mesh, omReal64& value) const {
  value = overTriangles(mesh, [](const TriangleMeshView<T>& triangles) { return meshArea(triangles); });
  return true;
}

template <class T>
bool AreaMsr3d::process(const MeshWithHoles3d<T>& mesh, omReal64& value) const {
  const auto measureExterior = [this](const MeshWithHoles3d<T>& node, omReal64& result) {
    return process(node.getExteriorMesh(), result);
  };
  return measureHoleTree(mesh, getHoleMsrPolicy(), value, measureExterior, std::plus<>());
}

bool AreaMsr3d::process(const Shape3d& shape, omReal64& value) const { return measureMeshes(*this, shape, value); }

#define ORMIX_GEOMETRY_INSTANTIATE_PROCESS(T)                                 \
  template bool AreaMsr3d::process(const Point3d<T>&, omReal64&) const;       \
  template bool AreaMsr3d::process(const BoundingBox3d<T>&, omReal64&) const; \
  template bool AreaMsr3d::process(const Sphere3d<T>&, omReal64&) const;      \
  template bool AreaMsr3d::process(const Ellipsoid3d<T>&, omReal64&) const;   \
  template bool AreaMsr3d::process(const Cube3d<T>&, omReal64&) const;        \
  template bool AreaMsr3d::process(const Cuboid3d<T>&, omReal64&) const;      \
  template bool AreaMsr3d::process(const Triangle3d<T>&, omReal64&) const;    \
  template bool AreaMsr3d::process(const Mesh3d<T>&, omReal64&) const;        \
  template bool AreaMsr3d::process(const MeshWithHoles3d<T>&, omReal64&) const;
ORMIX_GEOMETRY_INSTANTIATE_PROCESS(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_PROCESS(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_PROCESS(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_PROCESS(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_PROCESS

}  // namespace ormix::geom
