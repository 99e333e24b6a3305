#include <ORMIXGeometry/Entity/2d/Segment/Segment2d.h>
#include <ORMIXGeometry/Entity/3d/Segment/Segment3d.h>

#include "support/Checks.h"

namespace ormix::geom {
namespace {

constexpr omReal64 s_pi = 3.141592653589793;
using Flat = Point2dData<omReal64>;
using Real = Point3dData<omReal64>;

template <class T>
class SegmentTest : public testing::Test {};
TYPED_TEST_SUITE(SegmentTest, support::Scalars);

template <class Segment, class Point>
void expectEqualSegments(std::initializer_list<Segment> segments, omReal64 length, const Point& middle) {
  for (const Segment& segment : segments) {
    EXPECT_NEAR(segment.getLength(), length, 1e-6) << segment;
    EXPECT_LE(distance(segment.getMiddlePoint(), middle), 1e-6) << segment;
    EXPECT_EQ(segment.getPoint0(), segments.begin()->getPoint0());
  }
  EXPECT_EQ(segments.begin()->getLength(), length);
  EXPECT_EQ(segments.begin()->getMiddlePoint(), middle);
}

TYPED_TEST(SegmentTest, IsBuiltFromCoordinatesPointsOrAVector) {
  using T = TypeParam;
  using Planar = Segment2d<T>;
  using Spatial = Segment3d<T>;
  const Vector3d across = Vector3d(2, s_pi / 2, 0) + Vector3d(3, s_pi / 2, s_pi / 2) + Vector3d(6, 0, 0);
  expectEqualSegments({Planar(1, 2, 4, 6), Planar({1, 2}, {4, 6}), Planar(Point2d<T>(1, 2), Point2dData<T>(4, 6)),
                       Planar(Point2d<T>(1, 2), Vector2d(3, 0) + Vector2d(4, s_pi / 2))},
                      5, Flat(2.5, 4));
  expectEqualSegments({Spatial(1, 2, 3, 3, 5, 9), Spatial({1, 2, 3}, {3, 5, 9}),
                       Spatial(Point3d<T>(1, 2, 3), Point3dData<T>(3, 5, 9)), Spatial(Point3d<T>(1, 2, 3), across)},
                      7, Real(2, 3.5, 6));
}

// Also with decreasing coordinates, for which unsigned differences would wrap.
TYPED_TEST(SegmentTest, DirectionLeadsFromTheFirstToTheSecondEnd) {
  using Planar = Segment2d<TypeParam>;
  const std::tuple<Planar, omReal64, omReal64> cases[] = {
      {Planar(3, 4, 0, 0), std::atan2(-4.0, -3.0), std::atan2(3.0, -4.0)},
      {Planar(2, 1, 5, 1), 0.0, -s_pi / 2},
      {Planar(5, 1, 2, 1), s_pi, s_pi / 2},
      {Planar(1, 2, 1, 5), s_pi / 2, 0.0},
      {Planar(1, 5, 1, 2), -s_pi / 2, s_pi},
      {Planar(1, 5, 1, 5), 0.0, 0.0}};
  for (const auto& [segment, theta, normalTheta] : cases) {
    EXPECT_DOUBLE_EQ(segment.getDirection().getTheta(), theta) << segment;
    EXPECT_EQ(segment.getDirection().getRho(), segment.getLength()) << segment;
    EXPECT_EQ(segment.getUnitDirection().getRho(), 1.0) << segment;
    EXPECT_DOUBLE_EQ(segment.getUnitDirection().getTheta(), theta) << segment;
    EXPECT_EQ(segment.getUnitNormal().getRho(), 1.0) << segment;
    EXPECT_DOUBLE_EQ(segment.getUnitNormal().getTheta(), normalTheta) << segment;
  }
  using Segment = Segment3d<TypeParam>;
  for (const auto& [segment, expected] :
       {std::pair(Segment(1, 1, 1, 3, 4, 7), Real(2, 3, 6)), std::pair(Segment(3, 4, 7, 1, 1, 1), Real(-2, -3, -6)),
        // Straight down comes out pointing up.
        std::pair(Segment(1, 1, 5, 1, 1, 1), Real(0, 0, 4))}) {
    EXPECT_EQ(segment.getDirection().getRho(), segment.getLength()) << segment;
    EXPECT_LE(distance(convert<omReal64>(segment.getDirection()), expected), 1e-14) << segment;
    EXPECT_LE(distance(convert<omReal64>(segment.getUnitDirection()), expected / expected.normL2()), 1e-15) << segment;
  }
  EXPECT_EQ(Segment(1, 2, 3, 1, 2, 3).getDirection(), Vector3d());
  EXPECT_EQ(Segment(1, 2, 3, 1, 2, 3).getUnitDirection(), Vector3d(1, 0, 0));
}

TYPED_TEST(SegmentTest, DistancesAnswerTheNearestPoints) {
  using T = TypeParam;
  const Segment2d<T> low(0, 1, 10, 1), above(5, 8, 5, 4);
  Flat onLow, onAbove;
  EXPECT_EQ(above.distance(low), 3.0);
  EXPECT_EQ(low.distance(above, onLow, onAbove), 3.0);
  EXPECT_TRUE(onLow == Flat(5, 1) && onAbove == Flat(5, 4));
  EXPECT_EQ(above.distance(Point2d<T>(9, 6)), 4.0);
  EXPECT_EQ(low.distance(Point2d<T>(13, 5), onLow), 5.0);
  EXPECT_EQ(onLow, Flat(10, 1));
  const Segment3d<T> edge(0, 0, 5, 10, 0, 5), across(4, 8, 9, 4, 0, 9);
  Real nearest, other;
  EXPECT_EQ(edge.distance(across), 4.0);
  EXPECT_EQ(across.distance(edge, nearest, other), 4.0);
  EXPECT_TRUE(nearest == Real(4, 0, 9) && other == Real(4, 0, 5));
  EXPECT_EQ(edge.distance(Point3d<T>(4, 3, 9)), 5.0);
  EXPECT_EQ(edge.distance(Point3d<T>(12, 3, 11), nearest), 7.0);
  EXPECT_EQ(nearest, Real(10, 0, 5));
}

TEST(Segment, OnlyTheLengthOfIntegersWraps) {
  const omInt32 lowest = std::numeric_limits<omInt32>::min(), highest = std::numeric_limits<omInt32>::max();
  const Segment2d<omInt32> widest(lowest, 0, highest, 0);
  EXPECT_EQ(widest.getLength(), 1.0);
  EXPECT_EQ(widest.getMiddleX(), -0.5);
  EXPECT_EQ(widest.getDirection().getRho(), 4294967295.0);
  EXPECT_EQ(widest.distance(Point2d<omInt32>(0, lowest)), 2147483648.0);
  const Segment3d<omInt32> wide(lowest, 0, 0, highest, 0, 0);
  EXPECT_EQ(wide.getMiddleX(), -0.5);
  EXPECT_EQ(wide.getDirection().getRho(), 4294967295.0);
  EXPECT_EQ(wide.distance(Point3d<omInt32>(0, 60000, 0)), 60000.0);
  EXPECT_TRUE(std::isnan(Segment2d<omInt32>(0, 0, 46341, 0).getLength()));
  EXPECT_TRUE(std::isnan(Segment3d<omInt32>(0, 0, 0, 46341, 0, 0).getLength()));
  const omReal64 largest = std::numeric_limits<omReal64>::max();
  EXPECT_EQ(Segment2d<omReal64>(largest, -largest, largest, largest).getMiddlePoint(), Flat(largest, 0));
}

}  // namespace
}  // namespace ormix::geom
