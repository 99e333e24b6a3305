#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Distance/PlanarFrame.h>
#include <ORMIXMath/Distance/SpatialFrame.h>
#include <ORMIXMath/Distance/SpatialSegmentsDistance.h>

#include <cmath>
#include <limits>

namespace ormix {

namespace {

using namespace detail;

// Distances have errors of at most 2^-100 of the largest difference of coordinates. A distance up to this part of that
// difference may be zero in fact and is decided exactly.
constexpr omReal64 s_touchBound = 0x1p-90;

/// safeScale() of four points.
omReal64 safeScaleOf(const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c, const SpatialPoint& d) {
  return safeScale({a.x, a.y, a.z, b.x, b.y, b.z, c.x, c.y, c.z, d.x, d.y, d.z});
}

/// The nearest point where a coordinate is not finite.
constexpr SpatialPoint notAPoint() {
  constexpr omReal64 nan = std::numeric_limits<omReal64>::quiet_NaN();
  return {nan, nan, nan};
}

/// Whether a value lies in the closed interval between two ends, given in either order.
bool isBetween(omReal64 value, omReal64 end0, omReal64 end1) { return clampBetween(value, end0, end1) == value; }

/// Whether the point lies on the segment, without rounding: its projections to the three coordinate planes are
/// collinear with those of the ends, and it is inside the segment's bounding box.
bool liesOn(const SpatialPoint& p, const SpatialSegment& s) {
  return isBetween(p.x, s.p0.x, s.p1.x) && isBetween(p.y, s.p0.y, s.p1.y) && isBetween(p.z, s.p0.z, s.p1.z) &&
         orientation({s.p0.x, s.p0.y}, {s.p1.x, s.p1.y}, {p.x, p.y}) == 0 &&
         orientation({s.p0.y, s.p0.z}, {s.p1.y, s.p1.z}, {p.y, p.z}) == 0 &&
         orientation({s.p0.z, s.p0.x}, {s.p1.z, s.p1.x}, {p.z, p.x}) == 0;
}

/// The distance for coordinates that need no scaling.
omReal64 scaledPointSegmentDistance(const SpatialPoint& point, const SpatialSegment& segment, SpatialPoint& nearest) {
  const Ray ray = rayOf(segment);
  const TwofoldVector toPoint = between(segment.p0, point);
  const Twofold parameter = parameterOf(toPoint, ray);
  const omReal64 distance = length(difference(toPoint, times(parameter, ray.direction)));
  if (distance <= s_touchBound * (largestOf(toPoint) + ray.extent) && liesOn(point, segment)) {
    nearest = point;
    return 0;
  }
  nearest = pointAt(parameter, ray, segment);
  return distance;
}

/// A pair of points, one on each segment, and their distance.
struct NearestPair {
  omReal64 distance;
  SpatialPoint onFirst;
  SpatialPoint onSecond;
};

/// Replaces the best pair by that of an end of one segment and the nearest point of the other where this is nearer.
void updateByEnd(const SpatialPoint& end, const SpatialSegment& other, bool endIsOfFirst, NearestPair& best) {
  SpatialPoint nearest;
  const omReal64 distance = scaledPointSegmentDistance(end, other, nearest);
  if (distance >= best.distance) return;
  best = endIsOfFirst ? NearestPair{distance, end, nearest} : NearestPair{distance, nearest, end};
}

/// Replaces the best pair by the feet of the common perpendicular where these lie inside the segments and are nearer.
void updateByPerpendicular(const SpatialSegment& first, const SpatialSegment& second, NearestPair& best) {
  const Ray u = rayOf(first);
  const Ray v = rayOf(second);
  const TwofoldVector across = cross(u.direction, v.direction);
  const Twofold square = dot(across, across);
  if (!(square.high > 0)) return;
  const TwofoldVector toSecond = between(u.origin, v.origin);
  const Twofold s = quotient(dot(cross(toSecond, v.direction), across), square);
  if (!(s.high > 0 && isBeforeEnd(s, u))) return;
  // Projected, not from the like quotient: an error of s along nearly parallel segments is then made on both of them.
  const TwofoldVector offset = difference(times(s, u.direction), toSecond);
  const Twofold t = parameterOf(offset, v);
  if (t.high == 0 || !isBeforeEnd(t, v)) return;
  const omReal64 distance = length(difference(offset, times(t, v.direction)));
  if (!(distance < best.distance)) return;
  best = {distance, pointAt(s, u, first), pointAt(t, v, second)};
  const omReal64 size = largestOf(toSecond) + u.extent + v.extent;
  if (distance <= s_touchBound * size && dot(toSecond, across).high == 0) best = {0, best.onFirst, best.onFirst};
}

/// The nearest pair for coordinates that need no scaling.
NearestPair nearestPair(const SpatialSegment& first, const SpatialSegment& second) {
  NearestPair best{std::numeric_limits<omReal64>::infinity(), first.p0, second.p0};
  updateByEnd(first.p0, second, true, best);
  updateByEnd(first.p1, second, true, best);
  updateByEnd(second.p0, first, false, best);
  updateByEnd(second.p1, first, false, best);
  if (best.distance > 0) updateByPerpendicular(first, second, best);
  return best;
}

}  // namespace

omReal64 pointSegmentDistance(const SpatialPoint& point, const SpatialSegment& segment, SpatialPoint& nearest) {
  const omReal64 scale = safeScaleOf(point, point, segment.p0, segment.p1);
  if (std::isnan(scale)) {
    nearest = notAPoint();
    return scale;
  }
  if (scale == 1.0) return scaledPointSegmentDistance(point, segment, nearest);
  const omReal64 distance = scaledPointSegmentDistance(point * scale, segment * scale, nearest);
  nearest = nearest / scale;
  return distance / scale;
}

omReal64 segmentsDistance(const SpatialSegment& first, const SpatialSegment& second, SpatialPoint& nearestOnFirst,
                          SpatialPoint& nearestOnSecond) {
  const omReal64 scale = safeScaleOf(first.p0, first.p1, second.p0, second.p1);
  if (std::isnan(scale)) {
    nearestOnFirst = nearestOnSecond = notAPoint();
    return scale;
  }
  const NearestPair pair = scale == 1.0 ? nearestPair(first, second) : nearestPair(first * scale, second * scale);
  nearestOnFirst = scale == 1.0 ? pair.onFirst : pair.onFirst / scale;
  nearestOnSecond = scale == 1.0 ? pair.onSecond : pair.onSecond / scale;
  return pair.distance / scale;
}

}  // namespace ormix
