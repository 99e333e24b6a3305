#include <ORMIXGeometry/Entity/3d/Mesh/MeshWalks.h>
#include <ORMIXGeometry/Tools/MeshSimplification/MeshSimplification.h>
#include <ORMIXMath/Distance/TrianglesMeet.h>
#include <ORMIXMath/Shape/TriangleMesh.h>
#include <gtest/gtest.h>

#include <support/Random.h>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <vector>

using namespace ormix;
using namespace ormix::geom;

namespace {

using Mesh = Mesh3d<omReal64>;
using Soup = FaceVertexTriMesh3d<omReal64>;

/// A grid of n × m quads, each of two triangles, closed around where said, over (i, j) -> point.
template <class T = omReal64>
Mesh3d<T> gridMesh(omUInt32 n, omUInt32 m, bool isRound, bool isTorus,
                   const std::function<Point3dData<T>(omUInt32, omUInt32)>& at) {
  const omUInt32 columns = isRound ? n : n + 1;
  const omUInt32 rows = isTorus ? m : m + 1;
  typename Mesh3d<T>::VertexColl vertices;
  for (omUInt32 j = 0; j < rows; ++j)
    for (omUInt32 i = 0; i < columns; ++i) vertices.push_back(at(i, j));
  typename Mesh3d<T>::IndexColl indices;
  for (omUInt32 j = 0; j < m; ++j)
    for (omUInt32 i = 0; i < n; ++i) {
      const omUInt32 a = j * columns + i, b = j * columns + (i + 1) % columns;
      const omUInt32 c = (j + 1) % rows * columns + (i + 1) % columns, d = (j + 1) % rows * columns + i;
      indices.insert(indices.end(), {a, b, c, a, c, d});
    }
  Mesh3d<T> mesh;
  EXPECT_TRUE(mesh.build(std::move(vertices), std::move(indices)));
  return mesh;
}

Mesh torus(support::Random& random, omUInt32 n, omReal64 noise) {
  return gridMesh<omReal64>(2 * n, n, true, true, [&](omUInt32 i, omUInt32 j) {
    const omReal64 u = i * M_PI / n, v = 2 * M_PI * j / n, r = 2 + std::cos(v) * 0.8 + noise * random.uniform();
    return Point3dData<omReal64>(r * std::cos(u), r * std::sin(u), 0.8 * std::sin(v) + noise * random.uniform());
  });
}

/// A terrain with a step, which is open.
template <class T = omReal64>
Mesh3d<T> terrain(support::Random& random, omUInt32 n, omReal64 noise, omReal64 scale = 1) {
  return gridMesh<T>(n, n, false, false, [&](omUInt32 i, omUInt32 j) {
    const omReal64 z = 5 + noise * random.uniform() + (2 * i > n ? 3 : 0);
    return Point3dData<T>(static_cast<T>(scale * i), static_cast<T>(scale * j), static_cast<T>(scale * z));
  });
}

/// The cube [0, 1]³ with n × n quads a face.
Mesh cube(omUInt32 n) {
  std::map<std::array<omUInt32, 3>, omUInt32> numbers;
  Mesh::VertexColl vertices;
  Mesh::IndexColl indices;
  const auto corner = [&](std::array<omUInt32, 3> p) {
    const auto found = numbers.emplace(p, static_cast<omUInt32>(vertices.size()));
    if (found.second) vertices.emplace_back(p[0] * 1.0 / n, p[1] * 1.0 / n, p[2] * 1.0 / n);
    return found.first->second;
  };
  for (std::size_t axis = 0; axis < 3; ++axis)
    for (const omUInt32 side : {0u, n})
      for (omUInt32 i = 0; i < n; ++i)
        for (omUInt32 j = 0; j < n; ++j) {
          omUInt32 quad[4];
          for (omUInt32 k = 0; k < 4; ++k) {
            std::array<omUInt32, 3> p{};
            p[axis] = side;
            p[(axis + 1) % 3] = i + (k == 1 || k == 2 ? 1 : 0);
            p[(axis + 2) % 3] = j + (k >= 2 ? 1 : 0);
            quad[k] = corner(p);
          }
          if (side == 0) std::swap(quad[1], quad[3]);
          indices.insert(indices.end(), {quad[0], quad[1], quad[2], quad[0], quad[2], quad[3]});
        }
  Mesh mesh;
  EXPECT_TRUE(mesh.build(std::move(vertices), std::move(indices)));
  return mesh;
}

template <class T>
long euler(const Mesh3d<T>& mesh) {
  return static_cast<long>(mesh.getNbVertices() + mesh.getNbTriangles()) - static_cast<long>(mesh.getNbEdges());
}
omReal64 volumeOf(const Mesh& mesh) { return meshLocalVolume<omReal64>(TriMesh3d<omReal64>(mesh)); }
omReal64 areaOf(const Mesh& mesh) { return meshArea<omReal64>(TriMesh3d<omReal64>(mesh)); }

/// The number of pairs of triangles that intersect.
std::size_t countIntersections(const Mesh& mesh) {
  std::vector<SpatialTriangle> triangles;
  visitTriangles(mesh, [&](const auto& a, const auto& b, const auto& c) {
    const auto point = [](const auto& p) { return SpatialPoint{p.getX(), p.getY(), p.getZ()}; };
    triangles.push_back({point(a), point(b), point(c)});
  });
  const omUInt32* corners = mesh.getVertexIndexColl().data();
  const auto numbers = [corners](std::size_t i) {
    return TriangleCorners{corners[3 * i], corners[3 * i + 1], corners[3 * i + 2]};
  };
  std::size_t nb = 0;
  for (std::size_t i = 0; i < triangles.size(); ++i)
    for (std::size_t k = 0; k < i; ++k)
      nb += trianglesCrossBeyondShared(triangles[i], numbers(i), triangles[k], numbers(k)) ? 1 : 0;
  return nb;
}

MeshSimplificationOptions toTriangles(std::size_t nb) {
  MeshSimplificationOptions options;
  options.nbTriangles = nb;
  return options;
}

/// The options by the bits of a number.
MeshSimplificationOptions optionsOf(omUInt32 bits, std::size_t nbTriangles) {
  MeshSimplificationOptions options = toTriangles(nbTriangles);
  options.isMemoryless = (bits & 1) != 0;
  options.keepsVolume = (bits & 2) != 0;
  options.placement = (bits & 6) == 4 ? eCP_Ends : eCP_Best;
  options.avoidsIntersections = (bits & 8) != 0;
  if ((bits & 16) != 0) options.featureAngle = 0.5;
  if ((bits & 32) != 0) options.boundaryTolerance = 0.3;
  return options;
}

}  // namespace

TEST(MeshSimplification, KeepsTopologyAndReportsWhatItDid) {
  support::Random random(15);
  for (omUInt32 bits = 0; bits < 64; bits += 1 + random.below(3)) {
    const bool isClosed = random.below(2) == 0;
    const omReal64 noise = random.below(2) * 0.05;
    const Mesh before = isClosed ? torus(random, 16, noise) : terrain(random, 20, noise);
    Mesh after = before;
    MeshSimplificationReport report;
    ASSERT_TRUE(MeshSimplification<omReal64>::simplify(after, optionsOf(bits, 200), &report)) << bits;
    EXPECT_TRUE(after.checkIntegrity()) << bits;
    EXPECT_EQ(after.isClosed(), isClosed) << bits;
    EXPECT_EQ(euler(after), euler(before)) << bits;
    EXPECT_EQ(getNbBoundaryLoops(after.getTopology()), getNbBoundaryLoops(before.getTopology())) << bits;
    EXPECT_EQ(report.nbTrianglesBefore, before.getNbTriangles());
    EXPECT_EQ(report.nbTrianglesAfter, after.getNbTriangles());
    EXPECT_LT(after.getNbTriangles(), before.getNbTriangles() * 9 / 10) << bits;
    EXPECT_NEAR(report.areaAfter, areaOf(after), 1e-12 * report.areaAfter);
    EXPECT_LT(report.toInput.greatest, 1.5) << bits;
    EXPECT_LE(report.toInput.mean, report.toInput.greatest);
    EXPECT_LT(report.fromInput.greatest, 2) << bits;
    if (isClosed && (bits & 2) != 0) {
      EXPECT_NEAR(volumeOf(after), volumeOf(before), 1e-12 * volumeOf(before)) << bits;
    }
    if ((bits & 8) != 0) {
      EXPECT_LE(countIntersections(after), countIntersections(before)) << bits;
    }
    // A terrain has no overhangs before, and no triangle that is turned after.
    if (!isClosed)
      visitTriangles(after, [&](const auto& a, const auto& b, const auto& c) {
        EXPECT_GT((b.getX() - a.getX()) * (c.getY() - a.getY()) - (b.getY() - a.getY()) * (c.getX() - a.getX()), -1e-9)
            << bits;
      });
    Mesh again = before;
    ASSERT_TRUE(MeshSimplification<omReal64>::simplify(again, optionsOf(bits, 200)));
    EXPECT_TRUE(compare(again, after, 0.0)) << bits;
  }
}

TEST(MeshSimplification, CubeOfManyTrianglesBecomesOneOfTwelve) {
  for (const omUInt32 n : {1u, 2u, 5u, 9u})
    for (omUInt32 bits = 0; bits < 16; ++bits) {
      Mesh mesh = cube(n);
      MeshSimplificationOptions options = optionsOf(bits, 0);
      options.nbTriangles.reset();
      options.maxError = 1e-9;
      MeshSimplificationReport report;
      ASSERT_TRUE(MeshSimplification<omReal64>::simplify(mesh, options, &report));
      EXPECT_EQ(mesh.getNbTriangles(), 12u) << n << " " << bits;
      EXPECT_EQ(volumeOf(mesh), 1) << n << " " << bits;
      EXPECT_LT(report.greatestError, 1e-12);
      EXPECT_LT(report.toInput.greatest + report.fromInput.greatest, 1e-15);
    }
}

TEST(MeshSimplification, BoundariesLocksErrorsAndFeaturesStayWithinTheirLimits) {
  support::Random random(16);
  const Mesh before = terrain(random, 30, 0.02);
  MeshSimplificationOptions options = toTriangles(2);
  options.boundaryTolerance = 0.01;
  options.lockedVertices = {40, 100, 333};
  options.maxError = 0.05;
  MeshSimplificationReport report;
  Mesh after = before;
  ASSERT_TRUE(MeshSimplification<omReal64>::simplify(after, options, &report));
  EXPECT_LT(after.getNbTriangles(), 1500u);
  EXPECT_LE(report.greatestError, 0.05);
  EXPECT_GT(report.nbRefusals[eCR_Boundary] + report.nbRefusals[eCR_Error], 0u);
  for (const omUInt32 locked : options.lockedVertices) {
    omReal64 nearest = 1;
    for (const auto& vertex : after.getVertexColl())
      nearest = std::min(nearest, std::abs(vertex.getX() - before.getVertex(locked).getX()) +
                                      std::abs(vertex.getY() - before.getVertex(locked).getY()) +
                                      std::abs(vertex.getZ() - before.getVertex(locked).getZ()));
    EXPECT_EQ(nearest, 0) << locked;
  }
  // The boundary runs around the square at heights of 5 and 8, the corners in it.
  for (const auto& halfEdge : after.getHalfEdgeColl()) {
    if (halfEdge.oppositeHalfEdgeIdx != s_noHalfEdge) continue;
    const auto& p = after.getVertex(halfEdge.startVertexIdx);
    const omReal64 inside = std::min(std::min(p.getX(), 30 - p.getX()), std::min(p.getY(), 30 - p.getY()));
    EXPECT_LT(std::abs(inside), 0.01 + 1e-9);
  }
  // Without noise the step is a feature, and nothing else is left but what bounds it.
  Mesh step = terrain(random, 30, 0);
  options = toTriangles(0);
  options.maxError = 1e-6;
  options.featureAngle = 0.5;
  ASSERT_TRUE(MeshSimplification<omReal64>::simplify(step, options));
  EXPECT_EQ(step.getNbTriangles(), 6u);
}

TEST(MeshSimplification, AllKindsOfCoordinatesAreRoundedWithoutTurns) {
  support::Random random(17);
  const auto check = [&](auto type) {
    using T = decltype(type);
    Mesh3d<T> mesh = terrain<T>(random, 20, 0.1, 1000);
    MeshSimplificationReport report;
    ASSERT_TRUE(MeshSimplification<T>::simplify(mesh, toTriangles(100), &report));
    EXPECT_LE(mesh.getNbTriangles(), 100u);
    EXPECT_TRUE(mesh.checkIntegrity());
    EXPECT_LT(report.toInput.mean, 100);
    visitTriangles(mesh, [&](const auto& a, const auto& b, const auto& c) {
      const auto d = [](T p, T q) { return static_cast<omReal64>(p) - static_cast<omReal64>(q); };
      EXPECT_GE(d(b.getX(), a.getX()) * d(c.getY(), a.getY()) - d(b.getY(), a.getY()) * d(c.getX(), a.getX()), 0);
    });
  };
  check(omInt32{});
  check(omUInt32{});
  check(omReal32{});
  check(omReal64{});
}

TEST(MeshSimplification, FailsWithoutAChange) {
  support::Random random(18);
  const Mesh before = torus(random, 40, 0.01);
  const auto fails = [&](const MeshSimplificationOptions& options, const char* text) {
    Mesh mesh = before;
    MeshSimplificationReport report;
    const BoolResult result = MeshSimplification<omReal64>::simplify(mesh, options, &report);
    EXPECT_FALSE(result) << text;
    EXPECT_NE(result.getMessage().find(text), std::string::npos) << result.getMessage();
    EXPECT_TRUE(compare(mesh, before, 0.0)) << text;
    EXPECT_EQ(report.nbTrianglesBefore, 0u) << text;
  };
  constexpr omReal64 nan = std::numeric_limits<omReal64>::quiet_NaN();
  fails({}, "nbTriangles or maxError");
  MeshSimplificationOptions options = toTriangles(100);
  options.maxError = nan;
  fails(options, "maxError");
  options = toTriangles(100);
  options.boundaryTolerance = -1;
  fails(options, "boundaryTolerance");
  options = toTriangles(100);
  options.keepsVolume = true;
  options.placement = eCP_Ends;
  fails(options, "keepsVolume");
  options = toTriangles(100);
  options.lockedVertices = {static_cast<omUInt32>(before.getNbVertices())};
  fails(options, "lockedVertices");
  for (const omReal64 limit : {0.0, 0.5, 0.95}) {
    omReal64 last = 0;
    options = toTriangles(100);
    options.progress = [&](omReal64 fraction) {
      EXPECT_GE(fraction, last);
      last = fraction;
      return fraction < limit;
    };
    fails(options, "progress");
  }
  Mesh mesh = before;
  mesh.setVertex(7, {0, nan, 0});
  EXPECT_EQ(MeshSimplification<omReal64>::simplify(mesh, toTriangles(100)).getMessage(),
            "Simplification of meshes: vertex 7 is not finite, or beyond 2^1020");
}

TEST(MeshSimplification, HostileMeshes) {
  std::map<std::string, Soup> soups;
  const auto add = [&](const char* name, std::vector<Point3dData<omReal64>> vertices,
                       std::vector<IndexTriangle> triangles) {
    ASSERT_TRUE(soups[name].build(std::move(vertices), std::move(triangles))) << name;
  };
  add("empty", {}, {});
  add("points", {{0, 0, 0}, {1, 0, 0}}, {});
  add("triangle", {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}});
  add("one point", {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, {{0, 1, 2}, {0, 2, 1}});
  add("equal corners", {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 0, 2}, {0, 1, 2}, {1, 1, 1}});
  add("tetrahedron", {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {2, 0, 3}});
  constexpr omReal64 huge = 0x1p1020;
  add("huge", {{-huge, 0, 0}, {huge, 0, 0}, {0, huge, 0}, {0, 0, huge}}, {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {2, 0, 3}});
  for (const omUInt32 nb : {500u, 100000u}) {
    std::vector<Point3dData<omReal64>> vertices{{0, 0, 0}, {0, 0, 1}};
    std::vector<IndexTriangle> fan, book;
    for (omUInt32 i = 0; i < nb; ++i) {
      const omReal64 angle = 2 * M_PI * i / nb;
      vertices.emplace_back(std::cos(angle), std::sin(angle), 0);
      fan.push_back({0, i + 2, (i + 1) % nb + 2});
      fan.push_back({1, (i + 1) % nb + 2, i + 2});
      book.push_back({0, 1, i + 2});
    }
    add(nb == 500 ? "fan" : "large fan", vertices, fan);
    add(nb == 500 ? "book" : "large book", vertices, book);
  }
  std::vector<Point3dData<omReal64>> vertices;
  std::vector<IndexTriangle> strip;
  for (omUInt32 i = 0; i < 3000; ++i)
    for (const int side : {-1, 1}) {
      const omReal64 angle = 2 * M_PI * i / 3000, r = 3 + side * std::cos(angle / 2);
      vertices.emplace_back(r * std::cos(angle), r * std::sin(angle), side * std::sin(angle / 2));
      const omUInt32 a = 2 * i + (side > 0 ? 1 : 0);
      // The last quad is joined with the first one's sides exchanged.
      const omUInt32 b = i < 2999 ? 2 * i + 2 : 1, c = i < 2999 ? 2 * i + 3 : 0;
      strip.push_back(side < 0 ? IndexTriangle{a, b, a + 1} : IndexTriangle{a, b, c});
    }
  add("Möbius strip", vertices, strip);
  support::Random random(19);
  vertices.clear();
  std::vector<IndexTriangle> any;
  for (int i = 0; i < 60; ++i) vertices.emplace_back(random.uniform(), random.uniform(), random.uniform());
  for (int i = 0; i < 500; ++i) any.push_back({random.below(60), random.below(60), random.below(60)});
  add("any", vertices, any);
  for (auto& [name, before] : soups)
    for (const omUInt32 bits : {0u, 3u, 8u, 63u}) {
      if (bits > 0 && before.getNbTriangles() > 50000) continue;
      Soup soup = before;
      MeshSimplificationReport report;
      MeshSimplificationOptions options = optionsOf(bits, 10);
      options.measuresDistances = before.getNbTriangles() < 50000;
      ASSERT_TRUE(MeshSimplification<omReal64>::simplify(soup, options, &report)) << name;
      EXPECT_TRUE(soup.checkIntegrity()) << name;
      EXPECT_EQ(report.nbTrianglesAfter, soup.getNbTriangles()) << name;
      for (const auto& vertex : soup.getVertexColl())
        EXPECT_TRUE(std::isfinite(vertex.getX()) && std::isfinite(vertex.getY()) && std::isfinite(vertex.getZ()))
            << name;
      if (name == "Möbius strip" || name == "large fan") {
        EXPECT_LE(soup.getNbTriangles(), 1000u) << name;
      }
      EXPECT_TRUE(compare(soup, before, 0.0) || (name != "tetrahedron" && name != "triangle" && name != "book"))
          << name;
    }
}

TEST(MeshSimplification, SheetsThatLieCloseDoNotCross) {
  // Two waves, one above the other by less than what a collapse to few triangles changes.
  const auto waves = [](omReal64 height) {
    return gridMesh<omReal64>(30, 10, false, false, [height](omUInt32 i, omUInt32 j) {
      return Point3dData<omReal64>(i, j, 3 * std::sin(0.4 * i) + height * (2 + std::sin(i * 1.7 + j)));
    });
  };
  const Mesh lower = waves(0), upper = waves(0.05);
  Mesh::VertexColl vertices = lower.getVertexColl();
  Mesh::IndexColl indices = lower.getVertexIndexColl();
  for (const omUInt32 i : upper.getVertexIndexColl()) indices.push_back(i + static_cast<omUInt32>(vertices.size()));
  vertices.insert(vertices.end(), upper.getVertexColl().begin(), upper.getVertexColl().end());
  Mesh before, free, apart;
  ASSERT_TRUE(before.build(vertices, indices));
  free = apart = before;
  ASSERT_EQ(countIntersections(before), 0u);
  ASSERT_TRUE(MeshSimplification<omReal64>::simplify(free, optionsOf(0, 150)));
  MeshSimplificationReport report;
  ASSERT_TRUE(MeshSimplification<omReal64>::simplify(apart, optionsOf(8, 150), &report));
  EXPECT_GT(countIntersections(free), 0u);
  EXPECT_EQ(countIntersections(apart), 0u);
  EXPECT_GT(report.nbRefusals[eCR_Intersection], 0u);
  EXPECT_LT(apart.getNbTriangles(), 600u);
}

TEST(MeshSimplification, FansThatMeetInAVertexStayTogether) {
  // Two cubes with a corner in common.
  const Mesh one = cube(4);
  Mesh::VertexColl vertices = one.getVertexColl();
  Mesh::IndexColl indices = one.getVertexIndexColl();
  const omUInt32 nb = static_cast<omUInt32>(vertices.size());
  std::vector<omUInt32> numbers;
  for (omUInt32 i = 0; i < nb; ++i) {
    const auto p = vertices[i];
    omUInt32 number = static_cast<omUInt32>(vertices.size());
    if (p.getX() + p.getY() + p.getZ() == 0)
      for (omUInt32 k = 0; k < nb; ++k)
        number = vertices[k].getX() + vertices[k].getY() + vertices[k].getZ() == 3 ? k : number;
    else
      vertices.emplace_back(p.getX() + 1, p.getY() + 1, p.getZ() + 1);
    numbers.push_back(number);
  }
  for (std::size_t i = 0, n = indices.size(); i < n; ++i) indices.push_back(numbers[indices[i]]);
  Mesh mesh;
  ASSERT_TRUE(mesh.build(vertices, indices));
  MeshSimplificationReport report;
  ASSERT_TRUE(MeshSimplification<omReal64>::simplify(mesh, toTriangles(0), &report));
  EXPECT_TRUE(mesh.checkIntegrity());
  EXPECT_TRUE(mesh.isClosed());
  EXPECT_EQ(getNbComponents(mesh.getTopology()), 2u);
  EXPECT_EQ(report.nbTrianglesAfter, 8u);
  EXPECT_EQ(mesh.getNbVertices(), 7u);
}
