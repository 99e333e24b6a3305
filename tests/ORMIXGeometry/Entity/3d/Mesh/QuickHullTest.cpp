#include <ORMIXGeometry/Entity/3d/Mesh/QuickHull.h>
#include <ORMIXMath/Shape/TriangleMesh.h>

#include "ORMIXGeometry/Entity/3d/Mesh/SampleMeshes.h"

namespace {

using namespace meshes;

template <class T>
omReal64 volumeOf(const Mesh3d<T>& mesh) {
  Indices corners;
  visitTriangleIndices(mesh.getTopology(), [&](omUInt32 i0, omUInt32 i1, omUInt32 i2) {
    corners.insert(corners.end(), {i0, i1, i2});
  });
  return meshSignedVolume(TriangleMeshView<T>{coordinates(mesh.getVertexColl()), corners.data(), corners.size() / 3});
}

template <class T>
class QuickHull : public testing::Test {};
TYPED_TEST_SUITE(QuickHull, support::Scalars);

TYPED_TEST(QuickHull, KeepsTheCornersOfABoxInOrder) {
  using Point = Point3dData<TypeParam>;
  const std::vector<Point> corners{{0, 6, 0}, {2, 0, 0}, {0, 0, 0}, {2, 6, 4},
                                   {0, 0, 4}, {2, 0, 4}, {0, 6, 4}, {2, 6, 0}};
  std::vector<Point> points{{1, 3, 2}, {1, 0, 0}, {1, 3, 4}};
  points.insert(points.end(), corners.begin(), corners.end());
  points.insert(points.end(), {{2, 6, 2}, {1, 1, 1}, {2, 2, 2}});
  Mesh3d<TypeParam> mesh = tetrahedron<TypeParam>();
  mesh.setMesh3dType(eM3DT_Interior);
  ASSERT_TRUE(quickHull(points, mesh));
  EXPECT_EQ(mesh.getVertexColl(), corners);
  EXPECT_EQ(mesh.getNbTriangles(), 12u);
  EXPECT_TRUE(mesh.isClosed());
  EXPECT_TRUE(mesh.checkIntegrity());
  EXPECT_EQ(volumeOf(mesh), 48.0);
  EXPECT_EQ(mesh.getMesh3dType(), eM3DT_Interior);
  // The hull of a hull, of the mesh's own vertices.
  mesh.addVertex({1, 1, 1});
  ASSERT_TRUE(quickHull(mesh.getVertexColl(), mesh));
  EXPECT_EQ(mesh.getVertexColl(), corners);
}

TYPED_TEST(QuickHull, LeavesTheMeshWhereThereIsNoHull) {
  const Mesh3d<TypeParam> before = tetrahedron<TypeParam>();
  Mesh3d<TypeParam> mesh = before;
  PointCloud3d<TypeParam> cloud({{0, 0, 1}, {3, 0, 1}, {0, 3, 1}, {3, 3, 1}, {1, 1, 1}});
  const BoolResult result = quickHull(cloud, mesh);
  EXPECT_FALSE(result);
  EXPECT_EQ(
      result.getMessage(),
      "Convex hull of points in space: four points that do not lie in one plane are needed, 5 points given, all in "
      "one plane");
  EXPECT_FALSE(quickHull(PointCloud3d<TypeParam>(), mesh));
  EXPECT_TRUE(compare(mesh, before, 0));
  cloud.push_back({0, 0, 2});
  ASSERT_TRUE(quickHull(cloud, mesh));
  EXPECT_EQ(mesh.getNbVertices(), 5u);
  EXPECT_EQ(volumeOf(mesh), 3.0);
}

}  // namespace
