#include <ORMIXMath/Contact/ContactIntervals.h>

#include <algorithm>

namespace ormix::detail {

namespace {

bool covers(const EdgeInterval& interval, const BoundaryEdge& edge) {
  return interval.low <= 0 && interval.high >= edge.length;
}

/// Looks for an edge that covers all of an edge, near the one that covered the edge before: mostly one does.
/// \return its index, or the number of the others where there is none
std::size_t coveringNear(const BoundaryEdge& edge, const std::vector<BoundaryEdge>& others, std::size_t last,
                         omReal64 gap) {
  constexpr std::size_t reach = 2;
  const std::size_t end = std::min(last + reach + 1, others.size());
  for (std::size_t i = last < reach ? 0 : last - reach; i < end; ++i)
    if (isFacing(edge, others[i]) && covers(facingInterval(edge, others[i], gap), edge)) return i;
  return others.size();
}

}  // namespace

std::vector<ContactInterval> contactIntervals(const std::vector<BoundaryEdge>& edges, const FacingIndex& others,
                                              omReal64 gap) {
  std::vector<ContactInterval> result;
  if (others.edges().empty()) return result;
  std::vector<EdgeInterval> intervals;
  const omReal64 squareGap = gap * gap;
  std::size_t covering = 0;
  for (std::size_t i = 0; i < edges.size(); ++i) {
    const BoundaryEdge& edge = edges[i];
    if (const std::size_t near = coveringNear(edge, others.edges(), covering, gap); near < others.edges().size()) {
      covering = near;
      result.push_back({i, {0, edge.length}});
      continue;
    }
    intervals.clear();
    others.visitFacing(edge, squareGap, [&](std::size_t other, omReal64 bound) {
      const EdgeInterval interval = facingInterval(edge, others.edges()[other], gap);
      if (interval.empty()) return bound;
      uniteInterval(intervals, interval);
      if (!covers(intervals.front(), edge)) return bound;
      covering = other;
      return -1.0;
    });
    for (const EdgeInterval& interval : intervals) result.push_back({i, interval});
  }
  return result;
}

}  // namespace ormix::detail
