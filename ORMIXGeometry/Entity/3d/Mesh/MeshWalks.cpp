#include <ORMIXGeometry/Entity/3d/Mesh/MeshWalks.h>
#include <ORMIXMath/Index/DisjointSets.h>

#include <algorithm>
#include <array>

namespace ormix::geom {

namespace {

/// Calls `visit` with the index of each half-edge on a boundary, ascending. Most half-edges are not: whether any of a
/// block is takes no branch a half-edge, and so as long as reading them.
template <class Visit>
void visitBoundaryHalfEdges(const MeshTopology::HalfEdgeColl& halfEdges, Visit visit) {
  constexpr std::size_t nbBlock = 64;
  for (std::size_t begin = 0; begin < halfEdges.size(); begin += nbBlock) {
    const std::size_t end = std::min(begin + nbBlock, halfEdges.size());
    bool isAny = false;
    for (std::size_t index = begin; index < end; ++index) isAny |= halfEdges[index].oppositeHalfEdgeIdx == s_noHalfEdge;
    if (!isAny) continue;
    for (std::size_t index = begin; index < end; ++index)
      if (halfEdges[index].oppositeHalfEdgeIdx == s_noHalfEdge) visit(index);
  }
}

/// Calls `visit` with the half-edge of lowest index of each boundary loop.
template <class Visit>
void visitBoundaryLoops(const MeshTopology& topology, Visit visit) {
  std::vector<bool> isVisited;
  visitBoundaryHalfEdges(topology.getHalfEdgeColl(), [&](std::size_t halfEdgeIdx) {
    isVisited.resize(topology.getNbHalfEdges());
    if (isVisited[halfEdgeIdx]) return;
    visitBoundaryLoop(topology, halfEdgeIdx, [&isVisited](std::size_t onLoop) { isVisited[onLoop] = true; });
    visit(halfEdgeIdx);
  });
}

/// Labels the triangles of a mesh in order, as pixels of an image are: a triangle gets the label of its lowest
/// neighbour where that is lower, else a new one, and the sets of labels of all lower neighbours are united. That takes
/// one pass over the half-edges, if triangle t has the half-edges 3t, 3t + 1 and 3t + 2, as it mostly has: the
/// neighbours' numbers then need not be looked up, anywhere in memory.
///
/// Triangles are taken in blocks, so that what lies far away has arrived when it is used, and that unions, whose loops
/// no processor foresees, do not delay it.
class OrderedTriangles {
 public:
  OrderedTriangles(const MeshTopology::HalfEdgeColl& halfEdges, std::vector<omUInt32>& labels)
      : _halfEdges(halfEdges.data()), _nbTriangles(static_cast<omUInt32>(halfEdges.size() / 3)), _labels(labels) {
    labels.resize(_nbTriangles);
  }

  /// Labels all triangles, as labelComponents() does; false when their half-edges are in another order.
  bool label(std::size_t& nbComponents) {
    for (omUInt32 begin = 0; begin < _nbTriangles;) {
      const omUInt32 end = begin + std::min(_nbTriangles - begin, s_nbBlock);
      bool hasNew = false;
      if (!look(begin, end, hasNew)) return false;
      // Where all before are connected, those with a lower neighbour are connected with them.
      if (_nbSets == 1 && !hasNew)
        std::fill(&_labels[begin], &_labels[begin] + (end - begin), omUInt32{0});
      else
        labelBlock(begin, end);
      begin = end;
    }
    nbComponents = number();
    return true;
  }

 private:
  static constexpr omUInt32 s_nbBlock = 1024;

  /// Whether each triangle of a block has its own half-edges; and whether one has no lower neighbour.
  bool look(omUInt32 begin, omUInt32 end, bool& hasNew) const {
    omUInt32 differences = 0;
    const HalfEdge* halfEdge = _halfEdges + 3 * std::size_t{begin};
    for (omUInt32 triangle = begin; triangle < end; ++triangle, halfEdge += 3) {
      differences |= (halfEdge[0].triangleIdx ^ triangle) | (halfEdge[1].triangleIdx ^ triangle) |
                     (halfEdge[2].triangleIdx ^ triangle);
      hasNew |= std::min({halfEdge[0].oppositeHalfEdgeIdx, halfEdge[1].oppositeHalfEdgeIdx,
                          halfEdge[2].oppositeHalfEdgeIdx}) >= 3 * triangle;
    }
    return differences == 0;
  }

  void labelBlock(omUInt32 begin, omUInt32 end) {
    // The lower neighbours, and the triangle itself where a neighbour is not lower.
    const HalfEdge* halfEdge = _halfEdges + 3 * std::size_t{begin};
    for (omUInt32 triangle = begin; triangle < end; ++triangle)
      for (std::size_t side = 0; side < 3; ++side, ++halfEdge) {
        const omUInt32 lower = std::min(triangle, halfEdge->oppositeHalfEdgeIdx / 3);
        _lower[triangle - begin][side] = lower;
        __builtin_prefetch(&_labels[lower]);
      }
    std::size_t nbPairs = 0;
    for (omUInt32 triangle = begin; triangle < end; ++triangle) {
      const std::array<omUInt32, 3>& lower = _lower[triangle - begin];
      const omUInt32 lowest = std::min({lower[0], lower[1], lower[2]});
      _labels[triangle] = _nbLabels;
      _nbLabels += lowest == triangle ? 1 : 0;
      const omUInt32 label = _labels[triangle] = _labels[lowest];
      for (const omUInt32 neighbour : lower) {
        _pairs[nbPairs] = {label, _labels[neighbour]};
        nbPairs += _labels[neighbour] != label ? 1 : 0;
      }
    }
    _nbSets += _sets.grow(_nbLabels);
    for (std::size_t pair = 0; pair < nbPairs; ++pair) _nbSets -= _sets.unite(_pairs[pair][0], _pairs[pair][1]) ? 1 : 0;
  }

  /// Replaces labels by the numbers of their sets, of which the lowest labels are those of the first triangles.
  std::size_t number() {
    if (_nbSets == 1) {
      std::fill(_labels.begin(), _labels.end(), omUInt32{0});
    } else {
      std::vector<omUInt32> numbers;
      _sets.number(numbers);
      for (omUInt32& label : _labels) label = numbers[label];
    }
    return _nbSets;
  }

  const HalfEdge* _halfEdges;
  omUInt32 _nbTriangles;
  std::vector<omUInt32>& _labels;
  ormix::detail::DisjointSets _sets{0};  // of labels
  omUInt32 _nbLabels = 0;
  std::size_t _nbSets = 0;
  std::array<std::array<omUInt32, 3>, s_nbBlock> _lower;
  std::array<std::array<omUInt32, 2>, 3 * s_nbBlock> _pairs;  // labels to be united
};

/// Unites the triangles on both sides of each edge, for half-edges in any order.
void uniteTriangles(const MeshTopology::HalfEdgeColl& halfEdges, ormix::detail::DisjointSets& triangles) {
  for (omUInt32 halfEdgeIdx = 0; halfEdgeIdx < halfEdges.size(); ++halfEdgeIdx) {
    const omUInt32 opposite = halfEdges[halfEdgeIdx].oppositeHalfEdgeIdx;
    if (opposite < halfEdgeIdx) triangles.unite(halfEdges[halfEdgeIdx].triangleIdx, halfEdges[opposite].triangleIdx);
  }
}

}  // namespace

std::vector<omUInt32> collectOutgoingHalfEdges(const MeshTopology& topology, std::size_t nbVertices) {
  std::vector<omUInt32> outgoing(nbVertices, s_noHalfEdge);
  const auto& halfEdges = topology.getHalfEdgeColl();
  for (omUInt32 halfEdgeIdx = 0; halfEdgeIdx < halfEdges.size(); ++halfEdgeIdx) {
    omUInt32& chosen = outgoing[halfEdges[halfEdgeIdx].startVertexIdx];
    if (chosen == s_noHalfEdge || halfEdges[halfEdgeIdx].oppositeHalfEdgeIdx == s_noHalfEdge) chosen = halfEdgeIdx;
  }
  return outgoing;
}

bool collectOneRing(const MeshTopology& topology, std::size_t halfEdgeIdx, std::vector<std::size_t>& ring) {
  ring.clear();
  std::size_t last = halfEdgeIdx;
  const bool isClosed = visitFan(topology, halfEdgeIdx, [&](std::size_t outgoing) {
    ring.push_back(topology.getEndVertexIdx(outgoing));
    last = outgoing;
  });
  if (!isClosed) ring.push_back(topology.getHalfEdgeColl()[topology.getPreviousHalfEdgeIdx(last)].startVertexIdx);
  return isClosed;
}

std::size_t getNbBoundaryLoops(const MeshTopology& topology) {
  std::size_t count = 0;
  visitBoundaryLoops(topology, [&count](std::size_t) { ++count; });
  return count;
}

std::vector<std::vector<std::size_t>> collectBoundaryLoops(const MeshTopology& topology) {
  std::vector<std::vector<std::size_t>> loops;
  visitBoundaryLoops(topology, [&](std::size_t first) {
    loops.emplace_back();
    visitBoundaryLoop(topology, first, [&loop = loops.back()](std::size_t onLoop) { loop.push_back(onLoop); });
  });
  return loops;
}

std::size_t getNbComponents(const MeshTopology& topology) {
  std::vector<omUInt32> labels;
  return labelComponents(topology, labels);
}

std::size_t labelComponents(const MeshTopology& topology, std::vector<omUInt32>& labels) {
  const auto& halfEdges = topology.getHalfEdgeColl();
  std::size_t nbComponents = 0;
  if (OrderedTriangles(halfEdges, labels).label(nbComponents)) return nbComponents;
  ormix::detail::DisjointSets triangles(topology.getNbTriangles());
  uniteTriangles(halfEdges, triangles);
  return triangles.number(labels);
}

}  // namespace ormix::geom
