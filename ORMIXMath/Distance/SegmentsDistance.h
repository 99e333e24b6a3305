#pragma once

#include <ORMIXMath/Distance/PointSegmentDistance.h>

namespace ormix {

/// Distance between two closed segments and the point of each that is nearest to the other.
///
/// Exact zero when and only when the segments have a point in common: crossing, touching and overlapping are decided
/// without rounding, by orientation(), also for nearly parallel segments and far from the origin. The two nearest
/// points are then equal; where the segments cross, they are the crossing point, right to a few units in the last place
/// of the largest coordinate at every angle. Segments apart are nearest at one of the four ends, so no quotient by the
/// sine of their angle is formed: the distance is right to a few units in the last place of the largest coordinate.
/// Which of several equally near pairs is answered is not fixed. Zero lengths, values that are not finite and cost:
/// pointSegmentDistance().
ORMIX_MATH_API omReal64 segmentsDistance(const PlanarSegment& first, const PlanarSegment& second,
                                         PlanarPoint& nearestOnFirst, PlanarPoint& nearestOnSecond);

/// The same from the coordinates of the ends (x0, y0)–(x1, y1) and (x2, y2)–(x3, y3), computed in omReal64 for every
/// type; no integer product can wrap. The nearest points are structures, for further plain omReal64 arguments could not
/// be told from more coordinates.
template <class T>
omReal64 segmentsDistance(T x0, T y0, T x1, T y1, T x2, T y2, T x3, T y3, PlanarPoint& nearestOnFirst,
                          PlanarPoint& nearestOnSecond) {
  return segmentsDistance(toPlanarSegment(x0, y0, x1, y1), toPlanarSegment(x2, y2, x3, y3), nearestOnFirst,
                          nearestOnSecond);
}

template <class T>
omReal64 segmentsDistance(T x0, T y0, T x1, T y1, T x2, T y2, T x3, T y3) {
  PlanarPoint nearestOnFirst;
  PlanarPoint nearestOnSecond;
  return segmentsDistance(x0, y0, x1, y1, x2, y2, x3, y3, nearestOnFirst, nearestOnSecond);
}

/// pointSegmentDistance() under the common name: the point (px, py) and the segment (x0, y0)–(x1, y1).
template <class T>
omReal64 segmentsDistance(T px, T py, T x0, T y0, T x1, T y1, PlanarPoint& nearest) {
  return pointSegmentDistance(px, py, x0, y0, x1, y1, nearest);
}

template <class T>
omReal64 segmentsDistance(T px, T py, T x0, T y0, T x1, T y1) {
  return pointSegmentDistance(px, py, x0, y0, x1, y1);
}

}  // namespace ormix
