#include <ORMIXMath/Estimation/IterativeRefinement.h>

#include <gtest/gtest.h>

#include <boost/numeric/ublas/matrix.hpp>
#include <cmath>
#include <functional>
#include <utility>

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

/// A noisy circle's points with derivatives that carry an extra factor cx and cy.
FreeFunction circle(const std::vector<std::pair<omReal64, omReal64>>& points) {
  return FreeFunction(
      points.size(),
      [points](const RealVector& p, RealVector& f) {
        for (std::size_t i = 0; i < points.size(); ++i)
          f(i) = std::pow(points[i].first - p(0), 2) + std::pow(points[i].second - p(1), 2) - p(2) * p(2);
      },
      [points](const RealVector& p, RealMatrix& j) {
        for (std::size_t i = 0; i < points.size(); ++i) {
          j(i, 0) = -2 * (points[i].first - p(0)) * p(0);
          j(i, 1) = -2 * (points[i].second - p(1)) * p(1);
          j(i, 2) = -2 * p(2);
        }
      });
}

std::vector<std::pair<omReal64, omReal64>> noisyCircle(omReal64 cx, omReal64 cy, omReal64 r, support::Random& draw) {
  std::vector<std::pair<omReal64, omReal64>> points;
  for (int i = 0; i < 60; ++i) {
    const omReal64 angle = draw.uniform(0, 4), length = r * draw.uniform(1, 1.01);
    points.emplace_back(cx + length * std::cos(angle), cy + length * std::sin(angle));
  }
  return points;
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

TEST(IterativeRefinement, AWrongJacobianNeverWorsensTheStart) {
  support::Random draw(12);
  for (int i = 0; i < 200; ++i) {
    const auto points = noisyCircle(20 * draw.uniform(), 20 * draw.uniform(), 5, draw);
    const RealVector start = vectorOf({30 * draw.uniform(), 30 * draw.uniform(), 10 * draw.uniform()});
    RefinementResult result;
    ASSERT_TRUE(refineIteratively(circle(points), start, {}, result));
    EXPECT_LE(result.cost, result.initialCost);
    EXPECT_TRUE(std::isfinite(result.params(0) + result.params(1) + result.params(2)));
    // The opposite of the derivatives is the worst there is.
    const FreeFunction reversed(
        2, [](const RealVector& p, RealVector& f) { f(0) = p(0) - 3, f(1) = p(0) + p(1) * p(1); },
        [](const RealVector& p, RealMatrix& j) { j(0, 0) = -1, j(0, 1) = 0, j(1, 0) = -1, j(1, 1) = -2 * p(1); });
    ASSERT_TRUE(refineIteratively(reversed, vectorOf({10 * draw.uniform(), 10 * draw.uniform()}), {}, result));
    EXPECT_LE(result.cost, result.initialCost);
    EXPECT_NE(result.end, eRE_IterationLimit);
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
