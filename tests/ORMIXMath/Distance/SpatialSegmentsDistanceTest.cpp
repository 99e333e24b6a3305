#include <ORMIXMath/Distance/NearestOnSegments.h>
#include <ORMIXMath/Distance/SpatialSegmentsDistance.h>

#include "DistanceOracle.h"
#include "support/Checks.h"

namespace ormix {
namespace {

using oracle::ulps;

// Where the result is itself a rounded coordinate or distance, half a unit of it is lost in any case.
constexpr omReal64 s_allowedUlps = 2;

bool same(const SpatialPoint& a, const SpatialPoint& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

/// Relative to the larger of the distance and a unit in the last place of the coordinates.
omReal64 relativeError(omReal64 distance, const oracle::Exact& exact, omReal64 ulp) {
  return ulps((distance - exact) / std::max(exact, oracle::Exact(ulp)), 0x1p-52);
}

TEST(SpatialSegmentsDistance, IsRightOnHostileCases) {
  oracle::HostileSegments cases(90125);
  int touching = 0;
  for (int i = 0; i < 6000; ++i) {
    const auto [s, r] = cases.next();
    SCOPED_TRACE(testing::Message() << s << ' ' << r);
    SpatialPoint onS, onR;
    const omReal64 toPoint = pointSegmentDistance(r.p0, s, onS);
    const oracle::Exact exactToPoint = oracle::pointDistance(r.p0, s);
    const omReal64 pointUlp = oracle::ulp(s, {r.p0, r.p0});
    ASSERT_EQ(toPoint == 0, exactToPoint.is_zero());
    touching += toPoint == 0;
    ASSERT_LE(relativeError(toPoint, exactToPoint, pointUlp), s_allowedUlps);
    // The nearest point lies on the segment and at that distance.
    ASSERT_LE(ulps(oracle::pointDistance(onS, s), pointUlp), s_allowedUlps);
    ASSERT_LE(ulps(oracle::norm(oracle::ExactPoint(onS) - r.p0) - exactToPoint, pointUlp), s_allowedUlps);

    const omReal64 distance = segmentsDistance(s, r, onS, onR);
    const oracle::Exact exact = oracle::segmentDistance(s, r);
    const omReal64 ulp = oracle::ulp(s, r);
    ASSERT_LE(relativeError(distance, exact, ulp), s_allowedUlps);
    ASSERT_TRUE(distance > 0 || same(onS, onR));
    ASSERT_LE(ulps(oracle::pointDistance(onS, s), ulp), s_allowedUlps);
    ASSERT_LE(ulps(oracle::pointDistance(onR, r), ulp), s_allowedUlps);
    ASSERT_LE(ulps(oracle::norm(oracle::ExactPoint(onS) - onR) - exact, ulp), s_allowedUlps);
    ASSERT_LE(std::abs(segmentsDistance(r, {s.p1, s.p0}, onR, onS) - distance) / ulp, s_allowedUlps);
  }
  EXPECT_GT(touching, 300);
}

TEST(SpatialSegmentsDistance, PointsNearEitherEndAreRight) {
  support::Random random(1984);
  SpatialPoint nearest;
  for (int i = 0; i < 2000; ++i) {
    // Points on a segment that is long against the steps of its end's coordinate, and then beside it.
    const omReal64 end = random.uniform(0.25, 0.75);
    SpatialSegment s{{1e6, 1, 1}, {end, 1, 1}};
    if (i % 2 != 0) std::swap(s.p0, s.p1);
    SpatialPoint point{end + std::pow(10.0, random.uniform(-16, 0)), 1, 1};
    ASSERT_EQ(pointSegmentDistance(point, s, nearest), 0) << point << ' ' << s;
    ASSERT_TRUE(same(nearest, point));
    point.y += std::pow(10.0, random.uniform(-12, 0));
    ASSERT_EQ(pointSegmentDistance(point, s, nearest), point.y - 1) << point << ' ' << s;
  }
}

TEST(SpatialSegmentsDistance, CrossingsOfIntegersAreExactUpToTheEndOfTheirRange) {
  support::Random random(4711);
  const auto small = [&random] { return omReal64(random.below(80001)) - 40000; };
  for (int i = 0; i < 2000; ++i) {
    // Two directions from one inner point, cut by coprime steps on either side, scaled near the range's end.
    const omReal64 px = 1e9 + small(), py = small(), pz = -2e9 + small();
    const omReal64 ux = small(), uy = small(), uz = small(), vx = small(), vy = small(), vz = small();
    SpatialPoint a, b;
    EXPECT_EQ(segmentsDistance(px - 3 * ux, py - 3 * uy, pz - 3 * uz, px + 700 * ux, py + 700 * uy, pz + 700 * uz,
                               px - 11 * vx, py - 11 * vy, pz - 11 * vz, px + 2 * vx, py + 2 * vy, pz + 2 * vz, a, b),
              0);
    EXPECT_TRUE(same(a, {px, py, pz}) && same(b, a)) << a << b;
  }
}

TEST(SpatialSegmentsDistance, ScalesWithTheCoordinates) {
  for (int exponent = -1060; exponent <= 1010; exponent += 9) {
    const omReal64 unit = std::ldexp(1.0, exponent);
    SpatialPoint a, b;
    EXPECT_EQ(segmentsDistance({{0, 0, 0}, {4 * unit, 4 * unit, 0}}, {{0, 4 * unit, 3 * unit}, {4 * unit, 0, 3 * unit}},
                               a, b),
              3 * unit)
        << exponent;
    EXPECT_TRUE(same(a, {2 * unit, 2 * unit, 0}) && same(b, {2 * unit, 2 * unit, 3 * unit}));
    const SpatialNearestPair pair = nearestOnSegments(SpatialPoint{unit, 0, 5 * unit}, {{0, 0, 0}, {8 * unit, 0, 0}});
    EXPECT_TRUE(pair.distance == 5 * unit && same(pair.onA, {unit, 0, 5 * unit}) && same(pair.onB, {unit, 0, 0}));
    EXPECT_EQ(pointSegmentDistance({unit, unit, unit}, {{0, 0, 0}, {2 * unit, 2 * unit, 2 * unit}}, a), 0) << exponent;
  }
  // Segments far shorter than their distance, whose squares would underflow.
  SpatialPoint a, b;
  EXPECT_EQ(pointSegmentDistance({0.5e-300, 1e-20, 0}, {{0, 0, 0}, {1e-300, 0, 0}}, a), 1e-20);
  EXPECT_EQ(segmentsDistance({{-1e-310, 0, 0}, {1e-310, 0, 0}}, {{0, -1e-300, 1}, {0, 1e-300, 1}}, a, b), 1);
  EXPECT_EQ(pointSegmentDistance({1e308, 0, 0}, {{-1e308, 0, 0}, {-1e308, 1, 0}}, a), support::s_infinity);
}

TEST(SpatialSegmentsDistance, AnswersNaNForWhatIsNotFinite) {
  oracle::expectNaN<12>({1, 2, 3, 4, 5, 6, 7, 9, 8, 11, 12, 14}, [](const auto& v) {
    SpatialPoint a{0, 0, 0}, b{0, 0, 0};
    const omReal64 distance =
        segmentsDistance(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9], v[10], v[11], a, b);
    return std::array{distance, a.x, a.y, a.z, b.x, b.y, b.z};
  });
  oracle::expectNaN<9>({1, 2, 3, 4, 5, 6, 7, 9, 8}, [](const auto& v) {
    SpatialPoint a{0, 0, 0};
    const omReal64 distance = pointSegmentDistance(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], a);
    return std::array{distance, a.x, a.y, a.z};
  });
}

}  // namespace
}  // namespace ormix
