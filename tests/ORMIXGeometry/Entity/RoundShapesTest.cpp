#include <ORMIXGeometry/ORMIXGeometry.h>

#include "support/Checks.h"

// What circles, spheres, ellipses and ellipsoids answer about themselves. Their perimeters and areas are tested with
// the kernels that compute them.

namespace ormix::geom {
namespace {

constexpr omReal64 s_pi = 3.141592653589793;

template <class T>
class RoundShapes : public testing::Test {};
TYPED_TEST_SUITE(RoundShapes, support::Scalars);

TYPED_TEST(RoundShapes, SignedDistanceIsNegativeInside) {
  using T = TypeParam;
  const Circle2d<T> circle({10, 10}, 5);
  const Sphere3d<T> sphere({10, 10, 10}, 7);
  EXPECT_EQ(circle.signedDistance(Point2d<T>(10, 10)), -5.0);
  EXPECT_EQ(circle.signedDistance(Point2d<T>(16, 2)), 5.0);
  EXPECT_EQ(circle.distance(Point2d<T>(10, 9)), 4.0);
  EXPECT_EQ(sphere.signedDistance(Point3d<T>(10, 10, 10)), -7.0);
  EXPECT_EQ(sphere.signedDistance(Point3dData<T>(6, 2, 2)), 5.0);
  EXPECT_EQ(sphere.distance(Point3d<T>(10, 9, 10)), 6.0);
  EXPECT_TRUE(compare(sphere, Sphere3d<T>(11, 10, 10, 6), T(1)));
  EXPECT_FALSE(compare(sphere, Sphere3d<T>(11, 11, 10, 7), T(1)) || compare(sphere, Sphere3d<T>(10, 10, 10, 9), T(1)));
}

TEST(RoundShape, OnlyDistancesOfIntegersWrap) {
  EXPECT_DOUBLE_EQ(Circle2d<omInt32>({0, 0}, 2000000000).area(), s_pi * 4e18);
  EXPECT_DOUBLE_EQ(Circle2d<omUInt32>({0, 0}, 4000000000u).perimeter(), s_pi * 8e9);
  EXPECT_TRUE(std::isnan(Circle2d<omInt32>({0, 0}, 1).signedDistance(Point2d<omInt32>(46341, 0))));
  EXPECT_EQ(Circle2d<omUInt32>({65536, 0}, 2).distance(Point2d<omUInt32>(0, 0)), 2.0);
  EXPECT_EQ(Circle2d<omReal64>({0, 0}, -1).signedDistance(Point2d<omReal64>(0, 2)), 3.0) << "negative radii are kept";
  EXPECT_DOUBLE_EQ(Sphere3d<omInt32>(0, 0, 0, 2000000000).area(), 16e18 * s_pi);
  EXPECT_DOUBLE_EQ(Sphere3d<omUInt32>(0, 0, 0, 3000000000u).volume(), 36e27 * s_pi);
  EXPECT_TRUE(std::isnan(Sphere3d<omInt32>(0, 0, 0, 1).signedDistance(Point3d<omInt32>(46341, 0, 0))));
  EXPECT_DOUBLE_EQ(Ellipse2d<omInt32>({0, 0}, 2000000000, 2000000000, 0).area(), s_pi * 4e18);
}

TYPED_TEST(RoundShapes, EllipsesHaveAConstantSumOfFocalDistances) {
  const Ellipse2d<TypeParam> ellipse({30, 40}, 20, 8, 0.7), upright({10, 10}, 5, 3, s_pi / 2);
  for (omReal64 at = -7; at < 7; at += 0.3) {
    const auto point = ellipse.boundaryPoint(at);
    EXPECT_NEAR(distance(point, ellipse.focus1()) + distance(point, ellipse.focus2()), 40, 1e-12) << at;
    EXPECT_NEAR(distance(point, {30, 40}), ellipse.radius(at), 1e-12) << at;
  }
  EXPECT_NEAR(ellipse.excentricity(), ellipse.focalLength() / 20, 1e-14);
  EXPECT_NEAR(upright.focus1().getX(), 10, 1e-14);
  EXPECT_DOUBLE_EQ(upright.focus1().getY(), 14);
  EXPECT_DOUBLE_EQ(upright.focus2().getY(), 6);
  EXPECT_NEAR((Ellipse2d<TypeParam>({3, 4}, 5, 5, 1).perimeterLowerBound()), 10 * s_pi, 1e-13);
  EXPECT_NEAR((Ellipse2d<TypeParam>({3, 4}, 5, 5, 1).perimeterUpperBound()), 10 * s_pi, 1e-13);
}

TEST(RoundShape, FocalLengthsNeitherWrapNorOverflow) {
  const auto focalLength = [](auto a, decltype(a) b) { return Ellipse2d<decltype(a)>({0, 0}, a, b, 0).focalLength(); };
  EXPECT_EQ(focalLength(5, 3), 4.0);
  EXPECT_EQ(focalLength(3, 5), 4.0);
  EXPECT_EQ(focalLength(7, 7), 0.0);
  EXPECT_DOUBLE_EQ(focalLength(3000000000u, 4000000000u), std::sqrt(7.0) * 1e9);
  EXPECT_DOUBLE_EQ(focalLength(5e300, 3e300), 4e300);
  EXPECT_DOUBLE_EQ(focalLength(5e-300, 3e-300), 4e-300);
  // a² - b² would lose every digit.
  EXPECT_DOUBLE_EQ(focalLength(1.0, 1 - std::ldexp(1.0, -50)), std::ldexp(std::sqrt(2.0), -25));
}

TYPED_TEST(RoundShapes, EllipsoidsHaveTheSurfaceOfTheirRadii) {
  const Ellipsoid3d<TypeParam> ellipsoid(10, 20, 30, 6, 5, 4, 0.25, 0.5, 0.75);
  const Point3dData<omReal64> center(10, 20, 30);
  EXPECT_NEAR(distance(ellipsoid.boundaryPoint(0, 1), center), 4, 1e-14);
  EXPECT_NEAR(distance(ellipsoid.boundaryPoint(s_pi / 2, s_pi / 2), center), 5, 1e-14);
  const auto& axes = ellipsoid.getMatRot();
  EXPECT_LE(distance(ellipsoid.boundaryPoint(s_pi / 2, 0),
                     center + 6.0 * Point3dData<omReal64>(axes(0, 0), axes(1, 0), axes(2, 0))),
            1e-14);
  EXPECT_NEAR(distance(ellipsoid.boundaryPoint(1, 2), center), ellipsoid.radius(1, 2), 1e-13);
  EXPECT_DOUBLE_EQ(ellipsoid.volume(), 160 * s_pi);
  EXPECT_DOUBLE_EQ(ellipsoid.excentricity(), std::sqrt(20.0) / 6);
  EXPECT_DOUBLE_EQ((Ellipsoid3d<TypeParam>(0, 0, 0, 3, 3, 3, 1, 1, 1).area()), 36 * s_pi);
}

TEST(RoundShape, EllipsoidsTurnByChiThenBetaThenAlpha) {
  // z goes to -y by chi, and that to x by alpha.
  const Ellipsoid3d<omReal64> ellipsoid(0, 0, 0, 3, 2, 1, s_pi / 2, 0, s_pi / 2);
  const omReal64 rows[3][3] = {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}};
  for (std::size_t k = 0; k < 9; ++k) EXPECT_NEAR(ellipsoid.getMatRot()(k / 3, k % 3), rows[k / 3][k % 3], 1e-15) << k;
}

TEST(RoundShape, EllipsoidsCompareEachFieldWithItsTolerance) {
  const auto differs = [](std::size_t field, omReal64 by) {
    omReal64 v[] = {1, 2, 3, 6, 5, 4, 0.25, 0.5, 0.75};
    v[field] += by;
    return !compare(Ellipsoid3d<omReal64>(1, 2, 3, 6, 5, 4, 0.25, 0.5, 0.75),
                    Ellipsoid3d<omReal64>(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8]), 0.5, 0.125);
  };
  for (std::size_t field = 0; field < 9; ++field) {
    EXPECT_FALSE(differs(field, field < 6 ? -0.5 : 0.125)) << field;
    EXPECT_TRUE(differs(field, field < 6 ? 0.75 : 0.25)) << field;
  }
}

}  // namespace
}  // namespace ormix::geom
