#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Entity/3d/Mesh/QuickHull.h>
#include <ORMIXGeometry/Measure/3d/TriMeshMeasures.h>
#include <ORMIXGeometry/Tools/Mesh/Repair.h>
#include <ORMIXGeometry/Tools/Mesh/Shells.h>
#include <ORMIXGeometry/Tools/Mesh/Validation.h>
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "support/Random.h"

using namespace ormix;
using namespace ormix::geom;

namespace {

using Mesh = FaceVertexTriMesh3d<omReal64>;
using Triangles = std::vector<IndexTriangle>;

Mesh meshOf(std::vector<Point3dData<omReal64>> vertices, Triangles triangles) {
  Mesh mesh;
  EXPECT_TRUE(mesh.build(std::move(vertices), std::move(triangles)));
  return mesh;
}

void append(const Mesh& part, Mesh& mesh) {
  const std::size_t first = mesh.getNbVertices();
  for (const auto& vertex : part.getVertexColl()) mesh.addVertex(vertex);
  for (const IndexTriangle& t : part.getTriangleColl()) mesh.addTriangle(first + t[0], first + t[1], first + t[2]);
}

/// Halves of sums are exact on this grid, so that corners can lie on an edge exactly.
Point3dData<omReal64> onGrid(omReal64 x, omReal64 y, omReal64 z) {
  const auto rounded = [](omReal64 value) { return std::ldexp(std::round(std::ldexp(value, 20)), -20); };
  return {rounded(x), rounded(y), rounded(z)};
}

/// The hull of points on a sphere.
Mesh ball(support::Random& random, std::size_t nbPoints, omReal64 x = 0, omReal64 radius = 1) {
  std::vector<Point3dData<omReal64>> points;
  for (std::size_t at = 0; at < nbPoints; ++at) {
    const omReal64 a = random.noise(), b = random.noise(), c = random.noise(), size = std::hypot(a, b, c) / radius;
    points.push_back(onGrid(x + a / size, b / size, c / size));
  }
  Mesh3d<omReal64> hull;
  EXPECT_TRUE(quickHull(points, hull));
  return toFaceVertexTriMesh3d(hull);
}

/// A ring of n by m quadrilaterals, of which the last are joined to the first turned over where `isTwisted` says so.
Mesh torus(omUInt32 n, omUInt32 m, bool isTwisted = false) {
  std::vector<Point3dData<omReal64>> vertices;
  Triangles triangles;
  for (omUInt32 at = 0; at < n * m; ++at) {
    const omReal64 u = 6.283185307 * (at / m) / n, v = 6.283185307 * (at % m) / m;
    vertices.push_back(onGrid((2 + std::cos(v)) * std::cos(u), (2 + std::cos(v)) * std::sin(u), std::sin(v)));
  }
  for (omUInt32 i = 0; i < n; ++i)
    for (omUInt32 j = 0; j < m; ++j) {
      const auto index = [&](omUInt32 row, omUInt32 column) {
        const omUInt32 along = column % m;
        return row < n ? row * m + along : isTwisted ? (m - along) % m : along;
      };
      const omUInt32 a = index(i, j), b = index(i + 1, j), c = index(i + 1, j + 1), d = index(i, j + 1);
      triangles.push_back({a, b, c});
      triangles.push_back({a, c, d});
    }
  return meshOf(std::move(vertices), std::move(triangles));
}

/// A good mesh: a hull, a torus, two bodies side by side, or one with a cavity.
Mesh goodMesh(support::Random& random) {
  Mesh mesh =
      random.below(3) == 0 ? torus(5 + random.below(4), 4 + random.below(3)) : ball(random, 8 + random.below(30));
  if (random.below(3) == 0) append(ball(random, 8 + random.below(10), 10), mesh);
  if (random.below(4) == 0) {
    Mesh cavity = ball(random, 8 + random.below(10), 10, 0.2);
    cavity.reverseOrientation();
    append(ball(random, 40, 10), mesh);
    append(cavity, mesh);
  }
  return mesh;
}

/// Does one thing to a mesh that a good mesh does not have.
void damage(support::Random& random, Mesh& mesh) {
  auto vertices = mesh.getVertexColl();
  Triangles triangles = mesh.getTriangleColl();
  const auto anyVertex = [&] { return random.below(static_cast<omUInt32>(vertices.size())); };
  IndexTriangle& any = triangles[random.below(static_cast<omUInt32>(triangles.size()))];
  const IndexTriangle copy = any;
  switch (random.below(14)) {
    case 0:
      any = triangles.back(), triangles.pop_back();
      break;
    case 1:
      triangles.push_back({copy[1], copy[2], copy[0]});
      break;
    case 2:
      std::swap(any[0], any[1]);
      break;
    case 3:
      triangles.push_back({anyVertex(), anyVertex(), anyVertex()});
      break;
    case 4:
      triangles.push_back({copy[0], copy[1], anyVertex()});
      break;
    case 5:
      any[random.below(3)] = anyVertex();
      break;
    case 6:
      vertices.emplace_back(random.uniform(), random.uniform(), random.uniform());
      break;
    case 7:  // as in an STL file
      for (std::size_t at = 0; at < triangles.size(); ++at)
        for (omUInt32& corner : triangles[at]) {
          vertices.push_back(Point3dData<omReal64>(vertices[corner]));
          corner = static_cast<omUInt32>(vertices.size() - 1);
        }
      break;
    case 8:
      vertices.push_back(Point3dData<omReal64>(vertices[any[1]]));
      any[1] = static_cast<omUInt32>(vertices.size() - 1);
      break;
    case 9:
      vertices.emplace_back(std::nan(""), 0, 0);
      triangles.push_back({copy[0], copy[1], static_cast<omUInt32>(vertices.size() - 1)});
      break;
    case 10: {  // two vertices become one
      const omUInt32 from = anyVertex(), to = anyVertex();
      for (IndexTriangle& triangle : triangles)
        for (omUInt32& corner : triangle) corner = corner == from ? to : corner;
      break;
    }
    case 11:
    case 12: {  // a vertex on an edge, or at its end, that the triangle beyond does not have
      const auto &a = vertices[copy[0]], &b = vertices[copy[1]];
      const auto middle = onGrid((a.getX() + b.getX()) / 2, (a.getY() + b.getY()) / 2, (a.getZ() + b.getZ()) / 2);
      const auto added = static_cast<omUInt32>(vertices.size());
      vertices.push_back(random.below(4) == 0 ? Point3dData<omReal64>(a) : middle);
      any[1] = added;
      triangles.push_back({added, copy[1], copy[2]});
      if (random.below(2) == 0) triangles.push_back({copy[0], copy[1], added});
      break;
    }
    default:
      for (std::size_t at = triangles.size() / 2; at < triangles.size(); ++at)
        std::swap(triangles[at][1], triangles[at][2]);
  }
  mesh = meshOf(std::move(vertices), std::move(triangles));
}

/// What a good mesh does not have, but for self-intersections, as text.
std::string defectsOf(const Mesh& mesh) {
  MeshValidationOptions options;
  options.findsSelfIntersections = false;
  const MeshValidation found = validate(mesh, options);
  std::ostringstream text;
  text << found;
  return found.isClean() ? "" : text.str();
}

}  // namespace

TEST(Repair, randomDefectsAreRepairedAtOnce) {
  support::Random random(15);
  for (int round = 0; round < 2500; ++round) {
    Mesh mesh = goodMesh(random);
    for (omUInt32 nb = 1 + random.below(7); nb > 0; --nb) damage(random, mesh);
    RepairReport report, again;
    ASSERT_TRUE(repair(mesh, {}, report)) << round;
    ASSERT_EQ(defectsOf(mesh), "") << round;
    ASSERT_TRUE(report.isClosed) << round;
    const Mesh once = mesh;
    ASSERT_TRUE(repair(mesh, {}, again));
    ASSERT_TRUE(compare(mesh, once, 0)) << round;
    ASSERT_TRUE(again.log.empty()) << round << again.log.front();
    EXPECT_EQ(again.areaBefore, report.areaAfter);
    EXPECT_EQ(again.volumeAfter, report.volumeAfter);
  }
}

TEST(Repair, holesAreFilledAsTheSurfaceWas) {
  support::Random random(16);
  for (int round = 0; round < 100; ++round) {
    Mesh mesh = torus(30, 20);
    const omReal64 whole = volume(mesh);
    Triangles triangles = mesh.getTriangleColl();
    const std::size_t nbMissing = 1 + random.below(37);
    triangles.erase(triangles.begin(), triangles.begin() + static_cast<std::ptrdiff_t>(nbMissing));
    mesh = meshOf(mesh.getVertexColl(), triangles);
    RepairReport report;
    ASSERT_TRUE(repair(mesh, {}, report));
    EXPECT_EQ(defectsOf(mesh), "");
    EXPECT_EQ(report.nbFilledLoops, 1u);
    EXPECT_NEAR(report.volumeAfter, whole, 0.01 * whole) << nbMissing;
    EXPECT_TRUE(std::equal(triangles.begin(), triangles.end(), mesh.getTriangleColl().begin()));
  }
}

TEST(Repair, surfacesThatAreNoneOfABodyAreClosedOrSaid) {
  RepairReport report;
  Mesh bottle = torus(9, 8, true);
  ASSERT_TRUE(repair(bottle, {}, report));
  EXPECT_EQ(defectsOf(bottle), "");
  EXPECT_GT(report.nbCutEdges, 0u);

  Mesh strip;
  for (omUInt32 at = 0; at < 10; ++at) {
    const omReal64 u = 0.6283185307 * at, v = u / 2;
    for (const omReal64 width : {-0.4, 0.4})
      strip.addVertex(
          {(2 + width * std::cos(v)) * std::cos(u), (2 + width * std::cos(v)) * std::sin(u), width * std::sin(v)});
  }
  for (std::size_t at = 0; at < 10; ++at) {
    const std::size_t a = 2 * at, b = a + 1, c = at < 9 ? a + 2 : 1, d = at < 9 ? a + 3 : 0;
    strip.addTriangle(a, c, b);
    strip.addTriangle(b, c, d);
  }
  ASSERT_TRUE(repair(strip, {}, report));
  EXPECT_EQ(defectsOf(strip), "");
  EXPECT_EQ(report.nbCutEdges, 1u);

  Mesh one = meshOf({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}});
  ASSERT_TRUE(repair(one, {}, report));
  EXPECT_EQ(one.getNbTriangles(), 1u);
  EXPECT_FALSE(report.isClosed);
  EXPECT_EQ(report.log,
            std::vector<std::string>{"boundary loops left open, as each is the edge of a single triangle: 1"});

  Mesh book = meshOf({{0, 0, 0}, {0, 0, 1}}, {});
  for (std::size_t at = 0; at < 100000; ++at)
    book.addTriangle(0, 1, book.addVertex({1 + omReal64(at), omReal64(at * at), 0}));
  ASSERT_TRUE(repair(book, {}, report));
  EXPECT_EQ(defectsOf(book), "");

  Mesh empty;
  ASSERT_TRUE(repair(empty, {}, report));
  EXPECT_TRUE(empty.isEmpty() && report.isClosed && report.log.empty());
}

TEST(Repair, bodiesThatTouchStayApartAndCavitiesStayCavities) {
  // Two cubes that have an edge in common, once by its vertices and once by its coordinates only.
  const auto cube = [](omReal64 x, omReal64 y) {
    std::vector<Point3dData<omReal64>> corners;
    for (int at = 0; at < 8; ++at) corners.emplace_back(x + (at & 1), y + (at >> 1 & 1), at >> 2);
    Mesh3d<omReal64> hull;
    EXPECT_TRUE(quickHull(corners, hull));
    return toFaceVertexTriMesh3d(hull);
  };
  Mesh cubes = cube(0, 0);
  append(cube(1, 1), cubes);
  for (const bool isJoined : {false, true}) {
    Mesh mesh = cubes;
    if (isJoined) {
      Triangles triangles = cubes.getTriangleColl();
      for (IndexTriangle& triangle : triangles)
        for (omUInt32& corner : triangle)
          for (omUInt32 other = 0; other < 8; ++other)
            if (compare(cubes.getVertex(corner), cubes.getVertex(other), 0)) corner = other;
      mesh = meshOf(cubes.getVertexColl(), triangles);
    }
    RepairReport report;
    ASSERT_TRUE(repair(mesh, {}, report));
    EXPECT_EQ(defectsOf(mesh), "");
    EXPECT_EQ(mesh.getNbVertices(), 16u);
    EXPECT_EQ(findShells(mesh).shells.size(), 2u);
    EXPECT_NEAR(report.volumeAfter, 2, 1e-12);
    EXPECT_EQ(report.nbSeparatedEdges, isJoined ? 1u : 0u);
  }
  support::Random random(17);
  Mesh hollow = ball(random, 50);
  hollow.reverseOrientation();
  append(ball(random, 20, 0, 0.1), hollow);
  const omReal64 inverted = -volume(hollow);
  RepairReport report;
  ASSERT_TRUE(repair(hollow, {}, report));
  EXPECT_NEAR(report.volumeAfter, -inverted, 1e-12);
  EXPECT_EQ(report.nbTurned, hollow.getNbTriangles());
}

TEST(Repair, optionsChooseTheSteps) {
  const std::vector<Point3dData<omReal64>> corners{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1e-3, 0, 0}, {9, 9, 9}};
  // Open at one side, with a vertex a thousandth beside another, a triangle turned, one twice, and a vertex unused.
  const Mesh bad = meshOf(corners, {{0, 2, 1}, {4, 1, 3}, {0, 2, 3}, {0, 2, 3}});
  RepairReport report;
  RepairOptions options;
  options.tolerance = 0.01;
  Mesh mesh = bad;
  ASSERT_TRUE(repair(mesh, options, report));
  EXPECT_TRUE(compare(
      mesh, meshOf({corners[0], corners[1], corners[2], corners[3]}, {{0, 2, 1}, {0, 1, 3}, {0, 3, 2}, {3, 1, 2}}), 0))
      << mesh;
  EXPECT_EQ(report.nbMergedVertices, 1u);
  EXPECT_EQ(report.nbUnusedVertices, 1u);
  RepairOptions none;
  none.mergesVertices = none.dropsTriangles = none.orientsTriangles = none.splitsVertices = none.fillsLoops =
      none.dropsVertices = false;
  mesh = bad;
  ASSERT_TRUE(repair(mesh, none, report));
  EXPECT_TRUE(compare(mesh, bad, 0) && report.log.empty() && !report.isClosed);
  options.longestLoop = 2;
  ASSERT_TRUE(repair(mesh, options, report));
  EXPECT_EQ(report.nbFilledLoops, 0u);
  EXPECT_EQ(report.log.back(), "boundary loops left open, as they have more than 2 edges: 1");
  for (const omReal64 tolerance : {-1.0, std::nan("")}) {
    options.tolerance = tolerance;
    mesh = bad;
    EXPECT_FALSE(repair(mesh, options, report));
    EXPECT_TRUE(compare(mesh, bad, 0));
  }
  Mesh3d<omReal64> built;
  ASSERT_TRUE(repair(bad, built, {}, report));
  EXPECT_TRUE(built.isClosed() && built.checkIntegrity());
}
