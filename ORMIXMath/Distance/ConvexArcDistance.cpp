#include <ORMIXMath/Distance/ArcCrossing.h>
#include <ORMIXMath/Distance/ConvexArcDistance.h>
#include <ORMIXMath/Distance/NearestOnSegments.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace ormix::detail {

namespace {

omReal64 distanceOf(const PlanarPoint& p, const PlanarPoint& q) { return std::hypot(p.x - q.x, p.y - q.y); }

void update(PlanarNearestPair& best, const PlanarNearestPair& candidate) {
  if (candidate.distance < best.distance) best = candidate;
}

/// The pair of a point of the arc and its foot on an edge.
void updateByFoot(const PlanarPoint& onArc, const PlanarSegment& edge, PlanarNearestPair& best) {
  update(best, nearestOnSegments(onArc, edge));
}

/// The pair of a point of the arc b and its foot on the arc a, or the other way round.
void updateByFoot(const ConvexArc& arc, const PlanarPoint& point, bool isArcFirst, PlanarNearestPair& best) {
  const PlanarPoint foot = nearestOnArc(arc, point);
  update(best, {distanceOf(foot, point), isArcFirst ? foot : point, isArcFirst ? point : foot});
}

/// Two circles, in closed form.
PlanarNearestPair nearestOfCircles(const ConvexArc& a, const ConvexArc& b) {
  const omReal64 apart = distanceOf(a.origin, b.origin);
  const PlanarPoint toB =
      apart > 0 ? PlanarPoint{(b.origin.x - a.origin.x) / apart, (b.origin.y - a.origin.y) / apart} : PlanarPoint{1, 0};
  const auto at = [&](const ConvexArc& circle, omReal64 along) {
    return PlanarPoint{circle.origin.x + along * toB.x, circle.origin.y + along * toB.y};
  };
  if (apart >= a.a + b.a) return {apart - (a.a + b.a), at(a, a.a), at(b, -b.a)};
  if (apart + b.a <= a.a) return {a.a - (apart + b.a), at(a, a.a), at(b, b.a)};
  if (apart + a.a <= b.a) return {b.a - (apart + a.a), at(a, -a.a), at(b, -b.a)};
  const omReal64 along = std::clamp(0.5 * (apart + (a.a - b.a) / apart * (a.a + b.a)), -a.a, a.a);
  const omReal64 across = std::sqrt((a.a - along) * (a.a + along));
  const PlanarPoint middle = at(a, along);
  const PlanarPoint common{middle.x - across * toB.y, middle.y + across * toB.x};
  return {0, common, common};
}

/// The search for normals that two arcs have in common, see nearestOfArcs().
class CommonNormals {
 public:
  /// \param sign 1 where the outward normals agree, -1 where they are opposite
  CommonNormals(const ConvexArc& a, const ConvexArc& b, int sign, PlanarNearestPair& best)
      : _a(a), _b(b), _sign(sign), _best(best) {
    _size = a.a + b.a + a.b + b.b + distanceOf(a.origin, b.origin);
  }

  void search() {
    constexpr omReal64 s_widest = s_pi / 8;
    const Interval ofA = normalAngles(_a);
    const Interval ofB = normalAngles(_b);
    const omReal64 shift = _sign > 0 ? 0 : s_pi;
    // Angles of a are within -2 pi and 3 pi, of b likewise.
    for (int turn = -3; turn <= 3; ++turn) {
      const omReal64 low = std::max(ofA.low, ofB.low + shift + turn * s_twoPi);
      const omReal64 high = std::min(ofA.high, ofB.high + shift + turn * s_twoPi);
      if (!(low <= high)) continue;
      const auto nb = static_cast<int>(std::ceil((high - low) / s_widest)) + 1;
      for (int i = 0; i < nb; ++i) _waiting.push_back({low + (high - low) * i / nb, low + (high - low) * (i + 1) / nb});
    }
    // Good pairs first: what is far away is then left at once.
    for (const Interval& cell : _waiting) evaluate(0.5 * (cell.low + cell.high));
    while (!_waiting.empty()) {
      const Interval cell = _waiting.back();
      _waiting.pop_back();
      examine(cell);
    }
  }

 private:
  /// D and its derivative at an angle.
  struct Value {
    omReal64 along;
    omReal64 across;
  };

  Value evaluate(omReal64 angle) {
    const PlanarPoint normal{std::cos(angle), std::sin(angle)};
    const PlanarPoint p = pointWithNormal(_a, normal);
    const PlanarPoint q = pointWithNormal(_b, {_sign * normal.x, _sign * normal.y});
    update(_best, {distanceOf(p, q), p, q});
    const PlanarPoint d{p.x - q.x, p.y - q.y};
    return {normal.x * d.x + normal.y * d.y, normal.x * d.y - normal.y * d.x};
  }

  /// Bounds of D'' + D.
  Interval curvature(const Interval& cell) const {
    const PlanarPoint low{std::cos(cell.low), std::sin(cell.low)};
    const PlanarPoint high{std::cos(cell.high), std::sin(cell.high)};
    const Interval ofA = curvatureRadii(_a, low, high);
    if (_sign < 0) {
      const Interval ofB = curvatureRadii(_b, {-low.x, -low.y}, {-high.x, -high.y});
      return {ofA.low + ofB.low, ofA.high + ofB.high};
    }
    const Interval ofB = curvatureRadii(_b, low, high);
    return {ofA.low - ofB.high, ofA.high - ofB.low};
  }

  void examine(const Interval& cell) {
    // Less than what rounding leaves of a distance.
    const omReal64 tolerance = 1e-14 * _best.distance + 4e-16 * _size;
    const omReal64 middle = 0.5 * (cell.low + cell.high);
    const omReal64 half = 0.5 * (cell.high - cell.low);
    const Value value = evaluate(middle);
    if (middle <= cell.low || middle >= cell.high) return;
    const Interval radius = curvature(cell);
    const omReal64 sine = std::sin(half);
    const omReal64 versine = 2 * std::sin(0.5 * half) * std::sin(0.5 * half);
    const omReal64 change = std::max(std::abs(radius.low - value.along), std::abs(radius.high - value.along));
    const omReal64 reach = std::abs(value.across) * sine + versine * change;
    if (std::abs(value.along) - reach >= _best.distance - tolerance) return;
    if (std::abs(value.across) * std::cos(half) > sine * change + 4e-16 * _size) return;
    if (radius.low - value.along - reach > 0 || radius.high - value.along + reach < 0) {
      findZero(cell, radius.low - value.along - reach > 0);
      return;
    }
    _waiting.push_back({cell.low, middle});
    _waiting.push_back({middle, cell.high});
  }

  /// The zero of D', which ascends or descends in the interval, if there is one.
  void findZero(Interval cell, bool isAscending) {
    const auto isBeyond = [&](omReal64 angle) { return (evaluate(angle).across > 0) == isAscending; };
    if (isBeyond(cell.low) || !isBeyond(cell.high)) return;
    for (;;) {
      const omReal64 middle = 0.5 * (cell.low + cell.high);
      if (middle <= cell.low || middle >= cell.high) return;
      (isBeyond(middle) ? cell.high : cell.low) = middle;
    }
  }

  const ConvexArc& _a;
  const ConvexArc& _b;
  int _sign;
  PlanarNearestPair& _best;
  omReal64 _size;
  std::vector<Interval> _waiting;
};

void updateByEnds(const ConvexArc& a, const ConvexArc& b, bool isAFirst, PlanarNearestPair& best) {
  if (!a.isParabola) return;
  for (const omReal64 abscissa : {a.from, a.to})
    updateByFoot(b, fromFrame(a, parabolaPoint(a, abscissa)), !isAFirst, best);
}

}  // namespace

void updateByVertex(const ConvexArc& arc, const PlanarPoint& vertex, PlanarNearestPair& best) {
  if (best.distance > 0 && leastDistance(arc, vertex) < best.distance) updateByFoot(arc, vertex, true, best);
}

void updateByEdge(const ConvexArc& arc, const PlanarSegment& edge, PlanarNearestPair& best) {
  const omReal64 halfX = 0.5 * edge.p1.x - 0.5 * edge.p0.x;
  const omReal64 halfY = 0.5 * edge.p1.y - 0.5 * edge.p0.y;
  const omReal64 reach = std::hypot(halfX, halfY);
  if (reach == 0 || leastDistance(arc, {edge.p0.x + halfX, edge.p0.y + halfY}) - reach >= best.distance) return;
  PlanarPoint common;
  if (findCrossing(arc, edge, common)) {
    best = {0, common, common};
    return;
  }
  const PlanarPoint normal{halfY / reach, -halfX / reach};
  updateByFoot(pointWithNormal(arc, normal), edge, best);
  updateByFoot(pointWithNormal(arc, {-normal.x, -normal.y}), edge, best);
  if (!arc.isParabola) return;
  for (const omReal64 abscissa : {arc.from, arc.to})
    updateByFoot(fromFrame(arc, parabolaPoint(arc, abscissa)), edge, best);
}

PlanarNearestPair nearestOfArcs(const ConvexArc& a, const ConvexArc& b) {
  if (a.isCircle() && b.isCircle()) return nearestOfCircles(a, b);
  PlanarPoint common;
  if (findCrossing(a, b, common)) return {0, common, common};
  const PlanarPoint start = pointWithNormal(a, {1, 0});
  PlanarNearestPair best{std::numeric_limits<omReal64>::infinity(), start, start};
  updateByFoot(b, start, false, best);
  updateByEnds(a, b, true, best);
  updateByEnds(b, a, false, best);
  for (const int sign : {-1, 1}) CommonNormals(a, b, sign, best).search();
  // Angles are rounded, so that points of a very flat arc are off along it, which matters where the arcs are close.
  constexpr int s_mostSteps = 100;
  for (int step = 0; step < s_mostSteps; ++step) {
    const omReal64 before = best.distance;
    updateByFoot(b, best.onA, false, best);
    updateByFoot(a, best.onB, true, best);
    if (!(best.distance < before)) break;
  }
  return best;
}

}  // namespace ormix::detail
