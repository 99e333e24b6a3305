#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/TriMesh3d.h>
#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Index/IndexBox.h>

#include <array>
#include <cmath>
#include <cstddef>

/// \file
/// The triangles of a mesh as what trees and exact predicates take; not installed.

namespace ormix::geom::detail {

template <class T>
SpatialPoint spatialPoint(const Point3dData<T>& point) {
  return toSpatialPoint(point.getX(), point.getY(), point.getZ());
}

template <class T>
std::array<SpatialPoint, 3> spatialCorners(const TriMesh3d<T>& mesh, std::size_t triangleIdx) {
  const IndexTriangle corners = mesh.getTriangleVertexIndices(triangleIdx);
  return {spatialPoint(mesh.getVertex(corners[0])), spatialPoint(mesh.getVertex(corners[1])),
          spatialPoint(mesh.getVertex(corners[2]))};
}

/// The box of a triangle; empty where a corner is not finite.
template <class T>
ormix::detail::IndexBox<3> triangleBox(const TriMesh3d<T>& mesh, std::size_t triangleIdx) {
  ormix::detail::IndexBox<3> box;
  omReal64 rest = 0;
  for (const SpatialPoint& p : spatialCorners(mesh, triangleIdx)) {
    box.add(ormix::detail::IndexPoint<3>{p.x, p.y, p.z});
    rest += p.x * 0 + p.y * 0 + p.z * 0;
  }
  return rest == 0 ? box : ormix::detail::IndexBox<3>();
}

}  // namespace ormix::geom::detail
