#pragma once

#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>

#include <algorithm>
#include <array>
#include <cstddef>

/// \file
/// The stored points of spatial entities as contiguous coordinates, and the corners of boxes; not installed.

namespace ormix::geom::detail {

/// Calls `visit(xyz, nbPoints)` for each run of contiguous points that an entity stores: of boxes their two corners, of
/// trees the vertices of every mesh, of holes too, in depth-first order.
/// \return false, the visits incomplete, where a hole or a boundary is null
/// @{
template <class T, class Visit>
bool visitRuns(const Point3d<T>& point, Visit visit) {
  const T xyz[] = {point.getX(), point.getY(), point.getZ()};
  visit(xyz, 1);
  return true;
}
template <class T, class Visit, std::size_t n>
bool visitPoints(const std::array<Point3dData<T>, n>& points, Visit visit) {
  visit(reinterpret_cast<const T*>(points.data()), n);
  return true;
}
template <class T, class Visit>
bool visitRuns(const Segment3d<T>& segment, Visit visit) {
  return visitPoints(std::array{segment.getPoint0(), segment.getPoint1()}, visit);
}
template <class T, class Visit>
bool visitRuns(const Triangle3d<T>& triangle, Visit visit) {
  return visitPoints(std::array{triangle.getPoint0(), triangle.getPoint1(), triangle.getPoint2()}, visit);
}
template <class T, class Visit>
bool visitRuns(const BoundingBox3d<T>& box, Visit visit) {
  return visitPoints(std::array{box.getMinCornerPt(), box.getMaxCornerPt()}, visit);
}
template <class T, class Visit>
bool visitRuns(const PointCloud3d<T>& cloud, Visit visit) {
  visit(coordinates(cloud.getCollection()), cloud.getCollection().size());
  return true;
}
template <class T, class Visit>
bool visitRuns(const Mesh3d<T>& mesh, Visit visit) {
  visit(coordinates(mesh.getVertexColl()), mesh.getVertexColl().size());
  return true;
}
template <class T, class Visit>
bool visitRuns(const MeshWithHoles3d<T>& mesh, Visit visit) {
  return visitNodes(mesh, [&visit](const MeshWithHoles3d<T>& node) {
    visitRuns(node.getExteriorMesh(), visit);
    return std::all_of(node.beginHole(), node.endHole(), [](const auto& hole) { return hole != nullptr; });
  });
}
template <class Visit>
bool visitRuns(const Shape3d& shape, Visit visit) {
  for (const auto& mesh : shape.getMeshWithHolesColl())
    if (!mesh || !visitRuns(*mesh, visit)) return false;
  return true;
}
/// @}

/// Calls `visit(x0, x1, y, z)` for each run of voxels of a shape, in order: they fill [x0, x1] × [y, y + 1] × [z, z +
/// 1].
template <class Visit>
void visitVoxelRuns(const Shape3d& shape, Visit visit) {
  omUInt64 z = shape.getRowIntersections().zOffset;
  for (const RowIntersections& slice : shape.getRowIntersections().rowIntersectionsColl) {
    for (omUInt64 y = slice.getStartRow(); y < slice.getEndRow(); ++y)
      for (const PixelRun& run : slice.getRow(y))
        visit(omReal64(run.begin), omReal64(run.end), omReal64(y), omReal64(z));
    ++z;
  }
}

/// The corners of a cube or a cuboid.
template <class Solid>
std::array<Point3dData<omReal64>, 8> cornersOf(const Solid& solid) {
  return {solid.topLeftFrontCorner(),     solid.topRightFrontCorner(),  solid.bottomLeftFrontCorner(),
          solid.bottomRightFrontCorner(), solid.topLeftBackCorner(),    solid.topRightBackCorner(),
          solid.bottomLeftBackCorner(),   solid.bottomRightBackCorner()};
}

}  // namespace ormix::geom::detail
