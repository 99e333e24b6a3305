#include <ORMIXGeometry/Entity/2d/PointCloud/PointCloud2d.h>
#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace ormix;
using namespace ormix::geom;

using Points = std::vector<Point2dData<omReal64>>;

TEST(PointCloud2d, HoldsPointsInOrderOfInsertion) {
  PointCloud2d<omReal64> cloud;
  EXPECT_EQ(cloud.size(), 0u);
  cloud.push_back({3, 4});
  cloud.push_back({1, 2});
  cloud.push_back({3, 4});
  EXPECT_EQ(cloud.getCollection(), (Points{{3, 4}, {1, 2}, {3, 4}}));
  cloud.getCollection().pop_back();
  EXPECT_EQ(cloud.size(), 2u);
  cloud.clear();
  EXPECT_EQ(cloud.size(), 0u);
}

TEST(PointCloud2d, CopiesTheCollectionItIsGiven) {
  Points points{{1, 2}, {3, 4}};
  PointCloud2d<omReal64> constructed(points);
  PointCloud2d<omReal64> set;
  set.setCollection(points);
  points.clear();
  EXPECT_EQ(constructed.getCollection(), (Points{{1, 2}, {3, 4}}));
  EXPECT_EQ(set.getCollection(), constructed.getCollection());
  set.setCollection(set.getCollection());
  EXPECT_EQ(set.size(), 2u);
}

TEST(PointCloud2d, PrintsItsPoints) {
  std::ostringstream stream;
  stream << PointCloud2d<omReal64>() << ' ' << PointCloud2d<omReal64>({{1.5, 2}, {3, 4}});
  EXPECT_EQ(stream.str(), "[] [[1.5, 2], [3, 4]]");
}

TEST(PointCloud2d, IsCastPointByPoint) {
  PointCloud2d<omReal64> cloud({{2.7, -2.7}, {0, 1e20}});
  const auto asInt = cast<omInt32, omReal64>(cloud);
  EXPECT_EQ(asInt.getCollection(), (std::vector<Point2dData<omInt32>>{{2, -2}, {0, 2147483647}}));
  cast(cloud, cloud);
  EXPECT_EQ(cloud.getCollection(), (Points{{2.7, -2.7}, {0, 1e20}}));
}

}  // namespace
