#pragma once

#include <ORMIXMath/Distance/SpatialSegment.h>
#include <ORMIXMath/Export.h>

/// \file
/// Distances of points and segments in space, computed with twice the precision of omReal64 for every type of
/// coordinate, so integers cannot overflow. The distance and the nearest points are NaN when a coordinate is not
/// finite; the distance is infinite when it exceeds the largest finite number. Constant time, no allocation.

namespace ormix {

/// Distance from a point to a closed segment and the segment's nearest point to it.
///
/// Zero when the point lies on the segment, which orientation() decides without rounding in the three coordinate
/// planes; the nearest point is then the point itself. Otherwise the distance is right to one unit in its own last
/// place where it exceeds 2^-50 of the largest coordinate, and to 2^-100 of that coordinate below. This holds for every
/// direction, offset and length; a segment of zero length is a point. The nearest point is right to a unit in the last
/// place of the largest coordinate, lies in the segment's bounding box and is an end itself where an end is nearest.
ORMIX_MATH_API omReal64 pointSegmentDistance(const SpatialPoint& point, const SpatialSegment& segment,
                                             SpatialPoint& nearest);

/// Distance between two closed segments and the point of each that is nearest to the other.
///
/// As accurate as pointSegmentDistance() at every angle: the feet of the common perpendicular are computed from the
/// cross product of the directions, whose error grows with 1 / sine of the angle, where that of the normal equations
/// grows with its square; and the pair returned is never farther apart than the nearest of the four pairs with an end.
///
/// Zero, with two equal nearest points, where an end lies on the other segment, which is decided without rounding, and
/// where the segments cross. Crossing is decided without rounding for coordinates whose differences are multiples of a
/// common number by integers of at most 33 bits, hence for every integer type; for others the distance of crossing
/// segments is at most 2^-90 of the largest coordinate. Which of several equally near pairs is returned is not
/// specified.
ORMIX_MATH_API omReal64 segmentsDistance(const SpatialSegment& first, const SpatialSegment& second,
                                         SpatialPoint& nearestOnFirst, SpatialPoint& nearestOnSecond);

/// \name From coordinates
/// Distances of a point (px, py, pz) and the segment (x0, y0, z0)–(x1, y1, z1), under either name, and of two segments.
/// The nearest points are structures, since further arguments of type omReal64 would be ambiguous with coordinates.
/// @{

/// Distance from a point to a segment, with the nearest point.
template <class T>
omReal64 pointSegmentDistance(T px, T py, T pz, T x0, T y0, T z0, T x1, T y1, T z1, SpatialPoint& nearest) {
  return pointSegmentDistance(toSpatialPoint(px, py, pz), toSpatialSegment(x0, y0, z0, x1, y1, z1), nearest);
}

/// Distance from a point to a segment.
template <class T>
omReal64 pointSegmentDistance(T px, T py, T pz, T x0, T y0, T z0, T x1, T y1, T z1) {
  SpatialPoint nearest;
  return pointSegmentDistance(px, py, pz, x0, y0, z0, x1, y1, z1, nearest);
}

/// pointSegmentDistance() with the nearest point.
template <class T>
omReal64 segmentsDistance(T px, T py, T pz, T x0, T y0, T z0, T x1, T y1, T z1, SpatialPoint& nearest) {
  return pointSegmentDistance(px, py, pz, x0, y0, z0, x1, y1, z1, nearest);
}

/// pointSegmentDistance().
template <class T>
omReal64 segmentsDistance(T px, T py, T pz, T x0, T y0, T z0, T x1, T y1, T z1) {
  return pointSegmentDistance(px, py, pz, x0, y0, z0, x1, y1, z1);
}

/// Distance of the segments (x0, y0, z0)–(x1, y1, z1) and (x2, y2, z2)–(x3, y3, z3), with the nearest points.
template <class T>
omReal64 segmentsDistance(T x0, T y0, T z0, T x1, T y1, T z1, T x2, T y2, T z2, T x3, T y3, T z3,
                          SpatialPoint& nearestOnFirst, SpatialPoint& nearestOnSecond) {
  return segmentsDistance(toSpatialSegment(x0, y0, z0, x1, y1, z1), toSpatialSegment(x2, y2, z2, x3, y3, z3),
                          nearestOnFirst, nearestOnSecond);
}

/// Distance of the segments (x0, y0, z0)–(x1, y1, z1) and (x2, y2, z2)–(x3, y3, z3).
template <class T>
omReal64 segmentsDistance(T x0, T y0, T z0, T x1, T y1, T z1, T x2, T y2, T z2, T x3, T y3, T z3) {
  SpatialPoint nearestOnFirst;
  SpatialPoint nearestOnSecond;
  return segmentsDistance(x0, y0, z0, x1, y1, z1, x2, y2, z2, x3, y3, z3, nearestOnFirst, nearestOnSecond);
}
/// @}

}  // namespace ormix
