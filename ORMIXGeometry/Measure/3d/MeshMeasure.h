#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXMath/Shape/TriangleMesh.h>

/// \file
/// What the spatial measures share; not installed.

namespace ormix::geom::detail {

/// The mesh's triangles, as long as it stays as it is.
template <class T>
TriangleMeshView<T> triangleView(const Mesh3d<T>& mesh) {
  return {coordinates(mesh.getVertexColl()), mesh.getVertexIndexColl().data(), mesh.getNbTriangles()};
}

}  // namespace ormix::geom::detail
