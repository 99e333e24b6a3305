#pragma once

#include <ORMIXMath/Distance/PointSegmentDistance.h>

namespace ormix {

/// Distance between two closed segments and the point of each that is nearest to the other.
///
/// Exactly zero if and only if the segments have a point in common: crossing, touching and overlapping are decided
/// without rounding, by orientation(), also for nearly parallel segments and far from the origin. The two nearest
/// points are then equal; where the segments cross, they are the crossing point, right to a few units in the last place
/// of the largest coordinate at every angle.
///
/// For disjoint segments one of the nearest points is an end, so there is no division by the sine of their angle: the
/// distance is right to a few units in the last place of the largest coordinate. Which of several equally near pairs is
/// returned is not specified. Zero lengths, coordinates that are not finite and cost are as in pointSegmentDistance().
ORMIX_MATH_API omReal64 segmentsDistance(const PlanarSegment& first, const PlanarSegment& second,
                                         PlanarPoint& nearestOnFirst, PlanarPoint& nearestOnSecond);

/// The same for the segments (x0, y0)–(x1, y1) and (x2, y2)–(x3, y3), computed in omReal64 for every type, so integers
/// cannot overflow. The nearest points are structures, since further arguments of type omReal64 would be ambiguous with
/// coordinates.
template <class T>
omReal64 segmentsDistance(T x0, T y0, T x1, T y1, T x2, T y2, T x3, T y3, PlanarPoint& nearestOnFirst,
                          PlanarPoint& nearestOnSecond) {
  return segmentsDistance(toPlanarSegment(x0, y0, x1, y1), toPlanarSegment(x2, y2, x3, y3), nearestOnFirst,
                          nearestOnSecond);
}

/// The same without the nearest points.
template <class T>
omReal64 segmentsDistance(T x0, T y0, T x1, T y1, T x2, T y2, T x3, T y3) {
  PlanarPoint nearestOnFirst;
  PlanarPoint nearestOnSecond;
  return segmentsDistance(x0, y0, x1, y1, x2, y2, x3, y3, nearestOnFirst, nearestOnSecond);
}

/// pointSegmentDistance() of the point (px, py) and the segment (x0, y0)–(x1, y1).
template <class T>
omReal64 segmentsDistance(T px, T py, T x0, T y0, T x1, T y1, PlanarPoint& nearest) {
  return pointSegmentDistance(px, py, x0, y0, x1, y1, nearest);
}

/// The same without the nearest point.
template <class T>
omReal64 segmentsDistance(T px, T py, T x0, T y0, T x1, T y1) {
  return pointSegmentDistance(px, py, x0, y0, x1, y1);
}

}  // namespace ormix
