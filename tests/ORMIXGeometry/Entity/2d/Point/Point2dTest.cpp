#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/Segment/Segment2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace ormix::geom {
namespace {

constexpr omInt32 s_lowest = std::numeric_limits<omInt32>::min();
constexpr omInt32 s_highest = std::numeric_limits<omInt32>::max();
constexpr omReal64 s_right = 1.5707963267948966;

template <class T>
class Point2dTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(Point2dTest, Scalars);

TYPED_TEST(Point2dTest, ArithmeticWorksComponentByComponent) {
  using P = Point2d<TypeParam>;
  const TypeParam two = 2;
  EXPECT_EQ(P(8, 6) + P(2, 3), P(10, 9));
  EXPECT_EQ(P(8, 6) - P(2, 3), P(6, 3));
  EXPECT_EQ(P(8, 6) * P(2, 3), P(16, 18));
  EXPECT_EQ(P(8, 6) / P(2, 3), P(4, 2));
  EXPECT_EQ(P(8, 6) + two, P(10, 8));
  EXPECT_EQ(P(8, 6) - two, P(6, 4));
  EXPECT_EQ(P(8, 6) * two, P(16, 12));
  EXPECT_EQ(two * P(8, 6), P(16, 12));
  EXPECT_EQ(P(8, 6) / two, P(4, 3));
  P self(8, 6);
  EXPECT_EQ(self -= self, P(0, 0));
}

TYPED_TEST(Point2dTest, CompoundFormsChangeTheLeftOperand) {
  using P = Point2d<TypeParam>;
  P point(8, 6);
  point += P(2, 4);
  point *= TypeParam(3);
  point -= P(0, 20);
  point /= P(5, 2);
  point += Vector2d(3, 0);
  point -= Vector2d(1, s_right);
  point *= Vector2d(std::sqrt(8.0), s_right / 2);
  point /= Vector2d(std::sqrt(8.0), s_right / 2);
  // Real components of the last two vectors are off 2 by rounding.
  EXPECT_NEAR(omReal64(point.getX()), 9, 1e-6);
  EXPECT_NEAR(omReal64(point.getY()), 4, 1e-6);
}

TYPED_TEST(Point2dTest, IsInterchangeableWithItsCoordinates) {
  using T = TypeParam;
  const Point2d<T> point(T(3), T(4));
  const Point2dData<T>& data = point;
  EXPECT_TRUE(point == data && data == point && !(point != data) && !(data != point));
  EXPECT_EQ(distance(point, Point2d<T>(T(0), T(0))), 5.0);
  EXPECT_EQ(point.normL2(), 5.0);
  EXPECT_TRUE(compare(point, Point2d<T>(data), T(0)));
  EXPECT_EQ((cast<omReal64, T>(point)), Point2d<omReal64>(3, 4));
  std::ostringstream text;
  text << point;
  EXPECT_EQ(text.str(), "[3, 4]");
}

TEST(Point2d, IntegersWrapAround) {
  using P = Point2d<omInt32>;
  EXPECT_EQ(P(s_highest, s_lowest) + 1, P(s_lowest, s_lowest + 1));
  EXPECT_EQ(P(s_lowest, 0) - P(1, s_lowest), P(s_highest, s_lowest));
  EXPECT_EQ(P(65536, s_lowest) * P(65536, -1), P(0, s_lowest));
  EXPECT_EQ(Point2d<omUInt32>(0, 65537) - 1u, Point2d<omUInt32>(4294967295u, 65536));
}

TEST(Point2d, IntegerQuotientsAreDefinedForEveryDivisor) {
  using P = Point2d<omInt32>;
  EXPECT_EQ(P(7, -7) / 2, P(3, -3));
  EXPECT_EQ(P(s_lowest, s_highest) / -1, P(s_lowest, -s_highest));
  EXPECT_EQ(P(5, -5) / 0, P(s_highest, s_lowest));
  EXPECT_EQ(P(0, 5) / P(0, 1), P(0, 5));
  EXPECT_EQ(Point2d<omUInt32>(5, 0) / 0u, Point2d<omUInt32>(4294967295u, 0));
}

TEST(Point2d, MovesByVectorsRoundTheComponentsFirst) {
  using P = Point2d<omInt32>;
  EXPECT_EQ(P(1, 1) + Vector2d(1.6, 0), P(3, 1));
  EXPECT_EQ(P(1, 1) - Vector2d(1.6, s_right), P(1, -1));
  EXPECT_EQ(P(10, 10) * Vector2d(2.4, 0), P(20, 0));
  EXPECT_EQ(P(9, 0) / Vector2d(2.4, 0), P(5, 0));
  // 1 / 0 and 0 / 0 in reals, brought back.
  EXPECT_EQ(P(1, 0) / Vector2d(0.4, 0), P(s_highest, 0));
  EXPECT_EQ(P(s_highest, 0) + Vector2d(1e20, 0), P(s_highest, 0));
  EXPECT_EQ(P(s_lowest, 0) + Vector2d(4e9, 0), P(1852516352, 0));
  using U = Point2d<omUInt32>;
  EXPECT_EQ(U(1, 1) - Vector2d(5, 0), U(0, 1));
  EXPECT_EQ(U(5, 5) + Vector2d(2, 2 * s_right), U(3, 5));
  EXPECT_EQ(U(5, 5) - Vector2d(1.6, -s_right), U(5, 7));
  EXPECT_EQ(U(5, 5) * Vector2d(2, 2 * s_right), U(0, 0));
  EXPECT_EQ(Segment2d<omUInt32>(U(5, 5), Vector2d(2, 2 * s_right)).getPoint1(), U(3, 5));
}

TEST(Point2d, SinglePrecisionMovesRoundTheComponentsToo) {
  // As a float, 1 + 2^-30 is 1.
  const Point2d<omReal32> moved = Point2d<omReal32>(-1, 0) + Vector2d(1 + std::ldexp(1.0, -30), 0);
  EXPECT_EQ(moved.getX(), 0.0f);
}

}  // namespace
}  // namespace ormix::geom
