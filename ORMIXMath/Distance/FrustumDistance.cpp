#include <ORMIXMath/Distance/RoundParts.h>
#include <ORMIXMath/Distance/RoundSolidDistance.h>

// Distances of cylinders and cones from segments and triangles, and which distance is whose.

namespace ormix {

namespace detail {

namespace {

/// Of the surface: what is inside is nearest to it at an end, as the distance to the surface is concave there.
SpatialNearestPair insideToSurface(const Run& run, omReal64 inside, const RoundSolid& solid) {
  for (const omReal64 end : {run.low, run.high})
    if (signedDistance(solid, run.at(end)) > 0) {
      const auto isIn = [&](omReal64 t) { return signedDistance(solid, run.at(t)) <= 0; };
      return pairAt(run.at(halved(inside, end, isIn)));
    }
  SpatialNearestPair best = pointToRound(run.at(run.low), solid, false);
  take(best, pointToRound(run.at(run.high), solid, false));
  return best;
}

}  // namespace

/// The distance of the points of a line from a convex solid is a convex function, whose slope says which way to go.
SpatialNearestPair segmentToFrustum(const SpatialPoint& p0, const SpatialPoint& q0, const RoundSolid& solid,
                                    bool isFilled) {
  const omReal64 length = lengthOf(q0 - p0);
  if (!(length > 0)) return pointToRound(p0, solid, isFilled);
  const Run run = runBetween(p0, q0, length);
  omReal64 inside = std::numeric_limits<omReal64>::quiet_NaN();
  const auto falls = [&](omReal64 t) {
    const SpatialPoint p = run.at(t);
    if (signedDistance(solid, p) <= 0) inside = t;
    return dot(run.direction, p - nearestOn(solid, p, true)) < 0;
  };
  omReal64 best = run.low;
  if (!falls(run.high))
    best = falls(run.low) ? halved(run.low, run.high, falls) : run.low;
  else
    best = run.high;
  if (std::isnan(inside)) return pointToRound(run.at(best), solid, true);
  return isFilled ? pairAt(run.at(inside)) : insideToSurface(run, inside, solid);
}

/// If no edge meets the solid, its section with the plane of the triangle is inside that or beside it as a whole.
SpatialNearestPair triangleToFrustum(const std::array<SpatialPoint, 3>& t, const RoundSolid& solid, bool isFilled) {
  SpatialNearestPair best = s_noPair;
  for (std::size_t i = 0; i < 3 && best.distance > 0; ++i)
    take(best, segmentToFrustum(t[i], t[(i + 1) % 3], solid, isFilled));
  const SpatialPoint across = cross(t[1] - t[0], t[2] - t[0]);
  if (!(best.distance > 0) || !(dot(across, across) > 0)) return best;
  const SpatialPoint normal = unitVector(across);
  for (const omReal64 side : {1.0, -1.0}) {
    // The lowest point is above the plane, or the highest below it.
    const SpatialPoint end = supportPoint(solid, normal * -side);
    const omReal64 height = dot(normal, end - t[0]);
    if (!(side * height > 0)) continue;
    const SpatialPoint foot = end - normal * height;
    if (isInTriangle(t, normal, foot)) take(best, {std::abs(height), foot, end});
    return best;
  }
  const SpatialPoint common = pointOnPlane(solid, normal, dot(normal, t[0]));
  return isInTriangle(t, normal, common) ? pairAt(common) : best;
}

}  // namespace detail

SpatialNearestPair segmentRoundNearestPair(const SpatialSegment& segment, const RoundSolid& solid, bool isFilled) {
  return solid.kind == eRS_Frustum ? detail::segmentToFrustum(segment.p0, segment.p1, solid, isFilled)
                                   : detail::segmentToTorus(segment.p0, segment.p1, solid, isFilled);
}

SpatialNearestPair triangleRoundNearestPair(const SpatialTriangle& triangle, const RoundSolid& solid, bool isFilled) {
  const std::array<SpatialPoint, 3> corners{triangle.p0, triangle.p1, triangle.p2};
  return solid.kind == eRS_Frustum ? detail::triangleToFrustum(corners, solid, isFilled)
                                   : detail::triangleToTorus(corners, solid, isFilled);
}

SpatialNearestPair ellipsoidRoundNearestPair(const SpatialEllipsoid& ellipsoid, const RoundSolid& solid,
                                             bool isFilled) {
  const detail::ConvexBody body(ellipsoid);
  if (solid.kind == eRS_Torus) return detail::exchanged(detail::torusToConvex(solid, body, isFilled));
  const detail::ConvexBody frustum(solid);
  return detail::exchanged(isFilled ? detail::convexNearestPair(frustum, body)
                                    : detail::convexSurfacesNearestPair(frustum, body));
}

}  // namespace ormix
