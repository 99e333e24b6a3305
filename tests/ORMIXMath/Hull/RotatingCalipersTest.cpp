#include <ORMIXMath/Hull/ConvexHull2d.h>
#include <ORMIXMath/Hull/RotatingCalipers.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix {
namespace {

/// Extent of all points in a direction.
omReal64 extentOf(const std::vector<omReal64>& xy, omReal64 cosine, omReal64 sine) {
  omReal64 low = 1e300, high = -1e300;
  for (std::size_t i = 0; i < xy.size(); i += 2) {
    const omReal64 along = (xy[i] - xy[0]) * cosine + (xy[i + 1] - xy[1]) * sine;
    low = std::min(low, along);
    high = std::max(high, along);
  }
  return high - low;
}

omReal64 norm(const PlanarPoint& a, const PlanarPoint& b) { return std::hypot(a.x - b.x, a.y - b.y); }

// Against all pairs of points and all directions of pairs, over hulls of clouds that are few, flat, on grids or round.
TEST(RotatingCalipers, AnswerWhatAllPairsAndDirectionsAnswer) {
  support::Random random(1405);
  for (int i = 0; i < 1500; ++i) {
    SCOPED_TRACE(i);
    std::vector<omReal64> cloud, xy;
    const auto kind = random.below(4);
    const omReal64 offset = random.below(2) == 0 ? 0 : 0x1p30,
                   size = std::array{1.0, 0x1p600, 0x1p-600}[random.below(3)];
    for (omUInt32 k = 0, nb = 1 + random.below(12); k < nb; ++k) {
      const omReal64 turn = 0.25 * random.below(24) + 0.1, grid = random.below(3);
      const omReal64 x = kind == 0 ? grid : kind == 1 ? random.uniform() : std::cos(turn);
      const omReal64 y = kind == 0   ? random.below(5)
                         : kind == 1 ? 1e-7 * random.uniform()
                         : kind == 2 ? std::sin(turn)
                                     : x;
      cloud.insert(cloud.end(), {(offset + x) * size, (offset + y) * size});
    }
    ASSERT_TRUE(convexHull2d(cloud.data(), cloud.size() / 2, xy));
    const std::size_t nb = xy.size() / 2;
    omReal64 greatest = 0, least = nb < 3 ? 0 : 1e300, area = 1e300, halfPerimeter = 1e300;
    for (std::size_t k = 0; k < nb; ++k)
      for (std::size_t l = 0; l < k; ++l) {
        const omReal64 dx = (xy[2 * k] - xy[2 * l]) / size, dy = (xy[2 * k + 1] - xy[2 * l + 1]) / size;
        const omReal64 length = std::hypot(dx, dy);
        const omReal64 along = extentOf(xy, dx / length, dy / length) / size;
        const omReal64 across = extentOf(xy, -dy / length, dx / length) / size;
        greatest = std::max(greatest, length);
        least = std::min(least, across);
        area = std::min(area, along * across);
        halfPerimeter = std::min(halfPerimeter, along + across);
      }
    if (nb == 1) area = halfPerimeter = 0;
    const omReal64 tolerance = 1e-14 * greatest + (offset > 0 ? 1e-15 * offset : 0);
    const FeretDiameter longest = greatestFeretDiameter(xy.data(), nb), shortest = leastFeretDiameter(xy.data(), nb);
    ASSERT_NEAR(longest.length / size, greatest, tolerance);
    ASSERT_NEAR(norm(longest.from, longest.to) / size, greatest, tolerance);
    ASSERT_NEAR(shortest.length / size, least, tolerance);
    ASSERT_NEAR(norm(shortest.from, shortest.to) / size, least, 2 * tolerance);
    ASSERT_NEAR(extentOf(xy, std::cos(shortest.angle), std::sin(shortest.angle)) / size, least, tolerance);
    const omReal64 angle = 10 * random.uniform();
    ASSERT_NEAR(feretDiameterAt(xy.data(), nb, angle).length / size,
                extentOf(xy, std::cos(angle), std::sin(angle)) / size, tolerance);
    const OrientedRectangle byArea = smallestRectangle(xy.data(), nb, eRectangleSize::Area);
    ASSERT_NEAR(4 * (byArea.halfLength / size) * (byArea.halfWidth / size), area, 8 * tolerance * greatest);
    const OrientedRectangle byPerimeter = smallestRectangle(xy.data(), nb, eRectangleSize::Perimeter);
    ASSERT_NEAR(2 * (byPerimeter.halfLength + byPerimeter.halfWidth) / size, halfPerimeter, 8 * tolerance);
    for (std::size_t k = 0; k < nb; ++k) {
      const omReal64 dx = (xy[2 * k] - byArea.center.x) / size, dy = (xy[2 * k + 1] - byArea.center.y) / size;
      const omReal64 c = std::cos(byArea.angle), s = std::sin(byArea.angle);
      ASSERT_LE(std::abs(dx * c + dy * s), byArea.halfLength / size + 4 * tolerance);
      ASSERT_LE(std::abs(dy * c - dx * s), byArea.halfWidth / size + 4 * tolerance);
    }
  }
}

}  // namespace
}  // namespace ormix
