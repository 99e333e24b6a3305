#include <ORMIXGeometry/Estimation/2d/Circle2dCostFunction.h>
#include <ORMIXGeometry/Estimation/2d/Circle2dEstimator.h>

#include <boost/numeric/ublas/matrix.hpp>
#include <limits>

#include "../EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

const std::string s_rankMessage =
    "Can't estimate circle 2d from cloud of points, insufficient matrix rank for estimation";

Values onCircle(omReal64 cx, omReal64 cy, omReal64 r, omReal64 from, omReal64 to, std::size_t count, omReal64 noise = 0,
                unsigned seed = 1) {
  Random random(seed);
  Values values;
  for (std::size_t i = 0; i < count; ++i) {
    const omReal64 t = random.uniform(from, to);
    const omReal64 radius = r + noise * random.noise();
    values.insert(values.end(), {cx + radius * std::cos(t), cy + radius * std::sin(t)});
  }
  return values;
}

/// Relative to the radius.
omReal64 error(const RealVector& params, omReal64 cx, omReal64 cy, omReal64 r) {
  return std::max({std::abs(params(0) - cx), std::abs(params(1) - cy), std::abs(params(2) - r)}) / r;
}

TEST(Circle2dEstimator, PassesThroughThreePoints) {
  const RealVector params = fitted<Circle2dEstimator>({1, 0, 0, 1, -1, 0});
  EXPECT_LE(error(params, 0, 0, 1), 1e-15);
  EXPECT_EQ(failureOf<Circle2dEstimator>({0, 0, 1, 1, 2, 2}), s_rankMessage);
  EXPECT_EQ(failureOf<Circle2dEstimator>({1e9, 3, 1e9 + 1, 3.5, 1e9 + 2, 4}), s_rankMessage);
}

TEST(Circle2dEstimator, RefusesCollinearPoints) {
  Values values;
  for (int i = 0; i < 50; ++i) values.insert(values.end(), {1e6 + i, 0.3 * (1e6 + i) - 7});
  EXPECT_EQ(failureOf<Circle2dEstimator>(values), s_rankMessage);
}

TEST(Circle2dEstimator, IsExactOnExactData) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const omReal64 cx = random.uniform(-2, 2);
    const omReal64 cy = random.uniform(-2, 2);
    const omReal64 r = random.uniform(1, 3);
    EXPECT_LE(error(fitted<Circle2dEstimator>(onCircle(cx, cy, r, 0, 6.28, 50, 0, seed)), cx, cy, r), 1e-14);
    EXPECT_LE(error(fitted<Circle2dEstimator>(onCircle(1e6, -1e6, 1, 0, 6.28, 50, 0, seed)), 1e6, -1e6, 1), 1e-9);
    const omReal64 five = 5 * 3.141592653589793 / 180;
    EXPECT_LE(error(fitted<Circle2dEstimator>(onCircle(0, 0, 1, cx, cx + five, 100, 0, seed)), 0, 0, 1), 1e-11);
  }
}

TEST(Circle2dEstimator, MovesAndScalesWithItsData) {
  const Values values = onCircle(0.25, -0.5, 1.5, 0, 4, 64, 0.05, 3);
  const RealVector params = fitted<Circle2dEstimator>(values);
  for (const omReal64 scale : {0x1p-400, 0x1p-20, 0x1p30, 0x1p400}) {
    Values scaled = values;
    for (omReal64& value : scaled) value *= scale;
    const RealVector result = fitted<Circle2dEstimator>(scaled) / scale;
    EXPECT_LE(error(result, params(0), params(1), params(2)), 1e-14) << scale;
  }
}

TEST(Circle2dEstimator, MinimisesItsResidualsOnPublishedPoints) {
  // Gander, Golub and Strebel 1994, Least-Squares Fitting of Circles and Ellipses, BIT 34, 558-578.
  const Values points{1, 7, 2, 6, 5, 8, 7, 7, 9, 5, 3, 7};
  const RealVector params = fitted<Circle2dEstimator>(points);
  expectLeastSquares<Circle2dEstimator>(points, params);
  const RealVector residuals = residualsOf<Circle2dEstimator>(points, params);
  // Stationary: the derivatives by the three unknowns vanish.
  omReal64 sum = 0;
  omReal64 byX = 0;
  omReal64 byY = 0;
  for (std::size_t i = 0; i < residuals.size(); ++i) {
    sum += residuals(i);
    byX += residuals(i) * (points[2 * i] - params(0));
    byY += residuals(i) * (points[2 * i + 1] - params(1));
  }
  EXPECT_NEAR(sum, 0, 1e-12);
  EXPECT_NEAR(byX, 0, 1e-12);
  EXPECT_NEAR(byY, 0, 1e-12);
}

TEST(Circle2dEstimator, ResidualsAreAlgebraicAndSigned) {
  const RealVector residuals = residualsOf<Circle2dEstimator>({1, 2, 4, 2, 1, 5, 3, 2}, vectorOf({1, 2, 2}));
  EXPECT_EQ(valuesOf(residuals), (Values{-4, 5, 5, 0}));
  EXPECT_EQ(Circle2dEstimator().getResidualScale(vectorOf({1, 2, 2})), 4);
}

TEST(Circle2dCostFunction, HasOneEquationForEachPoint) {
  Circle2dCostFunction function;
  ASSERT_TRUE(function.init(dataSetOf({3, 5, 0, 0}, 2)));
  EXPECT_EQ(function.getNbEquations(), 2u);
  RealVector values;
  ASSERT_TRUE(function.processEquations(vectorOf({2, 3, 4}), values));
  EXPECT_EQ(valuesOf(values), (Values{1 + 4 - 16, 4 + 9 - 16}));
  RealMatrix jacobian;
  ASSERT_TRUE(function.processJacobian(vectorOf({2, 3, 4}), jacobian));
  // Not the derivative (intended): the first two columns carry the centre's coordinates.
  EXPECT_EQ(jacobian(0, 0), -2 * 1 * 2);
  EXPECT_EQ(jacobian(0, 1), -2 * 2 * 3);
  EXPECT_EQ(jacobian(0, 2), -8);
  EXPECT_EQ(jacobian(1, 0), 2 * 2 * 2);
  EXPECT_EQ(jacobian(1, 1), 2 * 3 * 3);
  function.clear();
  EXPECT_EQ(function.getNbEquations(), 0u);
  EXPECT_FALSE(function.processEquations(vectorOf({2, 3}), values));
}

TEST(Circle2dCostFunction, RefinementNeverWorsens) {
  Circle2dEstimator estimator;
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    const Values values = onCircle(5, 3, 2, 0, 3, 40, 0.05, seed);
    const RealVector start = vectorOf({4.5, 3.4, 1.7});
    RealVector refined;
    const BoolResult result = estimator.refineEstimation(dataSetOf(values, 2), start, refined);
    ASSERT_TRUE(result) << result.getMessage();
    EXPECT_LE(sumOfSquares<Circle2dEstimator>(values, refined), sumOfSquares<Circle2dEstimator>(values, start));
  }
}

TEST(Circle2dCostFunction, RefinementSaysHowItEnded) {
  const Circle2dEstimator estimator;
  int nbUnmoved = 0;
  for (unsigned seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE(seed);
    // The factors of the Jacobian are of different sign here: steps climb in y.
    const Values values = onCircle(5, -5, 2, 0, 3, 40, 0.05, seed);
    const RealVector start = vectorOf({5, -5, 2});
    RefinementResult refined;
    ASSERT_TRUE(estimator.refineEstimation(dataSetOf(values, 2), start, refined));
    const omReal64 atStart = sumOfSquares<Circle2dEstimator>(values, start) / 2;
    EXPECT_NEAR(refined.initialCost, atStart, 1e-12 * atStart);
    EXPECT_LE(refined.cost, refined.initialCost);
    EXPECT_EQ(refined.end, eRE_NoDecrease);
    RealVector params = vectorOf({42});
    const BoolResult result = estimator.refineEstimation(dataSetOf(values, 2), start, params);
    // A success has moved; what has not says so.
    EXPECT_EQ(static_cast<bool>(result), refined.cost < refined.initialCost);
    EXPECT_EQ(valuesOf(params), result ? valuesOf(refined.params) : Values{42});
    EXPECT_EQ(result.getMessage().find("eRE_NoDecrease") == std::string::npos, static_cast<bool>(result));
    nbUnmoved += !result;
  }
  EXPECT_GT(nbUnmoved, 0);
}

TEST(Circle2dCostFunction, SaysWhyItCannotBeInitialised) {
  const std::string start = "Can't initialize circle 2d cost function\n";
  Circle2dEstimator estimator;
  RealVector params = vectorOf({42});
  const Values bad{1, 2, std::numeric_limits<omReal64>::quiet_NaN(), 3};
  for (const DataSet& dataSet : {DataSet{}, dataSetOf({1, 2, 3}, 3), dataSetOf(bad, 2)}) {
    const BoolResult result = estimator.refineEstimation(dataSet, vectorOf({0, 0, 1}), params);
    EXPECT_FALSE(result);
    EXPECT_EQ(result.getMessage().substr(0, start.size()), start);
    EXPECT_GT(result.getMessage().size(), start.size());
    EXPECT_EQ(valuesOf(params), Values{42});
  }
}

}  // namespace
