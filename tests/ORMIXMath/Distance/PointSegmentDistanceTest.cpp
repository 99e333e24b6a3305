#include <ORMIXMath/Distance/PointSegmentDistance.h>

#include <gtest/gtest.h>

#include <limits>

#include "PlanarOracle.h"

namespace ormix {
namespace {

using oracle::ulps;

TEST(PointSegmentDistance, IsRightToAFewUlpOnHostileCases) {
  const unsigned seed = 77001;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  oracle::HostileSegments cases(seed);
  omReal64 worstDistance = 0;
  omReal64 worstPoint = 0;
  for (int i = 0; i < 20000; ++i) {
    const auto [s, r] = cases.next();
    PlanarPoint nearest;
    const omReal64 distance = pointSegmentDistance(r.p0, s, nearest);
    const oracle::Exact exact = oracle::distance(r.p0, s);
    const omReal64 ulp = oracle::ulp(s, {r.p0, r.p0});
    ASSERT_EQ(distance == 0, exact.is_zero()) << r.p0 << ' ' << s;
    worstDistance = std::max(worstDistance, ulps(distance - exact, ulp));
    // The nearest point lies on the segment and at that distance.
    worstPoint = std::max({worstPoint, ulps(oracle::distance(nearest, s), ulp),
                           ulps(oracle::norm(oracle::ExactPoint(nearest) - r.p0) - exact, ulp)});
  }
  std::cout << "largest error in ulp of the largest coordinate: distance " << worstDistance << ", nearest point "
            << worstPoint << '\n';
  EXPECT_LE(worstDistance, oracle::allowedUlps);
  EXPECT_LE(worstPoint, oracle::allowedUlps);
}

TEST(PointSegmentDistance, IsRightForSegmentsTooShortForTheSquaresToTellTheirEnds) {
  const unsigned seed = 90210;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 draw(seed);
  std::uniform_real_distribution<omReal64> unit(-1, 1);
  PlanarPoint nearest;
  EXPECT_EQ(pointSegmentDistance({5, 0}, {{1, 0}, {1 + 0x1p-52, 0}}, nearest), 4);
  omReal64 worst = 0;
  for (int i = 0; i < 5000; ++i) {
    const PlanarPoint start{unit(draw), unit(draw)};
    const omReal64 size = std::ldexp(1.0, -static_cast<int>(draw() % 55));
    const PlanarSegment s{start, {start.x + size * unit(draw), start.y + size * unit(draw)}};
    const omReal64 reach = std::ldexp(1.0, static_cast<int>(draw() % 40) - 20);
    const PlanarPoint point{reach * unit(draw), reach * unit(draw)};
    const omReal64 error =
        ulps(pointSegmentDistance(point, s, nearest) - oracle::distance(point, s), oracle::ulp(s, {point, nearest}));
    ASSERT_LE(error, oracle::allowedUlps) << point << ' ' << s;
    worst = std::max(worst, error);
  }
  std::cout << "largest error in ulp of the largest coordinate: " << worst << '\n';
}

TEST(PointSegmentDistance, WorkedValuesForEveryType) {
  omReal64 x = 0;
  omReal64 y = 0;
  EXPECT_EQ(pointSegmentDistance<omInt32>(3, 4, 0, 0, 10, 0, x, y), 4);
  EXPECT_EQ(x, 3);
  EXPECT_EQ(y, 0);
  EXPECT_EQ(pointSegmentDistance<omReal32>(-3, 4, 0, 0, 10, 0), 5);
  EXPECT_EQ(pointSegmentDistance<omUInt32>(1, 1, 4, 5, 4, 5), 5);
  EXPECT_EQ(pointSegmentDistance<omReal64>(13, -4, 0, 0, 10, 0, x, y), 5);
  EXPECT_EQ(x, 10);
  // No product of integer coordinates wraps.
  EXPECT_EQ(pointSegmentDistance<omUInt32>(4294967295u, 0, 0, 0, 0, 4294967295u), 4294967295.0);
  EXPECT_EQ(pointSegmentDistance<omInt32>(0, 2147483647, -2147483647, -2147483647, 2147483647, -2147483647),
            4294967294.0);
}

TEST(PointSegmentDistance, ScalesWithTheCoordinates) {
  for (int exponent = -1040; exponent <= 1000; exponent += 17) {
    const omReal64 unit = std::ldexp(1.0, exponent);
    PlanarPoint nearest;
    EXPECT_EQ(pointSegmentDistance({3 * unit, 4 * unit}, {{0, 0}, {8 * unit, 0}}, nearest), 4 * unit) << exponent;
    EXPECT_EQ(nearest.x, 3 * unit);
    EXPECT_EQ(pointSegmentDistance({unit, unit}, {{0, 0}, {2 * unit, 2 * unit}}, nearest), 0) << exponent;
  }
  // A segment far shorter than its distance to the point, whose square would underflow.
  PlanarPoint nearest;
  EXPECT_EQ(pointSegmentDistance({0.5e-300, 1e-20}, {{0, 0}, {1e-300, 0}}, nearest), 1e-20);
  EXPECT_EQ(pointSegmentDistance({1e308, 0}, {{-1e308, 0}, {-1e308, 1}}, nearest),
            std::numeric_limits<omReal64>::infinity());
}

TEST(PointSegmentDistance, AnswersNaNForWhatIsNotFinite) {
  for (const omReal64 bad : {std::numeric_limits<omReal64>::quiet_NaN(), std::numeric_limits<omReal64>::infinity()}) {
    for (int place = 0; place < 6; ++place) {
      omReal64 v[6] = {1, 2, 3, 4, 5, 6};
      v[place] = bad;
      PlanarPoint nearest{0, 0};
      EXPECT_TRUE(std::isnan(pointSegmentDistance(v[0], v[1], v[2], v[3], v[4], v[5], nearest)));
      EXPECT_TRUE(std::isnan(nearest.x) && std::isnan(nearest.y));
    }
  }
}

}  // namespace
}  // namespace ormix
