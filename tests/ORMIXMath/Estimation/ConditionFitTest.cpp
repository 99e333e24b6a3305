// Fits to conditions: their derivatives and covariances, and the losses.

#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXMath/Estimation/ConditionFit.h>
#include <ORMIXMath/Estimation/Loss.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Scalar/Constants.h>

#include "support/EstimationSamples.h"

namespace {

using namespace estimation;

template <class Model>
Model anyModel(Random& random) {
  std::array<omReal64, Model::s_nbTangents> step;
  if constexpr (Model::s_nbTangents == 8 || Model::s_nbTangents == 15) {
    typename Model::Elements elements;
    for (omReal64& element : elements) element = random.uniform(-0.2, 0.2);
    elements.back() = random.uniform() < 0 ? -1 : 1;
    return Model(elements);
  } else {
    Model model;
    if constexpr (Model::s_nbTangents != Model::s_sampleDimension || Model::s_nbConditions > 1)
      for (std::size_t d = 0; d < Model::s_nbConditions; ++d) model.rotation[d][d] = 1;
    for (omReal64& value : step) value = random.uniform(-2, 2);
    return model.moved(step);
  }
}

template <class Model>
struct ConditionModels : ::testing::Test {};
using Models = ::testing::Types<LinearConditions<2, eLF_Translation>, LinearConditions<2, eLF_Rigid>,
                                LinearConditions<2, eLF_Similarity>, LinearConditions<3, eLF_Translation>,
                                LinearConditions<3, eLF_Rigid>, LinearConditions<3, eLF_Similarity>,
                                HomographyConditions<2>, HomographyConditions<3>, IntersectionConditions>;
TYPED_TEST_SUITE(ConditionModels, Models);

TYPED_TEST(ConditionModels, HaveTheDerivativesOfDifferences) {
  constexpr std::size_t N = TypeParam::s_nbTangents, M = TypeParam::s_sampleDimension, K = TypeParam::s_nbConditions;
  constexpr omReal64 h = 1e-6;
  Random random(71);
  for (int i = 0; i < 100; ++i) {
    const TypeParam model = anyModel<TypeParam>(random);
    std::array<omReal64, M> sample;
    for (omReal64& value : sample) value = random.uniform();
    Conditions<K, N, M> at, above, below;
    model.evaluate(sample.data(), at);
    for (std::size_t k = 0; k < N + M; ++k) {
      std::array<omReal64, N> step{};
      const auto evaluate = [&](omReal64 by, Conditions<K, N, M>& conditions) {
        std::array<omReal64, M> moved = sample;
        (k < N ? step[k] : moved[k - N]) += by;
        model.moved(step).evaluate(moved.data(), conditions);
        step = {};
      };
      evaluate(h, above);
      evaluate(-h, below);
      for (std::size_t r = 0; r < K; ++r)
        EXPECT_NEAR(k < N ? at.byTangent[r][k] : at.bySample[r][k - N], (above.values[r] - below.values[r]) / (2 * h),
                    1e-7)
            << "condition " << r << " by " << k;
    }
  }
}

/// Samples that fulfil the conditions but for some noise in their last values, near which f is plus or minus these.
template <class Model>
Values samplesOf(const Model& model, std::size_t nb, Random& random) {
  constexpr std::size_t N = Model::s_nbTangents, M = Model::s_sampleDimension, K = Model::s_nbConditions;
  Values samples;
  Conditions<K, N, M> at;
  while (samples.size() < M * nb) {
    std::array<omReal64, M> sample{};
    for (std::size_t m = 0; m + K < M; ++m) sample[m] = random.uniform();
    model.evaluate(sample.data(), at);
    for (std::size_t r = 0; r < K; ++r)
      sample[M - K + r] = 0.01 * random.uniform() - at.values[r] / at.bySample[r][M - K + r];
    samples.insert(samples.end(), sample.begin(), sample.end());
  }
  return samples;
}

// The triangle by reflections, and from it (JᵀJ)⁻¹ by columns: sums of products, which fits use, square the condition.
TYPED_TEST(ConditionModels, HaveTheCovarianceOfAllTheirRows) {
  constexpr std::size_t N = TypeParam::s_nbTangents, M = TypeParam::s_sampleDimension, K = TypeParam::s_nbConditions;
  Random random(73);
  for (std::size_t nb = 17; nb < 47; ++nb) {
    TypeParam model = anyModel<TypeParam>(random);
    const Values samples = samplesOf(model, nb, random), ones(nb, 1);
    const SampleView view{samples.data(), nb, M};
    FitOptions options;
    FitResult result, weighted;
    // The second time hardly a step is made, and the rows are those of the model.
    ASSERT_TRUE(fitConditions(view, {}, options, model, result)) << result.status;
    ASSERT_TRUE(fitConditions(view, {}, options, model, result)) << result.status;
    TypeParam other = model;
    options.weights = {ones.data(), nb, 1};
    ASSERT_TRUE(fitConditions(view, {}, options, other, weighted));
    TallQr<N + 1> qr;
    Conditions<K, N, M> at;
    omReal64 cost = 0;
    for (std::size_t i = 0; i < nb; ++i) {
      model.evaluate(view[i], at);
      omReal64 square = 0;
      for (std::size_t r = 0; r < K; ++r) {
        for (std::size_t k = 0; k < N; ++k) qr.block(k)[r] = at.byTangent[r][k];
        qr.block(N)[r] = at.values[r];
        square += at.values[r] * at.values[r];
      }
      qr.fold(K);
      cost += square;
      EXPECT_NEAR(std::abs(result.residuals[i]), std::sqrt(square), 1e-12);
    }
    const omReal64 variance = cost / static_cast<omReal64>(nb * K - N);
    EXPECT_NEAR(result.sigma0 * result.sigma0 / variance, 1, 1e-9);
    std::array<std::array<omReal64, N>, N> inverse{};
    for (std::size_t c = 0; c < N; ++c)
      for (std::size_t k = c + 1; k-- > 0;) {
        omReal64 value = k == c ? 1 : 0;
        for (std::size_t j = k + 1; j <= c; ++j) value -= qr(k, j) * inverse[j][c];
        inverse[k][c] = value / qr(k, k);
      }
    const auto& found = result.covariance;
    for (std::size_t r = 0; r < N; ++r)
      for (std::size_t c = 0; c < N; ++c) {
        omReal64 sum = 0;
        for (std::size_t k = 0; k < N; ++k) sum += inverse[r][k] * inverse[c][k];
        const omReal64 scale = std::sqrt(found[r * (N + 1)] * found[c * (N + 1)]);
        EXPECT_NEAR(found[r * N + c] / scale, variance * sum / scale, 1e-9);
        EXPECT_NEAR(found[r * N + c] / scale, weighted.covariance[r * N + c] / scale, 1e-9);
      }
  }
}

TEST(ConditionFit, AnglesFollowASmallRotation) {
  Random random(72);
  constexpr omReal64 h = 1e-6;
  for (int i = 0; i < 200; ++i) {
    const EulerAngles angles{random.uniform(-3, 3), random.uniform(-1.5, 1.5), random.uniform(-3, 3)};
    const RotationMatrix derivatives = eulerByRotation(angles);
    for (std::size_t k = 0; k < 3; ++k) {
      const auto turned = [&](omReal64 by) {
        // A rotation about one axis is one by one angle.
        return composed(EulerAngles{k == 2 ? by : 0, k == 1 ? by : 0, k == 0 ? by : 0}, angles);
      };
      const EulerAngles above = turned(h), below = turned(-h);
      const omReal64 bound = 1e-4 * std::max(1.0, std::abs(derivatives[0][k]));
      EXPECT_NEAR(std::remainder(above.alpha - below.alpha, 2 * s_pi) / (2 * h), derivatives[0][k], bound);
      EXPECT_NEAR((above.beta - below.beta) / (2 * h), derivatives[1][k], bound);
      EXPECT_NEAR(std::remainder(above.chi - below.chi, 2 * s_pi) / (2 * h), derivatives[2][k], bound);
    }
  }
  const RotationMatrix locked = eulerByRotation({0, s_pi / 2, 1});
  EXPECT_EQ(locked[0], (std::array<omReal64, 3>{0, 0, 0}));
  EXPECT_EQ(locked[2][2], -1);
}

TEST(ConditionFit, WeightsAreDerivativesOfTheLosses) {
  for (const eLoss loss : {eLS_Squares, eLS_Huber, eLS_Tukey, eLS_Welsch, eLS_Cauchy}) {
    EXPECT_NEAR(lossValue(loss, 1e-6), 1e-12, 1e-23) << "small losses have all digits, or steps cannot be compared";
    for (const omReal64 u : {0.1, 0.7, 0.99, 1.01, 3.0}) {
      constexpr omReal64 h = 1e-6;
      EXPECT_NEAR(lossWeight(loss, u) * 2 * u, (lossValue(loss, u + h) - lossValue(loss, u - h)) / (2 * h), 1e-8);
      EXPECT_NEAR(lossWeightSlope(loss, u) / u, (lossWeight(loss, u + h) - lossWeight(loss, u - h)) / (2 * h), 1e-8);
    }
  }
}

}  // namespace
