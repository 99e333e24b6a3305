#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/EllipseConic.h>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix {
namespace {

TEST(EllipseConic, GoesThereAndBackAtAnyPlaceAndScale) {
  support::Random draw(71);
  for (int i = 0; i < 5000; ++i) {
    const omReal64 b = std::pow(10.0, -140 + 280 * draw.uniform(0, 1)), ratio = 1.001 + 20 * draw.uniform(0, 1);
    const omReal64 cx = 1e9 * b * draw.uniform(0, 1), cy = -1e9 * b * draw.uniform(0, 1),
                   theta = s_pi * draw.uniform(0, 1);
    EllipseConic conic;
    ASSERT_TRUE(conicFromEllipse(cx, cy, ratio * b, b, theta, conic));
    omReal64 x = 0, y = 0, major = 0, minor = 0, angle = 0;
    ASSERT_TRUE(ellipseFromConic(conic, x, y, major, minor, angle));
    EXPECT_EQ(x, cx);
    EXPECT_EQ(y, cy);
    EXPECT_NEAR(major / b, ratio, 1e-13 * ratio * ratio);
    EXPECT_NEAR(minor / b, 1, 1e-14);
    const omReal64 turn = std::abs(angle - theta);
    EXPECT_LT(std::min(turn, s_pi - turn), 1e-12) << ratio;
  }
}

TEST(EllipseConic, HoldsThePointsOfTheEllipse) {
  EllipseConic conic;
  ASSERT_TRUE(conicFromEllipse(3, -2, 5, 2, 0.7, conic));
  for (const EllipseConic& q : {conic, conicAbout(conic, 0, 0), conicAbout(conicAbout(conic, 100, 7), 2.5, -1)}) {
    for (int k = 0; k < 20; ++k) {
      const omReal64 u = 5 * std::cos(k), v = 2 * std::sin(k);
      const omReal64 x = 3 + u * std::cos(0.7) - v * std::sin(0.7) - q.originX;
      const omReal64 y = -2 + u * std::sin(0.7) + v * std::cos(0.7) - q.originY;
      EXPECT_NEAR(q.a * x * x + q.b * x * y + q.c * y * y + q.d * x + q.e * y + q.f, 0, 1e-12);
    }
    omReal64 cx = 0, cy = 0, a = 0, b = 0, theta = 0;
    ASSERT_TRUE(ellipseFromConic(q, cx, cy, a, b, theta));
    EXPECT_NEAR(cx, 3, 1e-13);
    EXPECT_NEAR(cy, -2, 1e-13);
    EXPECT_NEAR(a, 5, 1e-11);
    EXPECT_NEAR(b, 2, 1e-11);
    EXPECT_NEAR(theta, 0.7, 1e-13);
  }
}

TEST(EllipseConic, ReadsTheCoefficientsAsTheyStand) {
  // x² + y² - 2e6 x - 2e6 y + 2e12 - 1: exact coefficients of the unit circle about (1e6, 1e6).
  omReal64 cx = 0, cy = 0, a = 0, b = 0, theta = 7;
  ASSERT_TRUE(ellipseFromConic({1, 0, 1, -2e6, -2e6, 2e12 - 1, 0, 0}, cx, cy, a, b, theta));
  EXPECT_EQ(cx, 1e6);
  EXPECT_EQ(cy, 1e6);
  EXPECT_EQ(a, 1);
  EXPECT_EQ(b, 1);
  EXPECT_EQ(theta, 0);
  ASSERT_TRUE(ellipseFromConic({1, 0, 4, 0, 0, -4, 0, 0}, cx, cy, a, b, theta));
  EXPECT_EQ(theta, 0) << "not half a turn";
  // Sign and factor of the coefficients do not matter; upright.
  for (const omReal64 factor : {-1.0, 1e-200, -1e200}) {
    ASSERT_TRUE(ellipseFromConic({4 * factor, 0, factor, 0, 0, -4 * factor, 10, 20}, cx, cy, a, b, theta));
    EXPECT_EQ(cx, 10);
    EXPECT_NEAR(a, 2, 1e-15);
    EXPECT_NEAR(b, 1, 1e-15);
    EXPECT_NEAR(theta, s_pi / 2, 1e-15);
  }
}

TEST(EllipseConic, RefusesWhatIsNoEllipse) {
  omReal64 cx = 7, cy = 7, a = 7, b = 7, theta = 7;
  const omReal64 nan = std::nan(""), inf = support::s_infinity;
  const EllipseConic none[] = {{0, 0, 0, 0, 0, 0, 0, 0},    {0, 0, 0, 1, 2, 3, 0, 0},    {1, 0, -1, 0, 0, -1, 0, 0},
                               {1, 0, 0, 0, -1, 0, 0, 0},   {1, 2, 1, 0, 0, -1, 0, 0},   {1, 0, 1, 0, 0, 0, 0, 0},
                               {1, 0, 1, 0, 0, 1, 0, 0},    {nan, 0, 1, 0, 0, -1, 0, 0}, {1, 0, inf, 0, 0, -1, 0, 0},
                               {1, 0, 1, 0, 0, nan, 0, 0},  {1, 0, 1, 0, 0, -1, inf, 0}, {1, 0, 1e-16, 0, 0, -1, 0, 0},
                               {1, 0, 1, 1e200, 0, 0, 0, 0}};
  for (const EllipseConic& conic : none) EXPECT_FALSE(ellipseFromConic(conic, cx, cy, a, b, theta));
  EXPECT_EQ(cx, 7);
  EXPECT_EQ(theta, 7);
  EllipseConic conic;
  conic.f = 77;
  for (const omReal64 bad : {0.0, -1.0, nan, inf, 1e160, 1e-160, 1e9}) {
    EXPECT_FALSE(conicFromEllipse(0, 0, bad, 1, 0, conic) && bad < 1e155);
    EXPECT_FALSE(conicFromEllipse(0, 0, 1, bad, 0, conic));
  }
  EXPECT_FALSE(conicFromEllipse(nan, 0, 1, 1, 0, conic));
  EXPECT_FALSE(conicFromEllipse(0, 0, 1, 1, inf, conic));
  EXPECT_EQ(conic.f, 77);
}

}  // namespace
}  // namespace ormix
