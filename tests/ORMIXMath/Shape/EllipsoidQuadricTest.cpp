#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/EllipsoidQuadric.h>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix {
namespace {

/// Sine of the angle between the axes in column k of two ellipsoids' rotations, whatever their signs.
omReal64 axisAngle(const EllipsoidParameters& p, const EllipsoidParameters& q, std::size_t k) {
  const RotationMatrix m = eulerToMatrix(p.alpha, p.beta, p.chi), n = eulerToMatrix(q.alpha, q.beta, q.chi);
  const omReal64 x = m[1][k] * n[2][k] - m[2][k] * n[1][k], y = m[2][k] * n[0][k] - m[0][k] * n[2][k];
  return std::hypot(x, y, m[0][k] * n[1][k] - m[1][k] * n[0][k]);
}

omReal64 value(const EllipsoidQuadric& q, omReal64 x, omReal64 y, omReal64 z) {
  x -= q.originX;
  y -= q.originY;
  z -= q.originZ;
  return q.xx * x * x + q.yy * y * y + q.zz * z * z + q.xy * x * y + q.xz * x * z + q.yz * y * z + q.x * x + q.y * y +
         q.z * z + q.constant;
}

TEST(EllipsoidQuadric, GoesThereAndBackAtAnyPlaceAndScale) {
  support::Random draw(1687);
  for (int i = 0; i < 5000; ++i) {
    const omReal64 c = std::pow(10.0, -140 + 280 * draw.uniform(0, 1)), b = c * (1.01 + 20 * draw.uniform(0, 1));
    const omReal64 a = b * (1.01 + 5 * draw.uniform(0, 1)), ratio = a / c;
    const EllipsoidParameters given{
        1e9 * c * draw.uniform(0, 1), -1e9 * c * draw.uniform(0, 1), c * draw.uniform(0, 1),    a, b, c,
        6 * draw.uniform(0, 1) - 3,   3 * draw.uniform(0, 1) - 1.5,  6 * draw.uniform(0, 1) - 3};
    EllipsoidQuadric quadric;
    ASSERT_TRUE(convertEllipsoidToQuadratic(given, quadric));
    EllipsoidParameters found;
    ASSERT_TRUE(convertEllipsoidFromQuadratic(quadric, found));
    EXPECT_TRUE(found.cx == given.cx && found.cy == given.cy && found.cz == given.cz);
    EXPECT_NEAR(found.a / a, 1, 1e-15 * ratio * ratio);
    EXPECT_NEAR(found.b / b, 1, 1e-15 * ratio * ratio);
    EXPECT_NEAR(found.c / c, 1, 1e-15);
    for (std::size_t k = 0; k < 3; ++k) EXPECT_LT(axisAngle(found, given, k), 1e-12) << ratio;
    const RotationMatrix m = eulerToMatrix(found.alpha, found.beta, found.chi);
    for (std::size_t k = 0; k < 2; ++k) {
      const auto [low, high] = std::minmax({m[0][k], m[1][k], m[2][k]});
      EXPECT_GE(high, -low - 1e-15);
    }
  }
}

TEST(EllipsoidQuadric, HoldsThePointsOfTheEllipsoid) {
  EllipsoidQuadric quadric;
  ASSERT_TRUE(convertEllipsoidToQuadratic({3, -2, 7, 5, 4, 2, 0.3, -0.4, 0.5}, quadric));
  EXPECT_LT(value(quadric, 3, -2, 7), 0);
  const RotationMatrix m = eulerToMatrix(0.3, -0.4, 0.5);
  for (const EllipsoidQuadric& q : {quadric, quadricAbout(quadricAbout(quadric, 100, 7, -9), 2.5, -1, 1)}) {
    for (int k = 0; k < 40; ++k) {
      const omReal64 u = 5 * std::cos(k) * std::cos(2 * k), v = 4 * std::sin(k) * std::cos(2 * k),
                     w = 2 * std::sin(2 * k);
      const auto along = [&](std::size_t row) { return m[row][0] * u + m[row][1] * v + m[row][2] * w; };
      EXPECT_NEAR(value(q, 3 + along(0), -2 + along(1), 7 + along(2)), 0, 1e-12);
    }
    EllipsoidParameters e;
    ASSERT_TRUE(convertEllipsoidFromQuadratic(q, e));
    const omReal64 errors[] = {e.cx - 3, e.cz - 7, e.a - 5, e.c - 2, e.alpha - 0.3, e.beta + 0.4, e.chi - 0.5};
    for (const omReal64 error : errors) EXPECT_NEAR(error, 0, 1e-12);
  }
}

TEST(EllipsoidQuadric, ReadsTheCoefficientsAsTheyStand) {
  // Exact coefficients of the unit sphere about (1e6, 1e6, -1e6).
  omReal64 cx = 0, cy = 0, cz = 0, a = 0, b = 0, c = 0, alpha = 7, beta = 7, chi = 7;
  const auto convert = [&](const std::array<omReal64, 10>& q) {
    return convertEllipsoidFromQuadratic(q, cx, cy, cz, a, b, c, alpha, beta, chi);
  };
  ASSERT_TRUE(convert({1, 1, 1, 0, 0, 0, -2e6, -2e6, 2e6, 3e12 - 1}));
  EXPECT_TRUE(cx == 1e6 && cy == 1e6 && cz == -1e6);
  EXPECT_TRUE(a == 1 && b == 1 && c == 1);
  EXPECT_TRUE(alpha == 0 && beta == 0 && chi == 0);
  // Sign and factor do not matter; the radii are sorted: 2 along z, 1 along x, 1/2 along y.
  for (const omReal64 f : {1.0, -1.0, 1e-200, -1e200}) {
    ASSERT_TRUE(convert({4 * f, 16 * f, f, 0, 0, 0, 0, 0, 0, -4 * f}));
    EXPECT_NEAR(a, 2, 1e-15);
    EXPECT_NEAR(b, 1, 1e-15);
    EXPECT_NEAR(c, 0.5, 1e-15);
    const RotationMatrix m = eulerToMatrix(alpha, beta, chi);
    EXPECT_NEAR(m[2][0], 1, 1e-15);
    EXPECT_NEAR(m[0][1], 1, 1e-15);
    EXPECT_NEAR(m[1][2], 1, 1e-15);
  }
  std::array<omReal64, 10> q{};
  ASSERT_TRUE(convertEllipsoidToQuadratic(10, 20, 30, 3, 2, 1, 0.1, 0.2, 0.3, q) && convert(q));
  EXPECT_LE(std::max({std::abs(cy - 20), std::abs(b - 2), std::abs(chi - 0.3)}), 1e-11);
}

TEST(EllipsoidQuadric, SpheresSpheroidsAndFlatOnesKeepTheirShape) {
  const omReal64 shapes[][3] = {{2, 2, 2}, {3, 3, 1}, {3, 1, 1}, {100, 100, 1}, {100, 1, 1}, {100, 50, 1}, {1, 2, 3}};
  for (const auto& [a, b, c] : shapes)
    for (int k = 0; k < 50; ++k) {
      EllipsoidQuadric q, again;
      EllipsoidParameters found;
      ASSERT_TRUE(
          convertEllipsoidToQuadratic({1e6, -1e6, 5e5, a, b, c, 0.12 * k - 3, 0.06 * k - 1.5, 3 - 0.12 * k}, q));
      ASSERT_TRUE(convertEllipsoidFromQuadratic(q, found));
      omReal64 sorted[] = {a, b, c};
      std::sort(sorted, sorted + 3);
      EXPECT_LE(std::max({std::abs(found.a / sorted[2] - 1), std::abs(found.b / sorted[1] - 1),
                          std::abs(found.c / sorted[0] - 1)}),
                2e-12);
      EXPECT_TRUE(found.a >= found.b && found.b >= found.c);
      // The surface is the same, so the orientation is one of its own.
      ASSERT_TRUE(convertEllipsoidToQuadratic(found, again));
      for (const auto part : {&EllipsoidQuadric::xx, &EllipsoidQuadric::yy, &EllipsoidQuadric::zz,
                              &EllipsoidQuadric::xy, &EllipsoidQuadric::xz, &EllipsoidQuadric::yz})
        EXPECT_NEAR(again.*part, q.*part, 1e-14);
    }
}

TEST(EllipsoidQuadric, RefusesWhatIsNoEllipsoid) {
  const omReal64 nan = std::nan(""), inf = support::s_infinity;
  EllipsoidParameters e;
  e.cx = 7;
  const EllipsoidQuadric none[] = {{},
                                   {0, 0, 0, 0, 0, 0, 1, 2, 3, 4},
                                   {1, 1, -1, 0, 0, 0, 0, 0, 0, -1},   // hyperboloid of one sheet
                                   {1, -1, -1, 0, 0, 0, 0, 0, 0, -1},  // of two
                                   {1, 1, -1, 0, 0, 0, 0, 0, 0, 0},    // cone
                                   {1, 1, 0, 0, 0, 0, 0, 0, -1, 0},    // paraboloid
                                   {1, 1, 0, 0, 0, 0, 0, 0, 0, -1},    // cylinder
                                   {1, 1, 1e-16, 0, 0, 0, 0, 0, 0, -1},
                                   {1, 1, 1, 2, 2, 2, 0, 0, 0, -1},  // pair of planes
                                   {1, 2, 3, 0, 0, 0, 0, 0, 0, 0},   // point
                                   {1, 2, 3, 0, 0, 0, 0, 0, 0, 1},   // nothing
                                   {nan, 1, 1, 0, 0, 0, 0, 0, 0, -1},
                                   {1, inf, 1, 0, 0, 0, 0, 0, 0, -1},
                                   {1, 1, 1, 0, 0, 0, 0, 0, nan, -1},
                                   {1, 1, 1, 0, 0, 0, 0, 0, 0, -1, inf},
                                   {1, 1, 1, 0, 0, 0, 1e200, 0, 0, 0}};
  for (const EllipsoidQuadric& q : none) EXPECT_FALSE(convertEllipsoidFromQuadratic(q, e));
  EXPECT_EQ(e.cx, 7);
  EllipsoidQuadric q;
  q.constant = 77;
  for (const omReal64 bad : {0.0, -1.0, nan, inf, 1e9, 1e-9})
    for (const auto radius : {&EllipsoidParameters::a, &EllipsoidParameters::b, &EllipsoidParameters::c}) {
      EllipsoidParameters broken{0, 0, 0, 1, 1, 1};
      broken.*radius = bad;
      EXPECT_FALSE(convertEllipsoidToQuadratic(broken, q));
    }
  EXPECT_FALSE(convertEllipsoidToQuadratic({0, 0, 0, 1e160, 1e160, 1e160}, q));
  EXPECT_FALSE(convertEllipsoidToQuadratic({0, nan, 0, 1, 1, 1}, q));
  EXPECT_FALSE(convertEllipsoidToQuadratic({0, 0, 0, 1, 1, 1, 0, inf, 0}, q));
  EXPECT_EQ(q.constant, 77);
}

}  // namespace
}  // namespace ormix
