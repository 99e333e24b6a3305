#include <ORMIXMath/Distance/SpatialSegmentsDistance.h>

#include <gtest/gtest.h>

#include <limits>

#include "SpatialOracle.h"

namespace ormix {
namespace {

using oracle::ulps;

// Where the result is itself a rounded coordinate or distance, half a unit of it is lost in any case.
constexpr omReal64 s_allowedUlps = 2;

bool same(const SpatialPoint& a, const SpatialPoint& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

TEST(SpatialSegmentsDistance, PointsAreRightOnHostileCases) {
  const unsigned seed = 90125;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  oracle::HostileSpatialSegments cases(seed);
  omReal64 worst = 0;
  omReal64 worstPoint = 0;
  int touching = 0;
  for (int i = 0; i < 6000; ++i) {
    const auto [s, r] = cases.next();
    SpatialPoint nearest;
    const omReal64 distance = pointSegmentDistance(r.p0, s, nearest);
    const oracle::Exact exact = oracle::distance(r.p0, s);
    const omReal64 ulp = oracle::ulp(s, {r.p0, r.p0});
    ASSERT_EQ(distance == 0, exact.is_zero()) << r.p0 << ' ' << s;
    touching += distance == 0;
    worst = std::max(worst, ulps((distance - exact) / std::max(exact, oracle::Exact(ulp)), 0x1p-52));
    // The nearest point lies on the segment and at that distance.
    worstPoint = std::max({worstPoint, ulps(oracle::distance(nearest, s), ulp),
                           ulps(oracle::norm(oracle::ExactVector(nearest) - r.p0) - exact, ulp)});
  }
  std::cout << "largest error in epsilons: distance " << worst << " of itself or an ulp, nearest point " << worstPoint
            << " of the largest coordinate; touching " << touching << '\n';
  EXPECT_GT(touching, 300);
  EXPECT_LE(worst, s_allowedUlps);
  EXPECT_LE(worstPoint, s_allowedUlps);
}

TEST(SpatialSegmentsDistance, PointsNearEitherEndAreRight) {
  const unsigned seed = 1984;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 draw(seed);
  std::uniform_real_distribution<omReal64> unit(-1, 1);
  SpatialPoint nearest;
  for (const bool isTurned : {false, true}) {
    for (int i = 0; i < 1000; ++i) {
      // Points on a segment that is long against the steps of its end's coordinate, and then beside it.
      const omReal64 end = 0.5 + unit(draw) / 4;
      SpatialSegment s{{1e6, 1, 1}, {end, 1, 1}};
      if (isTurned) std::swap(s.p0, s.p1);
      SpatialPoint point{end + std::pow(10.0, -16 * std::abs(unit(draw))), 1, 1};
      ASSERT_EQ(pointSegmentDistance(point, s, nearest), 0) << point << ' ' << s;
      ASSERT_TRUE(same(nearest, point));
      point.y += std::pow(10.0, -12 * std::abs(unit(draw)));
      ASSERT_EQ(pointSegmentDistance(point, s, nearest), point.y - 1) << point << ' ' << s;
    }
  }
}

TEST(SpatialSegmentsDistance, SegmentsAreRightOnHostileCases) {
  const unsigned seed = 5150;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  oracle::HostileSpatialSegments cases(seed);
  omReal64 worst = 0;
  omReal64 worstPoints = 0;
  omReal64 worstOrder = 0;
  for (int i = 0; i < 6000; ++i) {
    const auto [s, r] = cases.next();
    SpatialPoint onS;
    SpatialPoint onR;
    const omReal64 distance = segmentsDistance(s, r, onS, onR);
    const oracle::Exact exact = oracle::distance(s, r);
    const omReal64 ulp = oracle::ulp(s, r);
    worst = std::max(worst, ulps((distance - exact) / std::max(exact, oracle::Exact(ulp)), 0x1p-52));
    ASSERT_TRUE(distance > 0 || same(onS, onR)) << s << ' ' << r;
    worstPoints = std::max({worstPoints, ulps(oracle::distance(onS, s), ulp), ulps(oracle::distance(onR, r), ulp),
                            ulps(oracle::norm(oracle::ExactVector(onS) - onR) - exact, ulp)});
    const omReal64 turned = segmentsDistance(r, {s.p1, s.p0}, onR, onS);
    worstOrder = std::max(worstOrder, std::abs(turned - distance) / ulp);
  }
  std::cout << "largest error in epsilons: distance " << worst << " of itself or an ulp, nearest points " << worstPoints
            << " of the largest coordinate, order of arguments " << worstOrder << '\n';
  EXPECT_LE(worst, s_allowedUlps);
  EXPECT_LE(worstPoints, s_allowedUlps);
  EXPECT_LE(worstOrder, s_allowedUlps);
}

template <class T>
class SpatialSegmentsDistanceOf : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(SpatialSegmentsDistanceOf, Scalars);

TYPED_TEST(SpatialSegmentsDistanceOf, WorkedValues) {
  using T = TypeParam;
  SpatialPoint a;
  SpatialPoint b;
  EXPECT_EQ((pointSegmentDistance<T>(3, 4, 12, 3, 0, 0, 3, 4, 0)), 12);
  EXPECT_EQ((segmentsDistance<T>(5, 3, 4, 0, 0, 0, 10, 0, 0, a)), 5);
  EXPECT_TRUE(same(a, {5, 0, 0}));
  EXPECT_EQ((segmentsDistance<T>(3, 4, 12, 0, 0, 0, 0, 0, 0)), 13);               // no length
  EXPECT_EQ((segmentsDistance<T>(0, 2, 0, 8, 2, 0, 3, 0, 7, 3, 9, 7, a, b)), 7);  // skew
  EXPECT_TRUE(same(a, {3, 2, 0}) && same(b, {3, 2, 7}));
  EXPECT_EQ((segmentsDistance<T>(0, 0, 0, 9, 0, 0, 2, 3, 4, 7, 3, 4)), 5);          // parallel
  EXPECT_EQ((segmentsDistance<T>(0, 0, 0, 2, 4, 6, 1, 2, 3, 5, 10, 15, a, b)), 0);  // overlapping
  EXPECT_EQ((segmentsDistance<T>(0, 0, 0, 9, 9, 9, 3, 3, 3, 7, 1, 2, a, b)), 0);    // end inside
  EXPECT_TRUE(same(a, {3, 3, 3}) && same(b, {3, 3, 3}));
}

TEST(SpatialSegmentsDistance, CrossingsOfIntegersAreExactUpToTheEndOfTheirRange) {
  std::mt19937 draw(4711);
  std::uniform_int_distribution<omInt32> small(-40000, 40000);
  for (int i = 0; i < 2000; ++i) {
    // Two directions from one inner point, cut by coprime steps on either side, scaled near the range's end.
    const omReal64 px = 1e9 + small(draw), py = small(draw), pz = -2e9 + small(draw);
    const omReal64 ux = small(draw), uy = small(draw), uz = small(draw), vx = small(draw), vy = small(draw);
    const omReal64 vz = small(draw);
    SpatialPoint a;
    SpatialPoint b;
    EXPECT_EQ(segmentsDistance(px - 3 * ux, py - 3 * uy, pz - 3 * uz, px + 700 * ux, py + 700 * uy, pz + 700 * uz,
                               px - 11 * vx, py - 11 * vy, pz - 11 * vz, px + 2 * vx, py + 2 * vy, pz + 2 * vz, a, b),
              0);
    EXPECT_TRUE(same(a, {px, py, pz}) && same(b, a)) << a << b;
  }
}

TEST(SpatialSegmentsDistance, ScalesWithTheCoordinates) {
  for (int exponent = -1060; exponent <= 1010; exponent += 9) {
    const omReal64 unit = std::ldexp(1.0, exponent);
    SpatialPoint a;
    SpatialPoint b;
    EXPECT_EQ(segmentsDistance({{0, 0, 0}, {4 * unit, 4 * unit, 0}}, {{0, 4 * unit, 3 * unit}, {4 * unit, 0, 3 * unit}},
                               a, b),
              3 * unit)
        << exponent;
    EXPECT_TRUE(same(a, {2 * unit, 2 * unit, 0}) && same(b, {2 * unit, 2 * unit, 3 * unit}));
    EXPECT_EQ(pointSegmentDistance({unit, unit, unit}, {{0, 0, 0}, {2 * unit, 2 * unit, 2 * unit}}, a), 0) << exponent;
  }
  // Segments far shorter than their distance, whose squares would underflow.
  SpatialPoint a;
  SpatialPoint b;
  EXPECT_EQ(pointSegmentDistance({0.5e-300, 1e-20, 0}, {{0, 0, 0}, {1e-300, 0, 0}}, a), 1e-20);
  EXPECT_EQ(segmentsDistance({{-1e-310, 0, 0}, {1e-310, 0, 0}}, {{0, -1e-300, 1}, {0, 1e-300, 1}}, a, b), 1);
  EXPECT_EQ(pointSegmentDistance({1e308, 0, 0}, {{-1e308, 0, 0}, {-1e308, 1, 0}}, a),
            std::numeric_limits<omReal64>::infinity());
}

TEST(SpatialSegmentsDistance, AnswersNaNForWhatIsNotFinite) {
  for (const omReal64 bad : {std::numeric_limits<omReal64>::quiet_NaN(), -std::numeric_limits<omReal64>::infinity()}) {
    for (int place = 0; place < 12; ++place) {
      omReal64 v[12] = {1, 2, 3, 4, 5, 6, 7, 9, 8, 11, 12, 14};
      v[place] = bad;
      SpatialPoint a{0, 0, 0};
      SpatialPoint b{0, 0, 0};
      EXPECT_TRUE(
          std::isnan(segmentsDistance(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9], v[10], v[11], a, b)));
      EXPECT_TRUE(std::isnan(a.x) && std::isnan(a.z) && std::isnan(b.y));
      if (place > 8) continue;
      EXPECT_TRUE(std::isnan(pointSegmentDistance(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], a)));
      EXPECT_TRUE(std::isnan(a.x) && std::isnan(a.y));
    }
  }
}

}  // namespace
}  // namespace ormix
