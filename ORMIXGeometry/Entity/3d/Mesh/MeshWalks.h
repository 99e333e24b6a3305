#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/MeshTopology.h>
#include <ORMIXGeometry/Export.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ormix::geom {

namespace detail {

/// The most half-edges of a fan that is walked once.
inline constexpr int s_nbShortFan = 10;

/// Visits the half-edges of a closed fan from `first` on to the one before `current`, counter-clockwise; false, with
/// none visited, when the fan is open or longer than `s_nbShortFan`. The half-edges are looked for clockwise, one a
/// call, and visited on the way back: by that time the fan is known to be closed, and they are still in registers.
template <int nbBefore = 1, class Visit>
bool visitShortFan(const HalfEdge* halfEdges, omUInt32 first, omUInt32 current, Visit& visit) {
  const omUInt32 opposite = halfEdges[current].oppositeHalfEdgeIdx;
  if (opposite == s_noHalfEdge) return false;
  // Where vertices are visited in order of the triangles, those near here are next. One line a fan, so that nothing is
  // lost where they are not.
  constexpr std::uintptr_t ahead = 128 * sizeof(HalfEdge);
  if constexpr (nbBefore == 2)
    __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(halfEdges + opposite) + ahead));
  const omUInt32 clockwise = halfEdges[opposite].nextHalfEdgeIdx;
  if (clockwise != first) {
    if constexpr (nbBefore == s_nbShortFan)
      return false;
    else if (!visitShortFan<nbBefore + 1>(halfEdges, first, clockwise, visit))
      return false;
  }
  visit(std::size_t{clockwise});
  return true;
}

}  // namespace detail

/// Calls `visit(halfEdgeIdx)` with each half-edge of one fan: those that start at the same vertex as the given one and
/// are reached from it by crossing edges, counter-clockwise as seen from outside. Around an inner vertex the walk
/// begins with the given half-edge, around a vertex on the boundary with the half-edge on the boundary. If several fans
/// touch in the vertex, only one is visited. Linear in the fan; nothing is allocated.
/// \return whether the fan is closed, so that the walk returned to its beginning
/// \throw ORMIXGeometryException, logged, for an invalid index, as all functions here
template <class Visit>
bool visitFan(const MeshTopology& topology, std::size_t halfEdgeIdx, Visit visit) {
  omUInt32 opposite = topology.getHalfEdge(halfEdgeIdx).oppositeHalfEdgeIdx;
  const HalfEdge* halfEdges = topology.getHalfEdgeColl().data();
  omUInt32 first = static_cast<omUInt32>(halfEdgeIdx);
  if (detail::visitShortFan(halfEdges, first, first, visit)) return true;
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

/// Calls `visit(halfEdgeIdx)` with each half-edge of the boundary loop that contains the given one, in their direction;
/// with none when it is not on a boundary. In a vertex where several fans touch, a loop continues within the fan of the
/// half-edge that leads to the vertex. Each half-edge on a boundary is therefore on one loop, and a loop may pass
/// through a vertex twice. Linear in the half-edges that start at vertices of the loop.
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

/// For each vertex a half-edge that starts there, one on the boundary if there is any, or `s_noHalfEdge`: the beginning
/// of a walk around the vertex. Linear.
ORMIX_GEOMETRY_API std::vector<omUInt32> collectOutgoingHalfEdges(const MeshTopology& topology, std::size_t nbVertices);

/// Sets `ring` to the vertices that are neighbours of the start vertex of the given half-edge in its fan, in order of
/// `visitFan`; for a vertex on the boundary from one boundary edge to the other.
/// \return whether the ring is closed
ORMIX_GEOMETRY_API bool collectOneRing(const MeshTopology& topology, std::size_t halfEdgeIdx,
                                       std::vector<std::size_t>& ring);

/// The number of boundary loops, see `visitBoundaryLoop`. Linear.
ORMIX_GEOMETRY_API std::size_t getNbBoundaryLoops(const MeshTopology& topology);
/// The half-edges of each boundary loop, in order; loops and their first half-edges in order of index. Linear.
ORMIX_GEOMETRY_API std::vector<std::vector<std::size_t>> collectBoundaryLoops(const MeshTopology& topology);

/// The number of connected components: triangles that share an edge are in the same one, triangles that only touch in a
/// vertex need not be. Vertices without triangles are not counted. Linear.
ORMIX_GEOMETRY_API std::size_t getNbComponents(const MeshTopology& topology);
/// Sets `labels` to the number of the component of each triangle; components are numbered from 0 in order of their
/// first triangles. Linear.
/// \return the number of components
ORMIX_GEOMETRY_API std::size_t labelComponents(const MeshTopology& topology, std::vector<omUInt32>& labels);

}  // namespace ormix::geom
