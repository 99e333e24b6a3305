#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopology.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXGeometry/Entity/3d/Mesh/TriMesh3d.h>

#include <algorithm>

namespace ormix::geom {

template <class T>
BoolResult checkIndices(const TriMesh3d<T>& mesh) {
  if (mesh.getNbVertices() > MeshTopology::s_maxNbVertices) return detail::tooManyVertices();
  if (mesh.getNbTriangles() > MeshTopology::s_maxNbTriangles) return detail::tooManyTriangles();
  if (mesh.getNbTriangles() == 0) return {};
  const omUInt32* first = mesh.getIndices();
  const omUInt32* last = first + 3 * mesh.getNbTriangles();
  // A maximum is found by vectors; where the invalid index stands is asked only if there is one.
  omUInt32 greatest = 0;
  for (const omUInt32* index = first; index != last; ++index) greatest = std::max(greatest, *index);
  if (greatest < mesh.getNbVertices()) return {};
  const omUInt32* invalid =
      std::find_if(first, last, [&mesh](omUInt32 index) { return index >= mesh.getNbVertices(); });
  return detail::invalidCorner(static_cast<std::size_t>(invalid - first) / 3, *invalid, mesh.getNbVertices());
}

template ORMIX_GEOMETRY_API BoolResult checkIndices(const TriMesh3d<omInt32>&);
template ORMIX_GEOMETRY_API BoolResult checkIndices(const TriMesh3d<omUInt32>&);
template ORMIX_GEOMETRY_API BoolResult checkIndices(const TriMesh3d<omReal32>&);
template ORMIX_GEOMETRY_API BoolResult checkIndices(const TriMesh3d<omReal64>&);

}  // namespace ormix::geom
