#include <ORMIXMath/Distance/Orientation3d.h>
#include <ORMIXMath/Hull/ConvexHull3d.h>

#include <set>

#include "ORMIXMath/Distance/DistanceOracle.h"
#include "support/Checks.h"

namespace ormix {
namespace {

template <class T>
using Cloud = std::vector<std::array<T, 3>>;

using Triangles = std::vector<IndexTriangle>;

template <class T>
BoolResult hullOf(const Cloud<T>& cloud, Triangles& triangles) {
  return convexHull3d(cloud.empty() ? nullptr : cloud.front().data(), cloud.size(), triangles);
}

template <class T>
SpatialPoint at(const Cloud<T>& cloud, std::size_t i) {
  return toSpatialPoint(cloud[i][0], cloud[i][1], cloud[i][2]);
}

template <class T>
int side(const Cloud<T>& cloud, const IndexTriangle& triangle, std::size_t i) {
  return orientation3d(at(cloud, triangle[0]), at(cloud, triangle[1]), at(cloud, triangle[2]), at(cloud, i));
}

template <class T>
std::set<std::array<T, 3>> verticesOf(const Cloud<T>& cloud, const Triangles& triangles) {
  std::set<std::array<T, 3>> vertices;
  for (const IndexTriangle& triangle : triangles)
    for (const omUInt32 vertex : triangle) vertices.insert(cloud[vertex]);
  return vertices;
}

/// Closed, of the topology of a sphere, and around all points, none of its triangles degenerate.
template <class T>
void expectHull(const Cloud<T>& cloud, const Triangles& triangles) {
  std::set<std::pair<omUInt32, omUInt32>> edges;
  std::set<omUInt32> vertices;
  for (const IndexTriangle& triangle : triangles)
    for (std::size_t k = 0; k < 3; ++k) {
      ASSERT_LT(triangle[k], cloud.size());
      vertices.insert(triangle[k]);
      ASSERT_TRUE(edges.emplace(triangle[k], triangle[(k + 1) % 3]).second) << "an edge twice in one direction";
    }
  for (const auto& [from, to] : edges) ASSERT_EQ(edges.count({to, from}), 1U);
  ASSERT_EQ(vertices.size() + triangles.size(), edges.size() / 2 + 2);
  ASSERT_EQ(vertices.size(), verticesOf(cloud, triangles).size()) << "equal vertices";
  for (const IndexTriangle& triangle : triangles) {
    bool isProper = false;
    for (std::size_t i = 0; i < cloud.size(); ++i) {
      const int answer = side(cloud, triangle, i);
      ASSERT_LE(answer, 0) << "point " << i << " is outside";
      isProper |= answer < 0;
    }
    ASSERT_TRUE(isProper);
  }
}

/// Without rounding.
template <class T>
oracle::Exact volume(const Cloud<T>& cloud, const Triangles& triangles) {
  const auto difference = [&](omUInt32 i, std::size_t k) {
    return oracle::Exact(cloud[i][k]) - cloud[triangles[0][0]][k];
  };
  oracle::Exact sum = 0;
  for (const auto& [a, b, c] : triangles)
    for (std::size_t k = 0; k < 3; ++k) {
      const std::size_t l = (k + 1) % 3, m = (k + 2) % 3;
      sum += difference(a, k) * (difference(b, l) * difference(c, m) - difference(b, m) * difference(c, l));
    }
  return sum / 6;
}

/// Small sets of points that hurt: on coarse grids, on few lines and planes, on spheres, many times the same, far from
/// the origin, flat to rounding, at the ends of the type's range.
template <class T>
class HostileClouds {
 public:
  explicit HostileClouds(unsigned seed) : _random(seed) {}

  Cloud<T> next() {
    Cloud<T> cloud(1 + _random.below(28));
    const auto steps = 1U << _random.below(5);
    const auto kind = _random.below(6);
    for (auto& p : cloud) p = point(kind, steps);
    if (_random.below(4) == 0)
      cloud.insert(cloud.end(), cloud.begin(),
                   cloud.begin() + 1 + int(_random.below(static_cast<omUInt32>(cloud.size()))));
    std::shuffle(cloud.begin(), cloud.end(), _random.engine());
    if constexpr (std::is_floating_point_v<T>) {
      const T offset = _random.below(2) == 0 ? T(0) : T(1e6);
      const T size = _random.below(2) == 0 ? T(1) : T(1e-6);
      for (auto& p : cloud)
        for (auto& value : p) value = offset + size * value;
    }
    return cloud;
  }

 private:
  T uniform() {
    if constexpr (std::is_floating_point_v<T>)
      return static_cast<T>(_random.uniform());
    else
      return static_cast<T>(_random());
  }

  std::array<T, 3> point(unsigned kind, omUInt32 steps) {
    const auto step = [&] { return static_cast<T>(_random.below(steps + 1)); };
    const std::array<T, 3> p{step(), step(), step()};
    if (kind == 0) return p;
    if (kind == 1) return {uniform(), uniform(), uniform()};
    if (kind == 2) return {p[0], p[1], static_cast<T>(p[0] + 2 * p[1] + T(_random.below(8) == 0))};
    if (kind == 3) return _random.below(6) == 0 ? p : std::array<T, 3>{p[0], p[0], static_cast<T>(3 * p[0])};
    if (kind == 4) return onSphere();
    // Rounded points of a plane, or the corners of the range, for integers.
    const T a = uniform(), b = uniform();
    if constexpr (std::is_floating_point_v<T>) return {a, b, (a + 2 * b) / 3};
    return {a > T(77) ? std::numeric_limits<T>::max() : std::numeric_limits<T>::min(), b, p[2]};
  }

  /// Of the 30 points of the grid at distance 3 from one point, which lie in many common planes.
  std::array<T, 3> onSphere() {
    static const int vectors[][3] = {{3, 0, 0}, {1, 2, 2}, {2, 1, 2}, {2, 2, 1}, {0, 3, 0}, {0, 0, 3}};
    const int* v = vectors[_random.below(6)];
    const auto with = [&](int value) { return static_cast<T>(_random.below(2) == 0 ? 5 + value : 5 - value); };
    return {with(v[0]), with(v[1]), with(v[2])};
  }

  support::Random _random;
};

template <class T>
bool isFlat(const Cloud<T>& cloud) {
  for (std::size_t i = 0; i < cloud.size(); ++i)
    for (std::size_t j = 0; j < i; ++j)
      for (std::size_t k = 0; k < j; ++k)
        for (std::size_t l = 0; l < k; ++l)
          if (orientation3d(at(cloud, i), at(cloud, j), at(cloud, k), at(cloud, l)) != 0) return false;
  return true;
}

/// A vertex is extreme when the hull of all other points, if they have one, leaves it outside.
template <class T>
void expectOnlyExtremePoints(const Cloud<T>& cloud, const Triangles& triangles) {
  for (const std::array<T, 3>& vertex : verticesOf(cloud, triangles)) {
    Cloud<T> others = cloud;
    others.erase(std::remove(others.begin(), others.end(), vertex), others.end());
    Triangles around;
    if (!hullOf(others, around)) continue;
    others.push_back(vertex);
    const auto leavesItOutside = [&](const auto& triangle) { return side(others, triangle, others.size() - 1) > 0; };
    ASSERT_TRUE(std::any_of(around.begin(), around.end(), leavesItOutside));
  }
}

template <class T>
class ConvexHull3d : public testing::Test {};
TYPED_TEST_SUITE(ConvexHull3d, support::Scalars);

TYPED_TEST(ConvexHull3d, IsExactOnHostilePoints) {
  HostileClouds<TypeParam> clouds(1313);
  int nbHulls = 0;
  for (int i = 0; i < 2500; ++i) {
    SCOPED_TRACE(i);
    Cloud<TypeParam> cloud = clouds.next();
    const Triangles before{{1, 2, 3}};
    Triangles triangles = before;
    if (const BoolResult result = hullOf(cloud, triangles); !result) {
      ASSERT_TRUE(isFlat(cloud)) << result.getMessage();
      ASSERT_EQ(triangles, before);
      continue;
    }
    ++nbHulls;
    ASSERT_NO_FATAL_FAILURE(expectHull(cloud, triangles));
    if (i % 4 != 0) continue;
    ASSERT_NO_FATAL_FAILURE(expectOnlyExtremePoints(cloud, triangles));
    const oracle::Exact expected = volume(cloud, triangles);
    std::reverse(cloud.begin(), cloud.end());
    ASSERT_TRUE(hullOf(cloud, triangles));
    ASSERT_EQ(volume(cloud, triangles), expected);
  }
  EXPECT_GT(nbHulls, 1500);
}

// Points of all sizes, nearly in common planes; farthest first each would be the only one of its facet, so that these
// are taken in random order, with vertices of many facets.
TEST(ConvexHull3dSpiral, IsExactWhereItGrowsExponentially) {
  for (const auto& [span, turn, isCone] : {std::tuple(130.0, 3.1, false), {250.0, 0.3, false}, {250.0, 0.3, true}}) {
    SCOPED_TRACE(testing::Message() << "span " << span << ", turn " << turn << ", cone " << isCone);
    Cloud<omReal64> cloud;
    for (int i = 0; i < 500; ++i) {
      const omReal64 radius = std::exp(span * i / 500);
      cloud.push_back({radius * std::cos(turn * i), radius * std::sin(turn * i), isCone ? radius : radius * radius});
    }
    Triangles triangles;
    ASSERT_TRUE(hullOf(cloud, triangles));
    EXPECT_EQ(triangles.size(), 996U) << "all points are corners";
    ASSERT_NO_FATAL_FAILURE(expectHull(cloud, triangles));
  }
}

TYPED_TEST(ConvexHull3d, FindsTheCornersOfAGridAndOfManyEqualPoints) {
  Cloud<TypeParam> cloud;
  for (int i = 0; i < 27000; ++i)
    cloud.push_back({TypeParam(i % 30), TypeParam(2 * (i / 30 % 30)), TypeParam(i % 30 + 3 * (i / 900))});
  Triangles triangles;
  ASSERT_TRUE(hullOf(cloud, triangles));
  EXPECT_EQ(triangles.size(), 12U);
  EXPECT_EQ(volume(cloud, triangles), 29 * 58 * 87);
  const auto corners = verticesOf(cloud, triangles);
  cloud.clear();
  for (int i = 0; i < 5000; ++i) cloud.insert(cloud.end(), corners.begin(), corners.end());
  ASSERT_TRUE(hullOf(cloud, triangles));
  EXPECT_EQ(verticesOf(cloud, triangles), corners);
  EXPECT_EQ(triangles.size(), 12U);
}

TYPED_TEST(ConvexHull3d, SaysWhatPointsWithoutAHullSpan) {
  Triangles triangles;
  const auto messageOf = [&](const Cloud<TypeParam>& cloud) { return hullOf(cloud, triangles).getMessage(); };
  const std::string start = "Convex hull of points in space: four points that do not lie in one plane are needed, ";
  EXPECT_EQ(messageOf({}), start + "0 points given");
  EXPECT_EQ(messageOf({{1, 2, 3}}), start + "1 point given");
  EXPECT_EQ(messageOf({{1, 2, 3}, {4, 5, 6}, {7, 8, 10}}), start + "3 points given");
  EXPECT_EQ(messageOf(Cloud<TypeParam>(100000, {1, 2, 3})), start + "100000 points given, all equal");
  EXPECT_EQ(messageOf({{1, 2, 3}, {2, 3, 4}, {5, 6, 7}, {9, 10, 11}}), start + "4 points given, all on one line");
  EXPECT_EQ(messageOf({{1, 2, 3}, {2, 3, 5}, {5, 6, 11}, {9, 0, 9}}), start + "4 points given, all in one plane");
  EXPECT_TRUE(triangles.empty());
}

TEST(ConvexHull3dRange, CoversAllFiniteNumbersAndNamesTheFirstPointThatIsNone) {
  for (const omReal64 unit :
       {std::numeric_limits<omReal64>::max(), std::numeric_limits<omReal64>::denorm_min(), 1e-250}) {
    const Cloud<omReal64> octahedron{{unit, 0, 0},  {0, unit, 0},  {0, 0, unit}, {0, 0, 0},
                                     {-unit, 0, 0}, {0, -unit, 0}, {0, 0, -unit}};
    Triangles triangles;
    ASSERT_TRUE(hullOf(octahedron, triangles)) << unit;
    expectHull(octahedron, triangles);
    EXPECT_EQ(triangles.size(), 8U) << unit;
  }
  for (const omReal64 bad : {support::s_nan, -support::s_infinity}) {
    Triangles triangles;
    const BoolResult result = hullOf<omReal64>({{0, 0, 0}, {1, 0, 0}, {0, bad, 0}, {bad, 0, 1}, {1, 1, 1}}, triangles);
    EXPECT_FALSE(result);
    EXPECT_EQ(result.getMessage(),
              "Convex hull of points in space: point 2 has a coordinate that is not a finite number");
  }
}

}  // namespace
}  // namespace ormix
