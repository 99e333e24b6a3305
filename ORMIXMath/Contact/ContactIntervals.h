#pragma once

#include <ORMIXMath/Contact/FacingIndex.h>

/// \file
/// Which parts of a boundary lie near another boundary that faces them; not installed.

namespace ormix::detail {

/// A part of an edge.
struct ContactInterval {
  std::size_t edge;
  EdgeInterval interval;
};

/// The parts of edges within the gap of other edges that face them, in order of the edges and along them; those of an
/// edge are apart. About O(n log m) for n edges and m other ones where edges are covered by few of the others. An edge
/// that is not covered takes time for all edges that face it within the gap: at worst O(n m).
ORMIX_MATH_API std::vector<ContactInterval> contactIntervals(const std::vector<BoundaryEdge>& edges,
                                                             const FacingIndex& others, omReal64 gap);

}  // namespace ormix::detail
