#include "ZoneSearch.h"

#include <ORMIXMath/Algebra/VectorArithmetic.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "MinimaxDescent.h"

namespace ormix::detail {

namespace {

// The part of a zone by which a better one may be missed.
constexpr omReal64 s_tolerance = 1e-9;
// Of work: looks at one of the few points, for each cell, or at ten of all.
constexpr std::size_t s_mostLooks = 5000000;
constexpr std::size_t s_mostLooksPerPoint = 80;
// In larger cells all points are asked also where the few have a zone that is wider than the best up to this factor:
// with more of them fewer cells are needed.
constexpr omReal64 s_fineCell = 0.01;
constexpr omReal64 s_eagerness = 1.2;
// The least last coordinate, where another one is 1: centres farther away than about 10⁶ extents of the points are
// those of lines and planes.
constexpr omReal64 s_leastScale = 0.5e-6;

/// How zones are widths of raised points across directions: see ZoneSearch.h. The first coordinates of a direction are
/// -2 times a centre, multiplied by the last one, or a normal.
template <class Model>
struct DirectionSpace;

template <std::size_t D>
struct DirectionSpace<CenterModel<D>> {
  static constexpr std::size_t nbCoordinates = D + 1;
  static constexpr bool hasScale = true;  ///< the last coordinate
  using Direction = std::array<omReal64, nbCoordinates>;

  static Direction raised(const SpatialPoint& p) {
    if constexpr (D == 2)
      return {p.x, p.y, p.x * p.x + p.y * p.y};
    else
      return {p.x, p.y, p.z, dot(p, p)};
  }
  static Direction directionOf(const CenterModel<D>& model) {
    Direction w{-2 * model.center.x, -2 * model.center.y};
    if constexpr (D == 3) w[2] = -2 * model.center.z;
    w[D] = 1;
    return w;
  }
  static CenterModel<D> modelOf(const SpatialPoint& center, omReal64 scale, const CenterModel<D>&) {
    return {center / scale};
  }
  static bool canDescend(const CenterModel<D>& model) {
    // Descents go by steps of 1 at most.
    constexpr omReal64 farthest = 30;
    return dot(model.center, model.center) < farthest * farthest;
  }
};

template <>
struct DirectionSpace<PlaneModel> {
  static constexpr std::size_t nbCoordinates = 3;
  static constexpr bool hasScale = false;
  using Direction = std::array<omReal64, nbCoordinates>;

  static Direction raised(const SpatialPoint& p) { return {p.x, p.y, p.z}; }
  static Direction directionOf(const PlaneModel& model) {
    const SpatialPoint& normal = model.frame.axis;
    return {-2 * normal.x, -2 * normal.y, -2 * normal.z};
  }
  static PlaneModel modelOf(const SpatialPoint& normal, omReal64, const PlaneModel& before) {
    return {SurfaceFrame::of(before.frame.origin, normal, anyAcross(normal))};
  }
  static bool canDescend(const PlaneModel&) { return true; }
};

template <class Model>
class ZoneSearch {
 public:
  ZoneSearch(const std::vector<SpatialPoint>& points, const Model& model) : _points(points), _best(model) {
    for (const SpatialPoint& p : points) _farthest = std::max(_farthest, dot(p, p));
    _farthest = std::sqrt(_farthest);
    setBest(model);
    ask(Space::directionOf(model));
  }

  bool run() {
    // Distances are not known better.
    if (!(_least > 2 * roundingOf(1))) return true;
    std::vector<Cell> waiting = wholeSpace();
    const std::size_t mostLooks = s_mostLooks + s_mostLooksPerPoint * _points.size();
    while (!waiting.empty()) {
      if (_nbLooks > mostLooks) return false;
      const Cell cell = waiting.back();
      waiting.pop_back();
      if (isTooFar(cell) || isExcluded(cell)) continue;
      for (unsigned child = 0; child < 1U << s_last; ++child) waiting.push_back(part(cell, child));
    }
    return true;
  }

  const Model& best() const { return _best; }

 private:
  using Space = DirectionSpace<Model>;
  using Direction = typename Space::Direction;
  static constexpr std::size_t s_last = Space::nbCoordinates - 1;  ///< of the coordinates, and how many steps there are

  /// Directions whose coordinate of the face is 1 or -1, and the others at most `half` from the middle's.
  struct Cell {
    Direction middle;
    std::size_t face;
    omReal64 half;
  };

  /// Cells of all directions, of each and its opposite one. The last coordinate is not negative where it is a scale.
  static std::vector<Cell> wholeSpace() {
    std::vector<Cell> cells;
    for (std::size_t face = 0; face <= s_last; ++face)
      for (const omReal64 sign : {1.0, -1.0}) {
        Cell whole{{}, face, 1};
        whole.middle[face] = sign;
        if (!Space::hasScale || face == s_last) {
          if (sign > 0) cells.push_back(whole);
          continue;
        }
        for (unsigned child = 0; child < 1U << s_last; ++child)
          if (const Cell half = part(whole, child); half.middle[s_last] > 0) cells.push_back(half);
      }
    return cells;
  }

  /// The centre times the scale, or the normal.
  static SpatialPoint scaledCenter(const Direction& w) {
    const bool isSpatial = Space::hasScale ? s_last == 3 : true;
    return {w[0] / -2, w[1] / -2, isSpatial ? w[2] / -2 : 0};
  }
  static omReal64 scaleOf(const Direction& w) { return Space::hasScale ? w[s_last] : 0; }
  static bool isScale(std::size_t coordinate) { return Space::hasScale && coordinate == s_last; }

  static omReal64 heightAlong(const Direction& w, const Direction& q) {
    omReal64 sum = 0;
    for (std::size_t k = 0; k <= s_last; ++k) sum += w[k] * q[k];
    return sum;
  }
  /// The square of the distance of a point from the centre, by the square of the last coordinate.
  static omReal64 scaledSquare(const Direction& w, const SpatialPoint& p) {
    const SpatialPoint arm = scaledCenter(w) - p * scaleOf(w);
    return dot(arm, arm);
  }

  static Cell part(const Cell& cell, unsigned child) {
    Cell result{cell.middle, cell.face, cell.half / 2};
    unsigned bit = 0;
    for (std::size_t k = 0; k <= s_last; ++k)
      if (k != cell.face) result.middle[k] += (child >> bit++ & 1U) != 0 ? result.half : -result.half;
    return result;
  }

  /// On other faces than that of the scale the scaled centre is at least 1/2 long.
  static bool isTooFar(const Cell& cell) { return Space::hasScale && largestScale(cell) < s_leastScale; }
  static omReal64 largestScale(const Cell& cell) {
    return isScale(cell.face) ? 1 : scaleOf(cell.middle) + (Space::hasScale ? cell.half : 0);
  }

  /// Better zones are narrower than this, as far as distances are known from a centre with this scale.
  omReal64 wanted(const Direction& w, omReal64 scale) const {
    const SpatialPoint center = scaledCenter(w);
    const omReal64 away = Space::hasScale ? std::sqrt(dot(center, center)) / std::max(scale, s_leastScale) : 1;
    return _least * (1 - s_tolerance) - 2 * roundingOf(away);
  }
  omReal64 wanted(const Direction& w) const { return wanted(w, scaleOf(w)); }
  omReal64 wanted(const Cell& cell) const { return wanted(cell.middle, largestScale(cell)); }

  void setBest(const Model& model) {
    const DistanceRange range = rangeOf(model, _points);
    _best = model;
    _least = range.highest - range.lowest;
  }

  /// Adds the points that limit the zone of a direction, and takes its centre when it is better than the best.
  void ask(const Direction& w) {
    _nbLooks += _points.size() / 10;
    std::size_t highestAt = 0;
    std::size_t lowestAt = 0;
    omReal64 highest = -std::numeric_limits<omReal64>::infinity();
    omReal64 lowest = std::numeric_limits<omReal64>::infinity();
    for (std::size_t i = 0; i < _points.size(); ++i) {
      const omReal64 height = heightAlong(w, Space::raised(_points[i]));
      if (height > highest) {
        highest = height;
        highestAt = i;
      }
      if (height < lowest) {
        lowest = height;
        lowestAt = i;
      }
    }
    for (const std::size_t index : {highestAt, lowestAt})
      if (std::find(_few.begin(), _few.end(), index) == _few.end()) _few.push_back(index);
    const omReal64 sum = std::sqrt(scaledSquare(w, _points[highestAt])) + std::sqrt(scaledSquare(w, _points[lowestAt]));
    if (highest - lowest < wanted(w) * sum) improve(Space::modelOf(scaledCenter(w), scaleOf(w), _best));
  }

  void improve(Model model) {
    // A descent is some twenty passes.
    _nbLooks += 2 * _points.size();
    if (Space::canDescend(model)) descendMinimax(_points, {1, 1}, model);
    const DistanceRange range = rangeOf(model, _points);
    if (range.highest - range.lowest < _least) setBest(model);
  }

  /// Whether no direction of a cell has a better zone.
  bool isExcluded(const Cell& cell) {
    gather(cell);
    LinearMinimax<s_last> linear({1, 1}, _outer, _inner);
    linear.solve(cell.half);
    if (leastExcess(linear, cell.half) >= 0) return true;
    Direction w = cell.middle;
    for (std::size_t k = 0, column = 0; k <= s_last; ++k)
      if (k != cell.face) w[k] += std::clamp(linear.step()[column++], -cell.half, cell.half);
    if (Space::hasScale) w[s_last] = std::max(w[s_last], s_leastScale);
    if (promises(w, cell.half > s_fineCell ? s_eagerness : 1)) ask(w);
    return false;
  }

  /// The few points that can limit a zone within a cell.
  ///
  /// A zone is as wide as wanted where the distances a and b of two points, scaled as the centre, have
  /// a >= b + scale * wanted; that is where the difference of their heights is not less than
  /// 2 b wanted + scale * wanted². The distance b is convex, and bends by at most half the square of a step, divided by
  /// it. So inner heights get these terms, and the width of what remains is not negative.
  void gather(const Cell& cell) {
    const bool hasMovingScale = Space::hasScale && !isScale(cell.face);
    const omReal64 nbMoving = hasMovingScale ? s_last - 1 : s_last;
    const omReal64 reach = cell.half * (std::sqrt(nbMoving) / 2 + (hasMovingScale ? _farthest : 0));
    const omReal64 change = 2 * cell.half * (std::sqrt(nbMoving) + _farthest) * _farthest;
    const omReal64 wide = wanted(cell);
    _nbLooks += _few.size();
    _all.clear();
    for (const std::size_t index : _few) _all.push_back(heightAlong(cell.middle, Space::raised(_points[index])));
    const omReal64 highest = *std::max_element(_all.begin(), _all.end());
    const omReal64 lowest = *std::min_element(_all.begin(), _all.end());
    _outer.clear();
    _inner.clear();
    for (std::size_t i = 0; i < _few.size(); ++i) {
      const SpatialPoint& p = _points[_few[i]];
      if (_all[i] >= highest - change) _outer.add(_all[i], alongFace(cell, Space::raised(p)));
      if (_all[i] > lowest + change) continue;
      const SpatialPoint arm = scaledCenter(cell.middle) - p * scaleOf(cell.middle);
      const omReal64 distance = std::sqrt(dot(arm, arm));
      const omReal64 bend = reach < distance / 2 ? reach * reach / (2 * (distance - reach)) : 2 * reach;
      const omReal64 inverse = distance > 0 ? 1 / distance : 0;
      Direction q = Space::raised(p);
      const std::array<omReal64, 3> along{arm.x, arm.y, arm.z};
      for (std::size_t k = 0; k <= s_last; ++k)
        q[k] += isScale(k) ? wide * (wide - 2 * dot(p, arm) * inverse) : -wide * along[k] * inverse;
      _inner.add(_all[i] + 2 * wide * (distance + bend) + wide * wide * scaleOf(cell.middle), alongFace(cell, q));
    }
  }

  static std::array<omReal64, s_last> alongFace(const Cell& cell, const Direction& q) {
    std::array<omReal64, s_last> result;
    for (std::size_t k = 0, column = 0; k <= s_last; ++k)
      if (k != cell.face) result[column++] = q[k];
    return result;
  }

  /// What the highest of the outer heights are at least above the lowest of the inner ones within a cell: by the
  /// multipliers of a linear program or, where it is not solved to the end, by the highest and the lowest one in the
  /// middle.
  omReal64 leastExcess(const LinearMinimax<s_last>& linear, omReal64 half) const {
    const auto highest = std::max_element(_outer.distances.begin(), _outer.distances.end());
    const auto lowest = std::min_element(_inner.distances.begin(), _inner.distances.end());
    const auto indexOf = [](const auto& list, const auto& at) { return static_cast<std::size_t>(at - list.begin()); };
    return std::max(
        excessBound(linear.contacts(), half),
        excessBound({{indexOf(_outer.distances, highest), 1, 1}, {indexOf(_inner.distances, lowest), -1, 1}}, half));
  }

  /// The same by multipliers, right whatever they are.
  omReal64 excessBound(const std::vector<MinimaxContact>& contacts, omReal64 half) const {
    std::array<omReal64, 2> sums{};
    for (const MinimaxContact& contact : contacts) sums[contact.side > 0] += contact.multiplier;
    if (!(sums[0] > 0) || !(sums[1] > 0)) return -1;
    omReal64 excess = 0;
    std::array<omReal64, s_last> slope{};
    for (const MinimaxContact& contact : contacts) {
      const LinearDistances<s_last>& limits = contact.side > 0 ? _outer : _inner;
      const omReal64 weight = contact.side * contact.multiplier / sums[contact.side > 0];
      excess += weight * limits.distances[contact.point];
      for (std::size_t k = 0; k < s_last; ++k) slope[k] += weight * limits.gradients[contact.point][k];
    }
    for (const omReal64 component : slope) excess -= half * std::abs(component);
    return excess;
  }

  /// Whether the few points alone have a better zone.
  bool promises(const Direction& w, omReal64 part) const {
    omReal64 highest = -std::numeric_limits<omReal64>::infinity();
    omReal64 lowest = std::numeric_limits<omReal64>::infinity();
    omReal64 largest = 0;
    omReal64 smallest = std::numeric_limits<omReal64>::infinity();
    for (const std::size_t index : _few) {
      const omReal64 height = heightAlong(w, Space::raised(_points[index]));
      const omReal64 square = scaledSquare(w, _points[index]);
      highest = std::max(highest, height);
      lowest = std::min(lowest, height);
      largest = std::max(largest, square);
      smallest = std::min(smallest, square);
    }
    return highest - lowest < part * wanted(w) * (std::sqrt(largest) + std::sqrt(smallest));
  }

  const std::vector<SpatialPoint>& _points;
  omReal64 _farthest = 0;  ///< of the points from 0
  Model _best;
  omReal64 _least = 0;  ///< the best zone
  std::size_t _nbLooks = 0;
  std::vector<std::size_t> _few;
  /// \name Of the cell that is looked at
  /// @{
  std::vector<omReal64> _all;
  LinearDistances<s_last> _outer;
  LinearDistances<s_last> _inner;
  /// @}
};

}  // namespace

template <class Model>
bool findZone(const std::vector<SpatialPoint>& points, Model& model) {
  ZoneSearch<Model> search(points, model);
  const bool isProved = search.run();
  model = search.best();
  return isProved;
}

template bool findZone(const std::vector<SpatialPoint>&, PlaneModel&);
template bool findZone(const std::vector<SpatialPoint>&, CenterModel<2>&);
template bool findZone(const std::vector<SpatialPoint>&, CenterModel<3>&);

}  // namespace ormix::detail
