#include <ORMIXMath/Distance/PointSegmentDistance.h>
#include <ORMIXMath/Enclosing/LargestInscribedCircle.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix {
namespace {

using Rings = std::vector<std::vector<omReal64>>;

BoolResult circleIn(const Rings& rings, InscribedCircle& circle) {
  std::vector<RingView> views;
  for (const auto& ring : rings) views.push_back({ring.data(), ring.size() / 2});
  return largestInscribedCircle(views, circle);
}

/// Distance from the nearest edge, negative outside.
omReal64 depthOf(const Rings& rings, const PlanarPoint& p) {
  omReal64 distance = 1e300;
  bool isInside = false;
  for (const auto& ring : rings)
    for (std::size_t i = 0, n = ring.size(); i < n; i += 2) {
      const PlanarPoint a{ring[i], ring[i + 1]}, b{ring[(i + 2) % n], ring[(i + 3) % n]};
      distance = std::min(distance, pointSegmentDistance(p.x, p.y, a.x, a.y, b.x, b.y));
      if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x)) isInside = !isInside;
    }
  return isInside ? distance : -distance;
}

TEST(LargestInscribedCircle, IsThatOfKnownShapes) {
  const omReal64 inL = 2 - std::sqrt(2.0), besideHole = 8 - 4 * std::sqrt(2.0);
  const std::tuple<Rings, omReal64> cases[] = {
      {{{0, 0, 100, 0, 100, 1, 0, 1}}, 0.5},
      {{{0, 0, 3, 0, 0, 4, 0, 0}}, 1},
      {{{0, 0, 0, 2, 1, 2, 1, 1, 2, 1, 2, 0}}, inL},
      {{{0, 0, 10, 0, 10, 10, 0, 10}, {4, 4, 6, 4, 6, 6, 4, 6}}, besideHole},
      {{{4, 4, 6, 4, 6, 6, 4, 6}, {0, 0, 0, 10, 10, 10, 10, 0}, {4.5, 4.5, 5.5, 4.5, 5.5, 5.5, 4.5, 5.5}}, besideHole},
      {{{0, 0, 1e5, 0, 1e5, 1, 0, 1}}, 0.5},
  };
  for (const auto& [rings, radius] : cases)
    for (const omReal64 size : {1.0, 1e200, 1e-200})
      for (const omReal64 offset : {0.0, 1e6}) {
        Rings moved = rings;
        for (auto& ring : moved)
          for (omReal64& value : ring) value = (value + offset) * size;
        InscribedCircle circle;
        ASSERT_TRUE(circleIn(moved, circle));
        EXPECT_NEAR(circle.radius / size, radius, 1e-9 * radius + 1e-15 * offset);
      }
}

// Star-shaped rings, smooth, jagged and with a hole: no place of a fine grid is deeper than what is said.
TEST(LargestInscribedCircle, IsNotExceededAnywhere) {
  support::Random random(1406);
  for (int i = 0; i < 60; ++i) {
    SCOPED_TRACE(i);
    Rings rings(1 + random.below(2));
    const omUInt32 nb = 3 + random.below(200);
    const omReal64 roughness = random.uniform(0, 0.5), flatness = random.uniform(0.02, 1);
    for (std::size_t r = 0; r < rings.size(); ++r)
      for (omUInt32 k = 0; k < nb; ++k) {
        const omReal64 angle = 6.283185307179586 * k / nb;
        const omReal64 radius = (r == 0 ? 1 : 0.4) * (1 + roughness * random.uniform() + 0.2 * std::sin(3 * angle));
        rings[r].insert(rings[r].end(), {radius * std::cos(angle), flatness * radius * std::sin(angle)});
      }
    InscribedCircle circle;
    ASSERT_TRUE(circleIn(rings, circle));
    EXPECT_NEAR(circle.radius, depthOf(rings, circle.center), 1e-15);
    EXPECT_LE(circle.excess, 1e-9 * circle.radius + 1e-15);
    for (omReal64 y = -2 * flatness; y < 2 * flatness; y += 0.1 * flatness)
      for (omReal64 x = -2; x < 2; x += 0.1)
        ASSERT_LE(depthOf(rings, {x + 0.5 * circle.center.x, y}), circle.radius + circle.excess);
  }
}

TEST(LargestInscribedCircle, RefusesRingsWithoutInside) {
  InscribedCircle circle;
  for (const Rings& rings : {Rings{}, Rings{{1, 1}}, Rings{{0, 0, 5, 0}}, Rings{{0, 0, 5, 5, 10, 10}}})
    EXPECT_EQ(circleIn(rings, circle).getMessage(), "Largest circle in rings: the rings have no inside");
  EXPECT_EQ(circleIn({{0, 0, 1, 0, 1, 1}, {0, 0, support::s_nan, 1, 2, 2}}, circle).getMessage(),
            "Largest circle in rings: vertex 1 of ring 1 has a coordinate that is not a finite number");
  EXPECT_EQ(circle.radius, 0);
}

}  // namespace
}  // namespace ormix
