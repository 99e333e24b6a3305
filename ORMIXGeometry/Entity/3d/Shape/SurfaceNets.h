#pragma once

#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/RowIntersections3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelConnectivity.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstddef>
#include <vector>

namespace ormix::geom {

/// Steps of surfaceNets() after which the stairs of the voxels have mostly gone.
constexpr std::size_t s_nbNetSteps = 4;

/// Smooth boundaries of voxels: the meshes of voxelSurfaces(), with the same triangles, closed and manifold as these,
/// of which each vertex is moved to the mean of its neighbours along the edges of the faces (Gibson1998), and in
/// further steps half of the way to it. The first step alone puts a vertex at the mean of the centres of its faces.
///
/// A vertex stays within half a voxel of its place on the faces. So does, by interpolation, each point of a triangle of
/// the point of the same triangle there: both surfaces are everywhere within half a voxel of each other, up to the
/// rounding of T. For T in omReal32 and omReal64. Deterministic; linear in the faces, times the steps.
/// \param nbSteps 0 for the faces themselves
/// \throw as voxelSurfaces()
template <class T>
std::vector<boost::shared_ptr<MeshWithHoles3d<T>>> surfaceNets(const RowIntersections3d& voxels,
                                                               eVoxelConnectivity connectivity,
                                                               std::size_t nbSteps = s_nbNetSteps);

}  // namespace ormix::geom
