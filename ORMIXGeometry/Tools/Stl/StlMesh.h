#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Tools/Stl/StlMerge.h>
#include <ORMIXGeometry/Tools/Stl/StlTriangles.h>
#include <ORMIXUtil/Memory/LargePages.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <string>

// Not installed.
namespace ormix::geom::detail {

/// The vertices in the coordinate type of a mesh.
template <class T>
typename Mesh3d<T>::VertexColl verticesOf(const MergedCoords& merged) {
  typename Mesh3d<T>::VertexColl vertices;
  reserveLarge(vertices, merged.getNbVertices());
  for (std::size_t at = 0; at < merged.coordColl.size(); at += 3) {
    const omReal32* coords = &merged.coordColl[at];
    vertices.push_back(cast<T>(Point3dData<omReal32>(coords[0], coords[1], coords[2])));
  }
  return vertices;
}

/// Builds a mesh of triangles with merged vertices, see `StlLoad.h`; the indices are moved out of `merged`.
/// \param ownerColl set to the triangles that got vertices of their own
/// \return a failure when the vertices exceed the range of indices; the mesh is then unchanged
template <class T>
BoolResult buildMesh(MergedCoords& merged, Mesh3d<T>& mesh, MeshTopology::IndexColl& ownerColl) {
  return mesh.build(verticesOf<T>(merged), std::move(merged.indexColl), eNMP_OwnVertices, &ownerColl);
}

/// Logs at error level that the file cannot be read as a mesh, and why.
void logUnreadable(const std::string& path, const std::string& why);

/// ", at byte 5 (line 2)"; a line of 0 is left out.
std::string placeText(omUInt64 offset, omUInt64 line);

/// Why and where reading stopped: "it ends inside a triangle, at byte 5 (line 2)".
std::string stopText(const StlTriangles& triangles);

}  // namespace ormix::geom::detail
