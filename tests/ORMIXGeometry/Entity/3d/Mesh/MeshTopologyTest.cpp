#include <map>
#include <set>

#include "ORMIXGeometry/Entity/3d/Mesh/SampleMeshes.h"

namespace {

using namespace meshes;

/// What every mesh must satisfy, found without following half-edges: each direction of an edge once, and opposite ones
/// linked.
void expectWhole(const Mesh3d<omReal64>& mesh) {
  const BoolResult integrity = mesh.checkIntegrity();
  EXPECT_TRUE(integrity) << integrity.getMessage();
  std::map<std::pair<std::size_t, std::size_t>, std::size_t> ends;
  for (std::size_t triangle = 0; triangle < mesh.getNbTriangles(); ++triangle) {
    const auto corners = mesh.getTriangleVertexIndices(triangle);
    for (std::size_t corner = 0; corner < 3; ++corner)
      EXPECT_TRUE(ends.emplace(std::pair(corners[corner], corners[(corner + 1) % 3]), 3 * triangle + corner).second);
  }
  std::set<std::pair<std::size_t, std::size_t>> edges;
  for (const auto& [ends0, halfEdge] : ends) {
    const auto opposite = ends.find({ends0.second, ends0.first});
    EXPECT_EQ(mesh.getHalfEdge(halfEdge).oppositeHalfEdgeIdx,
              opposite == ends.end() ? s_noHalfEdge : omUInt32(opposite->second));
    edges.insert(std::minmax(ends0.first, ends0.second));
  }
  EXPECT_EQ(mesh.getNbHalfEdges(), ends.size());
  EXPECT_EQ(mesh.getNbEdges(), edges.size());
}

/// The fans partition the half-edges around each vertex, the loops those on the boundary.
void expectWalksReachEverything(const Mesh3d<omReal64>& mesh) {
  const MeshTopology& topology = mesh.getTopology();
  std::set<std::set<std::size_t>> fans;
  std::vector<std::size_t> ring;
  for (std::size_t halfEdge = 0; halfEdge < mesh.getNbHalfEdges(); ++halfEdge) {
    std::set<std::size_t> walked;
    std::size_t before = s_noHalfEdge;
    const bool isClosed = visitFan(topology, halfEdge, [&](std::size_t outgoing) {
      EXPECT_EQ(mesh.getHalfEdge(outgoing).startVertexIdx, mesh.getHalfEdge(halfEdge).startVertexIdx);
      if (before != s_noHalfEdge)
        EXPECT_EQ(mesh.getHalfEdge(topology.getPreviousHalfEdgeIdx(before)).oppositeHalfEdgeIdx, outgoing);
      else
        EXPECT_TRUE(outgoing == halfEdge || mesh.getHalfEdge(outgoing).oppositeHalfEdgeIdx == s_noHalfEdge);
      before = outgoing;
      EXPECT_TRUE(walked.insert(outgoing).second);
    });
    EXPECT_EQ(walked.count(halfEdge), 1u);
    EXPECT_EQ(collectOneRing(topology, halfEdge, ring), isClosed);
    EXPECT_EQ(ring.size(), walked.size() + (isClosed ? 0 : 1));
    fans.insert(walked);
  }
  std::size_t nbInFans = 0;
  for (const auto& walked : fans) nbInFans += walked.size();
  EXPECT_EQ(nbInFans, mesh.getNbHalfEdges());
  std::set<std::size_t> onLoops;
  const auto loops = collectBoundaryLoops(topology);
  for (const auto& loop : loops)
    for (std::size_t place = 0; place < loop.size(); ++place) {
      EXPECT_TRUE(onLoops.insert(loop[place]).second);
      EXPECT_EQ(topology.getEndVertexIdx(loop[place]),
                mesh.getHalfEdge(loop[(place + 1) % loop.size()]).startVertexIdx);
    }
  EXPECT_EQ(onLoops.size(), topology.getNbBoundaryHalfEdges());
  EXPECT_EQ(getNbBoundaryLoops(topology), loops.size());
}

TEST(MeshTopology, HoldsForRandomTrianglesAddedInAnyWay) {
  support::Random random(20);
  for (int round = 0; round < 300; ++round) {
    const omUInt32 nbVertices = 3 + random.below(12);
    const auto vertices = points(nbVertices);
    const Indices indices = soup(random, nbVertices, random.below(60));
    Indices expectedOwners;
    const auto expected = addedOneByOne(vertices, indices, &expectedOwners);
    expectWhole(expected);
    expectWalksReachEverything(expected);
    Mesh3d<omReal64> built;
    Indices owners;
    ASSERT_TRUE(built.build(vertices, indices, eNMP_OwnVertices, &owners));
    expectSame(built, expected);
    EXPECT_EQ(owners, expectedOwners);
    ASSERT_FALSE(::testing::Test::HasFailure()) << "round " << round;
  }
}

TEST(MeshTopology, BuildRefusesWhereAddingStops) {
  support::Random random(20);
  int nbRefused = 0;
  for (int round = 0; round < 300; ++round) {
    const omUInt32 nbVertices = 4 + random.below(30);
    const Indices indices = soup(random, nbVertices, 1 + random.below(12));
    Mesh3d<omReal64> added;
    for (const auto& vertex : points(nbVertices)) added.addVertex(vertex);
    BoolResult expected;
    for (std::size_t first = 0; expected && first < indices.size(); first += 3)
      expected = added.addTriangle(indices[first], indices[first + 1], indices[first + 2]);
    Mesh3d<omReal64> built;
    const BoolResult result = built.build(points(nbVertices), indices);
    EXPECT_EQ(result.getMessage(), expected.getMessage());
    if (expected) expectSame(built, added);
    nbRefused += expected ? 0 : 1;
  }
  EXPECT_TRUE(nbRefused > 50 && nbRefused < 250) << nbRefused;
}

TEST(MeshTopology, WalksOneFanOfABowTie) {
  Mesh3d<omReal64> mesh;
  ASSERT_TRUE(mesh.build(points(8), {0, 1, 2, 0, 2, 3, 0, 4, 5, 0, 5, 6}));
  const MeshTopology& topology = mesh.getTopology();
  std::vector<std::size_t> ring;
  EXPECT_FALSE(collectOneRing(topology, 3, ring));
  EXPECT_EQ(ring, (std::vector<std::size_t>{1, 2, 3}));
  EXPECT_FALSE(collectOneRing(topology, 6, ring));
  EXPECT_EQ(ring, (std::vector<std::size_t>{4, 5, 6}));
  EXPECT_EQ(getNbBoundaryLoops(topology), 2u);
  std::vector<omUInt32> labels;
  EXPECT_EQ(labelComponents(topology, labels), 2u);
  EXPECT_EQ(labels, (std::vector<omUInt32>{0, 0, 1, 1}));
  const auto outgoing = collectOutgoingHalfEdges(topology, 8);
  EXPECT_EQ(outgoing[7], s_noHalfEdge);
  EXPECT_EQ(outgoing[2], 4u);
  ASSERT_TRUE(mesh.build(points(5), fan(4, true)));
  EXPECT_TRUE(collectOneRing(mesh.getTopology(), 6, ring));
  EXPECT_EQ(ring, (std::vector<std::size_t>{3, 4, 1, 2})) << "from the given half-edge on";
}

TEST(MeshTopology, IsTurnedInsideOut) {
  support::Random random(20);
  const auto vertices = points(9);
  const Indices indices = soup(random, 9, 25);
  auto mesh = addedOneByOne(vertices, indices);
  const auto before = mesh;
  mesh.reverseOrientation();
  expectWhole(mesh);
  for (std::size_t triangle = 0; triangle < mesh.getNbTriangles(); ++triangle) {
    const auto corners = before.getTriangleVertexIndices(triangle);
    EXPECT_EQ(mesh.getTriangleVertexIndices(triangle),
              (std::array<std::size_t, 3>{corners[0], corners[2], corners[1]}));
  }
  EXPECT_EQ(getNbComponents(mesh.getTopology()), getNbComponents(before.getTopology()));
  mesh.reverseOrientation();
  expectSame(mesh, before);
  // What is added after a turn is added to the mesh as it then is: beside its first triangle, and not upon it.
  mesh.reverseOrientation();
  const auto first = mesh.getTriangleVertexIndices(0);
  const std::size_t apex = mesh.addVertex({});
  for (std::size_t k = 0; k < 3; ++k)
    EXPECT_EQ(static_cast<bool>(mesh.addTriangle(first[(k + 1) % 3], first[k], apex)),
              before.getHalfEdge(2 - k).oppositeHalfEdgeIdx == s_noHalfEdge);
  EXPECT_FALSE(mesh.addTriangle(first[0], first[1], apex));
  expectWhole(mesh);
}

// Around the longest fan that is walked once.
TEST(MeshTopology, WalksFansOfAnyLengthInOrder) {
  for (const omUInt32 valence : {3u, 9u, 10u, 11u, 12u, 40u})
    for (const bool isClosed : {true, false})
      expectWalksReachEverything(addedOneByOne(points(valence + 1), fan(valence, isClosed)));
}

// Of grids with holes, in order and shuffled, so that blocks of triangles begin connected and not: against a flood.
TEST(MeshTopology, NumbersComponentsInOrderOfTheirFirstTriangles) {
  support::Random random(22);
  for (int round = 0; round < 12; ++round) {
    const omUInt32 size = 20 + random.below(50);
    std::vector<std::array<omUInt32, 3>> triangles;
    for (omUInt32 corner = 0; corner + size + 1 < size * size; ++corner) {
      if (corner % size == size - 1) continue;
      if (random.below(12) >= omUInt32(round % 6)) triangles.push_back({corner, corner + 1, corner + size + 1});
      if (random.below(12) >= omUInt32(round % 6)) triangles.push_back({corner, corner + size + 1, corner + size});
    }
    for (std::size_t place = triangles.size(); round >= 6 && place > 1; --place)
      std::swap(triangles[place - 1], triangles[random.below(omUInt32(place))]);
    Indices indices;
    for (const auto& corners : triangles) indices.insert(indices.end(), corners.begin(), corners.end());
    Mesh3d<omReal64> mesh;
    ASSERT_TRUE(mesh.build(points(size * size), indices));
    Indices expected(triangles.size(), s_noHalfEdge);
    omUInt32 nbComponents = 0;
    for (omUInt32 first = 0; first < expected.size(); ++first) {
      if (expected[first] != s_noHalfEdge) continue;
      for (Indices flood{first}; !flood.empty();) {
        const omUInt32 triangle = flood.back();
        flood.pop_back();
        expected[triangle] = nbComponents;
        for (omUInt32 side = 3 * triangle; side < 3 * triangle + 3; ++side) {
          const omUInt32 opposite = mesh.getHalfEdge(side).oppositeHalfEdgeIdx;
          if (opposite != s_noHalfEdge && expected[opposite / 3] == s_noHalfEdge) flood.push_back(opposite / 3);
        }
      }
      ++nbComponents;
    }
    Indices labels{7};
    EXPECT_EQ(labelComponents(mesh.getTopology(), labels), nbComponents);
    EXPECT_EQ(labels, expected) << "round " << round;
  }
}

// Vertices whose half-edges are looked for in the same places.
TEST(MeshTopology, TakesVertexIndicesThatDifferByPowersOfTwo) {
  support::Random random(21);
  constexpr omUInt32 step = 4096;
  Indices indices = soup(random, 40, 400);
  for (omUInt32& index : indices) index *= step;
  Mesh3d<omReal64> built;
  ASSERT_TRUE(built.build(points(40 * step), indices, eNMP_OwnVertices));
  expectSame(built, addedOneByOne(points(40 * step), indices));
}

// Twelve half-edges start at each vertex, more than its group of slots holds; work that grows with the number of full
// groups would take minutes here.
TEST(MeshTopology, TakesMeshesWhoseVerticesAllHaveManyTriangles) {
  constexpr omUInt32 nbVertices = 20000;
  Indices indices;
  for (omUInt32 vertex = 0; vertex < nbVertices; ++vertex)
    for (const auto& [second, third] : {std::pair(1u, 3u), std::pair(4u, 9u), std::pair(6u, 13u), std::pair(8u, 18u)})
      indices.insert(indices.end(), {vertex, (vertex + second) % nbVertices, (vertex + third) % nbVertices});
  Mesh3d<omReal64> built;
  ASSERT_TRUE(built.build(points(nbVertices), indices));
  expectSame(built, addedOneByOne(points(nbVertices), indices));
}

// Quadratic work in the valence would take minutes here.
TEST(MeshTopology, TakesVerticesOfAnyValenceAndEqualTriangles) {
  constexpr omUInt32 valence = 200000;
  for (const bool isClosed : {true, false}) {
    const Indices indices = fan(valence, isClosed);
    Mesh3d<omReal64> built;
    ASSERT_TRUE(built.build(points(valence + 1), indices));
    expectSame(built, addedOneByOne(points(valence + 1), indices));
    EXPECT_TRUE(built.checkIntegrity());
    EXPECT_EQ(getNbBoundaryLoops(built.getTopology()), 1u);
    EXPECT_EQ(getNbComponents(built.getTopology()), 1u);
    std::vector<std::size_t> ring;
    EXPECT_EQ(collectOneRing(built.getTopology(), 0, ring), isClosed);
    EXPECT_EQ(ring.size(), valence);
  }
  Indices indices;
  for (int triangle = 0; triangle < 100000; ++triangle) indices.insert(indices.end(), {2, 0, 1});
  Mesh3d<omReal64> mesh;
  ASSERT_TRUE(mesh.build(points(3), indices, eNMP_OwnVertices));
  EXPECT_EQ(mesh.getNbVertices(), 3u * 100000);
  EXPECT_EQ(mesh.getTriangle(99999), mesh.getTriangle(0));
  EXPECT_EQ(getNbComponents(mesh.getTopology()), 100000u);
}

/// Changes half-edges as an archive could, and nothing that follows from them.
struct HalfEdgeChange {
  bool isCleared;
  bool operator()(const char*, MeshTopology::HalfEdgeColl& halfEdges) const {
    if (isCleared) halfEdges.clear();
    return true;
  }
  bool operator()(const char*, MeshTopology::IndexColl& firsts) const {
    if (isCleared) firsts.clear();
    if (!isCleared) ++firsts[1];
    return true;
  }
  template <class V>
  bool operator()(const char*, V&) const {
    return true;
  }
};

TEST(MeshTopology, NamesVertexIndicesThatAreNotThoseOfTheHalfEdges) {
  for (const bool isCleared : {true, false}) {
    auto mesh = tetrahedron();
    HalfEdgeChange change{isCleared};
    ASSERT_TRUE(FieldAccess::visit(mesh, change));
    EXPECT_EQ(mesh.checkIntegrity().getMessage(),
              isCleared ? "12 vertex indices are not three for each of 0 triangles"
                        : "Half edge with index 4 does not start where the vertex indices of its triangle say");
  }
}

}  // namespace
