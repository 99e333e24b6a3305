// Frustums, tori and arcs of circles against dense points of them, which know only their definition.

#include <ORMIXMath/Distance/CircularArcDistance.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/CircularArc.h>
#include <ORMIXMath/Shape/RoundSolid.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "support/Random.h"

namespace {

using namespace ormix;
using support::Random;

SpatialPoint pointIn(Random& random, omReal64 size) {
  return {random.uniform(-size, size), random.uniform(-size, size), random.uniform(-size, size)};
}
omReal64 distance(const SpatialPoint& p, const SpatialPoint& q) { return std::hypot(p.x - q.x, p.y - q.y, p.z - q.z); }
omReal64 dot(const SpatialPoint& p, const SpatialPoint& q) { return p.x * q.x + p.y * q.y + p.z * q.z; }

/// Cylinders, cones, discs, segments; rings, balls, tubes that meet themselves, circles.
RoundSolid sample(int kind, Random& random) {
  const SpatialPoint p = pointIn(random, 3), q = pointIn(random, 3);
  const omReal64 a = random.uniform(0.2, 2), b = random.uniform(0.2, 2);
  const SpatialPoint axis = unitVector(q);
  switch (kind) {
    case 0:
      return frustumBetween(p, q, a, a);
    case 1:
      return frustumBetween(p, q, a, -b);
    case 2:
      return frustumBetween(p, q, 0, b);
    case 3:
      return frustumBetween(p, p, a, b);
    case 4:
      return frustumBetween(p, q, 0, 0);
    case 5:
      return torusAround(p, axis, a + b, b);
    case 6:
      return torusAround(p, axis, a, a + b);
    case 7:
      return torusAround(p, axis, 0, a);
    default:
      return torusAround(p, axis, a, 0);
  }
}

/// Whether a point is in a solid, by its definition.
bool isIn(const RoundSolid& s, const SpatialPoint& p, omReal64 slack) {
  const SpatialPoint v{p.x - s.origin.x, p.y - s.origin.y, p.z - s.origin.z};
  const omReal64 z = dot(v, s.axis);
  const omReal64 rho = distance(v, {s.axis.x * z, s.axis.y * z, s.axis.z * z});
  if (s.kind == eRS_Torus) return std::hypot(rho - s.radius0, z) <= s.radius1 + slack;
  const omReal64 share = s.height > 0 ? std::clamp(z / s.height, 0.0, 1.0) : s.radius1 > s.radius0;
  return z >= -slack && z <= s.height + slack && rho <= s.radius0 + (s.radius1 - s.radius0) * share + slack;
}

TEST(RoundSolid, NearestAndOutermostPointsAreThoseOfDensePoints) {
  Random random(1931);
  for (int count = 0; count < 900; ++count) {
    SCOPED_TRACE(count);
    const RoundSolid solid = sample(count % 9, random);
    // On the axis, too, and along it, up to rounding.
    const SpatialPoint p = count % 5 == 0 ? solid.origin : count % 5 == 1 ? centroid(solid) : pointIn(random, 5);
    const SpatialPoint n = count % 7 == 0 ? solid.axis : unitVector(pointIn(random, 1));
    const SpatialPoint nearest = nearestOn(solid, p, true), onSurface = nearestOn(solid, p, false);
    const omReal64 signedAway = signedDistance(solid, p);
    ASSERT_TRUE(isIn(solid, nearest, 1e-13) && isIn(solid, onSurface, 1e-13));
    ASSERT_NEAR(distance(p, onSurface), std::abs(signedAway), 1e-13);
    if (std::abs(signedAway) > 1e-13) {
      ASSERT_EQ(isIn(solid, p, 0), signedAway < 0);
    }
    ASSERT_NEAR(distance(p, nearest), std::max(0.0, signedAway), 1e-13);
    const SpatialPoint top = supportPoint(solid, n), far = farthestOn(solid, p);
    ASSERT_TRUE(isIn(solid, top, 1e-13) && isIn(solid, far, 1e-13));
    SpatialPoint center;
    omReal64 radius = 0;
    enclosingBall(solid, center, radius);
    ASSERT_NEAR(distance(center, farthestOn(solid, center)), radius, 1e-13);
    for (int i = 0; i < 300; ++i) {
      // A point of the solid: the nearest one to any place.
      const SpatialPoint q = nearestOn(solid, pointIn(random, 6), i % 2 == 0);
      ASSERT_GE(distance(p, q), std::max(0.0, signedAway) - 1e-13);
      // A ball in the solid around an inner point, as large as the distance says.
      const SpatialPoint u = unitVector(pointIn(random, 1));
      const omReal64 inner = -signedAway * 0.999999;
      const SpatialPoint beside{p.x + u.x * inner, p.y + u.y * inner, p.z + u.z * inner};
      ASSERT_TRUE(inner <= 0 || isIn(solid, beside, 1e-12));
      ASSERT_LE(dot(q, n), dot(top, n) + 1e-13);
      ASSERT_LE(distance(p, q), distance(p, far) + 1e-13);
      ASSERT_LE(distance(center, q), radius + 1e-13);
    }
    // What is touched by planes and spheres between the outermost ones.
    const omReal64 low = dot(supportPoint(solid, {-n.x, -n.y, -n.z}), n), high = dot(top, n);
    const omReal64 level = low + (high - low) * random.uniform(0, 1);
    const SpatialPoint onPlane = pointOnPlane(solid, n, level);
    ASSERT_NEAR(dot(onPlane, n), level, 1e-12);
    ASSERT_NEAR(signedDistance(solid, onPlane), 0, 1e-12);
    const omReal64 reach = std::abs(signedAway) + (distance(p, far) - std::abs(signedAway)) * random.uniform(0, 1);
    const SpatialPoint onSphere = pointAtDistance(solid, p, reach);
    ASSERT_NEAR(distance(p, onSphere), reach, 1e-11);
    ASSERT_NEAR(signedDistance(solid, onSphere), 0, 1e-11);
  }
}

TEST(RoundSolid, VolumeAreaAndCentroidAreThoseOfManyBalls) {
  Random random(1932);
  for (const int kind : {0, 1, 2, 5, 6, 7}) {
    SCOPED_TRACE(kind);
    const RoundSolid s = sample(kind, random);
    // The profile by the midpoint rule, and a shell of the surface.
    const omReal64 low = s.kind == eRS_Torus ? -s.radius1 : 0, high = s.kind == eRS_Torus ? s.radius1 : s.height;
    constexpr int nb = 200000;
    omReal64 sum = 0, moment = 0;
    for (int i = 0; i < nb; ++i) {
      const omReal64 z = low + (high - low) * (i + 0.5) / nb, w = std::sqrt(s.radius1 * s.radius1 - z * z);
      const omReal64 rho = s.radius0 + (s.radius1 - s.radius0) * z / s.height;
      const omReal64 inner = std::max(0.0, s.radius0 - w), outer = s.radius0 + w;
      const omReal64 slice = s.kind == eRS_Torus ? outer * outer - inner * inner : rho * rho;
      sum += slice;
      moment += slice * z;
    }
    EXPECT_NEAR(volume(s) / (s_pi * sum * (high - low) / nb), 1, 1e-7);
    EXPECT_NEAR(dot(centroid(s), s.axis) - dot(s.origin, s.axis), moment / sum, 1e-7);
    // The area is the growth of the volume with the size of the solid (Steiner), of what is convex and smooth.
    if (kind < 5) continue;
    const omReal64 step = 1e-6;
    RoundSolid larger = s, smaller = s;
    larger.radius1 += step;
    smaller.radius1 -= step;
    EXPECT_NEAR((volume(larger) - volume(smaller)) / (2 * step), area(s), 1e-6 * area(s));
  }
  EXPECT_DOUBLE_EQ(area(frustumBetween({0, 0, 0}, {0, 0, 4}, 0, 3)), 24 * s_pi);
  EXPECT_DOUBLE_EQ(area(frustumBetween({1, 0, 0}, {3, 0, 0}, 1, 1)), 6 * s_pi);
}

TEST(CircularArc, DistancesAreThoseOfDensePoints) {
  Random random(1933);
  constexpr int nb = 4000;
  const auto place = [&random] { return PlanarPoint{random.uniform(-4, 4), random.uniform(-4, 4)}; };
  const auto sampleArc = [&] {
    const omReal64 sweep = random.below(5) == 0 ? s_twoPi : random.uniform(-6, 6);
    return CircularArc{place(), random.uniform(0.1, 3), random.uniform(-9, 9), sweep};
  };
  for (int count = 0; count < 400; ++count) {
    SCOPED_TRACE(count);
    const CircularArc arc = sampleArc(), other = sampleArc();
    const PlanarSegment segment{place(), count % 7 == 0 ? arc.center : place()};
    const PlanarNearestPair toSegment = nearestPair(arc, segment), toArc = nearestPair(arc, other);
    const PlanarPoint p = place();
    omReal64 least = 1e9, leastOfSegment = 1e9, leastOfArc = 1e9;
    const PlanarPoint along{segment.p1.x - segment.p0.x, segment.p1.y - segment.p0.y};
    const omReal64 square = along.x * along.x + along.y * along.y;
    for (int i = 0; i <= nb; ++i) {
      const PlanarPoint q = pointAt(arc, arc.start + arc.sweep * i / nb);
      least = std::min(least, std::hypot(p.x - q.x, p.y - q.y));
      const omReal64 t =
          std::clamp(((q.x - segment.p0.x) * along.x + (q.y - segment.p0.y) * along.y) / square, 0.0, 1.0);
      leastOfSegment =
          std::min(leastOfSegment, std::hypot(segment.p0.x + along.x * t - q.x, segment.p0.y + along.y * t - q.y));
      const PlanarPoint r = nearestOn(other, q);
      leastOfArc = std::min(leastOfArc, std::hypot(r.x - q.x, r.y - q.y));
    }
    const omReal64 step = arc.radius * std::abs(arc.sweep) / nb;
    const PlanarPoint nearest = nearestOn(arc, p);
    EXPECT_NEAR(std::hypot(p.x - nearest.x, p.y - nearest.y), least, step);
    EXPECT_NEAR(toSegment.distance, leastOfSegment, step);
    EXPECT_NEAR(toArc.distance, leastOfArc, step);
    for (const auto& pair : {toSegment, toArc}) {
      const PlanarPoint on = nearestOn(arc, pair.onA);
      EXPECT_NEAR(std::hypot(on.x - pair.onA.x, on.y - pair.onA.y), 0, 1e-13);
      EXPECT_NEAR(std::hypot(pair.onB.x - pair.onA.x, pair.onB.y - pair.onA.y), pair.distance, 1e-13);
    }
  }
}

}  // namespace
