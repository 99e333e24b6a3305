#include <ORMIXGeometry/ORMIXGeometry.h>

#include "support/Checks.h"

// Shapes given by corners: rectangles, squares, cuboids, cubes and triangles.

namespace ormix::geom {
namespace {

constexpr omReal64 s_right = 1.5707963267948966;
using Flat = Point2dData<omReal64>;
using Real = Point3dData<omReal64>;

template <class Shape>
std::array<Flat, 4> flatCorners(const Shape& shape) {
  return {shape.topLeftCorner(), shape.topRightCorner(), shape.bottomLeftCorner(), shape.bottomRightCorner()};
}
template <class Solid>
std::array<Real, 8> corners(const Solid& solid) {
  return {solid.topLeftFrontCorner(),     solid.topRightFrontCorner(),  solid.bottomLeftFrontCorner(),
          solid.bottomRightFrontCorner(), solid.topLeftBackCorner(),    solid.topRightBackCorner(),
          solid.bottomLeftBackCorner(),   solid.bottomRightBackCorner()};
}

template <class T>
class Corners : public testing::Test {};
TYPED_TEST_SUITE(Corners, support::Scalars);

TYPED_TEST(Corners, OfRectanglesTurnWithThemAndAreExactWithoutOrientation) {
  EXPECT_EQ(flatCorners(Rectangle2d<TypeParam>({0, 0}, 2, 1, 0)),
            (std::array<Flat, 4>{{{-2, -1}, {2, -1}, {-2, 1}, {2, 1}}}));
  EXPECT_EQ(flatCorners(Square2d<TypeParam>({3, 3}, 2, 0)), (std::array<Flat, 4>{{{1, 1}, {5, 1}, {1, 5}, {5, 5}}}));
  // By the polar form; y grows downwards.
  const Rectangle2d<TypeParam> turned({30, 7}, 4, 3, 1.1);
  const omReal64 beta = std::atan(0.75),
                 angles[] = {2 * s_right + 1.1 + beta, 1.1 - beta, 2 * s_right + 1.1 - beta, 1.1 + beta};
  for (std::size_t k = 0; k < 4; ++k)
    EXPECT_LE(distance(flatCorners(turned)[k], Flat(30 + 5 * std::cos(angles[k]), 7 + 5 * std::sin(angles[k]))), 1e-13);
  EXPECT_EQ(turned.getArea(), 48);
  const Flat below = Square2d<TypeParam>({3, 3}, 2, s_right / 2).bottomRightCorner();
  EXPECT_LE(distance(below, Flat(3, 3 + std::sqrt(8.0))), 1e-14);
}

// Front is plus x, right plus y and top minus z.
TYPED_TEST(Corners, OfCuboidsTurnAboutTheOriginOfCoordinates) {
  using T = TypeParam;
  const auto upright = corners(Cuboid3d<T>(10, 20, 30, 3, 2, 1, 0, 0, 0));
  const auto turned = corners(Cuboid3d<T>(1, 2, 3, 3, 2, 1, 0.25, 0.5, 0.75));
  // The bits of an index are right, bottom and back.
  for (std::size_t k = 0; k < 8; ++k) {
    EXPECT_EQ(upright[k], Real(k & 4 ? 7 : 13, k & 1 ? 22 : 18, k & 2 ? 31 : 29)) << k;
    for (std::size_t other = 0; other < 8; ++other)
      EXPECT_NEAR(distance(turned[k], turned[other]), distance(upright[k], upright[other]), 1e-14) << k << other;
  }
  EXPECT_EQ(corners(Cube3d<T>(10, 20, 30, 2, 0.25, 0.5, 0.75)),
            corners(Cuboid3d<T>(Point3d<T>(10, 20, 30), 2, 2, 2, 0.25, 0.5, 0.75)));
  // The corner (11, -1, -1), by a right angle about one axis each, then about x, y and z in turn.
  for (const auto& [turns, expected] :
       {std::pair(Real(0, 0, 1), Real(1, 11, -1)), std::pair(Real(0, 1, 0), Real(-1, -1, -11)),
        std::pair(Real(1, 0, 0), Real(11, 1, -1)), std::pair(Real(1, 0, 1), Real(-1, 11, -1)),
        std::pair(Real(1, 1, 1), Real(-1, -1, -11))}) {
    const Real angles = s_right * turns;
    const Cube3d<T> cube(10, 0, 0, 1, angles.getX(), angles.getY(), angles.getZ());
    EXPECT_LE(distance(cube.topLeftFrontCorner(), expected), 1e-14) << turns;
  }
}

TYPED_TEST(Corners, OfTrianglesTurnCounterClockwiseAboutTheNormal) {
  using T = TypeParam;
  const Point3dData<T> corner(1, 1, 1), alongX(4, 1, 1), alongY(1, 5, 1), alongZ(1, 1, 3);
  for (const auto& [triangle, normal] : {std::pair(Triangle3d<T>(corner, alongX, alongY), Real(0, 0, 12)),
                                         // Straight down, which no vector of positive length is.
                                         std::pair(Triangle3d<T>(corner, alongY, alongX), Real(0, 0, -12)),
                                         std::pair(Triangle3d<T>(corner, alongY, alongZ), Real(8, 0, 0)),
                                         std::pair(Triangle3d<T>(corner, alongX, alongZ), Real(0, -6, 0)),
                                         std::pair(Triangle3d<T>(alongX, alongY, alongZ), Real(8, 6, 12))}) {
    omReal64 x = 0, y = 0, z = 0;
    triangle.getNormal(x, y, z);
    EXPECT_EQ(Real(x, y, z), normal) << triangle;
    EXPECT_LE(distance(convert<omReal64>(triangle.getNormal()), normal), 1e-14) << triangle;
    triangle.getUnitNormal(x, y, z);
    EXPECT_LE(distance(Real(x, y, z), normal / normal.normL2()), 1e-15) << triangle;
    EXPECT_LE(distance(convert<omReal64>(triangle.getUnitNormal()), Real(x, y, z)), 1e-15) << triangle;
    EXPECT_EQ(triangle.area(), normal.normL2() / 2) << triangle;
  }
  for (const Point3dData<T>& last : {Point3dData<T>(3, 5, 7), Point3dData<T>(1, 2, 3)}) {
    const Triangle3d<T> triangle({1, 2, 3}, {5, 8, 11}, last);
    omReal64 x = 1, y = 1, z = 1;
    triangle.getUnitNormal(x, y, z);
    EXPECT_EQ(Real(x, y, z), Real()) << triangle;
    EXPECT_EQ(triangle.getUnitNormal().getRho(), 0.0) << triangle;
    EXPECT_EQ(triangle.area(), 0.0) << triangle;
  }
  Triangle3d<T> triangle({0, 0, 0}, Point3d<T>(3, 0, 0), {0, 4, 0});
  EXPECT_EQ(triangle.perimeter(), 12.0);
  triangle.setPoint2(Point3d<T>(0, 4, 8));
  EXPECT_EQ(triangle.getBarycenter(), Real(1, 4 / 3.0, 8 / 3.0));
}

TEST(Corner, DoesNotWrapForIntegersButFullSizesAndPerimetersDo) {
  const Rectangle2d<omInt32> rectangle({0, 0}, 1500000000, 1500000000, 0);
  EXPECT_EQ(rectangle.getLength(), -1294967296);
  EXPECT_EQ(rectangle.getArea(), 9e18);
  EXPECT_EQ(rectangle.topLeftCorner(), Flat(-1.5e9, -1.5e9));
  const Cube3d<omInt32> cube(2000000000, 0, 0, 2000000000, 0, 0, 0);
  EXPECT_EQ(cube.getLength(), -294967296);
  EXPECT_EQ(cube.bottomRightFrontCorner(), Real(4e9, 2e9, 2e9));
  EXPECT_EQ(Cube3d<omUInt32>(0, 0, 0, 3000000000u, 0, 0, 0).topLeftBackCorner(), Real(-3e9, -3e9, -3e9));
  const Triangle3d<omInt32> triangle({-2000000000, 0, 0}, {2000000000, 0, 0}, {0, 2000000000, 0});
  EXPECT_EQ(triangle.area(), 4e18);
  EXPECT_EQ(triangle.getBarycenter(), Real(0, 2000000000 / 3.0, 0));
  EXPECT_TRUE(std::isnan(Triangle3d<omInt32>({0, 0, 0}, {50000, 0, 0}, {0, 1, 0}).perimeter()));
}

}  // namespace
}  // namespace ormix::geom
