#include <ORMIXGeometry/ORMIXGeometry.h>

#include "support/Random.h"
#include "support/SampleObjects.h"

namespace {

using namespace samples;

using Point = Point3dData<omReal64>;
constexpr omReal64 s_halfPi = 1.5707963267948966;

template <class Math>
Point mapped(const Math& map, const Point& point) {
  omReal64 x = 0, y = 0, z = 0;
  EXPECT_TRUE(map.apply(point.getX(), point.getY(), point.getZ(), x, y, z));
  return {x, y, z};
}

/// What is 1 on the surface, by the definition of the ellipsoid.
omReal64 levelAt(const Ellipsoid3d<omReal64>& ellipsoid, const Point& point) {
  const Point offset = point - ellipsoid.center();
  const omReal64 radii[] = {ellipsoid.getMajorRadius(), ellipsoid.getMediumRadius(), ellipsoid.getMinorRadius()};
  const Matrix3x3& m = ellipsoid.getMatRot();
  omReal64 level = 0;
  for (std::size_t axis = 0; axis < 3; ++axis)
    level += std::pow(
        (m(0, axis) * offset.getX() + m(1, axis) * offset.getY() + m(2, axis) * offset.getZ()) / radii[axis], 2);
  return level;
}

class SolidTransform3d : public ::testing::Test {
 protected:
  omReal64 number() { return random.uniform(-10, 10); }
  omReal64 length() { return std::abs(number()) + 0.5; }
  /// Every third time a pole, where two of the angles turn about one axis.
  omReal64 tilt() { return std::array{s_halfPi, -s_halfPi, number(), number(), number(), number()}[random.below(6)]; }
  omReal64 scale() { return number() < 0 ? -length() : length(); }

  support::Random random{20211};
};

TEST_F(SolidTransform3d, ImagesOfPointsOfAnEllipsoidLieOnItsImage) {
  for (int count = 0; count < 100; ++count) {
    const Ellipsoid3d<omReal64> before({number(), number(), number()}, 5, 3, 2, number(), tilt(), number());
    // Every tenth turns it by beta = pi/2 in all.
    const omReal64 beta = count % 10 == 0 ? s_halfPi - before.getBeta() : tilt();
    const Similarity3d map(scale(), number(), beta, number(), number(), number(), number());
    Ellipsoid3d<omReal64> image = before;
    ASSERT_TRUE(SimilarityTransform3d(map).applyInSitu(image));
    EXPECT_NEAR(image.getMajorRadius(), 5 * map.getScale(), 1e-12);
    for (int direction = 0; direction < 5; ++direction)
      EXPECT_NEAR(levelAt(image, mapped(map, before.boundaryPoint(number(), number()))), 1, 1e-11);
  }
}

/// All eight, in order.
template <class Solid>
std::array<Point, 8> corners(const Solid& solid) {
  return {solid.topLeftFrontCorner(),     solid.topRightFrontCorner(),  solid.bottomLeftFrontCorner(),
          solid.bottomRightFrontCorner(), solid.topLeftBackCorner(),    solid.topRightBackCorner(),
          solid.bottomLeftBackCorner(),   solid.bottomRightBackCorner()};
}

template <class Transform, class Math, class Solid>
void expectImagesOfCorners(const Math& map, const Solid& solid) {
  Solid image = solid;
  ASSERT_TRUE(Transform(map).applyInSitu(image));
  for (std::size_t index = 0; index < 8; ++index)
    EXPECT_TRUE(compare(corners(image)[index], mapped(map, corners(solid)[index]), 1e-11)) << index << image;
}

// Where the centre, which the corners' rotation turns too, allows it.
TEST_F(SolidTransform3d, CornersOfCubesAndCuboidsAreMapped) {
  for (int count = 0; count < 50; ++count) {
    const Cuboid3d<omReal64> central({0, 0, 0}, length(), length(), length(), number(), tilt(), number());
    const Cuboid3d<omReal64> anywhere({number(), number(), number()}, 4, 3, 2, number(), tilt(), number());
    const Cube3d<omReal64> centralCube({0, 0, 0}, length(), number(), tilt(), number());
    const Cube3d<omReal64> upright({number(), number(), number()}, length(), 0, 0, 0);
    const Rotation3d rotation(number(), tilt(), number());
    expectImagesOfCorners<RotationTransform3d>(rotation, central);
    expectImagesOfCorners<RotationTransform3d>(rotation, centralCube);
    const Similarity3d similarity(scale(), number(), tilt(), number(), 0, 0, 0);
    expectImagesOfCorners<SimilarityTransform3d>(similarity, central);
    expectImagesOfCorners<SimilarityTransform3d>(similarity, centralCube);
    expectImagesOfCorners<ScaleTransform3d>(Scale3d(scale()), anywhere);
    expectImagesOfCorners<TranslationTransform3d>(Translation3d(number(), number(), number()), upright);
  }
}

// The stored centre is what is mapped, and the corners turn it: stored results rely on the one as on the other.
TEST(SolidTransform3dOddity, TranslationMovesATurnedCubeInItsOwnDirections) {
  Cube3d<omReal64> cube({1, 2, 3}, 1, 0, 0, s_halfPi);
  const Point before = cube.topLeftFrontCorner();
  ASSERT_TRUE(TranslationTransform3d(10, 0, 0).applyInSitu(cube));
  EXPECT_EQ(cube.center(), Point(11, 2, 3));
  EXPECT_TRUE(compare(cube.topLeftFrontCorner(), before + Point(0, 10, 0), 1e-14));
}

TEST(SolidTransform3dAngles, StayToTheBitWhereTheMapKeepsDirections) {
  const Ellipsoid3d<omReal64> before({1, 2, 3}, 5, 3, 2, 7.1, -4.3, 1e3);
  for (const GeometryEntity3dPtr& entity :
       {TranslationTransform3d(3, 5, 7).apply(before), ScaleTransform3d(-2).apply(before)}) {
    const auto& image = dynamic_cast<const Ellipsoid3d<omReal64>&>(*entity);
    EXPECT_TRUE(image.getAlpha() == 7.1 && image.getBeta() == -4.3 && image.getChi() == 1e3) << image;
  }
  // No absolute value is taken of lengths.
  Sphere3d<omReal64> sphere({1, 2, 3}, 4);
  ASSERT_TRUE(ScaleTransform3d(-2).applyInSitu(sphere));
  EXPECT_EQ(describe(sphere), describe(Sphere3d<omReal64>({-2, -4, -6}, -8)));
  // A scale of zero has a rotation all the same.
  Cube3d<omInt32> cube({1, 2, 3}, 4, 0, 0, 0);
  ASSERT_TRUE(SimilarityTransform3d(0, 0.5, 0, 0, 1, 1, 1).applyInSitu(cube));
  EXPECT_EQ(cube.getHalfLength(), 0);
  EXPECT_NEAR(cube.getChi(), 0.5, 1e-15);
}

TEST(SolidTransform3dAngles, ThatAreNotFiniteCannotBeTurned) {
  for (const omReal64 bad : {std::nan(""), std::numeric_limits<omReal64>::infinity()}) {
    Cuboid3d<omReal64> cuboid({1, 2, 3}, 4, 3, 2, 0.25, bad, 0.5);
    const std::string before = describe(cuboid);
    EXPECT_FALSE(RotationTransform3d(1, 0, 0).applyInSitu(cuboid));
    EXPECT_FALSE(RotationTransform3d(1, 0, 0).apply(cuboid));
    EXPECT_EQ(describe(cuboid), before);
    EXPECT_TRUE(TranslationTransform3d(1, 0, 0).applyInSitu(cuboid));
  }
}

TEST(SolidTransform3dShape, KeepsItsVoxelsAndANullMesh) {
  Shape3d shape = Sample<Shape3d>::make();
  shape.getMeshWithHolesColl().push_back(nullptr);
  const auto image = boost::dynamic_pointer_cast<Shape3d>(TranslationTransform3d(3, 5, 7).apply(shape));
  ASSERT_TRUE(image);
  EXPECT_EQ(image->getRowIntersections(), shape.getRowIntersections());
  ASSERT_EQ(image->getMeshWithHolesColl().size(), shape.getMeshWithHolesColl().size());
  EXPECT_FALSE(image->getMeshWithHolesColl().back());
}

TEST_F(SolidTransform3d, AnisotropicScaleMakesOfASphereItsImage) {
  const Sphere3d<omReal64> sphere({number(), number(), number()}, length());
  for (int count = 0; count < 100; ++count) {
    const AnisotropicScale3d map(scale(), scale(), count % 4 == 0 ? 2 : scale());
    const Ellipsoid3d<omReal64> image =
        AnisotropicScaleTransform3d::anisotropicScale(sphere, map.getSx(), map.getSy(), map.getSz());
    EXPECT_TRUE(image.getMajorRadius() >= image.getMediumRadius() && image.getMediumRadius() >= image.getMinorRadius());
    EXPECT_GT(image.getMinorRadius(), 0);
    for (int direction = 0; direction < 5; ++direction) {
      const omReal64 theta = number(), phi = number();
      const Point unit(std::sin(theta) * std::cos(phi), std::sin(theta) * std::sin(phi), std::cos(theta));
      EXPECT_NEAR(levelAt(image, mapped(map, sphere.center() + sphere.getRadius() * unit)), 1, 1e-10) << image;
    }
  }
}

TEST(AnisotropicScale3dOfASphere, OrdersItsRadii) {
  const Sphere3d<omReal64> sphere({1, 2, 3}, 3);
  // Equal radii stay in order of the axes, so that nothing is turned.
  EXPECT_EQ(describe(AnisotropicScaleTransform3d::anisotropicScale(sphere, 2, 2, 2)),
            describe(Ellipsoid3d<omReal64>({2, 4, 6}, 6, 6, 6, 0, 0, 0)));
  EXPECT_EQ(describe(AnisotropicScaleTransform3d::anisotropicScale(sphere, 4, -3, 2)),
            describe(Ellipsoid3d<omReal64>({4, -6, 6}, 12, 9, 6, 0, 0, 0)));
  // Rounded, and brought into the range.
  const auto image = AnisotropicScaleTransform3d::anisotropicScale(Sphere3d<omUInt32>({1, 2, 3}, 3), 1, 1.5, -2);
  EXPECT_EQ((std::array{image.getMajorRadius(), image.getMediumRadius(), image.getMinorRadius()}),
            (std::array<omUInt32, 3>{6, 5, 3}));
  EXPECT_EQ(image.center(), Point3dData<omUInt32>(1, 3, 0));
}

TEST(AnisotropicScale3dOfASphere, FailsWhereThereIsNoEllipsoid) {
  Sphere3d<omReal64> sphere({1, 2, 3}, 3);
  for (const omReal64 bad : {0.0, std::nan(""), std::numeric_limits<omReal64>::infinity(), 1e308}) {
    EXPECT_FALSE(AnisotropicScaleTransform3d(1, bad, 1).apply(sphere)) << bad;
    EXPECT_THROW(AnisotropicScaleTransform3d::anisotropicScale(sphere, 1, 1, bad), ORMIXGeometryException) << bad;
  }
  EXPECT_FALSE(AnisotropicScaleTransform3d(1, 1, 0.1).apply(Sphere3d<omInt32>({1, 2, 3}, 3)));
  EXPECT_FALSE(AnisotropicScaleTransform3d(2, 2, 2).applyInSitu(sphere));
  EXPECT_EQ(describe(sphere), describe(Sphere3d<omReal64>({1, 2, 3}, 3)));
}

}  // namespace
