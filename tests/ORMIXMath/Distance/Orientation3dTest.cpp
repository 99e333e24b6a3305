#include <ORMIXMath/Distance/Orientation3d.h>

#include "DistanceOracle.h"
#include "support/Checks.h"

namespace ormix {
namespace {

using FourPoints = std::array<SpatialPoint, 4>;

int orientationOf(const FourPoints& p) { return orientation3d(p[0], p[1], p[2], p[3]); }

/// By expansion in 200 digits, in which it is exact for the cases below.
int exactSign(const FourPoints& p) {
  const auto from0 = [&](std::size_t i) { return oracle::ExactPoint(p[i]) - p[0]; };
  return dot(from0(1), cross(from0(2), from0(3))).sign();
}

/// Four points in or next to a plane: on lattices, where they lie in it exactly, or rounded and moved by little; near
/// the origin and far from it, of sizes that differ by axis.
class HostileTetrahedra {
 public:
  explicit HostileTetrahedra(unsigned seed) : _random(seed) {}

  FourPoints next() {
    const bool isLattice = _random.below(3) == 0;
    const omReal64 steps = std::ldexp(1.0, static_cast<int>(_random.below(45)));
    const auto number = [&] { return isLattice ? std::round(steps * uniform()) : uniform(); };
    const auto vector = [&] { return SpatialPoint{number(), number(), number()}; };
    const SpatialPoint offset = _random.below(2) == 0 ? SpatialPoint{0, 0, 0} : combined(1e6, vector(), 0, vector());
    const SpatialPoint u = vector(), v = vector();
    const auto factor = [&] { return isLattice ? omReal64(int(_random.below(9)) - 4) : 2 * uniform(); };
    FourPoints p{offset, combined(1, offset, 1, u), combined(1, offset, 1, v), combined(factor(), u, factor(), v)};
    p[3] = combined(1, offset, 1, p[3]);
    if (_random.below(3) == 0) p[3] = combined(1, p[3], std::pow(10.0, -17 * std::abs(uniform())), vector());
    if (_random.below(8) == 0 && p[3].z != 0) p[3].z = std::nextafter(p[3].z, 1e300);
    if (_random.below(16) == 0) p[3] = p[_random.below(3)];
    const omReal64 flattening = std::ldexp(1.0, -static_cast<int>(_random.below(40)));
    for (SpatialPoint& point : p) point.y *= flattening;
    std::shuffle(p.begin(), p.end(), _random.engine());
    return p;
  }

 private:
  omReal64 uniform() { return _random.uniform(); }
  static SpatialPoint combined(omReal64 s, const SpatialPoint& p, omReal64 t, const SpatialPoint& q) {
    return {s * p.x + t * q.x, s * p.y + t * q.y, s * p.z + t * q.z};
  }
  support::Random _random;
};

FourPoints scaled(FourPoints points, int exponent) {
  for (SpatialPoint& p : points) p = {std::ldexp(p.x, exponent), std::ldexp(p.y, exponent), std::ldexp(p.z, exponent)};
  return points;
}

TEST(Orientation3d, HasTheExactSignOnHostilePoints) {
  HostileTetrahedra cases(1301);
  std::array<int, 3> answers{};
  for (int i = 0; i < 20000; ++i) {
    FourPoints p = cases.next();
    const int expected = exactSign(p);
    ++answers[static_cast<std::size_t>(expected + 1)];
    ASSERT_EQ(orientationOf(p), expected) << "case " << i;
    // Where products of coordinates have no place in the range of numbers any more.
    ASSERT_EQ(orientationOf(scaled(p, 950)), expected) << "case " << i;
    ASSERT_EQ(orientationOf(scaled(p, -700)), expected) << "case " << i;
    std::swap(p[1], p[3]);
    ASSERT_EQ(orientationOf(p), -expected) << "case " << i;
  }
  for (const int count : answers) EXPECT_GT(count, 2000);
}

TEST(Orientation3d, SpansAllNumbers) {
  const omReal64 large = std::numeric_limits<omReal64>::max(), small = std::numeric_limits<omReal64>::denorm_min();
  const FourPoints corner{SpatialPoint{0, 0, 0}, {large, 0, 0}, {0, large, 0}, {0, 0, small}};
  EXPECT_EQ(orientationOf(corner), 1);
  EXPECT_EQ(orientation3d(corner[0], corner[2], corner[1], corner[3]), -1);
  EXPECT_EQ(orientation3d({-large, -large, 0}, {large, -large, 0}, {large, large, small}, {-large, large, small}), 0);
  EXPECT_EQ(orientation3d({-large, -large, 0}, {large, -large, 0}, {large, large, small}, {-large, large, 2 * small}),
            1);
  EXPECT_EQ(orientation3d({0, 0, 0}, {small, 0, 0}, {0, small, 0}, {0, 0, -small}), -1);
}

TEST(Orientation3d, TellsNeighbouringIntegersApart) {
  const omUInt32 top = std::numeric_limits<omUInt32>::max();
  EXPECT_EQ(orientation3d<omUInt32>(0, 0, 0, top, 0, top, 0, top, top, 1, 1, 2), 0);
  EXPECT_EQ(orientation3d<omUInt32>(0, 0, 0, top, 0, top, 0, top, top, top, top - 1, top), -1);
  // Neighbouring Fibonacci numbers, for which the determinant of these products of 63 bits is 1.
  EXPECT_EQ(orientation3d<omUInt32>(0, 0, 0, 2971215073, 1836311903, 0, 1836311903, 1134903170, 0, top, top, 1), 1);
  EXPECT_EQ(orientation3d<omUInt32>(0, 0, 0, 1836311903, 1134903170, 0, 2971215073, 1836311903, 0, top, top, 1), -1);
  const omInt32 low = std::numeric_limits<omInt32>::min(), high = std::numeric_limits<omInt32>::max();
  EXPECT_EQ(orientation3d<omInt32>(low, low, low, high, low, low, low, high, low, low, low, high), 1);
}

TEST(Orientation3d, AnswersZeroForValuesThatAreNotFinite) {
  for (const omReal64 bad : {support::s_nan, support::s_infinity}) {
    EXPECT_EQ(orientation3d({bad, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}), 0);
    EXPECT_EQ(orientation3d({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, bad}), 0);
  }
}

}  // namespace
}  // namespace ormix
