#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Distance/PlanarFrame.h>
#include <ORMIXMath/Distance/SegmentsDistance.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace ormix {

namespace {

using namespace detail;

bool intervalsMeet(omReal64 a0, omReal64 a1, omReal64 b0, omReal64 b1) {
  return std::max(a0, a1) >= std::min(b0, b1) && std::max(b0, b1) >= std::min(a0, a1);
}

/// Whether the ends of one segment lie strictly on the two sides of the other's line.
bool separates(const PlanarSegment& line, const PlanarSegment& ends) {
  return orientation(line.p0, line.p1, ends.p0) * orientation(line.p0, line.p1, ends.p1) < 0;
}

/// Whether the segments have one point in common that is an end of neither.
bool cross(const PlanarSegment& first, const PlanarSegment& second) {
  return intervalsMeet(first.p0.x, first.p1.x, second.p0.x, second.p1.x) &&
         intervalsMeet(first.p0.y, first.p1.y, second.p0.y, second.p1.y) && separates(first, second) &&
         separates(second, first);
}

/// The common point of two segments that cross. It divides one segment in the ratio of its ends' determinants to the
/// other; these are right to their last digits and of opposite sign, so nothing cancels however small the angle is.
PlanarPoint crossingPoint(PlanarSegment walked, PlanarSegment line) {
  if (length(walked.p1 - walked.p0) > length(line.p1 - line.p0)) std::swap(walked, line);
  omReal64 side0 = std::abs(orientationDeterminant(line.p0, line.p1, walked.p0));
  omReal64 side1 = std::abs(orientationDeterminant(line.p0, line.p1, walked.p1));
  if (side1 < side0) {
    std::swap(walked.p0, walked.p1);
    std::swap(side0, side1);
  }
  const omReal64 ratio = side0 / (side0 + side1);
  const PlanarPoint step = (walked.p1 - walked.p0) * ratio;
  return clampToBox(clampToBox({walked.p0.x + step.x, walked.p0.y + step.y}, walked), line);
}

/// A pair of points, one on each segment, and their distance.
struct NearestPair {
  omReal64 distance;
  PlanarPoint onFirst;
  PlanarPoint onSecond;
};

/// Keeps the nearer of the known pair and the one that the given end of one segment makes with the other segment.
void offerEnd(const PlanarPoint& end, const PlanarSegment& other, bool endIsOfFirst, NearestPair& best) {
  PlanarPoint nearest;
  const omReal64 distance = pointSegmentDistance(end, other, nearest);
  // Written so that NaN is taken over: then every distance is NaN.
  if (distance >= best.distance) return;
  best = endIsOfFirst ? NearestPair{distance, end, nearest} : NearestPair{distance, nearest, end};
}

NearestPair nearestPair(const PlanarSegment& first, const PlanarSegment& second) {
  if (cross(first, second)) {
    const PlanarPoint common = crossingPoint(first, second);
    return {0.0, common, common};
  }
  NearestPair best{std::numeric_limits<omReal64>::infinity(), first.p0, second.p0};
  offerEnd(first.p0, second, true, best);
  offerEnd(first.p1, second, true, best);
  offerEnd(second.p0, first, false, best);
  offerEnd(second.p1, first, false, best);
  return best;
}

}  // namespace

omReal64 segmentsDistance(const PlanarSegment& first, const PlanarSegment& second, PlanarPoint& nearestOnFirst,
                          PlanarPoint& nearestOnSecond) {
  const omReal64 scale = safeScale(first, second);
  const NearestPair pair = scale == 1.0 ? nearestPair(first, second) : nearestPair(first * scale, second * scale);
  nearestOnFirst = scale == 1.0 ? pair.onFirst : pair.onFirst / scale;
  nearestOnSecond = scale == 1.0 ? pair.onSecond : pair.onSecond / scale;
  return pair.distance / scale;
}

}  // namespace ormix
