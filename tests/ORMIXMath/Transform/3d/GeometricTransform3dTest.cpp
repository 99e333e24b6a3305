#include <ORMIXMath/ORMIXMath.h>
#include <gtest/gtest.h>

#include <array>
#include <boost/numeric/ublas/matrix.hpp>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

using namespace ormix;
using Point = std::array<omReal64, 3>;

RealVector vectorOf(const std::vector<omReal64>& values) {
  RealVector result(values.size());
  std::copy(values.begin(), values.end(), result.begin());
  return result;
}

std::vector<omReal64> paramsOf(const BaseGeometricTransform3d& transform) {
  const RealVector params = transform.getParams();
  return {params.begin(), params.end()};
}

template <class Transform>
Point image(const Transform& transform, const Point& point) {
  Point out{};
  EXPECT_TRUE(transform.apply(point[0], point[1], point[2], out[0], out[1], out[2]));
  return out;
}

/// The image as the transform is defined: the elementary rotations one after the other, then the scale, then the shift.
Point defined(Point p, omReal64 scale, const Point& angles, const Point& shift) {
  using Wide = long double;
  std::array<Wide, 3> at{p[0], p[1], p[2]};
  const auto turn = [&](omReal64 angle, std::size_t from, std::size_t to) {
    const Wide c = std::cos(Wide(angle));
    const Wide s = std::sin(Wide(angle));
    const Wide a = at[from];
    const Wide b = at[to];
    at[from] = c * a - s * b;
    at[to] = s * a + c * b;
  };
  turn(angles[2], 1, 2);
  turn(angles[1], 2, 0);
  turn(angles[0], 0, 1);
  for (std::size_t axis = 0; axis < 3; ++axis) p[axis] = omReal64(scale * at[axis] + shift[axis]);
  return p;
}

void expectNear(const Point& actual, const Point& expected, omReal64 tolerance) {
  for (std::size_t axis = 0; axis < 3; ++axis) EXPECT_NEAR(actual[axis], expected[axis], tolerance) << "axis " << axis;
}

template <class Transform>
class GeometricTransform3d : public ::testing::Test {};
using AllTransforms = ::testing::Types<Translation3d, Rotation3d, Rigid3d, Scale3d, Similarity3d, AnisotropicScale3d,
                                       Affine3d, Homography3d>;
TYPED_TEST_SUITE(GeometricTransform3d, AllTransforms, );

TYPED_TEST(GeometricTransform3d, StartsAsTheIdentity) {
  EXPECT_EQ(image(TypeParam(), {3.25, -7.5, 1e10}), (Point{3.25, -7.5, 1e10}));
}

TYPED_TEST(GeometricTransform3d, TakesAndGivesItsParameters) {
  TypeParam transform;
  std::vector<omReal64> params;
  for (std::size_t index = 0; index < TypeParam::s_nbParams; ++index) params.push_back(0.5 + 0.25 * omReal64(index));
  ASSERT_TRUE(transform.setParams(vectorOf(params)));
  EXPECT_EQ(paramsOf(transform), params);
  EXPECT_EQ(transform.getType(), TypeParam::s_type);
  const Point before = image(transform, {3, 4, 5});
  EXPECT_NE(before, (Point{3, 4, 5}));

  for (const std::size_t length : {params.size() - 1, params.size() + 1}) {
    const BoolResult result = transform.setParams(vectorOf(std::vector<omReal64>(length, 7)));
    EXPECT_FALSE(result);
    for (const std::string& part : {toString(TypeParam::s_type), std::to_string(length), std::to_string(params.size())})
      EXPECT_NE(result.getMessage().find(part), std::string::npos) << result.getMessage();
    EXPECT_EQ(paramsOf(transform), params);
    EXPECT_EQ(image(transform, {3, 4, 5}), before);
  }
}

TYPED_TEST(GeometricTransform3d, RefusesImagesThatAreNotFinite) {
  const TypeParam transform;
  for (const omReal64 bad : {std::numeric_limits<omReal64>::infinity(), std::nan("")}) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      Point point{};
      point[axis] = bad;
      Point out{1, 2, 3};
      EXPECT_FALSE(transform.apply(point[0], point[1], point[2], out[0], out[1], out[2]));
      EXPECT_EQ(out, (Point{1, 2, 3}));
    }
  }
}

template <class Transform, class T>
void expectRunLikePoints(const Transform& transform) {
  std::vector<T> run;
  for (int index = 0; index < 3 * 37; ++index) run.push_back(static_cast<T>(11 * index % 1000));
  std::vector<T> expected = run;
  for (std::size_t at = 0; at < run.size(); at += 3)
    ASSERT_TRUE(transform.apply(run[at], run[at + 1], run[at + 2], expected[at], expected[at + 1], expected[at + 2]));
  EXPECT_EQ(firstUndefinedImage(transform, run.data(), 37), 37u);
  applyToRun(transform, run.data(), 37);
  EXPECT_EQ(run, expected);
}

TYPED_TEST(GeometricTransform3d, MapsRunsAsPoints) {
  TypeParam transform;
  RealVector params(TypeParam::s_nbParams);
  for (std::size_t index = 0; index < params.size(); ++index) params[index] = 0.3 + 0.17 * omReal64(index);
  ASSERT_TRUE(transform.setParams(params));
  expectRunLikePoints<TypeParam, omInt32>(transform);
  expectRunLikePoints<TypeParam, omUInt32>(transform);
  expectRunLikePoints<TypeParam, omReal32>(transform);
  expectRunLikePoints<TypeParam, omReal64>(transform);
}

TEST(GeometricTransform3dOrder, OfParametersAndComposition) {
  const Point angles{0.7, -1.1, 2.3};
  const Point shift{10, 20, -30};
  const auto [a, b, c] = angles;
  const auto [x, y, z] = shift;
  for (const Point& p : {Point{1, 0, 0}, Point{0, 1, 0}, Point{0, 0, 1}, Point{3, -4, 5}}) {
    expectNear(image(Rotation3d(a, b, c), p), defined(p, 1, angles, {}), 4e-15);
    expectNear(image(Rigid3d(a, b, c, x, y, z), p), defined(p, 1, angles, shift), 2e-14);
    expectNear(image(Similarity3d(2.5, a, b, c, x, y, z), p), defined(p, 2.5, angles, shift), 2e-14);
  }
  EXPECT_EQ(image(Translation3d(x, y, z), {1, 2, 3}), (Point{11, 22, -27}));
  EXPECT_EQ(image(Scale3d(3), {1, 2, 3}), (Point{3, 6, 9}));
  EXPECT_EQ(image(AnisotropicScale3d(3, 5, 7), {1, 2, 3}), (Point{3, 10, 21}));
  EXPECT_EQ(image(Affine3d({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}), {1, 10, 100}), (Point{325, 773, 1221}));
  EXPECT_EQ(toString(eGT3DT_AnisotropicScale), "eGT3DT_AnisotropicScale");
  EXPECT_EQ(static_cast<int>(eGT3DT_Homography), 7);
}

TEST(Homography3d, DividesByItsDenominator) {
  Matrix4x4 matrix(4, 4);
  const omReal64 rows[16] = {2, 0, 0, 1, 0, 3, 0, 2, 0, 0, 4, 0, 1, 0, 0, -4};
  std::copy(rows, rows + 16, matrix.data().begin());
  const Homography3d homography(matrix);
  EXPECT_EQ(homography.getMatrix()(3, 0), 1);
  EXPECT_EQ(image(homography, {6, 4, 1}), (Point{6.5, 7, 2}));
  Point out{1, 2, 3};
  EXPECT_FALSE(homography.apply(4.0, 0.0, 0.0, out[0], out[1], out[2]));
  EXPECT_EQ(out, (Point{1, 2, 3}));
}

TEST(SpatialRounding, OfImagesSaturatesIntegersAndRefusesFloatOverflow) {
  omInt32 x = 0;
  omInt32 y = 0;
  omInt32 z = 0;
  ASSERT_TRUE(Scale3d(2).apply(2000000000, -2000000000, 7, x, y, z));
  EXPECT_EQ(x, std::numeric_limits<omInt32>::max());
  EXPECT_EQ(y, std::numeric_limits<omInt32>::min());
  EXPECT_EQ(z, 14);
  std::array<omReal32, 3> out{1, 2, 3};
  EXPECT_FALSE(Scale3d(2).apply(0.0f, 0.0f, 3e38f, out[0], out[1], out[2]));
  EXPECT_EQ(out, (std::array<omReal32, 3>{1, 2, 3}));
}

}  // namespace
