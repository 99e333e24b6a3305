#include <ORMIXGeometry/Entity/2d/Segment/Segment2d.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>

namespace ormix::geom {
namespace {

constexpr omReal64 s_pi = 3.141592653589793;

template <class T>
class Segment2dTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(Segment2dTest, Scalars);

TYPED_TEST(Segment2dTest, IsBuiltFromPointsCoordinatesOrAVector) {
  using T = TypeParam;
  using Segment = Segment2d<T>;
  const Segment segment(1, 2, 4, 6);
  for (const Segment& same : {Segment({1, 2}, {4, 6}), Segment(Point2d<T>(1, 2), Point2dData<T>(4, 6)),
                              Segment(Point2d<T>(1, 2), Vector2d(3, 0) + Vector2d(4, s_pi / 2))}) {
    EXPECT_EQ(same.getPoint0(), segment.getPoint0());
    EXPECT_NEAR(omReal64(same.getPoint1().getX()), 4, 1e-6);
    EXPECT_NEAR(omReal64(same.getPoint1().getY()), 6, 1e-6);
  }
  EXPECT_EQ(segment.getLength(), 5.0);
  EXPECT_EQ(segment.getMiddlePoint(), Point2dData<omReal64>(2.5, 4));
  std::ostringstream text;
  text << segment;
  EXPECT_EQ(text.str(), "[p0=[1, 2], p1=[4, 6]]");
}

TYPED_TEST(Segment2dTest, DirectionLeadsFromTheFirstToTheSecondEnd) {
  using Segment = Segment2d<TypeParam>;
  const std::tuple<Segment, omReal64, omReal64> cases[] = {
      {Segment(0, 0, 3, 4), std::atan2(4.0, 3.0), std::atan2(-3.0, 4.0)},
      // Decreasing coordinates, for which unsigned differences would wrap.
      {Segment(3, 4, 0, 0), std::atan2(-4.0, -3.0), std::atan2(3.0, -4.0)},
      {Segment(2, 1, 5, 1), 0.0, -s_pi / 2},
      {Segment(5, 1, 2, 1), s_pi, s_pi / 2},
      {Segment(1, 2, 1, 5), s_pi / 2, 0.0},
      {Segment(1, 5, 1, 2), -s_pi / 2, s_pi},
      {Segment(1, 5, 1, 5), 0.0, 0.0}};
  for (const auto& [segment, theta, normalTheta] : cases) {
    EXPECT_DOUBLE_EQ(segment.getDirection().getTheta(), theta) << segment;
    EXPECT_EQ(segment.getDirection().getRho(), segment.getLength()) << segment;
    EXPECT_EQ(segment.getUnitDirection().getRho(), 1.0) << segment;
    EXPECT_DOUBLE_EQ(segment.getUnitDirection().getTheta(), theta) << segment;
    EXPECT_EQ(segment.getUnitNormal().getRho(), 1.0) << segment;
    EXPECT_DOUBLE_EQ(segment.getUnitNormal().getTheta(), normalTheta) << segment;
  }
}

TYPED_TEST(Segment2dTest, DistancesAgreeWithDenseSampling) {
  using T = TypeParam;
  const unsigned seed = 4711;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 draw(seed);
  const auto point = [&draw] { return Point2dData<T>(T(draw() % 50), T(draw() % 50)); };
  for (int i = 0; i < 300; ++i) {
    const Segment2d<T> segment(point(), point());
    const Point2dData<T> from = point();
    omReal64 sampled = 1e9;
    for (int k = 0; k <= 1000; ++k) {
      const omReal64 t = k / 1000.0;
      const omReal64 x = (1 - t) * omReal64(segment.getPoint0().getX()) + t * omReal64(segment.getPoint1().getX());
      const omReal64 y = (1 - t) * omReal64(segment.getPoint0().getY()) + t * omReal64(segment.getPoint1().getY());
      sampled = std::min(sampled, std::hypot(x - omReal64(from.getX()), y - omReal64(from.getY())));
    }
    Point2dData<omReal64> nearest;
    const omReal64 found = segment.distance(from, nearest);
    ASSERT_EQ(found, segment.distance(from));
    ASSERT_LE(found, sampled + 1e-12) << segment << from;
    ASSERT_GE(found, sampled - 0.05) << segment << from;
    ASSERT_NEAR(distance(nearest, cast<omReal64>(from)), found, 1e-12) << segment << from;
  }
}

TEST(Segment2d, DistanceToASegmentAnswersOnePointOfEach) {
  const Segment2d<omInt32> low(0, 0, 10, 0);
  const Segment2d<omInt32> above(5, 7, 5, 3);
  Point2dData<omReal64> onLow;
  Point2dData<omReal64> onAbove;
  EXPECT_EQ(low.distance(above, onLow, onAbove), 3.0);
  EXPECT_EQ(onLow, Point2dData<omReal64>(5, 0));
  EXPECT_EQ(onAbove, Point2dData<omReal64>(5, 3));
  EXPECT_EQ(above.distance(low), 3.0);
  EXPECT_EQ(low.distance(Segment2d<omInt32>(0, -1, 1, 1)), 0.0);
}

TEST(Segment2d, OnlyTheLengthOfIntegersWraps) {
  const omInt32 highest = std::numeric_limits<omInt32>::max();
  const omInt32 lowest = std::numeric_limits<omInt32>::min();
  const Segment2d<omInt32> widest(lowest, 0, highest, 0);
  EXPECT_EQ(widest.getLength(), 1.0);
  EXPECT_TRUE(std::isnan(Segment2d<omInt32>(0, 0, 46341, 0).getLength()));
  EXPECT_EQ(widest.getMiddleX(), -0.5);
  EXPECT_EQ(widest.getDirection().getRho(), 4294967295.0);
  EXPECT_EQ(widest.distance(Point2d<omInt32>(0, lowest)), 2147483648.0);
}

TEST(Segment2d, VectorsMoveIntegerEndsByRoundedComponents) {
  EXPECT_EQ(Segment2d<omInt32>(Point2d<omInt32>(1, 1), Vector2d(1.6, 0)).getPoint1(), Point2dData<omInt32>(3, 1));
}

TEST(Segment2d, MiddleOfTheLargestRealsIsFinite) {
  const omReal64 largest = std::numeric_limits<omReal64>::max();
  EXPECT_EQ(Segment2d<omReal64>(largest, -largest, largest, largest).getMiddlePoint(),
            Point2dData<omReal64>(largest, 0));
}

}  // namespace
}  // namespace ormix::geom
