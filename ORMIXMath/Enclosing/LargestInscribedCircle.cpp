#include <ORMIXMath/Enclosing/LargestInscribedCircle.h>
#include <ORMIXMath/Location/RingEdgeTree.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <queue>
#include <string>

namespace ormix {

namespace {

// Squares are dropped where no circle is larger than the best one by this part of it, or of the extent of the rings.
constexpr omReal64 s_tolerance = 1e-9;
constexpr omReal64 s_leastTolerance = 0x1p-50;

// Squares that are cut, and boxes and edges looked at, some of them for each edge:
// some tenths of a second.
constexpr std::size_t s_mostSquares = 100000;
constexpr omUInt64 s_mostEffort = 20000000;
constexpr omUInt64 s_mostEffortOfEdge = 200;

// Squares along the longer side of the box to begin with, at most.
constexpr omReal64 s_mostAlongSide = 32;

// Lines across the box on which a first centre is looked for, and steps from there.
constexpr int s_nbLines = 8;
constexpr int s_mostSteps = 100;

// Edges by which the distance inside a square is bounded; each is a search for the nearest one.
constexpr std::size_t s_mostEdges = 6;

omReal64 dot(const PlanarPoint& a, const PlanarPoint& b) { return a.x * b.x + a.y * b.y; }
omReal64 cross(const PlanarPoint& a, const PlanarPoint& b) { return a.x * b.y - a.y * b.x; }
PlanarPoint combined(omReal64 s, const PlanarPoint& a, omReal64 t, const PlanarPoint& b) {
  return {s * a.x + t * b.x, s * a.y + t * b.y};
}

/// An upper bound of the distance from an edge within a disk, about the disk's centre: value + (gradient, q).
struct LinearBound {
  omReal64 value;
  PlanarPoint gradient;  ///< of length 1
};

/// The largest value of the least of few linear bounds over a disk about the origin.
class BoundsInDisk {
 public:
  explicit BoundsInDisk(omReal64 radius) : _radius(radius) {}

  void add(const LinearBound& bound) { _bounds[_nbBounds++] = bound; }
  std::size_t size() const { return _nbBounds; }

  /// Finds `place`, where the least bound is the largest, and returns a value that is nowhere exceeded: a sum of bounds
  /// with weights that add up to 1 is never less than the least, whatever is rounded.
  omReal64 maximum(PlanarPoint& place) const {
    omReal64 best = -std::numeric_limits<omReal64>::infinity(), limit = 0;
    const auto take = [&](const PlanarPoint& at, omReal64 value) {
      if (const omReal64 least = leastAt(at); least > best) {
        best = least;
        place = at;
        limit = value;
      }
    };
    for (std::size_t i = 0; i < _nbBounds; ++i) {
      take(combined(_radius, _bounds[i].gradient, 0, {}), _bounds[i].value + _radius);
      for (std::size_t j = 0; j < i; ++j) {
        takePair(_bounds[i], _bounds[j], take);
        for (std::size_t k = 0; k < j; ++k) takeTriple(_bounds[i], _bounds[j], _bounds[k], take);
      }
    }
    return limit;
  }

 private:
  omReal64 leastAt(const PlanarPoint& at) const {
    omReal64 least = std::numeric_limits<omReal64>::infinity();
    for (std::size_t i = 0; i < _nbBounds; ++i)
      least = std::min(least, _bounds[i].value + dot(_bounds[i].gradient, at));
    return least;
  }

  /// The two places of the disk's boundary where two bounds are equal.
  template <class Take>
  void takePair(const LinearBound& a, const LinearBound& b, Take take) const {
    const PlanarPoint difference = combined(1, a.gradient, -1, b.gradient);
    const omReal64 square = dot(difference, difference);
    if (!(square > 0)) return;
    const omReal64 part = (b.value - a.value) / square;
    const omReal64 rest = _radius * _radius - part * part * square;
    if (!(rest >= 0)) return;
    const omReal64 along = std::sqrt(rest / square);
    for (const omReal64 sign : {-1.0, 1.0}) {
      const PlanarPoint at = combined(part, difference, sign * along, {-difference.y, difference.x});
      const omReal64 fromA = cross(a.gradient, at), fromB = cross(b.gradient, at);
      const omReal64 weight = fromA == fromB ? 0.5 : std::clamp(fromB / (fromB - fromA), 0.0, 1.0);
      const PlanarPoint gradient = combined(weight, a.gradient, 1 - weight, b.gradient);
      take(at, weight * a.value + (1 - weight) * b.value + _radius * std::sqrt(dot(gradient, gradient)));
    }
  }

  /// The place where three bounds are equal, if it is in the disk and the bounds hold each other there.
  template <class Take>
  void takeTriple(const LinearBound& a, const LinearBound& b, const LinearBound& c, Take take) const {
    const omReal64 fromA = cross(b.gradient, c.gradient), fromB = cross(c.gradient, a.gradient),
                   fromC = cross(a.gradient, b.gradient);
    const omReal64 sum = fromA + fromB + fromC;
    if (sum == 0 || fromA * sum < 0 || fromB * sum < 0 || fromC * sum < 0) return;
    const PlanarPoint u = combined(1, a.gradient, -1, c.gradient), v = combined(1, b.gradient, -1, c.gradient);
    const omReal64 determinant = cross(u, v), toA = c.value - a.value, toB = c.value - b.value;
    const PlanarPoint at{(toA * v.y - toB * u.y) / determinant, (toB * u.x - toA * v.x) / determinant};
    if (!(dot(at, at) <= _radius * _radius)) return;
    const omReal64 wa = fromA / sum, wb = fromB / sum, wc = fromC / sum;
    const PlanarPoint gradient = combined(1, combined(wa, a.gradient, wb, b.gradient), wc, c.gradient);
    take(at, wa * a.value + wb * b.value + wc * c.value + _radius * std::sqrt(dot(gradient, gradient)));
  }

  omReal64 _radius;
  std::array<LinearBound, s_mostEdges> _bounds;
  std::size_t _nbBounds = 0;
};

/// A square, and a bound on the radii of circles with their centre in it.
struct Square {
  PlanarPoint center;
  omReal64 halfSide;
  omReal64 bound;
  std::size_t guess;  ///< an edge near the centre
  bool isInside;      ///< wholly; else not known

  friend bool operator<(const Square& a, const Square& b) { return a.bound < b.bound; }
};

class Search {
 public:
  Search(const detail::RingEdgeTree& tree, const PlanarPoint& low, const PlanarPoint& high) : _tree(tree) {
    start(low, high);
    const omReal64 width = high.x - low.x, height = high.y - low.y;
    const omReal64 side = std::max(std::min(width, height), std::max(width, height) / s_mostAlongSide);
    for (omReal64 y = low.y; y < high.y; y += side)
      for (omReal64 x = low.x; x < high.x; x += side)
        enqueue({{x + 0.5 * side, y + 0.5 * side}, 0.5 * side, std::numeric_limits<omReal64>::infinity(), 0, false});
  }

  /// The largest circle, in the coordinates of the tree.
  InscribedCircle run() {
    const omUInt64 mostEffort = s_mostEffort + s_mostEffortOfEdge * _tree.size();
    for (std::size_t nbSquares = 0; nbSquares < s_mostSquares && _effort < mostEffort; ++nbSquares) {
      if (_queue.empty() || _queue.top().bound <= dropped()) break;
      const Square square = _queue.top();
      _queue.pop();
      const omReal64 quarter = 0.5 * square.halfSide;
      for (const omReal64 dy : {-quarter, quarter})
        for (const omReal64 dx : {-quarter, quarter})
          enqueue({{square.center.x + dx, square.center.y + dy}, quarter, square.bound, square.guess, square.isInside});
    }
    const omReal64 bound = _queue.empty() ? dropped() : std::max(dropped(), _queue.top().bound);
    _best.excess = bound - _best.radius;
    return _best;
  }

 private:
  /// What squares must exceed.
  omReal64 dropped() const { return std::max(_best.radius * (1 + 0.5 * s_tolerance), s_leastTolerance); }

  void improve(const PlanarPoint& center, omReal64 radius) {
    if (radius > _best.radius) _best = {center, radius, 0};
  }

  /// Finds a first circle, so that one is known also where squares are mostly wider than the region: from the middle of
  /// the widest part of some lines it grows while that pays.
  void start(const PlanarPoint& low, const PlanarPoint& high) {
    std::vector<omReal64> xColl;
    for (int line = 0; line < s_nbLines; ++line) {
      const omReal64 y = low.y + (high.y - low.y) * ((line + 0.5) / s_nbLines);
      xColl.clear();
      _tree.crossings(y, xColl, _effort);
      std::sort(xColl.begin(), xColl.end());
      PlanarPoint middle{};
      omReal64 widest = 0;
      for (std::size_t i = 0; i + 1 < xColl.size(); i += 2)
        if (xColl[i + 1] - xColl[i] > widest) {
          widest = xColl[i + 1] - xColl[i];
          middle = {0.5 * (xColl[i] + xColl[i + 1]), y};
        }
      if (widest > 0) improve(middle, std::sqrt(_tree.nearest(middle, 0, _effort).square));
    }
    omReal64 before = 0;
    for (int step = 0; step < s_mostSteps && _best.radius > before * (1 + s_tolerance); ++step) {
      before = _best.radius;
      boundInside(_best.center, 0.5 * before, _tree.nearest(_best.center, 0, _effort));
    }
  }

  void enqueue(Square square) {
    const omReal64 reach = square.halfSide * std::sqrt(2.0);
    const auto nearest = _tree.nearest(square.center, square.guess, _effort);
    const omReal64 distance = std::sqrt(nearest.square);
    square.guess = nearest.edge;
    square.bound = std::min(square.bound, distance + reach);
    if (square.bound <= dropped()) return;
    if (!square.isInside && !_tree.isInside(square.center, _effort)) {
      square.bound = std::min(square.bound, reach - distance);
    } else if (reach < distance) {
      square.isInside = true;
      square.bound = std::min(square.bound, boundInside(square.center, reach, nearest));
    } else {
      improve(square.center, distance);
    }
    if (square.bound > dropped()) _queue.push(square);
  }

  /// A bound for a disk inside the region: the nearest edges of the places where the bounds by the edges so far are
  /// the largest are added one after the other. These places are good centres, too.
  omReal64 boundInside(const PlanarPoint& middle, omReal64 reach, detail::RingEdgeTree::Nearest nearest) {
    omReal64 limit = std::numeric_limits<omReal64>::infinity();
    improve(middle, std::sqrt(nearest.square));
    BoundsInDisk bounds(reach);
    while (bounds.size() < s_mostEdges) {
      bounds.add(boundBy(_tree[nearest.edge], middle, reach));
      PlanarPoint place{};
      limit = std::min(limit, bounds.maximum(place));
      if (limit <= dropped()) break;
      const PlanarPoint center = combined(1, middle, 1, place);
      const auto next = _tree.nearest(center, nearest.edge, _effort);
      const omReal64 radius = std::sqrt(next.square);
      improve(center, radius);
      if (next.edge == nearest.edge || radius >= limit) break;
      nearest = next;
    }
    return limit;
  }

  /// The distance from an edge is at most that from its point nearest to the centre; it is linear where that point
  /// cannot leave the edge.
  static LinearBound boundBy(const detail::RingEdge& edge, const PlanarPoint& center, omReal64 reach) {
    const omReal64 part = edge.nearestPart(center);
    const PlanarPoint to = combined(1, center, -1, edge.at(part));
    const omReal64 distance = std::sqrt(dot(to, to));
    const omReal64 partOfReach = reach * std::sqrt(edge.inverseSquare);
    const bool isLinear = part > partOfReach && part < 1 - partOfReach;
    const omReal64 slack = isLinear ? 0 : 0.5 * reach * reach / (distance - reach);
    return {distance + slack, combined(1 / distance, to, 0, {})};
  }

  const detail::RingEdgeTree& _tree;
  detail::RingEdgeTree::Effort _effort = 0;
  std::priority_queue<Square> _queue;
  InscribedCircle _best{};
};

BoolResult notFinite(std::size_t ring, std::size_t vertex) {
  return failure("Largest circle in rings: vertex " + std::to_string(vertex) + " of ring " + std::to_string(ring) +
                 " has a coordinate that is not a finite number");
}

}  // namespace

BoolResult largestInscribedCircle(const std::vector<RingView>& rings, InscribedCircle& circle) {
  constexpr omReal64 infinity = std::numeric_limits<omReal64>::infinity();
  PlanarPoint low{infinity, infinity}, high{-infinity, -infinity};
  for (std::size_t r = 0; r < rings.size(); ++r)
    for (std::size_t i = 0; i < rings[r].nbVertices; ++i) {
      const omReal64 x = rings[r].xy[2 * i], y = rings[r].xy[2 * i + 1];
      if (!std::isfinite(x) || !std::isfinite(y)) return notFinite(r, i);
      low = {std::min(low.x, x), std::min(low.y, y)};
      high = {std::max(high.x, x), std::max(high.y, y)};
    }
  const omReal64 extent = std::max(high.x - low.x, high.y - low.y);
  if (!(high.x > low.x && high.y > low.y)) return failure("Largest circle in rings: the rings have no inside");
  if (!std::isfinite(extent)) return failure("Largest circle in rings: their extent exceeds every finite number");
  // About the lower left corner and of a size of about 1, by a power of two.
  const omReal64 scale = std::ldexp(1.0, std::clamp(-std::ilogb(extent), -1023, 1023));
  const auto local = [&](const RingView& ring, std::size_t i) -> PlanarPoint {
    return {(ring.xy[2 * i] - low.x) * scale, (ring.xy[2 * i + 1] - low.y) * scale};
  };
  detail::RingEdgeTree tree;
  for (const RingView& ring : rings)
    for (std::size_t i = 0; i < ring.nbVertices; ++i)
      tree.add(local(ring, i), local(ring, i + 1 == ring.nbVertices ? 0 : i + 1));
  if (tree.size() == 0) return failure("Largest circle in rings: the rings have no inside");
  tree.build();
  const PlanarPoint corner{(high.x - low.x) * scale, (high.y - low.y) * scale};
  const InscribedCircle found = Search(tree, {0, 0}, corner).run();
  if (!(found.radius > 0)) return failure("Largest circle in rings: the rings have no inside");
  circle = {
      {low.x + found.center.x / scale, low.y + found.center.y / scale}, found.radius / scale, found.excess / scale};
  return {};
}

}  // namespace ormix
