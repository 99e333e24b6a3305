#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Entity/3d/PointCloud/PointCloud3d.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <vector>

namespace ormix::geom {

/// Makes a mesh the boundary of the convex hull of points: closed, its triangles counter-clockwise seen from outside.
///
/// The vertices are the extreme points, each once, in the order in which they are given (which of several equal points
/// stands for all is not seen); none lies inside a face or an edge, and flat faces are cut into triangles in any way.
/// No point is outside, not even by rounding, see convexHull3d(). The mesh's role stays as it was.
///
/// Fails, the mesh untouched, when a coordinate is NaN or infinite and when no four points are off one plane; the
/// message says which point, or how many there are and what they span.
///
/// \param points may be the vertices of `mesh` itself
template <class T>
BoolResult quickHull(const std::vector<Point3dData<T>>& points, Mesh3d<T>& mesh);

/// The same of a cloud's points.
template <class T>
BoolResult quickHull(const PointCloud3d<T>& cloud, Mesh3d<T>& mesh) {
  return quickHull(cloud.getCollection(), mesh);
}

}  // namespace ormix::geom
