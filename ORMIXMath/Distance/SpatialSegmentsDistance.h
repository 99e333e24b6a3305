#pragma once

#include <ORMIXMath/Distance/SpatialSegment.h>
#include <ORMIXMath/Export.h>

/// \file
/// Distances of points and segments in space, computed with twice the precision of omReal64 for every type of
/// coordinate; no integer product can wrap. NaN, and nearest points of NaN, when a coordinate is not finite; infinite
/// when the distance exceeds every finite value. Constant time, no allocation.

namespace ormix {

/// Distance from a point to a closed segment and the segment's nearest point to it.
///
/// Zero when the point lies on the segment, as orientation() decides it without rounding in the three coordinate
/// planes, the nearest point then being the point itself. Otherwise right to one unit in its own last place as long as
/// it exceeds 2^-50 of the largest coordinate, below that to 2^-100 of the latter; for every direction, offset and
/// length, a zero length included (the distance to that point). The nearest point is right to a unit in the last place
/// of the largest coordinate, stays in the segment's box and is an end itself where an end is nearest.
ORMIX_MATH_API omReal64 pointSegmentDistance(const SpatialPoint& point, const SpatialSegment& segment,
                                             SpatialPoint& nearest);

/// Distance between two closed segments and the point of each that is nearest to the other.
///
/// As exact as pointSegmentDistance() at every angle: the two feet of the common perpendicular come from the vector
/// across both segments, not from the determinant of their normal equations, which is off by the square of what the
/// angle costs here; and no pair is answered that is farther apart than the nearest of the four with an end in it.
/// Zero, with two equal nearest points, where an end lies on the other segment, decided without rounding, and where the
/// segments cross inside, decided without rounding for differences of coordinates that are multiples of one number by
/// integers of at most 33 bits (so for every integer type); a crossing of others has at most 2^-90 of the largest
/// coordinate for its distance. Which of several equally near pairs is answered is not fixed.
ORMIX_MATH_API omReal64 segmentsDistance(const SpatialSegment& first, const SpatialSegment& second,
                                         SpatialPoint& nearestOnFirst, SpatialPoint& nearestOnSecond);

/// \name From coordinates
/// Of a point (px, py, pz) and the segment (x0, y0, z0)–(x1, y1, z1) under either name, and of two segments. The
/// nearest points are structures, for further plain omReal64 arguments could not be told from more coordinates.
/// @{
template <class T>
omReal64 pointSegmentDistance(T px, T py, T pz, T x0, T y0, T z0, T x1, T y1, T z1, SpatialPoint& nearest) {
  return pointSegmentDistance(toSpatialPoint(px, py, pz), toSpatialSegment(x0, y0, z0, x1, y1, z1), nearest);
}

template <class T>
omReal64 pointSegmentDistance(T px, T py, T pz, T x0, T y0, T z0, T x1, T y1, T z1) {
  SpatialPoint nearest;
  return pointSegmentDistance(px, py, pz, x0, y0, z0, x1, y1, z1, nearest);
}

template <class T>
omReal64 segmentsDistance(T px, T py, T pz, T x0, T y0, T z0, T x1, T y1, T z1, SpatialPoint& nearest) {
  return pointSegmentDistance(px, py, pz, x0, y0, z0, x1, y1, z1, nearest);
}

template <class T>
omReal64 segmentsDistance(T px, T py, T pz, T x0, T y0, T z0, T x1, T y1, T z1) {
  return pointSegmentDistance(px, py, pz, x0, y0, z0, x1, y1, z1);
}

template <class T>
omReal64 segmentsDistance(T x0, T y0, T z0, T x1, T y1, T z1, T x2, T y2, T z2, T x3, T y3, T z3,
                          SpatialPoint& nearestOnFirst, SpatialPoint& nearestOnSecond) {
  return segmentsDistance(toSpatialSegment(x0, y0, z0, x1, y1, z1), toSpatialSegment(x2, y2, z2, x3, y3, z3),
                          nearestOnFirst, nearestOnSecond);
}

template <class T>
omReal64 segmentsDistance(T x0, T y0, T z0, T x1, T y1, T z1, T x2, T y2, T z2, T x3, T y3, T z3) {
  SpatialPoint nearestOnFirst;
  SpatialPoint nearestOnSecond;
  return segmentsDistance(x0, y0, z0, x1, y1, z1, x2, y2, z2, x3, y3, z3, nearestOnFirst, nearestOnSecond);
}
/// @}

}  // namespace ormix
