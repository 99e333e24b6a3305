#include <ORMIXMath/Scalar/Compare.h>

#include "support/Checks.h"

namespace ormix {
namespace {

constexpr omReal64 infinite = support::s_infinity;
constexpr omReal64 nan = support::s_nan;

TEST(Compare, AgreesAtTheToleranceAndNotBeyond) {
  EXPECT_TRUE(compare(1.0, 1.5, 0.5));
  EXPECT_TRUE(compare(1.5, 1.0, 0.5));
  EXPECT_FALSE(compare(1.0, 1.5, 0.4999999999999999));
  EXPECT_TRUE(compare(7, 7, 0));
  EXPECT_TRUE(compare(2.5f, 2.5f, 0.0f));
  EXPECT_FALSE(compare(1.0, 1.0, -1.0));
  EXPECT_FALSE(compare(3, 3, -1));
}

TEST(Compare, AnswersForEveryPairOfEightBitIntegers) {
  for (int a = -128; a < 128; ++a) {
    for (int b = -128; b < 128; ++b) {
      for (const int tolerance : {-1, 0, 1, 100, 127}) {
        const bool expected = std::abs(a - b) <= tolerance;
        ASSERT_EQ(compare(static_cast<omInt8>(a), static_cast<omInt8>(b), static_cast<omInt8>(tolerance)), expected)
            << a << ' ' << b << ' ' << tolerance;
        if (tolerance < 0) continue;
        ASSERT_EQ(
            compare(static_cast<omUInt8>(a + 128), static_cast<omUInt8>(b + 128), static_cast<omUInt8>(tolerance)),
            expected);
      }
    }
  }
}

TEST(Compare, DoesNotWrapAtTheEndsOfTheIntegers) {
  EXPECT_FALSE(compare(omUInt32{0}, omUInt32{4294967295u}, omUInt32{1}));
  EXPECT_TRUE(compare(omUInt32{2}, omUInt32{5}, omUInt32{3}));
  EXPECT_FALSE(compare(std::numeric_limits<omInt32>::min(), std::numeric_limits<omInt32>::max(), 2147483647));
  EXPECT_FALSE(compare(std::numeric_limits<omInt64>::min(), std::numeric_limits<omInt64>::max(), omInt64{1}));
}

TEST(Compare, TreatsInfinityAsAValueAndNaNAsNone) {
  EXPECT_TRUE(compare(infinite, infinite, 0.0));
  EXPECT_FALSE(compare(infinite, -infinite, 1e308));
  EXPECT_TRUE(compare(infinite, -infinite, infinite));
  EXPECT_FALSE(compare(nan, nan, infinite));
  EXPECT_FALSE(compare(1.0, nan, 1.0));
  EXPECT_FALSE(compare(1.0, 1.0, nan));
}

}  // namespace
}  // namespace ormix
