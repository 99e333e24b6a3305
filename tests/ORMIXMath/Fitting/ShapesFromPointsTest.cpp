#include <ORMIXMath/Fitting/ShapesFromPoints.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace ormix {
namespace {

const omReal64 infinity = std::numeric_limits<omReal64>::infinity();

TEST(CircleFromPoints, IsPreciseFarFromTheOriginAndAtAnyScale) {
  omReal64 cx = 0, cy = 0, r = 0;
  for (const omReal64 offset : {0.0, 1e6, -1e9})
    for (const omReal64 scale : {1.0, 1024.0}) {
      // Exact in binary: 3-4-5 triangles about the centre.
      ASSERT_TRUE(circleFromPoints(offset + 5 * scale, offset, offset - 3 * scale, offset + 4 * scale, offset,
                                   offset - 5 * scale, cx, cy, r));
      EXPECT_NEAR(cx, offset, 1e-15 * scale);
      EXPECT_NEAR(cy, offset, 1e-15 * scale);
      EXPECT_NEAR(r, 5 * scale, 1e-15 * 5 * scale);
    }
  for (const omReal64 scale : {1e-160, 1e160, 1e300}) {
    ASSERT_TRUE(circleFromPoints(scale, 0, 0, scale, -scale, 0, cx, cy, r));
    EXPECT_NEAR(r / scale, 1, 1e-15);
    EXPECT_NEAR(cx / scale, 0, 1e-15);
  }
}

TEST(CircleFromPoints, RefusesCollinearPointsToRounding) {
  omReal64 cx = 7, cy = 7, r = 7;
  std::mt19937 draw(51);
  std::uniform_real_distribution<omReal64> unit(-1, 1);
  for (int i = 0; i < 2000; ++i) {
    const omReal64 scale = std::pow(10.0, 12 * unit(draw)), offset = i % 2 == 0 ? 0 : 1e9 * scale * unit(draw);
    const omReal64 dx = scale * unit(draw), dy = scale * unit(draw), s = unit(draw), t = unit(draw);
    EXPECT_FALSE(circleFromPoints(offset, offset, offset + s * dx, offset + s * dy, offset + t * dx, offset + t * dy,
                                  cx, cy, r));
  }
  EXPECT_FALSE(circleFromPoints(1, 2, 1, 2, 3, 4, cx, cy, r));
  EXPECT_FALSE(circleFromPoints(1, 2, 1, 2, 1, 2, cx, cy, r));
  EXPECT_FALSE(circleFromPoints(0.1, 0.3, 0.2, 0.6, 0.7, 2.1, cx, cy, r));
  for (const omReal64 bad : {std::nan(""), infinity}) {
    EXPECT_FALSE(circleFromPoints(bad, 0, 1, 0, 0, 1, cx, cy, r));
    EXPECT_FALSE(circleFromPoints(0, 0, 1, bad, 0, 1, cx, cy, r));
    EXPECT_FALSE(circleFromPoints(0, 0, 1, 0, 0, bad, cx, cy, r));
  }
  EXPECT_EQ(cx, 7);
  EXPECT_EQ(r, 7);
  // An arc of a tenth of a degree is no line.
  EXPECT_TRUE(circleFromPoints(std::cos(-0.001), std::sin(-0.001), 1, 0, std::cos(0.001), std::sin(0.001), cx, cy, r));
  EXPECT_NEAR(r, 1, 1e-9);
}

TEST(LineFromPoints, IsNormalisedAndPassesThroughBothPoints) {
  std::mt19937 draw(52);
  std::uniform_real_distribution<omReal64> unit(-1, 1);
  for (int i = 0; i < 2000; ++i) {
    const omReal64 offset = i % 3 == 0 ? 1e8 : 0;
    const omReal64 x0 = offset + unit(draw), y0 = offset + unit(draw), x1 = offset + unit(draw),
                   y1 = offset + unit(draw);
    omReal64 theta = 0, rho = -1;
    ASSERT_TRUE(lineFromPoints(x0, y0, x1, y1, theta, rho));
    EXPECT_GE(rho, 0);
    EXPECT_GT(theta, -s_pi);
    EXPECT_LE(theta, s_pi);
    const omReal64 slack = 1e-15 * (1 + 4 * offset);
    EXPECT_NEAR(x0 * std::cos(theta) + y0 * std::sin(theta), rho, slack);
    EXPECT_NEAR(x1 * std::cos(theta) + y1 * std::sin(theta), rho, slack);
    // The direction, whose accuracy does not depend on the offset.
    const omReal64 along = (x1 - x0) * std::cos(theta) + (y1 - y0) * std::sin(theta);
    EXPECT_NEAR(along, 0, 4e-16 * std::hypot(x1 - x0, y1 - y0));
  }
}

TEST(LineFromPoints, ThroughTheOriginItsAngleIsInTheHalfTurn) {
  omReal64 theta = 7, rho = 7;
  for (const auto& [x, y] : {std::pair{1.0, 0.0}, {0.0, 1.0}, {1.0, 1.0}, {-1.0, 1.0}, {1.0, -1.0}, {-1.0, 0.0}}) {
    ASSERT_TRUE(lineFromPoints(0, 0, x, y, theta, rho));
    EXPECT_EQ(rho, 0);
    EXPECT_FALSE(std::signbit(rho));
    EXPECT_GE(theta, 0);
    EXPECT_LT(theta, s_pi);
  }
  ASSERT_TRUE(lineFromPoints(-3, 1, -3, 2, theta, rho));
  EXPECT_EQ(theta, s_pi);
  EXPECT_EQ(rho, 3);
  EXPECT_FALSE(lineFromPoints(1, 2, 1, 2, theta, rho));
  EXPECT_FALSE(lineFromPoints(1, 2, std::nan(""), 2, theta, rho));
  EXPECT_FALSE(lineFromPoints(infinity, 2, 1, 2, theta, rho));
  EXPECT_EQ(rho, 3);
}

TEST(PlanFromPoints, HoldsItsPointsAndRefusesLines) {
  std::mt19937 draw(53);
  std::uniform_real_distribution<omReal64> unit(-1, 1);
  omReal64 rho = 0, theta = 0, phi = 0;
  for (int i = 0; i < 1000; ++i) {
    const omReal64 offset = i % 2 == 0 ? 0 : 1e6;
    omReal64 p[9];
    for (omReal64& value : p) value = offset + unit(draw);
    ASSERT_TRUE(planFromPoints(p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7], p[8], rho, theta, phi));
    EXPECT_GE(rho, 0);
    const omReal64 n[3] = {std::sin(theta) * std::cos(phi), std::sin(theta) * std::sin(phi), std::cos(theta)};
    for (int k = 0; k < 3; ++k)
      EXPECT_NEAR(n[0] * p[3 * k] + n[1] * p[3 * k + 1] + n[2] * p[3 * k + 2], rho, 1e-14 + 1e-14 * offset);
  }
  ASSERT_TRUE(planFromPoints(1, 0, -2, 0, 1, -2, 3, 3, -2, rho, theta, phi));
  // Straight down is turned up.
  EXPECT_EQ(rho, -2);
  EXPECT_EQ(theta, 0);
  EXPECT_FALSE(planFromPoints(1, 1, 1, 2, 2, 2, 5, 5, 5, rho, theta, phi));
  EXPECT_FALSE(planFromPoints(0.1, 0.2, 0.3, 0.3, 0.6, 0.9, 0.7, 1.4, 2.1, rho, theta, phi));
  EXPECT_FALSE(planFromPoints(1, 1, 1, 1, 1, 1, 5, 0, 5, rho, theta, phi));
  EXPECT_FALSE(planFromPoints(1, std::nan(""), 1, 1, 0, 1, 5, 0, 5, rho, theta, phi));
  EXPECT_EQ(rho, -2);
}

TEST(PlanFromNormal, IsTheSameForBothNormalsAndHoldsItsPointFarAway) {
  for (const omReal64 factor : {1.0, -1.0, 1e-200, -1e200}) {
    omReal64 rho = 0, theta = 0, phi = 0;
    ASSERT_TRUE(planFromNormal(1e9, -2e9, 5, factor * 2, factor * 3, factor * -6, rho, theta, phi));
    EXPECT_NEAR(std::sin(theta) * std::cos(phi), -2.0 / 7, 1e-15);
    EXPECT_NEAR(std::sin(theta) * std::sin(phi), -3.0 / 7, 1e-15);
    EXPECT_NEAR(std::cos(theta), 6.0 / 7, 1e-15);
    // Of the normal as it is rebuilt: no more than the rounding of the products.
    const omReal64 off =
        std::sin(theta) * std::cos(phi) * 1e9 + std::sin(theta) * std::sin(phi) * -2e9 + std::cos(theta) * 5 - rho;
    EXPECT_NEAR(off, 0, 3e-7);
    ASSERT_TRUE(planFromNormal(3, -2, 0, factor * 2, factor * 3, factor * -6, rho, theta, phi));
    EXPECT_EQ(rho, 0);
    EXPECT_NEAR(std::cos(theta), 6.0 / 7, 1e-15);
    EXPECT_FALSE(planFromNormal(1, 2, 3, 0, 0, 0, rho, theta, phi));
    EXPECT_FALSE(planFromNormal(1, 2, 3, std::nan(""), 0, 1, rho, theta, phi));
    EXPECT_FALSE(planFromNormal(1, infinity, 3, 1, 0, 1, rho, theta, phi));
    EXPECT_EQ(rho, 0);
  }
}

TEST(SphereFromPoints, IsPreciseFarAwayAndRefusesPlanes) {
  omReal64 cx = 0, cy = 0, cz = 0, r = 0;
  for (const omReal64 o : {0.0, 1e9}) {
    ASSERT_TRUE(sphereFromPoints(o + 3, o, o, o - 3, o, o, o, o + 3, o, o, o, o - 3, cx, cy, cz, r));
    EXPECT_EQ(cx, o);
    EXPECT_EQ(cy, o);
    EXPECT_EQ(cz, o);
    EXPECT_NEAR(r, 3, 1e-15);
  }
  EXPECT_FALSE(sphereFromPoints(1, 0, 5, 0, 1, 5, -1, 0, 5, 0, -1, 5, cx, cy, cz, r));
  EXPECT_FALSE(sphereFromPoints(0.1, 0, 0.3, 0, 0.1, 0.3, 0.2, 0.1, 0.9, 0.7, 0.2, 2.7, cx, cy, cz, r));
  EXPECT_FALSE(sphereFromPoints(1, 0, 0, 1, 0, 0, -1, 0, 5, 0, -1, 5, cx, cy, cz, r));
  EXPECT_FALSE(sphereFromPoints(1, 0, infinity, 0, 1, 5, -1, 0, 5, 0, -1, 6, cx, cy, cz, r));
  EXPECT_NEAR(r, 3, 1e-15);
}

}  // namespace
}  // namespace ormix
