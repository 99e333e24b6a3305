#include "SampleEstimators.h"

#include <ORMIXMath/Estimation/RobustEstimation.h>
#include <ORMIXMath/Estimation/RobustStatus.h>
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
  const omReal64 expected = GetParam() == eRM_Ransac  ? static_cast<omReal64>(nbInliers)
                            : GetParam() == eRM_Msac  ? truncated / 501
                            : GetParam() == eRM_LMedS ? squares[(501 + 2 + 1) / 2 - 1]
                                                      : std::log10(result.nbFalseAlarms);
  EXPECT_NEAR(result.score, expected, 1e-12 * std::abs(expected));
  EXPECT_NEAR(result.sigma, 1, 0.15);
  EXPECT_TRUE(robustStatus({}, result, options, 2));
}

INSTANTIATE_TEST_SUITE_P(RobustEstimation, RobustMethods,
                         testing::Values(eRM_Ransac, eRM_Msac, eRM_LMedS, eRM_Acontrario),
                         [](const auto& method) { return toString(method.param); });

// What is found in noise, or from as few samples as determine it, may be there by accident.
TEST_P(RobustMethods, AreNotConfidentOfNoise) {
  sample::CircleEstimator estimator;
  RobustOptions options;
  options.method = GetParam();
  options.nbMaxIterations = 300;
  int nbConfident = 0;
  for (options.seed = 0; options.seed < 100; ++options.seed) {
    Values noise = circlePoints(60, 1, 0, 100 + options.seed);
    // Of pixels many are in line.
    if (options.seed % 4 == 0)
      for (omReal64& value : noise) value = std::round(value / 50);
    options.threshold = options.seed % 2 == 0 ? 0 : 20;
    RobustResult result;
    const BoolResult found = robustEstimation(estimator, viewOf(noise, 2), options, result);
    const EstimationStatus status = robustStatus(found, result, options, 3);
    nbConfident += found && result.end == eRO_Confident;
    EXPECT_EQ(found && result.end == eRO_Confident, bool(status)) << status;
  }
  EXPECT_LE(nbConfident, 1);
  RobustResult result;
  options.threshold = 1;
  ASSERT_TRUE(robustEstimation(estimator, viewOf({0, 0, 100, 0, 0, 100}, 2), options, result));
  EXPECT_EQ(robustStatus({}, result, options, 3).quantity, "number of inliers");
  EXPECT_NE(result.end, eRO_Confident);
}

// Neither the share of outliers nor the noise is known, in samples of any scale.
TEST(RobustEstimation, FindsTheScaleAmongSeventyPercentOfOutliers) {
  sample::CircleEstimator estimator;
  RobustOptions options;
  options.method = eRM_Acontrario;
  std::size_t nbDraws[2] = {};
  for (options.seed = 0; options.seed < 100; ++options.seed) {
    Values points = circlePoints(200, 0.7, 1, options.seed);
    const omReal64 unit = std::ldexp(1.0, static_cast<int>(options.seed) - 50);
    for (omReal64& value : points) value *= unit;
    RobustResult result;
    ASSERT_TRUE(robustEstimation(estimator, viewOf(points, 2), options, result));
    EXPECT_EQ(result.end, eRO_Confident) << options.seed;
    EXPECT_NEAR(result.params(0) / unit, 20000, 1) << options.seed;
    EXPECT_NEAR(result.params(2) / unit, 500, 1) << options.seed;
    EXPECT_NEAR(result.sigma / unit, 1, 0.45) << options.seed;
    nbDraws[0] += result.nbIterations;
    // The best come first.
    for (std::size_t i = 0; i < 100; ++i)
      for (std::size_t d = 0; d < 2; ++d) std::swap(points[2 * i + d], points[2 * (199 - i) + d]);
    options.isRanked = true;
    ASSERT_TRUE(robustEstimation(estimator, viewOf(points, 2), options, result));
    EXPECT_NEAR(result.params(2) / unit, 500, 1) << options.seed;
    options.isRanked = false;
    nbDraws[1] += result.nbIterations;
  }
  EXPECT_LT(10 * nbDraws[1], nbDraws[0]);
}

/// Lines that are infinitely far from what is not near.
class NearLineEstimator : public sample::LineEstimator {
 public:
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override {
    const BoolResult result = LineEstimator::processViewResiduals(samples, params, residuals);
    for (omReal64& residual : residuals)
      if (std::abs(residual) > 5) residual = HUGE_VAL;
    return result;
  }
};

// Where most samples are infinitely far from most models, these agree with none.
TEST(RobustEstimation, DoesNotCountWhatIsInfinitelyFar) {
  NearLineEstimator estimator;
  RobustOptions options;
  options.method = eRM_Acontrario;
  RobustResult result;
  const BoolResult found = robustEstimation(estimator, viewOf(linePoints(300, 0.5, 1, 7), 2), options, result);
  ASSERT_TRUE(found) << found.getMessage();
  EXPECT_EQ(result.end, eRO_Confident);
  EXPECT_NEAR(result.sigma, 1, 0.2);
}

// A part of the samples is too few to show a consensus of one in twenty.
TEST(RobustEstimation, FindsFewAmongThousands) {
  const Values points = linePoints(5000, 0.93, 1, 3);
  sample::LineEstimator estimator;
  RobustOptions options;
  options.method = eRM_Acontrario;
  RobustResult result;
  ASSERT_TRUE(robustEstimation(estimator, viewOf(points, 2), options, result));
  EXPECT_EQ(result.end, eRO_Confident);
  EXPECT_NEAR(std::abs(-0.6 * std::cos(result.params(0)) + 0.8 * std::sin(result.params(0))), 1, 1e-5);
}

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
  std::vector<RobustOptions> refused(7);
  refused[0].threshold = -1;
  refused[1].threshold = std::nan("");
  refused[2].confidence = 0;
  refused[3].confidence = 1;
  refused[4].confidence = std::nan("");
  refused[5].nbMaxIterations = 0;
  refused[6].maxFalseAlarms = std::nan("");
  for (const RobustOptions& options : refused)
    EXPECT_FALSE(robustEstimation(estimator, viewOf(points, 2), options, result)) << &options - &refused[0];
  EXPECT_FALSE(robustEstimation(estimator, SampleView{points.data(), 1, 2}, {}, result));
  EXPECT_FALSE(robustEstimation(estimator, SampleView{points.data(), 2, 3}, {}, result));
  EXPECT_FALSE(robustEstimation(estimator, DataSet{}, {}, result));
  EXPECT_TRUE(result.inliers.empty());
}

}  // namespace
}  // namespace ormix
