#include <ORMIXMath/Fitting/ShapesFromPoints.h>
#include <ORMIXMath/Scalar/Constants.h>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix {
namespace {

const omReal64 infinity = support::s_infinity;

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
  support::Random draw(51);
  for (int i = 0; i < 2000; ++i) {
    const omReal64 scale = std::pow(10.0, 12 * draw.uniform()), offset = i % 2 == 0 ? 0 : 1e9 * scale * draw.uniform();
    const omReal64 dx = scale * draw.uniform(), dy = scale * draw.uniform(), s = draw.uniform(), t = draw.uniform();
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
