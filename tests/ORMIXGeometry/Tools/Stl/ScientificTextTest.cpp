#include <ORMIXGeometry/Tools/Stl/ScientificText.h>

#include "support/Checks.h"
#include "support/Random.h"

using namespace ormix;
using namespace ormix::geom;

namespace {

std::string written(omReal64 value, int precision) {
  std::vector<char> text(scientificLength(precision));
  return {text.data(), writeScientific(text.data(), value, precision)};
}

/// What a stream prints.
std::string printed(omReal64 value, std::streamsize precision) {
  std::ostringstream stream;
  stream.imbue(std::locale::classic());
  stream.precision(precision);
  stream << std::scientific << value;
  return stream.str();
}

void expectAsStream(omReal64 value, int precision = 6) {
  for (const omReal64 signedValue : {value, -value})
    ASSERT_EQ(written(signedValue, precision), printed(signedValue, precision)) << std::hexfloat << value;
}

}  // namespace

TEST(ScientificText, printsRandomBitsAsAStreamDoes) {
  support::Random random(31);
  for (int trial = 0; trial < 100000; ++trial) {
    expectAsStream(random.bits<omReal32>());
    expectAsStream(random.bits<omReal64>());
    expectAsStream(std::ldexp(static_cast<omReal64>(random() >> 8), static_cast<int>(random.below(60)) - 50));
  }
}

TEST(ScientificText, printsWhatIsHardToRound) {
  // Halves of the last digit, which are rounded to even, and their neighbours; the seams between exponents.
  for (int exponent = -30; exponent <= 30; ++exponent)
    for (const omReal64 mantissa : {1000000.5, 1000001.5, 1234567.5, 9999998.5, 9999999.5, 9999999.0, 1.0, 0.9999995,
                                    9.9999995, 0.99999949999, 5.0, 2.5}) {
      const omReal64 value = mantissa * std::pow(10.0, exponent);
      for (const omReal64 near :
           {std::nextafter(value, 0), value, std::nextafter(value, HUGE_VAL), std::ldexp(mantissa, exponent)})
        expectAsStream(near);
    }
  for (const omReal64 value : {0.0, 1e98, 1e99, 1e100, 9.9999999e99, 1e-98, 1e-99, 1e-100, 9.9999996e-100, 5e-324,
                               std::numeric_limits<omReal64>::max(), support::s_infinity, support::s_nan})
    expectAsStream(value);
}

TEST(ScientificText, hasThePrecisionOfTheStream) {
  for (const int precision : {0, 1, 2, 5, 7, 9, 16, 17, 40, 800})
    for (const omReal64 value : {0.0, 1.5, 2.5, 0.1, 12345.678, 5e-324, 1.7976931348623157e308})
      expectAsStream(value, precision);
  EXPECT_EQ(scientificPrecision(-3), 6);
  EXPECT_EQ(printed(1.5, -3), printed(1.5, 6)) << "as streams see it";
  EXPECT_EQ(scientificPrecision(1000000000), s_maxScientificPrecision);
}

TEST(ScientificText, shortestDigitsReadBack) {
  char text[24];
  EXPECT_EQ(std::string(text, writeShortest(text, 0.1f)), "0.1");
  EXPECT_EQ(std::string(text, writeShortest(text, 0.1)), "0.1");
  support::Random random(7);
  for (int trial = 0; trial < 10000; ++trial) {
    const auto value = random.bits<omReal32>();
    if (std::isfinite(value)) {
      ASSERT_EQ(std::strtof(std::string(text, writeShortest(text, value)).c_str(), nullptr), value);
    }
  }
}
