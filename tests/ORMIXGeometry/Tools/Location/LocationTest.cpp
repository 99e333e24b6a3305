#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/Random.h"
#include "support/SampleObjects.h"

namespace {

using namespace samples;

template <class T>
class LocationOf : public ::testing::Test {};
using Scalars = ::testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(LocationOf, Scalars);

// The sample: a square of 100, in it a hole of 30 at 10 with an island of 5 at 20, and a hole of 10 at 50.
TYPED_TEST(LocationOf, PolygonsWithHolesAndIslands) {
  using T = TypeParam;
  const auto polygon = Sample<PolygonWithHoles2d<T>>::make();
  const PreparedPolygon2d prepared(polygon);
  const std::vector<std::pair<Point2dData<T>, ePointLocation>> cases{
      {{5, 5}, ePL_Inside},     {{15, 15}, ePL_Outside}, {{22, 22}, ePL_Inside},    {{20, 22}, ePL_Boundary},
      {{10, 40}, ePL_Boundary}, {{55, 55}, ePL_Outside}, {{100, 50}, ePL_Boundary}, {{101, 50}, ePL_Outside}};
  for (const auto& [point, expected] : cases) {
    EXPECT_EQ(locate(polygon, point), expected) << point;
    EXPECT_EQ(locate(prepared, point), expected) << point;
    EXPECT_EQ(prepared.locate(Point2d<T>(point)), expected) << point;
  }
  Shape2d shape;
  shape.getPolygonWithHolesColl() = {nullptr,
                                     boost::make_shared<PolygonWithHoles2d<omReal32>>(cast<omReal32>(polygon))};
  EXPECT_EQ(locate(shape, Point2dData<T>(22, 22)), ePL_Inside);
  EXPECT_EQ(toString(ePL_Boundary), "ePL_Boundary");
  shape.clear();
  EXPECT_TRUE(shape.getRowIntersections().addRun(2, 3, 6));
  EXPECT_EQ(locate(shape, Point2dData<T>(4, 3)), ePL_Boundary);
  EXPECT_EQ(locate(shape, Point2dData<omReal64>(4, 2.5)), ePL_Inside);
  EXPECT_EQ(nearestPoint(shape, Point2dData<T>(9, 9)), Point2d<omReal64>(6, 3));
}

TEST(PreparedPolygon2d, RefusesWhatIsNotFinite) {
  Polygon2d<omReal64> polygon;
  polygon.getPointColl() = {{0, 0}, {1, std::numeric_limits<omReal64>::quiet_NaN()}};
  EXPECT_THROW(PreparedPolygon2d{polygon}, ORMIXGeometryException);
}

/// The least distance from a point to many points of a curve, from 0 to a full turn.
template <class Curve>
omReal64 leastDistance(const Point2dData<omReal64>& point, Curve&& curve) {
  omReal64 least = 1e300;
  for (int i = 0; i < 20000; ++i) least = std::min(least, distance(point, curve(2 * 3.141592653589793 * i / 20000)));
  return least;
}

TEST(NearestPoint, OfRoundFiguresIsTheNearestOfManyBoundaryPoints) {
  support::Random random(1501);
  for (int count = 0; count < 100; ++count) {
    omReal64 minor = count % 10 == 0 ? 1e-3 : random.uniform(0.1, 5);
    Ellipse2d<omReal64> ellipse({random.uniform(), random.uniform()}, 5, minor, random.uniform(-3, 3));
    Point2dData<omReal64> point(random.uniform(-8, 8), random.uniform(-8, 8));
    if (count % 7 == 0) point = ellipse.center();
    // Off the larger axis by less than its own rounding.
    if (count % 7 == 1) {
      ellipse.setCoords({0, 0}, 5, 3, 0);
      minor = 3;
      point.setCoords(0.3, 1e-17);
    }
    const omReal64 expected = leastDistance(point, [&](omReal64 t) { return ellipse.boundaryPoint(t); });
    const Point2d<omReal64> foot = nearestBoundaryPoint(ellipse, point);
    const omReal64 found = distance(point, foot.getCoords());
    const omReal64 dx = foot.getX() - ellipse.centerX();
    const omReal64 dy = foot.getY() - ellipse.centerY();
    const omReal64 c = ellipse.getCosTheta();
    const omReal64 s = ellipse.getSinTheta();
    ASSERT_NEAR(std::hypot((dx * c + dy * s) / 5, (dy * c - dx * s) / minor), 1, 1e-11) << count;
    ASSERT_LE(found, expected + 1e-13) << count;
    const Circle2d<omReal64> circle(ellipse.center(), 3);
    ASSERT_NEAR(distance(point, nearestBoundaryPoint(circle, point).getCoords()),
                std::abs(distance(point, circle.center()) - 3), 1e-14);
    const bool isInside = distance(point, circle.center()) < 3;
    ASSERT_EQ(nearestPoint(circle, point) == Point2d<omReal64>(point), isInside);
  }
}

TEST(NearestPoint, OfFiguresWithCorners) {
  const Point2d<omReal64> beside(7, 2);
  const Point2d<omReal64> inside(1, 0.5);
  const auto expect = [](const BaseGeometryEntity2d& entity, const Point2d<omReal64>& point,
                         const Point2d<omReal64>& nearest, const Point2d<omReal64>& onBoundary) {
    EXPECT_TRUE(compare(nearestPoint(entity, point), nearest, 1e-14)) << nearestPoint(entity, point);
    EXPECT_TRUE(compare(nearestBoundaryPoint(entity, point), onBoundary, 1e-14)) << nearestBoundaryPoint(entity, point);
  };
  expect(BoundingBox2d<omInt32>(-2, -1, 2, 1), beside, {2, 1}, {2, 1});
  expect(BoundingBox2d<omInt32>(-2, -1, 2, 1), inside, inside, {1, 1});
  expect(Rectangle2d<omReal64>({0, 0}, 1, 2, 3.141592653589793 / 2), beside, {2, 1}, {2, 1});
  expect(Rectangle2d<omReal64>({0, 0}, 1, 2, 3.141592653589793 / 2), inside, inside, {1, 1});
  expect(Square2d<omReal64>({0, 0}, 2, 0), beside, {2, 2}, {2, 2});
  expect(Square2d<omReal64>({0, 0}, 2, 0), inside, inside, {2, 0.5});
  expect(Segment2d<omInt32>({0, 0}, {4, 0}), inside, {1, 0}, {1, 0});
  expect(Point2d<omUInt32>(3, 4), inside, {3, 4}, {3, 4});
  expect(PointCloud2d<omReal32>({{0, 0}, {6, 1}, {6, 4}}), beside, {6, 1}, {6, 1});
  const auto polygon = Sample<PolygonWithHoles2d<omInt32>>::make();
  expect(polygon, {5, 30}, {5, 30}, {0, 30});
  expect(polygon, {12, 15}, {10, 15}, {10, 15});
  expect(polygon, {22, 21}, {22, 21}, {22, 20});
  for (const GeometryEntity2dPtr& none : {GeometryEntity2dPtr(boost::make_shared<Line2d>()),
                                          GeometryEntity2dPtr(boost::make_shared<Polygon2d<omReal64>>())})
    EXPECT_THROW(nearestPoint(*none, beside), ORMIXGeometryException);
  EXPECT_THROW(nearestPoint(polygon, Point2d<omReal64>(std::nan(""), 0)), ORMIXGeometryException);
}

TEST(PreparedBoundary, AnswersAsTheBoundaryItself) {
  support::Random random(23);
  const auto number = [&](omReal64 size) { return size * (static_cast<omReal64>(random() % 20001) / 10000 - 1); };
  for (int round = 0; round < 300; ++round) {
    // Small and large, near and far, with vertices that repeat.
    const omReal64 scale = std::ldexp(1, round % 3 == 0 ? 0 : int(random() % 1200) - 600);
    Polygon2d<omReal64> polygon;
    for (std::size_t count = 1 + random() % 40; count > 0; --count) {
      polygon.getPointColl().push_back({scale * number(1), scale * number(1)});
      if (random() % 4 == 0) polygon.getPointColl().push_back(polygon.getPointColl().back());
    }
    const PreparedBoundary2d prepared(polygon);
    for (int at = 0; at < 20; ++at) {
      const Point2dData<omReal64> point(scale * number(2), scale * number(2));
      const auto expected = nearestBoundaryPoint(polygon, point).getCoords(),
                 found = prepared.nearestPoint(point).getCoords();
      EXPECT_LE(std::abs(distance(point, found) - distance(point, expected)), 1e-14 * scale) << polygon << point;
    }
    EXPECT_THROW(prepared.nearestPoint({std::nan(""), 0}), ORMIXGeometryException);
  }
  EXPECT_THROW(PreparedBoundary2d{Polygon2d<omReal32>()}, ORMIXGeometryException);
  Polygon2d<omReal64> endless;
  endless.getPointColl() = {{0, 0}, {INFINITY, 0}};
  EXPECT_THROW(PreparedBoundary2d{endless}, ORMIXGeometryException);
}

}  // namespace
