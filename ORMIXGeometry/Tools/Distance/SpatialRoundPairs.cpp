#include <ORMIXGeometry/Tools/Distance/SpatialBody.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Distance/NearestOnSegments.h>
#include <ORMIXMath/Distance/RoundSolidDistance.h>

#include <algorithm>
#include <cmath>
#include <limits>

// Distances of cylinders, cones, tori, circles and lines.

namespace ormix::geom::detail {

namespace {

using Box = ormix::detail::IndexBox<3>;

using ormix::detail::operator+;
using ormix::detail::operator-;
using ormix::detail::operator*;
using ormix::detail::cross;
using ormix::detail::dot;

omReal64 norm(const SpatialPoint& p) { return std::hypot(p.x, p.y, p.z); }
SpatialNearestPair pairAt(const SpatialPoint& p) { return {0, p, p}; }
SpatialNearestPair exchanged(const SpatialNearestPair& pair) { return {pair.distance, pair.onB, pair.onA}; }
constexpr SpatialNearestPair s_noPair{std::numeric_limits<omReal64>::infinity(), {0, 0, 0}, {0, 0, 0}};
void take(SpatialNearestPair& best, const SpatialNearestPair& pair) {
  if (pair.distance < best.distance) best = pair;
}

bool isSphere(const SpatialBody& body) {
  const std::array<omReal64, 3>& radii = body.ellipsoid.radii;
  return radii[0] == radii[1] && radii[1] == radii[2];
}

SpatialNearestPair pointToRound(const SpatialPoint& p, const RoundSolid& solid, bool isFilled) {
  return segmentRoundNearestPair({p, p}, solid, isFilled);
}

/// By the distances of the ball's centre from the nearest and the farthest point of the other.
SpatialNearestPair sphereToRound(const SpatialPoint& center, omReal64 radius, const RoundSolid& solid, bool isFilled) {
  const SpatialNearestPair near = pointToRound(center, solid, isFilled);
  const auto onSphere = [&](const SpatialPoint& towards, omReal64 distance) {
    return center + (towards - center) * (radius / distance);
  };
  if (near.distance > radius) return {near.distance - radius, onSphere(near.onB, near.distance), near.onB};
  if (isFilled) return pairAt(near.onB);
  const SpatialPoint farthest = farthestOn(solid, center);
  const omReal64 reach = norm(farthest - center);
  if (reach < radius)
    return {radius - reach, reach > 0 ? onSphere(farthest, reach) : center + solid.axis * radius, farthest};
  return pairAt(pointAtDistance(solid, center, radius));
}

/// Where they meet, the common point is one of the surface.
SpatialNearestPair planeToRound(const SpatialBody& plane, const RoundSolid& solid) {
  const auto heightOf = [&plane](const SpatialPoint& p) { return dot(plane.normal, p) - plane.rho; };
  for (const omReal64 side : {1.0, -1.0}) {
    // The lowest point is above the plane, or the highest below it.
    const SpatialPoint end = supportPoint(solid, plane.normal * -side);
    const omReal64 height = heightOf(end);
    if (side * height > 0) return {std::abs(height), end - plane.normal * height, end};
  }
  return pairAt(pointOnPlane(solid, plane.normal, plane.rho));
}

Box boxOf(const RoundSolid& solid) {
  Box box;
  for (const omReal64 side : {1.0, -1.0})
    for (const SpatialPoint& axis : {SpatialPoint{side, 0, 0}, SpatialPoint{0, side, 0}, SpatialPoint{0, 0, side}}) {
      const SpatialPoint p = supportPoint(solid, axis);
      box.add(ormix::detail::IndexPoint<3>{p.x, p.y, p.z});
    }
  return box;
}

SpatialNearestPair facetsToRound(const SpatialBody& facets, const RoundSolid& solid, bool isFilled) {
  // What is inside of a mesh as a whole meets no facet.
  if (const SpatialPoint end = supportPoint(solid, {1, 0, 0}); isFilled && contains(facets, end)) return pairAt(end);
  SpatialNearestPair best = s_noPair;
  facets.tree.visitNearest(boxOf(solid), s_noPair.distance, [&](std::size_t facet, omReal64) {
    const auto [p, q, r] = facets.corners(facet);
    // The ball around the middle of the facet tells of most of those in the box that they are farther away.
    const SpatialPoint middle = (p + q + r) * (1.0 / 3);
    const omReal64 radius = std::max({norm(p - middle), norm(q - middle), norm(r - middle)});
    const omReal64 toMiddle = signedDistance(solid, middle);
    if ((isFilled ? toMiddle : std::abs(toMiddle)) - radius < best.distance)
      take(best, facets.nbCorners == 3 ? triangleRoundNearestPair({p, q, r}, solid, isFilled)
                                       : segmentRoundNearestPair({p, q}, solid, isFilled));
    return best.distance * best.distance;
  });
  return best;
}

/// \name Lines.
/// A line is a point once everything is projected along it.
/// @{
SpatialPoint across(const SpatialPoint& v, const SpatialPoint& unit) {
  const SpatialPoint once = v - unit * dot(v, unit);
  return once - unit * dot(once, unit);
}
SpatialPoint onLine(const SpatialBody& line, const SpatialPoint& p) {
  return line.linePoint + line.lineDirection * dot(p - line.linePoint, line.lineDirection);
}
SpatialNearestPair pointToLine(const SpatialPoint& p, const SpatialBody& line) {
  return {norm(across(p - line.linePoint, line.lineDirection)), p, onLine(line, p)};
}
SpatialNearestPair segmentToLine(const SpatialPoint& p, const SpatialPoint& q, const SpatialBody& line) {
  const SpatialPoint a = across(p - line.linePoint, line.lineDirection);
  const SpatialPoint b = across(q - line.linePoint, line.lineDirection);
  const SpatialNearestPair nearest = nearestOnSegments(SpatialPoint{0, 0, 0}, SpatialSegment{a, b});
  const omReal64 length = norm(b - a);
  const omReal64 share = length > 0 ? std::min(1.0, norm(nearest.onB - a) / length) : 0;
  const SpatialPoint onSegment = p + (q - p) * share;
  return {nearest.distance, onSegment, nearest.distance == 0 ? onSegment : onLine(line, onSegment)};
}
/// Whether the line passes through a triangle, not along it.
bool findCrossing(const std::array<SpatialPoint, 3>& corners, const SpatialBody& line, SpatialPoint& common) {
  std::array<SpatialPoint, 3> p{};
  std::array<omReal64, 3> shares{};
  for (std::size_t i = 0; i < 3; ++i) p[i] = across(corners[i] - line.linePoint, line.lineDirection);
  for (std::size_t i = 0; i < 3; ++i) shares[i] = dot(line.lineDirection, cross(p[(i + 1) % 3], p[(i + 2) % 3]));
  const auto [least, most] = std::minmax({shares[0], shares[1], shares[2]});
  const omReal64 sum = shares[0] + shares[1] + shares[2];
  if ((least < 0 && most > 0) || sum == 0) return false;
  common = corners[0] * (shares[0] / sum) + corners[1] * (shares[1] / sum) + corners[2] * (shares[2] / sum);
  return true;
}
SpatialNearestPair facetsToLine(const SpatialBody& facets, const SpatialBody& line) {
  SpatialNearestPair best = s_noPair;
  for (std::size_t i = 0; i < facets.facets.size() && best.distance > 0; ++i) {
    const auto corners = facets.corners(i);
    if (SpatialPoint common; facets.nbCorners == 3 && findCrossing(corners, line, common)) return pairAt(common);
    for (std::size_t k = 0; k < (facets.nbCorners == 3 ? 3 : 1); ++k)
      take(best, segmentToLine(corners[k], corners[(k + 1) % 3], line));
  }
  return best;
}
SpatialNearestPair sphereToLine(const SpatialBody& sphere, const SpatialBody& line, bool isFilled) {
  const SpatialPoint& center = sphere.ellipsoid.center;
  const omReal64 radius = sphere.ellipsoid.radii[0];
  const SpatialNearestPair near = pointToLine(center, line);
  if (near.distance > radius)
    return {near.distance - radius, center + (near.onB - center) * (radius / near.distance), near.onB};
  if (isFilled) return pairAt(near.onB);
  return pairAt(near.onB + line.lineDirection * std::sqrt((radius - near.distance) * (radius + near.distance)));
}
SpatialNearestPair planeToLine(const SpatialBody& plane, const SpatialBody& line) {
  const omReal64 height = dot(plane.normal, line.linePoint) - plane.rho;
  const omReal64 slope = dot(plane.normal, line.lineDirection);
  // Up to a few roundings of the components of both unit vectors they are parallel.
  constexpr omReal64 parallelSine = 1e-15;
  if (std::abs(slope) <= parallelSine)
    return {std::abs(height), line.linePoint - plane.normal * height, line.linePoint};
  return pairAt(line.linePoint - line.lineDirection * (height / slope));
}
SpatialNearestPair linesNearest(const SpatialBody& a, const SpatialBody& b) {
  const SpatialPoint n = cross(a.lineDirection, b.lineDirection);
  const omReal64 square = dot(n, n);
  constexpr omReal64 parallelSine = 1e-15;
  if (square <= parallelSine * parallelSine) return pointToLine(a.linePoint, b);
  const SpatialPoint between = b.linePoint - a.linePoint;
  const omReal64 t = dot(cross(between, b.lineDirection), n) / square;
  const SpatialPoint onA = a.linePoint + a.lineDirection * t;
  const omReal64 distance = std::abs(dot(between, n)) / std::sqrt(square);
  return distance == 0 ? pairAt(onA) : SpatialNearestPair{distance, onA, onLine(b, onA)};
}
/// @}

}  // namespace

SpatialNearestPair nearestPairToRound(const SpatialBody& a, const SpatialBody& b, bool isFilled) {
  if (a.kind == eBK_Facets) return facetsToRound(a, b.round, isFilled);
  if (a.kind == eBK_Plane) return planeToRound(a, b.round);
  if (a.kind == eBK_Round) return roundsNearestPair(a.round, b.round, isFilled);
  return isSphere(a) ? sphereToRound(a.ellipsoid.center, a.ellipsoid.radii[0], b.round, isFilled)
                     : ellipsoidRoundNearestPair(a.ellipsoid, b.round, isFilled);
}

SpatialNearestPair nearestPairToLine(const SpatialBody& a, const SpatialBody& b, bool isFilled) {
  if (a.kind == eBK_Facets) return facetsToLine(a, b);
  if (a.kind == eBK_Plane) return planeToLine(a, b);
  if (a.kind == eBK_Line) return linesNearest(a, b);
  if (a.kind == eBK_Ellipsoid && isSphere(a)) return sphereToLine(a, b, isFilled);
  // Of what is bounded, only a part of the line can be the nearest.
  SpatialPoint center = a.ellipsoid.center;
  omReal64 radius = std::max({a.ellipsoid.radii[0], a.ellipsoid.radii[1], a.ellipsoid.radii[2]});
  if (a.kind == eBK_Round) enclosingBall(a.round, center, radius);
  const SpatialPoint middle = onLine(b, center), reach = b.lineDirection * (2 * radius);
  const SpatialPoint p = middle - reach, q = middle + reach;
  return exchanged(a.kind == eBK_Round ? segmentRoundNearestPair({p, q}, a.round, isFilled)
                                       : triangleEllipsoidNearestPair({p, q, q}, a.ellipsoid, isFilled));
}

}  // namespace ormix::geom::detail
