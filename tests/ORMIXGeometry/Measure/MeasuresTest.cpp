#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <boost/math/special_functions/ellint_2.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <cmath>

#include "support/Checks.h"
#include "support/SampleObjects.h"

// The sums over rings and meshes themselves are tested with the kernels that compute them.

namespace {

using namespace samples;

constexpr omReal64 s_piValue = 3.141592653589793;

omReal64 area(const BaseGeometryEntity2d& entity) { return AreaMsr2d::measure(entity); }
omReal64 area(const BaseGeometryEntity3d& entity) { return AreaMsr3d::measure(entity); }
omReal64 perimeter(const BaseGeometryEntity2d& entity) { return PerimeterMsr2d::measure(entity); }
omReal64 volume(const BaseGeometryEntity3d& entity) { return VolumeMsr3d::measure(entity); }

/// Which entities the measures accept, by the entity's own class: the whole table.
template <class Entity>
constexpr bool isMeasured =
    !std::is_same_v<Entity, Line2d> && !std::is_same_v<Entity, Parabola2d> && !std::is_same_v<Entity, Plan3d>;
template <class T>
constexpr bool isMeasured<Segment2d<T>> = false;
template <class T>
constexpr bool isMeasured<PointCloud2d<T>> = false;
template <class T>
constexpr bool isMeasured<Segment3d<T>> = false;
template <class T>
constexpr bool isMeasured<PointCloud3d<T>> = false;

eMeasure2dType typeOf(const BaseGeometryMeasure2d& measure) { return measure.getMeasure2dType(); }
eMeasure3dType typeOf(const BaseGeometryMeasure3d& measure) { return measure.getMeasure3dType(); }
eEntity2dType typeOf(const BaseGeometryEntity2d& entity) { return entity.getEntity2dType(); }
eEntity3dType typeOf(const BaseGeometryEntity3d& entity) { return entity.getEntity3dType(); }

template <class Measure, class Entity>
void expectSupport() {
  const boost::shared_ptr<typename Measure::Entity> entity = boost::make_shared<Entity>(Sample<Entity>::make());
  omReal64 value = 0;
  EXPECT_EQ(Measure().measure(entity, value), isMeasured<Entity>);
  EXPECT_EQ(Measure().measure(*entity, value), isMeasured<Entity>);
  if (isMeasured<Entity>)
    EXPECT_EQ(Measure::measure(*entity), value);
  else
    EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { Measure::measure(*entity); }),
              "Measure " + toString(typeOf(Measure())) + " failed for geometry entity " + toString(typeOf(*entity)));
}

template <class Entity>
class MeasureSupport2d : public ::testing::Test {};
TYPED_TEST_SUITE(MeasureSupport2d, AllEntities2d);
TYPED_TEST(MeasureSupport2d, IsThatOfTheTable) {
  expectSupport<AreaMsr2d, TypeParam>();
  expectSupport<PerimeterMsr2d, TypeParam>();
}
template <class Entity>
class MeasureSupport3d : public ::testing::Test {};
TYPED_TEST_SUITE(MeasureSupport3d, AllEntities3d);
TYPED_TEST(MeasureSupport3d, IsThatOfTheTable) {
  expectSupport<AreaMsr3d, TypeParam>();
  expectSupport<VolumeMsr3d, TypeParam>();
}

template <class T>
Mesh3d<T> tetrahedron(T corner, T edge) {
  Mesh3d<T> mesh;
  const T far = T(corner + edge);
  EXPECT_TRUE(
      mesh.build({{corner, corner, corner}, {far, corner, corner}, {corner, far, corner}, {corner, corner, far}},
                 {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3}));
  return mesh;
}

template <class T>
class ScalarMeasure : public ::testing::Test {};
TYPED_TEST_SUITE(ScalarMeasure, support::Scalars);

TYPED_TEST(ScalarMeasure, OfEachEntityOfThePlane) {
  using T = TypeParam;
  const Point2dData<T> c(T(7), T(9));
  EXPECT_EQ(area(Point2d<T>(c)), 0);
  EXPECT_EQ(perimeter(Point2d<T>(c)), 0);
  EXPECT_EQ(area(BoundingBox2d<T>(T(1), T(2), T(4), T(7))), 15);
  EXPECT_EQ(perimeter(BoundingBox2d<T>(T(1), T(2), T(4), T(7))), 16);
  EXPECT_EQ(area(Circle2d<T>(c, T(3))), s_piValue * 3 * 3);
  EXPECT_EQ(perimeter(Circle2d<T>(c, T(3))), 6.283185307179586 * 3);
  EXPECT_EQ(area(Ellipse2d<T>(c, T(5), T(3), 0.3)), s_piValue * 5 * 3);
  EXPECT_EQ(area(Square2d<T>(c, T(3), 0.3)), 36);
  EXPECT_EQ(perimeter(Square2d<T>(c, T(3), 0.3)), 24);
  EXPECT_EQ(area(Rectangle2d<T>(c, T(3), T(2), 0.3)), 24);
  EXPECT_EQ(perimeter(Rectangle2d<T>(c, T(3), T(2), 0.3)), 20);
  // An interior ring counts with the other sign.
  for (const bool isInterior : {false, true}) {
    auto square = ring<T>(isInterior ? eP2DT_Interior : eP2DT_Exterior, 1, 1, 2);
    EXPECT_EQ(area(square), isInterior ? -4 : 4);
    EXPECT_EQ(perimeter(square), 8);
    std::reverse(square.getPointColl().begin(), square.getPointColl().end());
    EXPECT_EQ(area(square), isInterior ? 4 : -4);
  }
  EXPECT_EQ(area(Polygon2d<T>()) + perimeter(Polygon2d<T>()), 0);
}

TYPED_TEST(ScalarMeasure, OfEachEntityOfSpace) {
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
  Mesh3d<T> mesh = tetrahedron<T>(T(1), T(2));
  for (int turn = 0; turn < 2; ++turn, mesh.reverseOrientation()) {
    EXPECT_NEAR(area(mesh), 6 + 2 * std::sqrt(3.0), 1e-14);
    EXPECT_NEAR(volume(mesh), 8.0 / 6, 1e-14);
    EXPECT_NEAR(localVolume(mesh), (turn == 0 ? 8.0 : -8.0) / 6, 1e-14);
    MeshMoments result;
    ASSERT_TRUE(moments(mesh, result));
    EXPECT_NEAR(result.centroid.x, 1.5, 1e-14);
  }
  EXPECT_EQ(area(Mesh3d<T>()) + volume(Mesh3d<T>()), 0);
}

// Converted one by one: products of large 32-bit lengths neither wrap nor lose digits.
TEST(Measure, OfLargeIntegersDoesNotWrap) {
  EXPECT_EQ(area(BoundingBox2d<omInt32>(-2000000000, -2000000000, 2000000000, 2000000000)), 1.6e19);
  EXPECT_EQ(area(Square2d<omUInt32>({0, 0}, 3000000000u, 0)), 3.6e19);
  Polygon2d<omUInt32> path;
  path.getPointColl() = {{4000000000u, 7}, {0, 7}};
  EXPECT_EQ(perimeter(path), 4e9);
  constexpr omUInt32 far = 4000000000;
  EXPECT_EQ(volume(BoundingBox3d<omUInt32>(0, 0, 0, far, far, far)), 4e9 * 4e9 * 4e9);
  EXPECT_EQ(area(Triangle3d<omUInt32>({0, 0, 0}, {far, 0, 0}, {0, far, 0})), 8e18);
  EXPECT_NEAR(volume(tetrahedron<omUInt32>(0, far)), 64e27 / 6, 1e14);
  EXPECT_EQ(area(Cube3d<omInt32>({0, 0, 0}, 2000000000, 0, 0, 0)), 6 * 16e18);
}

TEST(Measure, OfAnEllipseIsNearTheEllipticIntegral) {
  const auto expectNear = [](omReal64 a, omReal64 b, omReal64 error) {
    const omReal64 exact = 4 * a * boost::math::ellint_2(std::sqrt(1 - b * b / (a * a)));
    EXPECT_NEAR(perimeter(Ellipse2d<omReal64>({0, 0}, a, b, 1)), exact, error * exact);
    EXPECT_NEAR(perimeter(Ellipse2d<omReal64>({0, 0}, b, a, 1)), exact, error * exact);
  };
  expectNear(3, 3, 1e-15);
  expectNear(5, 4, 1e-13);
  expectNear(10, 1, 2e-5);
  expectNear(1, 0, 4.1e-4);
  EXPECT_EQ(perimeter(Ellipse2d<omReal64>({0, 0}, 0, 0, 1)), 0);
}

template <class T>
boost::shared_ptr<PolygonWithHoles2d<T>> node(const Polygon2d<T>& exterior) {
  auto result = boost::make_shared<PolygonWithHoles2d<T>>();
  result->getExteriorPolygon() = exterior;
  return result;
}
template <class T>
boost::shared_ptr<MeshWithHoles3d<T>> node(const Mesh3d<T>& exterior) {
  auto result = boost::make_shared<MeshWithHoles3d<T>>();
  result->getExteriorMesh() = exterior;
  return result;
}

template <class Measure, class Entity>
omReal64 withoutHoles(const Entity& entity) {
  Measure measure;
  measure.setHoleMsrPolicy(eHMP_IgnoreHoles);
  omReal64 value = 0;
  EXPECT_TRUE(measure.measure(entity, value));
  return value;
}

// An island in a hole counts again, and a boundary in either direction as what it is.
TEST(Measure, OfHolesFollowsThePolicy) {
  const auto root = node(ring<omInt32>(eP2DT_Exterior, 0, 0, 10));
  auto clockwise = ring<omInt32>(eP2DT_Interior, 2, 2, 5);
  std::reverse(clockwise.getPointColl().begin(), clockwise.getPointColl().end());
  root->getPolygonHoles().push_back(node(clockwise));
  root->getPolygonHoles()[0]->getPolygonHoles().push_back(node(ring<omInt32>(eP2DT_Exterior, 3, 3, 2)));
  EXPECT_EQ(area(*root), 79);
  EXPECT_EQ(perimeter(*root), 68);
  root->getPolygonHoles().push_back(nullptr);
  EXPECT_THROW(area(*root), ORMIXGeometryException);
  EXPECT_EQ(withoutHoles<AreaMsr2d>(*root), 100);
  EXPECT_EQ(withoutHoles<PerimeterMsr2d>(*root), 40);

  const auto body = node(tetrahedron<omReal64>(0, 6));
  body->getMeshHoles().push_back(node(tetrahedron<omReal64>(1, 3)));
  body->getMeshHoles()[0]->getMeshHoles().push_back(node(tetrahedron<omReal64>(1.5, 1)));
  EXPECT_NEAR(volume(*body), (216 - (27 - 1)) / 6.0, 1e-13);
  EXPECT_NEAR(area(*body), (36 + 9 + 1) * (3 + std::sqrt(3.0)) / 2, 1e-12);
  body->getMeshHoles().push_back(nullptr);
  EXPECT_THROW(volume(*body), ORMIXGeometryException);
  EXPECT_NEAR(withoutHoles<VolumeMsr3d>(*body), 36, 1e-13);
}

TEST(Measure, OfADeepTreeNeedsNoStack) {
  constexpr int depth = 200000;
  const auto root = node(ring<omInt32>(eP2DT_Exterior, 0, 0, 1));
  auto innermost = root;
  for (int level = 1; level < depth; ++level) {
    innermost->getPolygonHoles().push_back(node(ring<omInt32>(eP2DT_Exterior, 0, 0, 1)));
    innermost = innermost->getPolygonHoles()[0];
  }
  EXPECT_EQ(perimeter(*root), 4.0 * depth);
  EXPECT_EQ(area(*root), 0);
}

TEST(Measure, OfAShapeIsTheSumOverItsMeshes) {
  Shape3d shape;
  EXPECT_EQ(volume(shape), 0);
  for (const omReal32 corner : {0.0F, 10.0F}) shape.getMeshWithHolesColl().push_back(node(tetrahedron(corner, 3.0F)));
  EXPECT_NEAR(volume(shape), 9, 1e-12);
  EXPECT_NEAR(area(shape), 27 + 9 * std::sqrt(3.0), 1e-12);
  shape.getMeshWithHolesColl().push_back(nullptr);
  EXPECT_THROW(volume(shape), ORMIXGeometryException);
}

template <class T>
class CallWithScalar : public ::testing::Test {};
TYPED_TEST_SUITE(CallWithScalar, support::Scalars);

TYPED_TEST(CallWithScalar, IsThatOfTheEntity) {
  const auto ellipse = Sample<Ellipse2d<TypeParam>>::make();
  const auto cuboid = Sample<Cuboid3d<TypeParam>>::make();
  omReal64 value = 0;
  EXPECT_TRUE(AreaMsr2d().process<TypeParam>(ellipse, value));
  EXPECT_EQ(value, area(ellipse));
  EXPECT_TRUE(PerimeterMsr2d().process<TypeParam>(ellipse, value));
  EXPECT_TRUE(AreaMsr3d().process<TypeParam>(cuboid, value));
  EXPECT_TRUE(VolumeMsr3d().process<TypeParam>(cuboid, value));
  EXPECT_EQ(value, volume(cuboid));
  EXPECT_TRUE(AnisotropicScaleTransform2d(2, 3).process<TypeParam>(Circle2d<TypeParam>({1, 2}, 3)));
  EXPECT_TRUE(AnisotropicScaleTransform3d(2, 3, 4).process<TypeParam>(Sphere3d<TypeParam>({1, 2, 3}, 4)));
}

}  // namespace
