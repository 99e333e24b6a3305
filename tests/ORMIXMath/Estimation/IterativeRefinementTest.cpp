#include <ORMIXMath/Estimation/IterativeRefinement.h>

#include <boost/numeric/ublas/matrix.hpp>

#include "support/EstimationSamples.h"

namespace ormix {
namespace {

using Equations = std::function<void(const RealVector&, RealVector&)>;
using Jacobian = std::function<void(const RealVector&, RealMatrix&)>;

using estimation::vectorOf;

/// Whatever equations and derivatives a test wants, right or wrong.
class FreeFunction : public BaseCostFunction {
 public:
  FreeFunction(std::size_t nbEquations, Equations equations, Jacobian jacobian)
      : _equations(std::move(equations)), _jacobian(std::move(jacobian)) {
    initBase(nbEquations, 1);
  }
  BoolResult init(const DataSet&) override { return {}; }
  BoolResult processEquations(const RealVector& params, RealVector& values) const override {
    values.resize(getNbEquations(), false);
    _equations(params, values);
    return {};
  }
  BoolResult processJacobian(const RealVector& params, RealMatrix& jacobian) const override {
    jacobian.resize(getNbEquations(), params.size(), false);
    _jacobian(params, jacobian);
    return {};
  }

 protected:
  void clearDerived() override {}

 private:
  Equations _equations;
  Jacobian _jacobian;
};

/// Rosenbrock (1960): a bent valley, its bottom at (1, 1).
FreeFunction valley() {
  return FreeFunction(
      2,
      [](const RealVector& p, RealVector& f) {
        f(0) = 10 * (p(1) - p(0) * p(0));
        f(1) = 1 - p(0);
      },
      [](const RealVector& p, RealMatrix& j) {
        j(0, 0) = -20 * p(0);
        j(0, 1) = 10;
        j(1, 0) = -1;
        j(1, 1) = 0;
      });
}

TEST(IterativeRefinement, FollowsTheBentValley) {
  RefinementResult result;
  ASSERT_TRUE(refineIteratively(valley(), vectorOf({-1.2, 1}), {}, result));
  EXPECT_EQ(result.end, eRE_Converged);
  EXPECT_NEAR(result.params(0), 1, 1e-12);
  EXPECT_NEAR(result.params(1), 1, 1e-12);
  EXPECT_LT(result.cost, 1e-24);
  EXPECT_LT(result.nbIterations, 60U);
}

TEST(IterativeRefinement, NeverWorsensTheStart) {
  support::Random draw(12);
  // The opposite of the derivatives is the worst there is.
  const FreeFunction reversed(
      2, [](const RealVector& p, RealVector& f) { f(0) = p(0) - 3, f(1) = p(0) + p(1) * p(1); },
      [](const RealVector& p, RealMatrix& j) { j(0, 0) = -1, j(0, 1) = 0, j(1, 0) = -1, j(1, 1) = -2 * p(1); });
  // Decreases below the last bit of the cost, which must not grow by that bit.
  const omReal64 root2 = std::sqrt(2.0), root3 = std::sqrt(3.0);
  omReal64 size = 0;
  const FreeFunction opposed(
      2,
      [&](const RealVector& p, RealVector& f) {
        f(0) = size * root2 + root3 * p(0), f(1) = size * root3 - root2 * p(0);
      },
      [&](const RealVector&, RealMatrix& j) { j(0, 0) = root3, j(1, 0) = -root2; });
  for (int i = 0; i < 1000; ++i) {
    RefinementResult result;
    ASSERT_TRUE(refineIteratively(reversed, vectorOf({10 * draw.uniform(), 10 * draw.uniform()}), {}, result));
    EXPECT_LE(result.cost, result.initialCost);
    EXPECT_NE(result.end, eRE_IterationLimit);
    size = draw.uniform(500, 2000);
    ASSERT_TRUE(refineIteratively(opposed, vectorOf({1e-6 * draw.uniform()}), {}, result));
    EXPECT_LE(result.cost, result.initialCost);
  }
}

TEST(IterativeRefinement, TakesNineParametersAndOne) {
  for (const std::size_t nbParams : {1U, 2U, 5U, 9U}) {
    const FreeFunction linear(
        nbParams + 3,
        [](const RealVector& p, RealVector& f) {
          for (std::size_t i = 0; i < f.size(); ++i) f(i) = i < p.size() ? p(i) - omReal64(i) : 1;
        },
        [](const RealVector&, RealMatrix& j) {
          for (std::size_t i = 0; i < j.size1(); ++i)
            for (std::size_t c = 0; c < j.size2(); ++c) j(i, c) = i == c;
        });
    RefinementResult result;
    ASSERT_TRUE(refineIteratively(linear, RealVector(nbParams, 7.0), {}, result));
    for (std::size_t i = 0; i < nbParams; ++i) EXPECT_NEAR(result.params(i), omReal64(i), 1e-12);
    EXPECT_NEAR(result.cost, 1.5, 1e-14);
    EXPECT_EQ(result.end, eRE_Converged);
  }
}

TEST(IterativeRefinement, CanBeLimitedAndStopped) {
  RefinementOptions options;
  options.nbMaxIterations = 3;
  RefinementResult result;
  ASSERT_TRUE(refineIteratively(valley(), vectorOf({-1.2, 1}), options, result));
  EXPECT_EQ(result.end, eRE_IterationLimit);
  EXPECT_EQ(result.nbIterations, 3U);
  int nbCalls = 0;
  options.progress = [&nbCalls](omReal64) { return ++nbCalls < 2; };
  ASSERT_TRUE(refineIteratively(valley(), vectorOf({-1.2, 1}), options, result));
  EXPECT_EQ(result.end, eRE_Stopped);
  EXPECT_EQ(result.nbIterations, 1U);
  EXPECT_LE(result.cost, result.initialCost);
}

TEST(IterativeRefinement, RefusesWhatItCannotStartFrom) {
  RefinementResult result;
  result.cost = 77;
  EXPECT_FALSE(refineIteratively(valley(), RealVector(), {}, result));
  EXPECT_FALSE(refineIteratively(valley(), RealVector(10, 0.0), {}, result));
  EXPECT_FALSE(refineIteratively(valley(), vectorOf({support::s_infinity, 0}), {}, result));
  EXPECT_FALSE(refineIteratively(valley(), vectorOf({1e200, 0}), {}, result));
  FreeFunction cleared = valley();
  cleared.clear();
  EXPECT_FALSE(refineIteratively(cleared, vectorOf({0, 0}), {}, result));
  const FreeFunction nanJacobian(
      1, [](const RealVector&, RealVector& f) { f(0) = 1; },
      [](const RealVector&, RealMatrix& j) { j(0, 0) = std::nan(""); });
  EXPECT_FALSE(refineIteratively(nanJacobian, vectorOf({0}), {}, result));
  EXPECT_EQ(result.cost, 77);
}

}  // namespace
}  // namespace ormix
