#include <ORMIXGeometry/Entity/3d/Sphere/Sphere3d.h>
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace ormix::geom {
namespace {

constexpr omReal64 s_pi = 3.141592653589793;

template <class T>
class Sphere3dTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(Sphere3dTest, Scalars);

TYPED_TEST(Sphere3dTest, AccessorsAndPrint) {
  using T = TypeParam;
  Sphere3d<T> sphere;
  EXPECT_EQ(sphere.volume(), 0.0);
  sphere.setCoords(Point3d<T>(1, 2, 3), T(4));
  std::ostringstream text;
  text << sphere << Sphere3d<T>(1, 2, 3, 4);
  EXPECT_EQ(text.str(), "[center=[1, 2, 3], radius=4][center=[1, 2, 3], radius=4]");
  sphere.setCoords(5, 6, 7, 8);
  EXPECT_EQ(sphere.center(), Point3dData<T>(sphere.centerX(), sphere.centerY(), sphere.centerZ()));
  sphere.setCenter(9, 9, 9);
  sphere.setRadius(T(6));
  EXPECT_EQ(sphere.center(), Point3dData<T>(9, 9, 9));
  EXPECT_EQ(sphere.getRadius(), T(6));
}

TYPED_TEST(Sphere3dTest, SignedDistanceIsNegativeInside) {
  using T = TypeParam;
  const Sphere3d<T> sphere({10, 10, 10}, T(7));
  EXPECT_EQ(sphere.signedDistance(Point3d<T>(10, 10, 10)), -7.0);
  EXPECT_EQ(sphere.signedDistance(Point3d<T>(12, 13, 16)), 0.0);
  EXPECT_EQ(sphere.signedDistance(Point3dData<T>(6, 2, 2)), 5.0);
  EXPECT_EQ(sphere.distance(Point3d<T>(10, 9, 10)), 6.0);
  EXPECT_DOUBLE_EQ(sphere.area(), 196 * s_pi);
  EXPECT_DOUBLE_EQ(sphere.volume(), 343 * 4 / 3.0 * s_pi);
}

TYPED_TEST(Sphere3dTest, ComparesCentreThenRadius) {
  using T = TypeParam;
  const Sphere3d<T> sphere({10, 10, 10}, T(7));
  EXPECT_TRUE(compare(sphere, Sphere3d<T>(11, 10, 10, 6), T(1)));
  EXPECT_FALSE(compare(sphere, Sphere3d<T>(11, 11, 10, 7), T(1)));
  EXPECT_FALSE(compare(sphere, Sphere3d<T>(10, 10, 10, 9), T(1)));
}

TEST(Sphere3d, OnlyDistancesWrapForIntegers) {
  EXPECT_DOUBLE_EQ(Sphere3d<omInt32>(0, 0, 0, 2000000000).area(), 16e18 * s_pi);
  EXPECT_DOUBLE_EQ(Sphere3d<omUInt32>(0, 0, 0, 3000000000u).volume(), 36e27 * s_pi);
  EXPECT_TRUE(std::isnan(Sphere3d<omInt32>(0, 0, 0, 1).signedDistance(Point3d<omInt32>(46341, 0, 0))));
  EXPECT_DOUBLE_EQ(Sphere3d<omReal64>(0, 0, 0, -3).volume(), -36 * s_pi);
}

}  // namespace
}  // namespace ormix::geom
