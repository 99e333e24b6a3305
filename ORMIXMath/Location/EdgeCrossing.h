#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Distance/PlanarFrame.h>
#include <ORMIXMath/Location/RingCrossings.h>

#include <algorithm>
#include <cmath>

/// \file
/// The crossing of one edge with a ray; not installed.

namespace ormix::detail {

// Sums of products in this range have neither overflowed nor lost digits to underflow.
constexpr omReal64 s_leastPlainSum = 0x1p-900;
constexpr omReal64 s_largestPlainSum = 0x1p+1000;

// Share of its products above which a rounded determinant has the exact sign (Shewchuk1997).
constexpr omReal64 s_plainSignBound = 0x1p-51;

/// orientation() of coordinates that it takes, the plain cases without a call.
[[gnu::always_inline]] inline int orientationInline(const PlanarPoint& a, const PlanarPoint& b, const PlanarPoint& c) {
  const omReal64 left = (b.x - a.x) * (c.y - a.y);
  const omReal64 right = (b.y - a.y) * (c.x - a.x);
  const omReal64 difference = left - right;
  if (std::abs(difference) > s_plainSignBound * (std::abs(left) + std::abs(right))) return difference > 0 ? 1 : -1;
  return orientation(a, b, c);
}

/// orientation() at any size of the coordinates, which it needs to be scaled for.
inline int orientationAtAnySize(const PlanarPoint& a, const PlanarPoint& b, const PlanarPoint& c) {
  const omReal64 left = (b.x - a.x) * (c.y - a.y);
  const omReal64 right = (b.y - a.y) * (c.x - a.x);
  const omReal64 sum = std::abs(left) + std::abs(right);
  const omReal64 difference = left - right;
  const bool isPlain = sum > s_leastPlainSum && sum < s_largestPlainSum;
  if (isPlain && std::abs(difference) > s_plainSignBound * sum) return difference > 0 ? 1 : -1;
  const omReal64 scale = safeScale(c, {a, b});
  if (scale == 1.0) return orientation(a, b, c);
  return orientation(a * scale, b * scale, c * scale);
}

/// Adds the crossing of the edge from a to b with the ray from p along the x axis. An edge has its lower end and not
/// its upper one, so that a ray through a vertex crosses one of the edges there or none or both.
[[gnu::always_inline]] inline void addEdge(RingCrossings& crossings, const PlanarPoint& a, const PlanarPoint& b,
                                           const PlanarPoint& p) {
  const bool isABelow = a.y <= p.y;
  const bool isBBelow = b.y <= p.y;
  if (isABelow == isBBelow) {
    // Below, or level with the point: then it may be on the edge, or on the edge's upper end.
    if (!isABelow || (a.y != p.y && b.y != p.y)) return;
    const bool isOnEnd = (a.y == p.y && a.x == p.x) || (b.y == p.y && b.x == p.x);
    const bool isOnLevelEdge = a.y == b.y && (a.x <= p.x) != (b.x <= p.x);
    if (isOnEnd || isOnLevelEdge) crossings.isOnBoundary = true;
    return;
  }
  if (std::max(a.x, b.x) < p.x) return;
  if (std::min(a.x, b.x) > p.x) {
    crossings.isOdd = !crossings.isOdd;
    return;
  }
  const int side = orientationAtAnySize(a, b, p);
  if (side == 0)
    crossings.isOnBoundary = true;
  else if ((side > 0) == isABelow)
    crossings.isOdd = !crossings.isOdd;
}

}  // namespace ormix::detail
