#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Entity/3d/Mesh/QuickHull.h>
#include <ORMIXGeometry/Measure/3d/TriMeshMeasures.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Mesh/Shells.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <set>

#include "ORMIXGeometry/Entity/3d/Mesh/SampleMeshes.h"

namespace {

using namespace meshes;
using Mesh = FaceVertexTriMesh3d<omReal64>;

/// The lowest triangle that each is connected with, by definition: labels spread until nothing changes.
std::vector<omUInt32> lowestConnected(const Mesh& mesh, eMeshConnectivity connectivity) {
  std::map<std::set<omUInt32>, std::vector<omUInt32>> users;  // triangles of each vertex or edge, once for each side
  for (omUInt32 t = 0; t < mesh.getNbTriangles(); ++t)
    for (std::size_t k = 0; k < 3; ++k) {
      const IndexTriangle& corners = mesh.getTriangleColl()[t];
      const std::set<omUInt32> edge{corners[k], corners[(k + 1) % 3]};
      if (connectivity == eMC_Vertices)
        users[{corners[k]}].push_back(t);
      else if (edge.size() == 2)
        users[edge].push_back(t);
    }
  std::vector<omUInt32> lowest(mesh.getNbTriangles());
  std::iota(lowest.begin(), lowest.end(), 0u);
  for (bool changes = true; changes;) {
    changes = false;
    for (const auto& [key, triangles] : users) {
      if (connectivity == eMC_ManifoldEdges && triangles.size() != 2) continue;
      for (const omUInt32 a : triangles)
        for (const omUInt32 b : triangles)
          if (lowest[a] < lowest[b]) {
            lowest[b] = lowest[a];
            changes = true;
          }
    }
  }
  return lowest;
}

TEST(Components, AreThoseOfTheDefinition) {
  support::Random random(1521);
  for (int trial = 0; trial < 400; ++trial) {
    Mesh mesh;
    const omUInt32 nbVertices = 4 + random.below(20);
    mesh.getVertexColl() = points(nbVertices);
    const Indices indices = soup(random, nbVertices, random.below(16));
    for (std::size_t i = 0; i < indices.size(); i += 3)
      ASSERT_TRUE(mesh.addTriangle(indices[i], indices[i + 1], indices[i + 2]));
    for (const auto connectivity : {eMC_Edges, eMC_Vertices, eMC_ManifoldEdges}) {
      std::vector<omUInt32> expected = lowestConnected(mesh, connectivity), labels;
      std::map<omUInt32, omUInt32> numbers;
      for (omUInt32& label : expected) label = numbers.try_emplace(label, omUInt32(numbers.size())).first->second;
      ASSERT_EQ(labelComponents(mesh, labels, connectivity), numbers.size());
      EXPECT_EQ(labels, expected) << mesh;
      // Each component has its triangles in their order, and its vertices in theirs.
      const std::vector<Mesh> parts = extractComponents(mesh, connectivity);
      ASSERT_EQ(parts.size(), numbers.size());
      std::vector<std::size_t> next(parts.size(), 0);
      for (std::size_t t = 0; t < labels.size(); ++t)
        EXPECT_EQ(parts[labels[t]].getTriangle(next[labels[t]]++), mesh.getTriangle(t));
      for (std::size_t k = 0; k < parts.size(); ++k) {
        EXPECT_EQ(next[k], parts[k].getNbTriangles());
        for (std::size_t v = 1; v < parts[k].getNbVertices(); ++v)
          EXPECT_LT(parts[k].getVertex(v - 1).getX(), parts[k].getVertex(v).getX());
      }
      // Half-edges answer the same where nothing stands in their way.
      Mesh3d<omReal64> halfEdges;
      if (!toMesh3d(mesh, halfEdges, eNMP_Refuse)) continue;
      const auto ofHalfEdges = extractComponents(halfEdges, connectivity);
      ASSERT_EQ(ofHalfEdges.size(), parts.size());
      for (std::size_t k = 0; k < parts.size(); ++k)
        EXPECT_TRUE(compare(toFaceVertexTriMesh3d(ofHalfEdges[k]), parts[k], 0));
    }
  }
}

/// A cube of integer corners, turned outward or inward, appended with its triangles in random places.
void appendCube(const std::array<int, 3>& low, int size, bool isOutward, Mesh& mesh) {
  Mesh3d<omReal64> cube;
  std::vector<Point3dData<omReal64>> corners;
  for (int i = 0; i < 8; ++i)
    corners.push_back({omReal64(low[0] + (i & 1) * size), omReal64(low[1] + (i >> 1 & 1) * size),
                       omReal64(low[2] + (i >> 2) * size)});
  ASSERT_TRUE(quickHull(corners, cube));
  if (!isOutward) cube.reverseOrientation();
  const std::size_t first = mesh.getNbVertices();
  for (const auto& vertex : cube.getVertexColl()) mesh.addVertex(vertex);
  for (std::size_t t = 0; t < cube.getNbTriangles(); ++t) {
    const auto i = cube.getTriangleVertexIndices(t);
    ASSERT_TRUE(mesh.addTriangle(first + i[0], first + i[1], first + i[2]));
  }
}

// Cubes whose faces, edges and corners may touch, but which do not cross. Each is in those whose interior has its own.
TEST(Shells, OfCubesInCubesAreNested) {
  support::Random random(1522);
  for (int trial = 0; trial < 100; ++trial) {
    struct Cube {
      std::array<int, 3> low;
      int size;
      bool isOutward;
    };
    std::vector<Cube> cubes;
    const auto contains = [](const Cube& a, const Cube& b) {
      for (std::size_t k = 0; k < 3; ++k)
        if (b.low[k] < a.low[k] || a.low[k] + a.size < b.low[k] + b.size) return false;
      return true;
    };
    const auto isApart = [](const Cube& a, const Cube& b) {
      for (std::size_t k = 0; k < 3; ++k)
        if (a.low[k] + a.size <= b.low[k] || b.low[k] + b.size <= a.low[k]) return true;
      return false;
    };
    for (int attempt = 0; attempt < 60; ++attempt) {
      const auto place = [&random] { return static_cast<int>(random.below(16)); };
      const Cube cube{{place(), place(), place()}, 1 + static_cast<int>(random.below(16)), random.below(2) == 0};
      if (std::all_of(cubes.begin(), cubes.end(), [&](const Cube& other) {
            return other.size != cube.size ? contains(other, cube) || contains(cube, other) || isApart(cube, other)
                                           : isApart(cube, other);
          }))
        cubes.push_back(cube);
    }
    Mesh mesh;
    for (const Cube& cube : cubes) appendCube(cube.low, cube.size, cube.isOutward, mesh);
    const MeshShells found = findShells(mesh);
    ASSERT_EQ(found.shells.size(), cubes.size());
    std::size_t nbBodies = 0;
    for (std::size_t k = 0; k < cubes.size(); ++k) {
      std::size_t depth = 0, parent = s_noShell;
      for (std::size_t other = 0; other < cubes.size(); ++other) {
        if (other == k || !contains(cubes[other], cubes[k])) continue;
        ++depth;
        if (parent == s_noShell || cubes[other].size < cubes[parent].size) parent = other;
      }
      nbBodies += depth == 0 ? 1 : 0;
      const MeshShell& shell = found.shells[k];
      EXPECT_EQ(shell.depth, depth);
      EXPECT_EQ(shell.parent, parent);
      EXPECT_TRUE(shell.isClosed && shell.isOriented);
      EXPECT_EQ(shell.orientation, cubes[k].isOutward ? eSO_Outward : eSO_Inward);
      EXPECT_EQ(shell.volume, (cubes[k].isOutward ? 1.0 : -1.0) * std::pow(cubes[k].size, 3));
      EXPECT_EQ(shell.firstTriangle, 12 * k);
    }
    const auto bodies = toMeshesWithHoles(mesh);
    EXPECT_EQ(bodies.size(), nbBodies);
    std::size_t nbMeshes = 0;
    for (const auto& body : bodies) {
      nbMeshes += body->getNbTotMesh();
      EXPECT_EQ(body->getMesh3dType(), eM3DT_Exterior);
      for (const auto& hole : body->getMeshHoles()) {
        EXPECT_EQ(hole->getMesh3dType(), eM3DT_Interior);
        EXPECT_EQ(hole->getParent(), body);
      }
    }
    EXPECT_EQ(nbMeshes, cubes.size());
  }
}

TEST(Shells, OfWhatBoundsNoBodyAreNamed) {
  EXPECT_TRUE(toMeshesWithHoles(Mesh()).empty());
  Mesh mesh;
  appendCube({0, 0, 0}, 4, true, mesh);
  for (int i = 0; i < 3; ++i) mesh.addVertex({1.0 + i, 1.0 + 0.5 * i * i, 2});
  ASSERT_TRUE(mesh.addTriangle(8, 9, 10));
  const MeshShells found = findShells(mesh);
  EXPECT_EQ(found.shells[1].parent, 0u);  // an open part is inside as well
  EXPECT_FALSE(found.shells[1].isClosed);
  EXPECT_EQ(found.shells[1].orientation, eSO_None);
  try {
    toMeshesWithHoles(mesh);
    ADD_FAILURE();
  } catch (const ORMIXGeometryException& failure) {
    EXPECT_EQ(failure.getMessage(), "Shell 1 of 2, which begins with triangle 12, is not closed and bounds no body");
  }
  mesh.getVertexColl()[8].setX(std::numeric_limits<omReal64>::quiet_NaN());
  EXPECT_EQ(findShells(mesh).shells[1].parent, s_noShell);
  const omUInt32 indices[] = {0, 1, 2};
  std::vector<omUInt32> labels{7};
  EXPECT_THROW(labelComponents(TriMesh3d<omReal64>(mesh.getVertexColl().data(), 2, indices, 1), labels),
               ORMIXGeometryException);
  EXPECT_EQ(labels, (std::vector<omUInt32>{7}));
}

}  // namespace
