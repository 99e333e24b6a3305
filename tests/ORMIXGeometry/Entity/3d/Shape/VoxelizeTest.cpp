#include <ORMIXGeometry/Entity/3d/Shape/Voxelize.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXMath/Distance/Orientation3d.h>
#include <gtest/gtest.h>

#include <boost/smart_ptr/make_shared_object.hpp>

#include "support/Checks.h"
#include "support/Random.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

__extension__ using Wide = __int128;
using WidePoint = std::array<Wide, 3>;

/// A whole number, moved by a power of 2^-12; so small numbers of it are computed exactly.
Wide moved(omInt64 value, int power = 0) {
  const auto powerOfTwo = [](int exponent) { return Wide{1} << exponent; };
  return value * powerOfTwo(36) + (power == 0 ? 0 : powerOfTwo(36 - 12 * power));
}

Wide crossAlongX(const WidePoint& a, const WidePoint& b, const WidePoint& c) {
  return (b[1] - a[1]) * (c[2] - a[2]) - (b[2] - a[2]) * (c[1] - a[1]);
}

/// How often a ray to the point from lower x enters the mesh more often than it leaves it; nothing is in line with it.
template <class T>
omInt64 windingAt(const Mesh3d<T>& mesh, const WidePoint& at) {
  omInt64 winding = 0;
  visitTriangles(mesh, [&](const auto&... corners) {
    const WidePoint p[] = {{moved(corners.getX()), moved(corners.getY()), moved(corners.getZ())}...};
    const Wide weights[] = {crossAlongX(p[1], p[2], at), crossAlongX(p[2], p[0], at), crossAlongX(p[0], p[1], at)};
    const bool isAbove = weights[0] > 0 && weights[1] > 0 && weights[2] > 0;
    const bool isBelow = weights[0] < 0 && weights[1] < 0 && weights[2] < 0;
    if (!isAbove && !isBelow) return;
    Wide sum = 0;  // below 2^126
    for (int k = 0; k < 3; ++k) sum += weights[k] * (p[k][0] - at[0]);
    if ((sum < 0) == isAbove) winding += isAbove ? -1 : 1;
  });
  return winding;
}

/// A tetrahedron of small whole coordinates, with volume.
void addTetrahedron(support::Random& random, Mesh3d<omInt32>& mesh) {
  for (;;) {
    std::array<Point3dData<omInt32>, 4> corners;
    for (auto& corner : corners)
      corner = {static_cast<omInt32>(random.below(15)) - 1, static_cast<omInt32>(random.below(15)) - 1,
                static_cast<omInt32>(random.below(15)) - 1};
    const int side = orientation3d(corners[0].getX(), corners[0].getY(), corners[0].getZ(), corners[1].getX(),
                                   corners[1].getY(), corners[1].getZ(), corners[2].getX(), corners[2].getY(),
                                   corners[2].getZ(), corners[3].getX(), corners[3].getY(), corners[3].getZ());
    if (side == 0) continue;
    if (side > 0) std::swap(corners[1], corners[2]);
    std::array<std::size_t, 4> v{};
    for (std::size_t k = 0; k < 4; ++k) v[k] = mesh.addVertex(corners[k]);
    for (const auto& t : {std::array<std::size_t, 3>{0, 1, 2}, {0, 2, 3}, {0, 3, 1}, {1, 3, 2}})
      EXPECT_TRUE(mesh.addTriangle(v[t[0]], v[t[1]], v[t[2]]));
    return;
  }
}

bool has(const RowIntersections3d& voxels, omUInt32 x, omUInt64 y, omUInt64 z) {
  if (z < voxels.zOffset || z - voxels.zOffset >= voxels.rowIntersectionsColl.size()) return false;
  const RowIntersections& slice = voxels.rowIntersectionsColl[static_cast<std::size_t>(z - voxels.zOffset)];
  if (y < slice.getStartRow() || y >= slice.getEndRow()) return false;
  const auto row = slice.getRow(y);
  return std::any_of(row.begin(), row.end(), [x](const PixelRun& run) { return run.begin <= x && x < run.end; });
}

// The centres are the odd numbers, so that many are in corners, on edges and in faces.
const VoxelGrid s_grid{{0, 0, 0}, {2, 2, 2}, 6, 6, 6};

TEST(Voxelize, DecidesTiesAsIfCentresWereMoved) {
  support::Random random(61);
  for (int round = 0; round < 300; ++round) {
    Mesh3d<omInt32> mesh;
    for (omUInt32 body = 0; body <= random.below(4); ++body) addTetrahedron(random, mesh);
    const RowIntersections3d evenOdd = voxelize(mesh, s_grid), nonZero = voxelize(mesh, s_grid, eIR_NonZero);
    const Mesh3d<omReal64> reals = cast<omReal64>(mesh);
    EXPECT_EQ(voxelize(reals, s_grid), evenOdd);
    for (omUInt32 voxel = 0; voxel < 216; ++voxel) {
      const omUInt32 x = voxel % 6, y = voxel / 6 % 6, z = voxel / 36;
      const omInt64 winding = windingAt(mesh, {moved(2 * x + 1, 1), moved(2 * y + 1, 2), moved(2 * z + 1, 3)});
      ASSERT_EQ(has(evenOdd, x, y, z), winding % 2 != 0) << round << ": " << x << ' ' << y << ' ' << z;
      ASSERT_EQ(has(nonZero, x, y, z), winding != 0) << round << ": " << x << ' ' << y << ' ' << z;
    }
  }
}

TEST(Voxelize, DividesWhatBodiesDivide) {
  support::Random random(62);
  // A box and a point in it, with the six pyramids between them, two tetrahedra each.
  for (int round = 0; round < 100; ++round) {
    const auto coordinate = [&] { return 0.25 * random.below(round % 2 == 0 ? 49 : 13) * (round % 2 == 0 ? 1 : 4); };
    const Point3dData<omReal64> apex(coordinate(), coordinate(), coordinate());
    std::vector<int> count(216);
    for (int side = 0; side < 6; ++side)
      for (int half = 0; half < 2; ++half) {
        const int axis = side / 2, value = side % 2;
        Mesh3d<omReal64> mesh;
        mesh.addVertex(apex);
        for (const int corner : {0, half == 0 ? 1 : 2, 3}) {
          omReal64 place[3];
          place[axis] = 12 * value;
          place[(axis + 1) % 3] = 12 * (corner & 1);
          place[(axis + 2) % 3] = 12 * (corner >> 1);
          mesh.addVertex({place[0], place[1], place[2]});
        }
        for (const auto& t : {std::array<std::size_t, 3>{0, 1, 2}, {0, 2, 3}, {0, 3, 1}, {1, 3, 2}})
          EXPECT_TRUE(mesh.addTriangle(t[0], t[1], t[2]));
        const RowIntersections3d voxels = voxelize(mesh, s_grid);
        for (omUInt32 voxel = 0; voxel < 216; ++voxel)
          count[voxel] += has(voxels, voxel % 6, voxel / 6 % 6, voxel / 36);
      }
    EXPECT_EQ(count, std::vector<int>(216, 1)) << apex;
  }
}

TEST(Voxelize, RefusesWhatHasNoInside) {
  Mesh3d<omReal64> mesh;
  for (const auto& corner : {std::array<omReal64, 3>{0, 0, 0}, {12, 0, 0}, {0, 12, 0}, {0, 0, 12}})
    mesh.addVertex({corner[0], corner[1], corner[2]});
  for (const auto& t : {std::array<std::size_t, 3>{0, 2, 1}, {0, 3, 2}, {0, 1, 3}})
    EXPECT_TRUE(mesh.addTriangle(t[0], t[1], t[2]));
  const auto refused = [](const Mesh3d<omReal64>& refusedMesh, const VoxelGrid& grid) {
    return support::thrownBy<ORMIXGeometryException>([&] { voxelize(refusedMesh, grid); });
  };
  EXPECT_EQ(refused(mesh, s_grid),
            "A mesh cannot be voxelized: it is open or its triangles are not oriented alike, as the row 0 of slice 0 "
            "does not leave it as often as it enters it");
  EXPECT_EQ(getNbVoxels(voxelize(mesh, {{0, 0, 13}, {1, 1, 1}, 9, 9, 9})), 0u);  // no row meets it
  EXPECT_TRUE(mesh.addTriangle(1, 2, 3));
  const omUInt64 nbVoxels = getNbVoxels(voxelize(mesh, s_grid));
  EXPECT_EQ(nbVoxels, 35u);  // as many as three numbers from 0 on with a sum of at most 4
  mesh.reverseOrientation();
  EXPECT_EQ(getNbVoxels(voxelize(mesh, s_grid, eIR_NonZero)), nbVoxels);
  for (const omReal64 scale : {1e300, 1e-300, 1e17}) {
    Mesh3d<omReal64> scaled = mesh;
    for (auto& vertex : scaled.getVertexColl()) vertex *= scale;
    EXPECT_EQ(getNbVoxels(voxelize(scaled, s_grid)), scale > 1 ? 216u : 0u);
  }
  for (const omReal64 value : {support::s_nan, support::s_infinity}) {
    Mesh3d<omReal64> broken = mesh;
    broken.setVertex(2, {1, value, 3});
    EXPECT_EQ(refused(broken, s_grid).substr(0, 50), "A mesh cannot be voxelized: vertex 2 of mesh 0 is ");
    EXPECT_EQ(refused(mesh, {{0, 0, value}, {1, 1, 1}, 2, 2, 2}).substr(0, 52),
              "A mesh cannot be voxelized: the grid has the origin ");
    EXPECT_EQ(refused(mesh, {{0, 0, 0}, {1, value, 1}, 2, 2, 2}).substr(0, 52),
              "A mesh cannot be voxelized: the grid has the origin ");
  }
  for (const omReal64 spacing : {0.0, -1.0, 1e-20})
    EXPECT_EQ(refused(mesh, {{1, 1, 1}, {spacing, 1, 1}, 2, 2, 2}).substr(0, 52),
              "A mesh cannot be voxelized: the grid has the origin ");
  EXPECT_EQ(refused(mesh, {{0, 0, 0}, {1, 1, 1}, 1, 65536, 65536}),
            "A mesh cannot be voxelized: the grid has 65536 slices of 65536 rows, more rows than 67108864");
  EXPECT_EQ(getNbVoxels(voxelize(mesh, {})), 0u);
  const std::vector<boost::shared_ptr<MeshWithHoles3d<omReal64>>> withNull{nullptr};
  EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { voxelize(withNull, s_grid); }),
            "Input shared pointer should not be null");
}

}  // namespace
