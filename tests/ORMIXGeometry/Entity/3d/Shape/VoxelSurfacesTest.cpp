#include <ORMIXGeometry/Entity/3d/Mesh/MeshWalks.h>
#include <ORMIXGeometry/Entity/3d/Shape/SurfaceNets.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelSurfaces.h>
#include <ORMIXGeometry/Entity/3d/Shape/Voxelize.h>
#include <ORMIXGeometry/Measure/3d/VolumeMsr3d.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <gtest/gtest.h>

#include "ORMIXGeometry/Entity/3d/Shape/SampleVolumes.h"
#include "support/Checks.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

template <class T>
using MeshColl = std::vector<boost::shared_ptr<MeshWithHoles3d<T>>>;

/// Closed, with one fan at each vertex.
template <class T>
void expectManifold(const Mesh3d<T>& mesh) {
  EXPECT_TRUE(mesh.checkIntegrity());
  EXPECT_TRUE(mesh.isClosed());
  std::vector<std::size_t> nbStarts(mesh.getNbVertices());
  for (const omUInt32 vertex : mesh.getVertexIndexColl()) ++nbStarts[vertex];
  const std::vector<omUInt32> outgoing = collectOutgoingHalfEdges(mesh.getTopology(), mesh.getNbVertices());
  for (std::size_t vertex = 0; vertex < outgoing.size(); ++vertex) {
    ASSERT_NE(outgoing[vertex], s_noHalfEdge);
    std::size_t nbOfFan = 0;
    visitFan(mesh.getTopology(), outgoing[vertex], [&nbOfFan](std::size_t) { ++nbOfFan; });
    EXPECT_EQ(nbOfFan, nbStarts[vertex]);
  }
}

/// 48 times the signed volume, exact where coordinates are multiples of a half.
template <class T>
omInt64 volume48(const Mesh3d<T>& mesh) {
  omInt64 sum = 0;
  const auto twice = [](T value) { return static_cast<omInt64>(2 * value); };
  visitTriangles(mesh, [&](const auto& a, const auto& b, const auto& c) {
    const omInt64 bx = twice(b.getX()), by = twice(b.getY()), bz = twice(b.getZ());
    const omInt64 cx = twice(c.getX()), cy = twice(c.getY()), cz = twice(c.getZ());
    sum += twice(a.getX()) * (by * cz - bz * cy) + twice(a.getY()) * (bz * cx - bx * cz) +
           twice(a.getZ()) * (bx * cy - by * cx);
  });
  return sum;
}

struct Totals {
  std::size_t nbExteriors = 0, nbHoles = 0;
  omInt64 volume48 = 0;
};

template <class T>
Totals checkMeshes(const MeshColl<T>& roots) {
  Totals totals;
  for (const auto& root : roots)
    visitNodes(*root, [&](const MeshWithHoles3d<T>& node) {
      expectManifold(node.getExteriorMesh());
      const bool isHole = node.getMesh3dType() == eM3DT_Interior;
      EXPECT_EQ(isHole, node.getParent() != nullptr && node.getParent()->getMesh3dType() == eM3DT_Exterior);
      const omInt64 ofNode = volume48(node.getExteriorMesh());
      EXPECT_TRUE(isHole ? ofNode < 0 : ofNode > 0);
      totals.volume48 += ofNode;
      ++(isHole ? totals.nbHoles : totals.nbExteriors);
      return true;
    });
  return totals;
}

/// The same triangles as those of the faces, with each vertex within half a voxel.
void expectNets(const MeshColl<omReal64>& nets, const MeshColl<omReal64>& faces) {
  ASSERT_EQ(nets.size(), faces.size());
  for (std::size_t index = 0; index < nets.size(); ++index) {
    const Mesh3d<omReal64>& net = nets[index]->getExteriorMesh();
    const Mesh3d<omReal64>& face = faces[index]->getExteriorMesh();
    EXPECT_EQ(net.getVertexIndexColl(), face.getVertexIndexColl());
    omReal64 farthest = 0;
    for (std::size_t vertex = 0; vertex < net.getNbVertices(); ++vertex)
      farthest = std::max(farthest, (net.getVertex(vertex) - face.getVertex(vertex)).normL2());
    EXPECT_LE(farthest, 0.5 + 1e-12);
    EXPECT_GT(farthest, 0.1);
    expectNets(nets[index]->getMeshHoles(), faces[index]->getMeshHoles());
  }
}

void expectSurfacesOf(const support::Volume& volume) {
  const RowIntersections3d voxels = volume.runs();
  const VoxelGrid grid{{0, 0, 0}, {1, 1, 1}, 9, 9, 9};
  for (const eVoxelConnectivity connectivity : {eVC_6, eVC_26}) {
    int nbComponents = 0, nbBackgrounds = 0;
    volume.labels(true, connectivity, nbComponents);
    volume.labels(false, backgroundConnectivity(connectivity), nbBackgrounds);
    const MeshColl<omReal64> meshes = voxelSurfaces<omReal64>(voxels, connectivity);
    const Totals totals = checkMeshes(meshes);
    EXPECT_EQ(totals.nbExteriors, static_cast<std::size_t>(nbComponents));
    EXPECT_EQ(totals.nbHoles, static_cast<std::size_t>(nbBackgrounds - 1));
    EXPECT_EQ(totals.volume48, 48 * static_cast<omInt64>(getNbVoxels(voxels)));
    for (const eInsideRule rule : {eIR_EvenOdd, eIR_NonZero}) EXPECT_EQ(voxelize(meshes, grid, rule), voxels);
    expectNets(surfaceNets<omReal64>(voxels, connectivity), meshes);
  }
}

TEST(VoxelSurfaces, OfAllBlocksOfEightVoxelsAreManifold) {
  for (unsigned pattern = 0; pattern < 256; ++pattern) {
    SCOPED_TRACE(pattern);
    expectSurfacesOf(support::blockOfEight(pattern));
  }
}

TEST(VoxelSurfaces, OfRandomVolumesAreManifold) {
  support::Random random(51);
  for (int round = 0; round < 200; ++round) {
    SCOPED_TRACE(round);
    expectSurfacesOf(support::randomVolume(random));
  }
}

TEST(VoxelSurfaces, NestBodiesInCavities) {
  support::Volume volume{9, 9, 9};
  for (int index = 0; index < 729; ++index) {
    const int x = index % 9, y = index / 9 % 9, z = index / 81;
    volume.at(x, y, z) = std::max({std::abs(x - 4), std::abs(y - 4), std::abs(z - 4)}) % 2 == 0;
  }
  const MeshColl<omReal32> roots = voxelSurfaces<omReal32>(volume.runs(), eVC_26);
  ASSERT_EQ(roots.size(), 1u);
  // Cubes of the sides 9, 7, 5, 3 and 1, one in the other.
  omReal64 side = 9;
  for (auto node = roots[0]; node; node = node->hasHoles() ? *node->beginHole() : nullptr, side -= 2) {
    EXPECT_NEAR(VolumeMsr3d::measure(node->getExteriorMesh()), side * side * side, 1e-9);
    EXPECT_EQ(node->getMesh3dType(), std::fmod(side, 4) == 1 ? eM3DT_Exterior : eM3DT_Interior);
  }
  EXPECT_EQ(side, -1);
  EXPECT_NEAR(VolumeMsr3d::measure(*roots[0]), 729 - 343 + 125 - 27 + 1, 1e-9);
}

TEST(VoxelSurfaces, EndWhereCoordinatesAreNotHeld) {
  const auto dotAt = [](omUInt32 x, omUInt64 y, omUInt64 z) {
    RowIntersections3d dot(z, {RowIntersections()});
    EXPECT_TRUE(dot.rowIntersectionsColl[0].addRun(y, x, x + 1));
    return dot;
  };
  const RowIntersections3d last = dotAt(4294967294u, 4294967294u, 4294967294u);
  const MeshColl<omReal64> cube = voxelSurfaces<omReal64>(last, eVC_6);
  ASSERT_EQ(cube.size(), 1u);
  EXPECT_EQ(cube[0]->getNbExteriorTriangles(), 12u);
  const RowIntersections3d voxels =
      voxelize(cube, {{4294967000.0, 4294967000.0, 4294967000.0}, {1, 1, 1}, 300, 300, 300});
  EXPECT_EQ(voxels, dotAt(294, 294, 294));
  for (const RowIntersections3d& dot : {dotAt(16777216, 0, 0), dotAt(0, 16777216, 0), dotAt(0, 0, 16777216)})
    EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { voxelSurfaces<omReal32>(dot, eVC_6); }),
              "Surfaces of voxels: a coordinate is 16777217, above 16777216, up to which "
              "ormix::geom::Mesh3d<ormix::omReal32> "
              "holds every whole number");
  EXPECT_TRUE(voxelSurfaces<omReal32>({}, eVC_26).empty());
  // Adjacent runs, rows without runs and far ones.
  RowIntersections3d odd(3, std::vector<RowIntersections>(4));
  EXPECT_TRUE(odd.rowIntersectionsColl[1].addRun(5, 2, 3));
  EXPECT_TRUE(odd.rowIntersectionsColl[1].addRun(5, 3, 7));
  EXPECT_TRUE(odd.rowIntersectionsColl[2].addRun(100000, 4, 5));
  EXPECT_EQ(checkMeshes(voxelSurfaces<omReal64>(odd, eVC_26)).volume48, 6 * 48);
}

}  // namespace
