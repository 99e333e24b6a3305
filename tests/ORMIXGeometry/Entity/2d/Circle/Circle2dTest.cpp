#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace ormix::geom {
namespace {

constexpr omReal64 s_pi = 3.141592653589793;

template <class T>
class Circle2dTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(Circle2dTest, Scalars);

TYPED_TEST(Circle2dTest, AccessorsAndPrint) {
  using T = TypeParam;
  Circle2d<T> circle;
  EXPECT_EQ(circle.area(), 0.0);
  circle.setCoords(Point2d<T>(1, 2), T(3));
  EXPECT_EQ(circle.center(), Point2dData<T>(1, 2));
  EXPECT_EQ(circle.centerY(), T(2));
  std::ostringstream text;
  text << circle;
  EXPECT_EQ(text.str(), "[center=[1, 2], radius=3]");
  circle.setCenter(Point2d<T>(4, 5));
  circle.setRadius(T(6));
  EXPECT_EQ(circle.centerX(), T(4));
  static_assert(std::is_same_v<decltype(circle.getRadius()), T>);
  EXPECT_EQ(circle.getRadius(), T(6));
}

TYPED_TEST(Circle2dTest, SignedDistanceIsNegativeInside) {
  using T = TypeParam;
  const Circle2d<T> circle({10, 10}, T(5));
  EXPECT_EQ(circle.signedDistance(Point2d<T>(10, 10)), -5.0);
  EXPECT_EQ(circle.signedDistance(Point2d<T>(13, 14)), 0.0);
  EXPECT_EQ(circle.signedDistance(Point2d<T>(16, 2)), 5.0);
  EXPECT_EQ(circle.distance(Point2d<T>(10, 9)), 4.0);
  EXPECT_DOUBLE_EQ(circle.area(), 25 * s_pi);
  EXPECT_DOUBLE_EQ(circle.perimeter(), 10 * s_pi);
}

TEST(Circle2d, AreaAndPerimeterOfIntegersDoNotWrap) {
  EXPECT_DOUBLE_EQ(Circle2d<omInt32>({0, 0}, 2000000000).area(), s_pi * 4e18);
  EXPECT_DOUBLE_EQ(Circle2d<omUInt32>({0, 0}, 4000000000u).perimeter(), s_pi * 8e9);
}

TEST(Circle2d, DistancesWrapAsThoseOfIntegerPoints) {
  EXPECT_TRUE(std::isnan(Circle2d<omInt32>({0, 0}, 1).signedDistance(Point2d<omInt32>(46341, 0))));
  EXPECT_EQ(Circle2d<omUInt32>({65536, 0}, 2).distance(Point2d<omUInt32>(0, 0)), 2.0);
}

TEST(Circle2d, NegativeRadiiAreKept) {
  const Circle2d<omReal64> circle({0, 0}, -1);
  EXPECT_EQ(circle.getRadius(), -1.0);
  EXPECT_EQ(circle.signedDistance(Point2d<omReal64>(0, 2)), 3.0);
}

}  // namespace
}  // namespace ormix::geom
