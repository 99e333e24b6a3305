// Fits to conditions: their derivatives, and the losses.

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
  for (const eLoss loss : {eLS_Squares, eLS_Huber, eLS_Tukey, eLS_Welsch, eLS_Cauchy})
    for (const omReal64 u : {0.1, 0.7, 0.99, 1.01, 3.0}) {
      constexpr omReal64 h = 1e-6;
      EXPECT_NEAR(lossWeight(loss, u) * 2 * u, (lossValue(loss, u + h) - lossValue(loss, u - h)) / (2 * h), 1e-8);
      EXPECT_NEAR(lossWeightSlope(loss, u) / u, (lossWeight(loss, u + h) - lossWeight(loss, u - h)) / (2 * h), 1e-8);
    }
}

}  // namespace
