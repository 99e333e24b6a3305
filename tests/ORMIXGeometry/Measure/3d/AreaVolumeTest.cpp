#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <cmath>
#include <limits>
#include <random>

#include "support/LogCapture.h"
#include "support/SampleObjects.h"

namespace {

using namespace samples;

constexpr omReal64 s_piValue = 3.141592653589793;

omReal64 area(const BaseGeometryEntity3d& entity) { return AreaMsr3d::measure(entity); }
omReal64 volume(const BaseGeometryEntity3d& entity) { return VolumeMsr3d::measure(entity); }

/// The tetrahedron of a corner and the three points `edge` away from it along the axes, outside out.
template <class T>
Mesh3d<T> tetrahedron(T corner, T edge) {
  Mesh3d<T> mesh;
  const T far = T(corner + edge);
  EXPECT_TRUE(
      mesh.build({{corner, corner, corner}, {far, corner, corner}, {corner, far, corner}, {corner, corner, far}},
                 {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3}));
  return mesh;
}

/// The cuboid from `min` to `max`, each side cut along a diagonal.
Mesh3d<omReal64> cuboid(const Point3dData<omReal64>& min, const Point3dData<omReal64>& max) {
  Mesh3d<omReal64>::VertexColl vertices;
  for (unsigned corner = 0; corner < 8; ++corner)
    vertices.emplace_back(corner & 1 ? max.getX() : min.getX(), corner & 2 ? max.getY() : min.getY(),
                          corner & 4 ? max.getZ() : min.getZ());
  Mesh3d<omReal64> mesh;
  EXPECT_TRUE(mesh.build(vertices, {0, 2, 3, 0, 3, 1, 4, 5, 7, 4, 7, 6, 0, 1, 5, 0, 5, 4,
                                    2, 6, 7, 2, 7, 3, 0, 4, 6, 0, 6, 2, 1, 3, 7, 1, 7, 5}));
  EXPECT_TRUE(mesh.isClosed());
  return mesh;
}

boost::shared_ptr<MeshWithHoles3d<omReal64>> node(const Mesh3d<omReal64>& exterior) {
  auto result = boost::make_shared<MeshWithHoles3d<omReal64>>();
  result->getExteriorMesh() = exterior;
  return result;
}

/// Which entities the measures accept: the whole table.
template <class Entity>
constexpr bool isMeasured = !std::is_same_v<Entity, Plan3d>;
template <class T>
constexpr bool isMeasured<Segment3d<T>> = false;
template <class T>
constexpr bool isMeasured<PointCloud3d<T>> = false;

template <class Entity>
class Measure3dSupport : public ::testing::Test {};
TYPED_TEST_SUITE(Measure3dSupport, AllEntities3d);

TYPED_TEST(Measure3dSupport, IsThatOfTheTable) {
  const GeometryEntity3dPtr entity = boost::make_shared<TypeParam>(Sample<TypeParam>::make());
  omReal64 value = 0;
  EXPECT_EQ(AreaMsr3d().measure(entity, value), isMeasured<TypeParam>);
  EXPECT_EQ(VolumeMsr3d().measure(*entity, value), isMeasured<TypeParam>);
  if (isMeasured<TypeParam>) {
    EXPECT_NO_THROW(area(*entity));
    EXPECT_NO_THROW(volume(*entity));
  } else {
    EXPECT_THROW(area(*entity), ORMIXGeometryException);
    EXPECT_THROW(volume(*entity), ORMIXGeometryException);
  }
}

template <class T>
class ScalarMeasure3d : public ::testing::Test {};
using Scalars = ::testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(ScalarMeasure3d, Scalars);

TYPED_TEST(ScalarMeasure3d, OfEachEntity) {
  using T = TypeParam;
  const Point3dData<T> c(T(7), T(9), T(8));
  EXPECT_EQ(area(Point3d<T>(c)), 0);
  EXPECT_EQ(volume(Point3d<T>(c)), 0);
  const BoundingBox3d<T> box(T(1), T(2), T(3), T(4), T(7), T(10));
  EXPECT_EQ(area(box), 2 * (15 + 21 + 35));
  EXPECT_EQ(volume(box), 105);
  EXPECT_EQ(area(Sphere3d<T>(c, T(3))), 12.566370614359172 * 3 * 3);
  EXPECT_EQ(volume(Sphere3d<T>(c, T(3))), s_piValue * 3 * 3 * 3 * 4 / 3);
  EXPECT_NEAR(area(Ellipsoid3d<T>(c, T(3), T(3), T(3), 0.1, 0.2, 0.3)), area(Sphere3d<T>(c, T(3))), 1e-13);
  EXPECT_NEAR(volume(Ellipsoid3d<T>(c, T(5), T(3), T(2), 0.1, 0.2, 0.3)), 40 * s_piValue, 1e-13);
  EXPECT_EQ(area(Cube3d<T>(c, T(1), 0.1, 0.2, 0.3)), 24);
  EXPECT_EQ(volume(Cube3d<T>(c, T(1), 0.1, 0.2, 0.3)), 8);
  EXPECT_EQ(area(Cuboid3d<T>(c, T(3), T(2), T(1), 0.1, 0.2, 0.3)), 2 * (24 + 12 + 8));
  EXPECT_EQ(volume(Cuboid3d<T>(c, T(3), T(2), T(1), 0.1, 0.2, 0.3)), 48);
  const Triangle3d<T> triangle({T(1), T(1), T(1)}, {T(4), T(1), T(1)}, {T(1), T(5), T(1)});
  EXPECT_EQ(area(triangle), 6);
  EXPECT_EQ(volume(triangle), 0);
  EXPECT_NEAR(area(tetrahedron<T>(T(1), T(2))), 6 + 2 * std::sqrt(3.0), 1e-14);
  EXPECT_NEAR(volume(tetrahedron<T>(T(1), T(2))), 8.0 / 6, 1e-14);
}

TEST(Measure3d, OfLargeIntegersDoesNotWrap) {
  constexpr omUInt32 far = 4000000000;
  EXPECT_EQ(volume(BoundingBox3d<omUInt32>(0, 0, 0, far, far, far)), 4e9 * 4e9 * 4e9);
  EXPECT_EQ(area(Triangle3d<omUInt32>({0, 0, 0}, {far, 0, 0}, {0, far, 0})), 8e18);
  EXPECT_NEAR(volume(tetrahedron<omUInt32>(0, far)), 64e27 / 6, 1e14);
  EXPECT_EQ(area(Cube3d<omInt32>({0, 0, 0}, 2000000000, 0, 0, 0)), 6 * 16e18);
}

TEST(Measure3d, OfAMeshIgnoresItsOrientation) {
  Mesh3d<omReal64> mesh = tetrahedron(0.0, 1.0);
  EXPECT_DOUBLE_EQ(volume(mesh), 1.0 / 6);
  EXPECT_GT(localVolume(mesh), 0);
  mesh.reverseOrientation();
  EXPECT_DOUBLE_EQ(volume(mesh), 1.0 / 6);
  EXPECT_DOUBLE_EQ(localVolume(mesh), -1.0 / 6);
  EXPECT_EQ(volume(Mesh3d<omReal64>()), 0);
  EXPECT_EQ(area(Mesh3d<omReal64>()), 0);
}

TEST(Measure3d, OfHolesFollowsThePolicy) {
  const auto root = node(cuboid({0, 0, 0}, {5, 2, 1}));
  const auto hole = node(cuboid({1, 0.5, 0.25}, {3, 1.5, 0.75}));
  const auto island = node(cuboid({1.5, 0.75, 0.375}, {2, 1, 0.5}));
  hole->getMeshHoles().push_back(island);
  root->getMeshHoles().push_back(hole);
  EXPECT_NEAR(volume(*root), 10 - (1 - 0.015625), 1e-13);
  EXPECT_NEAR(area(*root), 34 + 7 + 2 * (0.125 + 0.0625 + 0.03125), 1e-12);
  VolumeMsr3d ignoring;
  ignoring.setHoleMsrPolicy(eHMP_IgnoreHoles);
  omReal64 value = 0;
  ASSERT_TRUE(ignoring.measure(*root, value));
  EXPECT_NEAR(value, 10, 1e-13);
  root->getMeshHoles().push_back(nullptr);
  EXPECT_FALSE(VolumeMsr3d().measure(*root, value));
}

TEST(Measure3d, OfAShapeIsTheSumOverItsMeshes) {
  Shape3d shape;
  EXPECT_EQ(volume(shape), 0);
  for (const omReal32 corner : {0.0F, 10.0F}) {
    auto body = boost::make_shared<MeshWithHoles3d<omReal32>>();
    body->getExteriorMesh() = tetrahedron<omReal32>(corner, 3.0F);
    shape.getMeshWithHolesColl().push_back(body);
  }
  EXPECT_NEAR(volume(shape), 9, 1e-12);
  EXPECT_NEAR(area(shape), 27 + 9 * std::sqrt(3.0), 1e-12);
  shape.getMeshWithHolesColl().push_back(nullptr);
  EXPECT_THROW(volume(shape), ORMIXGeometryException);
}

TEST(Measure3d, OfAnUnsupportedEntityIsLoggedAndThrown) {
  const support::LogCapture log(getORMIXGeometryLoggerName());
  try {
    area(Segment3d<omReal64>());
    FAIL();
  } catch (const ORMIXGeometryException& error) {
    EXPECT_STREQ(error.what(), "Measure eM3DT_Area failed for geometry entity eE3DT_Segment");
    EXPECT_NE(std::string(error.getFunction()).find("AreaMsr3d::measure"), std::string::npos);
    EXPECT_NE(std::string(error.getFile()).find("Measure/3d/AreaMsr3d"), std::string::npos);
  }
  EXPECT_THROW(volume(Plan3d()), ORMIXGeometryException);
  ASSERT_EQ(log.messages().size(), 2U);
  EXPECT_EQ(log.messages()[1].second, "Measure eM3DT_Volume failed for geometry entity eE3DT_Plan");
}

TEST(MeshMoments3d, AreRightFarFromTheOrigin) {
  const Mesh3d<omReal64> mesh = cuboid({1e6, -1e6, 1e6}, {1e6 + 1, -1e6 + 1, 1e6 + 1});
  EXPECT_NEAR(localVolume(mesh), 1, 1e-9);
  EXPECT_NEAR(area(mesh), 6, 1e-9);
  MeshMoments result;
  ASSERT_TRUE(moments(mesh, result));
  EXPECT_NEAR(result.volume, 1, 1e-9);
  EXPECT_NEAR(result.centroid.x, 1e6 + 0.5, 1e-9);
  EXPECT_NEAR(result.centroid.y, -1e6 + 0.5, 1e-9);
}

// A cuboid's tensor is known, and turning the mesh inside out changes nothing.
TEST(MeshMoments3d, OfACuboidAreKnown) {
  Mesh3d<omReal64> mesh = cuboid({-1, 2, 3}, {3, 8, 4});
  for (int turn = 0; turn < 2; ++turn) {
    MeshMoments result;
    ASSERT_TRUE(moments(mesh, result));
    EXPECT_NEAR(result.volume, 24, 1e-12);
    EXPECT_NEAR(result.centroid.z, 3.5, 1e-13);
    EXPECT_NEAR(result.inertiaXX, 24.0 * (36 + 1) / 12, 1e-11);
    EXPECT_NEAR(result.inertiaYY, 24.0 * (16 + 1) / 12, 1e-11);
    EXPECT_NEAR(result.inertiaZZ, 24.0 * (16 + 36) / 12, 1e-11);
    EXPECT_NEAR(result.inertiaXY, 0, 1e-11);
    mesh.reverseOrientation();
  }
  MeshMoments untouched;
  untouched.volume = 7;
  EXPECT_FALSE(moments(Mesh3d<omReal64>(), untouched));
  EXPECT_EQ(untouched.volume, 7);
}

}  // namespace
