#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <boost/math/special_functions/ellint_2.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <cmath>
#include <random>

#include "support/SampleObjects.h"

namespace {

using namespace samples;

constexpr omReal64 s_piValue = 3.141592653589793;

omReal64 area(const BaseGeometryEntity2d& entity) { return AreaMsr2d::measure(entity); }
omReal64 perimeter(const BaseGeometryEntity2d& entity) { return PerimeterMsr2d::measure(entity); }

template <class T>
Polygon2d<T> polygon(std::vector<Point2dData<T>> points, ePolygon2dType type = eP2DT_Exterior) {
  Polygon2d<T> result;
  result.setPolygon2dType(type);
  result.getPointColl() = std::move(points);
  return result;
}

/// Which entities a measure accepts, by the entity's own class: the whole table.
template <class Entity>
constexpr bool isMeasured = !std::is_same_v<Entity, Line2d> && !std::is_same_v<Entity, Parabola2d>;
template <class T>
constexpr bool isMeasured<Segment2d<T>> = false;
template <class T>
constexpr bool isMeasured<PointCloud2d<T>> = false;

template <class Entity>
class MeasureSupport : public ::testing::Test {};
TYPED_TEST_SUITE(MeasureSupport, AllEntities2d);

TYPED_TEST(MeasureSupport, IsThatOfTheTable) {
  const auto entity = boost::make_shared<TypeParam>(Sample<TypeParam>::make());
  const GeometryEntity2dPtr base = entity;
  const AreaMsr2d areaMeasure;
  const PerimeterMsr2d perimeterMeasure;
  omReal64 value = 0;
  EXPECT_EQ(areaMeasure.measure(base, value), isMeasured<TypeParam>);
  EXPECT_EQ(perimeterMeasure.measure(*base, value), isMeasured<TypeParam>);
  if (isMeasured<TypeParam>) {
    EXPECT_NO_THROW(area(*base));
    EXPECT_NO_THROW(perimeter(*base));
  } else {
    EXPECT_THROW(area(*base), ORMIXGeometryException);
    EXPECT_THROW(perimeter(*base), ORMIXGeometryException);
  }
}

template <class T>
class ScalarMeasure : public ::testing::Test {};
using Scalars = ::testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(ScalarMeasure, Scalars);

TYPED_TEST(ScalarMeasure, OfSimpleEntities) {
  using T = TypeParam;
  const Point2dData<T> c(T(7), T(9));
  EXPECT_EQ(area(Point2d<T>(c)), 0);
  EXPECT_EQ(perimeter(Point2d<T>(c)), 0);
  EXPECT_EQ(area(BoundingBox2d<T>(T(1), T(2), T(4), T(7))), 15);
  EXPECT_EQ(perimeter(BoundingBox2d<T>(T(1), T(2), T(4), T(7))), 16);
  EXPECT_EQ(area(Circle2d<T>(c, T(3))), s_piValue * 3 * 3);
  EXPECT_EQ(perimeter(Circle2d<T>(c, T(3))), 6.283185307179586 * 3);
  EXPECT_EQ(area(Circle2d<T>(c, T(0))), 0);
  EXPECT_EQ(area(Ellipse2d<T>(c, T(5), T(3), 0.3)), s_piValue * 5 * 3);
  EXPECT_EQ(area(Square2d<T>(c, T(3), 0.3)), 36);
  EXPECT_EQ(perimeter(Square2d<T>(c, T(3), 0.3)), 24);
  EXPECT_EQ(area(Rectangle2d<T>(c, T(3), T(2), 0.3)), 24);
  EXPECT_EQ(perimeter(Rectangle2d<T>(c, T(3), T(2), 0.3)), 20);
}

// Converted one by one: products of large 32-bit lengths neither wrap nor lose digits.
TYPED_TEST(ScalarMeasure, IsCalledWithTheScalarToo) {
  const auto ellipse = Sample<Ellipse2d<TypeParam>>::make();
  omReal64 value = 0;
  EXPECT_TRUE(AreaMsr2d().process<TypeParam>(ellipse, value));
  EXPECT_EQ(value, area(ellipse));
  EXPECT_TRUE(PerimeterMsr2d().process<TypeParam>(ellipse, value));
  EXPECT_EQ(value, perimeter(ellipse));
  const auto cuboid = Sample<Cuboid3d<TypeParam>>::make();
  EXPECT_TRUE(AreaMsr3d().process<TypeParam>(cuboid, value));
  EXPECT_EQ(value, AreaMsr3d::measure(cuboid));
  EXPECT_TRUE(VolumeMsr3d().process<TypeParam>(cuboid, value));
  EXPECT_EQ(value, VolumeMsr3d::measure(cuboid));
  Point2d<TypeParam> point(1, 2);
  EXPECT_TRUE(ScaleTransform2d(2).processInSitu<TypeParam>(point));
  EXPECT_EQ(point, (Point2d<TypeParam>(2, 4)));
  const AnisotropicScaleTransform2d scale2d(2, 3);
  EXPECT_TRUE(scale2d.process<TypeParam>(point));
  EXPECT_TRUE(scale2d.process<TypeParam>(Circle2d<TypeParam>({1, 2}, 3)));
  EXPECT_TRUE(AnisotropicScaleTransform3d(2, 3, 4).process<TypeParam>(Sphere3d<TypeParam>({1, 2, 3}, 4)));
}

TEST(Measure, OfLargeIntegersDoesNotWrap) {
  EXPECT_EQ(area(BoundingBox2d<omInt32>(-2000000000, -2000000000, 2000000000, 2000000000)), 1.6e19);
  EXPECT_EQ(area(Square2d<omUInt32>({0, 0}, 3000000000u, 0)), 3.6e19);
  EXPECT_EQ(perimeter(polygon<omInt32>({{-2000000000, 0}, {2000000000, 0}})), 4e9);
  EXPECT_EQ(perimeter(polygon<omUInt32>({{4000000000u, 7}, {0, 7}})), 4e9);
}

TEST(Measure, OfAnEllipseIsNearTheEllipticIntegral) {
  const auto exact = [](omReal64 a, omReal64 b) {
    return 4 * a * boost::math::ellint_2(std::sqrt(1 - b * b / (a * a)));
  };
  const auto measured = [](omReal64 a, omReal64 b) { return perimeter(Ellipse2d<omReal64>({0, 0}, a, b, 1)); };
  EXPECT_DOUBLE_EQ(measured(3, 3), 2 * s_piValue * 3);
  EXPECT_NEAR(measured(5, 4), exact(5, 4), 1e-13 * exact(5, 4));
  EXPECT_NEAR(measured(10, 1), exact(10, 1), 2e-5 * exact(10, 1));
  EXPECT_NEAR(measured(1, 0), 4, 4 * 4.1e-4);
  EXPECT_EQ(measured(2, 5), measured(5, 2));
  EXPECT_EQ(measured(0, 0), 0);
}

TYPED_TEST(ScalarMeasure, OfPolygons) {
  using T = TypeParam;
  const std::vector<Point2dData<T>> square{{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}};
  const std::vector<Point2dData<T>> clockwise(square.rbegin(), square.rend());
  EXPECT_EQ(area(polygon(square)), 1);
  EXPECT_EQ(area(polygon(clockwise)), -1);
  EXPECT_EQ(area(polygon(square, eP2DT_Interior)), -1);
  EXPECT_EQ(area(polygon(clockwise, eP2DT_Interior)), 1);
  EXPECT_EQ(perimeter(polygon(square)), 4);
  EXPECT_EQ(perimeter(polygon(square, eP2DT_Interior)), 4);
  const auto triangle = polygon<T>({{0, 0}, {3, 0}, {3, 4}});
  EXPECT_EQ(area(triangle), 0);
  EXPECT_EQ(perimeter(triangle), 7);
  EXPECT_EQ(area(Polygon2d<T>()), 0);
  EXPECT_EQ(perimeter(Polygon2d<T>()), 0);
  EXPECT_EQ(perimeter(polygon<T>({{5, 6}})), 0);
}

TEST(Measure, OfARandomRingFollowsTheStatedOrder) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::uniform_real_distribution<omReal64> coordinate(-1e6, 1e6);
  for (std::size_t size = 4; size < 60; ++size) {
    std::vector<Point2dData<omReal64>> p(size);
    for (auto& point : p) point.setCoords(coordinate(random), coordinate(random));
    omReal64 backwards = 0;
    for (std::size_t k = size - 1; k >= 1; --k)
      backwards += (p[k].getX() + p[k - 1].getX()) * (p[k].getY() - p[k - 1].getY());
    omReal64 forwards = 0;
    for (std::size_t i = 0; i + 1 < size; ++i)
      forwards += (p[i].getX() + p[i + 1].getX()) * (p[i].getY() - p[i + 1].getY());
    EXPECT_EQ(area(polygon(p)), 0.5 * backwards);
    EXPECT_EQ(area(polygon(p, eP2DT_Interior)), 0.5 * forwards);
    long double length = 0;
    for (std::size_t i = 1; i < size; ++i)
      length += std::hypotl(p[i].getX() - p[i - 1].getX(), p[i].getY() - p[i - 1].getY());
    EXPECT_NEAR(perimeter(polygon(p)), static_cast<omReal64>(length), 1e-15 * static_cast<omReal64>(length));
  }
}

template <class T>
boost::shared_ptr<PolygonWithHoles2d<T>> node(const Polygon2d<T>& exterior) {
  auto result = boost::make_shared<PolygonWithHoles2d<T>>();
  result->getExteriorPolygon() = exterior;
  return result;
}

TYPED_TEST(ScalarMeasure, OfHolesFollowsThePolicy) {
  using T = TypeParam;
  const auto root = node(ring<T>(eP2DT_Exterior, 0, 0, 10));
  auto clockwise = ring<T>(eP2DT_Interior, 2, 2, 5);
  std::reverse(clockwise.getPointColl().begin(), clockwise.getPointColl().end());
  root->getPolygonHoles().push_back(node(clockwise));
  EXPECT_EQ(area(*root), 75);
  EXPECT_EQ(perimeter(*root), 60);
  // An island in the hole counts again.
  root->getPolygonHoles()[0]->getPolygonHoles().push_back(node(ring<T>(eP2DT_Exterior, 3, 3, 2)));
  EXPECT_EQ(area(*root), 79);
  EXPECT_EQ(perimeter(*root), 68);

  AreaMsr2d areaMeasure;
  PerimeterMsr2d perimeterMeasure;
  areaMeasure.setHoleMsrPolicy(eHMP_IgnoreHoles);
  perimeterMeasure.setHoleMsrPolicy(eHMP_IgnoreHoles);
  omReal64 value = 0;
  ASSERT_TRUE(areaMeasure.measure(*root, value));
  EXPECT_EQ(value, 100);
  ASSERT_TRUE(perimeterMeasure.measure(*root, value));
  EXPECT_EQ(value, 40);

  root->getPolygonHoles().push_back(nullptr);
  EXPECT_THROW(area(*root), ORMIXGeometryException);
  EXPECT_TRUE(areaMeasure.measure(*root, value));
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

}  // namespace
