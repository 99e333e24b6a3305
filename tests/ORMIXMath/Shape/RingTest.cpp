#include <ORMIXMath/Shape/Ring.h>
#include <ORMIXMath/Shape/RingLengthBlocks.h>
#if defined(__x86_64__)
#include <ORMIXMath/Shape/RingLengthAvx2.h>
#include <ORMIXMath/Shape/RingLengthAvx512.h>
#endif

#include <type_traits>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix {
namespace {

#if defined(__SIZEOF_FLOAT128__)
__extension__ using Wide = __float128;
#else
using Wide = long double;
#endif

using support::bitsOf;

/// The whole range for integers; for reals magnitudes spread over many decades, so that sums round at every addition.
template <class T>
std::vector<T> randomCoordinates(std::size_t nbPoints, unsigned seed) {
  support::Random random(seed);
  std::vector<T> xy(2 * nbPoints);
  for (T& c : xy) {
    if constexpr (std::is_integral_v<T>) {
      c = random.bits<T>();
    } else {
      const omReal64 decades = std::is_same_v<T, omReal32> ? 18 : 70;
      c = static_cast<T>(random.uniform() * std::pow(10.0, random.uniform(-decades, decades)));
    }
  }
  return xy;
}

template <class T>
omReal64 x(const T* xy, std::size_t i) {
  return static_cast<omReal64>(xy[2 * i]);
}
template <class T>
omReal64 y(const T* xy, std::size_t i) {
  return static_cast<omReal64>(xy[2 * i + 1]);
}
template <class Sum, class T>
omReal64 lengthSummedAs(const T* xy, std::size_t n) {
  Sum sum = 0;
  for (std::size_t i = 1; i < n; ++i) {
    const omReal64 dx = x(xy, i) - x(xy, i - 1), dy = y(xy, i) - y(xy, i - 1);
    sum += std::sqrt(dx * dx + dy * dy);
  }
  return static_cast<omReal64>(sum);
}

template <class T>
class RingTest : public testing::Test {};
TYPED_TEST_SUITE(RingTest, support::Scalars);

/// Every number of vertices around the width of the vectors, from starts at every alignment of a vertex.
template <class T, class Check>
void forSizesAndStarts(Check check) {
  constexpr std::size_t largest = 70;
  for (unsigned seed = 1; seed <= 3; ++seed) {
    const std::vector<T> xy = randomCoordinates<T>(largest + 4, seed);
    for (std::size_t start = 0; start < 4; ++start) {
      for (std::size_t n = 0; n <= largest; ++n) check(xy.data() + 2 * start, n);
    }
  }
}

TYPED_TEST(RingTest, areaAddsFromTheLastVertexBackwardsAndReversedForwards) {
  forSizesAndStarts<TypeParam>([](const TypeParam* xy, std::size_t n) {
    omReal64 backwards = 0, forwards = 0;
    for (std::size_t k = n; k-- > 1 && n > 3;) backwards += (x(xy, k) + x(xy, k - 1)) * (y(xy, k) - y(xy, k - 1));
    for (std::size_t i = 0; i + 1 < n && n > 3; ++i) forwards += (x(xy, i) + x(xy, i + 1)) * (y(xy, i) - y(xy, i + 1));
    ASSERT_EQ(bitsOf(ringSignedArea(xy, n)), bitsOf(0.5 * backwards)) << n;
    ASSERT_EQ(bitsOf(ringSignedAreaReversed(xy, n)), bitsOf(0.5 * forwards)) << n;
  });
}

TYPED_TEST(RingTest, lengthIsTheExactSumToOneUnitInTheLastPlace) {
  forSizesAndStarts<TypeParam>([](const TypeParam* xy, std::size_t n) {
    const omReal64 expected = lengthSummedAs<Wide>(xy, n);
    ASSERT_LE(std::abs(pathLength(xy, n) - expected), expected * std::numeric_limits<omReal64>::epsilon()) << n;
    ASSERT_EQ(bitsOf(pathLength(xy, n)), bitsOf(detail::pathLengthPortable(xy, n))) << n;
  });
}

template <class Blocks, class T>
void expectLanesOf(const detail::RingLanes& expected, const std::vector<T>& xy, std::size_t nbBlocks) {
  detail::RingLanes lanes;
  Blocks::add(xy.data(), nbBlocks, lanes);
  for (std::size_t l = 0; l < detail::nbLanes; ++l) {
    ASSERT_EQ(bitsOf(lanes.sum[l]), bitsOf(expected.sum[l])) << "lane " << l << " of " << nbBlocks << " blocks";
    ASSERT_EQ(bitsOf(lanes.error[l]), bitsOf(expected.error[l])) << "lane " << l << " of " << nbBlocks << " blocks";
  }
}

/// The versions that this processor does not choose, too, as far as it can execute them.
template <class T>
void expectSameLanesAtEveryWidth(const std::vector<T>& xy) {
  const std::size_t nbBlocks = (xy.size() / 2 - 1) / detail::nbLanes;
  detail::RingLanes expected;
  detail::PortableBlocks::add(xy.data(), nbBlocks, expected);
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx2")) expectLanesOf<detail::Avx2Blocks>(expected, xy, nbBlocks);
  if (__builtin_cpu_supports("avx512f")) expectLanesOf<detail::Avx512Blocks>(expected, xy, nbBlocks);
#endif
}

TYPED_TEST(RingTest, lanesHaveTheSameBitsAtEveryWidth) {
  for (std::size_t nbBlocks = 0; nbBlocks < 17; ++nbBlocks)
    expectSameLanesAtEveryWidth(randomCoordinates<TypeParam>(nbBlocks * detail::nbLanes + 1, 19));
  expectSameLanesAtEveryWidth(randomCoordinates<TypeParam>(200'001, 23));
}

/// From squares that vanish to squares that overflow, and between them edges of no length: wherever roots by
/// multiplication could go wrong.
TEST(RingLength, rootsOfEveryMagnitudeHaveTheSameBits) {
  support::Random random(29);
  for (int exponent = -1074; exponent < 1022; ++exponent) {
    SCOPED_TRACE(testing::Message() << "2^" << exponent);
    std::vector<omReal64> xy(2 * 81);
    for (omReal64& c : xy) c = std::ldexp(random.uniform(), exponent);
    xy[40] = xy[38];
    xy[41] = xy[39];
    expectSameLanesAtEveryWidth(xy);
  }
}

TEST(RingLength, integerExtremesNeitherWrapNorOverflow) {
  constexpr omInt32 low = std::numeric_limits<omInt32>::min();
  constexpr omInt32 high = std::numeric_limits<omInt32>::max();
  const omInt32 square[] = {low, low, high, low, high, high, low, high, low, low};
  EXPECT_EQ(pathLength(square, 5), 4 * 4294967295.0);
  EXPECT_EQ(ringSignedArea(square, 5), 4294967295.0 * 4294967295.0);
  constexpr omUInt32 top = std::numeric_limits<omUInt32>::max();
  const omUInt32 unsignedSquare[] = {0, 0, top, 0, top, top, 0, top, 0, 0};
  EXPECT_EQ(pathLength(unsignedSquare, 5), 4 * 4294967295.0);
}

/// One odd coordinate at any place: in a block, in the rest, at either end.
TEST(RingLength, infinityAndNanComeOutAsFromAPlainSum) {
  for (const omReal64 odd : {support::s_infinity, -support::s_infinity, support::s_nan, 1e200, 1e154}) {
    for (std::size_t at = 0; at < 2 * 29; ++at) {
      std::vector<omReal64> xy = randomCoordinates<omReal64>(29, 11);
      xy[at] = odd;
      const omReal64 plain = lengthSummedAs<omReal64>(xy.data(), 29);
      for (const omReal64 length : {pathLength(xy.data(), 29), detail::pathLengthPortable(xy.data(), 29)}) {
        ASSERT_EQ(std::fpclassify(length), std::fpclassify(plain)) << odd << " at " << at;
      }
    }
  }
}

}  // namespace
}  // namespace ormix
