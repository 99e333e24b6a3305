#include <ORMIXGeometry/Entity/3d/Vector/Vector3d.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>

#include "support/ArchivedCopy.h"

namespace ormix::geom {
namespace {

constexpr omReal64 s_pi = 3.141592653589793;

void expectComponents(const Vector3d& vector, omReal64 x, omReal64 y, omReal64 z, omReal64 tolerance) {
  EXPECT_NEAR(vector.getX(), x, tolerance) << vector;
  EXPECT_NEAR(vector.getY(), y, tolerance) << vector;
  EXPECT_NEAR(vector.getZ(), z, tolerance) << vector;
}

TEST(Vector3d, AnglesAreFoldedAsCallersRelyOn) {
  const Vector3d vector(1, 1.5 * s_pi, 0);
  EXPECT_EQ(vector.getTheta(), s_pi / 2);
  EXPECT_EQ(vector.getPhi(), -s_pi);
  expectComponents(vector, -1, 0, 0, 1e-15);
  // From half a turn on z is reversed, x and y stay; everywhere else the components are those of the angles given.
  const unsigned seed = 11;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 draw(seed);
  std::uniform_real_distribution<omReal64> angle(-20, 20);
  for (int i = 0; i < 2000; ++i) {
    const omReal64 theta = angle(draw);
    const omReal64 phi = angle(draw);
    const Vector3d u(-2.5, theta, phi);
    const bool isFolded = std::sin(theta) < 0;
    SCOPED_TRACE(testing::Message() << theta << ' ' << phi);
    ASSERT_EQ(u.getRho(), -2.5);
    ASSERT_TRUE(u.getTheta() >= -s_pi && u.getTheta() < s_pi && u.getPhi() >= -s_pi && u.getPhi() < s_pi);
    ASSERT_NO_FATAL_FAILURE(expectComponents(u, -2.5 * std::sin(theta) * std::cos(phi),
                                             -2.5 * std::sin(theta) * std::sin(phi),
                                             (isFolded ? 2.5 : -2.5) * std::cos(theta), 1e-13));
  }
}

TEST(Vector3d, EndsOfTheRangeAndBeyond) {
  EXPECT_EQ(Vector3d(1, s_pi, 0).getTheta(), 0.0);
  EXPECT_EQ(Vector3d(1, s_pi, 0).getPhi(), -s_pi);
  EXPECT_EQ(Vector3d(1, 1, s_pi).getPhi(), -s_pi);
  EXPECT_EQ(Vector3d(1, 2 * s_pi, 2 * s_pi), Vector3d(1, 0, 0));
  EXPECT_TRUE(std::isnan(Vector3d(1, std::numeric_limits<omReal64>::infinity(), 0).getTheta()));
}

template <class T>
class Vector3dFromPointsTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(Vector3dFromPointsTest, Scalars);

TYPED_TEST(Vector3dFromPointsTest, LeadsFromTheFirstToTheSecond) {
  using T = TypeParam;
  Vector3d vector;
  vector.setCoords(Point3d<T>(1, 1, 1), Point3d<T>(3, 4, 7));
  EXPECT_EQ(vector.getRho(), 7.0);
  expectComponents(vector, 2, 3, 6, 1e-14);
  // No wrap for unsigned points.
  vector.setCoords(Point3dData<T>(3, 4, 7), Point3dData<T>(1, 1, 1));
  expectComponents(vector, -2, -3, -6, 1e-14);
  vector.setCoords(Point3dData<T>(5, 5, 5), Point3dData<T>(5, 5, 5));
  EXPECT_EQ(vector, Vector3d());
}

TYPED_TEST(Vector3dFromPointsTest, ConversionsReturnWhatTheyWereGiven) {
  using T = TypeParam;
  const unsigned seed = 1234;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 draw(seed);
  const auto coordinate = [&draw] {
    const auto value = static_cast<omInt32>(draw() % 2000001);
    return static_cast<T>(std::is_unsigned_v<T> ? value : value - 1000000);
  };
  for (int i = 0; i < 2000; ++i) {
    const Point3dData<T> point(coordinate(), coordinate(), coordinate());
    Vector3d vector;
    convert(point, vector);
    const Point3dData<T> back = convert<T>(vector);
    ASSERT_EQ(convert<T>(Point3d<T>(point)), vector);
    ASSERT_NEAR(omReal64(back.getX()), omReal64(point.getX()), 1e-8) << point;
    ASSERT_NEAR(omReal64(back.getY()), omReal64(point.getY()), 1e-8) << point;
    ASSERT_NEAR(omReal64(back.getZ()), omReal64(point.getZ()), 1e-8) << point;
  }
}

TEST(Vector3d, ComesFromPointsOnTheAxes) {
  using P = Point3dData<omReal64>;
  EXPECT_EQ(convert(P(0, 0, 0)), Vector3d());
  EXPECT_EQ(convert(P(-0.0, -0.0, -0.0)), Vector3d());
  EXPECT_EQ(convert(P(0, 0, 5)), Vector3d(5, 0, 0));
  EXPECT_EQ(convert(P(-2, 0, 0)), Vector3d(2, s_pi / 2, s_pi));
  EXPECT_EQ(convert(P(-2, -0.0, 0)), Vector3d(2, s_pi / 2, s_pi));
  // Straight down comes out pointing up.
  expectComponents(convert(P(0, 0, -5)), 0, 0, 5, 0);
  expectComponents(convert(P(1e-9, 0, -5)), 1e-9, 0, -5, 1e-15);
}

TEST(Vector3d, KeepsItsDigitsNearThePoleAndAtBothEndsOfTheRange) {
  const Vector3d steep = convert(Point3dData<omReal64>(3e-9, 4e-9, 1));
  EXPECT_NEAR(steep.getX() / 3e-9, 1, 1e-15);
  EXPECT_NEAR(steep.getY() / 4e-9, 1, 1e-15);
  for (const omReal64 scale : {1e-200, 1e200})
    EXPECT_DOUBLE_EQ(convert(Point3dData<omReal64>(2 * scale, 3 * scale, 6 * scale)).getRho(), 7 * scale);
}

TEST(Vector3d, ArithmeticIsThatOfTheComponents) {
  const unsigned seed = 31337;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 draw(seed);
  std::uniform_real_distribution<omReal64> length(-10, 10);
  std::uniform_real_distribution<omReal64> angle(-20, 20);
  for (int i = 0; i < 2000; ++i) {
    const Vector3d u(length(draw), angle(draw), angle(draw));
    const Vector3d v(length(draw), angle(draw), angle(draw));
    const omReal64 s = length(draw);
    const auto expectSame = [&](const Vector3d& result, const Point3dData<omReal64>& expected) {
      const auto components = convert<omReal64>(result);
      ASSERT_LE(distance(components, expected), 1e-14 * (20 + expected.normL2())) << u << v << s;
    };
    const auto a = convert<omReal64>(u);
    const auto b = convert<omReal64>(v);
    expectSame(u + v, a + b);
    expectSame(u - v, a - b);
    expectSame(u * s, a * s);
    expectSame(s * u, a * s);
    expectSame(u / s, a / s);
    expectSame(crossProduct(u, v),
               {a.getY() * b.getZ() - a.getZ() * b.getY(), a.getZ() * b.getX() - a.getX() * b.getZ(),
                a.getX() * b.getY() - a.getY() * b.getX()});
    ASSERT_NEAR(scalarProduct(u, v), a.getX() * b.getX() + a.getY() * b.getY() + a.getZ() * b.getZ(), 1e-13);
    ASSERT_EQ((u * s).getRho(), u.getRho() * s);
  }
}

TEST(Vector3d, ComparesStrictly) {
  EXPECT_FALSE(compare(Vector3d(5, 0, 0), Vector3d(3, 0, 0), 2));
  EXPECT_TRUE(compare(Vector3d(5, 0, 0), Vector3d(3, 0, 0), 2.0000001));
  EXPECT_FALSE(compare(Vector3d(5, 1, 2), Vector3d(5, 1, 2), 0));
  EXPECT_TRUE(Vector3d(5, 1, 2) == Vector3d(5, 1, 2) && Vector3d(5, 1, 2) != Vector3d(5, 1, 2.5));
}

TEST(Vector3d, PrintsComponents) {
  std::ostringstream text;
  text << Vector3d(1.5, 0, 0);
  EXPECT_EQ(text.str(), "[0, 0, 1.5]");
}

TEST(Vector3d, ReadingRefreshesCosinesAndSines) {
  const Vector3d vector(2, 0.75, -2.5);
  const Vector3d copy = archivedCopy(vector);
  EXPECT_EQ(copy, vector);
  EXPECT_EQ(convert<omReal64>(copy), convert<omReal64>(vector));
}

}  // namespace
}  // namespace ormix::geom
