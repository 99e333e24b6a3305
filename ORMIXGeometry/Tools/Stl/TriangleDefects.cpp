#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopologyChecks.h>
#include <ORMIXGeometry/Tools/Stl/TriangleDefects.h>
#include <ORMIXGeometry/Tools/Stl/TripleTable.h>

#include <algorithm>
#include <numeric>

namespace ormix::geom {

namespace {

/// Union-find with path halving.
class DisjointSets {
 public:
  explicit DisjointSets(std::size_t nbElements) : _parents(nbElements) {
    std::iota(_parents.begin(), _parents.end(), omUInt32(0));
  }

  /// Unites the sets of two elements; true when they were different.
  bool unite(omUInt32 a, omUInt32 b) {
    a = root(a);
    b = root(b);
    _parents[std::max(a, b)] = std::min(a, b);
    return a != b;
  }

 private:
  omUInt32 root(omUInt32 element) {
    while (_parents[element] != element) element = _parents[element] = _parents[_parents[element]];
    return element;
  }
  std::vector<omUInt32> _parents;
};

/// Counts the triangles with the same three corners as an earlier one, in any order.
std::size_t countDuplicates(const std::vector<omUInt32>& vertexIndexColl, std::size_t nbProper) {
  detail::TripleTable table(2 * nbProper);
  for (std::size_t first = 0; first < vertexIndexColl.size(); first += 3) {
    const omUInt32 a = vertexIndexColl[first], b = vertexIndexColl[first + 1], c = vertexIndexColl[first + 2];
    if (detail::hasEqualCorners(&vertexIndexColl[first])) continue;
    const omUInt32 lowest = std::min({a, b, c}), highest = std::max({a, b, c});
    table.add({lowest, a ^ b ^ c ^ lowest ^ highest, highest});
  }
  return nbProper - table.getTriples().size();
}

/// The sides of all triangles that are not degenerate, grouped by their undirected edge: by its lower vertex index,
/// then by its higher one.
class EdgeSides {
 public:
  struct Side {
    omUInt32 higherVertex;
    omUInt32 place;  ///< where the side begins in the list of indices
    bool operator<(const Side& other) const { return higherVertex < other.higherVertex; }
  };

  EdgeSides(std::size_t nbVertices, const std::vector<omUInt32>& indices) : _indices(indices), _ends(nbVertices + 1) {
    visit([this](omUInt32 lower, omUInt32, omUInt32) { ++_ends[lower + 1]; });
    std::partial_sum(_ends.begin(), _ends.end(), _ends.begin());
    _sides.resize(_ends.back());
    // `_ends[v]` is where the sides of vertex v begin; storing them moves it to their end.
    visit([this](omUInt32 lower, omUInt32 higher, omUInt32 place) { _sides[_ends[lower]++] = {higher, place}; });
  }

  /// Calls `visitEdge(lower, first, last)` with the sides of each edge.
  template <class VisitEdge>
  void visitEdges(VisitEdge visitEdge) {
    for (std::size_t vertex = 0; vertex + 1 < _ends.size(); ++vertex) {
      Side* first = _sides.data() + (vertex == 0 ? 0 : _ends[vertex - 1]);
      Side* last = _sides.data() + _ends[vertex];
      std::sort(first, last);
      while (first != last) {
        Side* end = first + 1;
        while (end != last && end->higherVertex == first->higherVertex) ++end;
        visitEdge(static_cast<omUInt32>(vertex), first, end);
        first = end;
      }
    }
  }

  /// Whether the side is directed from the lower to the higher vertex.
  bool ascends(const Side& side) const { return _indices[side.place] < side.higherVertex; }

 private:
  template <class Visit>
  void visit(Visit visit) const {
    for (omUInt32 first = 0; first < _indices.size(); first += 3) {
      const omUInt32* corners = &_indices[first];
      if (detail::hasEqualCorners(corners)) continue;
      for (omUInt32 corner = 0; corner < 3; ++corner) {
        const auto [lower, higher] = std::minmax(corners[corner], corners[corner == 2 ? 0 : corner + 1]);
        visit(lower, higher, first + corner);
      }
    }
  }

  const std::vector<omUInt32>& _indices;
  std::vector<omUInt32> _ends;
  std::vector<Side> _sides;
};

}  // namespace

TriangleDefects findDefects(std::size_t nbVertices, const std::vector<omUInt32>& vertexIndexColl) {
  TriangleDefects defects;
  const std::size_t nbTriangles = vertexIndexColl.size() / 3;
  for (std::size_t triangle = 0; triangle < nbTriangles; ++triangle)
    defects.nbDegenerate += detail::hasEqualCorners(&vertexIndexColl[3 * triangle]) ? 1 : 0;
  const std::size_t nbProper = nbTriangles - defects.nbDegenerate;
  defects.nbDuplicate = countDuplicates(vertexIndexColl, nbProper);
  defects.nbComponents = nbProper;
  DisjointSets triangles(nbTriangles), vertices(nbVertices);
  std::vector<bool> isOnBoundary(nbVertices);
  EdgeSides sides(nbVertices, vertexIndexColl);
  sides.visitEdges([&](omUInt32 vertex, const EdgeSides::Side* first, const EdgeSides::Side* last) {
    ++defects.nbEdges;
    for (const EdgeSides::Side* side = first + 1; side < last; ++side)
      if (triangles.unite(first->place / 3, side->place / 3)) --defects.nbComponents;
    if (last - first == 1) {
      ++defects.nbBoundaryEdges;
      // The number of connected chains is that of their vertices minus that of the edges that unite two chains.
      for (const omUInt32 end : {vertex, first->higherVertex}) {
        if (!isOnBoundary[end]) ++defects.nbBoundaryLoops;
        isOnBoundary[end] = true;
      }
      if (vertices.unite(vertex, first->higherVertex)) --defects.nbBoundaryLoops;
    } else if (last - first > 2) {
      ++defects.nbNonManifoldEdges;
    } else if (sides.ascends(first[0]) == sides.ascends(first[1])) {
      ++defects.nbFlippedNeighbours;
    }
  });
  return defects;
}

}  // namespace ormix::geom
