#include <ORMIXMath/Distance/Orientation.h>
#include <gtest/gtest.h>

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
  const PlanarPoint b{12, 12};
  const PlanarPoint c{24, 24};
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

}  // namespace
}  // namespace ormix
