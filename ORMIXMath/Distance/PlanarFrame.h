#pragma once

#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Distance/PlanarSegment.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>

/// \file
/// Scaling, clamping and lengths for the distances of the plane; those of space use the scale and the clamping, too.
/// Not installed.

namespace ormix::detail {

constexpr PlanarSegment operator*(const PlanarSegment& s, omReal64 factor) { return {s.p0 * factor, s.p1 * factor}; }

/// Clamps a computed coordinate to the interval between those of two ends, given in either order.
inline omReal64 clampBetween(omReal64 value, omReal64 end0, omReal64 end1) {
  return end0 < end1 ? std::clamp(value, end0, end1) : std::clamp(value, end1, end0);
}

/// Clamps a computed point of the segment to the segment's axis-parallel bounding box: its exact position is inside,
/// only rounding can put it outside.
inline PlanarPoint clampToBox(const PlanarPoint& point, const PlanarSegment& segment) {
  return {clampBetween(point.x, segment.p0.x, segment.p1.x), clampBetween(point.y, segment.p0.y, segment.p1.y)};
}

/// Euclidean length without spurious underflow; for components up to 2^500 in size.
inline omReal64 length(const PlanarPoint& vector) {
  constexpr omReal64 smallestSafe = 0x1p-900;  // smaller squares may have lost digits to underflow
  const omReal64 square = vector.x * vector.x + vector.y * vector.y;
  return square < smallestSafe ? std::hypot(vector.x, vector.y) : std::sqrt(square);
}

/// Power of two by which coordinates are multiplied so that products of two of them neither overflow nor lose the
/// digits that the exact predicates need: 1 unless the largest magnitude is outside [2^-400, 2^500]. NaN when a
/// coordinate is not finite, which makes everything computed with the scale NaN.
omReal64 safeScale(std::initializer_list<omReal64> coordinates);
omReal64 safeScale(const PlanarPoint& point, const PlanarSegment& segment);
omReal64 safeScale(const PlanarSegment& first, const PlanarSegment& second);

}  // namespace ormix::detail
