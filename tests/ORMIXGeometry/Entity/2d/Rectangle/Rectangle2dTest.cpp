#include <ORMIXGeometry/Entity/2d/Rectangle/Rectangle2d.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

namespace ormix::geom {
namespace {

using Corner = Point2dData<omReal64>;
constexpr omReal64 s_pi = 3.141592653589793;

template <class T>
class Rectangle2dTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(Rectangle2dTest, Scalars);

TYPED_TEST(Rectangle2dTest, CornersAreExactWithoutOrientation) {
  const Rectangle2d<TypeParam> rectangle({0, 0}, 2, 1, 0);
  EXPECT_EQ(rectangle.topLeftCorner(), Corner(-2, -1));
  EXPECT_EQ(rectangle.topRightCorner(), Corner(2, -1));
  EXPECT_EQ(rectangle.bottomLeftCorner(), Corner(-2, 1));
  EXPECT_EQ(rectangle.bottomRightCorner(), Corner(2, 1));
}

TYPED_TEST(Rectangle2dTest, CornersFollowThePolarForm) {
  using T = TypeParam;
  const unsigned seed = 1414;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 draw(seed);
  std::uniform_real_distribution<omReal64> angle(-7, 7);
  for (int i = 0; i < 500; ++i) {
    const T halfLength = static_cast<T>(draw() % 50);
    const T halfWidth = static_cast<T>(1 + draw() % 50);
    const omReal64 theta = angle(draw);
    const Rectangle2d<T> rectangle({static_cast<T>(draw() % 90), T(7)}, halfLength, halfWidth, theta);
    const omReal64 d = std::hypot(omReal64(halfLength), omReal64(halfWidth));
    const omReal64 beta = std::atan(omReal64(halfWidth) / omReal64(halfLength));
    for (const auto& [corner, phi] : {std::pair(rectangle.topLeftCorner(), s_pi + theta + beta),
                                      std::pair(rectangle.topRightCorner(), theta - beta),
                                      std::pair(rectangle.bottomLeftCorner(), s_pi + theta - beta),
                                      std::pair(rectangle.bottomRightCorner(), theta + beta)}) {
      ASSERT_NEAR(corner.getX(), omReal64(rectangle.centerX()) + d * std::cos(phi), 1e-12) << rectangle;
      ASSERT_NEAR(corner.getY(), omReal64(rectangle.centerY()) + d * std::sin(phi), 1e-12) << rectangle;
    }
  }
}

TYPED_TEST(Rectangle2dTest, AccessorsAndPrint) {
  using T = TypeParam;
  Rectangle2d<T> rectangle;
  EXPECT_EQ(rectangle.topLeftCorner(), Corner(0, 0));
  rectangle.setCenter(Point2d<T>(1, 2));
  EXPECT_EQ(rectangle.bottomRightCorner(), Corner(1, 2));
  rectangle.setHalfLength(4);
  rectangle.setHalfWidth(2);
  rectangle.setOrientation(0.5);
  EXPECT_EQ(rectangle.getLength(), T(8));
  EXPECT_EQ(rectangle.getWidth(), T(4));
  EXPECT_EQ(rectangle.getArea(), 32.0);
  std::ostringstream text;
  text << rectangle;
  EXPECT_EQ(text.str(), "[center=[1, 2], length=8, width=4, theta=0.5]");
  rectangle.setCoords(Point2d<T>(9, 8), 7, 6, 5);
  EXPECT_EQ(rectangle.center(), Point2dData<T>(9, 8));
  EXPECT_EQ(rectangle.getHalfLength(), T(7));
  EXPECT_EQ(rectangle.getHalfWidth(), T(6));
  EXPECT_EQ(rectangle.getOrientation(), 5.0);
}

TEST(Rectangle2d, OnlyFullSizesOfIntegersWrap) {
  const Rectangle2d<omInt32> rectangle({0, 0}, 1500000000, 1500000000, 0);
  EXPECT_EQ(rectangle.getLength(), -1294967296);
  EXPECT_EQ(rectangle.getArea(), 9e18);
  EXPECT_EQ(rectangle.topLeftCorner(), Corner(-1.5e9, -1.5e9));
}

}  // namespace
}  // namespace ormix::geom
