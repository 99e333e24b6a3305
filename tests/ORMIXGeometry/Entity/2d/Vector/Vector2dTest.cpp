#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

#include "support/ArchivedCopy.h"

namespace ormix::geom {
namespace {

constexpr omReal64 s_pi = 3.141592653589793;

template <class T>
class Vector2dFromPointsTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(Vector2dFromPointsTest, Scalars);

TYPED_TEST(Vector2dFromPointsTest, LeadsFromTheSecondToTheFirst) {
  using T = TypeParam;
  Vector2d vector;
  vector.setCoords(Point2d<T>(3, 4), Point2d<T>(0, 0));
  EXPECT_EQ(vector.getRho(), 5.0);
  EXPECT_DOUBLE_EQ(vector.getTheta(), std::atan2(4.0, 3.0));
  // No wrap for unsigned points.
  vector.setCoords(Point2dData<T>(0, 0), Point2dData<T>(3, 4));
  EXPECT_DOUBLE_EQ(vector.getX(), -3);
  EXPECT_DOUBLE_EQ(vector.getY(), -4);
  vector.setCoords(Point2dData<T>(3, 4));
  EXPECT_DOUBLE_EQ(vector.getX(), 3);
  vector.setCoords(Point2d<T>(7, 7), Point2d<T>(7, 7));
  EXPECT_EQ(vector.getRho(), 0.0);
  EXPECT_EQ(vector.getTheta(), 0.0);
}

TEST(Vector2d, KeepsWhatItIsGiven) {
  Vector2d vector(-2, 7);
  EXPECT_EQ(vector.getRho(), -2.0);
  EXPECT_EQ(vector.getTheta(), 7.0);
  EXPECT_EQ(vector.getX(), -2 * std::cos(7.0));
  vector.setTheta(1);
  EXPECT_EQ(vector.getY(), -2 * std::sin(1.0));
}

TEST(Vector2d, ArithmeticIsThatOfTheComponents) {
  const unsigned seed = 31337;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 draw(seed);
  std::uniform_real_distribution<omReal64> length(-10, 10);
  std::uniform_real_distribution<omReal64> angle(-20, 20);
  for (int i = 0; i < 2000; ++i) {
    const Vector2d u(length(draw), angle(draw));
    const Vector2d v(length(draw), angle(draw));
    const omReal64 s = length(draw);
    for (const auto& [result, x, y] :
         {std::tuple(u + v, u.getX() + v.getX(), u.getY() + v.getY()),
          std::tuple(u - v, u.getX() - v.getX(), u.getY() - v.getY()), std::tuple(u * s, u.getX() * s, u.getY() * s),
          std::tuple(s * u, u.getX() * s, u.getY() * s), std::tuple(u / s, u.getX() / s, u.getY() / s)}) {
      const omReal64 tolerance = 1e-14 * (20 + std::abs(x) + std::abs(y));
      ASSERT_NEAR(result.getX(), x, tolerance) << u << v << s;
      ASSERT_NEAR(result.getY(), y, tolerance) << u << v << s;
      ASSERT_GE(result.getRho(), 0);
      ASSERT_GT(result.getTheta(), -s_pi);
      ASSERT_LE(result.getTheta(), s_pi);
    }
  }
}

TEST(Vector2d, AnglesAtTheEndsOfTheRange) {
  EXPECT_EQ((Vector2d(1, 0) - Vector2d(3, 0)).getTheta(), s_pi);
  EXPECT_EQ((Vector2d(1, 0) * -1).getTheta(), s_pi);
  EXPECT_EQ((Vector2d(2, -s_pi) * 2).getTheta(), s_pi);
  EXPECT_EQ((Vector2d(2, 1.25) - Vector2d(2, 1.25)).getTheta(), 0.0);
}

TEST(Vector2d, ComparesStrictly) {
  EXPECT_FALSE(compare(Vector2d(5, 0), Vector2d(3, 0), 2));
  EXPECT_TRUE(compare(Vector2d(5, 0), Vector2d(3, 0), 2.0000001));
  EXPECT_FALSE(compare(Vector2d(5, 1), Vector2d(5, 1), 0));
}

TEST(Vector2d, PrintsComponents) {
  std::ostringstream text;
  text << Vector2d(1.5, 0);
  EXPECT_EQ(text.str(), "[1.5, 0]");
}

TEST(Vector2d, ReadingRefreshesCosineAndSine) {
  const Vector2d copy = archivedCopy(Vector2d(2, 0.75));
  EXPECT_EQ(copy.getX(), 2 * std::cos(0.75));
  EXPECT_EQ(copy.getY(), 2 * std::sin(0.75));
}

}  // namespace
}  // namespace ormix::geom
