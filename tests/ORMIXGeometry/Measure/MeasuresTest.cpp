#include <ORMIXGeometry/ORMIXGeometry.h>

#include <boost/math/special_functions/ellint_2.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <set>

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

/// Classes without their scalar types.
using Names = std::set<std::string>;
/// Those that have no area, perimeter or volume; every other class has.
const Names s_unmeasured{"Line2d", "Parabola2d", "Segment2d",    "PointCloud2d", "Skeleton2d", "SkeletonVertex2d",
                         "Plan3d", "Segment3d",  "PointCloud3d", "Circle3d",     "Line3d"};

std::string typeOf(const BaseGeometryMeasure2d& measure) { return toString(measure.getMeasure2dType()); }
std::string typeOf(const BaseGeometryMeasure3d& measure) { return toString(measure.getMeasure3dType()); }
std::string typeOf(const BaseGeometryEntity2d& entity) { return toString(entity.getEntity2dType()); }
std::string typeOf(const BaseGeometryEntity3d& entity) { return toString(entity.getEntity3dType()); }

template <class Measure, class List>
void expectSupport(List list, const Names& unmeasured = s_unmeasured) {
  for (const ClassCase& each : classCases(list)) {
    SCOPED_TRACE(each.name);
    const std::size_t space = std::string("ormix::geom::").size();
    const bool isMeasured = unmeasured.count(each.name.substr(space, each.name.find('<') - space)) == 0;
    const auto entity = boost::dynamic_pointer_cast<typename Measure::Entity>(each.makeSample());
    typename Measure::Value value{};
    EXPECT_EQ(Measure().measure(entity, value), isMeasured);
    EXPECT_EQ(Measure().measure(*entity, value), isMeasured);
    if (isMeasured)
      EXPECT_EQ(Measure::measure(*entity), value);
    else
      EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { Measure::measure(*entity); }),
                "Measure " + typeOf(Measure()) + " failed for geometry entity " + typeOf(*entity));
  }
}

TEST(MeasureSupport, IsThatOfTheTable) {
  Names withoutArea = s_unmeasured;
  withoutArea.insert("Arc2d");
  expectSupport<AreaMsr2d>(PlanarEntityList(), withoutArea);
  expectSupport<PerimeterMsr2d>(PlanarEntityList());
  expectSupport<MomentsMsr2d>(PlanarEntityList(),
                              {"Line2d", "Parabola2d", "Segment2d", "Skeleton2d", "SkeletonVertex2d", "Arc2d"});
  expectSupport<HuMomentsMsr2d>(PlanarEntityList(), {"Line2d", "Parabola2d", "Segment2d", "Skeleton2d",
                                                     "SkeletonVertex2d", "Arc2d", "Point2d", "Vector2d"});
  expectSupport<AreaMsr3d>(SpatialEntityList());
  expectSupport<VolumeMsr3d>(SpatialEntityList());
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
  const Point2dData<T> c(7, 9);
  const auto expect = [](const BaseGeometryEntity2d& entity, omReal64 expectedArea, omReal64 expectedPerimeter) {
    EXPECT_EQ(area(entity), expectedArea) << entity.getClassName();
    EXPECT_EQ(perimeter(entity), expectedPerimeter) << entity.getClassName();
  };
  expect(Point2d<T>(c), 0, 0);
  expect(BoundingBox2d<T>(1, 2, 4, 7), 15, 16);
  expect(Circle2d<T>(c, 3), s_piValue * 3 * 3, 6.283185307179586 * 3);
  expect(Square2d<T>(c, 3, 0.3), 36, 24);
  expect(Rectangle2d<T>(c, 3, 2, 0.3), 24, 20);
  expect(Polygon2d<T>(), 0, 0);
  EXPECT_EQ(area(Ellipse2d<T>(c, 5, 3, 0.3)), s_piValue * 5 * 3);
  // An interior ring counts with the other sign.
  for (const bool isInterior : {false, true}) {
    auto square = ring<T>(isInterior ? eP2DT_Interior : eP2DT_Exterior, 1, 1, 2);
    expect(square, isInterior ? -4 : 4, 8);
    std::reverse(square.getPointColl().begin(), square.getPointColl().end());
    expect(square, isInterior ? 4 : -4, 8);
  }
}

TYPED_TEST(ScalarMeasure, OfEachEntityOfSpace) {
  using T = TypeParam;
  const Point3dData<T> c(7, 9, 8);
  const auto expect = [](const BaseGeometryEntity3d& entity, omReal64 expectedArea, omReal64 expectedVolume) {
    EXPECT_NEAR(area(entity), expectedArea, 1e-13) << entity.getClassName();
    EXPECT_NEAR(volume(entity), expectedVolume, 1e-13) << entity.getClassName();
  };
  expect(Point3d<T>(c), 0, 0);
  expect(BoundingBox3d<T>(1, 2, 3, 4, 7, 10), 2 * (15 + 21 + 35), 105);
  expect(Sphere3d<T>(c, 3), 36 * s_piValue, 36 * s_piValue);
  expect(Ellipsoid3d<T>(c, 3, 3, 3, 0.1, 0.2, 0.3), 36 * s_piValue, 36 * s_piValue);
  EXPECT_NEAR(volume(Ellipsoid3d<T>(c, 5, 3, 2, 0.1, 0.2, 0.3)), 40 * s_piValue, 1e-13);
  expect(Cube3d<T>(c, 1, 0.1, 0.2, 0.3), 24, 8);
  expect(Cuboid3d<T>(c, 3, 2, 1, 0.1, 0.2, 0.3), 2 * (24 + 12 + 8), 48);
  expect(Triangle3d<T>({1, 1, 1}, {4, 1, 1}, {1, 5, 1}), 6, 0);
  expect(Mesh3d<T>(), 0, 0);
  Mesh3d<T> mesh = tetrahedron<T>(T(1), T(2));
  for (int turn = 0; turn < 2; ++turn, mesh.reverseOrientation()) {
    expect(mesh, 6 + 2 * std::sqrt(3.0), 8.0 / 6);
    EXPECT_NEAR(localVolume(mesh), (turn == 0 ? 8.0 : -8.0) / 6, 1e-14);
    MeshMoments result;
    ASSERT_TRUE(moments(mesh, result));
    EXPECT_NEAR(result.centroid.x, 1.5, 1e-14);
  }
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
  omReal64 flat = 0, length = 0, surface = 0, solid = 0;
  EXPECT_TRUE(AreaMsr2d().process<TypeParam>(ellipse, flat) && PerimeterMsr2d().process<TypeParam>(ellipse, length));
  EXPECT_TRUE(AreaMsr3d().process<TypeParam>(cuboid, surface) && VolumeMsr3d().process<TypeParam>(cuboid, solid));
  EXPECT_TRUE(flat == area(ellipse) && length == perimeter(ellipse));
  EXPECT_TRUE(surface == area(cuboid) && solid == volume(cuboid));
  EXPECT_TRUE(AnisotropicScaleTransform2d(2, 3).process<TypeParam>(Circle2d<TypeParam>({1, 2}, 3)));
  EXPECT_TRUE(AnisotropicScaleTransform3d(2, 3, 4).process<TypeParam>(Sphere3d<TypeParam>({1, 2, 3}, 4)));
}

}  // namespace
