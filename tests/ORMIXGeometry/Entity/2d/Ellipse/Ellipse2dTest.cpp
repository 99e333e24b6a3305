#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

#include "support/ArchivedCopy.h"

namespace ormix::geom {
namespace {

constexpr omReal64 s_pi = 3.141592653589793;

template <class T>
class Ellipse2dTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(Ellipse2dTest, Scalars);

TYPED_TEST(Ellipse2dTest, AccessorsAndPrint) {
  using T = TypeParam;
  Ellipse2d<T> ellipse;
  EXPECT_EQ(ellipse.perimeterUpperBound(), 0.0);
  ellipse.setCenter(Point2d<T>(1, 2));
  ellipse.setMajorRadius(5);
  ellipse.setMinorRadius(3);
  ellipse.setTheta(0.5);
  EXPECT_EQ(ellipse.centerX(), T(1));
  EXPECT_EQ(ellipse.centerY(), T(2));
  EXPECT_EQ(ellipse.getCosTheta(), std::cos(0.5));
  EXPECT_EQ(ellipse.getSinTheta(), std::sin(0.5));
  std::ostringstream text;
  text << ellipse;
  EXPECT_EQ(text.str(), "[center=[1, 2], a=5, b=3, theta=0.5]");
}

TYPED_TEST(Ellipse2dTest, FocalLengthIsDefinedForEitherOrderOfRadii) {
  using T = TypeParam;
  EXPECT_EQ(Ellipse2d<T>({0, 0}, 5, 3, 0).focalLength(), 4.0);
  EXPECT_EQ(Ellipse2d<T>({0, 0}, 3, 5, 0).focalLength(), 4.0);
  EXPECT_EQ(Ellipse2d<T>({0, 0}, 7, 7, 0).focalLength(), 0.0);
  EXPECT_EQ(Ellipse2d<T>().focalLength(), 0.0);
  const Ellipse2d<T> ellipse({10, 10}, 5, 3, s_pi / 2);
  EXPECT_NEAR(ellipse.focus1().getX(), 10, 1e-14);
  EXPECT_DOUBLE_EQ(ellipse.focus1().getY(), 14);
  EXPECT_DOUBLE_EQ(ellipse.focus2().getY(), 6);
}

TYPED_TEST(Ellipse2dTest, BoundaryPointsHaveAConstantSumOfFocalDistances) {
  using T = TypeParam;
  const unsigned seed = 5772;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 draw(seed);
  std::uniform_real_distribution<omReal64> angle(-7, 7);
  for (int i = 0; i < 500; ++i) {
    const auto minor = static_cast<T>(1 + draw() % 50);
    const auto major = static_cast<T>(minor + static_cast<T>(draw() % 50));
    const Ellipse2d<T> ellipse({static_cast<T>(draw() % 90), static_cast<T>(draw() % 90)}, major, minor, angle(draw));
    const omReal64 at = angle(draw);
    const auto point = ellipse.boundaryPoint(at);
    const omReal64 sum = distance(point, ellipse.focus1()) + distance(point, ellipse.focus2());
    ASSERT_NEAR(sum, 2 * omReal64(major), 1e-12) << ellipse << at;
    // The angle is counted from the major axis and is the polar one.
    const omReal64 dx = point.getX() - omReal64(ellipse.centerX());
    const omReal64 dy = point.getY() - omReal64(ellipse.centerY());
    ASSERT_NEAR(std::hypot(dx, dy), ellipse.radius(at), 1e-12) << ellipse << at;
    ASSERT_NEAR(std::remainder(std::atan2(dy, dx) - ellipse.getTheta() - at, 2 * s_pi), 0, 1e-11) << ellipse << at;
    ASSERT_NEAR(ellipse.excentricity(), ellipse.focalLength() / omReal64(major), 1e-14) << ellipse;
  }
}

TYPED_TEST(Ellipse2dTest, ACircleIsAnEllipse) {
  const Ellipse2d<TypeParam> circle({3, 4}, 5, 5, 1);
  EXPECT_DOUBLE_EQ(circle.area(), 25 * s_pi);
  EXPECT_NEAR(circle.perimeterLowerBound(), 10 * s_pi, 1e-13);
  EXPECT_NEAR(circle.perimeterUpperBound(), 10 * s_pi, 1e-13);
  EXPECT_EQ(circle.excentricity(), 0.0);
}

TEST(Ellipse2d, RadiiOfEverySizeNeitherWrapNorOverflow) {
  EXPECT_DOUBLE_EQ(Ellipse2d<omUInt32>({0, 0}, 3000000000u, 4000000000u, 0).focalLength(), std::sqrt(7.0) * 1e9);
  EXPECT_DOUBLE_EQ(Ellipse2d<omInt32>({0, 0}, 2000000000, 2000000000, 0).area(), s_pi * 4e18);
  EXPECT_DOUBLE_EQ(Ellipse2d<omReal64>({0, 0}, 5e300, 3e300, 0).focalLength(), 4e300);
  EXPECT_DOUBLE_EQ(Ellipse2d<omReal64>({0, 0}, 5e-300, 3e-300, 0).focalLength(), 4e-300);
  // a² - b² would lose every digit.
  EXPECT_DOUBLE_EQ(Ellipse2d<omReal64>({0, 0}, 1, 1 - std::ldexp(1.0, -50), 0).focalLength(),
                   std::ldexp(std::sqrt(2.0), -25));
}

TEST(Ellipse2d, ReadingRefreshesCosineAndSine) {
  const auto copy = archivedCopy(Ellipse2d<omReal32>({1, 2}, 5, 3, 0.75));
  EXPECT_EQ(copy.getCosTheta(), std::cos(0.75));
  EXPECT_EQ(copy.getSinTheta(), std::sin(0.75));
}

}  // namespace
}  // namespace ormix::geom
