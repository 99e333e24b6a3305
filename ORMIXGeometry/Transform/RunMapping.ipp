#pragma once

#include <ORMIXGeometry/Entity/HoleTree.h>
#include <ORMIXGeometry/Transform/PointMapping.ipp>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <utility>
#include <vector>

// Entities that are a run of points, or a tree of such entities, under a linear map. In place all points are asked
// before the first one changes. An image is made in an entity that has nothing yet; the point named where it fails is
// the one that is named in place.

namespace ormix::geom::detail {

/// Of an entity that is a run of points: `points(entity)`, and `copyRest(from, to)` for what else it has.
template <class Entity>
struct RunOf {
  static constexpr bool isRun = false;
};
/// Of a tree with an entity of a run in each node: `body(node)` and `holes(node)`.
template <class Node>
struct TreeOf {
  static constexpr bool isTree = false;
};

/// Whether mapRuns() takes the entity. Specialised for those made of trees.
template <class Entity>
constexpr bool isMadeOfRuns() {
  return RunOf<Entity>::isRun || TreeOf<Entity>::isTree;
}

template <class Map, class Run, std::enable_if_t<RunOf<Run>::isRun, int> = 0>
bool mapInSitu(const Map& map, Run& run) {
  return mapPoints(map, RunOf<Run>::points(run));
}

template <class Map, class Run, std::enable_if_t<RunOf<Run>::isRun, int> = 0>
bool mapRuns(const Map& map, const Run& run, Run& image) {
  if (!mapPoints(map, RunOf<Run>::points(run), RunOf<Run>::points(image))) return false;
  RunOf<Run>::copyRest(run, image);
  return true;
}

/// The points of one node of a tree, const or not.
template <class Node>
auto& pointsOfNode(Node& node) {
  using Tree = TreeOf<std::remove_const_t<Node>>;
  auto& body = Tree::body(node);
  return RunOf<std::decay_t<decltype(body)>>::points(body);
}

/// Appends the nodes of a tree while their points have images; false at the first that has one without.
template <class Map, class Node>
bool appendMapped(const Map& map, Node& tree, std::vector<Node*>& nodes) {
  return visitNodes(tree, [&](Node& node) {
    nodes.push_back(&node);
    return hasImage(map, pointsOfNode(std::as_const(node)));
  });
}

/// Each point must have an image. Takes no memory, so that either all nodes are mapped or none.
template <class Map, class Node>
void applyToNodes(const Map& map, const std::vector<Node*>& nodes) {
  for (Node* const node : nodes) {
    auto& points = pointsOfNode(*node);
    applyToRun(map.math, coordinates(points), points.size());
  }
}

template <class Map, class Node, std::enable_if_t<TreeOf<Node>::isTree, int> = 0>
bool mapInSitu(const Map& map, Node& tree) {
  std::vector<Node*> nodes;
  if (!appendMapped(map, tree, nodes)) return false;
  applyToNodes(map, nodes);
  return true;
}

/// \param image owned by a shared pointer
template <class Map, class Node, std::enable_if_t<TreeOf<Node>::isTree, int> = 0>
bool mapRuns(const Map& map, const Node& tree, Node& image) {
  using Tree = TreeOf<Node>;
  std::vector<std::pair<const Node*, Node*>> pending{{&tree, &image}};
  while (!pending.empty()) {
    const auto [from, to] = pending.back();
    pending.pop_back();
    if (!mapRuns(map, Tree::body(*from), Tree::body(*to))) return false;
    Tree::holes(*to).resize(from->getNbHoles());
    // The first hole is pushed last, as it is the next one.
    for (std::size_t index = from->getNbHoles(); index-- > 0;) {
      const auto& hole = Tree::holes(*from)[index];
      if (!hole) continue;
      const auto holeImage = boost::make_shared<Node>();
      holeImage->setParent(to->shared_from_this());
      Tree::holes(*to)[index] = holeImage;
      pending.emplace_back(hole.get(), holeImage.get());
    }
  }
  return true;
}

}  // namespace ormix::geom::detail
