#include <ORMIXGeometry/Entity/3d/Mesh/MeshWalks.h>
#include <ORMIXMath/Index/DisjointSets.h>

namespace ormix::geom {

namespace {

/// Calls `visit` with the half-edge of lowest index of each boundary loop.
template <class Visit>
void visitBoundaryLoops(const MeshTopology& topology, Visit visit) {
  const auto& halfEdges = topology.getHalfEdgeColl();
  std::vector<bool> isVisited;
  for (std::size_t halfEdgeIdx = 0; halfEdgeIdx < halfEdges.size(); ++halfEdgeIdx) {
    if (halfEdges[halfEdgeIdx].oppositeHalfEdgeIdx != s_noHalfEdge) continue;
    isVisited.resize(halfEdges.size());
    if (isVisited[halfEdgeIdx]) continue;
    visitBoundaryLoop(topology, halfEdgeIdx, [&isVisited](std::size_t onLoop) { isVisited[onLoop] = true; });
    visit(halfEdgeIdx);
  }
}

/// Unites the triangles on both sides of each edge, if triangle t has the half-edges 3t, 3t + 1 and 3t + 2, as it
/// mostly has: so that the neighbours' numbers need not be looked up, anywhere in memory. Else returns false.
bool uniteOrderedTriangles(const MeshTopology::HalfEdgeColl& halfEdges, ormix::detail::DisjointSets& triangles) {
  const HalfEdge* halfEdge = halfEdges.data();
  const auto nbTriangles = static_cast<omUInt32>(halfEdges.size() / 3);
  for (omUInt32 triangle = 0; triangle < nbTriangles; ++triangle) {
    omUInt32 lowest = triangle;
    for (const HalfEdge* const end = halfEdge + 3; halfEdge != end; ++halfEdge) {
      if (halfEdge->triangleIdx != triangle) return false;
      const omUInt32 neighbour = halfEdge->oppositeHalfEdgeIdx / 3;
      if (neighbour < triangle) lowest = triangles.extend(lowest, neighbour);
    }
  }
  return true;
}

/// The same for half-edges in any order.
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
  ormix::detail::DisjointSets triangles(topology.getNbTriangles());
  if (!uniteOrderedTriangles(halfEdges, triangles)) {
    triangles = ormix::detail::DisjointSets(topology.getNbTriangles());
    uniteTriangles(halfEdges, triangles);
  }
  return triangles.number(labels);
}

}  // namespace ormix::geom
