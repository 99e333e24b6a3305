#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXMath/Shape/TriangleMesh.h>

#include <vector>

/// \file
/// What the spatial measures share; not installed.

namespace ormix::geom {

/// What `sum` makes of the mesh's triangles, given to it as a `TriangleMeshView<T>`. The view lies on the half-edges
/// themselves, unless they do not stand in the order of the triangles; then their vertices are gathered.
template <class T, class Sum>
auto overTriangles(const Mesh3d<T>& mesh, Sum sum) {
  const std::size_t nbTriangles = mesh.getNbTriangles();
  const T* vertices = coordinates(mesh.getVertexColl());
  if (nbTriangles == 0 || mesh.getTopology().isSequential()) {
    constexpr std::size_t stride = sizeof(HalfEdge) / sizeof(omUInt32);
    const omUInt32* corners = nbTriangles == 0 ? nullptr : &mesh.getHalfEdgeColl().front().startVertexIdx;
    return sum(TriangleMeshView<T>{vertices, corners, nbTriangles, stride});
  }
  std::vector<omUInt32> corners;
  corners.reserve(3 * nbTriangles);
  visitTriangleIndices(mesh.getTopology(), [&corners](omUInt32 i0, omUInt32 i1, omUInt32 i2) {
    for (const omUInt32 index : {i0, i1, i2}) corners.push_back(index);
  });
  return sum(TriangleMeshView<T>{vertices, corners.data(), nbTriangles});
}

}  // namespace ormix::geom
