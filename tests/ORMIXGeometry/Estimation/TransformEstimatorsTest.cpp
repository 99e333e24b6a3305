// The estimators of transforms between two point sets of the plane or of space.

#include <ORMIXGeometry/ORMIXGeometry.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <boost/numeric/ublas/matrix.hpp>

#include "support/EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;
using Message = eEstimationMessage;

struct Plane {
  static constexpr std::size_t D = 2;
  using Translation = TranslationTransform2dEstimator;
  using Rigid = RigidTransform2dEstimator;
  using Similarity = SimilarityTransform2dEstimator;
  using Homography = HomographyTransform2dEstimator;
  using Matrix = Matrix3x3;
  static constexpr int ranks[] = {Message::eEsM_Translation2dRank, Message::eEsM_Rigid2dRank,
                                  Message::eEsM_Similarity2dRank, Message::eEsM_Homography2dRank};
  /// Rows of the rotation by the angles that stand from `first` on.
  static Values rotation(const RealVector& params, std::size_t first) {
    const omReal64 co = std::cos(params(first)), si = std::sin(params(first));
    return {co, -si, si, co};
  }
};
struct Space {
  static constexpr std::size_t D = 3;
  using Translation = TranslationTransform3dEstimator;
  using Rigid = RigidTransform3dEstimator;
  using Similarity = SimilarityTransform3dEstimator;
  using Homography = HomographyTransform3dEstimator;
  using Matrix = Matrix4x4;
  static constexpr int ranks[] = {Message::eEsM_Translation3dRank, Message::eEsM_Rigid3dRank,
                                  Message::eEsM_Similarity3dRank, Message::eEsM_Homography3dRank};
  static Values rotation(const RealVector& params, std::size_t first) {
    const RotationMatrix m = eulerToMatrix(params(first), params(first + 1), params(first + 2));
    return {m[0][0], m[0][1], m[0][2], m[1][0], m[1][1], m[1][2], m[2][0], m[2][1], m[2][2]};
  }
};

template <class S>
struct TransformEstimators : ::testing::Test {
  static constexpr std::size_t s_dimension = S::D, s_size = s_dimension + 1;
  static constexpr std::size_t nbAngles = s_dimension == 2 ? 1 : 3;

  /// The matrix of a similarity.
  static Values similarity(omReal64 scale, const Values& rotation, const Values& translation) {
    Values matrix(s_size * s_size, 0);
    for (std::size_t r = 0; r < s_dimension; ++r) {
      for (std::size_t c = 0; c < s_dimension; ++c) matrix[r * s_size + c] = scale * rotation[r * s_dimension + c];
      matrix[r * s_size + s_dimension] = translation[r];
    }
    matrix.back() = 1;
    return matrix;
  }
  static Values anyRotation(Random& random) {
    return S::rotation(
        vectorOf({random.uniform(-3.14, 3.14), random.uniform(-1.57, 1.57), random.uniform(-3.14, 3.14)}), 0);
  }
  /// Near the identity; `slope` bounds the last row.
  static Values anyHomography(Random& random, omReal64 slope) {
    Values matrix(s_size * s_size, 1);
    for (std::size_t k = 0; k + 1 < s_size * s_size; ++k)
      matrix[k] = k >= s_dimension * s_size   ? random.uniform(-slope, slope)
                  : k % s_size == s_dimension ? random.uniform(-9, 9)
                  : k % (s_size + 1) == 0     ? random.uniform(0.7, 1.5)
                                              : random.uniform(-0.2, 0.2);
    return matrix;
  }

  /// Pairs of points about (centre, -centre, centre) and their images by the matrix, right to their last place but for
  /// the noise.
  static Values pairs(std::size_t count, omReal64 center, omReal64 extent, unsigned seed, const Values& matrix,
                      omReal64 noise = 0) {
    Random random(seed);
    Values values;
    for (std::size_t i = 0; i < count; ++i) {
      long double image[s_size];
      omReal64 p[s_dimension];
      for (std::size_t k = 0; k < s_dimension; ++k)
        p[k] = (k == 1 ? -center : center) + random.uniform(-extent, extent);
      for (std::size_t r = 0; r < s_size; ++r) {
        image[r] = matrix[r * s_size + s_dimension];
        for (std::size_t c = 0; c < s_dimension; ++c)
          image[r] += static_cast<long double>(matrix[r * s_size + c]) * p[c];
      }
      values.insert(values.end(), p, p + s_dimension);
      for (std::size_t k = 0; k < s_dimension; ++k)
        values.push_back(static_cast<omReal64>(image[k] / image[s_dimension]) + noise * random.noise());
    }
    return values;
  }
  static omReal64 difference(const Values& a, const Values& b) {
    omReal64 largest = 0;
    for (std::size_t k = 0; k < a.size(); ++k) largest = std::max(largest, std::abs(a[k] - b[k]));
    return largest;
  }
  static std::string rankMessage(std::size_t which) { return formatMessage<Message>(S::ranks[which]); }
};
using Dimensions = ::testing::Types<Plane, Space>;
TYPED_TEST_SUITE(TransformEstimators, Dimensions);

TYPED_TEST(TransformEstimators, AreExactOnExactData) {
  using Fixture = TransformEstimators<TypeParam>;
  for (unsigned seed = 1; seed <= 100; ++seed) {
    Random random(seed);
    const omReal64 scale = std::pow(10.0, random.uniform(-3, 3));
    // In the plane an absolute threshold stands against tiny units.
    const omReal64 unit = TypeParam::D == 2 ? 1 : std::pow(10.0, random.uniform(-12, 12));
    const Values rotation = this->anyRotation(random), moved{unit, -unit, 2 * unit}, shift{3, -4, 5};
    const Values similar = this->pairs(4 + seed, unit, unit, seed, this->similarity(scale, rotation, moved));
    const RealVector params = fitted<typename TypeParam::Similarity>(similar);
    EXPECT_NEAR(params(0), scale, 4e-14 * (scale + 2));
    EXPECT_LE(this->difference(TypeParam::rotation(params, 1), rotation), 4e-14 * (1 + 2 / scale));
    for (std::size_t k = 0; k < TypeParam::D; ++k)
      EXPECT_NEAR(params(1 + Fixture::nbAngles + k) / unit, moved[k] / unit, 1e-12 * (1 + scale));

    const Values matrix = this->similarity(1, rotation, shift);
    const RealVector rigid = fitted<typename TypeParam::Rigid>(this->pairs(5 + seed, 0, 10, seed, matrix));
    EXPECT_LE(this->difference(TypeParam::rotation(rigid, 0), rotation), 1e-14);
    const Values far = this->pairs(40, 1e6, 10, seed, matrix);
    EXPECT_LE(largestResidual<typename TypeParam::Rigid>(far, fitted<typename TypeParam::Rigid>(far)), 2e-9);
  }
}

TYPED_TEST(TransformEstimators, MinimiseTheirResidualsAlsoOfMirrorImages) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    Random random(seed);
    const Values values = this->pairs(15, 2, 5, seed, this->similarity(1.5, this->anyRotation(random), {1, 2, 3}), 0.5);
    expectLeastSquares<typename TypeParam::Translation>(values, fitted<typename TypeParam::Translation>(values));
    Values mirror = this->similarity(1, TypeParam::rotation(RealVector(3, 0.0), 0), {0, 0, 0});
    mirror[0] = -1;
    for (const Values& pairs : {values, this->pairs(12, 2, 4, seed, mirror)}) {
      expectLeastSquares<typename TypeParam::Rigid>(pairs, fitted<typename TypeParam::Rigid>(pairs));
      const RealVector params = fitted<typename TypeParam::Similarity>(pairs);
      EXPECT_GT(params(0), 0);
      expectLeastSquares<typename TypeParam::Similarity>(pairs, params);
    }
  }
  const RealVector params = fitted<typename TypeParam::Translation>(
      this->pairs(7, 2, 1, 5, this->similarity(1, TypeParam::rotation(RealVector(3, 0.0), 0), {4, 5, 6})));
  for (std::size_t k = 0; k < params.size(); ++k)
    EXPECT_NEAR(params(k), k < TypeParam::D ? omReal64(k) + 4 : 0, 1e-14) << "what is no translation is zero";
}

TYPED_TEST(TransformEstimators, RefuseWhatTellsNoRotation) {
  constexpr std::size_t D = TypeParam::D;
  Values sources, targets, tiny;
  Random random(4);
  for (int i = 0; i < 8; ++i)
    for (std::size_t k = 0; k < 2 * D; ++k) {
      sources.push_back(k < D ? omReal64(k) + 1 : random.uniform(0, 9));
      targets.push_back(k < D ? random.uniform(0, 9) : omReal64(k) + 1);
      tiny.push_back(1e-5 * random.uniform());
    }
  // Below the absolute threshold, which for rotations there is in the plane only (intended).
  std::vector<Values> all{sources, targets};
  if (D == 2) all.push_back(tiny);
  // A regular polygon and its mirror image; sources that coincide but for their last bit.
  if (D == 2) all.push_back({1e6, 1, 0, 0, 1e6 + 0x1p-33, 1, 1e6, 1e6, 1e6, 1, -1e6, 1e6});
  if (D == 2) all.emplace_back();
  for (int k = 0; k < 7 && D == 2; ++k) {
    const omReal64 x = 1e6 * std::cos(2 * s_pi * k / 7), y = 1e6 * std::sin(2 * s_pi * k / 7);
    all.back().insert(all.back().end(), {x, y, x, -y});
  }
  for (const Values& values : all) {
    // A translation would exist: intended.
    EXPECT_EQ(failureOf<typename TypeParam::Translation>(values), this->rankMessage(0));
    EXPECT_EQ(failureOf<typename TypeParam::Rigid>(values), this->rankMessage(1));
    EXPECT_EQ(failureOf<typename TypeParam::Similarity>(values), this->rankMessage(2));
  }
  EXPECT_EQ(failureOf<typename TypeParam::Translation>(tiny), this->rankMessage(0));
}

TYPED_TEST(TransformEstimators, TakeSourcesAndTargetsApart) {
  constexpr std::size_t D = TypeParam::D;
  Random random(6);
  const Values values = this->pairs(1500, 2, 5, 6, this->similarity(1, this->anyRotation(random), {4, 5, 6}), 0.1);
  Values sources, targets;
  for (std::size_t i = 0; i < values.size(); ++i) (i % (2 * D) < D ? sources : targets).push_back(values[i]);
  typename TypeParam::Rigid estimator;
  RealVector params = vectorOf({42});
  ASSERT_TRUE(estimator.computeEstimation(viewOf(sources, D), viewOf(targets, D), params));
  EXPECT_EQ(valuesOf(params), valuesOf(fitted<typename TypeParam::Rigid>(values)));
  params = vectorOf({42});
  const auto failure = [&](const Values& first, const Values& second, std::size_t dimension) {
    const BoolResult result = estimator.computeEstimation(viewOf(first, dimension), viewOf(second, dimension), params);
    EXPECT_FALSE(result);
    EXPECT_EQ(valuesOf(params), Values{42});
    return result.getMessage();
  };
  EXPECT_EQ(failure(Values(3 * D, 1), Values(4 * D, 1), D),
            formatMessage<Message>(Message::eEsM_CollectionSizeMismatch, 3, 4));
  EXPECT_NE(failure(Values(D, 1), Values(D, 1), D).find("1 pairs were given, at least "), std::string::npos);
  EXPECT_NE(failure(Values(24, 1), Values(24, 1), 4).find("dimension 4"), std::string::npos);
  EXPECT_EQ(failure(Values(4 * D, 1), Values(4 * D, 1), D), this->rankMessage(1));
  sources[7] = s_nan;
  EXPECT_FALSE(failure(sources, targets, D).empty());
}

TEST(TransformEstimators3d, AnswerOneRotationOrNone) {
  using Fixture = TransformEstimators<Space>;
  for (unsigned seed = 1; seed <= 20; ++seed) {
    Random random(seed);
    const Values rotation = Fixture::anyRotation(random), matrix = Fixture::similarity(1, rotation, {1, 2, 3});
    Values coplanar = Fixture::pairs(6, 0, 3, seed, matrix);
    for (std::size_t i = 0; i < coplanar.size(); i += 6) {
      for (std::size_t k = 0; k < 3; ++k) coplanar[i + 3 + k] -= matrix[4 * k + 2] * coplanar[i + 2];
      coplanar[i + 2] = 0;
    }
    EXPECT_LE(Fixture::difference(Space::rotation(fitted<RigidTransform3dEstimator>(coplanar), 0), rotation), 1e-13);
  }
  for (const omReal64 offset : {0.0, 1e6, 1e9}) {
    Random random(4);
    Values line, nearly;
    for (int i = 0; i < 8; ++i) {
      const omReal64 t = random.uniform(-2, 2);
      line.insert(line.end(), {offset + t, 2 * t, -t, t, -t, offset + 2 * t});
      for (int k = 0; k < 6; ++k) nearly.push_back(1e9 + offset + 1e-12 * random.uniform());
    }
    for (const Values& values : {line, nearly}) {
      EXPECT_EQ(failureOf<RigidTransform3dEstimator>(values), Fixture::rankMessage(1)) << offset;
      EXPECT_EQ(failureOf<SimilarityTransform3dEstimator>(values), Fixture::rankMessage(2)) << offset;
    }
  }
  // The mirror image of a cube: four rotations are as good.
  Values cube;
  for (int i = 0; i < 8; ++i) {
    const omReal64 x = (i & 1) - 0.5, y = (i / 2 & 1) - 0.5, z = i / 4 - 0.5;
    cube.insert(cube.end(), {x, y, z, -x, -y, -z});
  }
  EXPECT_EQ(failureOf<RigidTransform3dEstimator>(cube), Fixture::rankMessage(1));
}

template <class Estimator>
void expectResidual(const Values& pair, std::initializer_list<omReal64> params, omReal64 expected) {
  EXPECT_NEAR(residualsOf<Estimator>(pair, vectorOf(params))(0), expected, 1e-14) << Estimator::s_className;
}

TEST(TransformResiduals, AreDistancesOfImages) {
  const omReal64 right = std::acos(0.0);
  const Values flat{1, 2, 4, 6}, pair{1, 2, 3, 3, 5, 9};
  expectResidual<TranslationTransform2dEstimator>(flat, {0, 0}, 5);
  expectResidual<RigidTransform2dEstimator>(flat, {right, 3, 1}, 5);
  expectResidual<SimilarityTransform2dEstimator>(flat, {2, 0, 2, 5}, 3);
  expectResidual<HomographyTransform2dEstimator>(flat, {1, 0, 0, 0, 1, 0, 0, 0, 0.5}, std::hypot(2.0, 2.0));
  expectResidual<TranslationTransform3dEstimator>(pair, {0, 0, 0, 9, 9, 9}, 7);
  // Quarter turn about z: (1, 2, 3) goes to (-2, 1, 3).
  expectResidual<RigidTransform3dEstimator>(pair, {right, 0, 0, 5, 4, 0}, 6);
  expectResidual<SimilarityTransform3dEstimator>(pair, {2, 0, 0, 0, 1, 1, 0}, 3);
  expectResidual<HomographyTransform3dEstimator>(pair, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0.5},
                                                 std::sqrt(11.0));
}

TYPED_TEST(TransformEstimators, OfHomographiesAreExactAlsoFarAway) {
  using Homography = typename TypeParam::Homography;
  const auto residual = [](const Values& values) {
    return largestResidual<Homography>(values, fitted<Homography>(values));
  };
  for (unsigned seed = 1; seed <= 100; ++seed) {
    Random random(seed);
    const Values matrix = this->anyHomography(random, 0.02), values = this->pairs(8 + seed, 0, 10, seed, matrix);
    EXPECT_LE(this->difference(valuesOf(fitted<Homography>(values)), matrix), 2e-12);
    EXPECT_LE(residual(values), 1e-12);
    EXPECT_LE(residual(this->pairs(Homography::s_minimalDataSize, 0, 10, seed, matrix)), 1e-9);
    EXPECT_LE(residual(this->pairs(60, 1e6, 10, seed, this->anyHomography(random, 1e-8))), 1e-9);
  }
  // The origin may go to infinity.
  Values matrix = this->similarity(1, TypeParam::rotation(RealVector(3, 0.0), 0), {3, 4, 5});
  matrix.back() = 0;
  matrix[matrix.size() - 2] = 0.5;
  EXPECT_LE(residual(this->pairs(20, 60, 30, 3, matrix)), 1e-11);
}

TYPED_TEST(TransformEstimators, OfHomographiesSayTheRankTheyFound) {
  constexpr std::size_t D = TypeParam::D;
  const std::string text = formatMessage<Message>(TypeParam::ranks[3], 0, D == 2 ? 7 : 14).substr(21);
  for (const omReal64 offset : {0.0, 1e6}) {
    Random random(8);
    Values flat;
    for (int i = 0; i < 12; ++i) {
      const omReal64 x = random.uniform(-3, 3), y = D == 2 ? 0 : random.uniform(-3, 3);
      const omReal64 point[] = {offset + x, 0.3 * (offset + x) + y, 0.3 * x - 0.4 * y - offset},
                     image[] = {x * x, y + x, x * y};
      flat.insert(flat.end(), point, point + D);
      flat.insert(flat.end(), image, image + D);
    }
    // Flat targets, and the fewest pairs with all sources but one flat while the targets are not, leave singular
    // matrices only.
    Values flattened = flat;
    for (std::size_t i = 0; i < flat.size(); i += 2 * D)
      std::swap_ranges(&flattened[i], &flattened[i] + D, &flattened[i] + D);
    Values fewest(flat.begin(), flat.begin() + 2 * D * (D + 2));
    fewest[D - 1] += 4;
    std::vector<Values> all{flat, Values(20 * D, 0.3), flattened, fewest};
    // Of three collinear sources rounding has left this matrix a smallest singular value of more than itself.
    if (D == 2)
      all.push_back({1000000.9671762818, 999999.94738599181, -7.3965318972332295, 0.56297073551168531,
                     1000000.5591866198, 999999.8175849875, 8.9007748988819717, -8.7679524756240568, 1000000.6408375076,
                     999999.84356203594, -2.297512055903641, -2.3699475186149463, 1000000.5444936324,
                     1000000.2828342231, -7.4725627353376458, 5.0590212967423076});
    for (const Values& values : all) {
      const std::string message = failureOf<typename TypeParam::Homography>(values);
      EXPECT_EQ(message.substr(message.size() - text.size()), text) << message;
    }
  }
}

TYPED_TEST(TransformEstimators, OfHomographiesAnswerWithAMatrix) {
  constexpr std::size_t D = TypeParam::D, N = D + 1;
  Random random(8);
  const Values values = this->pairs(9, 0, 3, 8, this->similarity(2, this->anyRotation(random), {1, 2, 3}));
  typename TypeParam::Homography estimator;
  typename TypeParam::Matrix matrix;
  const auto elements = [&] {
    Values all;
    for (std::size_t k = 0; k < N * N; ++k) all.push_back(matrix(k / N, k % N));
    return all;
  };
  ASSERT_TRUE(estimator.computeEstimation(dataSetOf(values, 2 * D), matrix));
  const RealVector params = fitted<typename TypeParam::Homography>(values);
  EXPECT_EQ(elements(), valuesOf(params));
  RealVector residuals;
  ASSERT_TRUE(estimator.computeResiduals(dataSetOf(values, 2 * D), matrix, residuals));
  EXPECT_EQ(valuesOf(residuals), valuesOf(residualsOf<typename TypeParam::Homography>(values, params)));
  EXPECT_FALSE(estimator.computeEstimation(dataSetOf(Values(2 * D, 1), 2 * D), matrix));
  EXPECT_EQ(elements(), valuesOf(params));
}

}  // namespace
