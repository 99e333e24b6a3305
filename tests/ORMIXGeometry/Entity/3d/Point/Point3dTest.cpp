#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <ORMIXGeometry/Entity/3d/Segment/Segment3d.h>
#include <ORMIXGeometry/Entity/3d/Vector/Vector3d.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>

namespace ormix::geom {
namespace {

constexpr omInt32 s_lowest = std::numeric_limits<omInt32>::min();
constexpr omInt32 s_highest = std::numeric_limits<omInt32>::max();
constexpr omReal64 s_right = 1.5707963267948966;

template <class T>
class Point3dTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(Point3dTest, Scalars);

/// The same for the entity and for its coordinates.
template <class P, class T>
void expectArithmetic() {
  const T two = 2;
  EXPECT_EQ(P(8, 6, 10) + P(2, 3, 5), P(10, 9, 15));
  EXPECT_EQ(P(8, 6, 10) - P(2, 3, 5), P(6, 3, 5));
  EXPECT_EQ(P(8, 6, 10) * P(2, 3, 5), P(16, 18, 50));
  EXPECT_EQ(P(8, 6, 10) / P(2, 3, 5), P(4, 2, 2));
  EXPECT_EQ(P(8, 6, 10) + two, P(10, 8, 12));
  EXPECT_EQ(P(8, 6, 10) - two, P(6, 4, 8));
  EXPECT_EQ(P(8, 6, 10) * two, P(16, 12, 20));
  EXPECT_EQ(two * P(8, 6, 10), P(16, 12, 20));
  EXPECT_EQ(P(8, 6, 10) / two, P(4, 3, 5));
  EXPECT_EQ(P(8, 6, 10) + Vector3d(3, 0, 0), P(8, 6, 13));
  EXPECT_EQ(P(8, 6, 10) - Vector3d(3, 0, 0), P(8, 6, 7));
  P point(8, 6, 10);
  EXPECT_EQ(point *= Vector3d(2, 0, 0), P(0, 0, 20));
  EXPECT_EQ(point /= P(1, 1, 4), P(0, 0, 5));
  EXPECT_EQ(point -= point, P(0, 0, 0));
}

TYPED_TEST(Point3dTest, ArithmeticWorksComponentByComponent) {
  expectArithmetic<Point3d<TypeParam>, TypeParam>();
  expectArithmetic<Point3dData<TypeParam>, TypeParam>();
}

TYPED_TEST(Point3dTest, IsInterchangeableWithItsCoordinates) {
  using T = TypeParam;
  const Point3d<T> point(T(2), T(3), T(6));
  const Point3dData<T>& data = point;
  EXPECT_TRUE(point == data && data == point && !(point != data) && !(data != point));
  EXPECT_TRUE(point <= data && data >= point && !(point < data) && !(data > point));
  EXPECT_EQ(point + data, data + point);
  EXPECT_EQ(distance(point, Point3d<T>(T(0), T(0), T(0))), 7.0);
  EXPECT_EQ(point.normL2(), 7.0);
  EXPECT_EQ(data.normL2(), 7.0);
  EXPECT_TRUE(compare(point, Point3d<T>(data), T(0)));
  EXPECT_EQ(crossProduct(Point3d<T>(T(1), T(0), T(0)), Point3d<T>(T(0), T(1), T(0))), Point3d<T>(T(0), T(0), T(1)));
  EXPECT_EQ((cast<omReal64, T>(point)), Point3d<omReal64>(2, 3, 6));
  std::ostringstream text;
  text << point << data;
  EXPECT_EQ(text.str(), "[2, 3, 6][2, 3, 6]");
}

TYPED_TEST(Point3dTest, OrderIsByZThenYThenX) {
  using P = Point3d<TypeParam>;
  const P ordered[] = {P(9, 9, 0), P(3, 1, 1), P(4, 1, 1), P(0, 2, 1), P(0, 0, 2)};
  for (const P& a : ordered)
    for (const P& b : ordered) {
      EXPECT_EQ(a < b, &a < &b) << a << b;
      EXPECT_EQ(a > b, &a > &b) << a << b;
      EXPECT_EQ(a <= b, &a <= &b) << a << b;
      EXPECT_EQ(a >= b, &a >= &b) << a << b;
    }
}

TYPED_TEST(Point3dTest, ComparesWithDistanceEqualToTheTolerance) {
  using P = Point3dData<TypeParam>;
  EXPECT_TRUE(compare(P(1, 2, 3), P(3, 5, 9), TypeParam(7)));
  EXPECT_FALSE(compare(P(1, 2, 3), P(3, 5, 9), TypeParam(6)));
  EXPECT_TRUE(compare(P(1, 2, 3), P(1, 2, 3), TypeParam(0)));
  // Right in both orders for unsigned points, too.
  EXPECT_EQ(distance(P(3, 5, 9), P(1, 2, 3)), 7.0);
}

TEST(Point3d, OrderOfNanIsFalse) {
  const omReal64 nan = std::numeric_limits<omReal64>::quiet_NaN();
  using P = Point3d<omReal64>;
  for (const P& point : {P(0, 0, nan), P(0, nan, 0), P(nan, 0, 0)})
    EXPECT_FALSE(point < P() || point > P() || point <= P() || point >= P() || point == P()) << point;
  EXPECT_TRUE(P(nan, nan, 0) < P(0, 0, 1));
}

TEST(Point3d, IntegersWrapAround) {
  using P = Point3d<omInt32>;
  EXPECT_TRUE(std::isnan(P(50000, 0, 0).normL2()));
  EXPECT_EQ(P(65536, 3, 4).normL2(), 5.0);
  EXPECT_EQ(distance(P(s_lowest, 0, 0), P(s_highest, 0, 0)), 1.0);
  EXPECT_EQ(P(s_highest, s_lowest, 0) + 1, P(s_lowest, s_lowest + 1, 1));
  EXPECT_EQ(P(65536, s_lowest, 7) * P(65536, -1, -1), P(0, s_lowest, -7));
  EXPECT_EQ(crossProduct(P(0, 65536, 0), P(0, 0, 65536)), P(0, 0, 0));
  EXPECT_EQ(Point3d<omUInt32>(0, 1, 2) - 1u, Point3d<omUInt32>(4294967295u, 0, 1));
  // For every divisor.
  EXPECT_EQ(P(7, -7, s_lowest) / P(2, 2, -1), P(3, -3, s_lowest));
  EXPECT_EQ(P(5, -5, 0) / 0, P(s_highest, s_lowest, 0));
}

TEST(Point3d, MovesByVectorsRoundTheComponentsFirst) {
  using P = Point3d<omInt32>;
  EXPECT_EQ(P(1, 1, 1) + Vector3d(1.6, 0, 0), P(1, 1, 3));
  EXPECT_EQ(P(1, 1, 1) - Vector3d(1.6, s_right, 0), P(-1, 1, 1));
  EXPECT_EQ(P(1, 1, 1) + Vector3d(1.6, s_right, s_right), P(1, 3, 1));
  EXPECT_EQ(P(0, 0, 9) / Vector3d(2.4, 0, 0), P(0, 0, 5));
  EXPECT_EQ(P(0, 0, 10) * Vector3d(2.4, 0, 0), P(0, 0, 20));
  EXPECT_EQ(P(0, 0, s_highest) + Vector3d(1e20, 0, 0), P(0, 0, s_highest));
  using U = Point3d<omUInt32>;
  EXPECT_EQ(U(1, 1, 1) - Vector3d(5, 0, 0), U(1, 1, 0));
  const Vector3d back(2, s_right, -2 * s_right);
  EXPECT_EQ(U(5, 5, 5) + back, U(3, 5, 5));
  EXPECT_EQ(U(5, 5, 5) - back, U(7, 5, 5));
  EXPECT_EQ(Segment3d<omUInt32>(U(5, 5, 5), back).getPoint1(), U(3, 5, 5));
}

TEST(Point3d, CastTruncatesAndRoundGoesToTheNearest) {
  const Point3d<omReal64> point(2.7, -2.7, -1.5);
  EXPECT_EQ((cast<omInt32, omReal64>(point)), Point3d<omInt32>(2, -2, -1));
  EXPECT_EQ((cast<omUInt32, omReal64>(point)), Point3d<omUInt32>(2, 4294967294u, 4294967295u));
  EXPECT_EQ((round<omInt32, omReal64>(point)), Point3d<omInt32>(3, -3, -2));
  EXPECT_EQ((round<omUInt32, omReal64>(point.getCoords())), Point3dData<omUInt32>(3, 0, 0));
}

TEST(Point3d, CrossProductIsPerpendicularAndTurnsTheSignWithTheOrder) {
  const unsigned seed = 271;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 draw(seed);
  const auto coordinate = [&draw] { return static_cast<omInt32>(draw() % 201) - 100; };
  for (int i = 0; i < 1000; ++i) {
    const Point3dData<omInt32> a(coordinate(), coordinate(), coordinate());
    const Point3dData<omInt32> b(coordinate(), coordinate(), coordinate());
    const auto cross = crossProduct(a, b);
    ASSERT_EQ(cross.getX() * a.getX() + cross.getY() * a.getY() + cross.getZ() * a.getZ(), 0) << a << b;
    ASSERT_EQ(cross.getX() * b.getX() + cross.getY() * b.getY() + cross.getZ() * b.getZ(), 0) << a << b;
    ASSERT_EQ(crossProduct(b, a), -1 * cross) << a << b;
  }
}

}  // namespace
}  // namespace ormix::geom
