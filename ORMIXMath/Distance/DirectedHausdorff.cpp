#include <ORMIXMath/Distance/HausdorffSearch.h>
#include <ORMIXMath/Distance/NearestOnSegments.h>

#include <cmath>
#include <vector>

namespace ormix::detail {

namespace {

using namespace hausdorff;

PlanarPoint between(const PlanarPoint& p, const PlanarPoint& q, omReal64 part) {
  if (part == 0) return p;
  if (part == 1) return q;
  return {p.x + part * (q.x - p.x), p.y + part * (q.y - p.y)};
}

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

}  // namespace

DirectedHausdorff::DirectedHausdorff(const PlanarSet& a, const PlanarSet& b, omReal64 floor) {
  Best best(b, a.boundary[0].p0, floor, a.boundary.magnitude() + b.boundary.magnitude());
  BoundarySearch(a.boundary, b, best).search();
  if (a.region) excess = searchInterior(a, b, best);
  farthest = best.farthest();
}

}  // namespace ormix::detail
