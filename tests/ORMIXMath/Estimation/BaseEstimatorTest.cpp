#include "SampleEstimators.h"

#include <ORMIXMath/Estimation/Samples.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace ormix {
namespace {

RealVector vectorOf(std::initializer_list<omReal64> values) {
  RealVector result(values.size());
  std::copy(values.begin(), values.end(), result.begin());
  return result;
}

const omReal64 notANumber = std::numeric_limits<omReal64>::quiet_NaN();

TEST(BaseEstimator, IsADynamicObjectWithItsSizes) {
  sample::CircleEstimator estimator;
  EXPECT_EQ(estimator.getMinimalDataSize(), 3U);
  EXPECT_EQ(estimator.getNbParams(), 3U);
  EXPECT_EQ(estimator.getSampleDimension(), 2U);
  const std::unique_ptr<BaseDynamicObject> copy(estimator.duplicate());
  EXPECT_EQ(copy->getClassName(), "ormix::sample::CircleEstimator");
  EXPECT_EQ(dynamic_cast<const BaseEstimator&>(*copy).getSampleDimension(), 2U);
}

TEST(BaseEstimator, AnswersTheSameForDataSetAndView) {
  const DataSet dataSet{vectorOf({3, 0}), vectorOf({1, 2}), vectorOf({-1, 0}), vectorOf({1, -2.5})};
  const std::vector<omReal64> flat{3, 0, 1, 2, -1, 0, 1, -2.5};
  sample::CircleEstimator estimator;
  RealVector params, paramsOfView, residuals, residualsOfView;
  ASSERT_TRUE(estimator.computeEstimation(dataSet, params));
  ASSERT_TRUE(estimator.computeEstimation(SampleView{flat.data(), 4, 2}, paramsOfView));
  EXPECT_TRUE(std::equal(params.begin(), params.end(), paramsOfView.begin()));
  ASSERT_TRUE(estimator.computeResiduals(dataSet, params, residuals));
  ASSERT_TRUE(estimator.computeResiduals(SampleView{flat.data(), 4, 2}, params, residualsOfView));
  ASSERT_EQ(residuals.size(), 4U);
  EXPECT_TRUE(std::equal(residuals.begin(), residuals.end(), residualsOfView.begin()));
}

TEST(BaseEstimator, SaysHowManySamplesAreMissingAndChangesNothing) {
  sample::CircleEstimator estimator;
  RealVector params = vectorOf({7});
  const BoolResult result = estimator.computeEstimation(DataSet{vectorOf({0, 0}), vectorOf({1, 0})}, params);
  EXPECT_FALSE(result);
  EXPECT_EQ(result.getMessage(), "ormix::sample::CircleEstimator: 2 samples were given, at least 3 are needed");
  EXPECT_FALSE(estimator.computeEstimation(DataSet{}, params));
  EXPECT_FALSE(estimator.computeEstimation(SampleView{}, params));
  EXPECT_FALSE(estimator.processEstimation(DataSet{}, params));
  ASSERT_EQ(params.size(), 1U);
  EXPECT_EQ(params(0), 7);
}

TEST(BaseEstimator, RefusesSamplesOfAnotherDimension) {
  sample::LineEstimator estimator;
  RealVector params = vectorOf({7});
  const DataSet ragged{vectorOf({0, 0}), vectorOf({1, 0, 5}), vectorOf({1, 1})};
  const BoolResult result = estimator.computeEstimation(ragged, params);
  EXPECT_EQ(result.getMessage(),
            "ormix::sample::LineEstimator: sample 1 is of dimension 3 while dimension 2 is needed");
  const std::vector<omReal64> flat(9, 1.0);
  EXPECT_FALSE(estimator.computeEstimation(SampleView{flat.data(), 3, 3}, params));
  EXPECT_FALSE(estimator.computeResiduals(SampleView{flat.data(), 3, 3}, vectorOf({0, 0}), params));
  EXPECT_EQ(params.size(), 1U);
}

TEST(BaseEstimator, ChecksParametersOfResiduals) {
  sample::LineEstimator estimator;
  const DataSet dataSet{vectorOf({0, 0})};
  RealVector residuals = vectorOf({7});
  EXPECT_FALSE(estimator.computeResiduals(dataSet, vectorOf({0}), residuals));
  EXPECT_FALSE(estimator.computeResiduals(dataSet, vectorOf({0, notANumber}), residuals));
  EXPECT_FALSE(estimator.computeResiduals(DataSet{}, vectorOf({0, 0}), residuals));
  EXPECT_EQ(residuals(0), 7);
  EXPECT_TRUE(estimator.computeResiduals(dataSet, vectorOf({0, -1}), residuals));
  EXPECT_EQ(residuals(0), 1);
}

TEST(BaseEstimator, NeverSucceedsWithNaN) {
  sample::LineEstimator estimator;
  RealVector params = vectorOf({7});
  const BoolResult result =
      estimator.computeEstimation(DataSet{vectorOf({0, 0}), vectorOf({notANumber, 0}), vectorOf({1, 1})}, params);
  EXPECT_FALSE(result);
  EXPECT_NE(result.getMessage().find("NaN or infinite"), std::string::npos);
  EXPECT_EQ(params(0), 7);
}

TEST(Samples, NamesTheRaggedSampleAndKeepsItsContents) {
  const omReal64 replaced[]{5, 6};
  Samples samples(SampleView{replaced, 1, 2});
  ASSERT_TRUE(samples.assign(DataSet{vectorOf({1, 2}), vectorOf({3, 4})}));
  const BoolResult result = samples.assign(DataSet{vectorOf({1, 2}), vectorOf({3})});
  EXPECT_EQ(result.getMessage(), "Sample 1 has 1 values while the first one has 2");
  EXPECT_EQ(samples.view().nbSamples, 2U);
  EXPECT_EQ(samples.view()[1][1], 4);
  ASSERT_TRUE(samples.assign(DataSet{}));
  EXPECT_TRUE(samples.view().empty());
}

}  // namespace
}  // namespace ormix
