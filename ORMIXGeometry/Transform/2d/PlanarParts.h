#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>

#include <algorithm>
#include <cstddef>

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

/// Calls `visit(x0, x1, y)` for each run of pixels of a shape, in order: they fill [x0, x1] × [y, y + 1].
template <class Visit>
void visitPixelRuns(const Shape2d& shape, Visit visit) {
  for (omUInt64 y = shape.getStartY(); y < shape.getEndY(); ++y)
    for (const PixelRun& run : shape.getRowIntersections(y)) visit(omReal64(run.begin), omReal64(run.end), omReal64(y));
}

}  // namespace ormix::geom::detail
