#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/TriMesh3d.h>
#include <ORMIXMath/MeshSimplification/MeshSimplificationOptions.h>

/// \file
/// How far samples of one surface are from another; not installed.

namespace ormix::geom::detail {

/// The distances of the vertices in use, the midpoints of edges and the centroids of triangles of one mesh from the
/// nearest points of the triangles of another. Zeros where one of them has no triangles. O(n log n).
template <class T>
SampledDistance sampledDistance(const TriMesh3d<T>& from, const TriMesh3d<T>& to);

}  // namespace ormix::geom::detail
