#include <ORMIXUtil/NumericLimits.h>
#include <gtest/gtest.h>

#include <cmath>

template <class T>
class NumericLimitsTest : public ::testing::Test {};
using Reals = ::testing::Types<ormix::omReal32, ormix::omReal64>;
TYPED_TEST_SUITE(NumericLimitsTest, Reals);

TYPED_TEST(NumericLimitsTest, epsilonIsTheStepAfterOne) {
  using Limits = ormix::NumericLimits<TypeParam>;
  EXPECT_EQ(std::nextafter(TypeParam(1), TypeParam(2)), TypeParam(1) + Limits::s_eps);
  EXPECT_FLOAT_EQ(static_cast<float>(Limits::s_sqrt_eps), static_cast<float>(std::sqrt(Limits::s_eps)));
  EXPECT_EQ(Limits::s_min, -Limits::s_max) << "the lowest value, not the smallest positive one";
}

TEST(NumericLimits, squareRootIsCorrectlyRounded) {
  EXPECT_EQ(ormix::NumericLimits<double>::s_sqrt_eps, std::sqrt(ormix::NumericLimits<double>::s_eps));
}

TEST(NumericLimits, integersHaveNoEpsilon) {
  EXPECT_EQ(ormix::NumericLimits<ormix::omInt32>::s_eps, 0);
  EXPECT_EQ(ormix::NumericLimits<ormix::omInt32>::s_sqrt_eps, 0);
  EXPECT_EQ(ormix::NumericLimits<ormix::omUInt32>::s_min, 0u);
  EXPECT_EQ(ormix::NumericLimits<ormix::omInt32>::s_min, -2147483647 - 1);
}
