#include <ORMIXMath/ORMIXMath.h>
#include <gtest/gtest.h>

#include <boost/numeric/ublas/matrix.hpp>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

using namespace ormix;

RealVector vectorOf(const std::vector<omReal64>& values) {
  RealVector result(values.size());
  std::copy(values.begin(), values.end(), result.begin());
  return result;
}

std::vector<omReal64> paramsOf(const BaseGeometricTransform2d& transform) {
  const RealVector params = transform.getParams();
  return {params.begin(), params.end()};
}

template <class Transform>
std::pair<omReal64, omReal64> image(const Transform& transform, omReal64 x, omReal64 y) {
  omReal64 xOut = 0;
  omReal64 yOut = 0;
  EXPECT_TRUE(transform.apply(x, y, xOut, yOut));
  return {xOut, yOut};
}

template <class Transform>
class GeometricTransform2d : public ::testing::Test {};
using AllTransforms = ::testing::Types<Translation2d, Rotation2d, Rigid2d, Scale2d, Similarity2d, AnisotropicScale2d,
                                       Affine2d, Homography2d>;
TYPED_TEST_SUITE(GeometricTransform2d, AllTransforms, );

TYPED_TEST(GeometricTransform2d, StartsAsTheIdentity) {
  EXPECT_EQ(image(TypeParam(), 3.25, -7.5), std::make_pair(3.25, -7.5));
}

TYPED_TEST(GeometricTransform2d, TakesAndGivesItsParameters) {
  TypeParam transform;
  std::vector<omReal64> params;
  for (std::size_t index = 0; index < TypeParam::s_nbParams; ++index) params.push_back(0.5 + 0.25 * omReal64(index));
  ASSERT_TRUE(transform.setParams(vectorOf(params)));
  EXPECT_EQ(paramsOf(transform), params);
  EXPECT_NE(image(transform, 3, 4), std::make_pair(3.0, 4.0));

  params.push_back(1);
  const std::vector<omReal64> before = paramsOf(transform);
  const BoolResult result = transform.setParams(vectorOf(params));
  EXPECT_FALSE(result);
  EXPECT_NE(result.getMessage().find(toString(TypeParam::s_type)), std::string::npos) << result.getMessage();
  EXPECT_EQ(paramsOf(transform), before);
}

TYPED_TEST(GeometricTransform2d, RefusesImagesThatAreNotFinite) {
  const TypeParam transform;
  for (const omReal64 bad : {std::numeric_limits<omReal64>::infinity(), std::nan("")}) {
    omReal64 x = 1;
    omReal64 y = 2;
    EXPECT_FALSE(transform.apply(bad, 0.0, x, y));
    EXPECT_FALSE(transform.apply(0.0, bad, x, y));
    EXPECT_EQ(x, 1);
    EXPECT_EQ(y, 2);
  }
}

// A run is mapped with the same bits as point by point, and its first undefined image is found wherever it is.
template <class Transform, class T>
void expectRunLikePoints(const Transform& transform, std::mt19937& random) {
  std::uniform_real_distribution<omReal64> coordinate(0, 1000);
  std::vector<T> run(2 * 37);
  for (T& value : run) value = static_cast<T>(coordinate(random));
  std::vector<T> expected = run;
  for (std::size_t index = 0; index < expected.size(); index += 2)
    ASSERT_TRUE(transform.apply(expected[index], expected[index + 1], expected[index], expected[index + 1]));
  EXPECT_EQ(firstUndefinedImage(transform, run.data(), run.size() / 2), run.size() / 2);
  std::vector<T> mapped = run;
  applyToRun(transform, mapped.data(), mapped.size() / 2);
  EXPECT_EQ(mapped, expected);
  if constexpr (std::is_floating_point_v<T>) {
    run[41] = std::numeric_limits<T>::quiet_NaN();
    EXPECT_EQ(firstUndefinedImage(transform, run.data(), run.size() / 2), 20u);
  }
}

TYPED_TEST(GeometricTransform2d, MapsRunsAsPoints) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::uniform_real_distribution<omReal64> param(0.1, 2);
  for (int count = 0; count < 20; ++count) {
    RealVector params(TypeParam::s_nbParams);
    for (omReal64& value : params) value = param(random);
    TypeParam transform;
    ASSERT_TRUE(transform.setParams(params));
    expectRunLikePoints<TypeParam, omInt32>(transform, random);
    expectRunLikePoints<TypeParam, omUInt32>(transform, random);
    expectRunLikePoints<TypeParam, omReal32>(transform, random);
    expectRunLikePoints<TypeParam, omReal64>(transform, random);
  }
}

TEST(GeometricTransform2dOrder, OfParametersAndComposition) {
  const omReal64 angle = 0.7;
  const omReal64 c = std::cos(angle);
  const omReal64 s = std::sin(angle);
  EXPECT_EQ(image(Translation2d(10, 20), 1, 2), std::make_pair(11.0, 22.0));
  EXPECT_EQ(image(Rotation2d(angle), 1, 0), std::make_pair(c, s));
  EXPECT_EQ(image(Rigid2d(angle, 10, 20), 0, 1), std::make_pair(-s + 10, c + 20));
  EXPECT_EQ(image(Scale2d(3), 1, 2), std::make_pair(3.0, 6.0));
  EXPECT_EQ(image(Similarity2d(2, angle, 10, 20), 1, 0), std::make_pair(2 * c + 10, 2 * s + 20));
  EXPECT_EQ(image(AnisotropicScale2d(3, 5), 1, 2), std::make_pair(3.0, 10.0));
  EXPECT_EQ(image(Affine2d(1, 2, 3, 4, 5, 6), 1, 10), std::make_pair(24.0, 60.0));
  EXPECT_EQ(toString(eGT2DT_AnisotropicScale), "eGT2DT_AnisotropicScale");
  EXPECT_EQ(static_cast<int>(eGT2DT_Homography), 7);
}

TEST(Homography2d, DividesByItsDenominator) {
  Matrix3x3 matrix(3, 3);
  const omReal64 rows[9] = {2, 0, 1, 0, 3, 2, 1, 0, -4};
  std::copy(rows, rows + 9, matrix.data().begin());
  const Homography2d homography(matrix);
  EXPECT_EQ(image(homography, 6, 4), std::make_pair(6.5, 7.0));
  omReal64 x = 1;
  omReal64 y = 2;
  EXPECT_FALSE(homography.apply(4.0, 0.0, x, y));
  EXPECT_EQ(x, 1);
  EXPECT_EQ(y, 2);
  const std::vector<omReal64> run{6, 4, 4, 0, 5, 5};
  EXPECT_EQ(firstUndefinedImage(homography, run.data(), 3), 1u);
}

TEST(Rounding, OfImagesSaturatesIntegersAndRefusesFloatOverflow) {
  omInt32 x = 0;
  omInt32 y = 0;
  ASSERT_TRUE(Scale2d(2).apply(2000000000, -2000000000, x, y));
  EXPECT_EQ(x, std::numeric_limits<omInt32>::max());
  EXPECT_EQ(y, std::numeric_limits<omInt32>::min());
  omReal32 xReal = 1;
  omReal32 yReal = 2;
  EXPECT_FALSE(Scale2d(2).apply(3e38f, 0.0f, xReal, yReal));
  EXPECT_EQ(xReal, 1.0f);
  const std::vector<omReal32> run{1, 1, 3e38f, 0};
  EXPECT_EQ(firstUndefinedImage(Scale2d(2), run.data(), 2), 1u);
}

}  // namespace
