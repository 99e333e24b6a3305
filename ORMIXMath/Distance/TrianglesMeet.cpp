#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Distance/Orientation3d.h>
#include <ORMIXMath/Distance/TrianglesMeet.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace ormix {

namespace {

using Corners = std::array<SpatialPoint, 3>;

Corners cornersOf(const SpatialTriangle& t) { return {t.p0, t.p1, t.p2}; }

bool isFinite(const SpatialPoint& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }
bool isFinite(const SpatialSegment& s) { return isFinite(s.p0) && isFinite(s.p1); }
bool isFinite(const SpatialTriangle& t) { return isFinite(t.p0) && isFinite(t.p1) && isFinite(t.p2); }

bool areEqual(const SpatialPoint& p, const SpatialPoint& q) { return p.x == q.x && p.y == q.y && p.z == q.z; }

/// Order of points of one line along it.
bool isBefore(const SpatialPoint& p, const SpatialPoint& q) {
  if (p.x != q.x) return p.x < q.x;
  return p.y != q.y ? p.y < q.y : p.z < q.z;
}

/// The point without its coordinate number `axis`, 0 to 2.
PlanarPoint projected(const SpatialPoint& p, int axis) {
  if (axis == 0) return {p.y, p.z};
  return axis == 1 ? PlanarPoint{p.z, p.x} : PlanarPoint{p.x, p.y};
}

int orientationAlong(int axis, const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c) {
  return orientation(projected(a, axis), projected(b, axis), projected(c, axis));
}

constexpr int s_noAxis = 3;

/// An axis along which the triangle's projection keeps an area, so that no two points of its plane fall together;
/// s_noAxis when the points are collinear.
int projectionAxis(const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c) {
  for (int axis = 0; axis < 3; ++axis)
    if (orientationAlong(axis, a, b, c) != 0) return axis;
  return s_noAxis;
}

/// The segment that a triangle with collinear corners is.
SpatialSegment asSegment(const SpatialTriangle& t) {
  const auto [first, last] = std::minmax({t.p0, t.p1, t.p2}, isBefore);
  return {first, last};
}

bool intervalsMeet(omReal64 a0, omReal64 a1, omReal64 b0, omReal64 b1) {
  return std::max(a0, a1) >= std::min(b0, b1) && std::max(b0, b1) >= std::min(a0, a1);
}

bool boxesMeet(const SpatialSegment& s, const SpatialSegment& r) {
  return intervalsMeet(s.p0.x, s.p1.x, r.p0.x, r.p1.x) && intervalsMeet(s.p0.y, s.p1.y, r.p0.y, r.p1.y) &&
         intervalsMeet(s.p0.z, s.p1.z, r.p0.z, r.p1.z);
}

bool rangesMeet(const Corners& a, const Corners& b, omReal64 SpatialPoint::*axis) {
  const auto [minA, maxA] = std::minmax({a[0].*axis, a[1].*axis, a[2].*axis});
  const auto [minB, maxB] = std::minmax({b[0].*axis, b[1].*axis, b[2].*axis});
  return maxA >= minB && maxB >= minA;
}

bool boxesMeet(const Corners& a, const Corners& b) {
  return rangesMeet(a, b, &SpatialPoint::x) && rangesMeet(a, b, &SpatialPoint::y) && rangesMeet(a, b, &SpatialPoint::z);
}

/// The corners, counter-clockwise as seen along the axis, or with the orientation that is told.
Corners turned(const Corners& t, int sign) { return sign < 0 ? Corners{t[0], t[2], t[1]} : t; }

/// Whether an edge of a counter-clockwise triangle has all points strictly on its outer side; projected along the axis.
template <std::size_t N>
bool separates(const Corners& t, const std::array<SpatialPoint, N>& points, int axis) {
  for (std::size_t i = 0; i < 3; ++i) {
    const SpatialPoint& from = t[i];
    const SpatialPoint& to = t[(i + 1) % 3];
    if (std::all_of(points.begin(), points.end(),
                    [&](const SpatialPoint& p) { return orientationAlong(axis, from, to, p) < 0; }))
      return true;
  }
  return false;
}

/// For triangles of one plane, which the axis does not project to a line. Disjoint convex polygons are separated by the
/// line of an edge.
bool coplanarMeet(const Corners& a, const Corners& b, int axis) {
  const Corners turnedA = turned(a, orientationAlong(axis, a[0], a[1], a[2]));
  const Corners turnedB = turned(b, orientationAlong(axis, b[0], b[1], b[2]));
  return !separates(turnedA, b, axis) && !separates(turnedB, a, axis);
}

/// The same for a segment of the triangle's plane.
bool coplanarMeet(const SpatialSegment& s, const Corners& t, int axis) {
  const Corners ring = turned(t, orientationAlong(axis, t[0], t[1], t[2]));
  if (separates(ring, std::array<SpatialPoint, 2>{s.p0, s.p1}, axis)) return false;
  int sides[3];
  for (std::size_t i = 0; i < 3; ++i) sides[i] = orientationAlong(axis, s.p0, s.p1, t[i]);
  return !(sides[0] == sides[1] && sides[1] == sides[2] && sides[0] != 0);
}

/// Whether signs of both kinds are among three.
bool areOpposed(int a, int b, int c) { return std::max({a, b, c}) > 0 && std::min({a, b, c}) < 0; }
bool areStrictlyEqual(int a, int b, int c) { return a != 0 && a == b && b == c; }

/// segmentMeetsTriangle() with the sides of the plane on which the ends lie, for triangles with a plane.
bool meetsWithSides(const SpatialSegment& s, const Corners& t, int side0, int side1) {
  if (side0 * side1 > 0) return false;
  if (side0 == 0 && side1 == 0) return coplanarMeet(s, t, projectionAxis(t[0], t[1], t[2]));
  return !areOpposed(orientation3d(s.p0, s.p1, t[0], t[1]), orientation3d(s.p0, s.p1, t[1], t[2]),
                     orientation3d(s.p0, s.p1, t[2], t[0]));
}

/// Turns a triangle, given with the sides of the other's plane on which its corners lie, so that the first corner is
/// alone on its side, where a corner in the plane counts for the side with fewer corners. Answers that side.
int turnAloneFirst(Corners& t, const std::array<int, 3>& sides) {
  const auto alone = [&](int side) {
    // The one corner on this side, the others being on the other side or in the plane; or 3.
    std::size_t found = 3;
    for (std::size_t i = 0; i < 3; ++i) {
      if (sides[i] != side) continue;
      if (found != 3) return std::size_t{3};
      found = i;
    }
    return found;
  };
  int side = 1;
  std::size_t first = alone(1);
  if (first == 3) {
    side = -1;
    first = alone(-1);
  }
  if (first == 3) {
    // Two corners strictly on one side, the third in the plane.
    first = alone(0);
    side = -sides[(first + 1) % 3];
  }
  t = {t[first], t[(first + 1) % 3], t[(first + 2) % 3]};
  return side;
}

/// Whether the segment from `apex` to `end` has more than the apex in common with the triangle of the apex and the two
/// corners.
bool leavesInto(const SpatialPoint& apex, const SpatialPoint& end, const SpatialPoint& corner0,
                const SpatialPoint& corner1) {
  if (areEqual(apex, end)) return false;
  const int axis = projectionAxis(apex, corner0, corner1);
  if (axis != s_noAxis) {
    if (orientation3d(apex, corner0, corner1, end) != 0) return false;
    const int turn = orientationAlong(axis, apex, corner0, corner1);
    return orientationAlong(axis, apex, corner0, end) * turn >= 0 &&
           orientationAlong(axis, apex, end, corner1) * turn >= 0;
  }
  const auto isAlong = [&](const SpatialPoint& corner) {
    return !areEqual(apex, corner) && projectionAxis(apex, end, corner) == s_noAxis &&
           isBefore(apex, end) == isBefore(apex, corner);
  };
  return isAlong(corner0) || isAlong(corner1);
}

/// Beyond a common corner, the first of both triangles: where a ray from there leaves the first of them, it does so on
/// the opposite edge, in the other triangle.
bool crossBeyondCorner(const Corners& a, const Corners& b) {
  const bool isLineA = projectionAxis(a[0], a[1], a[2]) == s_noAxis;
  const bool isLineB = projectionAxis(b[0], b[1], b[2]) == s_noAxis;
  if (isLineA) return leavesInto(a[0], a[1], b[1], b[2]) || leavesInto(a[0], a[2], b[1], b[2]);
  if (isLineB) return leavesInto(a[0], b[1], a[1], a[2]) || leavesInto(a[0], b[2], a[1], a[2]);
  const int sideB1 = orientation3d(a[0], a[1], a[2], b[1]), sideB2 = orientation3d(a[0], a[1], a[2], b[2]);
  if (sideB1 * sideB2 > 0) return false;
  const int sideA1 = orientation3d(b[0], b[1], b[2], a[1]), sideA2 = orientation3d(b[0], b[1], b[2], a[2]);
  return meetsWithSides({a[1], a[2]}, b, sideA1, sideA2) || meetsWithSides({b[1], b[2]}, a, sideB1, sideB2);
}

/// Beyond a common edge, the first two corners of both triangles.
bool crossBeyondEdge(const Corners& a, const Corners& b) {
  // In different planes both have only the edge on the common line.
  if (orientation3d(a[0], a[1], a[2], b[2]) != 0) return false;
  const int axisA = projectionAxis(a[0], a[1], a[2]);
  const int axisB = projectionAxis(a[0], a[1], b[2]);
  if (axisA != s_noAxis && axisB != s_noAxis)
    return orientationAlong(axisA, a[0], a[1], a[2]) == orientationAlong(axisA, a[0], a[1], b[2]);
  if (axisA != axisB || projectionAxis(a[0], a[2], b[2]) != s_noAxis || projectionAxis(a[1], a[2], b[2]) != s_noAxis)
    return false;
  const auto [first, last] = std::minmax({a[0], a[1]}, isBefore);
  return (isBefore(last, a[2]) && isBefore(last, b[2])) || (isBefore(a[2], first) && isBefore(b[2], first));
}

}  // namespace

bool isDegenerate(const SpatialTriangle& t) { return projectionAxis(t.p0, t.p1, t.p2) == s_noAxis; }

bool pointMeetsSegment(const SpatialPoint& point, const SpatialSegment& segment) {
  return isFinite(point) && isFinite(segment) && boxesMeet({point, point}, segment) &&
         projectionAxis(segment.p0, segment.p1, point) == s_noAxis;
}

bool segmentsMeet(const SpatialSegment& s, const SpatialSegment& r) {
  if (!isFinite(s) || !isFinite(r) || !boxesMeet(s, r)) return false;
  if (orientation3d(s.p0, s.p1, r.p0, r.p1) != 0) return false;
  int axis = projectionAxis(s.p0, s.p1, r.p0);
  if (axis == s_noAxis) axis = projectionAxis(s.p0, s.p1, r.p1);
  if (axis == s_noAxis) axis = projectionAxis(r.p0, r.p1, s.p0);
  if (axis == s_noAxis) axis = projectionAxis(r.p0, r.p1, s.p1);
  // All on one line: there the boxes of segments are the segments.
  if (axis == s_noAxis) return true;
  const int r0 = orientationAlong(axis, s.p0, s.p1, r.p0), r1 = orientationAlong(axis, s.p0, s.p1, r.p1);
  const int s0 = orientationAlong(axis, r.p0, r.p1, s.p0), s1 = orientationAlong(axis, r.p0, r.p1, s.p1);
  return r0 * r1 <= 0 && s0 * s1 <= 0;
}

bool pointMeetsTriangle(const SpatialPoint& point, const SpatialTriangle& triangle) {
  return segmentMeetsTriangle({point, point}, triangle);
}

bool segmentMeetsTriangle(const SpatialSegment& s, const SpatialTriangle& triangle) {
  if (!isFinite(s) || !isFinite(triangle)) return false;
  if (!boxesMeet(Corners{s.p0, s.p1, s.p1}, cornersOf(triangle))) return false;
  if (isDegenerate(triangle)) return segmentsMeet(s, asSegment(triangle));
  const int side0 = orientation3d(triangle.p0, triangle.p1, triangle.p2, s.p0);
  const int side1 = orientation3d(triangle.p0, triangle.p1, triangle.p2, s.p1);
  return meetsWithSides(s, cornersOf(triangle), side0, side1);
}

bool trianglesMeet(const SpatialTriangle& first, const SpatialTriangle& second) {
  Corners a = cornersOf(first);
  Corners b = cornersOf(second);
  if (!boxesMeet(a, b) || !isFinite(first) || !isFinite(second)) return false;
  const auto sidesOf = [](const Corners& t, const Corners& plane) {
    return std::array<int, 3>{orientation3d(plane[0], plane[1], plane[2], t[0]),
                              orientation3d(plane[0], plane[1], plane[2], t[1]),
                              orientation3d(plane[0], plane[1], plane[2], t[2])};
  };
  const std::array<int, 3> sidesA = sidesOf(a, b);
  if (areStrictlyEqual(sidesA[0], sidesA[1], sidesA[2])) return false;
  const std::array<int, 3> sidesB = sidesOf(b, a);
  if (areStrictlyEqual(sidesB[0], sidesB[1], sidesB[2])) return false;
  const auto areZero = [](const std::array<int, 3>& sides) { return sides == std::array<int, 3>{0, 0, 0}; };
  if (areZero(sidesA) || areZero(sidesB)) {
    if (isDegenerate(first)) return segmentMeetsTriangle(asSegment(first), second);
    if (isDegenerate(second)) return segmentMeetsTriangle(asSegment(second), first);
    return coplanarMeet(a, b, projectionAxis(a[0], a[1], a[2]));
  }
  // Both are turned so that the corner that is alone sees the other triangle counter-clockwise; the two edges from
  // there end the interval of each triangle on the common line.
  const int sideA = turnAloneFirst(a, sidesA);
  const int sideB = turnAloneFirst(b, sidesB);
  if (sideA < 0) std::swap(b[1], b[2]);
  if (sideB < 0) std::swap(a[1], a[2]);
  return orientation3d(a[0], a[1], b[0], b[1]) <= 0 && orientation3d(a[0], a[2], b[2], b[0]) <= 0;
}

bool trianglesCrossBeyondShared(const SpatialTriangle& first, const TriangleCorners& cornersOfA,
                                const SpatialTriangle& second, const TriangleCorners& cornersOfB) {
  const Corners a = cornersOf(first);
  const Corners b = cornersOf(second);
  // Pairs of places of shared corners; the places that are not shared follow from the sum 0 + 1 + 2.
  std::size_t nbShared = 0;
  std::array<std::size_t, 3> inA{}, inB{};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t k = 0; k < 3; ++k) {
      const auto isTaken = [&](const std::array<std::size_t, 3>& taken, std::size_t place) {
        return std::find(taken.begin(), taken.begin() + nbShared, place) != taken.begin() + nbShared;
      };
      if (cornersOfA[i] != cornersOfB[k] || isTaken(inA, i) || isTaken(inB, k)) continue;
      inA[nbShared] = i;
      inB[nbShared++] = k;
    }
  if (nbShared == 0) return trianglesMeet(first, second);
  if (!isFinite(first) || !isFinite(second)) return false;
  if (nbShared == 3) return true;
  const auto fromCorner = [](const Corners& t, std::size_t i) { return Corners{t[i], t[(i + 1) % 3], t[(i + 2) % 3]}; };
  if (nbShared == 1) return crossBeyondCorner(fromCorner(a, inA[0]), fromCorner(b, inB[0]));
  return crossBeyondEdge({a[inA[0]], a[inA[1]], a[3 - inA[0] - inA[1]]},
                         {b[inB[0]], b[inB[1]], b[3 - inB[0] - inB[1]]});
}

}  // namespace ormix
