#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexAdjTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>

/// \file
/// Conversions between the meshes of triangles. Vertices and triangles keep their order and their indices, and a
/// triangle its first vertex. Linear.

namespace ormix::geom {

/// Replaces a mesh of half-edges by the triangles of a mesh, see `Mesh3d::build`; the role is kept.
/// \param mesh what it views may be `result` itself
/// \param policy what happens to a triangle with equal vertices or with an edge that an earlier triangle has in the
///        same direction
/// \param ownerColl if not null, set to the indices of the triangles that got vertices of their own, ascending
/// \return on failure, for invalid indices and by the policy, `result` stays unchanged
template <class T>
ORMIX_GEOMETRY_API BoolResult toMesh3d(const TriMesh3d<T>& mesh, Mesh3d<T>& result,
                                       eNonManifoldPolicy policy = eNMP_OwnVertices,
                                       typename Mesh3d<T>::IndexColl* ownerColl = nullptr);
/// The same as a new mesh.
/// \throw ORMIXGeometryException, logged, instead of a failure
template <class T>
ORMIX_GEOMETRY_API Mesh3d<T> toMesh3d(const TriMesh3d<T>& mesh, eNonManifoldPolicy policy = eNMP_OwnVertices);

/// A copy of the vertices and the index triples.
/// \throw ORMIXGeometryException, logged, for invalid indices
template <class T>
ORMIX_GEOMETRY_API FaceVertexTriMesh3d<T> toFaceVertexTriMesh3d(const TriMesh3d<T>& mesh);
/// The same with the neighbours of the triangles.
template <class T>
ORMIX_GEOMETRY_API FaceVertexAdjTriMesh3d<T> toFaceVertexAdjTriMesh3d(const TriMesh3d<T>& mesh);

/// The same of each class of meshes.
/// @{
template <class Mesh, class T, class View = TriMesh3dOf<Mesh>>
BoolResult toMesh3d(const Mesh& mesh, Mesh3d<T>& result, eNonManifoldPolicy policy = eNMP_OwnVertices,
                    typename Mesh3d<T>::IndexColl* ownerColl = nullptr) {
  return toMesh3d(View(mesh), result, policy, ownerColl);
}
template <class Mesh, class View = TriMesh3dOf<Mesh>>
auto toMesh3d(const Mesh& mesh, eNonManifoldPolicy policy = eNMP_OwnVertices) {
  return toMesh3d(View(mesh), policy);
}
template <class Mesh, class View = TriMesh3dOf<Mesh>>
auto toFaceVertexTriMesh3d(const Mesh& mesh) {
  return toFaceVertexTriMesh3d(View(mesh));
}
template <class Mesh, class View = TriMesh3dOf<Mesh>>
auto toFaceVertexAdjTriMesh3d(const Mesh& mesh) {
  return toFaceVertexAdjTriMesh3d(View(mesh));
}
/// @}

}  // namespace ormix::geom
