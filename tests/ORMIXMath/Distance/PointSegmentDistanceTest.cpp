#include <ORMIXMath/Distance/PointSegmentDistance.h>

#include "DistanceOracle.h"
#include "support/Checks.h"

namespace ormix {
namespace {

using oracle::ulps;

// What the distances may be off in units of the last place of the largest coordinate: 5.6, which is 1.1 of the distance
// itself, is the largest error seen in five million cases.
constexpr omReal64 s_allowedUlps = 6;

TEST(PointSegmentDistance, IsRightToAFewUlpOnHostileCases) {
  oracle::HostileSegments cases(77001);
  for (int i = 0; i < 8000; ++i) {
    const auto [s, r] = cases.nextFlat();
    PlanarPoint nearest;
    const omReal64 distance = pointSegmentDistance(r.p0, s, nearest);
    const oracle::Exact exact = oracle::pointDistance(r.p0, s);
    const omReal64 ulp = oracle::ulp(s, {r.p0, r.p0});
    ASSERT_EQ(distance == 0, exact.is_zero()) << r.p0 << ' ' << s;
    ASSERT_LE(ulps(distance - exact, ulp), s_allowedUlps) << r.p0 << ' ' << s;
    // The nearest point lies on the segment and at that distance.
    ASSERT_LE(ulps(oracle::pointDistance(nearest, s), ulp), s_allowedUlps) << r.p0 << ' ' << s;
    ASSERT_LE(ulps(oracle::norm(oracle::ExactPoint(nearest) - r.p0) - exact, ulp), s_allowedUlps) << r.p0 << ' ' << s;
  }
}

TEST(PointSegmentDistance, IsRightForSegmentsTooShortForTheSquaresToTellTheirEnds) {
  PlanarPoint nearest;
  EXPECT_EQ(pointSegmentDistance({5, 0}, {{1, 0}, {1 + 0x1p-52, 0}}, nearest), 4);
  support::Random random(90210);
  for (int i = 0; i < 5000; ++i) {
    const PlanarPoint start{random.uniform(), random.uniform()};
    const omReal64 size = std::ldexp(1.0, -static_cast<int>(random.below(55)));
    const PlanarSegment s{start, {start.x + size * random.uniform(), start.y + size * random.uniform()}};
    const omReal64 reach = std::ldexp(1.0, static_cast<int>(random.below(40)) - 20);
    const PlanarPoint point{reach * random.uniform(), reach * random.uniform()};
    const omReal64 distance = pointSegmentDistance(point, s, nearest);
    ASSERT_LE(ulps(distance - oracle::pointDistance(point, s), oracle::ulp(s, {point, nearest})), s_allowedUlps)
        << point << ' ' << s;
  }
}

TEST(PointSegmentDistance, ScalesWithTheCoordinates) {
  PlanarPoint nearest;
  for (int exponent = -1040; exponent <= 1000; exponent += 17) {
    const omReal64 unit = std::ldexp(1.0, exponent);
    EXPECT_EQ(pointSegmentDistance({3 * unit, 4 * unit}, {{0, 0}, {8 * unit, 0}}, nearest), 4 * unit) << exponent;
    EXPECT_EQ(nearest.x, 3 * unit);
    EXPECT_EQ(pointSegmentDistance({unit, unit}, {{0, 0}, {2 * unit, 2 * unit}}, nearest), 0) << exponent;
  }
  // No product of integer coordinates wraps.
  EXPECT_EQ(pointSegmentDistance<omUInt32>(4294967295u, 0, 0, 0, 0, 4294967295u), 4294967295.0);
  EXPECT_EQ(pointSegmentDistance<omInt32>(0, 2147483647, -2147483647, -2147483647, 2147483647, -2147483647),
            4294967294.0);
  // A segment far shorter than its distance to the point, whose square would underflow.
  EXPECT_EQ(pointSegmentDistance({0.5e-300, 1e-20}, {{0, 0}, {1e-300, 0}}, nearest), 1e-20);
  EXPECT_EQ(pointSegmentDistance({1e308, 0}, {{-1e308, 0}, {-1e308, 1}}, nearest), support::s_infinity);
}

// Points of all kinds beside each other: far and near, on the segment, beyond its ends and not finite.
TEST(PointSegmentDistance, OfARunHasTheBitsOfEachPoint) {
  oracle::HostileSegments cases(77002);
  for (int round = 0; round < 1000; ++round) {
    const PlanarSegment segment = cases.nextFlat().first;
    std::vector<PlanarPoint> points{{support::s_infinity, 0}, segment.p1, {0, std::nan("")}};
    for (int i = 0; i < 10 + round % 8; ++i) {
      const auto [beside, other] = cases.nextFlat();
      const omReal64 share = i / 10.0;
      const PlanarPoint across{segment.p1.x - segment.p0.x, segment.p1.y - segment.p0.y};
      points.push_back({segment.p0.x + share * across.x - across.y, segment.p0.y + share * across.y + across.x});
      points.push_back({segment.p0.x + share * across.x, segment.p0.y + share * across.y});
      points.insert(points.end(), {other.p0, beside.p1});
    }
    if (round % 100 == 0) points.resize(1500, points.back());
    std::vector<omReal64> distances(points.size());
    pointSegmentDistances(points.data(), points.size(), segment, distances.data());
    for (std::size_t i = 0; i < points.size(); ++i) {
      PlanarPoint nearest;
      const omReal64 expected = pointSegmentDistance(points[i], segment, nearest);
      ASSERT_EQ(support::bitsOf(distances[i]), support::bitsOf(expected)) << points[i] << ' ' << segment;
    }
  }
}

TEST(PointSegmentDistance, AnswersNaNForWhatIsNotFinite) {
  oracle::expectNaN<6>({1, 2, 3, 4, 5, 6}, [](const auto& v) {
    PlanarPoint nearest{0, 0};
    const omReal64 distance = pointSegmentDistance(v[0], v[1], v[2], v[3], v[4], v[5], nearest);
    return std::array{distance, nearest.x, nearest.y};
  });
}

}  // namespace
}  // namespace ormix
