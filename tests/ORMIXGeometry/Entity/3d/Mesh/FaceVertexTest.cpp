#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Entity/3d/Mesh/QuickHull.h>
#include <ORMIXGeometry/Measure/3d/AreaMsr3d.h>
#include <ORMIXGeometry/Measure/3d/MeshMoments3d.h>
#include <ORMIXGeometry/Measure/3d/TriMeshMeasures.h>
#include <ORMIXGeometry/Measure/3d/VolumeMsr3d.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Transform/3d/EnvelopeTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RigidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/TriMeshTransforms.h>

#include <algorithm>
#include <limits>
#include <set>

#include "SampleMeshes.h"

namespace {

using namespace meshes;

template <class T>
class FaceVertex : public ::testing::Test {};
using Scalars = ::testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(FaceVertex, Scalars);

/// Triangles of random corners: shared edges, equal corners, duplicates, unused vertices.
template <class T>
FaceVertexTriMesh3d<T> randomMesh(support::Random& random) {
  FaceVertexTriMesh3d<T> mesh;
  const omUInt32 nbVertices = 1 + random.below(12);
  for (omUInt32 i = 0; i < nbVertices; ++i)
    mesh.addVertex({static_cast<T>(random.below(1000)), static_cast<T>(random.below(1000)), static_cast<T>(i)});
  for (omUInt32 i = random.below(40); i > 0; --i)
    EXPECT_TRUE(mesh.addTriangle(random.below(nbVertices), random.below(nbVertices), random.below(nbVertices)));
  return mesh;
}

TYPED_TEST(FaceVertex, ConvertsThereAndBackAndMeasuresAsAMesh) {
  using T = TypeParam;
  support::Random random(1501);
  for (int trial = 0; trial < 300; ++trial) {
    const FaceVertexTriMesh3d<T> mesh = randomMesh<T>(random);
    Indices owners;
    Mesh3d<T> halfEdges;
    ASSERT_TRUE(toMesh3d(mesh, halfEdges, eNMP_OwnVertices, &owners));
    EXPECT_TRUE(halfEdges.checkIntegrity());
    const FaceVertexTriMesh3d<T> back = toFaceVertexTriMesh3d(halfEdges);
    ASSERT_EQ(back.getNbTriangles(), mesh.getNbTriangles());
    EXPECT_EQ(back.getNbVertices(), mesh.getNbVertices() + 3 * owners.size());
    for (std::size_t t = 0; t < mesh.getNbTriangles(); ++t) EXPECT_EQ(back.getTriangle(t), mesh.getTriangle(t));
    if (owners.empty()) {
      EXPECT_TRUE(compare(back, mesh, T(0)));
    }
    // The same bits, from a view of a mesh of either kind and of bare arrays.
    EXPECT_EQ(area(mesh), AreaMsr3d::measure(halfEdges));
    EXPECT_EQ(volume(mesh), VolumeMsr3d::measure(halfEdges));
    EXPECT_EQ(localVolume(mesh), localVolume(halfEdges));
    const TriMesh3d<T> view(coordinates(mesh.getVertexColl()), mesh.getNbVertices(), TriMesh3d<T>(mesh).getIndices(),
                            mesh.getNbTriangles());
    EXPECT_EQ(area(view), area(halfEdges));
    EXPECT_EQ(printed(envelope(mesh)), printed(EnvelopeTransform3d::envelope(toMesh3d(view))));
    Mesh3d<T> hull, hullOfPoints;
    EXPECT_EQ(bool(quickHull(mesh, hull)), bool(quickHull(mesh.getVertexColl(), hullOfPoints)));
    expectSame(hull, hullOfPoints);
  }
}

// The oracle looks at all other triangles for each edge.
TYPED_TEST(FaceVertex, KnowsTheNeighbourOfEachEdge) {
  using T = TypeParam;
  support::Random random(1502);
  for (int trial = 0; trial < 300; ++trial) {
    const FaceVertexAdjTriMesh3d<T> mesh = toFaceVertexAdjTriMesh3d(randomMesh<T>(random));
    const auto& triangles = mesh.getTriangleColl();
    const auto isProper = [](const IndexTriangle& t) { return std::set<omUInt32>(t.begin(), t.end()).size() == 3; };
    const auto hasEdge = [](const IndexTriangle& t, omUInt32 a, omUInt32 b) {
      return std::count(t.begin(), t.end(), a) > 0 && std::count(t.begin(), t.end(), b) > 0;
    };
    bool isClosed = true;
    for (omUInt32 t = 0; t < triangles.size(); ++t)
      for (std::size_t k = 0; k < 3; ++k) {
        std::vector<omUInt32> others;
        for (omUInt32 other = 0; other < triangles.size(); ++other)
          if (other != t && isProper(triangles[t]) && isProper(triangles[other]) &&
              hasEdge(triangles[other], triangles[t][k], triangles[t][(k + 1) % 3]))
            others.push_back(other);
        EXPECT_EQ(mesh.getNeighbours(t)[k], others.empty()      ? s_noNeighbour
                                            : others.size() > 1 ? s_severalNeighbours
                                                                : others[0]);
        isClosed = isClosed && others.size() == 1;
      }
    EXPECT_EQ(mesh.isClosed(), isClosed);
  }
}

TEST(FaceVertex, RefusesInvalidIndicesByNameAndChangesNothing) {
  FaceVertexTriMesh3d<omReal64> mesh;
  for (int i = 0; i < 3; ++i) mesh.addVertex({omReal64(i), 0, 0});
  EXPECT_TRUE(mesh.addTriangle(0, 0, 2));
  const FaceVertexTriMesh3d<omReal64> before = mesh;
  EXPECT_EQ(mesh.addTriangle(0, 1, 3).getMessage(),
            "Triangle with index 1: Vertex with index 3 is not valid given vertex collection size 3");
  EXPECT_EQ(mesh.build({{0, 0, 0}}, {{0, 0, 0}, {0, 0, 0}, {0, 7, 9}}).getMessage(),
            "Triangle with index 2: Vertex with index 7 is not valid given vertex collection size 1");
  EXPECT_TRUE(compare(mesh, before, 0));
  EXPECT_THROW(mesh.getTriangle(1), ORMIXGeometryException);
  EXPECT_THROW(mesh.getVertex(3), ORMIXGeometryException);
  EXPECT_THROW(toMesh3d(mesh, eNMP_Refuse), ORMIXGeometryException);
  EXPECT_THROW(envelope(FaceVertexTriMesh3d<omReal64>()), ORMIXGeometryException);
  const omUInt32 indices[] = {0, 1, 0xFFFFFFFFu};
  const TriMesh3d<omReal64> view(mesh.getVertexColl().data(), 3, indices, 1);
  EXPECT_THROW(toMesh3d(view), ORMIXGeometryException);
  EXPECT_THROW(toFaceVertexTriMesh3d(view), ORMIXGeometryException);
  EXPECT_THROW(toFaceVertexAdjTriMesh3d(view), ORMIXGeometryException);
  mesh.getVertexColl().pop_back();
  EXPECT_FALSE(mesh.checkIntegrity());
}

TEST(FaceVertex, IsMappedWithTheBitsOfAMeshOrNotAtAll) {
  support::Random random(1503);
  const FaceVertexTriMesh3d<omReal64> mesh = randomMesh<omReal64>(random);
  const RigidTransform3d rigid(0.1, 0.2, 0.3, 4, 5, 6);
  Mesh3d<omReal64> halfEdges = toMesh3d(mesh);
  ASSERT_TRUE(rigid.applyInSitu(halfEdges));
  const FaceVertexTriMesh3d<omReal64> image = apply(rigid, mesh);
  EXPECT_TRUE(
      std::equal(image.getVertexColl().begin(), image.getVertexColl().end(), halfEdges.getVertexColl().begin()));
  EXPECT_EQ(image.getTriangleColl(), mesh.getTriangleColl());
  FaceVertexTriMesh3d<omReal64> unmapped = mesh;
  unmapped.getVertexColl().back().setX(std::numeric_limits<omReal64>::infinity());  // it has no image
  const std::string before = printed(unmapped);
  EXPECT_FALSE(applyInSitu(rigid, unmapped));
  EXPECT_THROW(apply(rigid, unmapped), ORMIXGeometryException);
  EXPECT_EQ(printed(unmapped), before);
}

// Many triangles on one edge, in both directions: linear.
TEST(FaceVertex, HasAnyNumberOfTrianglesAnEdge) {
  constexpr omUInt32 nbTriangles = 250000;
  FaceVertexTriMesh3d<omReal32>::TriangleColl triangles;
  for (omUInt32 i = 0; i < nbTriangles; ++i)
    triangles.push_back(i % 2 == 0 ? IndexTriangle{i + 2, 0, 1} : IndexTriangle{1, 0, i + 2});
  FaceVertexAdjTriMesh3d<omReal32> mesh;
  ASSERT_TRUE(mesh.build(FaceVertexTriMesh3d<omReal32>::VertexColl(nbTriangles + 2), triangles));
  EXPECT_EQ(mesh.getNeighbours(nbTriangles - 2),
            (std::array<omUInt32, 3>{s_noNeighbour, s_severalNeighbours, s_noNeighbour}));
  const Mesh3d<omReal32> halfEdges = toMesh3d(mesh);
  EXPECT_EQ(halfEdges.getNbVertices(), mesh.getNbVertices() + 3 * (std::size_t{nbTriangles} - 2));
  EXPECT_TRUE(halfEdges.checkIntegrity());
}

}  // namespace
