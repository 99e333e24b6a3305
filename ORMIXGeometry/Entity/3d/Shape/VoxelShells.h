#pragma once

#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/RowIntersections3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelConnectivity.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <limits>
#include <vector>

/// \file
/// The faces between voxels and background as vertices and triangles; not installed.

namespace ormix::geom::detail {

/// The boundary between a component of voxels and one of the background. Vertices are corners of voxels, and where the
/// boundary passes an edge twice between the same two vertices, the middle of the edge.
template <class T>
struct VoxelShell {
  static constexpr std::size_t s_noParent = std::numeric_limits<std::size_t>::max();  ///< nothing is around it

  std::vector<Point3dData<T>> vertices;
  std::vector<omUInt32> indices;  ///< three a triangle, counter-clockwise as seen from the background
  std::size_t parent;             ///< index of the shell directly around this one
  bool isHole;                    ///< whether the background is inside
};

/// All boundaries: first those around components of voxels, in their order, then those of cavities in theirs. Linear in
/// the rows, the runs and the faces, memory for the faces.
/// \throw ORMIXGeometryException, logged, if T does not hold a coordinate exactly, there are 2³² - 1 runs or more, or
/// more triangles of one boundary than a mesh holds
template <class T>
std::vector<VoxelShell<T>> traceShells(const RowIntersections3d& voxels, eVoxelConnectivity connectivity);

/// The meshes of the boundaries as trees, see MeshWithHoles3d; the shells are used up.
template <class T>
std::vector<boost::shared_ptr<MeshWithHoles3d<T>>> makeMeshes(std::vector<VoxelShell<T>>& shells);

}  // namespace ormix::geom::detail
