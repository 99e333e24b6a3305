#include "SampleEstimators.h"

#include <ORMIXMath/Estimation/RobustEstimation.h>
#include <ORMIXMath/Estimation/SampleDraw.h>
#include <gtest/gtest.h>

#include <random>

#include "support/EstimationSamples.h"

namespace ormix {
namespace {

/// Points with the truth known for each.
struct Scene {
  std::vector<omReal64> rows;
  std::vector<bool> isInlier;
  SampleView view() const { return {rows.data(), isInlier.size(), 2}; }
  void add(omReal64 x, omReal64 y, bool inlier) {
    rows.push_back(x);
    rows.push_back(y);
    isInlier.push_back(inlier);
  }
};

/// Of the scene's points the outliers come first.
template <class Inlier, class Outlier>
Scene sceneOf(std::size_t n, omReal64 outliers, unsigned seed, Inlier inlier, Outlier outlier) {
  support::Random draw(seed);
  Scene scene;
  for (std::size_t i = 0; i < n; ++i) {
    const bool isInlier = static_cast<omReal64>(i) >= outliers * static_cast<omReal64>(n);
    const auto [x, y] = isInlier ? inlier(draw) : outlier(draw);
    scene.add(x, y, isInlier);
  }
  return scene;
}

Scene lineScene(std::size_t n, omReal64 outliers, omReal64 sigma, unsigned seed) {
  return sceneOf(
      n, outliers, seed,
      [&](auto& draw) {
        const omReal64 t = draw.uniform(0, 2000), e = sigma * draw.noise();
        return std::pair(0.8 * t - 0.6 * e, 0.6 * t + 0.8 * e);
      },
      [&](auto& draw) { return std::pair(draw.uniform(0, 2000), draw.uniform(0, 2000)); });
}

Scene circleScene(std::size_t n, omReal64 outliers, omReal64 sigma, unsigned seed) {
  return sceneOf(
      n, outliers, seed,
      [&](auto& draw) {
        const omReal64 angle = draw.uniform(0, 6.3), r = 500 + sigma * draw.noise();
        return std::pair(20000 + r * std::cos(angle), 20000 + r * std::sin(angle));
      },
      [&](auto& draw) { return std::pair(draw.uniform(19000, 21000), draw.uniform(19000, 21000)); });
}

class RobustMethods : public testing::TestWithParam<eRobustMethod> {};

TEST_P(RobustMethods, FindTheLineAmongOutliers) {
  const Scene scene = lineScene(2000, 0.4, 1, 3);
  sample::LineEstimator estimator;
  for (const omReal64 threshold : {3.0, 0.0}) {
    RobustOptions options;
    options.method = GetParam();
    options.threshold = threshold;
    RobustResult result;
    const BoolResult found = robustEstimation(estimator, scene.view(), options, result);
    ASSERT_TRUE(found) << found.getMessage();
    // The line's normal is (-0.6, 0.8), and it passes through the origin.
    EXPECT_NEAR(std::abs(-0.6 * std::cos(result.params(0)) + 0.8 * std::sin(result.params(0))), 1, 1e-6);
    EXPECT_NEAR(result.params(1), 0, 0.5);
    EXPECT_EQ(result.end, eRO_Confident);
    EXPECT_GT(result.nbInliers, 1100U);
    EXPECT_LT(result.nbInliers, 1300U);
    EXPECT_GT(result.threshold, 1.5);
    EXPECT_LT(result.threshold, 7);
    EXPECT_LT(result.nbIterations, 100U);
  }
}

TEST_P(RobustMethods, AgreeWithTheirOwnMaskAndScore) {
  const Scene scene = lineScene(501, 0.3, 1, 5);
  sample::LineEstimator estimator;
  RobustOptions options;
  options.method = GetParam();
  options.threshold = 2.5;
  RobustResult result;
  ASSERT_TRUE(robustEstimation(estimator, scene.view(), options, result));
  RealVector residuals;
  ASSERT_TRUE(estimator.computeResiduals(scene.view(), result.params, residuals));
  std::vector<omReal64> squares;
  omReal64 truncated = 0;
  std::size_t nbInliers = 0;
  for (std::size_t i = 0; i < residuals.size(); ++i) {
    squares.push_back(residuals(i) * residuals(i));
    EXPECT_EQ(result.inliers[i], std::abs(residuals(i)) <= 2.5) << i;
    nbInliers += result.inliers[i];
    truncated += std::min(squares.back(), 6.25);
  }
  std::sort(squares.begin(), squares.end());
  EXPECT_EQ(result.nbInliers, nbInliers);
  const omReal64 expected = GetParam() == eRM_Ransac ? static_cast<omReal64>(nbInliers)
                            : GetParam() == eRM_Msac ? truncated / 501
                                                     : squares[(501 + 2 + 1) / 2 - 1];
  EXPECT_NEAR(result.score, expected, 1e-12 * expected);
}

INSTANTIATE_TEST_SUITE_P(RobustEstimation, RobustMethods, testing::Values(eRM_Ransac, eRM_Msac, eRM_LMedS),
                         [](const auto& method) { return toString(method.param); });

TEST(RobustEstimation, DrawsByTheDefinedGenerator) {
  // Another library's generator of the same definition, and the high word of the product.
  std::mt19937 reference(123);
  detail::SampleDraw draw(123);
  std::vector<std::size_t> drawn(1);
  for (int i = 0; i < 1000; ++i) {
    draw.draw(1000, drawn);
    const std::uint64_t product = std::uint64_t(reference()) * 1000;
    if (std::uint32_t(product) < (std::uint64_t(1) << 32U) % 1000) reference();
    EXPECT_EQ(drawn[0], product >> 32U);
  }
  drawn.resize(5);
  draw.draw(5, drawn);
  std::sort(drawn.begin(), drawn.end());
  EXPECT_EQ(drawn, (std::vector<std::size_t>{0, 1, 2, 3, 4}));
}

// A threshold taken from a bad model must not make the loop content with that model.
TEST(RobustEstimation, IsNotConfidentBeforeTheThresholdIs) {
  const Scene scene = circleScene(60, 0.4, 2, 31);
  sample::CircleEstimator estimator;
  RobustOptions options;
  int nbRight = 0;
  for (options.seed = 0; options.seed < 300; ++options.seed) {
    RobustResult result;
    ASSERT_TRUE(robustEstimation(estimator, scene.view(), options, result));
    nbRight += std::abs(result.params(0) - 20000) < 5 && std::abs(result.params(2) - 500) < 5;
  }
  // The confidence asked for is 0.99 of a draw without outliers.
  EXPECT_GE(nbRight, 285);
}

TEST(RobustEstimation, EstimatesTheNoiseDespiteManyOutliers) {
  const Scene scene = circleScene(4000, 0.5, 1, 12);
  sample::CircleEstimator estimator;
  RobustResult result;
  ASSERT_TRUE(robustEstimation(estimator, scene.view(), {}, result));
  // 2.5 standard deviations of 1, and the few outliers that happen to be near.
  EXPECT_NEAR(result.threshold, 2.6, 0.3);
  EXPECT_NEAR(result.params(2), 500, 0.2);
}

TEST(RobustEstimation, PassesOverDegenerateSamples) {
  Scene scene;
  // Nine of ten points are one point: most pairs give no line.
  for (int i = 0; i < 180; ++i) scene.add(5, 5, true);
  for (int i = 0; i < 20; ++i) scene.add(i, i, true);
  sample::LineEstimator estimator;
  RobustOptions options;
  options.threshold = 0.1;
  RobustResult result;
  ASSERT_TRUE(robustEstimation(estimator, scene.view(), options, result));
  EXPECT_EQ(result.nbInliers, 200U);
  EXPECT_LE(result.nbIterations, result.nbDegenerate + 3);
  Scene onePoint;
  for (int i = 0; i < 10; ++i) onePoint.add(5, 5, true);
  options.nbMaxIterations = 50;
  const BoolResult none = robustEstimation(estimator, onePoint.view(), options, result);
  EXPECT_EQ(none.getMessage(), "None of 50 drawn samples led to a model; 50 of them were degenerate");
  EXPECT_EQ(result.nbInliers, 200U);
}

TEST(RobustEstimation, TakesNaNAndInfinityAsOutliers) {
  Scene scene = lineScene(200, 0.2, 0.5, 8);
  for (std::size_t i = 0; i < 30; ++i) scene.rows[2 * i] = i % 2 == 0 ? support::s_nan : -HUGE_VAL;
  sample::LineEstimator estimator;
  for (const eRobustMethod method : {eRM_Ransac, eRM_Msac, eRM_LMedS}) {
    RobustOptions options;
    options.method = method;
    RobustResult result;
    ASSERT_TRUE(robustEstimation(estimator, scene.view(), options, result));
    for (std::size_t i = 0; i < 30; ++i) EXPECT_FALSE(result.inliers[i]);
    EXPECT_TRUE(std::isfinite(result.params(0)) && std::isfinite(result.params(1)));
  }
}

TEST(RobustEstimation, CanBeStoppedAndReportsProgressThatGrows) {
  const Scene scene = lineScene(500, 0.5, 1, 9);
  sample::LineEstimator estimator;
  RobustOptions options;
  omReal64 last = 0;
  int nbCalls = 0;
  options.progress = [&](omReal64 fraction) {
    EXPECT_GE(fraction, last);
    EXPECT_LE(fraction, 1);
    last = fraction;
    return ++nbCalls < 3;
  };
  RobustResult result;
  ASSERT_TRUE(robustEstimation(estimator, scene.view(), options, result));
  EXPECT_EQ(result.end, eRO_Stopped);
  EXPECT_EQ(result.nbIterations, 2U);
  options.progress = [](omReal64) { return false; };
  EXPECT_FALSE(robustEstimation(estimator, scene.view(), options, result));
}

TEST(RobustEstimation, RefusesBadOptionsAndSamples) {
  const Scene scene = lineScene(10, 0, 1, 10);
  sample::LineEstimator estimator;
  RobustResult result;
  RobustOptions options;
  options.threshold = -1;
  EXPECT_FALSE(robustEstimation(estimator, scene.view(), options, result));
  options.threshold = std::nan("");
  EXPECT_FALSE(robustEstimation(estimator, scene.view(), options, result));
  for (const omReal64 confidence : {0.0, 1.0, std::nan("")}) {
    options = {};
    options.confidence = confidence;
    EXPECT_FALSE(robustEstimation(estimator, scene.view(), options, result));
  }
  options = {};
  options.nbMaxIterations = 0;
  EXPECT_FALSE(robustEstimation(estimator, scene.view(), options, result));
  EXPECT_FALSE(robustEstimation(estimator, SampleView{scene.rows.data(), 1, 2}, {}, result));
  EXPECT_FALSE(robustEstimation(estimator, SampleView{scene.rows.data(), 2, 3}, {}, result));
  EXPECT_FALSE(robustEstimation(estimator, DataSet{}, {}, result));
  EXPECT_TRUE(result.inliers.empty());
}

}  // namespace
}  // namespace ormix
