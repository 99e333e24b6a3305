// Circles and spheres, whose equations are the same but for the dimension. How exact the fits are is tested with the
// functions of ORMIXMath/Fitting.

#include <ORMIXGeometry/Estimation/2d/Circle2dCostFunction.h>
#include <ORMIXGeometry/Estimation/2d/Circle2dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Sphere3dCostFunction.h>
#include <ORMIXGeometry/Estimation/3d/Sphere3dEstimator.h>
#include <ORMIXGeometry/Message/EstimationMessage.h>

#include <boost/numeric/ublas/matrix.hpp>

#include "support/EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

struct Circle {
  static constexpr std::size_t D = 2;
  using Estimator = Circle2dEstimator;
  using CostFunction = Circle2dCostFunction;
  static constexpr int noRank = eEstimationMessage::eEsM_CircleRank,
                       noStart = eEstimationMessage::eEsM_CircleCostFunction;
};
struct Sphere {
  static constexpr std::size_t D = 3;
  using Estimator = Sphere3dEstimator;
  using CostFunction = Sphere3dCostFunction;
  static constexpr int noRank = eEstimationMessage::eEsM_SphereRank,
                       noStart = eEstimationMessage::eEsM_SphereCostFunction;
};

template <class S>
struct SphereEstimators : ::testing::Test {
  static constexpr std::size_t s_dimension = S::D;

  /// The first s_dimension of four values, and the last.
  static RealVector params(omReal64 x, omReal64 y, omReal64 z, omReal64 radius) {
    return s_dimension == 2 ? vectorOf({x, y, radius}) : vectorOf({x, y, z, radius});
  }
  static Values points(const std::vector<std::array<omReal64, 3>>& all) {
    Values values;
    for (const auto& point : all) values.insert(values.end(), point.begin(), point.begin() + s_dimension);
    return values;
  }
  /// All around, or near the first axis only.
  static Values onSphere(const RealVector& sphere, std::size_t count, unsigned seed, omReal64 noise,
                         omReal64 spread = 0) {
    Random random(seed);
    Values values;
    for (std::size_t i = 0; i < count; ++i) {
      omReal64 direction[3] = {random.noise(), random.noise(), s_dimension == 2 ? 0 : random.noise()};
      if (spread > 0) direction[0] = 1 / spread;
      const omReal64 radius =
          (sphere(s_dimension) + noise * random.noise()) / std::hypot(direction[0], direction[1], direction[2]);
      for (std::size_t d = 0; d < s_dimension; ++d) values.push_back(sphere(d) + radius * direction[d]);
    }
    return values;
  }
  static omReal64 difference(const RealVector& p, const RealVector& q) { return norm_inf(p - q); }
};
using Dimensions = ::testing::Types<Circle, Sphere>;
TYPED_TEST_SUITE(SphereEstimators, Dimensions);

TYPED_TEST(SphereEstimators, PassThroughFewPoints) {
  using Estimator = typename TypeParam::Estimator;
  Values values = this->points({{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}});
  values.resize(Estimator::s_minimalDataSize * this->s_dimension);
  EXPECT_LE(this->difference(fitted<Estimator>(values), this->params(0, 0, 0, 1)), 1e-15);
}

TYPED_TEST(SphereEstimators, AreExactOnExactData) {
  using Estimator = typename TypeParam::Estimator;
  const RealVector near = this->params(1, 2, 3, 4), far = this->params(1e6, -1e6, 1e6, 1),
                   unit = this->params(0, 0, 0, 1);
  for (unsigned seed = 1; seed <= 100; ++seed) {
    EXPECT_LE(this->difference(fitted<Estimator>(this->onSphere(near, 20 + seed, seed, 0)), near), 1e-13);
    EXPECT_LE(this->difference(fitted<Estimator>(this->onSphere(far, 20 + seed, seed, 0)), far), 1e-9);
    // Some degrees of it.
    EXPECT_LE(this->difference(fitted<Estimator>(this->onSphere(unit, 200, seed, 0, 0.04)), unit), 1e-10);
  }
}

TYPED_TEST(SphereEstimators, RefuseFlatPoints) {
  using Estimator = typename TypeParam::Estimator;
  const std::string message = formatMessage<eEstimationMessage>(TypeParam::noRank);
  for (const std::size_t count : {Estimator::s_minimalDataSize, std::size_t{50}})
    for (const omReal64 offset : {0.0, 1e6, 1e9}) {
      Random random(2);
      Values flat, line;
      for (std::size_t i = 0; i < count; ++i) {
        const omReal64 x = random.uniform(-10, 10),
                       y = this->s_dimension == 2 ? offset - 0.5 * x : random.uniform(-10, 10);
        const Values point = this->points({{offset + x, y - offset, 0.5 * x - 0.25 * y + offset}});
        flat.insert(flat.end(), point.begin(), point.end());
        const Values onLine = this->points({{offset + x, 0.25 * x, offset - x}});
        line.insert(line.end(), onLine.begin(), onLine.end());
      }
      EXPECT_EQ(failureOf<Estimator>(flat), message) << count << " at " << offset;
      EXPECT_EQ(failureOf<Estimator>(line), message) << count << " at " << offset;
      EXPECT_EQ(failureOf<Estimator>(Values(this->s_dimension * count, offset)), message) << count << " at " << offset;
    }
}

TYPED_TEST(SphereEstimators, MinimiseTheirResidualsAtAnyScale) {
  using Estimator = typename TypeParam::Estimator;
  for (unsigned seed = 1; seed <= 20; ++seed) {
    const Values values = this->onSphere(this->params(1, 2, 3, 4), 30, seed, 0.2);
    const RealVector params = fitted<Estimator>(values);
    expectLeastSquares<Estimator>(values, params);
    for (const omReal64 scale : {0x1p-400, 0x1p-20, 0x1p400}) {
      Values scaled = values;
      for (omReal64& value : scaled) value *= scale;
      EXPECT_LE(this->difference(fitted<Estimator>(scaled) / scale, params), 1e-13) << scale;
    }
  }
}

TYPED_TEST(SphereEstimators, ResidualsAreAlgebraicAndSigned) {
  using Estimator = typename TypeParam::Estimator;
  const RealVector sphere = this->params(1, 2, 3, 2);
  const Values values = this->points({{1, 2, 3}, {4, 2, 3}, {1, 5, 3}, {3, 2, 3}});
  EXPECT_EQ(valuesOf(residualsOf<Estimator>(values, sphere)), (Values{-4, 5, 5, 0}));
  EXPECT_EQ(Estimator().getResidualScale(sphere), 4);
}

TYPED_TEST(SphereEstimators, RefineByOneEquationForEachPoint) {
  constexpr std::size_t D = TypeParam::D;
  typename TypeParam::CostFunction function;
  const Values points = this->points({{3, 5, 7}, {0, 0, 0}});
  ASSERT_TRUE(function.init(dataSetOf(points, D)));
  EXPECT_EQ(function.getNbEquations(), 2u);
  const RealVector at = this->params(2, 3, 4, 5);
  RealVector values;
  RealMatrix jacobian;
  ASSERT_TRUE(function.processEquations(at, values));
  ASSERT_TRUE(function.processJacobian(at, jacobian));
  for (std::size_t i = 0; i < 2; ++i) {
    omReal64 sum = -25;
    for (std::size_t d = 0; d < D; ++d) {
      const omReal64 offset = points[i * D + d] - at(d);
      sum += offset * offset;
      // Not the derivative (intended): the first columns carry the centre's coordinates.
      EXPECT_EQ(jacobian(i, d), -2 * offset * at(d));
    }
    EXPECT_EQ(values(i), sum);
    EXPECT_EQ(jacobian(i, D), -10);
  }
  function.clear();
  EXPECT_EQ(function.getNbEquations(), 0u);
  EXPECT_FALSE(function.processEquations(vectorOf({2, 3}), values));

  using Estimator = typename TypeParam::Estimator;
  const Values samples = this->onSphere(this->params(5, 3, 2, 2), 40, 3, 0.05);
  const RealVector start = this->params(4.5, 3.4, 2.2, 1.7);
  RealVector refined;
  const BoolResult result = Estimator().refineEstimation(dataSetOf(samples, D), start, refined);
  ASSERT_TRUE(result) << result.getMessage();
  EXPECT_LE(sumOfSquares<Estimator>(samples, refined), sumOfSquares<Estimator>(samples, start));
  const std::string prefix = formatMessage<eEstimationMessage>(TypeParam::noStart, "");
  for (const DataSet& bad : {DataSet{}, dataSetOf({1, 2, 3, 4}, 4), dataSetOf({1, 2, s_nan, 4, 5, s_infinity}, D)}) {
    const std::string message = Estimator().refineEstimation(bad, start, values).getMessage();
    EXPECT_EQ(message.substr(0, prefix.size()), prefix);
    EXPECT_GT(message.size(), prefix.size());
  }
}

TYPED_TEST(SphereEstimators, SayHowARefinementEnded) {
  using Estimator = typename TypeParam::Estimator;
  int nbUnmoved = 0;
  for (unsigned seed = 1; seed <= 40; ++seed) {
    // The factors of the Jacobian are of different sign here: steps climb in y.
    const RealVector start = this->params(5, -5, 3, 2);
    const DataSet samples = dataSetOf(this->onSphere(start, 40, seed, 0.05), TypeParam::D);
    RefinementResult refined;
    ASSERT_TRUE(Estimator().refineEstimation(samples, start, refined));
    EXPECT_LE(refined.cost, refined.initialCost);
    RealVector params = vectorOf({42});
    const BoolResult result = Estimator().refineEstimation(samples, start, params);
    // A success has moved; a failure says that no step made the cost smaller.
    EXPECT_EQ(static_cast<bool>(result), refined.cost < refined.initialCost || refined.end != eRE_NoDecrease);
    EXPECT_EQ(valuesOf(params), result ? valuesOf(refined.params) : Values{42});
    EXPECT_EQ(result.getMessage().find("eRE_NoDecrease") == std::string::npos, static_cast<bool>(result));
    nbUnmoved += !result;
  }
  EXPECT_GT(nbUnmoved, 0);
}

}  // namespace
