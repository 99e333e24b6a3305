#include <ORMIXGeometry/Entity/2d/PointCloud/BoostPointCloud2d.h>
#include <ORMIXGeometry/Entity/2d/Polygon/BoostPolygon2d.h>
#include <gtest/gtest.h>

#include <boost/geometry.hpp>
#include <utility>
#include <vector>

// That Boost's algorithms run on the adapters, and in the orientation that each states.
namespace {

namespace bg = boost::geometry;
using namespace ormix;
using namespace ormix::geom;

using Points = std::vector<Point2dData<omReal64>>;

TEST(BoostPolygon2d, IsTheCollectionItselfInEitherOrientation) {
  Points points{{0, 0}, {4, 0}, {4, 4}, {2, 3}, {0, 4}, {0, 0}};
  EXPECT_EQ(asDirectPolygon(points).data(), points.data());
  EXPECT_EQ(asReversePolygon(std::as_const(points)).data(), points.data());
  EXPECT_EQ(bg::area(asDirectPolygon(points)), 14);
  EXPECT_EQ(bg::area(asReversePolygon(points)), -14);
  EXPECT_TRUE(bg::is_valid(asDirectPolygon(points)));
  EXPECT_FALSE(bg::is_valid(asReversePolygon(points)));
  EXPECT_EQ(bg::num_interior_rings(asDirectPolygon(points)), 0u);
  BoostDirectPolygon2d<omReal64> direct;
  bg::convex_hull(asPointCloud(points), direct);
  EXPECT_EQ(bg::area(direct), 16);
  BoostReversePolygon2d<omReal64> reverse;
  bg::simplify(asReversePolygon(points), reverse, 1e-6);
  EXPECT_EQ(reverse.size(), 6u);
  bg::correct(asReversePolygon(points));
  EXPECT_EQ(bg::area(asReversePolygon(points)), 14);
}

}  // namespace
