#include <ORMIXGeometry/Entity/2d/PointCloud/BoostPointCloud2d.h>
#include <ORMIXGeometry/Entity/2d/Polygon/BoostPolygon2d.h>
#include <gtest/gtest.h>

#include <boost/geometry.hpp>
#include <boost/geometry/io/wkt/read.hpp>
#include <utility>
#include <vector>

// The adapters with the algorithms that the derived-geometry transforms run on them.
namespace {

namespace bg = boost::geometry;
using namespace ormix;
using namespace ormix::geom;

using Points = std::vector<Point2dData<omReal64>>;

const Points s_square{{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}};

TEST(BoostPolygon2d, IsTheCollectionItself) {
  Points points = s_square;
  EXPECT_EQ(asDirectPolygon(points).data(), points.data());
  EXPECT_EQ(asReversePolygon(std::as_const(points)).data(), points.data());
  asDirectPolygon(points).clear();
  EXPECT_TRUE(points.empty());
}

TEST(BoostPolygon2d, HasOppositeOrientations) {
  EXPECT_EQ(bg::area(asDirectPolygon(s_square)), 16);
  EXPECT_EQ(bg::area(asReversePolygon(s_square)), -16);
  EXPECT_TRUE(bg::is_valid(asDirectPolygon(s_square)));
  EXPECT_FALSE(bg::is_valid(asReversePolygon(s_square)));
  EXPECT_EQ(bg::perimeter(asDirectPolygon(s_square)), 16);
  EXPECT_EQ(bg::num_points(asDirectPolygon(s_square)), 5u);
  EXPECT_EQ(bg::num_interior_rings(asDirectPolygon(s_square)), 0u);
}

TEST(BoostPolygon2d, IsReadFromText) {
  Points points;
  bg::read_wkt("POLYGON((0 0, 4 0, 4 4, 0 4, 0 0))", asDirectPolygon(points));
  EXPECT_EQ(points, s_square);
  EXPECT_THROW(bg::read_wkt("POLYGON((0 0, 4 0, 4 4), (1 1, 2 2, 3 1))", asDirectPolygon(points)), std::length_error);
  BoostDirectPolygon2d<omInt32> integers;
  bg::read_wkt("POLYGON((0 0, 1 0, 1 1, 0 0))", integers);
  EXPECT_EQ(bg::area(integers), 0.5);
}

TEST(BoostPolygon2d, IsCorrected) {
  Points points{{0, 0}, {0, 4}, {4, 4}, {4, 0}};
  bg::correct(asDirectPolygon(points));
  EXPECT_EQ(points.size(), 5u);
  EXPECT_EQ(bg::area(asDirectPolygon(points)), 16);
  bg::correct(asReversePolygon(points));
  EXPECT_EQ(bg::area(asReversePolygon(points)), 16);
}

template <class Input, class Output>
void expectHull(const Input& input, Output& hull) {
  using Strategy = bg::strategy::convex_hull::graham_andrew<Input, Point2dData<omReal64>>;
  bg::convex_hull(input, hull, Strategy());
  EXPECT_EQ(hull.size(), 5u);
  EXPECT_EQ(bg::area(hull), 16);
}

TEST(BoostPolygon2d, HasAConvexHull) {
  const Points dented{{0, 0}, {2, 1}, {4, 0}, {4, 4}, {2, 3}, {0, 4}, {0, 0}};
  BoostDirectPolygon2d<omReal64> direct;
  BoostReversePolygon2d<omReal64> reverse;
  expectHull(asDirectPolygon(dented), direct);
  expectHull(asReversePolygon(dented), reverse);
  BoostDirectPolygon2d<omReal64> ofCloud;
  expectHull(asPointCloud(dented), ofCloud);
  BoostRing2d<omReal64, bg::counterclockwise> ring;
  bg::convex_hull(asPointCloud(dented), ring);
  EXPECT_EQ(bg::area(ring), 16);
}

TEST(BoostPolygon2d, IsSimplified) {
  Points points;
  for (int i = 0; i <= 400; ++i) points.emplace_back(std::min(i, 200) / 50.0, i <= 200 ? 0.0 : (i - 200) / 50.0);
  points.emplace_back(0, 4);
  points.emplace_back(0, 0);
  BoostDirectPolygon2d<omReal64> simplified;
  bg::simplify(asDirectPolygon(points), simplified, 1e-6);
  EXPECT_EQ(simplified.size(), 5u);
  EXPECT_EQ(bg::area(simplified), 16);
  BoostReversePolygon2d<omReal64> reverse;
  std::reverse(points.begin(), points.end());
  bg::simplify(asReversePolygon(points), reverse, 1e-6);
  EXPECT_EQ(bg::area(reverse), 16);
}

template <class Polygon>
std::size_t nbSelfTurns(const Polygon& polygon) {
  using Turn = bg::detail::overlay::turn_info<Point2dData<omReal64>>;
  std::vector<Turn> turns;
  bg::detail::self_get_turn_points::no_interrupt_policy policy;
  const typename bg::strategy::intersection::services::default_strategy<bg::cartesian_tag>::type strategy;
  bg::self_turns<bg::detail::overlay::assign_null_policy>(polygon, strategy, bg::detail::no_rescale_policy(), turns,
                                                          policy);
  return turns.size();
}

TEST(BoostPolygon2d, TellsItsSelfTurns) {
  const Points bowTie{{0, 0}, {4, 4}, {4, 0}, {0, 4}, {0, 0}};
  EXPECT_EQ(nbSelfTurns(asDirectPolygon(s_square)), 0u);
  EXPECT_EQ(nbSelfTurns(asDirectPolygon(bowTie)), 1u);
  EXPECT_EQ(nbSelfTurns(asReversePolygon(bowTie)), 1u);
  EXPECT_TRUE(bg::intersects(asDirectPolygon(bowTie)));
}

TEST(BoostPointCloud2d, IsAMultiPoint) {
  Points points;
  bg::read_wkt("MULTIPOINT(1 2, 3 4)", asPointCloud(points));
  EXPECT_EQ(points, (Points{{1, 2}, {3, 4}}));
  EXPECT_EQ(bg::num_geometries(asPointCloud(points)), 2u);
  EXPECT_EQ(bg::return_centroid<Point2dData<omReal64>>(asPointCloud(points)), (Point2dData<omReal64>(2, 3)));
}

}  // namespace
