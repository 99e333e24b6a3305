#pragma once

#include <ORMIXMath/Contact/BoundaryRings.h>

#include <vector>

/// \file
/// The part of an edge that is near another one that faces it; not installed.

namespace ormix::detail {

/// A part of an edge, by distances from its start; empty where it is not low < high.
struct EdgeInterval {
  omReal64 low;
  omReal64 high;

  bool empty() const { return !(low < high); }
};

/// Another edge as it is seen from an edge: in the frame whose origin is that edge's start and whose x axis its
/// direction.
struct EdgeView {
  PlanarPoint start;
  PlanarPoint end;
  PlanarPoint direction;  ///< x < 0 of an edge that faces
  omReal64 length;

  EdgeView(const BoundaryEdge& edge, const BoundaryEdge& other);

  /// The places on the x axis whose foot on the line of this edge is its end, and its start.
  omReal64 footAtEnd() const { return start.x + (length + direction.y * start.y) / direction.x; }
  omReal64 footAtStart() const { return start.x + direction.y * start.y / direction.x; }
  /// The distance of the place x from this edge's line is |offset() - direction.y x|.
  omReal64 offset() const { return direction.y * start.x - direction.x * start.y; }
};

/// Whether two edges face each other: their directions oppose, that is, are at more than a right angle. Borders that
/// meet at right angles must not do so by rounding, not by that of omReal32 either: hence a margin of 1e-6.
inline bool isFacing(const BoundaryEdge& edge, const BoundaryEdge& other) {
  return edge.direction.x * other.direction.x + edge.direction.y * other.direction.y < -1e-6;
}

/// The part of an edge within the gap of another edge that faces it: the line through the edge cuts the set of all
/// points within the gap, which is convex (a stadium), in an interval. With gap 0 the part that both have in common,
/// where they lie on one line as orientation() decides it.
ORMIX_MATH_API EdgeInterval facingInterval(const BoundaryEdge& edge, const BoundaryEdge& other, omReal64 gap);

/// The same for a gap above 0 and another edge that is seen already.
EdgeInterval facingInterval(omReal64 length, const EdgeView& other, omReal64 gap);

/// Adds an interval to ones that ascend and are apart; those that touch become one.
void uniteInterval(std::vector<EdgeInterval>& intervals, const EdgeInterval& added);

}  // namespace ormix::detail
