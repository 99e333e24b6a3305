// The estimators of transforms between two point sets.

#include <ORMIXGeometry/Estimation/2d/HomographyTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/RigidTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/SimilarityTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/TranslationTransform2dEstimator.h>

#include <array>
#include <boost/numeric/ublas/matrix.hpp>

#include "../EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

constexpr omReal64 s_piValue = 3.141592653589793;

/// Pairs of points about (ox, oy) and their images, noisy.
template <class Map>
Values pairs(std::size_t count, omReal64 ox, omReal64 oy, unsigned seed, const Map& map, omReal64 noise = 0) {
  Random random(seed);
  Values values;
  for (std::size_t i = 0; i < count; ++i) {
    const omReal64 x = ox + random.uniform(-10, 10);
    const omReal64 y = oy + random.uniform(-10, 10);
    const auto image = map(x, y);
    values.insert(values.end(), {x, y, image[0] + noise * random.noise(), image[1] + noise * random.noise()});
  }
  return values;
}

auto similarity(omReal64 scale, omReal64 theta, omReal64 tx, omReal64 ty) {
  return [=](omReal64 x, omReal64 y) -> std::array<omReal64, 2> {
    return {scale * (std::cos(theta) * x - std::sin(theta) * y) + tx,
            scale * (std::sin(theta) * x + std::cos(theta) * y) + ty};
  };
}

TEST(SimilarityTransform2dEstimator, IsExactOnExactDataInEveryDirection) {
  for (unsigned seed = 1; seed <= 100; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const omReal64 scale = std::pow(10.0, random.uniform(-3, 3));
    const omReal64 theta = seed == 1 ? s_piValue : random.uniform(-3.14, 3.14);
    const Values values = pairs(2 + seed / 2, 3, -4, seed, similarity(scale, theta, 5, -6));
    const RealVector params = fitted<SimilarityTransform2dEstimator>(values);
    // The images' coordinates are rounded where the translation puts them.
    const omReal64 tolerance = (seed < 4 ? 1e-14 : 1e-15) * (1 + 5 / scale);
    EXPECT_NEAR(params(0), scale, tolerance * scale);
    EXPECT_NEAR(std::remainder(params(1) - theta, 2 * s_piValue), 0, tolerance);
    EXPECT_NEAR(params(2), 5, 1e-12 * (1 + scale));
    EXPECT_NEAR(params(3), -6, 1e-12 * (1 + scale));
  }
}

TEST(RigidTransform2dEstimator, IsExactOnExactDataAlsoFarAway) {
  for (unsigned seed = 1; seed <= 100; ++seed) {
    SCOPED_TRACE(seed);
    const omReal64 theta = Random(seed).uniform(-3.14, 3.14);
    const Values values = pairs(40, 0, 0, seed, similarity(1, theta, 5, -6));
    EXPECT_NEAR(fitted<RigidTransform2dEstimator>(values)(0), theta, 1e-15);
    Values far = values;
    for (std::size_t i = 0; i < far.size(); ++i) far[i] += i % 4 < 2 ? 1e6 : -1e6;
    EXPECT_NEAR(fitted<RigidTransform2dEstimator>(far)(0), theta, 1e-10);
    EXPECT_LE(largestResidual<RigidTransform2dEstimator>(far, fitted<RigidTransform2dEstimator>(far)), 2e-9);
  }
}

TEST(TransformEstimators, MinimiseTheirResiduals) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    const Values values = pairs(15, 2, 1, seed, similarity(1.5, 0.4 * seed, 1, 2), 0.5);
    expectLeastSquares<TranslationTransform2dEstimator>(values, fitted<TranslationTransform2dEstimator>(values));
    expectLeastSquares<RigidTransform2dEstimator>(values, fitted<RigidTransform2dEstimator>(values));
    expectLeastSquares<SimilarityTransform2dEstimator>(values, fitted<SimilarityTransform2dEstimator>(values));
  }
}

TEST(TransformEstimators, MinimiseTheirResidualsOnPublishedPoints) {
  // Umeyama 1991, Least-Squares Estimation of Transformation Parameters Between Two Point Patterns, IEEE PAMI 13(4),
  // 376-380: a triangle and its mirror image, which no rotation reaches.
  const Values values{0, 0, 0, 0, 1, 0, -1, 0, 0, 2, 0, 2};
  const RealVector params = fitted<SimilarityTransform2dEstimator>(values);
  EXPECT_GT(params(0), 0);
  expectLeastSquares<SimilarityTransform2dEstimator>(values, params);
  expectLeastSquares<RigidTransform2dEstimator>(values, fitted<RigidTransform2dEstimator>(values));
}

TEST(TransformEstimators, RefuseWhatTellsNoRotation) {
  const std::string rank = " transformation 2d, insufficient matrix rank for estimation";
  // A regular polygon and its mirror image, for which all angles are as good.
  Values mirrored;
  for (int k = 0; k < 7; ++k) {
    const omReal64 x = 1e6 * std::cos(2 * s_piValue * k / 7);
    const omReal64 y = 1e6 * std::sin(2 * s_piValue * k / 7);
    mirrored.insert(mirrored.end(), {x, y, x, -y});
  }
  // A translation would exist: intended. Then: coinciding targets; below the absolute threshold (intended); sources
  // that coincide but for their last bit.
  for (const Values& values : {Values{1, 2, 4, 6, 1, 2, 4, 6}, Values{0, 0, 3, 3, 1, 5, 3, 3, 7, 7, 3, 3},
                               Values{0, 0, 0, 0, 1e-5, 0, 1e-5, 0},
                               Values{1e6, 1, 0, 0, 1e6 + 0x1p-33, 1, 1e6, 1e6, 1e6, 1, -1e6, 1e6}, mirrored}) {
    EXPECT_EQ(failureOf<TranslationTransform2dEstimator>(values), "Can't estimate translation" + rank);
    EXPECT_EQ(failureOf<RigidTransform2dEstimator>(values), "Can't estimate rigid" + rank);
    EXPECT_EQ(failureOf<SimilarityTransform2dEstimator>(values), "Can't estimate similarity" + rank);
  }
}

TEST(TransformEstimators, ResidualsAreDistancesOfImages) {
  const Values values{1, 2, 4, 6};
  EXPECT_EQ(residualsOf<TranslationTransform2dEstimator>(values, vectorOf({0, 0}))(0), 5);
  EXPECT_NEAR(residualsOf<RigidTransform2dEstimator>(values, vectorOf({s_piValue / 2, 3, 1}))(0), 5, 1e-14);
  EXPECT_NEAR(residualsOf<SimilarityTransform2dEstimator>(values, vectorOf({2, 0, 2, 5}))(0), 3, 1e-15);
  EXPECT_EQ(residualsOf<HomographyTransform2dEstimator>(values, vectorOf({1, 0, 0, 0, 1, 0, 0, 0, 0.5}))(0),
            std::hypot(2.0, 2.0));
}

auto homography(const std::array<omReal64, 9>& h) {
  return [=](omReal64 x, omReal64 y) -> std::array<omReal64, 2> {
    const omReal64 w = h[6] * x + h[7] * y + h[8];
    return {(h[0] * x + h[1] * y + h[2]) / w, (h[3] * x + h[4] * y + h[5]) / w};
  };
}

TEST(HomographyTransform2dEstimator, IsExactOnExactData) {
  for (unsigned seed = 1; seed <= 100; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const std::array<omReal64, 9> h{random.uniform(0.5, 2),      random.uniform(-0.3, 0.3),   random.uniform(-9, 9),
                                    random.uniform(-0.3, 0.3),   random.uniform(0.5, 2),      random.uniform(-9, 9),
                                    random.uniform(-0.02, 0.02), random.uniform(-0.02, 0.02), 1};
    const Values values = pairs(6 + seed, 0, 0, seed, homography(h));
    const RealVector params = fitted<HomographyTransform2dEstimator>(values);
    for (std::size_t k = 0; k < 9; ++k) EXPECT_NEAR(params(k), h[k], 1e-12);
    EXPECT_LE(largestResidual<HomographyTransform2dEstimator>(values, params), 1e-12);
    const Values four = pairs(4, 0, 0, seed, homography(h));
    EXPECT_LE(largestResidual<HomographyTransform2dEstimator>(four, fitted<HomographyTransform2dEstimator>(four)),
              1e-9);
  }
}

TEST(HomographyTransform2dEstimator, IsExactFarFromTheOrigin) {
  for (unsigned seed = 1; seed <= 100; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const std::array<omReal64, 9> h{1 + random.uniform(-0.1, 0.1), random.uniform(-0.1, 0.1),     random.uniform(-9, 9),
                                    random.uniform(-0.1, 0.1),     1 + random.uniform(-0.1, 0.1), random.uniform(-9, 9),
                                    1e-7 * random.uniform(0, 1),   1e-7 * random.uniform(0, 1),   1};
    const Values values = pairs(50, 1e6, 1e6, seed, homography(h));
    EXPECT_LE(largestResidual<HomographyTransform2dEstimator>(values, fitted<HomographyTransform2dEstimator>(values)),
              1e-9);
  }
}

omReal64 ulpOf(omReal64 value) { return std::ldexp(1.0, std::ilogb(value) - 52); }

/// Of a matrix evaluated without rounding to speak of: largest transfer distance, without what a half ulp of its last
/// column makes of it, in parts of what the coordinates' rounding makes of the pairs.
omReal64 excessOfTransfer(const RealVector& h, const Values& pairs) {
  long double largest = 0;
  for (std::size_t i = 0; i < pairs.size(); i += 4) {
    const long double x = pairs[i];
    const long double y = pairs[i + 1];
    const long double w = h(6) * x + h(7) * y + h(8);
    const long double u = (h(0) * x + h(1) * y + h(2)) / w;
    const long double v = (h(3) * x + h(4) * y + h(5)) / w;
    const long double lost = (ulpOf(h(2)) + ulpOf(h(5))) / 2 / std::abs(w);
    const long double stretch = (std::abs(h(0) - u * h(6)) + std::abs(h(1) - u * h(7)) + std::abs(h(3) - v * h(6)) +
                                 std::abs(h(4) - v * h(7))) /
                                std::abs(w);
    const long double rounding = (ulpOf(pairs[i + 2]) + ulpOf(pairs[i + 3]) + stretch * ulpOf(pairs[i])) / 2;
    largest = std::max(largest, (std::hypot(u - pairs[i + 2], v - pairs[i + 3]) - lost) / rounding);
  }
  return static_cast<omReal64>(largest);
}

// Far away a perspective makes the elements large and their differences small: nine numbers cannot hold the map of the
// points better than the last column is rounded.
TEST(HomographyTransform2dEstimator, LosesOnlyTheRoundingOfItsLastColumnFarAway) {
  for (const omReal64 perspective : {0.0, 1e-7, 1e-4, 0.03})
    for (unsigned seed = 1; seed <= 50; ++seed) {
      SCOPED_TRACE(testing::Message() << perspective << ' ' << seed);
      Random random(seed);
      const auto around = [&](omReal64 value) { return value + random.uniform(-0.1, 0.1); };
      const auto local = homography({around(1), around(0), 5, around(0), around(1), -3,
                                     perspective * random.uniform(-1, 1), perspective * random.uniform(-1, 1), 1});
      Values values = pairs(4 + seed, 0, 0, seed, local);
      for (omReal64& value : values) value += 1e6;
      EXPECT_LE(excessOfTransfer(fitted<HomographyTransform2dEstimator>(values), values), 1);
    }
}

TEST(HomographyTransform2dEstimator, MapsThatSendTheOriginToInfinity) {
  const Values values = pairs(20, 30, 20, 3, homography({1, 0.2, 3, 0.1, 1, 4, 0.5, 0.25, 0}));
  const RealVector params = fitted<HomographyTransform2dEstimator>(values);
  EXPECT_LE(largestResidual<HomographyTransform2dEstimator>(values, params), 1e-13);
}

TEST(HomographyTransform2dEstimator, SaysTheRankItFound) {
  const std::string text = " for homography 2d linear system while expecting at least 7 rank";
  // Two pairs that coincide; collinear sources, near and far; all the same.
  EXPECT_EQ(failureOf<HomographyTransform2dEstimator>({0, 0, 0, 0, 1, 0, 1, 0, 0, 1, 0, 1, 0, 1, 0, 1}),
            "Invalid matrix rank 6" + text);
  Values collinear;
  for (int i = 0; i < 6; ++i) collinear.insert(collinear.end(), {1e6 + i, 0.3 * (1e6 + i), 1.0 * i * i, 1.0 * i});
  EXPECT_EQ(failureOf<HomographyTransform2dEstimator>(collinear), "Invalid matrix rank 6" + text);
  const std::string all = failureOf<HomographyTransform2dEstimator>(Values(40, 0.3));
  EXPECT_EQ(all.substr(all.size() - text.size()), text);
}

TEST(HomographyTransform2dEstimator, RefusesWhatOnlySingularMatricesSatisfy) {
  const std::string text = "Invalid matrix rank 6 for homography 2d linear system while expecting at least 7 rank";
  for (unsigned seed = 1; seed <= 100; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    for (const omReal64 offset : {0.0, 1e6}) {
      // Of four pairs three sources, then three targets are collinear; six targets are.
      Values sources = pairs(4, offset, offset, seed, similarity(2, 0.3, 5, offset));
      for (const std::size_t k : {0, 1}) sources[8 + k] = (sources[k] + sources[4 + k]) / 2;
      Values targets = pairs(4, offset, offset, seed, similarity(1, 0.3, 5, offset));
      for (const std::size_t k : {2, 3}) targets[8 + k] = (targets[k] + targets[4 + k]) / 2;
      if (offset == 0) sources[10] += 3;
      sources[11] += random.uniform(1, 5);
      targets[9] += random.uniform(1, 5);
      EXPECT_EQ(failureOf<HomographyTransform2dEstimator>(sources), text) << offset;
      EXPECT_EQ(failureOf<HomographyTransform2dEstimator>(targets), text) << offset;
      const auto onLine = [&](omReal64 x, omReal64 y) { return std::array<omReal64, 2>{y, offset + 0.4 * x * y / 10}; };
      Values line = pairs(6, offset, offset, seed, onLine);
      for (std::size_t i = 0; i < line.size(); i += 4) line[i + 3] = offset + 0.3 * line[i + 2];
      EXPECT_EQ(failureOf<HomographyTransform2dEstimator>(line), text) << offset;
    }
    // Collinear sources whose targets are so, too, leave one of several maps: intended.
    Values open = pairs(4, 0, 0, seed, homography({1, 0.1, 2, -0.1, 1, 3, 0.01, 0.02, 1}));
    for (const std::size_t k : {0, 1}) open[8 + k] = open[k] + 0.3 * (open[4 + k] - open[k]);
    const auto image = homography({1, 0.1, 2, -0.1, 1, 3, 0.01, 0.02, 1})(open[8], open[9]);
    open[10] = image[0];
    open[11] = image[1];
    EXPECT_LE(largestResidual<HomographyTransform2dEstimator>(open, fitted<HomographyTransform2dEstimator>(open)),
              1e-6);
  }
}

TEST(HomographyTransform2dEstimator, AnswersWithAMatrix) {
  const Values values = pairs(9, 0, 0, 8, similarity(2, 0.5, 1, 2));
  HomographyTransform2dEstimator estimator;
  Matrix3x3 matrix;
  ASSERT_TRUE(estimator.computeEstimation(dataSetOf(values, 4), matrix));
  const RealVector params = fitted<HomographyTransform2dEstimator>(values);
  for (std::size_t k = 0; k < 9; ++k) EXPECT_EQ(matrix(k / 3, k % 3), params(k));
  RealVector residuals;
  ASSERT_TRUE(estimator.computeResiduals(dataSetOf(values, 4), matrix, residuals));
  EXPECT_EQ(valuesOf(residuals), valuesOf(residualsOf<HomographyTransform2dEstimator>(values, params)));
  const Matrix3x3 before = matrix;
  EXPECT_FALSE(estimator.computeEstimation(dataSetOf({1, 2, 3, 4}, 4), matrix));
  for (std::size_t k = 0; k < 9; ++k) EXPECT_EQ(matrix(k / 3, k % 3), before(k / 3, k % 3));
}

}  // namespace
