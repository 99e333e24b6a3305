#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/Mesh3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/TriMesh3d.h>
#include <ORMIXGeometry/Entity/3d/PointCloud/PointCloud3d.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <vector>

namespace ormix::geom {

/// Replaces a mesh by the boundary of the convex hull of points: closed, with triangles that are counter-clockwise as
/// seen from outside.
///
/// The vertices are the extreme points of the hull, each once, in the order in which they are given. No vertex lies
/// inside a face or an edge. How a face with more than three vertices is divided into triangles is unspecified. The
/// hull is exact: no point is outside, not even by rounding, see convexHull3d(), which also has the complexity. The
/// role of the mesh is kept.
///
/// Fails, with the mesh unchanged, when a coordinate is NaN or infinite and when all points lie in one plane; the
/// message names the point, or how many points there are and what they span.
///
/// \param points may be the vertices of `mesh` itself
template <class T>
BoolResult quickHull(const std::vector<Point3dData<T>>& points, Mesh3d<T>& mesh);

/// The convex hull of the points of a cloud.
template <class T>
BoolResult quickHull(const PointCloud3d<T>& cloud, Mesh3d<T>& mesh) {
  return quickHull(cloud.getCollection(), mesh);
}

/// The convex hull of all vertices of a mesh, used or not. What it views may be the result itself.
template <class T>
BoolResult quickHull(const TriMesh3d<T>& mesh, Mesh3d<T>& hull);
template <class Mesh, class T, class View = TriMesh3dOf<Mesh>>
BoolResult quickHull(const Mesh& mesh, Mesh3d<T>& hull) {
  return quickHull(View(mesh), hull);
}

}  // namespace ormix::geom
