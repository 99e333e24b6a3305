#pragma once

#include <ORMIXGeometry/Entity/3d/BoundingBox/BoundingBox3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Tools/Stl/StlFacets.h>
#include <ORMIXGeometry/Transform/3d/EnvelopeTransform3d.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <algorithm>
#include <array>
#include <functional>
#include <iosfwd>
#include <limits>
#include <string>
#include <vector>

// Not installed.
namespace ormix::geom::detail {

/// A failure with message eEM_MeshFileNotWritten, followed by the reason where one is given.
BoolResult meshFileNotWritten(const std::string& path, const std::string& why = "");

/// Creates a file whose contents `write` writes to a stream. Fails with message eEM_MeshFileNotWritten when not every
/// byte reaches the disk; an existing file is replaced only by a complete one.
BoolResult saveStl(const std::string& path, const std::function<void(std::ostream&)>& write);

/// The meshes that are written to one file, in order.
template <class T>
using StlMeshes = std::vector<const Mesh3d<T>*>;

/// The least coordinates of the vertices of a mesh that are numbers, no greater than the given ones: vertex by vertex,
/// or, where a mesh has one, of its envelope.
/// @{
template <class T>
void includeLowest(const TriMesh3d<T>& mesh, std::array<T, 3>& lowest) {
  for (std::size_t idx = 0; idx < mesh.getNbVertices(); ++idx) {
    const Point3dData<T>& vertex = mesh.getVertex(idx);
    if (vertex.getX() < lowest[0]) lowest[0] = vertex.getX();
    if (vertex.getY() < lowest[1]) lowest[1] = vertex.getY();
    if (vertex.getZ() < lowest[2]) lowest[2] = vertex.getZ();
  }
}
template <class T>
void includeLowest(const FaceVertexTriMesh3d<T>& mesh, std::array<T, 3>& lowest) {
  includeLowest(TriMesh3d<T>(mesh), lowest);
}
template <class T>
void includeLowest(const Mesh3d<T>& mesh, std::array<T, 3>& lowest) {
  BoundingBox3d<T> box;
  if (!EnvelopeTransform3d().derive(mesh, box)) return includeLowest(TriMesh3d<T>(mesh), lowest);
  lowest = {std::min(lowest[0], box.getXMin()), std::min(lowest[1], box.getYMin()), std::min(lowest[2], box.getZMin())};
}
/// @}

/// The translation of the meshes to the positive octant, see `saveToStLAscii`; zero when there are no vertices. NaN
/// coordinates are ignored.
template <class T, class Mesh>
StlOffsets stlOffsets(const std::vector<const Mesh*>& meshes) {
  std::array<T, 3> lowest;
  lowest.fill(std::numeric_limits<T>::max());
  for (const Mesh* mesh : meshes) includeLowest(*mesh, lowest);
  const auto offset = [](T minimum) { return minimum <= 0 ? 1.0f - static_cast<omReal32>(minimum) : 0.0f; };
  return {offset(lowest[0]), offset(lowest[1]), offset(lowest[2])};
}

}  // namespace ormix::geom::detail
