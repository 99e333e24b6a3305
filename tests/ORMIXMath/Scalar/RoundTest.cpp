#include <ORMIXMath/Scalar/Round.h>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix {
namespace {

/// The wide format of the processor rounds every double and clamps to every integer without an error of its own.
template <class T>
T oracle(omReal64 value) {
  using Limits = std::numeric_limits<T>;
  static_assert(std::numeric_limits<long double>::digits >= 64);
  if (std::isnan(value)) return 0;
  const long double nearest = std::round(static_cast<long double>(value));
  if (nearest >= static_cast<long double>(Limits::max())) return Limits::max();
  if (nearest <= static_cast<long double>(Limits::min())) return Limits::min();
  return static_cast<T>(nearest);
}

template <class T>
class RoundToInteger : public testing::Test {};
using Integers = testing::Types<omInt8, omUInt8, omInt16, omUInt16, omInt32, omUInt32, omInt64, omUInt64>;
TYPED_TEST_SUITE(RoundToInteger, Integers);

TYPED_TEST(RoundToInteger, IsTheNearestAroundEveryHalfOfEveryMagnitude) {
  const omReal64 infinite = support::s_infinity;
  support::Random draw(20240611);
  for (int exponent = -5; exponent < 70; ++exponent) {
    for (int repetition = 0; repetition < 50; ++repetition) {
      const omReal64 size = std::ldexp(1.0, exponent);
      const omReal64 whole = repetition == 0 ? size : std::floor(size * (1 + draw.uniform(0, 1)));
      for (const omReal64 value : {whole, whole + 0.5, whole - 0.5, whole + 0.25}) {
        for (const omReal64 v : {value, std::nextafter(value, infinite), std::nextafter(value, -infinite)}) {
          ASSERT_EQ(round<TypeParam>(v), oracle<TypeParam>(v)) << std::hexfloat << v;
          ASSERT_EQ(round<TypeParam>(-v), oracle<TypeParam>(-v)) << std::hexfloat << v;
          const auto narrow = static_cast<omReal32>(v);
          ASSERT_EQ(round<TypeParam>(narrow), oracle<TypeParam>(narrow)) << std::hexfloat << narrow;
        }
      }
    }
  }
}

TYPED_TEST(RoundToInteger, SaturatesAndTakesNaNAsZero) {
  using Limits = std::numeric_limits<TypeParam>;
  const omReal64 infinite = support::s_infinity;
  EXPECT_EQ(round<TypeParam>(infinite), Limits::max());
  EXPECT_EQ(round<TypeParam>(-infinite), Limits::min());
  EXPECT_EQ(round<TypeParam>(1e300), Limits::max());
  EXPECT_EQ(round<TypeParam>(-1e38f), Limits::min());
  EXPECT_EQ(round<TypeParam>(support::s_nan), 0);
  EXPECT_EQ(round<TypeParam>(-0.0), 0);
  EXPECT_EQ(round<TypeParam>(std::numeric_limits<omInt64>::min()), Limits::min());
  EXPECT_EQ(round<TypeParam>(std::numeric_limits<omUInt64>::max()), Limits::max());
  EXPECT_EQ((round<TypeParam, omInt32>(100)), TypeParam{100});
}

TEST(Round, LeavesRealsAlone) {
  EXPECT_EQ((round<omReal64, omReal64>(0.1 + 0.2)), 0.1 + 0.2);
  EXPECT_TRUE(std::signbit(round<omReal64, omReal64>(-0.0)));
  EXPECT_TRUE(std::isnan(round<omReal64, omReal64>(support::s_nan)));
  EXPECT_EQ((round<omReal32, omReal64>(0.1)), 0.1f);
  EXPECT_EQ((round<omReal32, omReal64>(1e300)), std::numeric_limits<omReal32>::infinity());
}

}  // namespace
}  // namespace ormix
