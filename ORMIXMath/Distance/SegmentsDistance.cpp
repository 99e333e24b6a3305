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

/// Whether two closed intervals, given by their ends in either order, have a point in common.
bool intervalsMeet(omReal64 a0, omReal64 a1, omReal64 b0, omReal64 b1) {
  return std::max(a0, a1) >= std::min(b0, b1) && std::max(b0, b1) >= std::min(a0, a1);
}

/// Whether the ends of one segment lie strictly on different sides of the other's line.
bool separates(const PlanarSegment& line, const PlanarSegment& ends) {
  return orientation(line.p0, line.p1, ends.p0) * orientation(line.p0, line.p1, ends.p1) < 0;
}

/// Whether the segments have one point in common that is an end of neither.
bool haveInnerCrossing(const PlanarSegment& first, const PlanarSegment& second) {
  return intervalsMeet(first.p0.x, first.p1.x, second.p0.x, second.p1.x) &&
         intervalsMeet(first.p0.y, first.p1.y, second.p0.y, second.p1.y) && separates(first, second) &&
         separates(second, first);
}

/// The common point of two segments that cross. It divides the shorter segment in the ratio of the distances of its
/// ends from the other's line, that is, of two determinants of opposite sign. Their magnitudes are accurate and added,
/// so no digits cancel, however small the angle is.
PlanarPoint crossingPoint(PlanarSegment divided, PlanarSegment line) {
  if (length(divided.p1 - divided.p0) > length(line.p1 - line.p0)) std::swap(divided, line);
  omReal64 side0 = std::abs(orientationDeterminant(line.p0, line.p1, divided.p0));
  omReal64 side1 = std::abs(orientationDeterminant(line.p0, line.p1, divided.p1));
  if (side1 < side0) {
    std::swap(divided.p0, divided.p1);
    std::swap(side0, side1);
  }
  const omReal64 ratio = side0 / (side0 + side1);
  const PlanarPoint step = (divided.p1 - divided.p0) * ratio;
  return clampToBox(clampToBox({divided.p0.x + step.x, divided.p0.y + step.y}, divided), line);
}

/// A pair of points, one on each segment, and their distance.
struct NearestPair {
  omReal64 distance;
  PlanarPoint onFirst;
  PlanarPoint onSecond;
};

/// Replaces the best pair by that of an end of one segment and the nearest point of the other where this is nearer.
void updateByEnd(const PlanarPoint& end, const PlanarSegment& other, bool endIsOfFirst, NearestPair& best) {
  PlanarPoint nearest;
  const omReal64 distance = pointSegmentDistance(end, other, nearest);
  // A NaN replaces the best pair; all distances are NaN then.
  if (distance >= best.distance) return;
  best = endIsOfFirst ? NearestPair{distance, end, nearest} : NearestPair{distance, nearest, end};
}

/// The nearest pair for coordinates that need no scaling.
NearestPair nearestPair(const PlanarSegment& first, const PlanarSegment& second) {
  if (haveInnerCrossing(first, second)) {
    const PlanarPoint common = crossingPoint(first, second);
    return {0.0, common, common};
  }
  NearestPair best{std::numeric_limits<omReal64>::infinity(), first.p0, second.p0};
  updateByEnd(first.p0, second, true, best);
  updateByEnd(first.p1, second, true, best);
  updateByEnd(second.p0, first, false, best);
  updateByEnd(second.p1, first, false, best);
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
