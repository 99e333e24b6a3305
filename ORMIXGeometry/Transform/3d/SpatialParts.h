#pragma once

#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Transform/DerivedTransform.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

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

/// Whether the runs of an entity are one, which it stores.
template <class Entity>
inline constexpr bool s_isOneRun = false;
template <class T>
inline constexpr bool s_isOneRun<PointCloud3d<T>> = true;
template <class T>
inline constexpr bool s_isOneRun<Mesh3d<T>> = true;

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

/// \name Points whose convex hull is that of the entity.
/// As in the plane.
/// @{
template <class Entity, class Use>
bool useHullPoints(const Entity& entity, Use use) {
  using T = CoordinateOf<Entity>;
  std::vector<T> all;
  const T* first = nullptr;
  std::size_t nbFirst = 0;
  const bool isWhole = visitRuns(entity, [&](const T* xyz, std::size_t nbPoints) {
    if (nbPoints == 0) return;
    if constexpr (s_isOneRun<Entity>) {
      first = xyz;
      nbFirst = nbPoints;
    } else {
      all.insert(all.end(), xyz, xyz + 3 * nbPoints);
    }
  });
  return isWhole && (first ? use(first, nbFirst) : use(static_cast<const T*>(all.data()), all.size() / 3));
}
template <class T, class Use>
bool useHullPoints(const BoundingBox3d<T>& box, Use use) {
  std::array<T, 24> xyz{};
  for (std::size_t corner = 0; corner < 8; ++corner) {
    xyz[3 * corner] = (corner & 1) != 0 ? box.getXMax() : box.getXMin();
    xyz[3 * corner + 1] = (corner & 2) != 0 ? box.getYMax() : box.getYMin();
    xyz[3 * corner + 2] = (corner & 4) != 0 ? box.getZMax() : box.getZMin();
  }
  return use(static_cast<const T*>(xyz.data()), std::size_t(8));
}
template <class Solid, class Use>
bool useCorners(const Solid& solid, Use use) {
  const auto corners = cornersOf(solid);
  return use(reinterpret_cast<const omReal64*>(corners.data()), corners.size());
}
template <class T, class Use>
bool useHullPoints(const Cube3d<T>& cube, Use use) {
  return useCorners(cube, use);
}
template <class T, class Use>
bool useHullPoints(const Cuboid3d<T>& cuboid, Use use) {
  return useCorners(cuboid, use);
}
// Of voxels, the corners of the first and the last one of each row.
template <class Use>
bool useHullPoints(const Shape3d& shape, Use use) {
  if (!shape.getMeshWithHolesColl().empty()) return useHullPoints<Shape3d, Use>(shape, use);
  std::vector<omReal64> corners;
  omUInt64 z = shape.getRowIntersections().zOffset;
  for (const RowIntersections& slice : shape.getRowIntersections().rowIntersectionsColl) {
    for (omUInt64 y = slice.getStartRow(); y < slice.getEndRow(); ++y) {
      const RowIntersections::Row row = slice.getRow(y);
      if (row.empty()) continue;
      for (const omReal64 x : {omReal64(row[0].begin), omReal64(row[row.size() - 1].end)})
        for (const omReal64 side : {0, 1})
          corners.insert(corners.end(), {x, omReal64(y) + side, omReal64(z), x, omReal64(y) + side, omReal64(z) + 1});
    }
    ++z;
  }
  return use(static_cast<const omReal64*>(corners.data()), corners.size() / 3);
}
/// @}

}  // namespace ormix::geom::detail
