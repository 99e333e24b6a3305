#include <ORMIXMath/Distance/NearestOnSegments.h>
#include <ORMIXMath/Distance/SegmentsDistance.h>

#include "DistanceOracle.h"
#include "support/Checks.h"

namespace ormix {
namespace {

using oracle::ulps;

// In units of the last place of the largest coordinate.
constexpr omReal64 s_allowedUlps = 6;

TEST(SegmentsDistance, IsRightToAFewUlpOnHostileCases) {
  oracle::HostileSegments cases(424242);
  int meeting = 0;
  for (int i = 0; i < 8000; ++i) {
    const auto [s, r] = cases.nextFlat();
    SCOPED_TRACE(testing::Message() << s << ' ' << r);
    PlanarPoint onS, onR;
    const omReal64 distance = segmentsDistance(s, r, onS, onR);
    const oracle::Exact exact = oracle::segmentDistance(s, r);
    const omReal64 ulp = oracle::ulp(s, r);
    ASSERT_EQ(distance == 0, exact.is_zero());
    ASSERT_LE(ulps(distance - exact, ulp), s_allowedUlps);
    ASSERT_LE(ulps(oracle::pointDistance(onS, s), ulp), s_allowedUlps);
    ASSERT_LE(ulps(oracle::pointDistance(onR, r), ulp), s_allowedUlps);
    ASSERT_LE(ulps(oracle::norm(oracle::ExactPoint(onS) - onR) - exact, ulp), s_allowedUlps);
    if (distance != 0) continue;
    ++meeting;
    ASSERT_TRUE(onS.x == onR.x && onS.y == onR.y);
    const oracle::Exact place = oracle::perpendicularPlace(s, r);
    if (place <= 0 || place >= 1) continue;
    const oracle::ExactPoint crossing = oracle::ExactPoint(s.p0) + place * (oracle::ExactPoint(s.p1) - s.p0);
    ASSERT_LE(ulps(oracle::norm(crossing - onS), ulp), s_allowedUlps);
  }
  EXPECT_GT(meeting, 800);
}

TEST(SegmentsDistance, ScalesWithTheCoordinates) {
  for (int exponent = -1060; exponent <= 1010; exponent += 9) {
    const omReal64 unit = std::ldexp(1.0, exponent);
    PlanarPoint a, b;
    EXPECT_EQ(segmentsDistance({{0, 0}, {4 * unit, 4 * unit}}, {{0, 4 * unit}, {4 * unit, 0}}, a, b), 0) << exponent;
    EXPECT_EQ(a.x, 2 * unit);
    EXPECT_EQ(segmentsDistance({{0, 0}, {8 * unit, 0}}, {{unit, 4 * unit}, {unit, 3 * unit}}, a, b), 3 * unit);
    const PlanarNearestPair pair =
        nearestOnSegments(PlanarSegment{{0, 0}, {8 * unit, 0}}, {{unit, 4 * unit}, {unit, 3 * unit}});
    EXPECT_TRUE(pair.distance == 3 * unit && pair.onA.x == a.x && pair.onA.y == a.y && pair.onB.y == b.y);
    const PlanarNearestPair ofPoint = nearestOnSegments(PlanarPoint{unit, 3 * unit}, {{0, 0}, {8 * unit, 0}});
    EXPECT_TRUE(ofPoint.distance == 3 * unit && ofPoint.onA.y == 3 * unit && ofPoint.onB.x == unit);
  }
}

TEST(SegmentsDistance, AnswersNaNForWhatIsNotFinite) {
  oracle::expectNaN<8>({1, 2, 3, 4, 5, 6, 7, 9}, [](const auto& v) {
    PlanarPoint a{0, 0}, b{0, 0};
    const omReal64 distance = segmentsDistance(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], a, b);
    return std::array{distance, a.x, a.y, b.x, b.y};
  });
}

}  // namespace
}  // namespace ormix
