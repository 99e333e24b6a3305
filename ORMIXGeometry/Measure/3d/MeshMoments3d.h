#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/TriMesh3d.h>
#include <ORMIXMath/Shape/TriangleMesh.h>

/// \file
/// Volume, centroid and inertia of a closed mesh, computed relative to a point of the mesh and not to the origin of
/// coordinates, so that their precision does not depend on the distance from it.

namespace ormix::geom {

/// The signed volume of a closed mesh, positive when the triangles are counter-clockwise as seen from outside. Its
/// absolute value is that of `VolumeMsr3d`, but as precise far from the origin as near it: for a unit cube at a
/// distance of 1e6 the error is 1e-9. For a mesh that is open or inconsistently oriented the number is finite but
/// without meaning. O(triangles).
template <class T>
ORMIX_GEOMETRY_API omReal64 localVolume(const TriMesh3d<T>& mesh);

/// Volume, centroid and inertia tensor about the centroid of the body of density 1 within a closed mesh of either
/// orientation. O(triangles).
/// \return false, with `result` unchanged, when the volume is zero or a result is not finite
template <class T>
ORMIX_GEOMETRY_API bool moments(const TriMesh3d<T>& mesh, MeshMoments& result);

/// The same of each class of meshes.
/// @{
template <class Mesh, class View = TriMesh3dOf<Mesh>>
omReal64 localVolume(const Mesh& mesh) {
  return localVolume(View(mesh));
}
template <class Mesh, class View = TriMesh3dOf<Mesh>>
bool moments(const Mesh& mesh, MeshMoments& result) {
  return moments(View(mesh), result);
}
/// @}

}  // namespace ormix::geom
