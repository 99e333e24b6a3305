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

TYPED_TEST(RoundShapes, SolidsHaveTheirMeasuresAndDistances) {
  using T = TypeParam;
  const Cylinder3d<T> cylinder({10, 10, 10}, {10, 10, 14}, 3);
  const Cone3d<T> cone({10, 10, 10}, {10, 10, 14}, 3, 0);
  const Torus3d<T> torus({10, 10, 10}, {0, 0, 1e-300}, 5, 2);
  const Circle3d<T> circle({10, 10, 10}, {0, 0, -7}, 5);
  EXPECT_DOUBLE_EQ(AreaMsr3d::measure(cylinder), 42 * s_pi);
  EXPECT_DOUBLE_EQ(VolumeMsr3d::measure(cylinder), 36 * s_pi);
  EXPECT_DOUBLE_EQ(AreaMsr3d::measure(cone), 24 * s_pi);
  EXPECT_DOUBLE_EQ(VolumeMsr3d::measure(cone), 12 * s_pi);
  EXPECT_DOUBLE_EQ(AreaMsr3d::measure(torus), 40 * s_pi * s_pi);
  EXPECT_DOUBLE_EQ(VolumeMsr3d::measure(torus), 40 * s_pi * s_pi);
  EXPECT_DOUBLE_EQ(circle.length(), 10 * s_pi);
  EXPECT_EQ(cylinder.signedDistance({10, 16, 18}), 5);
  EXPECT_EQ(cylinder.signedDistance({10, 10.5, 12}), -2);
  EXPECT_DOUBLE_EQ(cone.signedDistance({14, 10, 13}), 0.8 * 4 + 0.6 * 3 - 2.4);
  EXPECT_DOUBLE_EQ(cone.getHalfAngle(), std::atan2(3, 4));
  EXPECT_EQ(torus.signedDistance({10, 10, 10}), 3);
  EXPECT_EQ(circle.distance({10, 18, 14}), 5);
  EXPECT_EQ(cylinder.getAxis(), (Point3dData<omReal64>(0, 0, 1)));
  EXPECT_NEAR(VolumeMsr3d::measure(toMesh3d(torus, 400)) / torus.volume(), 1, 3e-4);
  EXPECT_NEAR(VolumeMsr3d::measure(toMesh3d(cone, 400)) / cone.volume(), 1, 1e-4);
  EXPECT_NEAR(VolumeMsr3d::measure(toMesh3d(Torus3d<T>({10, 10, 10}, {1, 1, 1}, 2, 5), 400)) /
                  Torus3d<T>({10, 10, 10}, {1, 1, 1}, 2, 5).volume(),
              1, 3e-4);
  EXPECT_TRUE(compare(torus, Torus3d<T>({10, 10, 11}, {0, 0.1, 1}, 5, 1), T(1), 0.1));
  EXPECT_FALSE(compare(torus, Torus3d<T>({10, 10, 10}, {0, 0.1, 1}, 5, 2), T(1), 0.09));
}

TYPED_TEST(RoundShapes, FollowSimilaritiesAsSetsOfPoints) {
  using T = TypeParam;
  const std::vector<GeometryEntity3dPtr> spatial{
      boost::make_shared<Cylinder3d<T>>(Point3dData<T>(10, 10, 10), Point3dData<T>(14, 10, 13), T(3)),
      boost::make_shared<Cone3d<T>>(Point3dData<T>(10, 10, 10), Point3dData<T>(14, 10, 13), T(3), T(1)),
      boost::make_shared<Torus3d<T>>(Point3dData<T>(10, 10, 10), Point3dData<omReal64>(1, 2, 2), T(5), T(2)),
      boost::make_shared<Circle3d<T>>(Point3dData<T>(10, 10, 10), Point3dData<omReal64>(1, 2, 2), T(4)),
      boost::make_shared<Line3d>(Point3dData<omReal64>(3, -1, 2), Point3dData<omReal64>(1, 2, 2))};
  const std::vector<GeometryEntity2dPtr> planar{boost::make_shared<Arc2d<T>>(Point2dData<T>(10, 10), T(3), 0.25, 2.0),
                                                boost::make_shared<Arc2d<T>>(Point2dData<T>(10, 10), T(3), 2.25, -5.0)};
  const auto expect = [](const auto& entity, const auto& point, const auto& map, omReal64 scale) {
    const auto image = map.apply(*entity), place = map.apply(point);
    ASSERT_TRUE(image && place) << entity->getClassName();
    constexpr omReal64 precision = std::numeric_limits<T>::digits == 24 ? 1e-4 : 1e-11;
    EXPECT_NEAR(distance(*image, *place), scale * distance(*entity, point), precision)
        << map.getClassName() << " of " << image->getClassName();
  };
  const Point3d<omReal64> p(11.5, 16, 8.25);
  const Point2d<omReal64> q(11.5, 6);
  for (const auto& entity : spatial) {
    expect(entity, p, ScaleTransform3d(3), 3);
    // Whole and positive images only.
    if (std::is_unsigned_v<T>) continue;
    expect(entity, p, ScaleTransform3d(-2), 2);
    if (std::is_integral_v<T>) continue;
    expect(entity, p, SimilarityTransform3d(-1.5, 0.5, 0.25, -0.75, 30, 5, 7), 1.5);
    expect(entity, p, RigidTransform3d(0.5, 0.25, -0.75, 30, 5, 7), 1);
  }
  for (const auto& entity : planar) {
    expect(entity, q, ScaleTransform2d(3), 3);
    if (std::is_unsigned_v<T>) continue;
    expect(entity, q, ScaleTransform2d(-2), 2);
    if (std::is_integral_v<T>) continue;
    expect(entity, q, SimilarityTransform2d(-1.5, 0.5, 30, 5), 1.5);
  }
  // A line is one under any affine map, and a point under a scale of 0.
  const Line3d line({3, -1, 2}, {1, 2, 2});
  const AnisotropicScaleTransform3d stretch(2, -3, 4);
  const auto image = stretch.apply(line);
  for (const omReal64 t : {-5.0, 7.0}) {
    const Point3d<omReal64> on(2 * (3 + t), -3 * (-1 + 2 * t), 4 * (2 + 2 * t));
    EXPECT_NEAR(distance(*image, on), 0, 1e-13);
  }
  EXPECT_FALSE(ScaleTransform3d(0).apply(line));
}

TEST(RoundShape, ArcsAndDirectionsRefuseWhatTheyCannotHold) {
  constexpr omReal64 nan = support::s_nan, inf = support::s_infinity;
  const auto refusal = [](const Point3dData<omReal64>& d) {
    return support::thrownBy<ORMIXGeometryException>([&] { Line3d({0, 0, 0}, d); });
  };
  EXPECT_EQ(refusal({0, 0, 0}), "A direction must be finite and not the zero vector, [0, 0, 0] was given");
  EXPECT_EQ(refusal({1, nan, 0}), "A direction must be finite and not the zero vector, [1, nan, 0] was given");
  EXPECT_EQ(refusal({1, 0, -inf}), "A direction must be finite and not the zero vector, [1, 0, -inf] was given");
  const Point3dData<omReal64> tiny = Line3d({0, 0, 0}, {0, 3e-320, 4e-320}).getDirection();
  EXPECT_NEAR(tiny.getY(), 0.6, 1e-3);
  EXPECT_NEAR(Line3d({0, 0, 0}, {0, 3e307, 4e307}).getDirection().getZ(), 0.8, 1e-15);
  EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] {
              Arc2d<omInt32>({0, 0}, 1, 0, nan);
            }),
            "The angles of an arc must be finite, 0 and nan were given");
  EXPECT_EQ(Arc2d<omInt32>({0, 0}, 1, 0, -100).getSweep(), -2 * s_pi);
  EXPECT_TRUE(Arc2d<omInt32>({0, 0}, 1, 0, 7).isFull());
  Torus3d<omReal64> torus({1, 2, 3}, {0, 3, 4}, 5, 2);
  EXPECT_THROW(torus.setCoords({9, 9, 9}, {0, 0, 0}, 1, 1), ORMIXGeometryException);
  EXPECT_EQ(support::printed(torus), "[center=[1, 2, 3], axis=[0, 0.6, 0.8], R=5, r=2]");
  for (const omUInt32 sides : {2U, 4097U})
    EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { toMesh3d(torus, sides); }),
              "A round surface needs 3 to 4096 sides, " + std::to_string(sides) + " were given");
  EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { toMesh3d(Cone3d<omInt32>(), 9); }),
            "A mesh of a solid of revolution needs a finite volume that is not 0");

  // Archives whose fields contradict each other.
  const auto readBack = [](auto object, const std::string& from, const std::string& to) {
    std::stringstream text;
    {
      JsonOArchive archive(text);
      EXPECT_TRUE(object.write(archive));
    }
    std::string json = text.str();
    const std::size_t at = json.find(from);
    EXPECT_NE(at, std::string::npos) << json;
    std::stringstream changed(json.replace(at, from.size(), to));
    JsonIArchive archive(changed);
    return std::string(object.read(archive).getMessage());
  };
  const auto expectFailure = [&](const auto& object, const std::string& from, const std::string& to,
                                 const std::string& why) {
    const std::string message = readBack(object, from, to);
    EXPECT_NE(message.find(why), std::string::npos) << message;
  };
  expectFailure(torus, "0.8", "0.9", "_axis is not a unit vector");
  expectFailure(Circle3d<omInt32>({1, 2, 3}, {0, 3, 4}, 5), "0.8", "-8e200", "_normal is not a unit vector");
  expectFailure(Line3d({1, 0, 0}, {0, 3, 4}), "0.8", "0", "_direction is not a unit vector");
  expectFailure(Line3d({1, 0, 0}, {0, 3, 4}), "\"y\": 0", "\"y\": 5", "_point is not the point nearest to the origin");
  expectFailure(Arc2d<omInt32>({0, 0}, 1, 0.5, 1.5), "1.5", "7.5", "_sweep is not within a full turn");
}

TEST(RoundShape, PointsFollowAnyAffineMap) {
  std::vector<Point2dData<omInt32>> points{{1, 2}, {-3, 5}};
  ASSERT_TRUE(applyInSitu(Affine2d(1, 2, 3, 0, -1, 0.5), points));
  EXPECT_EQ(points, (std::vector<Point2dData<omInt32>>{{8, -2}, {10, -5}}));
  PointCloud3d<omReal64> cloud({{1, 2, 3}, {1e308, 1, 1}});
  Matrix4x4 matrix = boost::numeric::ublas::identity_matrix<omReal64>(4);
  matrix(0, 0) = 4;
  matrix(0, 3) = -1;
  EXPECT_EQ(std::string(applyInSitu(toAffine(matrix), cloud).getMessage()).substr(0, 28),
            "Failed to apply eGT3DT_Affin");
  EXPECT_EQ(cloud.getCollection()[0], (Point3dData<omReal64>(1, 2, 3)));
  cloud.getCollection().pop_back();
  ASSERT_TRUE(applyInSitu(toAffine(matrix), cloud));
  EXPECT_EQ(cloud.getCollection()[0], (Point3dData<omReal64>(3, 2, 3)));
  matrix(3, 1) = support::s_nan;
  EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { toAffine(matrix); }),
            "The last row of the matrix of an affine map must be 0, ..., 0, 1");
}

}  // namespace
}  // namespace ormix::geom
