#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/TriMesh3d.h>

#include <cmath>

/// \file
/// Area and volume of meshes of triangles that are no entities, with the bits that `AreaMsr3d` and `VolumeMsr3d` give
/// for a `Mesh3d` of the same triangles. Infinite and NaN coordinates give what the arithmetic gives. Indices must be
/// valid, see `checkIndices`. O(triangles); nothing is allocated.

namespace ormix::geom {

/// The sum of the areas of the triangles, see meshArea().
template <class T>
omReal64 area(const TriMesh3d<T>& mesh) {
  return meshArea<T>(mesh);
}

/// The volume within a closed mesh of either orientation, positive, see meshSignedVolume(). Without meaning for other
/// meshes.
template <class T>
omReal64 volume(const TriMesh3d<T>& mesh) {
  return std::abs(meshSignedVolume<T>(mesh));
}

/// The same of each class of meshes.
/// @{
template <class Mesh, class View = TriMesh3dOf<Mesh>>
omReal64 area(const Mesh& mesh) {
  return area(View(mesh));
}
template <class Mesh, class View = TriMesh3dOf<Mesh>>
omReal64 volume(const Mesh& mesh) {
  return volume(View(mesh));
}
/// @}

}  // namespace ormix::geom
