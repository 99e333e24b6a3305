#include <ORMIXGeometry/Entity/2d/PointCloud/BoostPointCloud2d.h>
#include <ORMIXGeometry/Entity/2d/Polygon/BoostPolygon2d.h>
#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>

#include <boost/geometry.hpp>

#include "support/Checks.h"
#include "support/Random.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

template <class T>
using Points = std::vector<Point2dData<T>>;

template <class T>
Polygon2d<T> polygonOf(const Points<T>& points) {
  Polygon2d<T> polygon;
  polygon.getPointColl() = points;
  return polygon;
}

template <class T>
Points<T> closed(const Points<T>& points) {
  Polygon2d<T> polygon = polygonOf(points);
  closePolygon(polygon);
  return polygon.getPointColl();
}

TEST(Polygon2d, KeepsItsRoleWhenCastMovedAndCleared) {
  EXPECT_EQ(Polygon2d<omInt32>().getPolygon2dType(), eP2DT_Exterior);
  auto polygon = polygonOf<omReal32>({{2.75F, -2.75F}, {3, 4}});
  polygon.setPolygon2dType(eP2DT_Interior);
  const auto asInt = cast<omInt32>(polygon);
  EXPECT_EQ(asInt.getPointColl(), (Points<omInt32>{{2, -2}, {3, 4}}));
  EXPECT_EQ(asInt.getPolygon2dType(), eP2DT_Interior);
  cast(polygon, polygon);
  const auto* vertices = polygon.getPointColl().data();
  polygon = Polygon2d<omReal32>(std::move(polygon));
  EXPECT_EQ(polygon.getPointColl().data(), vertices) << "moved without copying vertices";
  EXPECT_EQ(polygon.getNbPoints(), 2u);
  polygon.clear();
  EXPECT_TRUE(polygon.isEmpty());
  EXPECT_EQ(polygon.getPolygon2dType(), eP2DT_Interior);
}

// For Boost's algorithms, in the orientation that each adapter states.
TEST(BoostPolygon2d, IsTheCollectionItselfInEitherOrientation) {
  Points<omReal64> points{{0, 0}, {4, 0}, {4, 4}, {2, 3}, {0, 4}, {0, 0}};
  EXPECT_EQ(asDirectPolygon(points).data(), points.data());
  EXPECT_EQ(asReversePolygon(std::as_const(points)).data(), points.data());
  EXPECT_EQ(boost::geometry::area(asDirectPolygon(points)), 14);
  EXPECT_EQ(boost::geometry::area(asReversePolygon(points)), -14);
  BoostDirectPolygon2d<omReal64> hull;
  boost::geometry::convex_hull(asPointCloud(points), hull);
  EXPECT_EQ(boost::geometry::area(hull), 16);
}

TEST(IsClosed, AsksForTwoVerticesAndExactEquality) {
  EXPECT_FALSE(isClosed(polygonOf<omReal64>({})));
  EXPECT_FALSE(isClosed(polygonOf<omReal64>({{1, 1}})));
  EXPECT_TRUE(isClosed(polygonOf<omReal64>({{1, 1}, {1, 1}})));
  EXPECT_FALSE(isClosed(polygonOf<omReal64>({{1, 1}, {2, 2}, {1, 1 + std::numeric_limits<omReal64>::epsilon()}})));
  const omReal64 nan = support::s_nan;
  EXPECT_FALSE(isClosed(polygonOf<omReal64>({{nan, 1}, {nan, 1}})));
}

/// The rule step by step, on a copy of the ring as x and y apart.
Points<omInt32> closedStepByStep(const Points<omInt32>& ring) {
  std::vector<omInt32> x;
  std::vector<omInt32> y;
  for (const auto& point : ring) {
    x.push_back(point.getX());
    y.push_back(point.getY());
  }
  const std::size_t n = ring.size();
  if (n >= 3 && x[n - 1] == x[0]) {
    const omInt32 seam = x[0];
    if (x[n - 2] == seam) y[n - 1] = y[0];
    if (x[1] == seam) y[0] = y[n - 1];
  }
  if (n == 1 || (n >= 2 && (x[0] != x[n - 1] || y[0] != y[n - 1]))) {
    x.push_back(x[0]);
    y.push_back(y[0]);
  }
  Points<omInt32> result;
  for (std::size_t i = 0; i < x.size(); ++i) result.emplace_back(x[i], y[i]);
  return result;
}

TEST(ClosePolygon, FollowsItsRuleOnRandomRings) {
  support::Random random(7);
  for (int count = 0; count < 20000; ++count) {
    Points<omInt32> ring(random.below(7));
    for (auto& point : ring)
      point.setCoords(static_cast<omInt32>(random.below(3)), static_cast<omInt32>(random.below(3)));
    const Points<omInt32> result = closed(ring);
    ASSERT_EQ(result, closedStepByStep(ring)) << polygonOf(ring);
    ASSERT_EQ(closed(result).size(), result.size());
    ASSERT_EQ(isClosed(polygonOf(result)), !ring.empty());
  }
}

}  // namespace
