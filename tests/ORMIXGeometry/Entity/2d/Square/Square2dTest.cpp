#include <ORMIXGeometry/Entity/2d/Square/Square2d.h>
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace ormix::geom {
namespace {

using Corner = Point2dData<omReal64>;

template <class T>
class Square2dTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(Square2dTest, Scalars);

TYPED_TEST(Square2dTest, CornersAreThoseOfARectangle) {
  const Square2d<TypeParam> upright({3, 3}, 2, 0);
  EXPECT_EQ(upright.topLeftCorner(), Corner(1, 1));
  EXPECT_EQ(upright.topRightCorner(), Corner(5, 1));
  EXPECT_EQ(upright.bottomLeftCorner(), Corner(1, 5));
  EXPECT_EQ(upright.bottomRightCorner(), Corner(5, 5));
  // Turned by an eighth, the bottom right corner is straight below the centre (y grows downwards).
  const Square2d<TypeParam> turned({3, 3}, 2, 0.7853981633974483);
  EXPECT_NEAR(turned.bottomRightCorner().getX(), 3, 1e-14);
  EXPECT_NEAR(turned.bottomRightCorner().getY(), 3 + std::sqrt(8.0), 1e-14);
  EXPECT_EQ(Square2d<TypeParam>({3, 4}, 0, 1).topLeftCorner(), Corner(3, 4));
}

TYPED_TEST(Square2dTest, AccessorsAndPrint) {
  using T = TypeParam;
  Square2d<T> square;
  square.setCoords(Point2d<T>(1, 2), 4, 0.5);
  EXPECT_EQ(square.getLength(), T(8));
  std::ostringstream text;
  text << square;
  EXPECT_EQ(text.str(), "[center=[1, 2], l=8, theta=0.5]");
  square.setCenter(Point2d<T>(3, 4));
  square.setHalfLength(5);
  square.setOrientation(6);
  EXPECT_EQ(square.centerX(), T(3));
  EXPECT_EQ(square.centerY(), T(4));
  EXPECT_EQ(square.getHalfLength(), T(5));
  EXPECT_EQ(square.getOrientation(), 6.0);
}

}  // namespace
}  // namespace ormix::geom
