#include <ORMIXGeometry/Estimation/2d/Line2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Line2dIntersectionEstimator.h>
#include <ORMIXGeometry/Message/EstimationMessage.h>

#include "support/EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

constexpr omReal64 s_piValue = 3.141592653589793;
const std::string s_noDirection = formatMessage<eEstimationMessage>(eEstimationMessage::eEsM_LineNoDirection);
const std::string s_noPoint = formatMessage<eEstimationMessage>(eEstimationMessage::eEsM_IntersectionUndefined);

/// Unoriented.
omReal64 angleError(omReal64 theta, omReal64 exact) { return std::abs(std::remainder(theta - exact, s_piValue)); }

/// Integer steps (p, q) from an integer point: exactly collinear, also far away.
Values alongSteps(omReal64 x, omReal64 y, int p, int q, int count) {
  Values values;
  for (int i = 0; i < count; ++i) values.insert(values.end(), {x + p * i, y + q * i});
  return values;
}

TEST(Line2dEstimator, RefusesACloudWithoutDirection) {
  EXPECT_EQ(failureOf<Line2dEstimator>({3, 4, 3, 4}), s_noDirection);
  Values circle;
  for (int i = 0; i < 8; ++i) circle.insert(circle.end(), {std::cos(i * s_piValue / 4), std::sin(i * s_piValue / 4)});
  EXPECT_EQ(failureOf<Line2dEstimator>(circle), s_noDirection);
  for (omReal64& value : circle) value += 1000;
  EXPECT_EQ(failureOf<Line2dEstimator>(circle), s_noDirection);
  // Along the diagonal the absolute threshold of the mixed moment decides (intended), along an axis it does not.
  EXPECT_EQ(failureOf<Line2dEstimator>({0, 0, 1e-5, 1e-5, 2e-5, 2e-5}), s_noDirection);
  EXPECT_LE(angleError(fitted<Line2dEstimator>({0, 0, 1e-5, 0, 2e-5, 0})(0), s_piValue / 2), 1e-15);
}

TEST(Line2dEstimator, AngleIsExactAnywhere) {
  Random random(4);
  for (int trial = 0; trial < 300; ++trial) {
    const int p = static_cast<int>(random.uniform(-40, 40)), q = static_cast<int>(random.uniform(-40, 40));
    if (p == 0 && q == 0) continue;
    const int count = trial % 10 == 9 ? 20000 : 2 + trial;
    for (const omReal64 offset : {0.0, 1e4, 1e8}) {
      const Values values = alongSteps(offset, -offset, p, q, count);
      const RealVector params = fitted<Line2dEstimator>(values);
      EXPECT_LE(angleError(params(0), std::atan2(static_cast<omReal64>(p), static_cast<omReal64>(-q))), 4e-15)
          << p << ' ' << q << " at " << offset;
      const omReal64 reach = offset + 40.0 * count;
      EXPECT_LE(largestResidual<Line2dEstimator>(values, params), 8e-16 * (1 + reach));
    }
  }
}

// Sums are taken in blocks of rows, about the mean of a part of them.
TEST(Line2dEstimator, AnyNumberAndOrderOfPointsIsAsGood) {
  for (const int count : {255, 256, 257, 511, 512, 513, 514, 1023, 1025, 4097})
    EXPECT_LE(angleError(fitted<Line2dEstimator>(alongSteps(7, 1e7, 3, 2, count))(0), std::atan2(3.0, -2.0)), 4e-15)
        << count;
  Values values;
  // Every tenth point far away, where no other is.
  for (int i = 0; i < 2560; ++i) {
    const int at = i % 10 == 0 ? 1000000 + i : i;
    values.insert(values.end(), {3.0 * at, 2.0 * at});
  }
  const RealVector params = fitted<Line2dEstimator>(values);
  EXPECT_LE(angleError(params(0), std::atan2(3.0, -2.0)), 4e-15);
  EXPECT_LE(std::abs(params(1)), 1e-9);
}

TEST(Line2dEstimator, MinimisesItsResiduals) {
  // Pearson 1901, On Lines and Planes of Closest Fit to Systems of Points in Space, Philosophical Magazine 2, 559-572.
  const Values points{0, 5.9, 0.9, 5.4, 1.8, 4.4, 2.6, 4.6, 3.3, 3.5, 4.4, 3.7, 5.2, 2.8, 6.1, 2.8, 6.5, 2.4, 7.4, 1.5};
  const RealVector params = fitted<Line2dEstimator>(points);
  expectLeastSquares<Line2dEstimator>(points, params);
  for (unsigned seed = 1; seed <= 20; ++seed) {
    Random random(seed);
    const omReal64 co = std::cos(0.3 * seed), si = std::sin(0.3 * seed);
    Values noisy;
    for (int i = 0; i < 40; ++i) {
      const omReal64 s = random.uniform(-3, 3), e = 0.3 * random.noise();
      noisy.insert(noisy.end(), {s * co - e * si + 2, s * si + e * co});
    }
    expectLeastSquares<Line2dEstimator>(noisy, fitted<Line2dEstimator>(noisy));
  }
  // The line of closest fit passes through the mean.
  EXPECT_NEAR(residualsOf<Line2dEstimator>({3.82, 3.7}, params)(0), 0, 1e-15);
  EXPECT_EQ(valuesOf(residualsOf<Line2dEstimator>({5, 1, 1, 9}, vectorOf({0, 2}))), (Values{3, -1}));
}

TEST(Line2dIntersectionEstimator, FindsTheCommonPoint) {
  for (unsigned seed = 1; seed <= 100; ++seed) {
    Random random(seed);
    const omReal64 scale = std::pow(10.0, random.uniform(-200, 200)), x = random.uniform(-9, 9) * scale;
    const omReal64 y = random.uniform(-9, 9) * scale;
    Values lines;
    for (unsigned i = 0; i < 2 + seed; ++i) {
      const omReal64 theta = random.uniform(-3.14, 3.14);
      lines.insert(lines.end(), {theta, x * std::cos(theta) + y * std::sin(theta)});
    }
    const RealVector params = fitted<Line2dIntersectionEstimator>(lines);
    EXPECT_EQ(params(2), 1);
    const omReal64 tolerance = (seed < 3 ? 1e-12 : 1e-13) * scale;
    EXPECT_NEAR(params(0), x, tolerance);
    EXPECT_NEAR(params(1), y, tolerance);
    EXPECT_LE(largestResidual<Line2dIntersectionEstimator>(lines, params), 1e-14 * scale);
  }
}

TEST(Line2dIntersectionEstimator, RefusesParallelLines) {
  for (int k = -30; k <= 30; ++k) {
    const omReal64 theta = 0.1 * k, opposite = theta + (k > 0 ? -s_piValue : s_piValue);
    EXPECT_EQ(failureOf<Line2dIntersectionEstimator>({theta, 1, theta, 2}), s_noPoint);
    EXPECT_EQ(failureOf<Line2dIntersectionEstimator>({theta, 1, opposite, 2}), s_noPoint);
    Values many;
    for (int i = 0; i < 500; ++i) many.insert(many.end(), {i % 2 == 0 ? theta : opposite, 0.37 * i});
    EXPECT_EQ(failureOf<Line2dIntersectionEstimator>(many), s_noPoint);
  }
  EXPECT_EQ(failureOf<Line2dIntersectionEstimator>({0.5, 1e9, 0.5, 1e9}), s_noPoint);
}

}  // namespace
