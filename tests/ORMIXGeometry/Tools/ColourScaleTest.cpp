#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>

#include "support/Checks.h"

using namespace ormix;
using namespace ormix::geom;

namespace {

/// The lightness of CIELAB, 0 to 100, of "#rrggbb" under D65.
double lightness(const std::string& colour) {
  const double weights[] = {0.2126, 0.7152, 0.0722};
  double luminance = 0;
  for (std::size_t k = 0; k < 3; ++k) {
    const double c = std::stoi(colour.substr(1 + 2 * k, 2), nullptr, 16) / 255.0;
    luminance += weights[k] * (c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4));
  }
  return luminance > 0.008856 ? 116 * std::cbrt(luminance) - 16 : 903.3 * luminance;
}

}  // namespace

// Equal steps of the values are equal steps of the lightness, also in the middle and for people who see no colours; a
// scale around 0 is as dark on either side.
TEST(ColourScale, StepsAreEven) {
  const ColourScale rising(2, 12);
  for (int i = 0; i < 10; ++i)
    EXPECT_NEAR(lightness(rising.colour(3 + i)) - lightness(rising.colour(2 + i)), 7.6, 1.6) << i;
  const ColourScale around(-3, 5);
  EXPECT_EQ(around.low(), -5);
  EXPECT_EQ(around.colour(0), "#dddddd");
  for (int i = 1; i <= 5; ++i) {
    EXPECT_NEAR(lightness(around.colour(i)), lightness(around.colour(-i)), 3.5) << i;
    EXPECT_LT(lightness(around.colour(i)), lightness(around.colour(i - 1))) << i;
  }
}

TEST(ColourScale, HostileNumbersHaveColours) {
  const double huge = 1.7e308;
  for (const ColourScale& scale : {ColourScale(-huge, huge), ColourScale(support::s_nan, 1), ColourScale(3, 3),
                                   ColourScale(0, 0), ColourScale(1, -1), ColourScale::over({support::s_nan})}) {
    EXPECT_LT(scale.low(), scale.high());
    EXPECT_EQ(scale.colour(support::s_infinity), scale.stops().back());
    EXPECT_EQ(scale.colour(-support::s_infinity), scale.stops().front());
    EXPECT_EQ(scale.colour(support::s_nan), "#808080");
    EXPECT_LE(scale.ticks().size(), 7U);
    for (const double tick : scale.ticks()) EXPECT_TRUE(tick >= scale.low() && tick <= scale.high()) << tick;
  }
  EXPECT_EQ(ColourScale(-4e-4, 1e-3).ticks(), (std::vector<omReal64>{-1e-3, -5e-4, 0, 5e-4, 1e-3}));
  std::vector<omReal64> values(1000, 1);
  values[0] = -1e9;
  values[1] = 2;
  EXPECT_EQ(ColourScale::over(values, 0.9).low(), 1 - 1e-3);
  EXPECT_EQ(roundLength(0.0499), 0.02);
  EXPECT_EQ(roundLength(5), 5);
  EXPECT_EQ(roundLength(support::s_infinity), 0);
}
