#include <ORMIXGeometry/ORMIXGeometry.h>

#include "support/Checks.h"
#include "support/Random.h"

// Points of the plane and of space, which differ in the last coordinate only.

namespace ormix::geom {
namespace {

using support::s_infinity;
using support::s_nan;

constexpr omInt32 s_lowest = std::numeric_limits<omInt32>::min();
constexpr omInt32 s_highest = std::numeric_limits<omInt32>::max();

template <class P>
using ScalarOf = std::decay_t<decltype(std::declval<const P&>().getX())>;
template <class P>
constexpr bool s_isSpatial = std::is_constructible_v<P, ScalarOf<P>, ScalarOf<P>, ScalarOf<P>>;

template <class P>
P at(ScalarOf<P> x, ScalarOf<P> y, ScalarOf<P> z = 0) {
  if constexpr (s_isSpatial<P>)
    return P(x, y, z);
  else
    return P(x, y);
}
/// The vector of all angles 0, which is along x in the plane and along z in space, and the point at its end.
template <class P>
auto along(omReal64 length) {
  if constexpr (s_isSpatial<P>)
    return Vector3d(length, 0, 0);
  else
    return Vector2d(length, 0);
}
template <class P>
P end(ScalarOf<P> length) {
  return s_isSpatial<P> ? at<P>(0, 0, length) : at<P>(length, 0);
}

template <class T>
class PointTest : public testing::Test {};
TYPED_TEST_SUITE(PointTest, support::Scalars);

template <class P>
void expectArithmetic() {
  using Points = std::vector<P>;
  const ScalarOf<P> two = 2;
  const auto vector = along<P>(3);
  const P a = at<P>(8, 6, 10), b = at<P>(2, 3, 5), twos = at<P>(2, 2, 2), ahead = end<P>(3);
  EXPECT_EQ((Points{a + b, a - b, a * b, a / b}),
            (Points{at<P>(10, 9, 15), at<P>(6, 3, 5), at<P>(16, 18, 50), at<P>(4, 2, 2)}));
  EXPECT_EQ((Points{a + two, a - two, a * two, two * a, a / two}),
            (Points{a + twos, a - twos, a * twos, a * twos, a / twos}));
  EXPECT_EQ((Points{a + vector, a - vector, a * vector}), (Points{a + ahead, a - ahead, a * ahead}));
  P p = a;
  EXPECT_EQ((Points{p += b, p -= b, p *= b, p /= b}), (Points{a + b, a, a * b, a}));
  EXPECT_EQ((Points{p += vector, p -= vector, p *= vector, p -= p}), (Points{a + ahead, a, a * ahead, P()}));
}

TYPED_TEST(PointTest, ArithmeticWorksComponentByComponent) {
  expectArithmetic<Point2d<TypeParam>>();
  expectArithmetic<Point3d<TypeParam>>();
  expectArithmetic<Point3dData<TypeParam>>();
}

template <template <class> class Point, template <class> class Data, class T>
void expectInterchangeable() {
  static_assert(std::is_trivially_copyable_v<Data<T>> && sizeof(Data<T>) == (s_isSpatial<Data<T>> ? 3 : 2) * sizeof(T));
  const auto point = at<Point<T>>(3, 4);
  const Data<T>& data = point;
  EXPECT_TRUE(point == data && data == point && !(point != data) && !(data != point));
  EXPECT_EQ(distance(point, Point<T>()), 5.0);
  EXPECT_EQ(point.normL2(), 5.0);
  EXPECT_TRUE(compare(point, Point<T>(data), T(0)));
  EXPECT_EQ((cast<omReal64, T>(point)), at<Point<omReal64>>(3, 4));
  // In both orders, also where the difference of unsigned coordinates wraps.
  const auto a = at<Data<T>>(5, 0, 7), b = at<Data<T>>(2, 4, 7);
  EXPECT_EQ(distance(a, b), 5.0);
  EXPECT_EQ(distance(b, a), 5.0);
  EXPECT_TRUE(compare(a, b, T(5)) && !compare(a, b, T(4)) && compare(a, a, T(0)));
}

TYPED_TEST(PointTest, IsInterchangeableWithItsCoordinates) {
  expectInterchangeable<Point2d, Point2dData, TypeParam>();
  expectInterchangeable<Point3d, Point3dData, TypeParam>();
}

TYPED_TEST(PointTest, OrderInSpaceIsByZThenYThenX) {
  using P = Point3d<TypeParam>;
  const P ordered[] = {P(9, 9, 0), P(3, 1, 1), P(4, 1, 1), P(0, 2, 1), P(0, 0, 2)};
  for (const P& a : ordered)
    for (const P& b : ordered) {
      EXPECT_EQ(a < b, &a < &b) << a << b;
      EXPECT_EQ(a > b, &a > &b) << a << b;
      EXPECT_EQ(a <= b, &a <= &b) << a << b;
      EXPECT_EQ(a >= b.getCoords(), &a >= &b) << a << b;
    }
}

TEST(Point, OrderOfNanIsFalse) {
  using P = Point3d<omReal64>;
  for (const P& point : {P(0, 0, s_nan), P(0, s_nan, 0), P(s_nan, 0, 0)})
    EXPECT_FALSE(point < P() || point > P() || point <= P() || point >= P() || point == P()) << point;
  EXPECT_TRUE(P(s_nan, s_nan, 0) < P(0, 0, 1));
}

/// Norms of integers are the roots of what remains modulo 2^32 of the sum of squares, read as the type reads 32 bits.
template <class P>
void expectNormsModulo2To32() {
  using T = ScalarOf<P>;
  support::Random random(90210);
  int nbNan = 0;
  for (int i = 0; i < 20000; ++i) {
    // Magnitudes from bits to the whole range.
    T c[6];
    for (T& coordinate : c) coordinate = static_cast<T>(random() >> random.below(32));
    const P a = at<P>(c[0], c[1], c[2]), b = at<P>(c[3], c[4], c[5]);
    omUInt64 square = 0;
    for (int k = 0; k < (s_isSpatial<P> ? 3 : 2); ++k) {
      const auto difference = static_cast<omUInt64>(omInt64(c[k + 3]) - omInt64(c[k]));
      square += difference * difference;
    }
    auto low = static_cast<omInt64>(square % 0x100000000u);
    if (std::is_signed_v<T> && low >= 0x80000000) low -= 0x100000000;
    const omReal64 expected = std::sqrt(static_cast<omReal64>(low)), computed = distance(a, b);
    nbNan += std::isnan(computed);
    ASSERT_TRUE(computed == expected || (std::isnan(computed) && std::isnan(expected))) << a << ' ' << b;
    ASSERT_EQ(compare(a, b, T(1000)), expected <= 1000.0) << a << ' ' << b;
  }
  EXPECT_EQ(nbNan > 0, std::is_signed_v<T>);
}

TEST(Point, NormsOfIntegersAreThoseModulo2To32) {
  expectNormsModulo2To32<Point2dData<omInt32>>();
  expectNormsModulo2To32<Point2dData<omUInt32>>();
  expectNormsModulo2To32<Point3dData<omInt32>>();
  expectNormsModulo2To32<Point3dData<omUInt32>>();
}

TEST(Point, RealNormsAndProductsNeitherOverflowNorUnderflow) {
  using P = Point2dData<omReal64>;
  EXPECT_DOUBLE_EQ(normL2(P(3e200, -4e200)), 5e200);
  EXPECT_DOUBLE_EQ(normL2(P(3e-200, 4e-200)), 5e-200);
  EXPECT_DOUBLE_EQ(normL2(Point2dData<omReal32>(3e38f, 4e37f)), std::hypot(omReal64(3e38f), omReal64(4e37f)));
  EXPECT_EQ(distance(Point2dData<omReal32>(3e38f, 0), Point2dData<omReal32>(-3e38f, 0)), s_infinity) << "as b - a";
  EXPECT_EQ(normL2(P(-s_infinity, 0)), s_infinity);
  EXPECT_TRUE(std::isnan(normL2(P(s_nan, 1))));
  EXPECT_FALSE(compare(P(s_nan, 1), P(s_nan, 1), 1e300));
  const Point2dData<omInt32> corner(s_lowest, s_highest);
  EXPECT_EQ(scalarProduct(corner, corner), 4611686018427387904.0 + 2147483647.0 * 2147483647.0);
}

// The difference is rounded to the coordinate type, also where it then is an ulp off.
TEST(Point, DistancesAreTheNormsOfDifferences) {
  support::Random random(77);
  const auto next = [&] { return static_cast<omReal32>(random.uniform(-100, 100)); };
  for (int i = 0; i < 1000; ++i) {
    const Point3d<omReal32> a(next(), next(), next()), b(next(), next(), next());
    const Point2d<omReal32> c(a.getX(), a.getY()), d(b.getX(), b.getY());
    ASSERT_EQ(distance(a, b), (b - a).normL2()) << i;
    ASSERT_EQ(distance(c, d), (d - c).normL2()) << i;
  }
}

template <class P, class U>
void expectIntegersToWrap() {
  EXPECT_EQ(at<P>(s_highest, s_lowest, 0) + 1, at<P>(s_lowest, s_lowest + 1, 1));
  EXPECT_EQ(at<P>(65536, s_lowest, 7) * at<P>(65536, -1, -1), at<P>(0, s_lowest, -7));
  EXPECT_EQ(at<U>(0, 65537, 2) - 1u, at<U>(4294967295u, 65536, 1));
  // Quotients are defined for every divisor.
  EXPECT_EQ(at<P>(7, -7, s_lowest) / at<P>(2, 2, -1), at<P>(3, -3, s_lowest));
  EXPECT_EQ(at<P>(5, s_lowest, -5) / at<P>(0, -1, 0), at<P>(s_highest, s_lowest, s_lowest));
  EXPECT_EQ(at<P>(5, -5, 0) / 0, at<P>(s_highest, s_lowest, 0));
  EXPECT_EQ(at<U>(5, 0, 0) / 0u, at<U>(4294967295u, 0, 0));
  // Components of vectors are rounded first; quotients by 0 are those of reals, brought back.
  EXPECT_EQ(end<P>(1) + along<P>(1.6), end<P>(3));
  EXPECT_EQ(end<P>(1) - along<P>(1.6), end<P>(-1));
  EXPECT_EQ(end<P>(10) * along<P>(2.4), end<P>(20));
  EXPECT_EQ(end<P>(9) / along<P>(2.4), end<P>(5));
  EXPECT_EQ(end<P>(1) / along<P>(0.4), end<P>(s_highest));
  EXPECT_EQ(end<P>(s_highest) + along<P>(1e20), end<P>(s_highest));
  EXPECT_EQ(end<U>(1) - along<U>(5), end<U>(0));
  EXPECT_EQ(end<P>(s_lowest) + along<P>(4e9), end<P>(1852516352));
}

TEST(Point, IntegersWrapAndVectorsAreRounded) {
  expectIntegersToWrap<Point2d<omInt32>, Point2d<omUInt32>>();
  expectIntegersToWrap<Point3d<omInt32>, Point3d<omUInt32>>();
  // Unsigned points move towards smaller coordinates, too.
  const Vector2d left(2, s_pi);
  EXPECT_EQ(Point2d<omUInt32>(5, 5) + left, Point2d<omUInt32>(3, 5));
  EXPECT_EQ(Point2d<omUInt32>(5, 5) * left, Point2d<omUInt32>(0, 0));
  EXPECT_EQ(Segment2d<omUInt32>(Point2d<omUInt32>(5, 5), left).getPoint1(), Point2d<omUInt32>(3, 5));
  const Vector3d back(2, s_pi / 2, -s_pi);
  EXPECT_EQ(Point3d<omUInt32>(5, 5, 5) + back, Point3d<omUInt32>(3, 5, 5));
  EXPECT_EQ(Point3d<omUInt32>(5, 5, 5) - back, Point3d<omUInt32>(7, 5, 5));
  EXPECT_EQ(Segment3d<omUInt32>(Point3d<omUInt32>(5, 5, 5), back).getPoint1(), Point3d<omUInt32>(3, 5, 5));
  EXPECT_EQ(crossProduct(Point3d<omInt32>(0, 65536, 0), Point3d<omInt32>(0, 0, 65536)), Point3d<omInt32>(0, 0, 0));
  // As a float, 1 + 2^-30 is 1.
  EXPECT_EQ((Point2d<omReal32>(-1, 0) + Vector2d(1 + std::ldexp(1.0, -30), 0)).getX(), 0.0f);
}

TEST(Point, CastsTruncateAndSaturateOrWrapAndRoundGoesToTheNearest) {
  using Real = Point2dData<omReal64>;
  EXPECT_EQ(cast<omInt32>(Real(2.7, -2.7)), Point2dData<omInt32>(2, -2));
  EXPECT_EQ(cast<omUInt32>(Real(4294967298.5, -2.7)), Point2dData<omUInt32>(2, 4294967294u));
  EXPECT_EQ(cast<omInt32>(Real(s_nan, -1e10)), Point2dData<omInt32>(0, s_lowest));
  EXPECT_EQ(cast<omUInt32>(Point2dData<omInt32>(-1, 7)), Point2dData<omUInt32>(4294967295u, 7));
  const Point3d<omReal64> point(2.7, -2.7, -1.5);
  EXPECT_EQ((cast<omUInt32, omReal64>(point)), Point3d<omUInt32>(2, 4294967294u, 4294967295u));
  EXPECT_EQ((round<omInt32, omReal64>(point)), Point3d<omInt32>(3, -3, -2));
  EXPECT_EQ((round<omUInt32, omReal64>(point.getCoords())), Point3dData<omUInt32>(3, 0, 0));
}

TEST(Point, CrossProductIsPerpendicularAndTurnsTheSignWithTheOrder) {
  support::Random draw(271);
  const auto point = [&draw] {
    const auto coordinate = [&draw] { return static_cast<omInt32>(draw.below(201)) - 100; };
    return Point3dData<omInt32>(coordinate(), coordinate(), coordinate());
  };
  const auto product = [](const auto& a, const auto& b) {
    return a.getX() * b.getX() + a.getY() * b.getY() + a.getZ() * b.getZ();
  };
  EXPECT_EQ(crossProduct(Point3d<omReal32>(1, 0, 0), Point3d<omReal32>(0, 1, 0)), Point3d<omReal32>(0, 0, 1));
  for (int i = 0; i < 1000; ++i) {
    const auto a = point(), b = point(), cross = crossProduct(a, b);
    ASSERT_TRUE(product(cross, a) == 0 && product(cross, b) == 0) << a << b;
    ASSERT_EQ(product(cross, cross), product(a, a) * product(b, b) - product(a, b) * product(a, b)) << a << b;
    ASSERT_EQ(crossProduct(b, a), -1 * cross) << a << b;
  }
}

template <template <class> class Cloud, class P, class I>
void expectCloud() {
  const std::vector<P> points{at<P>(3.75, -4), at<P>(1, 2), at<P>(3.75, -4)};
  Cloud<omReal64> cloud(points);
  EXPECT_EQ(coordinates(cloud.getCollection())[1], -4) << "a run of points is a run of numbers";
  cloud.push_back(at<P>(1e20, 0));
  EXPECT_EQ((cast<omInt32, omReal64>(cloud).getCollection()),
            (std::vector<I>{at<I>(3, -4), at<I>(1, 2), at<I>(3, -4), at<I>(2147483647, 0)}));
  cast(cloud, cloud);
  EXPECT_EQ(cloud.size(), 4u);
  cloud.setCollection(points);
  EXPECT_EQ(cloud.getCollection(), points) << "in order of insertion, with duplicates";
  cloud.clear();
  EXPECT_EQ(cloud.size(), 0u);
}

TEST(PointCloud, HoldsAndCastsItsPoints) {
  expectCloud<PointCloud2d, Point2dData<omReal64>, Point2dData<omInt32>>();
  expectCloud<PointCloud3d, Point3dData<omReal64>, Point3dData<omInt32>>();
}

}  // namespace
}  // namespace ormix::geom
