#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXMath/Shape/TriangleMesh.h>

/// \file
/// What a closed mesh encloses, computed about the mesh itself and not about the origin of coordinates.

namespace ormix::geom {

/// The volume that `VolumeMsr3d` answers, as precise far from the origin as near it: a unit cube at 1e6 to 1e-9.
/// Signed: positive when the triangles turn counter-clockwise as seen from outside. A mesh that is open or oriented in
/// two ways gets a meaningless but finite number. O(triangles).
template <class T>
ORMIX_GEOMETRY_API omReal64 localVolume(const Mesh3d<T>& mesh);

/// Volume, centroid and the inertia tensor about it of the body of density 1 within a closed mesh, oriented either way.
/// \return false, the moments untouched, where the volume is zero or anything is not finite. O(triangles)
template <class T>
ORMIX_GEOMETRY_API bool moments(const Mesh3d<T>& mesh, MeshMoments& result);

}  // namespace ormix::geom
