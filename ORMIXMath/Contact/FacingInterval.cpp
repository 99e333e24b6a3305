#include <ORMIXMath/Contact/FacingInterval.h>
#include <ORMIXMath/Distance/Orientation.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ormix::detail {

namespace {

/// The coordinates of a vector along and across a direction of length 1.
PlanarPoint turned(const PlanarPoint& direction, const PlanarPoint& vector) {
  return {direction.x * vector.x + direction.y * vector.y, direction.x * vector.y - direction.y * vector.x};
}

/// The interval on an edge. What rounding alone keeps from an end of the edge ends there, or is nothing where it
/// touches that end only.
EdgeInterval onEdge(EdgeInterval interval, omReal64 length) {
  const omReal64 rounding = 4 * std::numeric_limits<omReal64>::epsilon() * length;
  if (interval.high <= rounding || interval.low >= length - rounding) return {0, 0};
  if (interval.low <= rounding) interval.low = 0;
  if (interval.high >= length - rounding) interval.high = length;
  return interval;
}

void add(EdgeInterval& interval, omReal64 low, omReal64 high) {
  interval.low = std::min(interval.low, low);
  interval.high = std::max(interval.high, high);
}

/// The places at the gap from a point.
void addDisc(EdgeInterval& interval, const PlanarPoint& center, omReal64 gap) {
  const omReal64 across = std::abs(center.y);
  if (!(across <= gap)) return;
  const omReal64 half = std::sqrt((gap - across) * (gap + across));
  add(interval, center.x - half, center.x + half);
}

/// The places whose foot on the other edge's line is on the other edge, and whose distance from it is at most the gap.
void addStrip(EdgeInterval& interval, const EdgeView& other, omReal64 gap) {
  omReal64 low = other.footAtEnd();
  omReal64 high = other.footAtStart();
  // Clipped between both ends, and not where two lines cross, as these may be nearly parallel.
  const omReal64 offset = other.offset();
  const omReal64 atLow = offset - other.direction.y * low;
  const omReal64 atHigh = offset - other.direction.y * high;
  if (std::min(atLow, atHigh) > gap || std::max(atLow, atHigh) < -gap) return;
  const auto cut = [&](omReal64 value) { return low + (high - low) * ((value - atLow) / (atHigh - atLow)); };
  omReal64 from = low, to = high;
  if (std::abs(atLow) > gap) from = cut(std::copysign(gap, atLow));
  if (std::abs(atHigh) > gap) to = cut(std::copysign(gap, atHigh));
  if (from <= to) add(interval, from, to);
}

}  // namespace

EdgeView::EdgeView(const BoundaryEdge& edge, const BoundaryEdge& other)
    : start(turned(edge.direction, {other.start.x - edge.start.x, other.start.y - edge.start.y})),
      end(turned(edge.direction, {other.end.x - edge.start.x, other.end.y - edge.start.y})),
      direction(turned(edge.direction, other.direction)),
      length(other.length) {}

EdgeInterval facingInterval(omReal64 length, const EdgeView& other, omReal64 gap) {
  EdgeInterval interval{std::numeric_limits<omReal64>::infinity(), -std::numeric_limits<omReal64>::infinity()};
  addDisc(interval, other.start, gap);
  addDisc(interval, other.end, gap);
  addStrip(interval, other, gap);
  return onEdge(interval, length);
}

EdgeInterval facingInterval(const BoundaryEdge& edge, const BoundaryEdge& other, omReal64 gap) {
  const EdgeView view(edge, other);
  if (gap > 0) return facingInterval(edge.length, view, gap);
  if (orientation(edge.start, edge.end, other.start) != 0 || orientation(edge.start, edge.end, other.end) != 0)
    return {0, 0};
  return onEdge({view.end.x, view.start.x}, edge.length);
}

void uniteInterval(std::vector<EdgeInterval>& intervals, const EdgeInterval& added) {
  const auto first = std::lower_bound(intervals.begin(), intervals.end(), added.low,
                                      [](const EdgeInterval& interval, omReal64 low) { return interval.high < low; });
  auto last = first;
  EdgeInterval united = added;
  for (; last != intervals.end() && last->low <= added.high; ++last) add(united, last->low, last->high);
  if (first == last) {
    intervals.insert(first, added);
    return;
  }
  *first = united;
  intervals.erase(first + 1, last);
}

}  // namespace ormix::detail
