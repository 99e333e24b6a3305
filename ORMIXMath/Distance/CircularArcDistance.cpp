#include <ORMIXMath/Distance/CircularArcDistance.h>
#include <ORMIXMath/Distance/NearestOnSegments.h>

#include <algorithm>
#include <cmath>

namespace ormix {

namespace {

PlanarPoint difference(const PlanarPoint& p, const PlanarPoint& q) { return {p.x - q.x, p.y - q.y}; }
omReal64 length(const PlanarPoint& v) { return std::hypot(v.x, v.y); }
PlanarPoint along(const PlanarPoint& from, const PlanarPoint& unit, omReal64 at) {
  return {from.x + unit.x * at, from.y + unit.y * at};
}

PlanarNearestPair pairOf(const PlanarPoint& onA, const PlanarPoint& onB) {
  return {length(difference(onA, onB)), onA, onB};
}
void take(PlanarNearestPair& best, const PlanarNearestPair& pair) {
  if (pair.distance < best.distance) best = pair;
}
PlanarNearestPair toArc(const CircularArc& arc, const PlanarPoint& point) {
  return pairOf(nearestOn(arc, point), point);
}

PlanarPoint startOf(const CircularArc& arc) { return pointAt(arc, arc.start); }
PlanarPoint endOf(const CircularArc& arc) { return pointAt(arc, arc.start + arc.sweep); }

}  // namespace

PlanarNearestPair nearestPair(const CircularArc& arc, const PlanarSegment& segment) {
  PlanarNearestPair best = toArc(arc, segment.p0);
  take(best, toArc(arc, segment.p1));
  for (const PlanarPoint& end : {startOf(arc), endOf(arc)}) {
    const PlanarNearestPair pair = nearestOnSegments(end, segment);
    take(best, pair);
  }
  const PlanarPoint direction = difference(segment.p1, segment.p0);
  const omReal64 size = length(direction);
  if (size == 0) return best;
  const PlanarPoint unit{direction.x / size, direction.y / size};
  const PlanarPoint toCenter = difference(arc.center, segment.p0);
  const omReal64 foot = toCenter.x * unit.x + toCenter.y * unit.y;
  const omReal64 away = std::abs(toCenter.x * unit.y - toCenter.y * unit.x);
  if (foot >= 0 && foot <= size) take(best, toArc(arc, along(segment.p0, unit, foot)));
  if (away > arc.radius) return best;
  const omReal64 half = std::sqrt((arc.radius - away) * (arc.radius + away));
  for (const omReal64 at : {foot - half, foot + half}) {
    const PlanarPoint common = along(segment.p0, unit, at);
    if (at >= 0 && at <= size && hasDirection(arc, difference(common, arc.center))) return {0, common, common};
  }
  return best;
}

PlanarNearestPair nearestPair(const CircularArc& a, const CircularArc& b) {
  PlanarNearestPair best = toArc(a, startOf(b));
  take(best, toArc(a, endOf(b)));
  for (const PlanarPoint& end : {startOf(a), endOf(a)}) take(best, pairOf(end, nearestOn(b, end)));
  const PlanarPoint between = difference(b.center, a.center);
  const omReal64 size = length(between);
  // Of circles with one centre ends are enough.
  if (size == 0) return best;
  const PlanarPoint unit{between.x / size, between.y / size};
  for (const omReal64 sideA : {-1.0, 1.0})
    for (const omReal64 sideB : {-1.0, 1.0}) {
      const PlanarPoint ofA{sideA * unit.x, sideA * unit.y}, ofB{sideB * unit.x, sideB * unit.y};
      if (hasDirection(a, ofA) && hasDirection(b, ofB))
        take(best, pairOf(along(a.center, ofA, a.radius), along(b.center, ofB, b.radius)));
    }
  if (size > a.radius + b.radius || size < std::abs(a.radius - b.radius)) return best;
  // The common points of the circles, from where their line crosses that of the centres.
  const omReal64 at = (size + (a.radius - b.radius) * ((a.radius + b.radius) / size)) / 2;
  const omReal64 half = std::sqrt(std::max(0.0, (a.radius - at) * (a.radius + at)));
  for (const omReal64 side : {-half, half}) {
    const PlanarPoint common = along(along(a.center, unit, at), {-unit.y, unit.x}, side);
    if (hasDirection(a, difference(common, a.center)) && hasDirection(b, difference(common, b.center)))
      return {0, common, common};
  }
  return best;
}

}  // namespace ormix
