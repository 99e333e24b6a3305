#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopology.h>
#include <ORMIXGeometry/Export.h>

#include <cstddef>
#include <vector>

namespace ormix::geom {

/// Calls `visit(halfEdgeIdx)` with each half-edge of one fan: those that start where the given one does and are reached
/// from it by crossing edges, in the sense in which the triangles turn. The walk around an inner vertex begins with the
/// given half-edge; that around a vertex on the boundary begins with the half-edge on the boundary. Where several fans
/// touch in the vertex, the others are not visited. Linear in the fan, without memory of its own.
/// \return whether the fan is closed: whether the walk came back to where it began
/// \throw ORMIXGeometryException, logged, for an invalid index, as all functions here
template <class Visit>
bool visitFan(const MeshTopology& topology, std::size_t halfEdgeIdx, Visit visit) {
  omUInt32 first = static_cast<omUInt32>(halfEdgeIdx);
  omUInt32 opposite = topology.getHalfEdge(halfEdgeIdx).oppositeHalfEdgeIdx;
  const HalfEdge* halfEdges = topology.getHalfEdgeColl().data();
  while (opposite != s_noHalfEdge) {
    first = halfEdges[opposite].nextHalfEdgeIdx;
    if (first == halfEdgeIdx) break;
    opposite = halfEdges[first].oppositeHalfEdgeIdx;
  }
  omUInt32 current = first;
  do {
    const HalfEdge& halfEdge = halfEdges[current];
    visit(std::size_t{current});
    current = halfEdges[halfEdges[halfEdge.nextHalfEdgeIdx].nextHalfEdgeIdx].oppositeHalfEdgeIdx;
  } while (current != first && current != s_noHalfEdge);
  return current == first;
}

/// Calls `visit(halfEdgeIdx)` with each half-edge of the boundary loop that the given one is on, in the sense in which
/// they run; with none when it is not on a boundary. A loop stays in the fan through which it comes to a vertex, so
/// that each half-edge on a boundary is on one loop, and a loop may come to the same vertex twice. Its steps turn
/// around vertices: linear in the half-edges that start on it.
template <class Visit>
void visitBoundaryLoop(const MeshTopology& topology, std::size_t halfEdgeIdx, Visit visit) {
  if (topology.getHalfEdge(halfEdgeIdx).oppositeHalfEdgeIdx != s_noHalfEdge) return;
  const HalfEdge* halfEdges = topology.getHalfEdgeColl().data();
  omUInt32 current = static_cast<omUInt32>(halfEdgeIdx);
  do {
    visit(std::size_t{current});
    current = halfEdges[current].nextHalfEdgeIdx;
    while (halfEdges[current].oppositeHalfEdgeIdx != s_noHalfEdge)
      current = halfEdges[halfEdges[current].oppositeHalfEdgeIdx].nextHalfEdgeIdx;
  } while (current != halfEdgeIdx);
}

/// For each vertex a half-edge that starts there, on the boundary if one is, or `s_noHalfEdge`: where walks around a
/// vertex begin. Linear.
ORMIX_GEOMETRY_API std::vector<omUInt32> collectOutgoingHalfEdges(const MeshTopology& topology, std::size_t nbVertices);

/// Sets `ring` to the neighbours of the vertex where the given half-edge starts, in its fan (see `visitFan`) and in
/// order; those of a vertex on the boundary from one boundary edge to the other. \return whether the ring is closed
ORMIX_GEOMETRY_API bool collectOneRing(const MeshTopology& topology, std::size_t halfEdgeIdx,
                                       std::vector<std::size_t>& ring);

/// The number of boundary loops, see `visitBoundaryLoop`. Linear.
ORMIX_GEOMETRY_API std::size_t getNbBoundaryLoops(const MeshTopology& topology);
/// The half-edges of each boundary loop, in order; loops and their first half-edges in order of index. Linear.
ORMIX_GEOMETRY_API std::vector<std::vector<std::size_t>> collectBoundaryLoops(const MeshTopology& topology);

/// The number of connected components: triangles that share an edge are in the same one, triangles that only touch in a
/// vertex need not be. Vertices without triangles count as nothing. Linear.
ORMIX_GEOMETRY_API std::size_t getNbComponents(const MeshTopology& topology);
/// Sets `labels` to the component of each triangle, counted from 0 in order of their first triangles.
/// \return the number of components
ORMIX_GEOMETRY_API std::size_t labelComponents(const MeshTopology& topology, std::vector<omUInt32>& labels);

}  // namespace ormix::geom
