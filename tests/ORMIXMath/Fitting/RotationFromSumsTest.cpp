#include <ORMIXMath/Fitting/RotationFromSums.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace ormix {
namespace {

using Sums = std::array<omReal64, 9>;

TEST(RotationFromSums, TurnsTheAxesOfSourcesToThoseOfTargets) {
  // Unit vectors x, y, z whose targets are y, z, x: a third of a turn about (1, 1, 1).
  for (const omReal64 scale : {1.0, 1e-300, 1e300}) {
    BestRotation found;
    ASSERT_TRUE(rotationFromSums(Sums{0, scale, 0, 0, 0, scale, scale, 0, 0}, found));
    for (const omReal64 component : {found.w, found.x, found.y, found.z}) EXPECT_NEAR(component, 0.5, 1e-15);
    EXPECT_NEAR(found.sum / scale, 3, 1e-15);
    EXPECT_NEAR(found.gap / scale, 4, 1e-14);
  }
}

TEST(RotationFromSums, NeverReflects) {
  // Axes of lengths 3, 2, 1 and their images in a point: a half turn about the shortest one is best.
  BestRotation found;
  ASSERT_TRUE(rotationFromSums(Sums{-3, 0, 0, 0, -2, 0, 0, 0, -1}, found));
  EXPECT_NEAR(found.z, 1, 1e-15);
  EXPECT_NEAR(found.sum, 3 + 2 - 1, 1e-14);
  EXPECT_NEAR(found.gap, 2 * (2 - 1), 1e-14);
}

TEST(RotationFromSums, SaysWhenAnotherRotationIsAsGood) {
  BestRotation found;
  // One direction only; the mirror image of equal axes; nothing.
  for (const Sums& sums : {Sums{5, 0, 0, 0, 0, 0, 0, 0, 0}, Sums{-1, 0, 0, 0, -1, 0, 0, 0, -1}, Sums{}}) {
    ASSERT_TRUE(rotationFromSums(sums, found));
    EXPECT_NEAR(found.gap, 0, 1e-14);
    EXPECT_NEAR(found.w * found.w + found.x * found.x + found.y * found.y + found.z * found.z, 1, 1e-15);
  }
}

TEST(RotationFromSums, RefusesNaNAndInfinityWhereverTheyAre) {
  for (std::size_t at = 0; at < 9; ++at)
    for (const omReal64 bad : {std::numeric_limits<omReal64>::quiet_NaN(), std::numeric_limits<omReal64>::infinity()}) {
      Sums sums{1, 2, 3, 4, 5, 6, 7, 8, 9};
      sums[at] = bad;
      BestRotation found{7, 7, 7, 7, 7, 7};
      EXPECT_FALSE(rotationFromSums(sums, found));
      EXPECT_EQ(found.w, 7);
    }
}

}  // namespace
}  // namespace ormix
