#include <ORMIXMath/Distance/PointSegmentDistance.h>
#include <ORMIXMath/Location/NearestOnRing.h>
#include <ORMIXMath/Location/PreparedRings.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/Random.h"

namespace ormix {
namespace {

constexpr int s_outside = 0;
constexpr int s_inside = 1;
constexpr int s_boundary = 2;

int codeOf(const RingCrossings& crossings) {
  if (crossings.isOnBoundary) return s_boundary;
  return crossings.isOdd ? s_inside : s_outside;
}

__extension__ using Wide = __int128;

/// By integers of 128 bits, for multiples of a unit.
template <class T>
int exactCode(const std::vector<T>& xy, T px, T py, omReal64 unit) {
  const auto whole = [unit](T value) { return static_cast<Wide>(static_cast<omReal64>(value) / unit); };
  bool isOdd = false;
  for (std::size_t i = 0; i < xy.size(); i += 2) {
    const std::size_t j = i + 2 < xy.size() ? i + 2 : 0;
    const Wide ax = whole(xy[i]) - whole(px);
    const Wide ay = whole(xy[i + 1]) - whole(py);
    const Wide bx = whole(xy[j]) - whole(px);
    const Wide by = whole(xy[j + 1]) - whole(py);
    const Wide cross = ax * by - ay * bx;
    if (cross == 0 && ax * bx <= 0 && ay * by <= 0) return s_boundary;
    if ((ay <= 0) != (by <= 0) && (cross > 0) == (by > 0)) isOdd = !isOdd;
  }
  return isOdd ? s_inside : s_outside;
}

template <class T>
class RingLocation : public ::testing::Test {};
using Scalars = ::testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(RingLocation, Scalars);

// Rings of all shapes that cross, fold back and touch themselves, on small lattices and at the ends of the range;
// points on the same lattice, many of which are vertices or on edges.
TYPED_TEST(RingLocation, IsExactOnHostileRings) {
  using T = TypeParam;
  support::Random random(1401);
  int nbOf[3] = {};
  for (int count = 0; count < 3000; ++count) {
    const bool isReal = !std::is_integral_v<T>;
    const omReal64 unit = isReal ? std::ldexp(1.0, int(random.below(60)) - 30) : 1;
    const omUInt32 range = count % 3 == 0   ? 4
                           : count % 3 == 1 ? 40
                           : isReal         ? 1 << 23
                                            : std::numeric_limits<omUInt32>::max();
    const auto coordinate = [&] {
      const omUInt32 number =
          count % 3 == 2 && random.below(3) == 0 ? (random.below(2) == 0 ? 0 : range) : random.below(range);
      if constexpr (std::is_integral_v<T>) return static_cast<T>(number);
      return static_cast<T>(unit * (omReal64(number) - omReal64(range / 2)));
    };
    std::vector<T> xy(2 * (1 + random.below(count % 7 == 0 ? 300 : 12)));
    for (T& value : xy) value = coordinate();
    if (random.below(4) == 0) xy.insert(xy.end(), {xy[0], xy[1]});
    PreparedRings prepared;
    prepared.add(xy.data(), xy.size() / 2);
    ASSERT_TRUE(prepared.build());
    for (int query = 0; query < 12; ++query) {
      const std::size_t vertex = 2 * random.below(omUInt32(xy.size() / 2));
      const T x = random.below(4) == 0 ? xy[vertex] : coordinate();
      const T y = random.below(4) == 0 ? xy[vertex + 1] : coordinate();
      const int expected = exactCode(xy, x, y, unit);
      ++nbOf[expected];
      ASSERT_EQ(codeOf(ringCrossings(xy.data(), xy.size() / 2, omReal64(x), omReal64(y))), expected) << count;
      ASSERT_EQ(codeOf(prepared.crossings(omReal64(x), omReal64(y))), expected) << count;
    }
  }
  for (const int nb : nbOf) EXPECT_GT(nb, 1000);
}

TYPED_TEST(RingLocation, AnswersForPointsBeyondAllCoordinates) {
  using T = TypeParam;
  const std::vector<T> xy{0, 0, 4, 0, 4, 4, 0, 4};
  PreparedRings prepared;
  prepared.add(xy.data(), 4);
  ASSERT_TRUE(prepared.build());
  const omReal64 nan = std::numeric_limits<omReal64>::quiet_NaN();
  const omReal64 largest = std::numeric_limits<omReal64>::max();
  for (const auto& [x, y] :
       {std::pair(2.0, -1e10), {2.0, 1e300}, {nan, 2.0}, {2.0, nan}, {-largest, 2.0}, {largest, largest}})
    for (const RingCrossings& crossings : {ringCrossings(xy.data(), 4, x, y), prepared.crossings(x, y)})
      EXPECT_EQ(codeOf(crossings), s_outside) << x << ' ' << y;
  EXPECT_EQ(codeOf(ringCrossings(xy.data(), 4, 0.5, 0x1p-1074)), s_inside);
  EXPECT_EQ(codeOf(prepared.crossings(0.5, 0x1p-1074)), s_inside);
  EXPECT_EQ(codeOf(ringCrossings(xy.data(), 0, 1, 1)), s_outside);
  EXPECT_EQ(codeOf(PreparedRings().crossings(0, 0)), s_outside);
}

TEST(PreparedRings, RefusesWhatIsNotFinite) {
  const omReal64 xy[] = {0, 0, 1, std::numeric_limits<omReal64>::infinity(), 2, 0};
  PreparedRings prepared;
  prepared.add(xy, 3);
  EXPECT_FALSE(prepared.build());
  EXPECT_EQ(codeOf(prepared.crossings(1, 0)), s_outside);
}

TYPED_TEST(RingLocation, FindsTheNearestOfEdgesAndPoints) {
  using T = TypeParam;
  support::Random random(1402);
  for (int count = 0; count < 300; ++count) {
    std::vector<T> xy(2 * (1 + random.below(40)));
    for (T& value : xy) value = static_cast<T>(random.below(1000));
    const omReal64 x = random.uniform(-500, 1500);
    const omReal64 y = random.uniform(-500, 1500);
    omReal64 toEdges = 1e9;
    omReal64 toPoints = 1e9;
    for (std::size_t i = 0; i < xy.size(); i += 2) {
      const std::size_t j = i + 2 < xy.size() ? i + 2 : 0;
      const omReal64 a[] = {omReal64(xy[i]), omReal64(xy[i + 1]), omReal64(xy[j]), omReal64(xy[j + 1])};
      toEdges = std::min(toEdges, pointSegmentDistance(x, y, a[0], a[1], a[2], a[3]));
      toPoints = std::min(toPoints, std::hypot(x - a[0], y - a[1]));
    }
    const NearestOnRing onRing = nearestOnRing(xy.data(), xy.size() / 2, x, y);
    const NearestOnRing ofPoints = nearestOfPoints(xy.data(), xy.size() / 2, x, y);
    ASSERT_NEAR(onRing.distance, toEdges, 1e-11);
    ASSERT_NEAR(ofPoints.distance, toPoints, 1e-11);
    ASSERT_NEAR(std::hypot(onRing.point.x - x, onRing.point.y - y), toEdges, 1e-11);
    ASSERT_EQ(ofPoints.point.x, omReal64(xy[2 * ofPoints.index]));
  }
  const T nothing[2] = {};
  EXPECT_TRUE(std::isnan(nearestOnRing(nothing, 0, 1.0, 1.0).point.x));
}

TEST(NearestOnRing, WorksWhereSquaresOverflowOrVanish) {
  for (const omReal64 scale : {0x1p+1000, 0x1p-1000}) {
    const omReal64 xy[] = {0, 0, 4 * scale, 0, 4 * scale, 4 * scale, 0, 4 * scale};
    EXPECT_EQ(nearestOnRing(xy, 4, 3 * scale, 1.5 * scale).distance, scale);
    PreparedRings prepared;
    prepared.add(xy, 4);
    ASSERT_TRUE(prepared.build());
    EXPECT_EQ(codeOf(prepared.crossings(3 * scale, 1.5 * scale)), s_inside);
    EXPECT_EQ(codeOf(ringCrossings(xy, 4, 3 * scale, 4 * scale)), s_boundary);
  }
}

}  // namespace
}  // namespace ormix
