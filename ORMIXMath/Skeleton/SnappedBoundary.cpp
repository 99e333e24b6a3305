#include <ORMIXMath/Index/BoxPairs.h>
#include <ORMIXMath/Skeleton/SnappedBoundary.h>

#include <algorithm>
#include <sstream>
#include <tuple>
#include <utility>

namespace ormix::detail {

namespace {

/// The greatest coordinate of the grid is 2 to the power of this: Boost's diagrams take 32-bit integers.
constexpr int s_gridBits = 30;

/// A ring's vertex on the grid, and its index in the ring of the caller.
struct SnappedPoint {
  GridPoint point;
  omUInt32 pointIdx;
};

std::string at(const SnapGrid& grid, const PlanarPoint& point) {
  const PlanarPoint place = grid.fromGrid(point);
  std::ostringstream text;
  text.precision(17);
  text << '[' << place.x << ", " << place.y << ']';
  return text.str();
}

PlanarPoint toReal(const GridPoint& point) { return toPlanarPoint(point.x, point.y); }

/// The number of different vertices: without the repeated first one.
std::size_t nbVertices(const RingView& ring) {
  std::size_t nb = ring.nbVertices;
  while (nb > 1 && ring.xy[0] == ring.xy[2 * nb - 2] && ring.xy[1] == ring.xy[2 * nb - 1]) --nb;
  return nb;
}

BoolResult findBox(const std::vector<BoundaryRing>& rings, PlanarPoint& low, PlanarPoint& high) {
  constexpr omReal64 infinity = std::numeric_limits<omReal64>::infinity();
  low = {infinity, infinity};
  high = {-infinity, -infinity};
  for (std::size_t r = 0; r < rings.size(); ++r)
    for (std::size_t i = 0; i < rings[r].vertices.nbVertices; ++i) {
      const omReal64 x = rings[r].vertices.xy[2 * i], y = rings[r].vertices.xy[2 * i + 1];
      if (!std::isfinite(x) || !std::isfinite(y))
        return failure("Vertex " + std::to_string(i) + " of ring " + std::to_string(r) + " is not finite");
      low = {std::min(low.x, x), std::min(low.y, y)};
      high = {std::max(high.x, x), std::max(high.y, y)};
    }
  // An extent below the smallest normal number would need a scale that is not finite.
  if (!(std::max(high.x / 2 - low.x / 2, high.y / 2 - low.y / 2) >= std::numeric_limits<omReal64>::min()))
    return failure("The rings bound no area");
  return true;
}

/// The vertices of a ring on the grid without those that repeat their predecessor, with the region to the left.
std::vector<SnappedPoint> snapRing(const BoundaryRing& ring, omUInt32 ringIdx, const SnapGrid& grid,
                                   MedialAxisReport& report) {
  std::vector<SnappedPoint> points;
  const std::size_t nb = nbVertices(ring.vertices);
  points.reserve(nb);
  for (std::size_t i = 0; i < nb; ++i) {
    const PlanarPoint exact = grid.toGrid({ring.vertices.xy[2 * i], ring.vertices.xy[2 * i + 1]});
    const GridPoint point{static_cast<omInt32>(std::llround(exact.x)), static_cast<omInt32>(std::llround(exact.y))};
    const omReal64 move = std::hypot(exact.x - point.x, exact.y - point.y);
    if (move > 0) ++report.nbMovedPoints;
    report.greatestMove = std::max(report.greatestMove, move);
    if (!points.empty() && points.back().point == point) {
      report.mergedPoints.push_back({ringIdx, static_cast<omUInt32>(i)});
      continue;
    }
    points.push_back({point, static_cast<omUInt32>(i)});
  }
  for (; points.size() > 1 && points.back().point == points.front().point; points.pop_back())
    report.mergedPoints.push_back({ringIdx, points.back().pointIdx});

  long double area = 0;
  for (std::size_t i = 2; i < points.size(); ++i)
    area += static_cast<long double>(cross(points[0].point, points[i - 1].point, points[i].point));
  if (ring.isHole ? area > 0 : area < 0) std::reverse(points.begin(), points.end());
  return points;
}

/// Appends the edges of a ring; a ring of less than three points bounds nothing.
void appendEdges(const std::vector<SnappedPoint>& points, omUInt32 ringIdx, MedialAxisReport& report,
                 std::vector<GridEdge>& edges) {
  if (points.size() < 3) {
    for (const SnappedPoint& point : points) report.lostEdges.push_back({ringIdx, point.pointIdx});
    return;
  }
  const auto first = static_cast<omUInt32>(edges.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    const SnappedPoint& start = points[i];
    const bool isLast = i + 1 == points.size();
    const SnappedPoint& end = isLast ? points.front() : points[i + 1];
    // The edge from the last vertex to the first belongs to the last one, in either direction.
    const bool wraps = std::max(start.pointIdx, end.pointIdx) - std::min(start.pointIdx, end.pointIdx) > 1 && isLast;
    const omUInt32 pointIdx = wraps ? std::max(start.pointIdx, end.pointIdx) : std::min(start.pointIdx, end.pointIdx);
    const auto next = isLast ? first : static_cast<omUInt32>(edges.size() + 1);
    edges.push_back({start.point, end.point, ringIdx, pointIdx, start.pointIdx, next});
  }
}

/// Where edges have to be divided, and whether one of the places had to be rounded to the grid.
struct Divisions {
  std::vector<std::pair<omUInt32, GridPoint>> places;
  bool areRounded = false;
};

bool isBetween(const GridEdge& edge, const GridPoint& point) {
  return point != edge.start && point != edge.end && std::min(edge.start.x, edge.end.x) <= point.x &&
         point.x <= std::max(edge.start.x, edge.end.x) && std::min(edge.start.y, edge.end.y) <= point.y &&
         point.y <= std::max(edge.start.y, edge.end.y);
}

int sign(omInt64 value) { return (value > 0) - (value < 0); }

/// The point where two edges cross, in the grid.
PlanarPoint crossingOf(const GridEdge& a, const GridEdge& b) {
  const auto from = static_cast<omReal64>(cross(b.start, b.end, a.start));
  const auto to = static_cast<omReal64>(cross(b.start, b.end, a.end));
  const omReal64 part = from / (from - to);
  return {a.start.x + part * (omReal64(a.end.x) - a.start.x), a.start.y + part * (omReal64(a.end.y) - a.start.y)};
}

/// Adds the places where a pair of edges meets elsewhere than at ends of both.
/// \return false where the edges cross and a crossing cannot come from rounding
bool divide(const std::vector<GridEdge>& edges, omUInt32 i, omUInt32 j, Divisions& divisions) {
  const GridEdge &a = edges[i], &b = edges[j];
  const int aStart = sign(cross(b.start, b.end, a.start)), aEnd = sign(cross(b.start, b.end, a.end));
  const int bStart = sign(cross(a.start, a.end, b.start)), bEnd = sign(cross(a.start, a.end, b.end));
  if (aStart * aEnd < 0 && bStart * bEnd < 0) {
    const PlanarPoint place = crossingOf(a, b);
    const GridPoint point{static_cast<omInt32>(std::llround(place.x)), static_cast<omInt32>(std::llround(place.y))};
    // A point moves by less than one unit, so that edges that did not cross come at most so far across each other.
    constexpr omReal64 reach = 2;
    const auto isNear = [&](const GridPoint& end) { return std::hypot(end.x - place.x, end.y - place.y) <= reach; };
    const auto isThin = [&](const GridEdge& of, const GridEdge& to) {
      const omReal64 length = std::hypot(omReal64(to.end.x) - to.start.x, omReal64(to.end.y) - to.start.y);
      return std::min(std::abs(static_cast<omReal64>(cross(to.start, to.end, of.start))),
                      std::abs(static_cast<omReal64>(cross(to.start, to.end, of.end)))) <= reach * length;
    };
    if (!isNear(a.start) && !isNear(a.end) && !isNear(b.start) && !isNear(b.end) && !isThin(a, b) && !isThin(b, a))
      return false;
    divisions.areRounded = true;
    if (point != a.start && point != a.end) divisions.places.emplace_back(i, point);
    if (point != b.start && point != b.end) divisions.places.emplace_back(j, point);
    return true;
  }
  if (aStart == 0 && isBetween(b, a.start)) divisions.places.emplace_back(j, a.start);
  if (aEnd == 0 && isBetween(b, a.end)) divisions.places.emplace_back(j, a.end);
  if (bStart == 0 && isBetween(a, b.start)) divisions.places.emplace_back(i, b.start);
  if (bEnd == 0 && isBetween(a, b.end)) divisions.places.emplace_back(i, b.end);
  return true;
}

/// Divides edges at the places, in order along each edge.
void applyDivisions(Divisions& divisions, std::vector<GridEdge>& edges, MedialAxisReport& report) {
  const auto along = [&edges](omUInt32 edge, const GridPoint& point) {
    const GridPoint& start = edges[edge].start;
    return std::abs(omInt64{point.x} - start.x) + std::abs(omInt64{point.y} - start.y);
  };
  auto& places = divisions.places;
  std::sort(places.begin(), places.end(), [&along](const auto& a, const auto& b) {
    return std::make_tuple(a.first, along(a.first, a.second), a.second.x, a.second.y) <
           std::make_tuple(b.first, along(b.first, b.second), b.second.x, b.second.y);
  });
  places.erase(std::unique(places.begin(), places.end()), places.end());
  for (std::size_t first = 0; first < places.size();) {
    const omUInt32 edge = places[first].first;
    omUInt32 current = edge;
    ++report.nbSplitEdges;
    std::size_t last = first;
    for (; last < places.size() && places[last].first == edge; ++last) {
      GridEdge rest = edges[current];
      rest.start = places[last].second;
      edges[current].end = rest.start;
      edges[current].next = static_cast<omUInt32>(edges.size());
      current = edges[current].next;
      edges.push_back(rest);
    }
    first = last;
  }
}

/// Finds where edges meet, and divides them until they have at most ends in common.
BoolResult divideEdges(SnappedBoundary& boundary, MedialAxisReport& report) {
  // Rounding the place of a crossing moves edges, which may cross others then: mostly once, rarely twice.
  constexpr int s_maxNbRounds = 8;
  for (int round = 0; round < s_maxNbRounds; ++round) {
    std::vector<GridEdge>& edges = boundary.edges;
    std::vector<IndexBox<2>> boxes;
    boxes.reserve(edges.size());
    for (const GridEdge& edge : edges) {
      IndexBox<2> box;
      box.add(IndexPoint<2>{omReal64(edge.start.x), omReal64(edge.start.y)});
      box.add(IndexPoint<2>{omReal64(edge.end.x), omReal64(edge.end.y)});
      boxes.push_back(box);
    }
    const BoxTree<2> tree(boxes, eBO_Given);
    Divisions divisions;
    std::string crossing;
    visitPairs(tree, 0.0, [&](std::size_t i, std::size_t j) {
      if (divide(edges, static_cast<omUInt32>(i), static_cast<omUInt32>(j), divisions)) return true;
      crossing = "The boundary crosses itself at " + at(boundary.grid, crossingOf(edges[i], edges[j])) + ", edge " +
                 std::to_string(edges[i].pointIdx) + " of ring " + std::to_string(edges[i].ringIdx) + " and edge " +
                 std::to_string(edges[j].pointIdx) + " of ring " + std::to_string(edges[j].ringIdx);
      return false;
    });
    if (!crossing.empty()) return failure(crossing);
    applyDivisions(divisions, edges, report);
    if (!divisions.areRounded) return true;
  }
  return failure("The boundary crosses itself at the resolution of the grid");
}

/// Removes edges that cover each other from both sides.
BoolResult cancelEdges(SnappedBoundary& boundary, MedialAxisReport& report) {
  std::vector<GridEdge>& edges = boundary.edges;
  std::vector<omUInt32> order(edges.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = static_cast<omUInt32>(i);
  const auto key = [&edges](omUInt32 i) {
    const auto ends = std::minmax(edges[i].start, edges[i].end);
    return std::pair<GridPoint, GridPoint>(ends.first, ends.second);
  };
  std::sort(order.begin(), order.end(), [&](omUInt32 a, omUInt32 b) { return key(a) < key(b); });
  std::vector<char> isLost(edges.size(), 0);
  for (std::size_t first = 0; first < order.size();) {
    std::size_t last = first;
    int forward = 0;
    for (; last < order.size() && key(order[last]) == key(order[first]); ++last)
      forward += edges[order[last]].start < edges[order[last]].end ? 1 : -1;
    if (std::abs(forward) > 1)
      return failure("Edges " + std::to_string(edges[order[first]].pointIdx) + " of ring " +
                     std::to_string(edges[order[first]].ringIdx) + " and " +
                     std::to_string(edges[order[first + 1]].pointIdx) + " of ring " +
                     std::to_string(edges[order[first + 1]].ringIdx) + " cover each other at " +
                     at(boundary.grid, toReal(edges[order[first]].start)));
    for (std::size_t k = first; k < last; ++k) {
      const bool isForward = edges[order[k]].start < edges[order[k]].end;
      const bool stays = forward != 0 && isForward == (forward > 0);
      if (stays) forward = 0;
      isLost[order[k]] = !stays;
    }
    first = last;
  }
  // A ring goes on behind lost edges; each of these is passed over once, as the one before is redirected.
  std::vector<omUInt32> newIndex(edges.size(), s_none);
  std::vector<GridEdge> kept;
  kept.reserve(edges.size());
  for (std::size_t i = 0; i < edges.size(); ++i)
    if (isLost[i]) {
      report.lostEdges.push_back({edges[i].ringIdx, edges[i].pointIdx});
    } else {
      newIndex[i] = static_cast<omUInt32>(kept.size());
      kept.push_back(edges[i]);
    }
  for (GridEdge& edge : kept) {
    omUInt32 next = edge.next;
    while (isLost[next]) next = edges[next].next;
    edge.next = newIndex[next];
  }
  edges = std::move(kept);
  return true;
}

}  // namespace

SnapGrid::SnapGrid(const PlanarPoint& low, const PlanarPoint& high, omReal64 angle)
    : _cos(std::cos(angle)), _sin(std::sin(angle)) {
  const omReal64 halfWidth = high.x / 2 - low.x / 2, halfHeight = high.y / 2 - low.y / 2;
  const int magnitude = std::ilogb(std::max(halfWidth, halfHeight)) + 1;
  // A center on a coarse grid of powers of two, so that integers, and halves of them, stay on the grid.
  constexpr int s_centerBits = 12;
  const auto coarse = [&](omReal64 value) {
    return std::ldexp(std::nearbyint(std::ldexp(value, s_centerBits - magnitude)), magnitude - s_centerBits);
  };
  _center = {low.x / 2 + high.x / 2, low.y / 2 + high.y / 2};
  const PlanarPoint rounded{coarse(_center.x), coarse(_center.y)};
  if (std::isfinite(rounded.x) && std::isfinite(rounded.y)) _center = rounded;
  const omReal64 reachX = std::max(high.x - _center.x, _center.x - low.x);
  const omReal64 reachY = std::max(high.y - _center.y, _center.y - low.y);
  const omReal64 reach = angle == 0 ? std::max(reachX, reachY) : std::hypot(reachX, reachY);
  _exponent = s_gridBits - (std::ilogb(reach) + 1);
}

PlanarPoint SnapGrid::toGrid(const PlanarPoint& point) const {
  const omReal64 x = std::ldexp(point.x - _center.x, _exponent), y = std::ldexp(point.y - _center.y, _exponent);
  return {_cos * x - _sin * y, _sin * x + _cos * y};
}

PlanarPoint SnapGrid::fromGrid(const PlanarPoint& point) const {
  const omReal64 x = _cos * point.x + _sin * point.y, y = _cos * point.y - _sin * point.x;
  return {_center.x + std::ldexp(x, -_exponent), _center.y + std::ldexp(y, -_exponent)};
}

BoolResult snapBoundary(const std::vector<BoundaryRing>& rings, omReal64 angle, SnappedBoundary& boundary,
                        MedialAxisReport& report) {
  PlanarPoint low, high;
  if (const BoolResult found = findBox(rings, low, high); !found) return found;
  boundary.grid = SnapGrid(low, high, angle);
  boundary.edges.clear();
  report.gridUnit = boundary.grid.getUnit();
  for (std::size_t r = 0; r < rings.size(); ++r)
    appendEdges(snapRing(rings[r], static_cast<omUInt32>(r), boundary.grid, report), static_cast<omUInt32>(r), report,
                boundary.edges);
  report.greatestMove = boundary.grid.lengthFromGrid(report.greatestMove);
  if (const BoolResult divided = divideEdges(boundary, report); !divided) return divided;
  if (const BoolResult cancelled = cancelEdges(boundary, report); !cancelled) return cancelled;
  if (boundary.edges.empty()) return failure("The rings bound no area");
  return true;
}

}  // namespace ormix::detail
