#include "SampleEstimators.h"

#include <ORMIXMath/Estimation/RobustEstimation.h>
#include <ORMIXMath/Estimation/SampleDraw.h>

#include <random>

#include "support/EstimationSamples.h"

namespace ormix {
namespace {

using estimation::Values;
using estimation::viewOf;

/// Points of which the first are outliers.
template <class Inlier, class Outlier>
Values pointsOf(std::size_t count, omReal64 outliers, unsigned seed, Inlier inlier, Outlier outlier) {
  support::Random draw(seed);
  Values rows;
  for (std::size_t i = 0; i < count; ++i) {
    const bool isInlier = static_cast<omReal64>(i) >= outliers * static_cast<omReal64>(count);
    const auto [x, y] = isInlier ? inlier(draw) : outlier(draw);
    rows.insert(rows.end(), {x, y});
  }
  return rows;
}

Values linePoints(std::size_t count, omReal64 outliers, omReal64 sigma, unsigned seed) {
  return pointsOf(
      count, outliers, seed,
      [&](auto& draw) {
        const omReal64 t = draw.uniform(0, 2000), e = sigma * draw.noise();
        return std::pair(0.8 * t - 0.6 * e, 0.6 * t + 0.8 * e);
      },
      [&](auto& draw) { return std::pair(draw.uniform(0, 2000), draw.uniform(0, 2000)); });
}

Values circlePoints(std::size_t count, omReal64 outliers, omReal64 sigma, unsigned seed) {
  return pointsOf(
      count, outliers, seed,
      [&](auto& draw) {
        const omReal64 angle = draw.uniform(0, 6.3), r = 500 + sigma * draw.noise();
        return std::pair(20000 + r * std::cos(angle), 20000 + r * std::sin(angle));
      },
      [&](auto& draw) { return std::pair(draw.uniform(19000, 21000), draw.uniform(19000, 21000)); });
}

class RobustMethods : public testing::TestWithParam<eRobustMethod> {};

TEST_P(RobustMethods, FindTheLineAndAgreeWithTheirOwnMaskAndScore) {
  const Values points = linePoints(501, 0.3, 1, 5);
  sample::LineEstimator estimator;
  RobustOptions options;
  options.method = GetParam();
  options.threshold = 2.5;
  RobustResult result;
  ASSERT_TRUE(robustEstimation(estimator, viewOf(points, 2), options, result));
  EXPECT_EQ(result.end, eRO_Confident);
  EXPECT_LT(result.nbIterations, 100U);
  // The line's normal is (-0.6, 0.8), and it passes through the origin.
  EXPECT_NEAR(std::abs(-0.6 * std::cos(result.params(0)) + 0.8 * std::sin(result.params(0))), 1, 1e-6);
  RealVector residuals;
  ASSERT_TRUE(estimator.computeResiduals(viewOf(points, 2), result.params, residuals));
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
  const Values points = circlePoints(60, 0.4, 2, 31);
  sample::CircleEstimator estimator;
  RobustOptions options;
  int nbRight = 0;
  for (options.seed = 0; options.seed < 300; ++options.seed) {
    RobustResult result;
    ASSERT_TRUE(robustEstimation(estimator, viewOf(points, 2), options, result));
    nbRight += std::abs(result.params(0) - 20000) < 5 && std::abs(result.params(2) - 500) < 5;
  }
  // The confidence asked for is 0.99 of a draw without outliers.
  EXPECT_GE(nbRight, 285);
}

TEST(RobustEstimation, EstimatesTheNoiseDespiteManyOutliers) {
  const Values points = circlePoints(4000, 0.5, 1, 12);
  sample::CircleEstimator estimator;
  RobustResult result;
  ASSERT_TRUE(robustEstimation(estimator, viewOf(points, 2), {}, result));
  // 2.5 standard deviations of 1, and the few outliers that happen to be near.
  EXPECT_NEAR(result.threshold, 2.6, 0.3);
  EXPECT_NEAR(result.params(2), 500, 0.2);
}

TEST(RobustEstimation, PassesOverDegenerateSamples) {
  // Nine of ten points are one point: most pairs give no line.
  Values points(360, 5.0), onePoint(20, 5.0);
  for (int i = 0; i < 20; ++i) points.insert(points.end(), 2, i);
  sample::LineEstimator estimator;
  RobustOptions options;
  options.threshold = 0.1;
  RobustResult result;
  ASSERT_TRUE(robustEstimation(estimator, viewOf(points, 2), options, result));
  EXPECT_EQ(result.nbInliers, 200U);
  EXPECT_LE(result.nbIterations, result.nbDegenerate + 3);
  options.nbMaxIterations = 50;
  EXPECT_EQ(robustEstimation(estimator, viewOf(onePoint, 2), options, result).getMessage(),
            "None of 50 drawn samples led to a model; 50 of them were degenerate");
  EXPECT_EQ(result.nbInliers, 200U);
}

TEST_P(RobustMethods, TakeNaNAndInfinityAsOutliers) {
  Values points = linePoints(200, 0.2, 0.5, 8);
  for (std::size_t i = 0; i < 30; ++i) points[2 * i] = i % 2 == 0 ? support::s_nan : -HUGE_VAL;
  sample::LineEstimator estimator;
  RobustOptions options;
  options.method = GetParam();
  RobustResult result;
  ASSERT_TRUE(robustEstimation(estimator, viewOf(points, 2), options, result));
  EXPECT_EQ(std::count(result.inliers.begin(), result.inliers.begin() + 30, true), 0);
  EXPECT_TRUE(std::isfinite(result.params(0)) && std::isfinite(result.params(1)));
}

TEST(RobustEstimation, CanBeStoppedAndReportsProgressThatGrows) {
  const Values points = linePoints(500, 0.5, 1, 9);
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
  ASSERT_TRUE(robustEstimation(estimator, viewOf(points, 2), options, result));
  EXPECT_EQ(result.end, eRO_Stopped);
  EXPECT_EQ(result.nbIterations, 2U);
  options.progress = [](omReal64) { return false; };
  EXPECT_FALSE(robustEstimation(estimator, viewOf(points, 2), options, result));
}

TEST(RobustEstimation, RefusesBadOptionsAndSamples) {
  const Values points = linePoints(10, 0, 1, 10);
  sample::LineEstimator estimator;
  RobustResult result;
  std::vector<RobustOptions> refused(6);
  refused[0].threshold = -1;
  refused[1].threshold = std::nan("");
  refused[2].confidence = 0;
  refused[3].confidence = 1;
  refused[4].confidence = std::nan("");
  refused[5].nbMaxIterations = 0;
  for (const RobustOptions& options : refused)
    EXPECT_FALSE(robustEstimation(estimator, viewOf(points, 2), options, result)) << &options - &refused[0];
  EXPECT_FALSE(robustEstimation(estimator, SampleView{points.data(), 1, 2}, {}, result));
  EXPECT_FALSE(robustEstimation(estimator, SampleView{points.data(), 2, 3}, {}, result));
  EXPECT_FALSE(robustEstimation(estimator, DataSet{}, {}, result));
  EXPECT_TRUE(result.inliers.empty());
}

}  // namespace
}  // namespace ormix
