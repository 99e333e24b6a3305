#pragma once

#include <ORMIXMath/Distance/PlanarSegment.h>
#include <ORMIXMath/Export.h>

#include <cstddef>

namespace ormix {

/// Distance from a point to a closed segment and the segment's nearest point to it.
///
/// Exact zero when and only when the point lies on the segment, as orientation() decides it, the nearest point then
/// being the point itself; otherwise right to a few units in the last place of the largest coordinate (5.6 is the most
/// seen), for every direction, offset and length, a zero length included (the distance to that point). The nearest
/// point stays in the segment's box and is an end itself where an end is nearest. NaN, and a nearest point of NaN, when
/// a coordinate is not finite; infinite when the distance exceeds every finite value. Constant time, no allocation.
ORMIX_MATH_API omReal64 pointSegmentDistance(const PlanarPoint& point, const PlanarSegment& segment,
                                             PlanarPoint& nearest);

/// The distances of many points from one segment, each with the bits of pointSegmentDistance(), in a quarter of the
/// time of as many calls: what depends on the segment alone is computed once, and two points are measured side by side.
/// \param distances set to one distance a point; must not overlap the points
ORMIX_MATH_API void pointSegmentDistances(const PlanarPoint* points, std::size_t nbPoints, const PlanarSegment& segment,
                                          omReal64* distances);

/// pointSegmentDistance() from the coordinates of the point and of the segment's ends, computed in omReal64 for every
/// type; no integer product can wrap.
template <class T>
omReal64 pointSegmentDistance(T px, T py, T x0, T y0, T x1, T y1, PlanarPoint& nearest) {
  return pointSegmentDistance(toPlanarPoint(px, py), toPlanarSegment(x0, y0, x1, y1), nearest);
}

template <class T>
omReal64 pointSegmentDistance(T px, T py, T x0, T y0, T x1, T y1) {
  PlanarPoint nearest;
  return pointSegmentDistance(px, py, x0, y0, x1, y1, nearest);
}

/// The same with the nearest point as two values.
template <class T>
omReal64 pointSegmentDistance(T px, T py, T x0, T y0, T x1, T y1, omReal64& nearestX, omReal64& nearestY) {
  PlanarPoint nearest;
  const omReal64 distance = pointSegmentDistance(px, py, x0, y0, x1, y1, nearest);
  nearestX = nearest.x;
  nearestY = nearest.y;
  return distance;
}

}  // namespace ormix
