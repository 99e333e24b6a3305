#include <ORMIXMath/Scalar/Cast.h>

#include "support/Checks.h"

namespace ormix {
namespace {

constexpr omReal64 infinite = support::s_infinity;
constexpr omReal64 nan = support::s_nan;

TEST(CastScalar, TruncatesTowardZero) {
  EXPECT_EQ(castScalar<omInt32>(2.7), 2);
  EXPECT_EQ(castScalar<omInt32>(-2.7), -2);
  EXPECT_EQ(castScalar<omInt32>(-2147483648.9), std::numeric_limits<omInt32>::min());
  EXPECT_EQ(castScalar<omInt32>(2147483647.9), 2147483647);
  EXPECT_EQ(castScalar<omUInt32>(4294967295.9f * 0.5f), 2147483648u);
  EXPECT_EQ(castScalar<omUInt32>(0.999), 0u);
}

TEST(CastScalar, WrapsNegativeValuesIntoUnsigned) {
  EXPECT_EQ(castScalar<omUInt32>(-1.5), 4294967295u);
  EXPECT_EQ(castScalar<omUInt32>(-0.9), 0u);
  EXPECT_EQ(castScalar<omUInt32>(-4294967297.0f * 2), castScalar<omUInt32>(omInt64{-8589934592}));
  EXPECT_EQ(castScalar<omUInt32>(4294967296.0 + 5.25), 5u);
}

TEST(CastScalar, IsDefinedOutOfRange) {
  EXPECT_EQ(castScalar<omInt32>(infinite), std::numeric_limits<omInt32>::max());
  EXPECT_EQ(castScalar<omInt32>(-1e30f), std::numeric_limits<omInt32>::min());
  EXPECT_EQ(castScalar<omInt32>(nan), 0);
  EXPECT_EQ(castScalar<omUInt32>(infinite), 4294967295u);
  EXPECT_EQ(castScalar<omUInt32>(1e19), 4294967295u);
  EXPECT_EQ(castScalar<omUInt32>(-infinite), 0u);
  EXPECT_EQ(castScalar<omUInt32>(nan), 0u);
  EXPECT_EQ(castScalar<omReal32>(-1e300), -std::numeric_limits<omReal32>::infinity());
  EXPECT_EQ(castScalar<omInt32>(omUInt32{4294967295u}), -1);
  EXPECT_EQ(castScalar<omInt64>(9223372036854775808.0), std::numeric_limits<omInt64>::max());
}

}  // namespace
}  // namespace ormix
