#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/Ellipse.h>
#include <ORMIXMath/Shape/Ellipsoid.h>

#include <boost/math/constants/constants.hpp>
#include <boost/multiprecision/cpp_bin_float.hpp>
#include <boost/numeric/ublas/matrix.hpp>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix {
namespace {

using Wide = boost::multiprecision::number<boost::multiprecision::cpp_bin_float<60>, boost::multiprecision::et_off>;

/// The area for a >= b > 0 as the integral over the directions (w = cos theta, phi) of
/// sqrt(b²c² s² cos² phi + a²c² s² sin² phi + a²b² w²), s² = 1 − w²: elementary over w, and over phi summed by the
/// trapezoidal rule, which converges geometrically on periodic functions. Negative where it did not.
Wide area(Wide a, Wide b, Wide c) {
  const Wide pi = boost::math::constants::pi<Wide>();
  const auto inner = [&](const Wide& phi) -> Wide {
    const Wide co = cos(phi), si = sin(phi);
    // √(p + (q − p) w²) with p = c² (b² cos² + a² sin²) and q = a² b².
    const Wide p = c * c * (b * b * co * co + a * a * si * si), q = a * a * b * b, d = q - p;
    if (abs(d) < q * Wide("1e-40")) return 2 * sqrt(q);
    if (d > 0) return sqrt(q) + p / sqrt(d) * asinh(sqrt(d / p));
    return sqrt(q) + p / sqrt(-d) * asin(sqrt(-d / p));
  };
  Wide previous = 0;
  for (int steps = 8; steps <= 4096; steps *= 2) {
    Wide sum = (inner(0) + inner(pi / 2)) / 2;
    for (int k = 1; k < steps; ++k) sum += inner(pi / 2 * k / steps);
    const Wide value = 2 * pi * sum / steps;
    if (abs(value - previous) < value * Wide("1e-25")) return value;
    previous = value;
  }
  return -1;
}

/// Error in units in the last place of the exact value.
omReal64 ulps(omReal64 value, const Wide& exact) {
  const auto rounded = exact.convert_to<omReal64>();
  return Wide(abs(value - exact)).convert_to<omReal64>() / (std::nextafter(rounded, INFINITY) - rounded);
}

Matrix3x3 aboutZ(omReal64 angle) {
  Matrix3x3 m = boost::numeric::ublas::identity_matrix<omReal64>(3);
  m(0, 0) = m(1, 1) = std::cos(angle);
  m(1, 0) = std::sin(angle);
  m(0, 1) = -m(1, 0);
  return m;
}

TEST(Ellipsoid, AreaAgreesWithQuadratureInSixtyDigits) {
  support::Random draw(1812);
  omReal64 worst = 0;
  for (int i = 0; i < 200; ++i) {
    const omReal64 a = std::pow(10.0, -140 + 280 * draw.uniform(0, 1));
    const omReal64 b = i % 5 == 0   ? a
                       : i % 5 == 1 ? a * (1 - 1e-9 * draw.uniform(0, 1))
                                    : a * (0.02 + draw.uniform(0, 1));
    const omReal64 spread = std::pow(10.0, -100 * draw.uniform(0, 1));
    const omReal64 c = i % 3 == 0   ? b * (1 - 1e-12 * draw.uniform(0, 1))
                       : i % 3 == 1 ? a * draw.uniform(0, 1)
                                    : std::min(a, b) * spread;
    const Wide exact = area(std::max(a, b), std::min(a, b), c);
    ASSERT_GT(exact, 0) << a << ' ' << b << ' ' << c;
    const omReal64 value = ellipsoidArea(a, b, c);
    EXPECT_EQ(value, ellipsoidArea(-c, a, -b));
    worst = std::max(worst, ulps(value, exact));
  }
  EXPECT_LE(worst, 2);
}

TEST(Ellipsoid, AreaAtTheEndsOfTheRange) {
  const omReal64 inf = support::s_infinity, nan = std::nan("");
  for (const auto& [a, b, c, expected] : {std::array<omReal64, 4>{3, 3, 3, 36 * s_pi},
                                          {0, 3, 2, 12 * s_pi},
                                          {1e-100, 3, 2, 12 * s_pi},
                                          {1e100, 1e-100, 1e-100, s_pi * s_pi},
                                          {1e300, 1e-320, 0, s_twoPi * 1e300 * 1e-320},
                                          {1e-150, 1e-150, 1e-150, 4 * s_pi * 1e-300}})
    EXPECT_DOUBLE_EQ(ellipsoidArea(a, b, c), expected);
  EXPECT_EQ(ellipsoidArea(5, 0, 0) + ellipsoidArea(0, inf, 0) + ellipsoidArea(0, 0, 0), 0);
  for (const auto& [a, b, c] : {std::array{1e200, 1e200, 1.0}, {-inf, 1.0, 1.0}, {inf, inf, inf}})
    EXPECT_EQ(ellipsoidArea(a, b, c), inf);
  for (const auto& [a, b, c] : {std::array{nan, 0.0, 2.0}, {inf, nan, 2.0}, {inf, 0.0, nan}}) {
    EXPECT_TRUE(std::isnan(ellipsoidArea(a, b, c)) && std::isnan(ellipsoidVolume(a, b, c)));
    EXPECT_TRUE(std::isnan(ellipsoidExcentricity(a, b, c)));
    EXPECT_TRUE(std::isnan(ellipsoidRadius(a, b, c, aboutZ(0), 1, 1)));
  }
}

TEST(Ellipsoid, VolumeAndExcentricity) {
  EXPECT_DOUBLE_EQ(ellipsoidVolume(1, 2, 3), 8 * s_pi);
  EXPECT_DOUBLE_EQ(ellipsoidVolume(1e200, 1e200, 1e-250), 4.0 / 3.0 * s_pi * 1e150);
  EXPECT_EQ(ellipsoidVolume(1e200, 1e200, 0), 0);
  EXPECT_LT(ellipsoidVolume(-1, 1, 1), 0);
  EXPECT_DOUBLE_EQ(ellipsoidExcentricity(4, 4.5, 5), 0.6);
  EXPECT_DOUBLE_EQ(ellipsoidExcentricity(-5, 4, 4), 0.6);
  EXPECT_EQ(ellipsoidExcentricity(2, 2, 2) + ellipsoidExcentricity(0, 0, 0), 0);
  EXPECT_EQ(ellipsoidExcentricity(1, 0, 3), 1);
}

TEST(Ellipsoid, SurfacePointsSatisfyTheEquationInTheTurnedAxes) {
  const omReal64 turn = 0.6;
  const Matrix3x3 rotation = aboutZ(turn);
  const omReal64 shapes[][3] = {{5, 3, 2}, {2, 3, 5}, {1, 1, 1}, {1e6, 1, 1e3}, {1e200, 1e190, 1e199}};
  for (const auto& [a, b, c] : shapes) {
    for (int step = 0; step < 200; ++step) {
      const omReal64 theta = 0.0157 * step, phi = 0.37 * step;
      omReal64 x = 0, y = 0, z = 0;
      ellipsoidPoint(0, 0, 0, a, b, c, rotation, theta, phi, x, y, z);
      const omReal64 u = (std::cos(turn) * x + std::sin(turn) * y) / a;
      const omReal64 v = (std::cos(turn) * y - std::sin(turn) * x) / b;
      EXPECT_NEAR(u * u + v * v + z / c * (z / c), 1, 1e-9) << a << ' ' << step;
      EXPECT_NEAR(std::hypot(x, y, z) / ellipsoidRadius(a, b, c, rotation, theta, phi), 1, 1e-15);
    }
  }
  omReal64 x = 0, y = 0, z = 0;
  ellipsoidPoint(10, 20, 30, 5, 3, 2, aboutZ(s_pi / 2), s_pi / 2, 0, x, y, z);
  EXPECT_NEAR(x, 10, 1e-15);
  EXPECT_DOUBLE_EQ(y, 25);
  EXPECT_DOUBLE_EQ(z, 30);
}

TEST(Ellipsoid, RadiusIsDefinedForFlatOnesNeedlesAndPoints) {
  const omReal64 right = s_pi / 2;
  for (const auto& [a, b, c, theta, phi, radius] : {std::array<omReal64, 6>{5, 3, 2, 0, 0.3, 2},
                                                    {5, 3, 2, right, 0, 5},
                                                    {5, -3, 2, right, right, 3},
                                                    {5, 3, 0, right + 0.1, 0.4, 0},
                                                    {0, 0, 2, s_pi, 0.4, 2},
                                                    {0, 0, 2, 0.1, 0.4, 0},
                                                    {0, 7, 0, right, right, 7},
                                                    {0, 0, 0, 1, 1, 0},
                                                    {1e300, 1e-300, 1, right, right, 1e-300},
                                                    {1e300, 1e-310, 1e300, right, 0, 1e300},
                                                    {5, 3, 0, right, 0.4, ellipseRadius(5, 3, 0.4)},
                                                    {5, 0, 2, 0.7, s_pi, ellipseRadius(2, 5, 0.7)}})
    EXPECT_DOUBLE_EQ(ellipsoidRadius(a, b, c, aboutZ(1), theta, phi), radius) << a << ' ' << b << ' ' << c;
  EXPECT_TRUE(std::isnan(ellipsoidRadius(1, 2, 3, aboutZ(1), std::nan(""), 0)));
}

}  // namespace
}  // namespace ormix
