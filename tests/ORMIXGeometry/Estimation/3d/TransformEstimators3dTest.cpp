// The estimators of transforms between two sets of spatial points.

#include <ORMIXGeometry/Estimation/3d/HomographyTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/RigidTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/SimilarityTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/TranslationTransform3dEstimator.h>
#include <ORMIXMath/Rotation/EulerAngles.h>

#include <array>
#include <boost/numeric/ublas/matrix.hpp>
#include <limits>

#include "../EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

using Vector = std::array<omReal64, 3>;

/// Pairs of points about `centre` and their images, noisy.
template <class Map>
Values pairs(std::size_t count, const Vector& centre, omReal64 extent, unsigned seed, const Map& map,
             omReal64 noise = 0) {
  Random random(seed);
  Values values;
  for (std::size_t i = 0; i < count; ++i) {
    Vector p;
    for (std::size_t k = 0; k < 3; ++k) p[k] = centre[k] + random.uniform(-extent, extent);
    const Vector image = map(p);
    values.insert(values.end(), p.begin(), p.end());
    for (const omReal64 value : image) values.push_back(value + noise * random.noise());
  }
  return values;
}

/// Computed in long double, so that the images are right to their last place.
auto similarity(omReal64 scale, const EulerAngles& angles, const Vector& t) {
  const auto co = [](omReal64 angle) { return std::cos(static_cast<long double>(angle)); };
  const auto si = [](omReal64 angle) { return std::sin(static_cast<long double>(angle)); };
  const long double ca = co(angles.alpha), sa = si(angles.alpha), cb = co(angles.beta), sb = si(angles.beta),
                    cc = co(angles.chi), sc = si(angles.chi);
  const std::array<std::array<long double, 3>, 3> m{{{ca * cb, ca * sb * sc - sa * cc, ca * sb * cc + sa * sc},
                                                     {sa * cb, sa * sb * sc + ca * cc, sa * sb * cc - ca * sc},
                                                     {-sb, cb * sc, cb * cc}}};
  return [=](const Vector& p) -> Vector {
    Vector image;
    for (std::size_t k = 0; k < 3; ++k)
      image[k] = static_cast<omReal64>(scale * (m[k][0] * p[0] + m[k][1] * p[1] + m[k][2] * p[2]) + t[k]);
    return image;
  };
}

EulerAngles anyAngles(Random& random) {
  return {random.uniform(-3.14, 3.14), random.uniform(-1.57, 1.57), random.uniform(-3.14, 3.14)};
}

omReal64 difference(const EulerAngles& a, const EulerAngles& b) {
  const RotationMatrix p = eulerToMatrix(a);
  const RotationMatrix q = eulerToMatrix(b);
  omReal64 largest = 0;
  for (std::size_t i = 0; i < 9; ++i) largest = std::max(largest, std::abs(p[i / 3][i % 3] - q[i / 3][i % 3]));
  return largest;
}

EulerAngles anglesOf(const RealVector& params, std::size_t first) {
  return {params(first), params(first + 1), params(first + 2)};
}

TEST(RigidTransform3dEstimator, IsExactOnExactData) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const EulerAngles angles = anyAngles(random);
    const Values values = pairs(5 + seed, {0, 0, 0}, 4e6, seed, similarity(1, angles, {3, -4, 5}));
    const RealVector params = fitted<RigidTransform3dEstimator>(values);
    EXPECT_LE(difference(anglesOf(params, 0), angles), 1e-14);
    const Values far = pairs(40, {1e6, -1e6, 1e6}, 10, seed, similarity(1, angles, {3, -4, 5}));
    EXPECT_LE(largestResidual<RigidTransform3dEstimator>(far, fitted<RigidTransform3dEstimator>(far)), 2e-9);
  }
}

TEST(RigidTransform3dEstimator, IsExactAtTurnsWhereAnglesOrQuaternionsChangeSign) {
  const omReal64 halfPi = std::acos(0.0);
  for (const omReal64 alpha : {0.0, halfPi, 2 * halfPi, -halfPi})
    for (const omReal64 beta : {0.0, halfPi, -halfPi})
      for (const omReal64 chi : {0.0, halfPi, 2 * halfPi, -halfPi}) {
        const EulerAngles angles{alpha, beta, chi};
        const Values values = pairs(4, {1, 2, 3}, 1, 9, similarity(1, angles, {0, 0, 0}));
        const RealVector params = fitted<RigidTransform3dEstimator>(values);
        EXPECT_LE(difference(anglesOf(params, 0), angles), 2e-14) << alpha << ' ' << beta << ' ' << chi;
      }
}

TEST(SimilarityTransform3dEstimator, IsExactOnExactDataAtEveryScale) {
  for (unsigned seed = 1; seed <= 100; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const omReal64 scale = std::pow(10.0, random.uniform(-3, 3));
    const omReal64 unit = std::pow(10.0, random.uniform(-12, 12));
    const EulerAngles angles = anyAngles(random);
    const Values values =
        pairs(4 + seed, {unit, 0, 2 * unit}, unit, seed, similarity(scale, angles, {unit, -unit, 2 * unit}));
    const RealVector params = fitted<SimilarityTransform3dEstimator>(values);
    const omReal64 tolerance = 2e-14 * (1 + 2 / scale);
    EXPECT_NEAR(params(0), scale, tolerance * scale);
    EXPECT_LE(difference(anglesOf(params, 1), angles), tolerance);
    EXPECT_NEAR(params(4) / unit, 1, 1e-13 * (1 + scale));
    EXPECT_NEAR(params(5) / unit, -1, 1e-13 * (1 + scale));
    EXPECT_NEAR(params(6) / unit, 2, 1e-13 * (1 + scale));
  }
}

TEST(TransformEstimators3d, MinimiseTheirResiduals) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Values values = pairs(15, {2, 1, 0}, 5, seed, similarity(1.5, anyAngles(random), {1, 2, 3}), 0.5);
    expectLeastSquares<TranslationTransform3dEstimator>(values, fitted<TranslationTransform3dEstimator>(values));
    expectLeastSquares<RigidTransform3dEstimator>(values, fitted<RigidTransform3dEstimator>(values));
    expectLeastSquares<SimilarityTransform3dEstimator>(values, fitted<SimilarityTransform3dEstimator>(values));
  }
}

TEST(TransformEstimators3d, AnswerMirroredSetsWithTheBestRotation) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    const Values values = pairs(12, {1, 2, 3}, 4, seed, [](const Vector& p) -> Vector { return {-p[0], p[1], p[2]}; });
    expectLeastSquares<RigidTransform3dEstimator>(values, fitted<RigidTransform3dEstimator>(values));
    const RealVector params = fitted<SimilarityTransform3dEstimator>(values);
    EXPECT_GT(params(0), 0);
    expectLeastSquares<SimilarityTransform3dEstimator>(values, params);
  }
}

TEST(TransformEstimators3d, AnswerCoplanarSetsWithARotation) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const EulerAngles angles = anyAngles(random);
    const auto map = similarity(1, angles, {1, 2, 3});
    Values values;
    for (int i = 0; i < 6; ++i) {
      const Vector p{random.uniform(-3, 3), random.uniform(-3, 3), 7};
      const Vector image = map(p);
      values.insert(values.end(), p.begin(), p.end());
      values.insert(values.end(), image.begin(), image.end());
    }
    EXPECT_LE(difference(anglesOf(fitted<RigidTransform3dEstimator>(values), 0), angles), 1e-13);
  }
}

const std::string s_rank = " transformation 3d, insufficient matrix rank for estimation";

TEST(TransformEstimators3d, RefuseWhatTellsNoRotation) {
  for (const omReal64 offset : {0.0, 1e6, 1e9}) {
    Random random(4);
    Values line;
    Values targets;
    Values nearly;
    for (int i = 0; i < 8; ++i) {
      const omReal64 t = random.uniform(-2, 2);
      line.insert(line.end(), {offset + t, 2 * t, -t, t, -t, offset + 2 * t});
      targets.insert(targets.end(), {t, random.uniform(0, 1), random.uniform(0, 1), offset, 3, 3});
      for (int k = 0; k < 6; ++k) nearly.push_back(1e9 + offset + 1e-12 * random.uniform(-1, 1));
    }
    for (const Values& values : {line, targets, nearly}) {
      EXPECT_EQ(failureOf<RigidTransform3dEstimator>(values), "Can't estimate rigid" + s_rank) << offset;
      EXPECT_EQ(failureOf<SimilarityTransform3dEstimator>(values), "Can't estimate similarity" + s_rank) << offset;
    }
  }
  // The mirror image of a cube: four rotations are as good.
  Values cube;
  for (int i = 0; i < 8; ++i) {
    const Vector p{1.0 * (i & 1) - 0.5, 1.0 * (i / 2 & 1) - 0.5, 1.0 * (i / 4) - 0.5};
    cube.insert(cube.end(), {p[0], p[1], p[2], -p[0], -p[1], -p[2]});
  }
  EXPECT_EQ(failureOf<RigidTransform3dEstimator>(cube), "Can't estimate rigid" + s_rank);
}

TEST(TranslationTransform3dEstimator, HasThreeParametersThatAreZero) {
  const Values values = pairs(7, {1, 2, 3}, 1, 5, similarity(1, {}, {4, 5, 6}));
  const RealVector params = fitted<TranslationTransform3dEstimator>(values);
  const Values expected{4, 5, 6, 0, 0, 0};
  for (std::size_t k = 0; k < 6; ++k) EXPECT_NEAR(params(k), expected[k], 1e-14);
  // A translation would exist: intended. Then: below the absolute threshold (intended).
  EXPECT_EQ(failureOf<TranslationTransform3dEstimator>({1, 2, 3, 4, 6, 8, 1, 2, 3, 4, 6, 8, 1, 2, 3, 4, 6, 8}),
            "Can't estimate translation" + s_rank);
  EXPECT_EQ(
      failureOf<TranslationTransform3dEstimator>({0, 0, 0, 0, 0, 0, 1e-5, 0, 0, 1e-5, 0, 0, 0, 1e-5, 0, 0, 1e-5, 0}),
      "Can't estimate translation" + s_rank);
}

TEST(TransformEstimators3d, TakeSourcesAndTargetsApart) {
  const Values values = pairs(1500, {1, 2, 3}, 5, 6, similarity(1, {0.4, 0.3, 0.2}, {4, 5, 6}), 0.1);
  Values sources;
  Values targets;
  for (std::size_t i = 0; i < values.size(); ++i) (i % 6 < 3 ? sources : targets).push_back(values[i]);
  RigidTransform3dEstimator estimator;
  RealVector params = vectorOf({42});
  ASSERT_TRUE(estimator.computeEstimation(viewOf(sources, 3), viewOf(targets, 3), params));
  EXPECT_EQ(valuesOf(params), valuesOf(fitted<RigidTransform3dEstimator>(values)));
  params = vectorOf({42});
  const auto failure = [&](const Values& first, const Values& second, std::size_t dimension) {
    const BoolResult result = estimator.computeEstimation(viewOf(first, dimension), viewOf(second, dimension), params);
    EXPECT_FALSE(result);
    EXPECT_EQ(valuesOf(params), Values{42});
    return result.getMessage();
  };
  EXPECT_EQ(failure(Values(9, 1), Values(12, 1), 3),
            "First collection of points size 3 mismatch with second one size 4");
  EXPECT_NE(failure(Values(6, 1), Values(6, 1), 3).find("2 pairs were given, at least 3"), std::string::npos);
  EXPECT_NE(failure(Values(12, 1), Values(12, 1), 2).find("dimension 2"), std::string::npos);
  EXPECT_EQ(failure(Values(12, 1), Values(12, 1), 3), "Can't estimate rigid" + s_rank);
  sources[7] = std::numeric_limits<omReal64>::quiet_NaN();
  EXPECT_FALSE(failure(sources, targets, 3).empty());
}

TEST(TransformEstimators3d, ResidualsAreDistancesOfImages) {
  const omReal64 halfPi = std::acos(0.0);
  const Values values{1, 2, 3, 3, 5, 9};
  EXPECT_EQ(residualsOf<TranslationTransform3dEstimator>(values, vectorOf({0, 0, 0, 9, 9, 9}))(0), 7);
  // Quarter turn about z: (1, 2, 3) goes to (-2, 1, 3).
  EXPECT_NEAR(residualsOf<RigidTransform3dEstimator>(values, vectorOf({halfPi, 0, 0, 5, 4, 0}))(0), 6, 1e-14);
  EXPECT_NEAR(residualsOf<SimilarityTransform3dEstimator>(values, vectorOf({2, 0, 0, 0, 1, 1, 0}))(0), 3, 1e-14);
  RealVector identity(16, 0);
  identity(0) = identity(5) = identity(10) = 1;
  identity(15) = 0.5;
  EXPECT_DOUBLE_EQ(residualsOf<HomographyTransform3dEstimator>(values, identity)(0), std::sqrt(11.0));
}

auto homography(const RealVector& h) {
  return [h](const Vector& p) -> Vector {
    const auto row = [&](std::size_t r) {
      long double sum = h(4 * r + 3);
      for (std::size_t k = 0; k < 3; ++k) sum += static_cast<long double>(h(4 * r + k)) * p[k];
      return sum;
    };
    const long double w = row(3);
    return {static_cast<omReal64>(row(0) / w), static_cast<omReal64>(row(1) / w), static_cast<omReal64>(row(2) / w)};
  };
}

/// Near the identity; `slope` bounds the last row.
RealVector anyHomography(Random& random, omReal64 slope) {
  RealVector h(16);
  for (std::size_t k = 0; k < 12; ++k)
    h(k) = k % 5 == 0 ? random.uniform(0.7, 1.5) : k % 4 == 3 ? random.uniform(-9, 9) : random.uniform(-0.2, 0.2);
  for (std::size_t k = 12; k < 15; ++k) h(k) = random.uniform(-slope, slope);
  h(15) = 1;
  return h;
}

TEST(HomographyTransform3dEstimator, IsExactOnExactDataAlsoFarAway) {
  for (unsigned seed = 1; seed <= 100; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const RealVector h = anyHomography(random, 0.02);
    const Values values = pairs(8 + seed, {0, 0, 0}, 10, seed, homography(h));
    const RealVector params = fitted<HomographyTransform3dEstimator>(values);
    for (std::size_t k = 0; k < 16; ++k) EXPECT_NEAR(params(k), h(k), 2e-12);
    const Values five = pairs(5, {0, 0, 0}, 10, seed, homography(h));
    EXPECT_LE(largestResidual<HomographyTransform3dEstimator>(five, fitted<HomographyTransform3dEstimator>(five)),
              1e-9);
    const Values far = pairs(60, {1e6, -1e6, 1e6}, 10, seed, homography(anyHomography(random, 1e-8)));
    EXPECT_LE(largestResidual<HomographyTransform3dEstimator>(far, fitted<HomographyTransform3dEstimator>(far)), 1e-9);
  }
}

TEST(HomographyTransform3dEstimator, SaysTheRankItFound) {
  const std::string text = " for homography 3d linear system while expecting at least 14 rank";
  for (const omReal64 offset : {0.0, 1e6}) {
    Random random(8);
    Values coplanar;
    for (int i = 0; i < 12; ++i) {
      const omReal64 x = random.uniform(-3, 3);
      const omReal64 y = random.uniform(-3, 3);
      coplanar.insert(coplanar.end(), {offset + x, y, 0.3 * x - 0.4 * y - offset, x * x, y, x * y});
    }
    // The same with coplanar targets, and five pairs of which four sources are coplanar and their targets are not.
    Values flattened = coplanar;
    for (std::size_t i = 0; i < flattened.size(); i += 6)
      std::swap_ranges(&flattened[i], &flattened[i + 3], &flattened[i + 3]);
    Values five = coplanar;
    five.resize(30);
    five[2] += 4;
    for (std::size_t i = 5; i < five.size(); i += 6) five[i] += random.uniform(1, 5);
    for (const Values& values : {coplanar, flattened, five}) {
      const std::string message = failureOf<HomographyTransform3dEstimator>(values);
      EXPECT_EQ(message.substr(message.size() - text.size()), text) << message;
    }
  }
  const std::string all = failureOf<HomographyTransform3dEstimator>(Values(60, 0.3));
  EXPECT_EQ(all.substr(all.size() - text.size()), text) << all;
}

TEST(HomographyTransform3dEstimator, AnswersWithAMatrix) {
  const Values values = pairs(9, {0, 0, 0}, 3, 8, similarity(2, {0.5, 0.4, 0.3}, {1, 2, 3}));
  HomographyTransform3dEstimator estimator;
  Matrix4x4 matrix;
  ASSERT_TRUE(estimator.computeEstimation(viewOf(values, 6), matrix));
  const RealVector params = fitted<HomographyTransform3dEstimator>(values);
  for (std::size_t k = 0; k < 16; ++k) EXPECT_EQ(matrix(k / 4, k % 4), params(k));
  RealVector residuals;
  ASSERT_TRUE(estimator.computeResiduals(dataSetOf(values, 6), matrix, residuals));
  EXPECT_EQ(valuesOf(residuals), valuesOf(residualsOf<HomographyTransform3dEstimator>(values, params)));
}

}  // namespace
