#include <ORMIXMath/Enclosing/SmallestBall.h>
#include <ORMIXMath/Scalar/EuclideanNorm.h>
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "../Distance/DistanceOracle.h"
#include "support/Checks.h"

namespace ormix {
namespace {

using oracle::Exact;
using ExactVector = std::vector<Exact>;

Exact dot(const ExactVector& a, const ExactVector& b) {
  Exact sum = 0;
  for (std::size_t d = 0; d < a.size(); ++d) sum += a[d] * b[d];
  return sum;
}

/// The centre, relative to the first point of a subset, with equal distances to all its points, in their affine hull;
/// empty where they depend on each other.
ExactVector centerOf(const std::vector<ExactVector>& edges) {
  const std::size_t n = edges.size();
  std::vector<ExactVector> rows(n, ExactVector(n + 1));
  Exact largest = 0;
  for (const ExactVector& edge : edges) largest = std::max(largest, dot(edge, edge));
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j) rows[i][j] = dot(edges[i], edges[j]);
    rows[i][n] = rows[i][i] / 2;
  }
  for (std::size_t k = 0; k < n; ++k) {
    if (rows[k][k] <= Exact("1e-100") * largest) return {};
    for (std::size_t i = 0; i < n; ++i)
      if (i != k)
        for (std::size_t j = n + 1; j-- > k;) rows[i][j] -= rows[i][k] / rows[k][k] * rows[k][j];
  }
  ExactVector center(3, 0);
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t d = 0; d < edges[i].size(); ++d) center[d] += rows[i][n] / rows[i][i] * edges[i][d];
  return center;
}

/// The radius of the smallest ball by trying all subsets of up to four points.
omReal64 radiusByTrying(const std::vector<std::array<omReal64, 3>>& cloud) {
  Exact best = -1;
  for (unsigned subset = 1; subset < 1U << cloud.size(); ++subset) {
    if (__builtin_popcount(subset) > 4) continue;
    const auto base = static_cast<std::size_t>(__builtin_ctz(subset));
    const auto from = [&](std::size_t i) {
      return ExactVector{Exact(cloud[i][0]) - cloud[base][0], Exact(cloud[i][1]) - cloud[base][1],
                         Exact(cloud[i][2]) - cloud[base][2]};
    };
    std::vector<ExactVector> edges;
    for (std::size_t i = base + 1; i < cloud.size(); ++i)
      if (subset >> i & 1U) edges.push_back(from(i));
    const ExactVector center = centerOf(edges);
    if (center.empty()) continue;
    Exact square = 0;
    for (std::size_t i = 0; i < cloud.size(); ++i) {
      ExactVector to = from(i);
      for (std::size_t d = 0; d < 3; ++d) to[d] -= center[d];
      square = std::max(square, dot(to, to));
    }
    if (best < 0 || square < best) best = square;
  }
  return static_cast<omReal64>(sqrt(best));
}

template <std::size_t D>
void expectSmallest(const std::vector<std::array<omReal64, 3>>& cloud, omReal64 expected) {
  std::vector<omReal64> values;
  for (const auto& p : cloud) values.insert(values.end(), p.begin(), p.begin() + D);
  EnclosingBall<D> ball;
  if constexpr (D == 2)
    ASSERT_TRUE(smallestEnclosingCircle(values.data(), cloud.size(), ball));
  else
    ASSERT_TRUE(smallestEnclosingSphere(values.data(), cloud.size(), ball));
  omReal64 rounding = 0;
  for (const omReal64 value : ball.center) rounding += std::abs(value) * std::numeric_limits<omReal64>::epsilon();
  ASSERT_NEAR(ball.radius, expected, 1e-12 * expected + rounding);
  std::vector<std::array<omReal64, 3>> support;
  for (std::size_t i = 0; i < ball.nbSupport; ++i) support.push_back(cloud[ball.support[i]]);
  ASSERT_NEAR(radiusByTrying(support), expected, 1e-12 * expected);
  for (const auto& p : cloud)
    ASSERT_LE(D == 2 ? euclideanNorm(p[0] - ball.center[0], p[1] - ball.center[1])
                     : euclideanNorm(p[0] - ball.center[0], p[1] - ball.center[1], p[2] - ball.center[D - 1]),
              ball.radius);
}

// On grids, lines and spheres, several times the same, within 1e-14 of each other, far away, tiny and huge.
TEST(SmallestBall, IsThatOfAllSubsetsOnHostilePoints) {
  support::Random random(1403);
  for (int i = 0; i < 1200; ++i) {
    const bool isSpatial = i % 2 == 1;
    const auto kind = random.below(4);
    const omReal64 offset = std::array{0.0, 1e6, 1e9}[random.below(3)];
    const omReal64 size = offset > 0 ? 1 : std::array{1.0, 0x1p-30, 0x1p900, 0x1p-900}[random.below(4)];
    std::vector<std::array<omReal64, 3>> cloud(1 + random.below(isSpatial ? 6 : 8));
    for (auto& p : cloud) {
      for (omReal64& value : p) value = random.below(4);
      if (kind == 1) p = {p[0], 2 * p[0], 3 * p[0]};
      if (kind == 2) p = {p[0] + random.uniform() * 1e-14, random.uniform(), random.uniform() * 1e-14};
      if (kind == 3) {
        const omReal64 norm = euclideanNorm(p[0] - 1.5, p[1] - 1.5, isSpatial ? p[2] - 1.5 : 0.0);
        for (omReal64& value : p) value = (value - 1.5) / norm;
      }
      for (omReal64& value : p) value = offset + size * value;
      if (!isSpatial) p[2] = 0;
    }
    SCOPED_TRACE(testing::Message() << i << ": kind " << kind << ", offset " << offset << ", size " << size);
    auto unit = cloud;
    for (auto& p : unit)
      for (omReal64& value : p) value /= size;
    const omReal64 expected = radiusByTrying(unit) * size;
    if (isSpatial)
      ASSERT_NO_FATAL_FAILURE(expectSmallest<3>(cloud, expected));
    else
      ASSERT_NO_FATAL_FAILURE(expectSmallest<2>(cloud, expected));
  }
}

// Many points on the corners of a cube and inside, so that the sample and the blocks take part.
TEST(SmallestBall, IsFoundAmongManyIntegers) {
  support::Random random(1404);
  std::vector<omInt32> xyz;
  for (int i = 0; i < 5000; ++i)
    for (int d = 0; d < 3; ++d)
      xyz.push_back(random.below(2) ? 2147483647 - omInt32(random.below(2)) : -2147483647 + omInt32(random.below(9)));
  for (int d = 0; d < 6; ++d) xyz.push_back(d < 3 ? 2147483647 : -2147483648);
  EnclosingSphere ball;
  ASSERT_TRUE(smallestEnclosingSphere(xyz.data(), xyz.size() / 3, ball));
  EXPECT_NEAR(ball.radius, 4294967295 * std::sqrt(0.75), 1e-12 * ball.radius);
  EnclosingCircle circle;
  const std::vector<omReal32> bad{0, 0, 1, std::numeric_limits<omReal32>::infinity()};
  EXPECT_EQ(smallestEnclosingCircle(bad.data(), 2, circle).getMessage(),
            "Smallest circle around points: point 1 has a coordinate that is not a finite number");
  EXPECT_EQ(smallestEnclosingSphere(bad.data(), 0, ball).getMessage(),
            "Smallest sphere around points: at least one point is needed, 0 given");
}

}  // namespace
}  // namespace ormix
