#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/Contours.h>
#include <ORMIXGeometry/Entity/2d/Shape/Shape2d.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <ORMIXGeometry/Message/ToolsMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Contact/OrientedRings.h>

#include <utility>

namespace ormix::geom::detail {

namespace {

using ormix::detail::BoundaryRings;

template <class T>
void addRing(BoundaryRings& rings, const Polygon2d<T>& polygon, omUInt32 region, bool isHole) {
  if (!polygon.isEmpty()) rings.add(coordinates(polygon.getPointColl()), polygon.getNbPoints(), region, isHole);
}

/// The classes that have rings, those first of which there are many.
using RingClassList = ClassList<Shape2d, Polygon2d<omReal64>, Polygon2d<omReal32>, Polygon2d<omInt32>,
                                Polygon2d<omUInt32>, PolygonWithHoles2d<omReal64>, PolygonWithHoles2d<omReal32>,
                                PolygonWithHoles2d<omInt32>, PolygonWithHoles2d<omUInt32>>;

/// Adds the rings of a region.
/// \return true, for callTyped()
/// @{
template <class T>
bool addRingsOf(BoundaryRings& rings, const Polygon2d<T>& polygon, omUInt32 region) {
  addRing(rings, polygon, region, false);
  return true;
}
template <class T>
bool addRingsOf(BoundaryRings& rings, const PolygonWithHoles2d<T>& polygon, omUInt32 region) {
  // A node and whether it is a hole, which changes from level to level.
  std::vector<std::pair<const PolygonWithHoles2d<T>*, bool>> pending{{&polygon, false}};
  while (!pending.empty()) {
    const auto [node, isHole] = pending.back();
    pending.pop_back();
    addRing(rings, node->getExteriorPolygon(), region, isHole);
    for (const auto& hole : node->getPolygonHoles())
      if (hole) pending.emplace_back(hole.get(), !isHole);
  }
  return true;
}
bool addRingsOf(BoundaryRings& rings, const Shape2d& shape, omUInt32 region) {
  for (const auto& polygon : shape.getPolygonWithHolesColl())
    if (polygon) addRingsOf(rings, *polygon, region);
  if (!shape.getPolygonWithHolesColl().empty()) return true;
  for (const auto& polygon : traceContours<omReal64>(shape.getRowIntersections(), ePC_8))
    addRingsOf(rings, *polygon, region);
  return true;
}
/// @}

}  // namespace

void addRings(BoundaryRings& rings, const BaseGeometryEntity2d& entity, omUInt32 region) {
  if (!callTyped(RingClassList(), entity, [&](const auto& typed) { return addRingsOf(rings, typed, region); }))
    logAndThrow(formatMessage<eToolsMessage>(eToolsMessage::eTM_NoContact, toString(entity.getEntity2dType())),
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

}  // namespace ormix::geom::detail
