#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <sstream>
#include <utility>

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

TEST(Polygon2d, StartsExteriorAndEmpty) {
  const Polygon2d<omInt32> polygon;
  EXPECT_EQ(polygon.getPolygon2dType(), eP2DT_Exterior);
  EXPECT_TRUE(polygon.isEmpty());
  EXPECT_EQ(polygon.beginPoint(), polygon.endPoint());
}

TEST(Polygon2d, ClearKeepsTheRole) {
  auto polygon = polygonOf<omReal32>({{1, 2}, {3, 4}});
  polygon.setPolygon2dType(eP2DT_Interior);
  EXPECT_EQ(polygon.getNbPoints(), 2u);
  polygon.clear();
  EXPECT_TRUE(polygon.isEmpty());
  EXPECT_EQ(polygon.getPolygon2dType(), eP2DT_Interior);
}

TEST(Polygon2d, MovesWithoutCopyingVertices) {
  auto polygon = polygonOf<omReal64>({{1, 2}, {3, 4}});
  const auto* vertices = polygon.getPointColl().data();
  const Polygon2d<omReal64> moved(std::move(polygon));
  EXPECT_EQ(moved.getPointColl().data(), vertices);
  static_assert(std::is_nothrow_move_constructible_v<Polygon2d<omReal64>>);
  static_assert(std::is_nothrow_move_assignable_v<Polygon2d<omReal64>>);
}

TEST(Polygon2d, PrintsItsVertices) {
  std::ostringstream stream;
  stream << Polygon2d<omInt32>() << ' ' << polygonOf<omReal64>({{0, 0}, {1.5, 2}, {-3, 4}});
  EXPECT_EQ(stream.str(), "[] [[0, 0], [1.5, 2], [-3, 4]]");
}

TEST(IsClosed, AsksForTwoVerticesAndExactEquality) {
  EXPECT_FALSE(isClosed(polygonOf<omReal64>({})));
  EXPECT_FALSE(isClosed(polygonOf<omReal64>({{1, 1}})));
  EXPECT_TRUE(isClosed(polygonOf<omReal64>({{1, 1}, {1, 1}})));
  EXPECT_FALSE(isClosed(polygonOf<omReal64>({{1, 1}, {2, 2}, {1, 1 + std::numeric_limits<omReal64>::epsilon()}})));
  const omReal64 nan = std::numeric_limits<omReal64>::quiet_NaN();
  EXPECT_FALSE(isClosed(polygonOf<omReal64>({{nan, 1}, {nan, 1}})));
}

TEST(ClosePolygon, AppendsTheFirstVertexWhereItIsMissing) {
  using P = Points<omInt32>;
  EXPECT_EQ(closed<omInt32>({}), P{});
  EXPECT_EQ(closed<omInt32>({{3, 4}}), (P{{3, 4}, {3, 4}}));
  EXPECT_EQ(closed<omInt32>({{0, 0}, {0, 5}}), (P{{0, 0}, {0, 5}, {0, 0}}));
  EXPECT_EQ(closed<omInt32>({{1, 1}, {4, 1}, {4, 5}}), (P{{1, 1}, {4, 1}, {4, 5}, {1, 1}}));
  EXPECT_EQ(closed<omInt32>({{1, 1}, {4, 1}, {4, 5}, {1, 1}}), (P{{1, 1}, {4, 1}, {4, 5}, {1, 1}}));
}

TEST(ClosePolygon, SnapsTheSeamByItsX) {
  using P = Points<omReal64>;
  EXPECT_EQ(closed<omReal64>({{0, 0}, {5, 1}, {0, 3}}), (P{{0, 0}, {5, 1}, {0, 3}, {0, 0}}));
  EXPECT_EQ(closed<omReal64>({{0, 0}, {0, 2}, {4, 4}, {0, 9}}), (P{{0, 9}, {0, 2}, {4, 4}, {0, 9}}));
  EXPECT_EQ(closed<omReal64>({{0, 0}, {4, 4}, {0, 7}, {0, 9}}), (P{{0, 0}, {4, 4}, {0, 7}, {0, 0}}));
  EXPECT_EQ(closed<omReal64>({{0, 0}, {0, 1}, {0, 2}}), (P{{0, 0}, {0, 1}, {0, 0}}));
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
  std::mt19937 random(7);
  for (int count = 0; count < 20000; ++count) {
    Points<omInt32> ring(random() % 7);
    for (auto& point : ring) point.setCoords(static_cast<omInt32>(random() % 3), static_cast<omInt32>(random() % 3));
    const Points<omInt32> result = closed(ring);
    ASSERT_EQ(result, closedStepByStep(ring)) << polygonOf(ring);
    ASSERT_EQ(closed(result).size(), result.size());
    ASSERT_EQ(isClosed(polygonOf(result)), !ring.empty());
  }
}

TEST(CastPolygon, ConvertsVerticesAsPointsAndKeepsTheRole) {
  auto polygon = polygonOf<omReal64>({{2.7, -2.7}, {1e20, -1e20}});
  polygon.setPolygon2dType(eP2DT_Interior);
  const auto asInt = cast<omInt32, omReal64>(polygon);
  EXPECT_EQ(asInt.getPolygon2dType(), eP2DT_Interior);
  EXPECT_EQ(asInt.getPointColl(), (Points<omInt32>{{2, -2}, {2147483647, -2147483647 - 1}}));
  const auto asUnsigned = cast<omUInt32>(polygon);
  EXPECT_EQ(asUnsigned.getPointColl()[0], (Point2dData<omUInt32>(2, 4294967294u)));
}

TEST(CastPolygon, ReplacesTheResultAndMayBeItsOwn) {
  auto polygon = polygonOf<omReal32>({{1.5f, 2}, {3, 4}});
  auto result = polygonOf<omInt32>({{9, 9}, {9, 9}, {9, 9}});
  result.setPolygon2dType(eP2DT_Interior);
  cast<omInt32, omReal32>(polygon, result);
  EXPECT_EQ(result.getPointColl(), (Points<omInt32>{{1, 2}, {3, 4}}));
  EXPECT_EQ(result.getPolygon2dType(), eP2DT_Exterior);
  cast(polygon, polygon);
  EXPECT_EQ(polygon.getPointColl(), (Points<omReal32>{{1.5f, 2}, {3, 4}}));
}

}  // namespace
