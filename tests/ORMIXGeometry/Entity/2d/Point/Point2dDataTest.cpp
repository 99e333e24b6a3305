#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>

namespace ormix::geom {
namespace {

constexpr omReal64 s_infinity = std::numeric_limits<omReal64>::infinity();
constexpr omReal64 s_nan = std::numeric_limits<omReal64>::quiet_NaN();

template <class T>
class Point2dDataTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(Point2dDataTest, Scalars);

TYPED_TEST(Point2dDataTest, ARunOfPointsIsARunOfNumbers) {
  using T = TypeParam;
  static_assert(std::is_trivially_copyable_v<Point2dData<T>> && sizeof(Point2dData<T>) == 2 * sizeof(T));
  const std::vector<Point2dData<T>> points{{T(1), T(2)}, {T(3), T(4)}};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(coordinates(points)[i], T(i + 1));
}

TYPED_TEST(Point2dDataTest, NormsAndComparisonsOfASmallTriangle) {
  using T = TypeParam;
  const Point2dData<T> a(T(5), T(0));
  const Point2dData<T> b(T(2), T(4));
  EXPECT_EQ(normL2(Point2dData<T>(T(3), T(4))), 5.0);
  // In both orders, also where the difference of unsigned coordinates wraps.
  EXPECT_EQ(distance(a, b), 5.0);
  EXPECT_EQ(distance(b, a), 5.0);
  EXPECT_TRUE(compare(a, b, T(5)));
  EXPECT_FALSE(compare(a, b, T(4)));
  EXPECT_TRUE(compare(a, a, T(0)));
  EXPECT_EQ(scalarProduct(a, b), 10.0);
}

template <class T>
class Point2dDataWrapTest : public testing::Test {};
using Integers = testing::Types<omInt32, omUInt32>;
TYPED_TEST_SUITE(Point2dDataWrapTest, Integers);

/// The root of what remains modulo 2^32 of the sum of squares, read as the type reads 32 bits.
template <class T>
omReal64 wrappedNorm(omInt64 dx, omInt64 dy) {
  const omUInt64 square =
      static_cast<omUInt64>(dx) * static_cast<omUInt64>(dx) + static_cast<omUInt64>(dy) * static_cast<omUInt64>(dy);
  auto low = static_cast<omInt64>(square % 0x100000000u);
  if (std::is_signed_v<T> && low >= 0x80000000) low -= 0x100000000;
  return std::sqrt(static_cast<omReal64>(low));
}

TYPED_TEST(Point2dDataWrapTest, NormsAreThoseModuloTwoToThe32) {
  using T = TypeParam;
  const unsigned seed = 90210;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 draw(seed);
  int nbNan = 0;
  for (int i = 0; i < 20000; ++i) {
    // Magnitudes from bits to the whole range.
    const auto coordinate = [&] { return static_cast<T>(static_cast<omUInt32>(draw()) >> (draw() % 32)); };
    const Point2dData<T> a(coordinate(), coordinate());
    const Point2dData<T> b(coordinate(), coordinate());
    const omReal64 expected =
        wrappedNorm<T>(omInt64(b.getX()) - omInt64(a.getX()), omInt64(b.getY()) - omInt64(a.getY()));
    const omReal64 computed = distance(a, b);
    nbNan += std::isnan(computed);
    ASSERT_TRUE(computed == expected || (std::isnan(computed) && std::isnan(expected))) << a << ' ' << b;
    ASSERT_EQ(compare(a, b, T(1000)), expected <= 1000.0) << a << ' ' << b;
  }
  EXPECT_EQ(nbNan > 0, std::is_signed_v<T>);
}

TEST(Point2dData, RealNormsNeitherOverflowNorUnderflow) {
  EXPECT_DOUBLE_EQ(normL2(Point2dData<omReal64>(3e200, -4e200)), 5e200);
  EXPECT_DOUBLE_EQ(normL2(Point2dData<omReal64>(3e-200, 4e-200)), 5e-200);
  EXPECT_DOUBLE_EQ(normL2(Point2dData<omReal32>(3e38f, 4e37f)), std::hypot(omReal64(3e38f), omReal64(4e37f)));
  EXPECT_EQ(distance(Point2dData<omReal32>(3e38f, 0), Point2dData<omReal32>(-3e38f, 0)), s_infinity) << "as b - a";
  EXPECT_EQ(normL2(Point2dData<omReal64>(0, 0)), 0.0);
  EXPECT_EQ(normL2(Point2dData<omReal64>(-s_infinity, 0)), s_infinity);
  EXPECT_TRUE(std::isnan(normL2(Point2dData<omReal64>(s_nan, 1))));
  EXPECT_FALSE(compare(Point2dData<omReal64>(s_nan, 1), Point2dData<omReal64>(s_nan, 1), 1e300));
}

// The difference is rounded to the coordinate type, also where it then is an ulp off.
TEST(Point2dData, DistancesAreTheNormsOfDifferences) {
  const unsigned seed = 77;
  std::mt19937 random(seed);
  std::uniform_real_distribution<omReal32> uniform(-100, 100);
  const auto next = [&] { return uniform(random); };
  for (int i = 0; i < 1000; ++i) {
    const Point2d<omReal32> a(next(), next()), b(next(), next());
    const Point3d<omReal32> c(next(), next(), next()), d(next(), next(), next());
    ASSERT_EQ(distance(a, b), (b - a).normL2()) << "seed " << seed << ", case " << i;
    ASSERT_EQ(distance(c, d), (d - c).normL2()) << "seed " << seed << ", case " << i;
  }
}

TEST(Point2dData, ScalarProductsOfIntegersDoNotWrap) {
  const Point2dData<omInt32> corner(-2147483647 - 1, 2147483647);
  EXPECT_EQ(scalarProduct(corner, corner), 4611686018427387904.0 + 2147483647.0 * 2147483647.0);
}

TEST(Point2dData, CastsTruncateAndSaturateOrWrap) {
  using Real = Point2dData<omReal64>;
  EXPECT_EQ(cast<omInt32>(Real(2.7, -2.7)), Point2dData<omInt32>(2, -2));
  EXPECT_EQ(cast<omUInt32>(Real(2.7, -2.7)), Point2dData<omUInt32>(2, 4294967294u));
  EXPECT_EQ(cast<omUInt32>(Real(4294967298.5, -0.9)), Point2dData<omUInt32>(2, 0));
  EXPECT_EQ(cast<omInt32>(Real(1e10, -1e10)), Point2dData<omInt32>(2147483647, -2147483647 - 1));
  EXPECT_EQ(cast<omInt32>(Real(s_nan, s_infinity)), Point2dData<omInt32>(0, 2147483647));
  EXPECT_EQ(cast<omUInt32>(Real(s_nan, -s_infinity)), Point2dData<omUInt32>(0, 0));
  EXPECT_EQ(cast<omReal32>(Real(0.1, 1e300)), Point2dData<omReal32>(0.1f, std::numeric_limits<omReal32>::infinity()));
  EXPECT_EQ(cast<omUInt32>(Point2dData<omInt32>(-1, 7)), Point2dData<omUInt32>(4294967295u, 7));
  EXPECT_EQ(cast<omReal64>(Point2dData<omUInt32>(4294967295u, 7)), Real(4294967295.0, 7));
}

TEST(Point2dData, PrintsInTheStreamsFormatting) {
  std::ostringstream text;
  text << Point2dData<omReal64>(1.5, 2) << Point2dData<omInt32>(-1, 0);
  text.precision(3);
  text << Point2dData<omReal64>(3.14159, 2);
  EXPECT_EQ(text.str(), "[1.5, 2][-1, 0][3.14, 2]");
}

}  // namespace
}  // namespace ormix::geom
