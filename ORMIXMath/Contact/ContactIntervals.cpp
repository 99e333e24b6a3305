#include <ORMIXMath/Contact/ContactIntervals.h>

namespace ormix::detail {

namespace {

bool covers(const EdgeInterval& interval, const BoundaryEdge& edge) {
  return interval.low <= 0 && interval.high >= edge.length;
}

}  // namespace

std::vector<ContactInterval> contactIntervals(const std::vector<BoundaryEdge>& edges, const FacingIndex& others,
                                              omReal64 gap) {
  std::vector<ContactInterval> result;
  if (others.edges().empty()) return result;
  std::vector<EdgeInterval> intervals;
  const omReal64 squareGap = gap * gap;
  std::size_t guess = 0;  // the edge that covered the last one: mostly it covers the next one, too
  for (std::size_t i = 0; i < edges.size(); ++i) {
    const BoundaryEdge& edge = edges[i];
    const BoundaryEdge& last = others.edges()[guess];
    if (gap > 0 && isFacing(edge, last) && covers(facingInterval(edge, last, gap), edge)) {
      result.push_back({i, {0, edge.length}});
      continue;
    }
    intervals.clear();
    others.visitFacing(edge, squareGap, [&](std::size_t other, omReal64 bound) {
      const EdgeInterval interval = facingInterval(edge, others.edges()[other], gap);
      if (interval.empty()) return bound;
      uniteInterval(intervals, interval);
      if (!covers(intervals.front(), edge)) return bound;
      guess = other;
      return -1.0;
    });
    for (const EdgeInterval& interval : intervals) result.push_back({i, interval});
  }
  return result;
}

}  // namespace ormix::detail
