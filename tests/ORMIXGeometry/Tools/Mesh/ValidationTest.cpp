#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Entity/3d/Mesh/QuickHull.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Mesh/SelfIntersections.h>
#include <ORMIXGeometry/Tools/Mesh/Validation.h>
#include <ORMIXGeometry/Tools/Stl/TriangleDefects.h>
#include <ORMIXMath/Distance/Orientation3d.h>
#include <ORMIXMath/Distance/TrianglesMeet.h>

#include <cmath>
#include <functional>
#include <limits>
#include <set>

#include "ORMIXGeometry/Entity/3d/Mesh/SampleMeshes.h"

namespace {

using namespace meshes;
using Mesh = FaceVertexTriMesh3d<omReal64>;

/// The hull of random points on a sphere.
Mesh roundBody(support::Random& random, std::size_t nbVertices, omReal64 radius = 1) {
  std::vector<Point3dData<omReal64>> vertices;
  for (std::size_t i = 0; i < nbVertices; ++i) {
    const Point3dData<omReal64> p(random.noise(), random.noise(), random.noise());
    vertices.push_back(p * (radius / p.normL2()));
  }
  Mesh3d<omReal64> hull;
  EXPECT_TRUE(quickHull(vertices, hull));
  return toFaceVertexTriMesh3d(hull);
}

/// The triangles of a grid of `nbColumns` × `nbRows` quads, glued at its ends as told: of a torus, a Möbius strip …
Mesh gluedGrid(int nbColumns, int nbRows, const std::function<omUInt32(int, int)>& vertexAt, omUInt32 nbVertices) {
  Mesh mesh;
  for (omUInt32 i = 0; i < nbVertices; ++i)
    mesh.addVertex({std::cos(1.7 * i), std::sin(2.9 * i * i), std::cos(0.3 + i * 1.1)});
  for (int c = 0; c < nbColumns; ++c)
    for (int r = 0; r < nbRows; ++r) {
      const omUInt32 i00 = vertexAt(c, r), i10 = vertexAt(c + 1, r), i11 = vertexAt(c + 1, r + 1),
                     i01 = vertexAt(c, r + 1);
      EXPECT_TRUE(mesh.addTriangle(i00, i10, i11));
      EXPECT_TRUE(mesh.addTriangle(i00, i11, i01));
    }
  return mesh;
}

TEST(Validation, CountsAsTheReportsOfFiles) {
  support::Random random(1531);
  for (int trial = 0; trial < 300; ++trial) {
    const omUInt32 nbVertices = 3 + random.below(10);
    const Indices indices = soup(random, nbVertices, random.below(30));
    const auto vertices = points(nbVertices);
    const MeshValidation found =
        validate(TriMesh3d<omReal64>(vertices.data(), nbVertices, indices.data(), indices.size() / 3));
    const TriangleDefects expected = findDefects(nbVertices, indices);
    EXPECT_EQ(found.getNb(eMD_EqualCorners), expected.nbDegenerate);
    EXPECT_EQ(found.getNb(eMD_DuplicateTriangle), expected.nbDuplicate);
    EXPECT_EQ(found.getNb(eMD_BoundaryEdge), expected.nbBoundaryEdges);
    EXPECT_EQ(found.getNb(eMD_NonManifoldEdge), expected.nbNonManifoldEdges);
    EXPECT_EQ(found.getNb(eMD_FlippedNeighbours), expected.nbFlippedNeighbours);
    EXPECT_EQ(found.nbBoundaryLoops, expected.nbBoundaryLoops);
    EXPECT_EQ(found.getNb(eMD_UnusedVertex), nbVertices - std::set<omUInt32>(indices.begin(), indices.end()).size());
    // Fans by definition: triangles of a vertex spread over edges that end in it.
    std::size_t nbPinched = 0;
    for (omUInt32 v = 0; v < nbVertices; ++v) {
      std::vector<std::set<omUInt32>> fans;  // of the other vertices
      for (std::size_t t = 0; t < indices.size(); t += 3) {
        std::set<omUInt32> others{indices[t], indices[t + 1], indices[t + 2]};
        if (others.size() < 3 || others.erase(v) == 0) continue;
        for (auto fan = fans.begin(); fan != fans.end();) {
          const bool joins =
              std::any_of(others.begin(), others.end(), [&](omUInt32 other) { return fan->count(other) > 0; });
          if (joins) others.insert(fan->begin(), fan->end());
          fan = joins ? fans.erase(fan) : fan + 1;
        }
        fans.push_back(others);
      }
      nbPinched += fans.size() > 1 ? 1 : 0;
    }
    EXPECT_EQ(found.getNb(eMD_NonManifoldVertex), nbPinched);
  }
}

// One defect is put into a good mesh; it is found with its place, and what follows from it, and nothing else.
TEST(Validation, FindsWhatWasBroken) {
  support::Random random(1532);
  for (int trial = 0; trial < 60; ++trial) {
    const Mesh good = roundBody(random, 8 + random.below(40));
    EXPECT_TRUE(validate(good).isClean()) << validate(good);
    const auto t = random.below(omUInt32(good.getNbTriangles()));
    const IndexTriangle corners = good.getTriangleColl()[t];
    const auto broken = [&](const std::function<void(Mesh::VertexColl&, Mesh::TriangleColl&)>& breakIt) {
      auto vertices = good.getVertexColl();
      auto triangles = good.getTriangleColl();
      breakIt(vertices, triangles);
      return validate(TriMesh3d<omReal64>(vertices.data(), vertices.size(), triangles.data(), triangles.size()));
    };
    const auto expect = [&](const MeshValidation& found, const std::vector<std::pair<eMeshDefect, std::size_t>>& all) {
      std::array<std::size_t, s_nbMeshDefects> expected{};
      for (const auto& [kind, count] : all) expected[kind] = count;
      EXPECT_EQ(found.counts, expected) << found;
      EXPECT_EQ(found.defectColl.size(), found.getNb());
    };
    MeshValidation found = broken([&](auto&, auto& triangles) { triangles.erase(triangles.begin() + t); });
    expect(found, {{eMD_BoundaryEdge, 3}});
    EXPECT_EQ(found.nbBoundaryLoops, 1u);
    for (const MeshDefect& edge : found.defectColl) {
      EXPECT_EQ(std::set<omUInt32>({edge.vertices[0], edge.vertices[1], corners[0], corners[1], corners[2]}).size(),
                3u);
      const auto middle = 0.5 * (good.getVertex(edge.vertices[0]) + good.getVertex(edge.vertices[1]));
      EXPECT_LT(distance(edge.place, middle), 1e-15);
    }
    found = broken([&](auto&, auto& triangles) { std::swap(triangles[t][0], triangles[t][1]); });
    expect(found, {{eMD_FlippedNeighbours, 3}});
    found = broken([&](auto&, auto& triangles) {
      triangles.push_back({corners[1], corners[0], corners[2]});
      triangles.push_back({corners[1], corners[2], corners[0]});
    });
    expect(found, {{eMD_DuplicateTriangle, 2}, {eMD_NonManifoldEdge, 3}});
    EXPECT_EQ(found.defectColl[0].triangles, (std::array<omUInt32, 2>{t, omUInt32(good.getNbTriangles())}));
    found = broken([&](auto&, auto& triangles) { triangles.push_back({corners[1], corners[0], corners[1]}); });
    expect(found, {{eMD_EqualCorners, 1}});
    EXPECT_EQ(found.defectColl[0].triangles[0], good.getNbTriangles());
    found = broken([&](auto& vertices, auto&) { vertices.push_back({7, 8, 9}); });
    expect(found, {{eMD_UnusedVertex, 1}});
    EXPECT_EQ(found.defectColl[0].place, Point3dData<omReal64>(7, 8, 9));
    found = broken([&](auto& vertices, auto&) { vertices[corners[1]].setZ(std::nan("")); });
    expect(found, {{eMD_NotFiniteVertex, 1}});
    EXPECT_EQ(found.defectColl[0].vertices[0], corners[1]);
    found = broken([&](auto& vertices, auto& triangles) {
      triangles.push_back({corners[0], omUInt32(vertices.size()), corners[1]});
    });
    expect(found, {{eMD_InvalidIndex, 1}});
    EXPECT_EQ(found.defectColl[0].vertices[0], good.getNbVertices());
    // A flat triangle closes the gap where a triangle is divided and its neighbour is not: these touch along the edge.
    found = broken([&](auto& vertices, auto& triangles) {
      for (auto& vertex : vertices)  // coarse enough for an exact middle
        vertex = {std::round(vertex.getX() * 1048576), std::round(vertex.getY() * 1048576),
                  std::round(vertex.getZ() * 1048576)};
      vertices.push_back((vertices[corners[0]] + vertices[corners[1]]) * 0.5);
      const auto middle = omUInt32(vertices.size() - 1);
      triangles[t] = {corners[0], middle, corners[2]};
      triangles.push_back({middle, corners[1], corners[2]});
      triangles.push_back({corners[0], corners[1], middle});
    });
    expect(found, {{eMD_CollinearCorners, 1}, {eMD_SelfIntersection, 2}});
    found = broken([&](auto&, auto& triangles) {
      for (auto& triangle : triangles) std::swap(triangle[1], triangle[2]);
    });
    expect(found, {{eMD_InsideOutShell, 1}});
    // A body inside, joined to the outer one in a vertex: a fan too many, and a cavity that is turned outward.
    found = broken([&](auto& vertices, auto& triangles) {
      Point3dData<omReal64> centre;
      for (const auto& vertex : vertices) centre += vertex * (1.0 / omReal64(vertices.size()));
      const auto a = omUInt32(vertices.size());
      for (const Point3dData<omReal64>& step : {Point3dData<omReal64>{1, 0, 0}, {0, 1, 0}, {0, 0, 1}})
        vertices.push_back(centre + step * 1e-6);
      const auto at = [&](omUInt32 v) {
        return toSpatialPoint(vertices[v].getX(), vertices[v].getY(), vertices[v].getZ());
      };
      const bool isSeen = orientation3d(at(a), at(a + 1), at(a + 2), at(corners[0])) > 0;
      const omUInt32 b = isSeen ? a + 2 : a + 1, c = isSeen ? a + 1 : a + 2;
      for (const IndexTriangle& face :
           {IndexTriangle{a, b, c}, {corners[0], b, a}, {corners[0], c, b}, {corners[0], a, c}})
        triangles.push_back(face);
    });
    expect(found, {{eMD_NonManifoldVertex, 1}, {eMD_InsideOutShell, 1}});
    EXPECT_EQ(found.defectColl[0].vertices[0], corners[0]);
    EXPECT_EQ(found.defectColl[1].triangles[0], good.getNbTriangles());
  }
}

TEST(SelfIntersections, AreThoseOfAllPairs) {
  support::Random random(1533);
  std::size_t nbFound = 0;
  for (int trial = 0; trial < 100; ++trial) {
    const omUInt32 nbVertices = 3 + random.below(40);
    FaceVertexTriMesh3d<omInt32> mesh;  // on a coarse grid, for pairs that touch and overlap
    const omUInt32 size = trial % 2 == 0 ? 4 : 1000;
    for (omUInt32 i = 0; i < nbVertices; ++i)
      mesh.addVertex({omInt32(random.below(size)), omInt32(random.below(size)), omInt32(random.below(size))});
    const Indices indices = soup(random, nbVertices, 40);
    for (std::size_t i = 0; i < indices.size(); i += 3)
      EXPECT_TRUE(mesh.addTriangle(indices[i], indices[i + 1], indices[i + 2]));
    const auto corner = [&](omUInt32 v) {
      const auto& p = mesh.getVertexColl()[v];
      return toSpatialPoint(p.getX(), p.getY(), p.getZ());
    };
    const auto triangle = [&](const IndexTriangle& t) {
      return SpatialTriangle{corner(t[0]), corner(t[1]), corner(t[2])};
    };
    std::vector<std::array<omUInt32, 2>> expected;
    const auto& all = mesh.getTriangleColl();
    for (omUInt32 a = 0; a < all.size(); ++a)
      for (omUInt32 b = a + 1; b < all.size(); ++b)
        if (!isDegenerate(triangle(all[a])) && !isDegenerate(triangle(all[b])) &&
            std::set<omUInt32>(all[a].begin(), all[a].end()) != std::set<omUInt32>(all[b].begin(), all[b].end()) &&
            trianglesCrossBeyondShared(triangle(all[a]), all[a], triangle(all[b]), all[b]))
          expected.push_back({a, b});
    const SelfIntersections found = findSelfIntersections(mesh);
    EXPECT_EQ(found.pairColl, expected);
    EXPECT_EQ(found.nbPairs, expected.size());
    EXPECT_TRUE(found.isComplete);
    const SelfIntersections first = findSelfIntersections(mesh, {3});
    EXPECT_EQ(first.nbPairs, expected.size());
    expected.resize(std::min<std::size_t>(expected.size(), 3));
    EXPECT_EQ(first.pairColl, expected);
    nbFound += found.nbPairs;
  }
  EXPECT_GT(nbFound, 500u);
}

TEST(Validation, EndsOnWhateverItIsGiven) {
  EXPECT_EQ(printed(validate(Mesh())), "0 vertices, 0 triangles: no defects");
  // A Möbius strip is open, a Klein bottle closed; both have a line of neighbours that are turned against each other.
  const MeshValidation moebius = validate(gluedGrid(
      9, 2, [](int c, int r) { return omUInt32(c < 9 ? 3 * c + r : 2 - r); }, 27));
  EXPECT_EQ(moebius.getNb(eMD_BoundaryEdge), 18u);
  EXPECT_EQ(moebius.nbBoundaryLoops, 1u);
  EXPECT_EQ(moebius.getNb(eMD_FlippedNeighbours), 2u);
  const MeshValidation klein = validate(gluedGrid(
      9, 5, [](int c, int r) { return omUInt32(c < 9 ? 5 * c + r % 5 : (5 - r) % 5); }, 45));
  EXPECT_EQ(klein.getNb(eMD_BoundaryEdge) + klein.getNb(eMD_NonManifoldEdge) + klein.getNb(eMD_NonManifoldVertex), 0u);
  EXPECT_EQ(klein.getNb(eMD_FlippedNeighbours), 5u);
  EXPECT_EQ(klein.getNb(eMD_InsideOutShell), 0u);
  // Many triangles on one edge: counted, few of them listed, and the search for pairs is cut short.
  Mesh::VertexColl vertices{{0, 0, 0}, {0, 0, 1}};
  Mesh::TriangleColl triangles;
  for (omUInt32 i = 0; i < 5000; ++i) {
    vertices.push_back({std::cos(i * 1e-3), std::sin(i * 1e-3), 0.5});
    triangles.push_back({0, 1, i + 2});
  }
  Mesh book;
  ASSERT_TRUE(book.build(vertices, triangles));
  MeshValidationOptions options;
  options.maxNbListed = 3;
  options.maxNbTestedATriangle = 1;
  const MeshValidation found = validate(book, options);
  EXPECT_EQ(found.getNb(eMD_BoundaryEdge), 10000u);
  EXPECT_EQ(found.getNb(eMD_NonManifoldEdge), 1u);
  EXPECT_EQ(found.getNb(), 10001u);
  EXPECT_EQ(found.defectColl.size(), 4u);
  EXPECT_FALSE(found.allPairsTested);
  // Nothing but nonsense.
  const Point3dData<omReal64> nowhere(std::nan(""), INFINITY, -INFINITY);
  const omUInt32 indices[] = {0, 0, 0, 1, 2, 3, 0, 0xFFFFFFFFu, 0};
  const MeshValidation nonsense = validate(TriMesh3d<omReal64>(&nowhere, 1, indices, 3));
  EXPECT_EQ(nonsense.getNb(eMD_InvalidIndex), 2u);
  EXPECT_EQ(nonsense.getNb(eMD_EqualCorners), 1u);
  EXPECT_EQ(nonsense.getNb(eMD_NotFiniteVertex), 1u);
  EXPECT_THROW(validate(TriMesh3d<omReal64>(&nowhere, 1, indices, std::size_t{1} << 40)), ORMIXGeometryException);
  EXPECT_EQ(validate(TriMesh3d<omReal64>(&nowhere, 0, indices, 3)).getNb(eMD_InvalidIndex), 3u);
}

}  // namespace
