#include <ORMIXMath/Distance/DirectedHausdorff.h>
#include <ORMIXMath/Distance/NearestOnSegments.h>
#include <ORMIXMath/Distance/PointSegmentDistance.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace ormix::detail {

namespace {

constexpr omReal64 s_infinity = std::numeric_limits<omReal64>::infinity();

PlanarPoint between(const PlanarPoint& p, const PlanarPoint& q, omReal64 part) {
  if (part == 0) return p;
  if (part == 1) return q;
  return {p.x + part * (q.x - p.x), p.y + part * (q.y - p.y)};
}

bool isInside(const PlanarSet& set, const PlanarPoint& point) {
  if (!set.region) return false;
  const RingCrossings crossings = set.region->crossings(point.x, point.y);
  return crossings.isOdd && !crossings.isOnBoundary;
}

/// A point and what is nearest to it on the boundary of b.
struct Place {
  PlanarPoint point;
  std::size_t item;
  omReal64 distance;
};

omReal64 distanceTo(const SegmentSet& b, std::size_t item, const PlanarPoint& point) {
  PlanarPoint nearest;
  return pointSegmentDistance(point, b[item], nearest);
}

/// The nearest segment to a point.
/// \param guess any of the segments; a near one saves time
Place placeAt(const SegmentSet& b, const PlanarPoint& point, std::size_t guess) {
  Place place{point, guess, distanceTo(b, guess, point)};
  b.tree().nearest(IndexPoint<2>{point.x, point.y}, place.distance * place.distance, [&](std::size_t item) {
    const omReal64 distance = distanceTo(b, item, point);
    if (!(distance < place.distance)) return s_infinity;
    place = {point, item, distance};
    return distance * distance;
  });
  return place;
}

/// The largest distance so far, and the bound below which nothing is of interest.
class Best {
 public:
  /// \param start any point of a
  Best(const PlanarSet& b, const PlanarPoint& start, omReal64 floor, omReal64 magnitude)
      : _b(b), _value(floor), _rounding(4e-16 * magnitude), _farthest{0, start, start} {
    const Place place = placeAt(b.boundary, start, 0);
    if (place.distance > 0 && !isInside(b, start)) {
      set(place);
      _value = std::max(_value, floor);
    }
  }

  /// Takes a point of a; one inside b has the distance 0.
  void take(const Place& place) {
    if (place.distance > _value && !isInside(_b, place.point)) set(place);
  }
  /// Takes a point that is known to be outside b.
  void set(const Place& place) {
    _farthest.onA = place.point;
    _farthest.distance = pointSegmentDistance(place.point, _b.boundary[place.item], _farthest.onB);
    _value = _farthest.distance;
  }
  omReal64 value() const { return _value; }
  bool isAbove(omReal64 upper, omReal64 tolerance = 1e-14) const {
    return upper > _value * (1 + tolerance) + _rounding;
  }
  const PlanarNearestPair& farthest() const { return _farthest; }

 private:
  const PlanarSet& _b;
  omReal64 _value;
  omReal64 _rounding;
  PlanarNearestPair _farthest;
};

/// The search along the segments of a.
class BoundarySearch {
 public:
  BoundarySearch(const SegmentSet& a, const PlanarSet& b, Best& best) : _a(a), _b(b), _best(best) {}

  void search() {
    const IndexBox<2>& box = _a.tree().envelope();
    pushNode(_a.tree().nbLevels() - 1, 0, box, 0);
    while (!_waiting.empty() && _best.isAbove(_waiting.front().upper)) {
      std::pop_heap(_waiting.begin(), _waiting.end());
      const Task task = _waiting.back();
      _waiting.pop_back();
      if (task.type == eT_Node)
        expand(task);
      else
        split(task);
    }
  }

 private:
  enum eTask { eT_Node, eT_Part, eT_Crossed };
  /// A node of the tree with the segment of b that is nearest to its centre, or a part of a segment of a, which
  /// may cross the boundary of b to the inside.
  struct Task {
    omReal64 upper;
    eTask type;
    omUInt32 level;
    std::size_t index;
    Place from;
    Place to;
    omReal64 crossing;

    friend bool operator<(const Task& s, const Task& r) { return s.upper < r.upper; }
  };

  void push(const Task& task) {
    if (!_best.isAbove(task.upper)) return;
    _waiting.push_back(task);
    std::push_heap(_waiting.begin(), _waiting.end());
  }

  void pushNode(std::size_t level, std::size_t index, const IndexBox<2>& box, std::size_t guess) {
    const PlanarPoint centre{0.5 * box.low[0] + 0.5 * box.high[0], 0.5 * box.low[1] + 0.5 * box.high[1]};
    const omReal64 reach = std::hypot(0.5 * box.high[0] - 0.5 * box.low[0], 0.5 * box.high[1] - 0.5 * box.low[1]);
    // The segment guessed may do.
    if (!_best.isAbove(distanceTo(_b.boundary, guess, centre) + reach)) return;
    const Place place = placeAt(_b.boundary, centre, guess);
    push({place.distance + reach, eT_Node, static_cast<omUInt32>(level), index, place, place, 0});
  }

  void expand(const Task& task) {
    const BoxTree<2>& tree = _a.tree();
    const BoxNode<2>& node = tree.node(task.level, task.index);
    for (std::size_t k = 0; k < tree.nbChildren(task.level, task.index); ++k) {
      const std::size_t child = BoxTree<2>::s_width * task.index + k;
      if (task.level > 0) {
        pushNode(task.level - 1, child, node.child(k), task.from.item);
        continue;
      }
      const PlanarSegment& segment = _a[tree.itemAt(child)];
      const Place from = placeAt(_b.boundary, segment.p0, task.from.item);
      _best.take(from);
      if (segment.p0.x == segment.p1.x && segment.p0.y == segment.p1.y) continue;
      const Place to = placeAt(_b.boundary, segment.p1, from.item);
      _best.take(to);
      pushPart(from, to);
    }
  }

  /// A bound of the distance on a part of a segment.
  omReal64 upperOf(const Place& from, const Place& to) const {
    const omReal64 length = std::hypot(to.point.x - from.point.x, to.point.y - from.point.y);
    const omReal64 byFirst = std::max(from.distance, distanceTo(_b.boundary, from.item, to.point));
    const omReal64 bySecond = std::max(to.distance, distanceTo(_b.boundary, to.item, from.point));
    return std::min({byFirst, bySecond, 0.5 * (from.distance + to.distance + length)});
  }

  void pushPart(const Place& from, const Place& to) {
    Task task{upperOf(from, to), eT_Part, 0, 0, from, to, 0.5};
    if (!_best.isAbove(task.upper)) return;
    if (isInside(_b, from.point) || isInside(_b, to.point)) {
      // Inside b there is no distance: what is outside begins where the boundary of b is crossed.
      task.crossing = partAtCrossing({from.point, to.point});
      const bool isCrossed = task.crossing > 0;
      if (!isCrossed && isInside(_b, between(from.point, to.point, 0.5))) return;
      if (isCrossed) task.type = eT_Crossed;
    }
    push(task);
  }

  /// The crossing of a part with the boundary of b that is farthest from the ends; 0 where there is none but at them.
  omReal64 partAtCrossing(const PlanarSegment& part) const {
    const omReal64 length = std::hypot(part.p1.x - part.p0.x, part.p1.y - part.p0.y);
    IndexBox<2> box;
    box.add(IndexPoint<2>{part.p0.x, part.p0.y});
    box.add(IndexPoint<2>{part.p1.x, part.p1.y});
    omReal64 found = 0, deepest = 4e-16 * (_a.magnitude() + _b.boundary.magnitude()) / length;
    _b.boundary.tree().visitIntersecting(box, [&](std::size_t item) {
      const PlanarNearestPair pair = nearestOnSegments(part, _b.boundary[item]);
      if (pair.distance > 0) return true;
      const omReal64 at = std::hypot(pair.onA.x - part.p0.x, pair.onA.y - part.p0.y) / length;
      if (std::min(at, 1 - at) > deepest) {
        found = at;
        deepest = std::min(at, 1 - at);
      }
      return true;
    });
    return found;
  }

  void split(const Task& task) {
    const Place& from = task.from;
    const Place& to = task.to;
    const omReal64 part = task.type == eT_Part ? partEquallyFar(from, to) : task.crossing;
    const PlanarPoint point = between(from.point, to.point, part);
    // Neither part is shorter than the whole where rounding ends the halving.
    if (isSame(point, from.point) || isSame(point, to.point)) return;
    const Place place = placeAt(_b.boundary, point, from.item);
    // A computed point is on its segment but for rounding.
    if (_best.isAbove(place.distance)) _best.take(place);
    pushPart(from, place);
    pushPart(place, to);
  }

  /// Where the segments nearest to the ends of a part are equally far.
  omReal64 partEquallyFar(const Place& from, const Place& to) const {
    omReal64 low = 0, high = 1;
    for (;;) {
      const omReal64 middle = 0.5 * (low + high);
      if (middle <= low || middle >= high) return low;
      const PlanarPoint point = between(from.point, to.point, middle);
      const bool isBeyond = distanceTo(_b.boundary, from.item, point) > distanceTo(_b.boundary, to.item, point);
      (isBeyond ? high : low) = middle;
    }
  }

  static bool isSame(const PlanarPoint& p, const PlanarPoint& q) { return p.x == q.x && p.y == q.y; }

  const SegmentSet& _a;
  const PlanarSet& _b;
  Best& _best;
  std::vector<Task> _waiting;
};

/// The search inside the region of a.
class InteriorSearch {
 public:
  InteriorSearch(const PlanarSet& a, const PlanarSet& b, Best& best) : _a(a), _b(b), _best(best) {}

  /// \return by how much the answer may be too small
  omReal64 search() {
    const IndexBox<2>& box = _a.boundary.tree().envelope();
    const omReal64 half = std::max(0.5 * box.high[0] - 0.5 * box.low[0], 0.5 * box.high[1] - 0.5 * box.low[1]);
    push({0.5 * box.low[0] + 0.5 * box.high[0], 0.5 * box.low[1] + 0.5 * box.high[1]}, half, 0);
    for (std::size_t count = 0; !_waiting.empty(); ++count) {
      std::pop_heap(_waiting.begin(), _waiting.end());
      const Square square = _waiting.back();
      _waiting.pop_back();
      if (!_best.isAbove(square.upper, s_tolerance)) return 0;
      if (count == DirectedHausdorff::s_mostSquares) return square.upper - _best.value();
      const omReal64 half2 = 0.5 * square.half;
      for (const omReal64 x : {-half2, half2})
        for (const omReal64 y : {-half2, half2})
          push({square.place.point.x + x, square.place.point.y + y}, half2, square.place.item);
    }
    return 0;
  }

 private:
  static constexpr omReal64 s_tolerance = 1e-12;
  static constexpr std::size_t s_nbAngles = 96;
  static constexpr std::size_t s_nbSectors = 6;
  static constexpr std::size_t s_mostNear = 4096;
  static constexpr std::size_t s_longestChain = 32;

  /// A square by its centre and half its side.
  struct Square {
    omReal64 upper;
    omReal64 half;
    Place place;

    friend bool operator<(const Square& s, const Square& r) { return s.upper < r.upper; }
  };
  /// A segment near a square, with the direction from it to the centre; none at infinity.
  struct Near {
    std::size_t item = 0;
    omReal64 distance = s_infinity;
    PlanarPoint direction{0, 0};
  };
  /// The segments that may be nearest somewhere in a square, by their directions: in which of equal angles there are
  /// some, and the nearest one in each sixth of a turn.
  struct NearSegments {
    std::array<bool, s_nbAngles> hasAngle{};
    std::array<Near, s_nbSectors> ofSector;
    std::size_t nb = 0;
  };

  void push(const PlanarPoint& centre, omReal64 half, std::size_t guess) {
    const omReal64 reach = half * 1.4142135623730952;
    if (!_best.isAbove(distanceTo(_b.boundary, guess, centre) + reach, s_tolerance)) return;
    Square square{0, half, placeAt(_b.boundary, centre, guess)};
    square.upper = square.place.distance + reach;
    if (!_best.isAbove(square.upper, s_tolerance)) return;
    const bool isInsideB = isInside(_b, centre);
    if (isInsideB && square.place.distance >= reach) return;
    const bool isInsideA = isInside(_a, centre);
    if (!isInsideA && placeAt(_a.boundary, centre, 0).distance >= reach) return;
    if (isInsideA && !isInsideB && square.place.distance > _best.value()) _best.set(square.place);
    if (square.place.distance > 4 * reach ? !boundByNear(square, reach) : hasOneChain(square, reach)) return;
    if (!_best.isAbove(square.upper, s_tolerance)) return;
    _waiting.push_back(square);
    std::push_heap(_waiting.begin(), _waiting.end());
  }

  /// Whether the segments that may be nearest somewhere in the square are one, or two with a common end that do not
  /// overlap, or a chain without ends near by and with directions less than an eighth of a turn off that of its first
  /// one. Then the distance has no maximum in the square. That of the two would be at the middle of two feet, which a
  /// wedge does not have; beside the chain, which is a graph over its first direction, all feet are on one side.
  bool hasOneChain(const Square& square, omReal64 reach) const {
    const PlanarPoint& centre = square.place.point;
    const omReal64 radius = square.place.distance + 2 * reach;
    std::array<std::size_t, s_longestChain> items;
    std::size_t nb = 0;
    const auto add = [&](std::size_t item) {
      if (distanceTo(_b.boundary, item, centre) > radius) return true;
      if (nb == s_longestChain) return false;
      items[nb++] = item;
      return true;
    };
    if (!_b.boundary.tree().visitWithin(IndexPoint<2>{centre.x, centre.y}, radius, add)) return false;
    if (nb == 1) return true;
    std::sort(items.begin(), items.begin() + static_cast<std::ptrdiff_t>(nb));
    // Along a ring, which may begin inside the chain.
    const auto follows = [&](std::size_t i, std::size_t j) {
      const PlanarPoint& end = _b.boundary[items[i]].p1;
      const PlanarPoint& start = _b.boundary[items[j]].p0;
      return end.x == start.x && end.y == start.y;
    };
    std::size_t nbLinks = 0, first = 0;
    for (std::size_t i = 0; i < nb; ++i) {
      const std::size_t next = i + 1 < nb ? i + 1 : 0;
      if (follows(i, next))
        ++nbLinks;
      else
        first = next;
    }
    if (nbLinks + 1 != nb) return false;
    const PlanarSegment& start = _b.boundary[items[first]];
    const PlanarSegment& end = _b.boundary[items[(first + nb - 1) % nb]];
    const PlanarPoint along{start.p1.x - start.p0.x, start.p1.y - start.p0.y};
    const auto component = [&along](const PlanarSegment& segment) {
      const PlanarPoint v{segment.p1.x - segment.p0.x, segment.p1.y - segment.p0.y};
      return PlanarPoint{v.x * along.x + v.y * along.y, v.y * along.x - v.x * along.y};
    };
    if (nb == 2) return component(end).x > 0 || component(end).y != 0;
    const auto isFar = [&](const PlanarPoint& p) { return std::hypot(p.x - centre.x, p.y - centre.y) > radius; };
    if (!isFar(start.p0) || !isFar(end.p1)) return false;
    for (std::size_t i = 0; i < nb; ++i)
      if (const PlanarPoint v = component(_b.boundary[items[i]]); !(std::abs(v.y) < 0.9 * v.x)) return false;
    return true;
  }

  /// Lowers the bound by the segments that may be the nearest somewhere in the square.
  /// \return false where the distance has no maximum in the square
  bool boundByNear(Square& square, omReal64 reach) const {
    const PlanarPoint& centre = square.place.point;
    const omReal64 distance = square.place.distance;
    NearSegments near;
    const auto add = [&](std::size_t item) {
      PlanarPoint foot;
      const omReal64 toItem = pointSegmentDistance(centre, _b.boundary[item], foot);
      if (toItem > distance + 2 * reach) return true;
      const PlanarPoint direction{(centre.x - foot.x) / toItem, (centre.y - foot.y) / toItem};
      const omReal64 turn = std::atan2(direction.y, direction.x) / s_twoPi + 0.5;
      near.hasAngle[static_cast<std::size_t>(turn * s_nbAngles) % s_nbAngles] = true;
      Near& ofSector = near.ofSector[static_cast<std::size_t>(turn * s_nbSectors) % s_nbSectors];
      if (toItem < ofSector.distance) ofSector = {item, toItem, direction};
      return ++near.nb < s_mostNear;
    };
    const bool areAll = _b.boundary.tree().visitWithin(IndexPoint<2>{centre.x, centre.y}, distance + 2 * reach, add);
    if (areAll && isMonotone(near, reach / (distance - reach))) return false;
    lowerBound(near, square);
    return true;
  }

  /// Whether all directions stay in an open half plane when they turn by at most a chord of the unit circle.
  static bool isMonotone(const NearSegments& near, omReal64 chord) {
    std::size_t longest = 0, current = 0;
    for (std::size_t i = 0; i < 2 * s_nbAngles; ++i) {
      current = near.hasAngle[i % s_nbAngles] ? 0 : current + 1;
      longest = std::max(longest, current);
    }
    const omReal64 gap = s_twoPi * static_cast<omReal64>(longest) / s_nbAngles;
    return gap > s_pi + 4 * std::asin(std::min(1.0, 0.5 * chord));
  }

  /// Bounds by convex combinations of the distances to one, two and three segments, one of each direction: of three
  /// with the weights for which the distances do not change at the centre.
  void lowerBound(const NearSegments& near, Square& square) const {
    const auto& chosen = near.ofSector;
    const auto isThere = [&chosen](std::size_t i) { return chosen[i].distance < s_infinity; };
    std::array<std::array<omReal64, 4>, s_nbSectors> atCorners{};
    for (std::size_t i = 0; i < s_nbSectors; ++i)
      for (std::size_t k = 0; k < 4 && isThere(i); ++k)
        atCorners[i][k] = distanceTo(_b.boundary, chosen[i].item,
                                     {square.place.point.x + (k % 2 == 0 ? -square.half : square.half),
                                      square.place.point.y + (k < 2 ? -square.half : square.half)});
    const auto take = [&](std::size_t i, omReal64 ofI, std::size_t j, omReal64 ofJ, std::size_t l, omReal64 ofL) {
      omReal64 upper = 0;
      for (std::size_t k = 0; k < 4; ++k)
        upper = std::max(upper, ofI * atCorners[i][k] + ofJ * atCorners[j][k] + ofL * atCorners[l][k]);
      square.upper = std::min(square.upper, upper);
    };
    for (std::size_t i = 0; i < s_nbSectors; ++i) {
      if (!isThere(i)) continue;
      take(i, 1, i, 0, i, 0);
      for (std::size_t j = i + 1; j < s_nbSectors; ++j) {
        if (!isThere(j)) continue;
        take(i, 0.5, j, 0.5, j, 0);
        for (std::size_t l = j + 1; l < s_nbSectors; ++l) {
          if (!isThere(l)) continue;
          const auto cross = [](const PlanarPoint& p, const PlanarPoint& q) { return p.x * q.y - p.y * q.x; };
          const omReal64 ofI = cross(chosen[j].direction, chosen[l].direction);
          const omReal64 ofJ = cross(chosen[l].direction, chosen[i].direction);
          const omReal64 ofL = cross(chosen[i].direction, chosen[j].direction);
          const omReal64 sum = ofI + ofJ + ofL;
          if (ofI / sum >= 0 && ofJ / sum >= 0 && ofL / sum >= 0) take(i, ofI / sum, j, ofJ / sum, l, ofL / sum);
        }
      }
    }
  }

  const PlanarSet& _a;
  const PlanarSet& _b;
  Best& _best;
  std::vector<Square> _waiting;
};

}  // namespace

DirectedHausdorff::DirectedHausdorff(const PlanarSet& a, const PlanarSet& b, omReal64 floor) {
  Best best(b, a.boundary[0].p0, floor, a.boundary.magnitude() + b.boundary.magnitude());
  BoundarySearch(a.boundary, b, best).search();
  if (a.region) excess = InteriorSearch(a, b, best).search();
  farthest = best.farthest();
}

}  // namespace ormix::detail
