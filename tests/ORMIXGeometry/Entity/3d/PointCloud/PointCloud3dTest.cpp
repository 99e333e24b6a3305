#include <ORMIXGeometry/Entity/3d/PointCloud/PointCloud3d.h>
#include <gtest/gtest.h>

#include <sstream>

namespace ormix::geom {
namespace {

using Points = std::vector<Point3dData<omReal64>>;

TEST(PointCloud3d, HoldsACopyOfItsPointsInOrderWithDuplicates) {
  Points points{{3, 4, 5}, {1, 2, 3}, {3, 4, 5}};
  PointCloud3d<omReal64> cloud(points);
  PointCloud3d<omReal64> set;
  set.setCollection(points);
  points.clear();
  EXPECT_EQ(cloud.getCollection(), (Points{{3, 4, 5}, {1, 2, 3}, {3, 4, 5}}));
  EXPECT_EQ(set.getCollection(), cloud.getCollection());
  cloud.getCollection().pop_back();
  EXPECT_EQ(cloud.size(), 2u);
  cloud.clear();
  EXPECT_EQ(cloud.size(), 0u);
}

TEST(PointCloud3d, PrintsItsPoints) {
  std::ostringstream stream;
  stream << PointCloud3d<omReal64>() << ' ' << PointCloud3d<omReal64>({{1.5, 2, 3}, {4, 5, 6}});
  EXPECT_EQ(stream.str(), "[] [[1.5, 2, 3], [4, 5, 6]]");
}

TEST(PointCloud3d, IsCastPointByPoint) {
  PointCloud3d<omReal64> cloud({{2.7, -2.7, 1}, {0, 1e20, -1}});
  const auto asInt = cast<omInt32, omReal64>(cloud);
  EXPECT_EQ(asInt.getCollection(), (std::vector<Point3dData<omInt32>>{{2, -2, 1}, {0, 2147483647, -1}}));
  PointCloud3d<omUInt32> result({{1, 1, 1}, {2, 2, 2}, {3, 3, 3}});
  cast(cloud, result);
  EXPECT_EQ(result.getCollection(),
            (std::vector<Point3dData<omUInt32>>{{2, 4294967294u, 1}, {0, 4294967295u, 4294967295u}}));
  cast(cloud, cloud);
  EXPECT_EQ(cloud.size(), 2u);
}

}  // namespace
}  // namespace ormix::geom
