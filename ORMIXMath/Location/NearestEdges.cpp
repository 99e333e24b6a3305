#include <ORMIXMath/Location/NearestEdges.h>
#include <ORMIXMath/Location/RingEdgeTree.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ormix {

struct NearestEdges::Tree {
  detail::RingEdgeTree edges;
};

namespace {

// Squares of coordinates within these magnitudes, and of their differences, are normal numbers.
constexpr omReal64 s_largest = 0x1p500, s_smallest = 0x1p-400;

}  // namespace

NearestEdges::NearestEdges() = default;
NearestEdges::~NearestEdges() = default;
NearestEdges::NearestEdges(NearestEdges&&) noexcept = default;
NearestEdges& NearestEdges::operator=(NearestEdges&&) noexcept = default;

bool NearestEdges::addEdge(const PlanarPoint& start, const PlanarPoint& end) {
  if (start.x == end.x && start.y == end.y) return false;
  _edges.push_back({start.x, start.y, end.x, end.y});
  return true;
}

void NearestEdges::addPoint(const PlanarPoint& point) { _edges.push_back({point.x, point.y, point.x, point.y}); }

bool NearestEdges::build() {
  omReal64 largest = 0, longest = 0;
  bool isFinite = true;
  for (const Edge& edge : _edges) {
    for (const omReal64 coordinate : edge) {
      isFinite = isFinite && std::isfinite(coordinate);
      largest = std::max(largest, std::abs(coordinate));
    }
    longest = std::max({longest, std::abs(edge[2] - edge[0]), std::abs(edge[3] - edge[1])});
  }
  if (!isFinite) {
    _edges.clear();
    return false;
  }
  if (_edges.empty() || largest > s_largest || (longest > 0 && longest < s_smallest)) return true;
  auto tree = std::make_unique<Tree>();
  for (const Edge& edge : _edges) {
    const std::size_t nbBefore = tree->edges.size();
    tree->edges.add({edge[0], edge[1]}, {edge[2], edge[3]});
    // The square of a very short edge vanishes: it is a point.
    if (tree->edges.size() == nbBefore) tree->edges.addPoint({edge[0], edge[1]});
  }
  tree->edges.build();
  _tree = std::move(tree);
  return true;
}

NearestOnRing NearestEdges::nearest(omReal64 x, omReal64 y) const {
  constexpr omReal64 nan = std::numeric_limits<omReal64>::quiet_NaN();
  NearestOnRing found{{nan, nan}, std::numeric_limits<omReal64>::infinity(), 0};
  if (!std::isfinite(x) || !std::isfinite(y)) return found;
  const auto take = [&](std::size_t index) {
    NearestOnRing one = nearestOnRing(_edges[index].data(), 2, x, y);
    one.index = index;
    if (!(found.distance <= one.distance)) found = one;
  };
  if (_tree && std::max(std::abs(x), std::abs(y)) <= s_largest) {
    detail::RingEdgeTree::Effort effort = 0;
    take(_tree->edges.nearest({x, y}, 0, effort).edge);
  } else {
    for (std::size_t index = 0; index < _edges.size(); ++index) take(index);
  }
  return found;
}

}  // namespace ormix
