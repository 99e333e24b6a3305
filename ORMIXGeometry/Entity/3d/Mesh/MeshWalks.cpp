#include <ORMIXGeometry/Entity/3d/Mesh/MeshWalks.h>
#include <ORMIXMath/Index/DisjointSets.h>

namespace ormix::geom {

namespace {

/// Calls `visit` with the half-edge of lowest index of each boundary loop.
template <class Visit>
void visitBoundaryLoops(const MeshTopology& topology, Visit visit) {
  std::vector<bool> isVisited(topology.getNbHalfEdges());
  for (std::size_t halfEdgeIdx = 0; halfEdgeIdx < topology.getNbHalfEdges(); ++halfEdgeIdx) {
    if (isVisited[halfEdgeIdx] || topology.getHalfEdgeColl()[halfEdgeIdx].oppositeHalfEdgeIdx != s_noHalfEdge) continue;
    visitBoundaryLoop(topology, halfEdgeIdx, [&isVisited](std::size_t onLoop) { isVisited[onLoop] = true; });
    visit(halfEdgeIdx);
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
  for (omUInt32 halfEdgeIdx = 0; halfEdgeIdx < halfEdges.size(); ++halfEdgeIdx) {
    const HalfEdge& halfEdge = halfEdges[halfEdgeIdx];
    if (halfEdge.oppositeHalfEdgeIdx == s_noHalfEdge || halfEdge.oppositeHalfEdgeIdx < halfEdgeIdx) continue;
    triangles.unite(halfEdge.triangleIdx, halfEdges[halfEdge.oppositeHalfEdgeIdx].triangleIdx);
  }
  return triangles.number(labels);
}

}  // namespace ormix::geom
