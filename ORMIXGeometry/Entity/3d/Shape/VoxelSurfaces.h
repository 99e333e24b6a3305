#pragma once

#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/RowIntersections3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelConnectivity.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <vector>

namespace ormix::geom {

/// The exact boundaries of voxels, of which (x, y, z) is the cube [x, x + 1) × [y, y + 1) × [z, z + 1), as trees: a
/// root for each connected component that no other one encloses, its holes are the cavities, whose holes are the
/// components in these. For T in omReal32 and omReal64.
///
/// Each mesh is closed and consistently oriented, with the voxels inside: triangles are counter-clockwise as seen from
/// the background, so that the signed volumes of all meshes of a tree add up to its number of voxels, and that of a
/// hole is negative. Roles are eM3DT_Exterior and eM3DT_Interior. A face of a voxel is two triangles; voxelize() of the
/// meshes is `voxels`.
///
/// With eVC_6, voxels that touch along an edge or in a corner only are apart there, and the background is joined; with
/// eVC_26 the reverse: the boundary passes such an edge twice. It is a manifold in both cases, as each pass has its own
/// vertices, at the same positions, and where both have both ends in common, one of them has a further vertex in the
/// middle of the edge. In corners nothing is joined: what is connected in a corner only is one mesh of several closed
/// surfaces.
///
/// Components, and holes of a mesh, are in order of their first voxels. Linear in the rows, the runs and the faces, and
/// memory for these: no grid is made. No recursion.
/// \throw ORMIXGeometryException, logged, if a coordinate is above 2²⁴ for omReal32 or 2⁵³ for omReal64 (half of it where
/// an edge has a vertex in its middle), if there are 2³² - 1 runs or more, or too many triangles for a mesh
template <class T>
std::vector<boost::shared_ptr<MeshWithHoles3d<T>>> voxelSurfaces(const RowIntersections3d& voxels,
                                                                 eVoxelConnectivity connectivity);

}  // namespace ormix::geom
