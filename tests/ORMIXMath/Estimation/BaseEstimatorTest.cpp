#include "SampleEstimators.h"

#include <ORMIXMath/Estimation/Samples.h>

#include "support/EstimationSamples.h"

namespace ormix {
namespace {

using estimation::vectorOf;

TEST(BaseEstimator, SaysHowManySamplesAreMissingAndChangesNothing) {
  sample::CircleEstimator estimator;
  RealVector params = vectorOf({7});
  EXPECT_EQ(estimator.computeEstimation(DataSet{vectorOf({0, 0}), vectorOf({1, 0})}, params).getMessage(),
            "ormix::sample::CircleEstimator: 2 samples were given, at least 3 are needed");
  EXPECT_FALSE(estimator.computeEstimation(DataSet{}, params));
  EXPECT_FALSE(estimator.computeEstimation(SampleView{}, params));
  EXPECT_FALSE(estimator.processEstimation(DataSet{}, params));
  EXPECT_EQ(estimation::valuesOf(params), estimation::Values{7});
}

TEST(BaseEstimator, RefusesSamplesOfAnotherDimension) {
  sample::LineEstimator estimator;
  RealVector params = vectorOf({7});
  const DataSet ragged{vectorOf({0, 0}), vectorOf({1, 0, 5}), vectorOf({1, 1})};
  const BoolResult result = estimator.computeEstimation(ragged, params);
  EXPECT_EQ(result.getMessage(),
            "ormix::sample::LineEstimator: sample 1 is of dimension 3 while dimension 2 is needed");
  const BoolResult broken =
      estimator.computeEstimation(DataSet{vectorOf({0, 0}), vectorOf({support::s_nan, 0}), vectorOf({1, 1})}, params);
  EXPECT_NE(broken.getMessage().find("NaN or infinite"), std::string::npos);
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
  EXPECT_FALSE(estimator.computeResiduals(dataSet, vectorOf({0, support::s_nan}), residuals));
  EXPECT_FALSE(estimator.computeResiduals(DataSet{}, vectorOf({0, 0}), residuals));
  EXPECT_EQ(residuals(0), 7);
  EXPECT_TRUE(estimator.computeResiduals(dataSet, vectorOf({0, -1}), residuals));
  EXPECT_EQ(residuals(0), 1);
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
