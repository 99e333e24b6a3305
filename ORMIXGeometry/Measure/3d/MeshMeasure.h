#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXMath/Shape/TriangleMesh.h>

/// \file
/// Access of the measures to the triangles of a mesh; not installed.

namespace ormix::geom::detail {

/// The triangles of the mesh, not copied: valid until the mesh is changed.
template <class T>
TriangleMeshView<T> triangleView(const Mesh3d<T>& mesh) {
  return {coordinates(mesh.getVertexColl()), mesh.getVertexIndexColl().data(), mesh.getNbTriangles()};
}

}  // namespace ormix::geom::detail
