#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Hull/ConvexHull2d.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <set>

#include "../Distance/DistanceOracle.h"
#include "support/Checks.h"

namespace ormix {
namespace {

template <class T>
using Cloud = std::vector<std::array<T, 2>>;

template <class T>
Cloud<T> hullOf(const Cloud<T>& cloud) {
  std::vector<T> xy;
  const BoolResult result = convexHull2d(cloud.empty() ? nullptr : cloud[0].data(), cloud.size(), xy);
  EXPECT_TRUE(result) << result.getMessage();
  Cloud<T> hull(xy.size() / 2);
  for (std::size_t i = 0; i < hull.size(); ++i) hull[i] = {xy[2 * i], xy[2 * i + 1]};
  return hull;
}

template <class T>
int exactSide(const std::array<T, 2>& a, const std::array<T, 2>& b, const std::array<T, 2>& c) {
  const auto point = [](const std::array<T, 2>& p) { return oracle::ExactPoint(toPlanarPoint(p[0], p[1])); };
  return oracle::cross(point(b) - point(a), point(c) - point(a)).z.sign();
}

template <class T>
int fastSide(const std::array<T, 2>& a, const std::array<T, 2>& b, const std::array<T, 2>& c) {
  return orientation(toPlanarPoint(a[0], a[1]), toPlanarPoint(b[0], b[1]), toPlanarPoint(c[0], c[1]));
}

/// That a ring of points of the cloud turns left at each vertex, once around, and has no point outside.
template <class T, class Side>
void expectHull(const Cloud<T>& cloud, const Cloud<T>& hull, Side side) {
  const std::set<std::array<T, 2>> points(cloud.begin(), cloud.end());
  ASSERT_EQ(hull[0], *points.begin());
  if (hull.size() < 3) {
    ASSERT_EQ(hull.size(), std::min<std::size_t>(points.size(), 2));
    ASSERT_EQ(hull.back(), *points.rbegin());
  }
  for (std::size_t i = 0; i < hull.size(); ++i) {
    const auto &a = hull[i], &b = hull[(i + 1) % hull.size()], &c = hull[(i + 2) % hull.size()];
    ASSERT_TRUE(points.count(a));
    ASSERT_EQ(side(a, b, c), hull.size() < 3 ? 0 : 1);
    // Turns to the left alone may go around twice.
    ASSERT_TRUE(i < 2 || side(hull[0], hull[i - 1], a) > 0);
    for (const auto& p : cloud) ASSERT_GE(side(a, b, p), 0);
  }
}

/// Small sets that hurt: on a coarse grid, on a line and next to it, on a circle, at the ends of the range, equal.
template <class T>
Cloud<T> hostileCloud(support::Random& random) {
  using Limits = std::numeric_limits<T>;
  Cloud<T> cloud(1 + random.below(20));
  const auto kind = random.below(6);
  const auto steps = 1 + random.below(9);
  static const int circle[][2] = {{25, 0}, {24, 7}, {20, 15}, {15, 20}, {7, 24}, {0, 25}};
  for (auto& p : cloud) {
    const auto step = [&] { return static_cast<T>(random.below(steps)); };
    const T s = step(), t = step();
    const int* on = circle[random.below(6)];
    if (kind == 0) p = {s, t};
    if (kind == 1) p = {s, static_cast<T>(3 * s + (random.below(5) == 0 ? 1 : 0))};
    if (kind == 2) p = {static_cast<T>(random.below(2) ? 30 + on[0] : 30 - on[0]), static_cast<T>(30 + on[1])};
    if (kind == 3)
      p = {random.below(2) ? static_cast<T>(Limits::max() - s) : static_cast<T>(Limits::lowest() + t),
           random.below(2) ? Limits::max() : static_cast<T>(Limits::lowest() + s)};
    if (kind == 4) p = {7, 7};
    if (kind == 5) p = {static_cast<T>(random()), static_cast<T>(random())};
    if constexpr (std::is_floating_point_v<T>) {
      if (kind == 3) p = {s * Limits::denorm_min(), random.below(2) ? t * Limits::denorm_min() : T(s / 3)};
      if (kind == 5) p = {T(1) / 3 + s * Limits::epsilon(), T(1) / 3 + t * Limits::epsilon()};
    }
  }
  return cloud;
}

template <class T>
class ConvexHull2d : public testing::Test {};
TYPED_TEST_SUITE(ConvexHull2d, support::Scalars);

TYPED_TEST(ConvexHull2d, IsExactOnHostilePoints) {
  support::Random random(1401);
  for (int i = 0; i < 2000; ++i) {
    SCOPED_TRACE(i);
    const Cloud<TypeParam> cloud = hostileCloud<TypeParam>(random);
    const Cloud<TypeParam> hull = hullOf(cloud);
    // 200 digits are not enough for denormals beside others.
    const auto side = std::is_same_v<TypeParam, omReal64> ? fastSide<TypeParam> : exactSide<TypeParam>;
    ASSERT_NO_FATAL_FAILURE(expectHull(cloud, hull, side));
    ASSERT_EQ(hullOf(hull), hull);
  }
}

// Enough points for those inside to be dropped first, and for the others to be spread before they are sorted.
TYPED_TEST(ConvexHull2d, IsExactWhereItDropsPoints) {
  support::Random random(1402);
  Cloud<TypeParam> disk, lattice, ring;
  while (disk.size() < 40000) {
    const omReal64 x = random.uniform(), y = random.uniform();
    const omReal64 norm = std::hypot(x, y);
    if (norm < 1) disk.push_back({TypeParam(1000 + 1000 * x), TypeParam(1e6 + 1e6 * y)});
    ring.push_back({TypeParam(1e9 + 1e9 * x / norm), TypeParam(1e9 + 1e9 * y / norm)});
    lattice.push_back({TypeParam(disk.size() % 97), TypeParam(disk.size() / 97)});
  }
  for (const auto* cloud : {&disk, &lattice, &ring}) {
    SCOPED_TRACE(cloud->size());
    const Cloud<TypeParam> hull = hullOf(*cloud);
    // Of the many vertices of the ring some are looked at with all points.
    if (hull.size() < 500) expectHull(*cloud, hull, fastSide<TypeParam>);
    for (std::size_t i = 0; i < hull.size(); i += 100)
      for (const auto& p : *cloud) ASSERT_GE(fastSide(hull[i], hull[(i + 1) % hull.size()], p), 0);
    EXPECT_EQ(hullOf(hull), hull);
  }
}

TEST(ConvexHull2dFailures, NameWhatIsMissingAndLeaveTheResult) {
  std::vector<omReal64> hull{1, 2};
  const std::string start = "Convex hull of points in the plane: ";
  EXPECT_EQ(convexHull2d<omReal64>(nullptr, 0, hull).getMessage(), start + "at least one point is needed, 0 given");
  const std::vector<omReal64> xy{0, 0, 1, 1, 2, support::s_nan, support::s_infinity, 0};
  EXPECT_EQ(convexHull2d(xy.data(), 4, hull).getMessage(),
            start + "point 2 has a coordinate that is not a finite number");
  EXPECT_EQ(hull, (std::vector<omReal64>{1, 2}));
}

}  // namespace
}  // namespace ormix
