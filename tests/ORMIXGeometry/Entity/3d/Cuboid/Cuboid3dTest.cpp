#include <ORMIXGeometry/Entity/3d/Cube/Cube3d.h>
#include <ORMIXGeometry/Entity/3d/Cuboid/Cuboid3d.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <sstream>

namespace ormix::geom {
namespace {

constexpr omReal64 s_right = 1.5707963267948966;
using Real = Point3dData<omReal64>;

template <class T>
class Cuboid3dTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(Cuboid3dTest, Scalars);

template <class Solid>
std::array<Real, 8> corners(const Solid& solid) {
  return {solid.topLeftFrontCorner(),     solid.topRightFrontCorner(),  solid.bottomLeftFrontCorner(),
          solid.bottomRightFrontCorner(), solid.topLeftBackCorner(),    solid.topRightBackCorner(),
          solid.bottomLeftBackCorner(),   solid.bottomRightBackCorner()};
}

TYPED_TEST(Cuboid3dTest, FrontIsPlusXRightPlusYAndTopMinusZ) {
  using T = TypeParam;
  EXPECT_EQ(corners(Cuboid3d<T>(10, 20, 30, 3, 2, 1, 0, 0, 0)), (std::array<Real, 8>{{{13, 18, 29},
                                                                                      {13, 22, 29},
                                                                                      {13, 18, 31},
                                                                                      {13, 22, 31},
                                                                                      {7, 18, 29},
                                                                                      {7, 22, 29},
                                                                                      {7, 18, 31},
                                                                                      {7, 22, 31}}}));
  EXPECT_EQ(corners(Cube3d<T>(10, 20, 30, 2, 0.25, 0.5, 0.75)),
            corners(Cuboid3d<T>(Point3d<T>(10, 20, 30), 2, 2, 2, 0.25, 0.5, 0.75)));
}

TYPED_TEST(Cuboid3dTest, TurnsAboutTheOriginOfCoordinates) {
  const auto corner = [](omReal64 alpha, omReal64 beta, omReal64 chi) {
    return Cube3d<TypeParam>(10, 0, 0, 1, alpha, beta, chi).topLeftFrontCorner();
  };
  // The corner (11, -1, -1), by a right angle about one axis each, then about x, y and z in turn.
  EXPECT_LE(distance(corner(0, 0, s_right), Real(1, 11, -1)), 1e-14);
  EXPECT_LE(distance(corner(0, s_right, 0), Real(-1, -1, -11)), 1e-14);
  EXPECT_LE(distance(corner(s_right, 0, 0), Real(11, 1, -1)), 1e-14);
  EXPECT_LE(distance(corner(s_right, 0, s_right), Real(-1, 11, -1)), 1e-14);
  EXPECT_LE(distance(corner(s_right, s_right, s_right), Real(-1, -1, -11)), 1e-14);
}

TYPED_TEST(Cuboid3dTest, CornersKeepTheEdges) {
  const auto turned = corners(Cuboid3d<TypeParam>(1, 2, 3, 3, 2, 1, 0.25, 0.5, 0.75));
  for (std::size_t first = 0; first < 8; ++first)
    for (std::size_t second = 0; second < 8; ++second) {
      // The bits of an index are right, bottom and back.
      const std::size_t across = first ^ second;
      const Real edges((across & 4) != 0 ? 6 : 0, (across & 1) != 0 ? 4 : 0, (across & 2) != 0 ? 2 : 0);
      EXPECT_NEAR(distance(turned[first], turned[second]), edges.normL2(), 1e-14) << first << ' ' << second;
    }
}

TYPED_TEST(Cuboid3dTest, PrintsFullSizesAndTheAnglesBackwards) {
  using T = TypeParam;
  Cuboid3d<T> cuboid(9, 9, 9, 9, 9, 9, 9, 9, 9);
  cuboid.setCenter(Point3d<T>(1, 2, 3));
  cuboid.setHalfLength(3);
  cuboid.setHalfWidth(2);
  cuboid.setHalfHeight(1);
  cuboid.setAlpha(0.25);
  cuboid.setBeta(0.5);
  cuboid.setChi(0.75);
  std::ostringstream text;
  text << cuboid << ' ' << Cube3d<T>(Point3d<T>(1, 2, 3), 4, 0.25, 0.5, 0.75);
  EXPECT_EQ(text.str(),
            "[center=[1, 2, 3], l=6, w=4, h=2, chi=0.75, beta=0.5, alpha=0.25] "
            "[center=[1, 2, 3], l=8, chi=0.75, beta=0.5, alpha=0.25]");
  EXPECT_EQ(Point3d<T>(cuboid.getLength(), cuboid.getWidth(), cuboid.getHeight()), Point3d<T>(6, 4, 2));
}

TEST(Cuboid3d, SizesOfIntegersWrapAndCornersDoNot) {
  const Cube3d<omInt32> cube(2000000000, 0, 0, 2000000000, 0, 0, 0);
  EXPECT_EQ(cube.getLength(), -294967296);
  EXPECT_EQ(cube.bottomRightFrontCorner(), Real(4e9, 2e9, 2e9));
  EXPECT_EQ(Cube3d<omUInt32>(0, 0, 0, 3000000000u, 0, 0, 0).topLeftBackCorner(), Real(-3e9, -3e9, -3e9));
}

}  // namespace
}  // namespace ormix::geom
