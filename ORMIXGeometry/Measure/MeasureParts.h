#pragma once

#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/Shape3d.h>
#include <ORMIXGeometry/Measure/BaseGeometryMeasure.h>

#include <cstddef>
#include <iterator>
#include <vector>

/// \file
/// How the measure of an entity is put together from those of its parts, once for all measures; not installed. `simple`
/// answers the measure of an entity that has no parts, `combine` how the result of a hole enters the running result of
/// what encloses it. The value of a measure is any type with a default value that is the measure of nothing; those of
/// shapes are summed by `+=`.

namespace ormix::geom::detail {

template <class T>
const Polygon2d<T>& exteriorOf(const PolygonWithHoles2d<T>& node) {
  return node.getExteriorPolygon();
}
template <class T>
const Mesh3d<T>& exteriorOf(const MeshWithHoles3d<T>& node) {
  return node.getExteriorMesh();
}

/// A tree of entities with holes: a node is its exterior combined with each of its holes, in collection order, a hole
/// being measured the same way. Iterative, so that the depth of a tree is bounded by memory only.
/// \return false when a hole is null
template <class Node, class Value, class Simple, class Combine>
bool measureTree(const Node& root, eHoleMsrPolicy policy, Value& value, Simple simple, Combine combine) {
  value = simple(exteriorOf(root));
  if (policy == eHMP_IgnoreHoles || !root.hasHoles()) return true;
  struct Step {
    const Node* node;
    std::size_t nextHole;
    Value running;
  };
  std::vector<Step> path{{&root, 0, value}};
  for (;;) {
    Step& step = path.back();
    if (step.nextHole < step.node->getNbHoles()) {
      const Node* hole = std::next(step.node->beginHole(), static_cast<std::ptrdiff_t>(step.nextHole++))->get();
      if (!hole) return false;
      path.push_back({hole, 0, simple(exteriorOf(*hole))});
      continue;
    }
    const Value result = step.running;
    path.pop_back();
    if (path.empty()) {
      value = result;
      return true;
    }
    path.back().running = combine(path.back().running, result);
  }
}

/// An entity without parts.
template <class Entity, class Value, class Simple, class Combine>
bool measureParts(const Entity& entity, eHoleMsrPolicy, Value& value, Simple simple, Combine) {
  value = simple(entity);
  return true;
}
template <class T, class Value, class Simple, class Combine>
bool measureParts(const PolygonWithHoles2d<T>& polygon, eHoleMsrPolicy policy, Value& value, Simple simple,
                  Combine combine) {
  return measureTree(polygon, policy, value, simple, combine);
}
template <class T, class Value, class Simple, class Combine>
bool measureParts(const MeshWithHoles3d<T>& mesh, eHoleMsrPolicy policy, Value& value, Simple simple, Combine combine) {
  return measureTree(mesh, policy, value, simple, combine);
}
/// The sum over its meshes with holes; false when one is null or cannot be measured.
template <class Value, class Simple, class Combine>
bool measureParts(const Shape3d& shape, eHoleMsrPolicy policy, Value& value, Simple simple, Combine combine) {
  value = Value();
  for (const auto& mesh : shape.getMeshWithHolesColl()) {
    Value part{};
    if (!mesh || !measureTree(*mesh, policy, part, simple, combine)) return false;
    value += part;
  }
  return true;
}

}  // namespace ormix::geom::detail
