#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/ORMIXGeometryLogger.h>

#include "ORMIXGeometry/Entity/3d/Mesh/SampleMeshes.h"
#include "support/LogCapture.h"

namespace {

using namespace meshes;

TEST(Mesh3d, GivesTrianglesInOrder) {
  auto mesh = tetrahedron();
  EXPECT_EQ(mesh.getTriangleVertexIndices(1), (std::array<std::size_t, 3>{0, 1, 3}));
  EXPECT_EQ(mesh.getTriangle(3), (std::array<Point3dData<omReal64>, 3>{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}));
  mesh.setVertex(1, {5, 6, 7});
  EXPECT_EQ(mesh.getVertex(1), (Point3dData<omReal64>(5, 6, 7)));
  std::size_t triangle = 0;
  visitTriangles(mesh, [&](const auto& p0, const auto& p1, const auto& p2) {
    EXPECT_EQ(mesh.getTriangle(triangle++), (std::array<Point3dData<omReal64>, 3>{p0, p1, p2}));
  });
  EXPECT_EQ(triangle, 4u);
}

template <class F>
void expectThrown(F function, const std::string& text) {
  const support::LogCapture capture(getORMIXGeometryLoggerName());
  EXPECT_EQ(support::thrownBy<ORMIXGeometryException>(function), text);
  EXPECT_EQ(capture.messages(), (support::LogCapture::Messages{{40000, text}}));
}

TEST(Mesh3d, ThrowsForInvalidIndices) {
  auto mesh = tetrahedron();
  const MeshTopology& topology = mesh.getTopology();
  const std::string vertex = "Vertex with index 4 is not valid given vertex collection size 4",
                    triangle = "Triangle with index 4 is not valid given triangle collection size 4",
                    halfEdge = "Half edge with index 12 is not valid given half edge collection size 12";
  expectThrown([&] { mesh.getVertex(4); }, vertex);
  expectThrown([&] { mesh.setVertex(4, {}); }, vertex);
  expectThrown([&] { mesh.getTriangle(4); }, triangle);
  expectThrown([&] { mesh.getTriangleVertexIndices(4); }, triangle);
  expectThrown([&] { mesh.getHalfEdge(12); }, halfEdge);
  expectThrown([&] { topology.getPreviousHalfEdgeIdx(12); }, halfEdge);
  expectThrown([&] { visitFan(topology, 12, [](std::size_t) {}); }, halfEdge);
  expectThrown([&] { topology.getHalfEdgeBetween(0, 12); }, halfEdge);
  expectThrown([&] { mesh.getHalfEdge(std::size_t{1} << 32); },
               "Half edge with index 4294967296 is not valid given half edge collection size 12");
}

TEST(Mesh3d, FindsTheHalfEdgeBetweenVertices) {
  Mesh3d<omReal64> mesh;
  ASSERT_TRUE(mesh.build(points(7), {0, 1, 2, 0, 2, 3, 4, 5, 6}));
  const MeshTopology& topology = mesh.getTopology();
  EXPECT_EQ(topology.getHalfEdgeBetween(0, 1), 0u);
  EXPECT_EQ(topology.getHalfEdgeBetween(0, 2), 3u);
  EXPECT_EQ(topology.getHalfEdgeBetween(2, 3), 2u);
  EXPECT_EQ(topology.getEndVertexIdx(3), 2u);
  expectThrown([&] { topology.getHalfEdgeBetween(1, 6); },
               "Starting points of half edges 1 and 6 are not linked by an half edge");
}

TEST(Mesh3d, RefusesWhatWouldNotBeAManifoldAndChangesNothing) {
  auto mesh = tetrahedron();
  mesh.addVertex({9, 9, 9});
  const auto before = mesh;
  const auto refusal = [&mesh](std::size_t i0, std::size_t i1, std::size_t i2) {
    const BoolResult result = addTriangle(i0, i1, i2, mesh);
    EXPECT_FALSE(result);
    return result.getMessage();
  };
  EXPECT_EQ(refusal(2, 1, 4), "Half edge with index 1 cannot be associated to a new triangle");
  EXPECT_EQ(refusal(4, 3, 0), "Half edge with index 5 cannot be associated to a new triangle");
  EXPECT_EQ(refusal(0, 1, 5), "Vertex with index 5 is not valid given vertex collection size 5");
  EXPECT_EQ(refusal(std::size_t{1} << 32, 1, 4),
            "Vertex with index 4294967296 is not valid given vertex collection size 5");
  EXPECT_EQ(refusal(4, 2, 4), "Triangle with vertices 4, 2 and 4 does not have three different ones");
  expectSame(mesh, before);
  for (const Indices& bad : {Indices{0, 1, 2, 1, 2, 0}, Indices{0, 1, 2, 3, 3, 1}, Indices{0, 1, 4}, Indices{0, 1}})
    EXPECT_FALSE(mesh.build(points(4), bad));
  EXPECT_FALSE(mesh.build(points(4), {0, 1, s_noHalfEdge}, eNMP_OwnVertices));
  expectSame(mesh, before);
}

TEST(Mesh3d, IsClearedCopiedAndMoved) {
  auto mesh = tetrahedron();
  mesh.setMesh3dType(eM3DT_Interior);
  auto copy = mesh;
  expectSame(copy, mesh);
  EXPECT_FALSE(copy.addTriangle(0, 2, 1));
  const auto moved = std::move(copy);
  expectSame(moved, mesh);
  copy = tetrahedron();
  EXPECT_TRUE(copy.checkIntegrity());
  mesh.clear();
  EXPECT_TRUE(mesh.isEmpty() && mesh.isClosed() && mesh.checkIntegrity());
  EXPECT_EQ(mesh.getMesh3dType(), eM3DT_Interior);
  for (std::size_t vertex = 0; vertex < 3; ++vertex) mesh.addVertex({});
  EXPECT_TRUE(mesh.addTriangle(0, 2, 1));
}

TEST(Mesh3d, TakesTrianglesOverToItsOwnVertices) {
  auto source = tetrahedron<omReal64>();
  source.setMesh3dType(eM3DT_Interior);
  Mesh3d<omReal64> mesh;
  for (int index = 0; index < 3; ++index) mesh.addVertex({9, 9, omReal64(index)});
  EXPECT_FALSE(mesh.copyTriangles(source));
  EXPECT_EQ(mesh.getNbTriangles(), 0u);
  EXPECT_EQ(mesh.getMesh3dType(), eM3DT_Exterior);
  mesh.addVertex({9, 9, 3});
  ASSERT_TRUE(mesh.copyTriangles(source));
  EXPECT_TRUE(mesh.checkIntegrity());
  EXPECT_EQ(mesh.getMesh3dType(), eM3DT_Interior);
  EXPECT_EQ(mesh.getTriangle(1), (std::array<Point3dData<omReal64>, 3>{{{9, 9, 0}, {9, 9, 1}, {9, 9, 3}}}));
}

TEST(Mesh3d, IsComparedAndCast) {
  const auto mesh = tetrahedron();
  auto other = mesh;
  other.setMesh3dType(eM3DT_Interior);
  other.setVertex(0, {1.75, -1.75, 2.5});
  const auto asInt = cast<omInt32>(other);
  EXPECT_EQ(asInt.getVertex(0), (Point3dData<omInt32>(1, -1, 2)));
  EXPECT_EQ(asInt.getMesh3dType(), eM3DT_Interior);
  EXPECT_TRUE(asInt.getHalfEdgeColl() == mesh.getHalfEdgeColl());
  cast(other, other);
  EXPECT_EQ(other.getNbTriangles(), 4u);
  other = mesh;
  other.setVertex(3, {0, 0, 1.25});
  EXPECT_TRUE(compare(mesh, other, 0.25));
  EXPECT_FALSE(compare(mesh, other, 0.125));
  Mesh3d<omReal64> interior = mesh, turned = mesh, larger = mesh;
  interior.setMesh3dType(eM3DT_Interior);
  turned.reverseOrientation();
  larger.addVertex({});
  for (const Mesh3d<omReal64>& different : {interior, turned, larger}) EXPECT_FALSE(compare(mesh, different, 9));
  EXPECT_TRUE(compare(tetrahedron<omUInt32>(), tetrahedron<omUInt32>(), 0));
}

}  // namespace
