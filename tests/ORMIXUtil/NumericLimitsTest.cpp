#include <ORMIXUtil/NumericLimits.h>
#include <gtest/gtest.h>

#include <cmath>

template <class T>
void expectLimitsOfReal() {
  using Limits = ormix::NumericLimits<T>;
  EXPECT_EQ(std::nextafter(T(1), T(2)), T(1) + Limits::s_eps);
  EXPECT_EQ(Limits::s_sqrt_eps, static_cast<T>(std::sqrt(static_cast<double>(Limits::s_eps))));
  EXPECT_EQ(Limits::s_min, -Limits::s_max) << "the lowest value, not the smallest positive one";
}

TEST(NumericLimits, epsilonIsTheStepAfterOne) {
  expectLimitsOfReal<ormix::omReal32>();
  expectLimitsOfReal<ormix::omReal64>();
}

TEST(NumericLimits, integersHaveNoEpsilon) {
  EXPECT_EQ(ormix::NumericLimits<ormix::omInt32>::s_eps, 0);
  EXPECT_EQ(ormix::NumericLimits<ormix::omInt32>::s_sqrt_eps, 0);
  EXPECT_EQ(ormix::NumericLimits<ormix::omUInt32>::s_min, 0u);
  EXPECT_EQ(ormix::NumericLimits<ormix::omInt32>::s_min, -2147483647 - 1);
}
