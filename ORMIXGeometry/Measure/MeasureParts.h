#pragma once

#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/Shape2d.h>
#include <ORMIXGeometry/Entity/3d/MeshWithHoles/MeshWithHoles3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/Shape3d.h>
#include <ORMIXGeometry/Measure/BaseGeometryMeasure.h>

#include <cstddef>
#include <iterator>
#include <vector>

/// \file
/// The measure of an entity that consists of parts, computed from the measures of the parts; the same for all measures
/// and not installed. `simple(entity)` returns the measure of an entity without parts; `combine(sum, hole)` returns the
/// measure of a node so far combined with that of one of its holes. A default-constructed `Value` must be the measure
/// of the empty set, and `+=` the sum of two values.

namespace ormix::geom::detail {

/// The entity without parts that is the exterior of a node.
template <class T>
const Polygon2d<T>& exteriorOf(const PolygonWithHoles2d<T>& node) {
  return node.getExteriorPolygon();
}
template <class T>
const Mesh3d<T>& exteriorOf(const MeshWithHoles3d<T>& node) {
  return node.getExteriorMesh();
}

/// Measures a tree of entities with holes. The measure of a node is that of its exterior, combined with the measure of
/// each hole in the order of the collection; a hole is measured as a node. Iterative: only memory limits the depth of
/// the tree.
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

/// Measures an entity without parts.
template <class Entity, class Value, class Simple, class Combine>
bool measureParts(const Entity& entity, eHoleMsrPolicy, Value& value, Simple simple, Combine) {
  value = simple(entity);
  return true;
}
/// Measures a tree, see measureTree().
template <class T, class Value, class Simple, class Combine>
bool measureParts(const PolygonWithHoles2d<T>& polygon, eHoleMsrPolicy policy, Value& value, Simple simple,
                  Combine combine) {
  return measureTree(polygon, policy, value, simple, combine);
}
template <class T, class Value, class Simple, class Combine>
bool measureParts(const MeshWithHoles3d<T>& mesh, eHoleMsrPolicy policy, Value& value, Simple simple, Combine combine) {
  return measureTree(mesh, policy, value, simple, combine);
}

/// Sums the measures of trees.
/// \return false when a tree or a hole is null
template <class TreeColl, class Value, class Simple, class Combine>
bool measureTrees(const TreeColl& trees, eHoleMsrPolicy policy, Value& value, Simple simple, Combine combine) {
  value = Value();
  for (const auto& tree : trees) {
    Value part{};
    if (!tree || !measureTree(*tree, policy, part, simple, combine)) return false;
    value += part;
  }
  return true;
}
/// Measures the boundaries of a shape, see measureTrees().
/// @{
template <class Value, class Simple, class Combine>
bool measureParts(const Shape2d& shape, eHoleMsrPolicy policy, Value& value, Simple simple, Combine combine) {
  return measureTrees(shape.getPolygonWithHolesColl(), policy, value, simple, combine);
}
template <class Value, class Simple, class Combine>
bool measureParts(const Shape3d& shape, eHoleMsrPolicy policy, Value& value, Simple simple, Combine combine) {
  return measureTrees(shape.getMeshWithHolesColl(), policy, value, simple, combine);
}
/// @}

}  // namespace ormix::geom::detail
