#pragma once

#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <ORMIXGeometry/Message/ToolsMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/RTree/RTreeAccess.h>

#include <cmath>
#include <utility>
#include <vector>

/// \file
/// What makes indexes in the plane and in space alike; not installed.

namespace ormix::geom::detail {

/// A point in other coordinates.
/// @{
template <class U, class T>
Point2dData<U> toCoordinate(const Point2dData<T>& p) {
  return {static_cast<U>(p.getX()), static_cast<U>(p.getY())};
}
template <class U, class T>
Point3dData<U> toCoordinate(const Point3dData<T>& p) {
  return {static_cast<U>(p.getX()), static_cast<U>(p.getY()), static_cast<U>(p.getZ())};
}
/// @}

/// The index of the points of a cloud.
template <class Item, class Cloud>
RTree<Item> treeOfPoints(const Cloud& cloud) {
  std::vector<typename RTreeItem<Item>::Points> items;
  items.reserve(cloud.size());
  for (const auto& point : cloud.getCollection())
    items.push_back({toCoordinate<typename RTreeItem<Item>::Coordinate>(point)});
  return RTreeAccess::fromPoints<Item>(std::move(items));
}

/// A function object of the type that visitRuns() calls.
struct RunVisitor {
  template <class T>
  void operator()(const T*, std::size_t) const {}
};

/// Whether an entity has runs of points, which `VisitRuns`, a function object, visits.
template <class VisitRuns, class Entity>
constexpr bool hasRuns = std::is_invocable_v<VisitRuns, const Entity&, RunVisitor>;

/// Whether an entity without an envelope has a number that is not finite; else it has no points or a null hole.
template <std::size_t D, class VisitRuns, class Entity>
bool hasNotFinite(const Entity& entity, VisitRuns visitRuns) {
  if constexpr (hasRuns<VisitRuns, Entity>) {
    bool isFinite = true;
    visitRuns(entity, [&isFinite](const auto* coords, std::size_t nbPoints) {
      for (std::size_t i = 0; i < D * nbPoints; ++i)
        isFinite = isFinite && std::isfinite(static_cast<omReal64>(coords[i]));
    });
    return !isFinite;
  } else {
    return true;
  }
}

/// The index of the boxes of entities, which a transform finds.
template <class Item, class Envelope, class List, class Pointers, class VisitRuns>
RTree<Item> treeOfBoxes(List list, const Pointers& entities, VisitRuns visitRuns, const char* function) {
  using Points = typename RTreeItem<Item>::Points;
  const auto uniform = [](omReal64 value) {
    if constexpr (RTreeItem<Item>::s_dimension == 2)
      return Point2dData<omReal64>(value, value);
    else
      return Point3dData<omReal64>(value, value, value);
  };
  std::vector<Points> items;
  items.reserve(entities.size());
  for (const auto& entity : entities) {
    Points box{uniform(1), uniform(-1)};  // inverted, therefore empty
    const auto setBox = [&](const auto& typed) {
      using Entity = std::decay_t<decltype(typed)>;
      if constexpr (Envelope::template Supports<Entity>::value) {
        typename Envelope::template Result<Entity> result;
        if (Envelope().derive(typed, result))
          box = {toCoordinate<omReal64>(result.getMinCornerPt()), toCoordinate<omReal64>(result.getMaxCornerPt())};
        else if (hasNotFinite<RTreeItem<Item>::s_dimension>(typed, visitRuns))
          logAndThrow(formatMessage<eToolsMessage>(eToolsMessage::eTM_ItemNotFinite, items.size()), function, __FILE__,
                      __LINE__);
      }
      return true;
    };
    if (entity) callTyped(list, *entity, setBox);
    items.push_back(box);
  }
  return RTreeAccess::fromPoints<Item>(std::move(items));
}

}  // namespace ormix::geom::detail
