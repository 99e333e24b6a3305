#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/Ellipse.h>

#include <boost/math/constants/constants.hpp>
#include <boost/multiprecision/cpp_bin_float.hpp>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix {
namespace {

using Wide = boost::multiprecision::number<boost::multiprecision::cpp_bin_float<60>, boost::multiprecision::et_off>;

/// The perimeter by the arithmetic-geometric mean (Gauss): 2π (a² − Σ 2^(n−1) c_n²) / M(a, b), c_0² = a² − b².
Wide perimeter(omReal64 larger, omReal64 smaller) {
  if (smaller == 0) return 4 * Wide(larger);
  Wide a = larger, b = smaller, sum = (a * a + b * b) / 2, weight = 1;
  for (int step = 0; step < 60 && a != b; ++step, weight *= 2) {
    const Wide c = (a - b) / 2, mean = (a + b) / 2;
    b = sqrt(a * b);
    a = mean;
    sum -= weight * c * c;
  }
  return 2 * boost::math::constants::pi<Wide>() * sum / a;
}

TEST(Ellipse, BoundsHoldTheTruePerimeterAtEveryRatioAndScale) {
  support::Random draw(5150);
  omReal64 worstLower = 0, worstUpper = 0;
  for (int i = 0; i < 8000; ++i) {
    const omReal64 a = std::pow(10.0, -280 + 580 * draw.uniform(0, 1));
    const int kind = i % 4;
    const omReal64 ratio = kind == 0   ? draw.uniform(0, 1)
                           : kind == 1 ? 1 - std::pow(10.0, -16 * draw.uniform(0, 1))
                           : kind == 2 ? std::pow(10.0, -20 * draw.uniform(0, 1))
                                       : std::pow(10.0, -300 * draw.uniform(0, 1));
    const omReal64 b = a * ratio;
    const Wide exact = perimeter(a, b);
    const omReal64 lower = ellipsePerimeterLowerBound(b, a), upper = ellipsePerimeterUpperBound(a, b);
    ASSERT_LE(lower, exact) << a << ' ' << b;
    ASSERT_GE(upper, exact) << a << ' ' << b;
    worstLower = std::max(worstLower, Wide(1 - lower / exact).convert_to<omReal64>());
    worstUpper = std::max(worstUpper, Wide(upper / exact - 1).convert_to<omReal64>());
  }
  EXPECT_LE(worstLower, 4.1e-4);
  EXPECT_LE(worstUpper, 1.3e-4);
}

TEST(Ellipse, BoundsAreTightForCirclesAndZeroForPoints) {
  EXPECT_NEAR(ellipsePerimeterLowerBound(1, 1), s_twoPi, 2e-14);
  EXPECT_NEAR(ellipsePerimeterUpperBound(1, 1), s_twoPi, 2e-14);
  EXPECT_NEAR(ellipsePerimeterUpperBound(3, 0), 12, 1e-13);
  EXPECT_LE(ellipsePerimeterLowerBound(-2, 0), 8);
  EXPECT_EQ(ellipsePerimeterLowerBound(0, 0), 0);
  EXPECT_EQ(ellipsePerimeterUpperBound(0, 0), 0);
  EXPECT_EQ(ellipsePerimeterUpperBound(1, -2), ellipsePerimeterUpperBound(2, 1));
}

TEST(Ellipse, ExcentricityIsAccurateForNearlyEqualRadii) {
  support::Random draw(616);
  for (int i = 0; i < 2000; ++i) {
    const omReal64 a = std::pow(10.0, -300 + 600 * draw.uniform(0, 1));
    const omReal64 b = a * (1 - std::pow(10.0, -16 * draw.uniform(0, 1)));
    const Wide exact = sqrt((1 - Wide(b) / a) * (1 + Wide(b) / a));
    const omReal64 value = ellipseExcentricity(a, b);
    ASSERT_EQ(ellipseExcentricity(b, a), value);
    ASSERT_TRUE(value >= 0 && value <= 1);
    ASSERT_EQ(value == 0, exact.is_zero());
    ASSERT_LE(abs(value - exact), 5e-16 * exact) << a << ' ' << b;
  }
  EXPECT_DOUBLE_EQ(ellipseExcentricity(5, 4), 0.6);
  EXPECT_EQ(ellipseExcentricity(7, 7), 0);
  EXPECT_EQ(ellipseExcentricity(0, 0), 0);
  EXPECT_EQ(ellipseExcentricity(0, 2), 1);
}

TEST(Ellipse, BoundaryPointsSatisfyTheEquation) {
  for (const auto& [a, b] : {std::pair{5.0, 3.0}, {3.0, 5.0}, {2.0, 2.0}, {1e6, 1.0}, {1e200, 1e190}}) {
    for (int step = -20; step <= 20; ++step) {
      const omReal64 angle = 0.37 * step, theta = 0.7;
      omReal64 x = 0, y = 0;
      ellipsePoint(0, 0, a, b, std::cos(theta), std::sin(theta), angle, x, y);
      const omReal64 along = (std::cos(theta) * x + std::sin(theta) * y) / a;
      const omReal64 across = (std::cos(theta) * y - std::sin(theta) * x) / b;
      EXPECT_NEAR(along * along + across * across, 1, 1e-9) << a << ' ' << b << ' ' << angle;
      EXPECT_NEAR(std::hypot(x, y) / ellipseRadius(a, b, angle), 1, 1e-15);
      EXPECT_NEAR(std::remainder(std::atan2(y, x) - theta - angle, s_twoPi), 0, 1e-14);
    }
  }
}

TEST(Ellipse, RadiusIsDefinedForFlatOnesAndPoints) {
  for (const auto& [a, b, angle, radius] : {std::array<omReal64, 4>{5, 3, 0, 5},
                                            {5, 3, s_pi / 2, 3},
                                            {3, 5, s_pi / 2, 5},
                                            {5, 0, 0, 5},
                                            {5, 0, s_pi, 5},
                                            {5, 0, 0.1, 0},
                                            {0, 5, s_pi / 2, 5},
                                            {0, 0, 1, 0},
                                            {1e300, 1e-300, 0, 1e300},
                                            {-5, 3, 0, 5}})
    EXPECT_DOUBLE_EQ(ellipseRadius(a, b, angle), radius) << a << ' ' << b;
}

TEST(Ellipse, NaNComesThrough) {
  const omReal64 nan = support::s_nan;
  for (const auto& [a, b] : {std::pair{nan, 1.0}, {1.0, nan}, {nan, nan}, {0.0, nan}})
    for (const omReal64 value : {ellipseArea(a, b), ellipsePerimeterLowerBound(a, b), ellipsePerimeterUpperBound(a, b),
                                 ellipseExcentricity(a, b), ellipseRadius(a, b, 1)})
      EXPECT_TRUE(std::isnan(value)) << a << ' ' << b;
  EXPECT_TRUE(std::isnan(ellipseRadius(2, 1, nan)));
  EXPECT_DOUBLE_EQ(ellipseArea(2, 3), 6 * s_pi);
}

}  // namespace
}  // namespace ormix
