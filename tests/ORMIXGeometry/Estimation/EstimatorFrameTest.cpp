// What all estimators do the same way.

#include <ORMIXGeometry/ORMIXGeometry.h>

#include "support/ArchiveFormats.h"
#include "support/EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

template <class List>
struct TypesOf;
template <class... X>
struct TypesOf<ClassList<X...>> {
  using Type = ::testing::Types<X...>;
};
template <class Estimator>
class AnyEstimator : public ::testing::Test {};
TYPED_TEST_SUITE(AnyEstimator, TypesOf<EstimatorList>::Type);

/// Samples that determine a model, its parameters, and the values of a sample.
using Sizes = std::array<std::size_t, 3>;
Sizes sizesOf(const std::string& name) {
  for (const auto& [each, minimal, params, dimension] : {std::tuple("Circle2d", 3, 3, 2),
                                                         std::tuple("Ellipse2d", 5, 5, 2),
                                                         std::tuple("Line2d", 2, 2, 2),
                                                         std::tuple("Line2dIntersection", 2, 3, 2),
                                                         std::tuple("TranslationTransform2d", 2, 2, 4),
                                                         std::tuple("RigidTransform2d", 2, 3, 4),
                                                         std::tuple("SimilarityTransform2d", 2, 4, 4),
                                                         std::tuple("HomographyTransform2d", 4, 9, 4),
                                                         std::tuple("Plan3d", 3, 3, 3),
                                                         std::tuple("Sphere3d", 4, 4, 3),
                                                         std::tuple("Ellipsoid3d", 9, 9, 3),
                                                         std::tuple("TranslationTransform3d", 3, 6, 6),
                                                         std::tuple("RigidTransform3d", 3, 6, 6),
                                                         std::tuple("SimilarityTransform3d", 3, 7, 6),
                                                         std::tuple("HomographyTransform3d", 5, 16, 6),
                                                         std::tuple("Arc2d", 3, 5, 2),
                                                         std::tuple("Circle3d", 3, 7, 3),
                                                         std::tuple("Cone3d", 6, 7, 3),
                                                         std::tuple("Cylinder3d", 5, 7, 3),
                                                         std::tuple("Line3d", 2, 6, 3),
                                                         std::tuple("Torus3d", 7, 8, 3)})
    if (name == std::string("ormix::geom::") + each + "Estimator")
      return {std::size_t(minimal), std::size_t(params), std::size_t(dimension)};
  return {};
}

/// A point of a plan, a sphere, an ellipsoid, a line, a circle, a side of a cylinder or a cone, a torus, or, for the
/// transforms, of a ball.
template <class Estimator>
Values spatialSample(Random& random) {
  const omReal64 t = random.uniform(0, 6.28), z = random.uniform(-1, 1), across = std::sqrt(1 - z * z);
  const omReal64 x = 30 * across * std::cos(t);
  const omReal64 y = 30 * across * std::sin(t);
  if (std::is_same_v<Estimator, Plan3dEstimator>) return {x, y, 0.5 * x - 0.2 * y + 2};
  const omReal64 c = std::cos(t), s = std::sin(t);
  if (std::is_same_v<Estimator, Line3dEstimator>) return {30 * z + 1, 2 - 12 * z, 9 * z};
  if (std::is_same_v<Estimator, Circle3dEstimator>) return {30 * c, 24 * s + 4, 18 * s - 2};
  if (std::is_same_v<Estimator, Cylinder3dEstimator>) return {20 * c + 1, 20 * s - 2, 40 * z + 3 * c};
  if (std::is_same_v<Estimator, Cone3dEstimator>) return {(15 + 10 * z) * c + 1, (15 + 10 * z) * s - 2, 30 * z};
  if (std::is_same_v<Estimator, Torus3dEstimator>) {
    const omReal64 tube = random.uniform(0, 6.28), rho = 30 + 10 * std::cos(tube);
    return {rho * c + 1, rho * s - 2, 10 * std::sin(tube)};
  }
  if (std::is_same_v<Estimator, Ellipsoid3dEstimator>) return {x + 1, 0.7 * y - 2, 15 * z};
  return {x + 1, y - 2, 30 * z};
}

/// Of a model, with little noise. Forty percent may be outliers, the consensus being clear all the same.
template <class Estimator>
Values samplesOf(std::size_t count, bool hasOutliers = false) {
  Random random(99);
  Values values;
  for (std::size_t i = 0; i < count; ++i) {
    const omReal64 t = random.uniform(0, 6.28);
    omReal64 x = 30 * std::cos(t) + 4,
             y = (isListed<Estimator>(ClassList<Circle2dEstimator, Arc2dEstimator>()) ? 30 : 20) * std::sin(t) - 3;
    if (std::is_same_v<Estimator, Line2dEstimator>) y = 0.5 * x + 2;
    if (std::is_same_v<Estimator, Line2dIntersectionEstimator>) {
      x = t;
      y = 5 * std::cos(t) + 6 * std::sin(t);
    }
    Values sample{x, y};
    if (Estimator::s_sampleDimension % 3 == 0) sample = spatialSample<Estimator>(random);
    if (Estimator::s_sampleDimension > 3)
      for (std::size_t d = 0; d < Estimator::s_sampleDimension / 2; ++d)
        sample.push_back(sample[d] + 5 - 2 * static_cast<omReal64>(d));
    for (omReal64& value : sample) value += hasOutliers && i % 5 < 2 ? random.uniform(-50, 50) : 1e-3 * random.noise();
    values.insert(values.end(), sample.begin(), sample.end());
  }
  return values;
}

TYPED_TEST(AnyEstimator, StatesItsSizesAndIsRegisteredAndCopied) {
  const std::string name = TypeParam::s_className;
  const auto created = DynamicObjectFactory::getInstance().createShared(name);
  EXPECT_EQ(created->getClassName(), name);
  ASSERT_TRUE(created->hasCopySupport());
  const auto duplicate = boost::dynamic_pointer_cast<TypeParam>(created->duplicateShared());
  ASSERT_TRUE(duplicate);
  EXPECT_NO_THROW(duplicate->copy(*created));
  EXPECT_EQ((Sizes{duplicate->getMinimalDataSize(), duplicate->getNbParams(), duplicate->getSampleDimension()}),
            sizesOf(name));
  EXPECT_SUCCESS(support::readInto<support::Json>(support::archived<support::Json>(*duplicate), *duplicate));
}

TYPED_TEST(AnyEstimator, AnswersTheSameForADataSetAndAView) {
  const Values values = samplesOf<TypeParam>(300);
  TypeParam estimator;
  const DataSet dataSet = dataSetOf(values, estimator.getSampleDimension());
  RealVector params;
  ASSERT_TRUE(estimator.computeEstimation(dataSet, params));
  EXPECT_EQ(valuesOf(params), valuesOf(fitted<TypeParam>(values)));
  RealVector direct;
  ASSERT_TRUE(estimator.processEstimation(dataSet, direct));
  EXPECT_EQ(valuesOf(direct), valuesOf(params));
  RealVector residuals;
  ASSERT_TRUE(estimator.computeResiduals(dataSet, params, residuals));
  EXPECT_EQ(valuesOf(residuals), valuesOf(residualsOf<TypeParam>(values, params)));
  EXPECT_EQ(residuals.size(), 300u);
}

TYPED_TEST(AnyEstimator, SaysHowManySamplesAreNeeded) {
  const TypeParam estimator;
  const std::string given = std::to_string(estimator.getMinimalDataSize() - 1);
  const std::string message = failureOf<TypeParam>(samplesOf<TypeParam>(estimator.getMinimalDataSize() - 1));
  EXPECT_NE(message.find(given), std::string::npos) << message;
  EXPECT_NE(message.find(std::to_string(estimator.getMinimalDataSize())), std::string::npos) << message;
  RealVector residuals;
  const Values values = samplesOf<TypeParam>(3);
  EXPECT_FALSE(estimator.computeResiduals(viewOf(values, estimator.getSampleDimension()), vectorOf({1}), residuals));
}

TYPED_TEST(AnyEstimator, RefusesSamplesThatCoincide) {
  for (const std::size_t count : {TypeParam::s_minimalDataSize, std::size_t{20}, std::size_t{1000}})
    for (const omReal64 value : {0.0, 0.3, 1e9}) {
      const Values values(count * TypeParam::s_sampleDimension, value);
      EXPECT_FALSE(failureOf<TypeParam>(values).empty()) << count << " times " << value;
    }
}

TYPED_TEST(AnyEstimator, RefusesNaNAndInfinity) {
  for (const omReal64 bad : {s_nan, s_infinity, -s_infinity})
    for (const std::size_t count : {TypeParam::s_minimalDataSize, std::size_t{40}, std::size_t{300}})
      for (std::size_t at = 0; at < 2 * TypeParam::s_sampleDimension; ++at) {
        Values values = samplesOf<TypeParam>(count);
        values[at * (values.size() - 1) / (2 * TypeParam::s_sampleDimension - 1)] = bad;
        EXPECT_FALSE(failureOf<TypeParam>(values).empty()) << bad << " among " << count;
        TypeParam estimator;
        RealVector params;
        const DataSet dataSet = dataSetOf(values, TypeParam::s_sampleDimension);
        EXPECT_FALSE(estimator.processEstimation(dataSet, params)) << bad << " among " << count;
      }
}

// Whether there is a model in such data is for each estimator to say; if it says so, in numbers.
TYPED_TEST(AnyEstimator, NeverSucceedsWithoutNumbers) {
  Random random(20240);
  for (int trial = 0; trial < 600; ++trial) {
    const std::size_t count = TypeParam::s_minimalDataSize + static_cast<std::size_t>(random.uniform(0, 9));
    const omReal64 scale = std::pow(10.0, random.uniform(-320, 308));
    const omReal64 offset = trial % 3 == 0 ? 0 : std::pow(10.0, random.uniform(-20, 300));
    const omReal64 slope = random.uniform(-2, 2);
    Values values(count * TypeParam::s_sampleDimension);
    for (omReal64& value : values) value = offset + scale * random.uniform(-1, 1);
    // Collinear, on a grid of few points, or free.
    for (std::size_t i = 0; i + 1 < values.size() && trial % 4 == 1; i += 2) values[i + 1] = slope * values[i];
    for (std::size_t i = 0; i < values.size() && trial % 4 == 2; ++i)
      values[i] = offset + scale * static_cast<omReal64>(i % 3);
    const SampleView view = viewOf(values, TypeParam::s_sampleDimension);
    TypeParam estimator;
    RealVector params, residuals;
    const BoolResult result = estimator.computeEstimation(view, params);
    EXPECT_NE(result.getMessage().empty(), !result) << "trial " << trial;
    for (const omReal64 param : params) ASSERT_TRUE(std::isfinite(param)) << "trial " << trial;
    ASSERT_TRUE(!result || estimator.computeResiduals(view, params, residuals));
  }
}

TYPED_TEST(AnyEstimator, FindsTheModelAmongFortyPercentOfOutliers) {
  const Values values = samplesOf<TypeParam>(200, true);
  TypeParam estimator;
  for (const eRobustMethod method : {eRM_Ransac, eRM_Msac, eRM_LMedS, eRM_Acontrario}) {
    RobustOptions options;
    options.method = method;
    options.threshold = 0.02;
    options.seed = 5;
    RobustResult found[2];
    for (RobustResult& each : found)
      ASSERT_TRUE(robustEstimation(estimator, viewOf(values, TypeParam::s_sampleDimension), options, each));
    EXPECT_LE(found[0].nbInliers, 124u);
    std::size_t nbRight = 0;
    for (std::size_t i = 0; i < 200; ++i) nbRight += found[0].inliers[i] && i % 5 >= 2;
    EXPECT_GE(nbRight, 118u);
    EXPECT_EQ(valuesOf(found[0].params), valuesOf(found[1].params));
    EXPECT_EQ(found[0].inliers, found[1].inliers);
  }
}

/// Seventy percent of outliers: one set of nine samples in 50,000 has none.
template <class Estimator>
void expectFoundAmongSeventyPercent() {
  Values values = samplesOf<Estimator>(200);
  Random random(17);
  for (std::size_t i = 0; i < 3 * 140; ++i) values[i] = random.uniform(-50, 50);
  Estimator estimator;
  RobustOptions options;
  options.method = eRM_Acontrario;
  for (options.seed = 0; options.seed < 3; ++options.seed) {
    RobustResult found;
    ASSERT_TRUE(robustEstimation(estimator, viewOf(values, 3), options, found));
    EXPECT_EQ(found.end, eRO_Confident) << Estimator::s_className;
    EXPECT_TRUE(std::all_of(found.inliers.begin() + 150, found.inliers.end(), [](bool isInlier) { return isInlier; }))
        << Estimator::s_className;
    EXPECT_NEAR(found.sigma, 1e-3, 5e-4);
  }
}

TEST(LocalEstimators, FindTheirSurfaceAmongSeventyPercentOfOutliers) {
  expectFoundAmongSeventyPercent<Cylinder3dEstimator>();
  expectFoundAmongSeventyPercent<Cone3dEstimator>();
  expectFoundAmongSeventyPercent<Torus3dEstimator>();
  expectFoundAmongSeventyPercent<Ellipsoid3dEstimator>();
}

}  // namespace
