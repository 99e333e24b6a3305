#include <ORMIXGeometry/Entity/3d/Triangle/Triangle3d.h>
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace ormix::geom {
namespace {

template <class T>
class Triangle3dTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(Triangle3dTest, Scalars);

TYPED_TEST(Triangle3dTest, NormalPointsToWhereTheVerticesTurnCounterClockwise) {
  using T = TypeParam;
  using Real = Point3dData<omReal64>;
  const Point3dData<T> corner(1, 1, 1);
  const Point3dData<T> alongX(4, 1, 1);
  const Point3dData<T> alongY(1, 5, 1);
  const Point3dData<T> alongZ(1, 1, 3);
  for (const auto& [triangle, normal] : {std::pair(Triangle3d<T>(corner, alongX, alongY), Real(0, 0, 12)),
                                         std::pair(Triangle3d<T>(alongX, alongY, corner), Real(0, 0, 12)),
                                         // Straight down, which no vector of positive length is.
                                         std::pair(Triangle3d<T>(corner, alongY, alongX), Real(0, 0, -12)),
                                         std::pair(Triangle3d<T>(corner, alongY, alongZ), Real(8, 0, 0)),
                                         std::pair(Triangle3d<T>(corner, alongX, alongZ), Real(0, -6, 0)),
                                         std::pair(Triangle3d<T>(alongX, alongY, alongZ), Real(8, 6, 12))}) {
    omReal64 x = 0;
    omReal64 y = 0;
    omReal64 z = 0;
    triangle.getNormal(x, y, z);
    EXPECT_EQ(Real(x, y, z), normal) << triangle;
    EXPECT_LE(distance(convert<omReal64>(triangle.getNormal()), normal), 1e-14) << triangle;
    triangle.getUnitNormal(x, y, z);
    EXPECT_LE(distance(Real(x, y, z), normal / normal.normL2()), 1e-15) << triangle;
    EXPECT_LE(distance(convert<omReal64>(triangle.getUnitNormal()), Real(x, y, z)), 1e-15) << triangle;
    EXPECT_EQ(triangle.area(), normal.normL2() / 2) << triangle;
  }
}

TYPED_TEST(Triangle3dTest, HasPerimeterBarycenterAndText) {
  using T = TypeParam;
  Triangle3d<T> triangle({0, 0, 0}, Point3d<T>(3, 0, 0), {0, 4, 0});
  EXPECT_EQ(triangle.perimeter(), 12.0);
  EXPECT_EQ(triangle.area(), 6.0);
  triangle.setPoint2(Point3d<T>(0, 4, 8));
  EXPECT_EQ(triangle.getBarycenter(), Point3dData<omReal64>(1, 4 / 3.0, 8 / 3.0));
  std::ostringstream text;
  text << triangle;
  EXPECT_EQ(text.str(), "[pt0=[0, 0, 0], pt1=[3, 0, 0], pt2=[0, 4, 8]]");
}

TYPED_TEST(Triangle3dTest, DegenerateOnesHaveNoNormal) {
  using T = TypeParam;
  for (const Point3dData<T>& last : {Point3dData<T>(3, 5, 7), Point3dData<T>(1, 2, 3)}) {
    const Triangle3d<T> triangle({1, 2, 3}, {5, 8, 11}, last);
    omReal64 x = 1;
    omReal64 y = 1;
    omReal64 z = 1;
    triangle.getUnitNormal(x, y, z);
    EXPECT_EQ(Point3dData<omReal64>(x, y, z), Point3dData<omReal64>()) << triangle;
    EXPECT_EQ(triangle.getUnitNormal().getRho(), 0.0) << triangle;
    EXPECT_EQ(triangle.area(), 0.0) << triangle;
  }
}

TEST(Triangle3d, OnlyThePerimeterWrapsForIntegers) {
  const Triangle3d<omInt32> triangle({-2000000000, 0, 0}, {2000000000, 0, 0}, {0, 2000000000, 0});
  EXPECT_EQ(triangle.area(), 4e18);
  EXPECT_EQ(triangle.getBarycenter(), Point3dData<omReal64>(0, 2000000000 / 3.0, 0));
  EXPECT_TRUE(std::isnan(Triangle3d<omInt32>({0, 0, 0}, {50000, 0, 0}, {0, 1, 0}).perimeter()));
}

}  // namespace
}  // namespace ormix::geom
