#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Shape/ShortestLoop.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace ormix {

namespace {

/// The shortest paths from an apex to the two ends of the last gate: one bends to the left only, the other to the
/// right.
class Funnel {
 public:
  Funnel(const PlanarPoint& apex, std::size_t nbGates, omReal64 scaleX, omReal64 scaleY)
      : _points(2 * nbGates + 5), _scaleX(scaleX), _scaleY(scaleY) {
    _apex = _first = _last = nbGates + 2;
    _points[_apex] = apex;
  }

  // The paths are one array, from the left end over the apex to the right end: what holds for one side holds for the
  // other with all orientations reversed.
  void addLeft(const PlanarPoint& point) { add<-1>(point, _first, _last); }
  void addRight(const PlanarPoint& point) { add<1>(point, _last, _first); }

  /// The length of the path from the first apex to the left end.
  omReal64 lengthToLeft() const {
    omReal64 length = _length;
    for (std::size_t at = _apex; at != _first; --at) length += distance(_points[at], _points[at - 1]);
    return length;
  }

 private:
  /// Makes `point` the end `near` of the array, which grows by `Step` from the apex there, and the other way to `far`.
  template <int Step>
  void add(const PlanarPoint& point, std::size_t& near, std::size_t& far) {
    // A bend that the path to the point does not need.
    while (near != _apex && turn<Step>(_points[back<Step>(near)], _points[near], point) <= 0) near = back<Step>(near);
    if (near == _apex) {
      // Beyond the other side of the funnel: the path follows that side.
      while (_apex != far && turn<Step>(_points[_apex], _points[back<Step>(_apex)], point) < 0) {
        _length += distance(_points[_apex], _points[back<Step>(_apex)]);
        _apex = back<Step>(_apex);
      }
      near = _apex;
    }
    near += static_cast<std::size_t>(Step);
    _points[near] = point;
  }

  template <int Step>
  static std::size_t back(std::size_t at) {
    return at - static_cast<std::size_t>(Step);
  }
  /// Positive where the path turns to the side of this end of the array.
  template <int Step>
  static int turn(const PlanarPoint& a, const PlanarPoint& b, const PlanarPoint& c) {
    const int left = orientation(a, b, c);
    return Step < 0 ? left : -left;
  }
  omReal64 distance(const PlanarPoint& a, const PlanarPoint& b) const {
    return std::hypot((b.x - a.x) * _scaleX, (b.y - a.y) * _scaleY);
  }

  std::vector<PlanarPoint> _points;
  std::size_t _first;  // position of the left end
  std::size_t _apex;
  std::size_t _last;     // position of the right end
  omReal64 _length = 0;  // from the first apex to this one
  omReal64 _scaleX;
  omReal64 _scaleY;
};

}  // namespace

omReal64 shortestLoopLength(const std::vector<PathGate>& gates, omReal64 scaleX, omReal64 scaleY) {
  if (gates.empty()) return 0;
  // The lexicographically smallest left end is a vertex of the loop: the loop's own smallest point is one of its left
  // turns, which are at left ends, and no left end is outside.
  const auto start = std::min_element(gates.begin(), gates.end(), [](const PathGate& a, const PathGate& b) {
    return a.left.x < b.left.x || (a.left.x == b.left.x && a.left.y < b.left.y);
  });
  Funnel funnel(start->left, gates.size(), scaleX, scaleY);
  const auto add = [&](const PathGate& gate) {
    funnel.addLeft(gate.left);
    funnel.addRight(gate.right);
  };
  std::for_each(start + 1, gates.end(), add);
  std::for_each(gates.begin(), start, add);
  funnel.addLeft(start->left);
  return funnel.lengthToLeft();
}

}  // namespace ormix
