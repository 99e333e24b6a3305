#pragma once

#include <ORMIXSerialization/Archive/PackedCoordinates.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <limits>

namespace ormix::geom {

/// Stands for a half-edge that is not there: the opposite one of an edge on a boundary.
inline constexpr omUInt32 s_noHalfEdge = std::numeric_limits<omUInt32>::max();

/// One side of an edge, as the triangle sees it that lies there. It runs from its start vertex to that of the next
/// half-edge of its triangle; the opposite half-edge runs the other way along the same edge.
struct HalfEdge {
  omUInt32 startVertexIdx;
  omUInt32 nextHalfEdgeIdx;
  omUInt32 oppositeHalfEdgeIdx;  ///< `s_noHalfEdge` on a boundary
  omUInt32 triangleIdx;

  friend constexpr bool operator==(const HalfEdge& a, const HalfEdge& b) {
    return a.startVertexIdx == b.startVertexIdx && a.nextHalfEdgeIdx == b.nextHalfEdgeIdx &&
           a.oppositeHalfEdgeIdx == b.oppositeHalfEdgeIdx && a.triangleIdx == b.triangleIdx;
  }
  friend constexpr bool operator!=(const HalfEdge& a, const HalfEdge& b) { return !(a == b); }
};

}  // namespace ormix::geom

namespace ormix {

/// A run of half-edges is one numeric array of four columns, in the order of the members.
template <>
struct PackedCoordinates<geom::HalfEdge> {
  using Scalar = omUInt32;
  static constexpr std::size_t nbColumns = 4;
};

}  // namespace ormix
