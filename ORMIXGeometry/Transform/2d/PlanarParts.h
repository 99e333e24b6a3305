#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Transform/DerivedTransform.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

/// \file
/// The stored points of planar entities as contiguous coordinates; not installed.

namespace ormix::geom::detail {

/// Calls `visit(xy, nbPoints)` for each run of contiguous points that an entity stores: of boxes their two corners, of
/// trees every ring, those of holes too, in depth-first order.
/// \return false, the visits incomplete, where a hole or a boundary is null
/// @{
template <class T, class Visit>
bool visitRuns(const Point2d<T>& point, Visit visit) {
  const T xy[] = {point.getX(), point.getY()};
  visit(xy, 1);
  return true;
}
template <class T, class Visit>
bool visitRuns(const Segment2d<T>& segment, Visit visit) {
  const Point2dData<T>& p0 = segment.getPoint0();
  const Point2dData<T>& p1 = segment.getPoint1();
  const T xy[] = {p0.getX(), p0.getY(), p1.getX(), p1.getY()};
  visit(xy, 2);
  return true;
}
template <class T, class Visit>
bool visitRuns(const BoundingBox2d<T>& box, Visit visit) {
  const T xy[] = {box.getXMin(), box.getYMin(), box.getXMax(), box.getYMax()};
  visit(xy, 2);
  return true;
}
template <class T, class Visit>
bool visitRuns(const PointCloud2d<T>& cloud, Visit visit) {
  visit(coordinates(cloud.getCollection()), cloud.getCollection().size());
  return true;
}
template <class T, class Visit>
bool visitRuns(const Polygon2d<T>& polygon, Visit visit) {
  visit(coordinates(polygon.getPointColl()), polygon.getPointColl().size());
  return true;
}
template <class T, class Visit>
bool visitRuns(const PolygonWithHoles2d<T>& polygon, Visit visit) {
  return visitNodes(polygon, [&visit](const PolygonWithHoles2d<T>& node) {
    visitRuns(node.getExteriorPolygon(), visit);
    return std::all_of(node.beginHole(), node.endHole(), [](const auto& hole) { return hole != nullptr; });
  });
}
template <class Visit>
bool visitRuns(const Shape2d& shape, Visit visit) {
  for (const auto& polygon : shape.getPolygonWithHolesColl())
    if (!polygon || !visitRuns(*polygon, visit)) return false;
  return true;
}
/// @}

/// Whether the runs of an entity are one, which it stores.
template <class Entity>
inline constexpr bool s_isOneRun = false;
template <class T>
inline constexpr bool s_isOneRun<PointCloud2d<T>> = true;
template <class T>
inline constexpr bool s_isOneRun<Polygon2d<T>> = true;

/// Calls `visit(x0, x1, y)` for each run of pixels of a shape, in order: they fill [x0, x1] × [y, y + 1].
template <class Visit>
void visitPixelRuns(const Shape2d& shape, Visit visit) {
  for (omUInt64 y = shape.getStartY(); y < shape.getEndY(); ++y)
    for (const PixelRun& run : shape.getRowIntersections(y)) visit(omReal64(run.begin), omReal64(run.end), omReal64(y));
}

/// The corners of a square or a rectangle.
template <class Figure>
std::array<Point2dData<omReal64>, 4> cornersOf(const Figure& figure) {
  return {figure.topLeftCorner(), figure.topRightCorner(), figure.bottomRightCorner(), figure.bottomLeftCorner()};
}

/// \name Points whose convex hull is that of the entity.
/// Answers `use(xy, nbPoints)` for all of them as one run, of the coordinate type of the entity or, where they are
/// computed, of omReal64; false where a hole or a boundary is null. What an entity stores as one run is not copied.
/// @{
template <class Entity, class Use>
bool useHullPoints(const Entity& entity, Use use) {
  using T = CoordinateOf<Entity>;
  std::vector<T> all;
  const T* first = nullptr;
  std::size_t nbFirst = 0;
  const bool isWhole = visitRuns(entity, [&](const T* xy, std::size_t nbPoints) {
    if (nbPoints == 0) return;
    if constexpr (s_isOneRun<Entity>) {
      first = xy;
      nbFirst = nbPoints;
    } else {
      all.insert(all.end(), xy, xy + 2 * nbPoints);
    }
  });
  return isWhole && (first ? use(first, nbFirst) : use(static_cast<const T*>(all.data()), all.size() / 2));
}
template <class T, class Use>
bool useHullPoints(const BoundingBox2d<T>& box, Use use) {
  const T xy[] = {box.getXMin(), box.getYMin(), box.getXMax(), box.getYMin(),
                  box.getXMax(), box.getYMax(), box.getXMin(), box.getYMax()};
  return use(static_cast<const T*>(xy), std::size_t(4));
}
template <class Figure, class Use>
bool useCorners(const Figure& figure, Use use) {
  const auto corners = cornersOf(figure);
  return use(reinterpret_cast<const omReal64*>(corners.data()), corners.size());
}
template <class T, class Use>
bool useHullPoints(const Square2d<T>& square, Use use) {
  return useCorners(square, use);
}
template <class T, class Use>
bool useHullPoints(const Rectangle2d<T>& rectangle, Use use) {
  return useCorners(rectangle, use);
}
// Of pixels, the corners of the first and the last one of each row.
template <class Use>
bool useHullPoints(const Shape2d& shape, Use use) {
  if (!shape.getPolygonWithHolesColl().empty()) return useHullPoints<Shape2d, Use>(shape, use);
  std::vector<omReal64> corners;
  for (omUInt64 y = shape.getStartY(); y < shape.getEndY(); ++y) {
    const RowIntersections::Row row = shape.getRowIntersections(y);
    if (row.empty()) continue;
    for (const omReal64 x : {omReal64(row[0].begin), omReal64(row[row.size() - 1].end)})
      corners.insert(corners.end(), {x, omReal64(y), x, omReal64(y) + 1});
  }
  return use(static_cast<const omReal64*>(corners.data()), corners.size() / 2);
}
/// @}

}  // namespace ormix::geom::detail
