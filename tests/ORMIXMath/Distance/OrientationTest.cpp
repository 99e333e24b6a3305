#include <ORMIXMath/Distance/Orientation.h>

#include "DistanceOracle.h"
#include "support/Checks.h"

namespace ormix {
namespace {

TEST(Orientation, HasTheExactSignOnHostileTriples) {
  oracle::HostileSegments cases(1201);
  omReal64 worst = 0;
  for (int i = 0; i < 10000; ++i) {
    const auto [s, r] = cases.nextFlat();
    const oracle::Exact exact = oracle::cross(oracle::ExactPoint(s.p1) - s.p0, oracle::ExactPoint(r.p0) - s.p0).z;
    ASSERT_EQ(orientation(s.p0, s.p1, r.p0), exact.sign()) << s << ' ' << r;
    if (exact.is_zero()) {
      ASSERT_EQ(orientationDeterminant(s.p0, s.p1, r.p0), 0.0);
      continue;
    }
    worst = std::max(worst, oracle::ulps(orientationDeterminant(s.p0, s.p1, r.p0) / exact - 1, 1));
  }
  EXPECT_LE(worst, 0x1p-48);
}

TEST(Orientation, TellsNeighbouringGridPointsApart) {
  // The grid around one half on which rounded determinants are known to answer at random.
  const PlanarPoint b{12, 12}, c{24, 24};
  for (int i = 0; i < 64; ++i)
    for (int j = 0; j < 64; ++j) {
      const PlanarPoint a{0.5 + i * 0x1p-53, 0.5 + j * 0x1p-53};
      const int expected = (j > i) - (j < i);
      ASSERT_EQ(orientation(b, c, a), expected) << a;
      ASSERT_EQ(orientation(a, b, c), expected) << a;
    }
  EXPECT_EQ(orientation({support::s_nan, 0}, {1, 1}, {2, 0}), 0);
  EXPECT_TRUE(std::isnan(orientationDeterminant({support::s_nan, 0}, {1, 1}, {2, 0})));
}

TEST(Orientation, IsExactAtEveryMagnitude) {
  using Wide = boost::multiprecision::number<boost::multiprecision::cpp_bin_float<1400>>;
  support::Random random(1202);
  for (int i = 0; i < 1000; ++i) {
    // Rounded points of a line, their coordinates anywhere between the denormals and the largest numbers.
    const auto any = [&] { return std::ldexp(random.uniform(), static_cast<int>(random.below(2080)) - 1060); };
    const PlanarPoint a{any(), any()}, u{any(), any()};
    const auto on = [&](omReal64 t) { return PlanarPoint{a.x + t * u.x, a.y + t * u.y}; };
    const PlanarPoint b = on(random.uniform(0, 0.5)), c = on(random.uniform(0, 0.5));
    const Wide left = (Wide(b.x) - a.x) * (Wide(c.y) - a.y), right = (Wide(b.y) - a.y) * (Wide(c.x) - a.x);
    ASSERT_EQ(orientation(a, b, c), left.compare(right) > 0   ? 1
                                    : left.compare(right) < 0 ? -1
                                                              : 0)
        << a.x << ' ' << a.y << ' ' << u.x << ' ' << u.y;
  }
}

}  // namespace
}  // namespace ormix
