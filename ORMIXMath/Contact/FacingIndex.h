#pragma once

#include <ORMIXMath/Contact/FacingInterval.h>
#include <ORMIXMath/Contact/FacingTree.h>

#include <utility>
#include <vector>

/// \file
/// The edges of boundaries in a tree, for edges that face another one; not installed.

namespace ormix::detail {

inline IndexBox<2> boxOf(const BoundaryEdge& edge) {
  return {{std::min(edge.start.x, edge.end.x), std::min(edge.start.y, edge.end.y)},
          {std::max(edge.start.x, edge.end.x), std::max(edge.start.y, edge.end.y)}};
}

/// Edges, whose directions fall into 32 sectors.
class FacingIndex {
 public:
  /// \param order of the tree: that of the rings is made in no time and good for few of them; where many lie side by
  /// side, boxes along the curve overlap less
  ORMIX_MATH_API explicit FacingIndex(std::vector<BoundaryEdge> edges, eBoxOrder order = eBO_Given);

  const std::vector<BoundaryEdge>& edges() const { return _edges; }
  /// The edges, without which the index answers nothing any more.
  std::vector<BoundaryEdge> takeEdges() { return std::exchange(_edges, {}); }

  /// FacingTree::visit() of the edges that face one.
  template <class Visit>
  void visitFacing(const BoundaryEdge& edge, omReal64 squareBound, Visit&& visit) const {
    _tree.visit(boxOf(edge), opposingSectors(edge.direction), squareBound, [&](std::size_t other, omReal64 bound) {
      return isFacing(edge, _edges[other]) ? visit(other, bound) : bound;
    });
  }

 private:
  /// The sectors with a direction that opposes one of the same sector as this direction.
  ORMIX_MATH_API static omUInt64 opposingSectors(const PlanarPoint& direction);

  std::vector<BoundaryEdge> _edges;
  FacingTree<2> _tree;
};

}  // namespace ormix::detail
