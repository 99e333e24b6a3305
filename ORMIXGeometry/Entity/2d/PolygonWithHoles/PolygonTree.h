#pragma once

#include <algorithm>
#include <vector>

namespace ormix::geom {

/// Calls `visit` with each node of a tree of polygons with holes until it answers false: a node before its holes, holes
/// in their order, null holes left out. Iterative, so that the depth of a tree is bounded by memory only; a node that
/// is its own hole never ends.
/// \param root a `PolygonWithHoles2d`, const or not; `visit` may change nodes and replace the holes of the one it is
///        given
/// \return whether `visit` always answered true
template <class Node, class Visit>
bool visitNodes(Node& root, Visit visit) {
  if (!visit(root)) return false;
  if (!root.hasHoles()) return true;
  std::vector<Node*> pending;
  const auto pushHoles = [&pending](Node& node) {
    const auto first = static_cast<std::ptrdiff_t>(pending.size());
    for (const auto& hole : node.getPolygonHoles())
      if (hole) pending.push_back(hole.get());
    std::reverse(pending.begin() + first, pending.end());
  };
  pushHoles(root);
  while (!pending.empty()) {
    Node& node = *pending.back();
    pending.pop_back();
    if (!visit(node)) return false;
    pushHoles(node);
  }
  return true;
}

}  // namespace ormix::geom
