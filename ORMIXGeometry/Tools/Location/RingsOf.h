#pragma once

#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/Contours.h>
#include <ORMIXGeometry/Entity/2d/Shape/Shape2d.h>

/// \file
/// The rings of regions; not installed.

namespace ormix::geom::detail {

/// Calls `visit(xy, nbPoints)` with the vertices of each ring of a region that has some; null holes and boundaries are
/// passed over. Of a shape without boundaries, the rings of its pixels.
/// @{
template <class T, class Visit>
void visitRings(const Polygon2d<T>& polygon, Visit&& visit) {
  if (!polygon.isEmpty()) visit(coordinates(polygon.getPointColl()), polygon.getNbPoints());
}
template <class T, class Visit>
void visitRings(const PolygonWithHoles2d<T>& polygon, Visit&& visit) {
  visitNodes(polygon, [&visit](const PolygonWithHoles2d<T>& node) {
    visitRings(node.getExteriorPolygon(), visit);
    return true;
  });
}
template <class Visit>
void visitRings(const Shape2d& shape, Visit&& visit) {
  for (const auto& polygon : shape.getPolygonWithHolesColl())
    if (polygon) visitRings(*polygon, visit);
  if (!shape.getPolygonWithHolesColl().empty()) return;
  for (const auto& polygon : traceContours<omReal64>(shape.getRowIntersections(), ePC_8)) visitRings(*polygon, visit);
}
/// @}

}  // namespace ormix::geom::detail
