#include <ORMIXGeometry/Tools/Distance/Hausdorff3d.h>

#include <cmath>
#include <map>

#include "support/Random.h"
#include "support/SampleObjects.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

using P = Point3dData<omReal64>;
using Mesh = Mesh3d<omReal64>;

/// A sphere of triangles: an octahedron whose triangles are cut in four so many times.
Mesh sphere(const P& center, omReal64 radius, int nbTimes) {
  std::vector<P> points{{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}};
  std::vector<omUInt32> indices{0, 2, 4, 2, 1, 4, 1, 3, 4, 3, 0, 4, 2, 0, 5, 1, 2, 5, 3, 1, 5, 0, 3, 5};
  for (int time = 0; time < nbTimes; ++time) {
    std::map<std::pair<omUInt32, omUInt32>, omUInt32> middles;
    const auto middle = [&](omUInt32 a, omUInt32 b) {
      const auto [at, isNew] = middles.try_emplace(std::minmax(a, b), omUInt32(points.size()));
      if (isNew) {
        const P sum = points[a] + points[b];
        points.push_back(1 / std::hypot(sum.getX(), sum.getY(), sum.getZ()) * sum);
      }
      return at->second;
    };
    std::vector<omUInt32> finer;
    for (std::size_t i = 0; i < indices.size(); i += 3) {
      const omUInt32 a = indices[i], b = indices[i + 1], c = indices[i + 2];
      const omUInt32 ab = middle(a, b), bc = middle(b, c), ca = middle(c, a);
      for (const omUInt32 v : {a, ab, ca, ab, b, bc, ca, bc, c, ab, bc, ca}) finer.push_back(v);
    }
    indices = finer;
  }
  for (P& p : points) p = center + radius * p;
  Mesh mesh;
  mesh.build(points, indices);
  return mesh;
}

/// A wavy sheet over the unit square of n × n squares.
Mesh sheet(std::size_t n, omReal64 height, support::Random& random) {
  std::vector<P> points;
  std::vector<omUInt32> indices;
  for (std::size_t i = 0; i <= n; ++i)
    for (std::size_t k = 0; k <= n; ++k)
      points.emplace_back(omReal64(i) / omReal64(n), omReal64(k) / omReal64(n), height * random.uniform());
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t k = 0; k < n; ++k) {
      const auto a = omUInt32(i * (n + 1) + k), b = a + 1, c = omUInt32(a + n + 1), d = c + 1;
      indices.insert(indices.end(), {a, c, b, b, c, d});
    }
  Mesh mesh;
  mesh.build(points, indices);
  return mesh;
}

void expectInterval(const HausdorffBounds& bounds, omReal64 value, omReal64 tolerance) {
  EXPECT_LE(bounds.lower, value + 1e-12);
  EXPECT_GE(bounds.upper, value - 1e-12);
  EXPECT_LE(bounds.upper - bounds.lower, tolerance + 1e-11);
  EXPECT_TRUE(bounds.isComplete);
  const P way = bounds.to - bounds.from;
  EXPECT_NEAR(std::hypot(way.getX(), way.getY(), way.getZ()), bounds.lower, 1e-12);
}

TEST(Hausdorff3d, IsThatOfKnownShapes) {
  HausdorffOptions options;
  options.relativeTolerance = 1e-4;
  // A box shifted along an axis and a diagonal: from one corner or side, not as far as the shift where they overlap.
  const BoundingBox3d<omReal64> box(0, 0, 0, 1, 2, 3);
  const auto shifted = [](omReal64 x, omReal64 y, omReal64 z) {
    return BoundingBox3d<omReal64>(x, y, z, 1 + x, 2 + y, 3 + z);
  };
  expectInterval(hausdorff(box, shifted(0.25, 0, 0), options), 0.25, 1e-4);
  expectInterval(hausdorff(box, shifted(3, 4, 12), options), 13, 13e-4);
  // A small box in the middle of a large one: the distance of its boundary is taken in the middle of the large one's
  // sides from inside, or at a corner from outside.
  const BoundingBox3d<omReal64> inner(4, 4, 4, 6, 6, 6), outer(0, 0, 0, 10, 10, 10);
  expectInterval(directedHausdorff(inner, outer, options), 4, 4e-4);
  expectInterval(directedHausdorff(outer, inner, options), std::sqrt(48.0), 7e-4);
  // Spheres of triangles about one centre: the radii of a corner and of the middle of the other's largest triangle.
  const HausdorffBounds spheres = hausdorff(sphere({5, 5, 5}, 2, 4), sphere({5, 5, 5}, 1, 4), options);
  EXPECT_NEAR(spheres.lower, 1, 0.01);
  expectInterval(spheres, spheres.lower, 1e-4 * spheres.lower);
  // What is equal, or the same surface with other triangles, is nowhere apart.
  const HausdorffBounds same = hausdorff(sphere({0, 0, 0}, 1, 3), sphere({0, 0, 0}, 1, 3), options);
  EXPECT_LE(same.lower, 1e-15);
  EXPECT_LE(same.upper, 1e-9);
  support::Random random(3);
  expectInterval(hausdorff(sheet(7, 0, random), sheet(12, 0, random), options), 0, 2e-9);
  // Points and segments.
  const PointCloud3d<omReal64> cloud(std::vector<P>{{0, 0, 0}, {4, 0, 0}});
  expectInterval(directedHausdorff(Segment3d<omReal64>(0, 1, 0, 4, 1, 0), cloud, options), std::sqrt(5.0), 1e-3);
  expectInterval(directedHausdorff(cloud, Segment3d<omReal64>(0, 1, 0, 3, 1, 0), options), std::sqrt(2.0), 0);
}

TEST(Hausdorff3d, BoundsWhatIsSampledAndDecidesLimits) {
  support::Random random(11);
  for (int i = 0; i < 4; ++i) {
    const Mesh coarse = sheet(3 + std::size_t(i), 0.2, random), fine = sheet(17, 0.05, random);
    const PreparedEntity3d a(i % 2 == 0 ? coarse : fine), b(i % 2 == 0 ? fine : coarse);
    omReal64 sampled = 0;
    visitTriangles(i % 2 == 0 ? coarse : fine, [&](const P& p0, const P& p1, const P& p2) {
      for (int u = 0; u <= 4; ++u)
        for (int v = 0; u + v <= 4; ++v) {
          const P p = p0 + u / 4.0 * (p1 - p0) + v / 4.0 * (p2 - p0);
          sampled = std::max(sampled, distance(PreparedEntity3d(Point3d<omReal64>(p)), b));
        }
    });
    const HausdorffBounds bounds = directedHausdorff(a, b);
    EXPECT_GE(bounds.upper, sampled);
    EXPECT_LE(bounds.lower, sampled + 0.1);
    expectInterval(bounds, bounds.lower, 0.01 * bounds.lower);
    EXPECT_GE(hausdorff(a, b).lower, bounds.lower * 0.99);

    EXPECT_TRUE(isWithinDirectedHausdorff(a, b, bounds.upper * 1.01));
    HausdorffBounds found;
    EXPECT_FALSE(isWithinDirectedHausdorff(a, b, bounds.lower * 0.5, {}, &found));
    EXPECT_GT(found.lower, bounds.lower * 0.5);
    // Without effort the bounds are wide, and right.
    HausdorffOptions poor;
    poor.maxNbSearches = 5;
    const HausdorffBounds wide = directedHausdorff(a, b, poor);
    EXPECT_FALSE(wide.isComplete);
    EXPECT_LE(wide.nbSearches, 5U);
    EXPECT_LE(wide.lower, bounds.upper);
    EXPECT_GE(wide.upper, bounds.lower);
    poor = {};
    poor.progress = [](omReal64) { return false; };
    EXPECT_FALSE(directedHausdorff(a, b, poor).isComplete);
  }
}

TEST(Hausdorff3d, ScalesWithTheCoordinatesAndRefusesWhatHasNoFacets) {
  for (const omReal64 unit : {0x1p-1000, 0x1p-300, 0x1p300, 0x1p1000}) {
    const BoundingBox3d<omReal64> a(0, 0, 0, unit, unit, unit), b(0, 0, 0, 3 * unit, unit, unit);
    EXPECT_EQ(hausdorff(a, b).lower, 2 * unit);
  }
  EXPECT_THROW(hausdorff(Sphere3d<omReal64>({0, 0, 0}, 1), Point3d<omReal64>()), ORMIXGeometryException);
  EXPECT_THROW(hausdorff(Point3d<omReal64>(), Plan3d()), ORMIXGeometryException);
}

}  // namespace
