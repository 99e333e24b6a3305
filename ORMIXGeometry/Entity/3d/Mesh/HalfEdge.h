#pragma once

#include <ORMIXSerialization/Archive/PackedCoordinates.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <limits>

namespace ormix::geom {

/// The index that means "no half-edge": the opposite of a half-edge on a boundary.
inline constexpr omUInt32 s_noHalfEdge = std::numeric_limits<omUInt32>::max();

/// A directed edge of one triangle. It runs from its start vertex to the start vertex of the next half-edge of the
/// triangle; the opposite half-edge, of the neighbour, runs the other way along the same edge.
struct HalfEdge {
  omUInt32 startVertexIdx;       ///< index of the vertex where it starts
  omUInt32 nextHalfEdgeIdx;      ///< index of the next half-edge of the same triangle
  omUInt32 oppositeHalfEdgeIdx;  ///< index of the opposite half-edge, `s_noHalfEdge` on a boundary
  omUInt32 triangleIdx;          ///< index of the triangle

  friend constexpr bool operator==(const HalfEdge& a, const HalfEdge& b) {
    return a.startVertexIdx == b.startVertexIdx && a.nextHalfEdgeIdx == b.nextHalfEdgeIdx &&
           a.oppositeHalfEdgeIdx == b.oppositeHalfEdgeIdx && a.triangleIdx == b.triangleIdx;
  }
  friend constexpr bool operator!=(const HalfEdge& a, const HalfEdge& b) { return !(a == b); }
};

}  // namespace ormix::geom

namespace ormix {

/// A vector of half-edges is archived as one numeric array of four columns, in order of the members.
template <>
struct PackedCoordinates<geom::HalfEdge> {
  using Scalar = omUInt32;                     ///< type of the numbers
  static constexpr std::size_t nbColumns = 4;  ///< one a member
};

}  // namespace ormix
