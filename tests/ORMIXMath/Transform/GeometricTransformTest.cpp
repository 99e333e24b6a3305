#include <ORMIXMath/ORMIXMath.h>

#include <boost/numeric/ublas/assignment.hpp>
#include <boost/numeric/ublas/matrix.hpp>

#include "support/EstimationSamples.h"

namespace {

using namespace ormix;
using estimation::Values;
using estimation::valuesOf;
using Planar = std::array<omReal64, 2>;
using Spatial = std::array<omReal64, 3>;

template <class Transform>
using PointOf = std::conditional_t<std::is_base_of_v<BaseGeometricTransform2d, Transform>, Planar, Spatial>;

template <class Transform, class T>
bool apply(const Transform& transform, const std::array<T, 2>& p, std::array<T, 2>& out) {
  return transform.apply(p[0], p[1], out[0], out[1]);
}
template <class Transform, class T>
bool apply(const Transform& transform, const std::array<T, 3>& p, std::array<T, 3>& out) {
  return transform.apply(p[0], p[1], p[2], out[0], out[1], out[2]);
}

template <class Transform>
PointOf<Transform> image(const Transform& transform, const PointOf<Transform>& point) {
  PointOf<Transform> out{};
  EXPECT_TRUE(apply(transform, point, out));
  return out;
}

template <class Transform, class T, std::size_t D>
void expectNoImage(const Transform& transform, const std::array<T, D>& point) {
  std::array<T, D> out{};
  out.fill(7);
  const std::array<T, D> before = out;
  EXPECT_FALSE(apply(transform, point, out));
  EXPECT_EQ(out, before);
}

template <class Transform>
class GeometricTransform : public ::testing::Test {
 protected:
  /// 3, 4, 5
  PointOf<Transform> point() const {
    PointOf<Transform> result{};
    for (std::size_t axis = 0; axis < result.size(); ++axis) result[axis] = 3 + omReal64(axis);
    return result;
  }
};
using AllTransforms = ::testing::Types<Translation2d, Rotation2d, Rigid2d, Scale2d, Similarity2d, AnisotropicScale2d,
                                       Affine2d, Homography2d, Translation3d, Rotation3d, Rigid3d, Scale3d,
                                       Similarity3d, AnisotropicScale3d, Affine3d, Homography3d>;
TYPED_TEST_SUITE(GeometricTransform, AllTransforms, );

TYPED_TEST(GeometricTransform, StartsAsTheIdentity) { EXPECT_EQ(image(TypeParam(), this->point()), this->point()); }

TYPED_TEST(GeometricTransform, TakesAndGivesItsParameters) {
  TypeParam transform;
  RealVector params(TypeParam::s_nbParams);
  for (std::size_t index = 0; index < params.size(); ++index) params(index) = 0.5 + 0.25 * omReal64(index);
  ASSERT_TRUE(transform.setParams(params));
  EXPECT_EQ(valuesOf(transform.getParams()), valuesOf(params));
  EXPECT_EQ(transform.getType(), TypeParam::s_type);
  const auto before = image(transform, this->point());
  EXPECT_NE(before, this->point());
  for (const std::size_t length : {params.size() - 1, params.size() + 1}) {
    const BoolResult result = transform.setParams(RealVector(length, 7.0));
    EXPECT_FALSE(result);
    for (const std::string& part : {toString(TypeParam::s_type), std::to_string(length), std::to_string(params.size())})
      EXPECT_NE(result.getMessage().find(part), std::string::npos) << result.getMessage();
    EXPECT_EQ(valuesOf(transform.getParams()), valuesOf(params));
    EXPECT_EQ(image(transform, this->point()), before);
  }
}

TYPED_TEST(GeometricTransform, RefusesImagesThatAreNotFinite) {
  for (const omReal64 bad : {support::s_infinity, support::s_nan}) {
    for (std::size_t axis = 0; axis < this->point().size(); ++axis) {
      auto point = this->point();
      point[axis] = bad;
      expectNoImage(TypeParam(), point);
    }
  }
}

TEST(GeometricTransform2dOrder, OfParametersAndComposition) {
  const omReal64 angle = 0.7, c = std::cos(angle), s = std::sin(angle);
  EXPECT_EQ(image(Translation2d(10, 20), {1, 2}), (Planar{11, 22}));
  EXPECT_EQ(image(Rotation2d(angle), {1, 0}), (Planar{c, s}));
  EXPECT_EQ(image(Rigid2d(angle, 10, 20), {0, 1}), (Planar{-s + 10, c + 20}));
  EXPECT_EQ(image(Scale2d(3), {1, 2}), (Planar{3, 6}));
  EXPECT_EQ(image(Similarity2d(2, angle, 10, 20), {1, 0}), (Planar{2 * c + 10, 2 * s + 20}));
  EXPECT_EQ(image(AnisotropicScale2d(3, 5), {1, 2}), (Planar{3, 10}));
  EXPECT_EQ(image(Affine2d(1, 2, 3, 4, 5, 6), {1, 10}), (Planar{24, 60}));
  EXPECT_EQ(toString(eGT2DT_AnisotropicScale), "eGT2DT_AnisotropicScale");
  EXPECT_EQ(static_cast<int>(eGT2DT_Homography), 7);
}

/// The image as the transform is defined: the elementary rotations one after the other, then the scale, then the shift.
Spatial defined(Spatial p, omReal64 scale, const Spatial& angles, const Spatial& shift) {
  using Wide = long double;
  std::array<Wide, 3> at{p[0], p[1], p[2]};
  const auto rotate = [&](omReal64 angle, std::size_t from, std::size_t to) {
    const Wide c = std::cos(Wide(angle)), s = std::sin(Wide(angle)), a = at[from], b = at[to];
    at[from] = c * a - s * b;
    at[to] = s * a + c * b;
  };
  rotate(angles[2], 1, 2);
  rotate(angles[1], 2, 0);
  rotate(angles[0], 0, 1);
  for (std::size_t axis = 0; axis < 3; ++axis) p[axis] = omReal64(scale * at[axis] + shift[axis]);
  return p;
}

void expectNear(const Spatial& actual, const Spatial& expected) {
  for (std::size_t axis = 0; axis < 3; ++axis) EXPECT_NEAR(actual[axis], expected[axis], 2e-14) << "axis " << axis;
}

TEST(GeometricTransform3dOrder, OfParametersAndComposition) {
  const Spatial angles{0.7, -1.1, 2.3};
  const Spatial shift{10, 20, -30};
  const auto [a, b, c] = angles;
  const auto [x, y, z] = shift;
  for (const Spatial& p : {Spatial{1, 0, 0}, Spatial{0, 1, 0}, Spatial{0, 0, 1}, Spatial{3, -4, 5}}) {
    expectNear(image(Rotation3d(a, b, c), p), defined(p, 1, angles, {}));
    expectNear(image(Rigid3d(a, b, c, x, y, z), p), defined(p, 1, angles, shift));
    expectNear(image(Similarity3d(2.5, a, b, c, x, y, z), p), defined(p, 2.5, angles, shift));
  }
  EXPECT_EQ(image(Translation3d(x, y, z), {1, 2, 3}), (Spatial{11, 22, -27}));
  EXPECT_EQ(image(Scale3d(3), {1, 2, 3}), (Spatial{3, 6, 9}));
  EXPECT_EQ(image(AnisotropicScale3d(3, 5, 7), {1, 2, 3}), (Spatial{3, 10, 21}));
  EXPECT_EQ(image(Affine3d({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}), {1, 10, 100}), (Spatial{325, 773, 1221}));
  EXPECT_EQ(toString(eGT3DT_AnisotropicScale), "eGT3DT_AnisotropicScale");
  EXPECT_EQ(static_cast<int>(eGT3DT_Homography), 7);
}

TEST(Homography, DividesByItsDenominator) {
  Matrix3x3 planarRows(3, 3);
  planarRows <<= 2, 0, 1, 0, 3, 2, 1, 0, -4;
  const Homography2d planar(planarRows);
  EXPECT_EQ(planar.getMatrix()(2, 0), 1);
  EXPECT_EQ(image(planar, {6, 4}), (Planar{6.5, 7}));
  expectNoImage(planar, Planar{4, 0});
  Matrix4x4 spatialRows(4, 4);
  spatialRows <<= 2, 0, 0, 1, 0, 3, 0, 2, 0, 0, 4, 0, 1, 0, 0, -4;
  const Homography3d spatial(spatialRows);
  EXPECT_EQ(spatial.getMatrix()(3, 0), 1);
  EXPECT_EQ(image(spatial, {6, 4, 1}), (Spatial{6.5, 7, 2}));
  expectNoImage(spatial, Spatial{4, 0, 0});
}

TEST(ImageRounding, SaturatesIntegersAndRefusesFloatOverflow) {
  using Limits = std::numeric_limits<omInt32>;
  std::array<omInt32, 3> out{};
  ASSERT_TRUE(apply(Scale3d(2), {2000000000, -2000000000, 7}, out));
  EXPECT_EQ(out, (std::array<omInt32, 3>{Limits::max(), Limits::min(), 14}));
  std::array<omInt32, 2> planarOut{};
  ASSERT_TRUE(apply(Scale2d(2), {2000000000, -2000000000}, planarOut));
  EXPECT_EQ(planarOut, (std::array<omInt32, 2>{Limits::max(), Limits::min()}));
  expectNoImage(Scale2d(2), std::array<omReal32, 2>{3e38f, 0});
  expectNoImage(Scale3d(2), std::array<omReal32, 3>{0, 0, 3e38f});
}

}  // namespace
