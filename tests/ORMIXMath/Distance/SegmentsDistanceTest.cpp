#include <ORMIXMath/Distance/SegmentsDistance.h>

#include <gtest/gtest.h>

#include <limits>

#include "PlanarOracle.h"

namespace ormix {
namespace {

using oracle::ulps;

/// The quotient of the textbooks: both parameters from the two normal equations, clamped in turn. For lengths > 0.
omReal64 textbookDistance(const PlanarSegment& s, const PlanarSegment& r) {
  const omReal64 ux = s.p1.x - s.p0.x, uy = s.p1.y - s.p0.y, vx = r.p1.x - r.p0.x, vy = r.p1.y - r.p0.y;
  const omReal64 wx = s.p0.x - r.p0.x, wy = s.p0.y - r.p0.y;
  const omReal64 a = ux * ux + uy * uy, b = ux * vx + uy * vy, e = vx * vx + vy * vy;
  const omReal64 d = ux * wx + uy * wy, f = vx * wx + vy * wy;
  const auto unit = [](omReal64 t) { return t < 0 ? 0 : t > 1 ? 1 : t; };
  const omReal64 denominator = a * e - b * b;
  omReal64 p = denominator > 0 ? unit((b * f - d * e) / denominator) : 0;
  omReal64 q = (b * p + f) / e;
  if (q != unit(q)) {
    q = unit(q);
    p = unit((b * q - d) / a);
  }
  return std::hypot(wx + p * ux - q * vx, wy + p * uy - q * vy);
}

TEST(SegmentsDistance, IsRightToAFewUlpWhereTheTextbookQuotientIsNot) {
  const unsigned seed = 424242;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  oracle::HostileSegments cases(seed);
  omReal64 worst = 0;
  omReal64 worstPoints = 0;
  omReal64 worstCrossing = 0;
  omReal64 worstTextbook = 0;
  int meeting = 0;
  for (int i = 0; i < 20000; ++i) {
    const auto [s, r] = cases.next();
    PlanarPoint onS;
    PlanarPoint onR;
    const omReal64 distance = segmentsDistance(s, r, onS, onR);
    const oracle::Exact exact = oracle::distance(s, r);
    const omReal64 ulp = oracle::ulp(s, r);
    ASSERT_EQ(distance == 0, exact.is_zero()) << s << ' ' << r;
    meeting += distance == 0;
    worst = std::max(worst, ulps(distance - exact, ulp));
    const omReal64 textbook = textbookDistance(s, r);
    if (!std::isnan(textbook)) worstTextbook = std::max(worstTextbook, ulps(textbook - exact, ulp));
    worstPoints = std::max({worstPoints, ulps(oracle::distance(onS, s), ulp), ulps(oracle::distance(onR, r), ulp),
                            ulps(oracle::norm(oracle::ExactPoint(onS) - onR) - exact, ulp)});
    if (!oracle::crosses(s, r)) continue;
    ASSERT_EQ(distance, 0);
    ASSERT_TRUE(onS.x == onR.x && onS.y == onR.y);
    worstCrossing = std::max(worstCrossing, ulps(oracle::norm(oracle::crossing(s, r) - onS), ulp));
  }
  std::cout << "largest error in ulp of the largest coordinate: distance " << worst << ", nearest points "
            << worstPoints << ", crossing points " << worstCrossing << "; textbook quotient " << worstTextbook
            << "; meeting pairs " << meeting << '\n';
  EXPECT_GT(meeting, 2000);
  EXPECT_LE(worst, oracle::allowedUlps);
  EXPECT_LE(worstPoints, oracle::allowedUlps);
  EXPECT_LE(worstCrossing, oracle::allowedUlps);
  EXPECT_GT(worstTextbook, 1e6);
}

TEST(SegmentsDistance, HoldsOnIntegersWhereTheTextbookQuotientIsOffByATenth) {
  const PlanarSegment s{{0, 0}, {9999979, 3000750}};
  const PlanarSegment r{{-19, 3}, {29999956, 9002264}};
  PlanarPoint onS;
  PlanarPoint onR;
  const omReal64 exact = 8.205666423158021;
  EXPECT_NEAR(segmentsDistance(s, r, onS, onR), exact, 4e-9);
  EXPECT_NEAR(oracle::distance(s, r).convert_to<omReal64>(), exact, 1e-13);
  EXPECT_GT(std::abs(textbookDistance(s, r) - exact), 0.1);
}

template <class T>
class SegmentsDistanceOf : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(SegmentsDistanceOf, Scalars);

TYPED_TEST(SegmentsDistanceOf, WorkedValues) {
  using T = TypeParam;
  PlanarPoint a;
  PlanarPoint b;
  EXPECT_EQ((segmentsDistance<T>(0, 0, 10, 0, 3, 4, 7, 4)), 4);          // parallel
  EXPECT_EQ((segmentsDistance<T>(0, 0, 10, 0, 4, 0, 20, 0)), 0);         // overlapping
  EXPECT_EQ((segmentsDistance<T>(0, 0, 10, 0, 13, 4, 13, 9, a, b)), 5);  // ends
  EXPECT_TRUE(a.x == 10 && a.y == 0 && b.x == 13 && b.y == 4);
  EXPECT_EQ((segmentsDistance<T>(0, 0, 4, 4, 0, 4, 4, 0, a, b)), 0);  // crossing
  EXPECT_TRUE(a.x == 2 && a.y == 2 && b.x == 2 && b.y == 2);
  EXPECT_EQ((segmentsDistance<T>(5, 5, 5, 5, 2, 1, 2, 1)), 5);        // two points
  EXPECT_EQ((segmentsDistance<T>(0, 0, 9, 9, 5, 5, 5, 0, a, b)), 0);  // touching
  EXPECT_TRUE(a.x == 5 && a.y == 5 && b.x == 5 && b.y == 5);
  EXPECT_EQ((segmentsDistance<T>(3, 4, 0, 0, 10, 0, a)), 4);  // a point
  EXPECT_EQ((segmentsDistance<T>(3, 4, 0, 0, 10, 0)), 4);
}

TEST(SegmentsDistance, DecidesFlatCrossingsFarOut) {
  // The ends of the second lie one ulp above and one ulp below the first.
  const omReal64 up = std::nextafter(1e8, 2e8);
  const omReal64 down = std::nextafter(1e8, 0);
  PlanarPoint a;
  PlanarPoint b;
  EXPECT_EQ(segmentsDistance<omReal64>(0, 1e8, 8e7, 1e8, 2e7, up, 6e7, down, a, b), 0);
  EXPECT_TRUE(a.y == 1e8 && b.y == 1e8);
  EXPECT_NEAR(a.x, 4e7, 1e-7);
  EXPECT_EQ(segmentsDistance<omReal64>(0, 1e8, 8e7, 1e8, 2e7, up, 6e7, up), up - 1e8);
}

TEST(SegmentsDistance, ScalesWithTheCoordinates) {
  for (int exponent = -1060; exponent <= 1010; exponent += 9) {
    const omReal64 unit = std::ldexp(1.0, exponent);
    PlanarPoint a;
    PlanarPoint b;
    EXPECT_EQ(segmentsDistance({{0, 0}, {4 * unit, 4 * unit}}, {{0, 4 * unit}, {4 * unit, 0}}, a, b), 0) << exponent;
    EXPECT_EQ(a.x, 2 * unit);
    EXPECT_EQ(segmentsDistance({{0, 0}, {8 * unit, 0}}, {{unit, 4 * unit}, {unit, 3 * unit}}, a, b), 3 * unit);
  }
}

TEST(SegmentsDistance, AnswersNaNForWhatIsNotFinite) {
  for (const omReal64 bad : {std::numeric_limits<omReal64>::quiet_NaN(), -std::numeric_limits<omReal64>::infinity()}) {
    for (int place = 0; place < 8; ++place) {
      omReal64 v[8] = {1, 2, 3, 4, 5, 6, 7, 9};
      v[place] = bad;
      PlanarPoint a{0, 0};
      PlanarPoint b{0, 0};
      EXPECT_TRUE(std::isnan(segmentsDistance(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], a, b)));
      EXPECT_TRUE(std::isnan(a.x) && std::isnan(a.y) && std::isnan(b.x) && std::isnan(b.y));
    }
  }
}

}  // namespace
}  // namespace ormix
