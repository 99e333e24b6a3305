#include <ORMIXGeometry/Estimation/3d/Sphere3dCostFunction.h>
#include <ORMIXGeometry/Estimation/3d/Sphere3dEstimator.h>

#include <boost/numeric/ublas/matrix.hpp>
#include <limits>

#include "../EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

const std::string s_rankMessage =
    "Can't estimate sphere 3d from cloud of points, insufficient matrix rank for estimation";
constexpr omReal64 s_degree = 3.141592653589793 / 180;

/// Points whose polar angle from a direction across all axes is at most `cap`.
Values onSphere(const RealVector& sphere, omReal64 cap, std::size_t count, unsigned seed, omReal64 noise = 0) {
  Random random(seed);
  Values values;
  for (std::size_t i = 0; i < count; ++i) {
    // In (1, 1, 1) / sqrt(3) and two vectors across it; the rounding of the frame is taken out by the length.
    const omReal64 z = random.uniform(std::cos(cap), 1);
    const omReal64 t = random.uniform(0, 6.28318);
    const omReal64 across = std::sqrt((1 - z) * (1 + z));
    const omReal64 u = across * std::cos(t) / std::sqrt(2.0);
    const omReal64 v = across * std::sin(t) / std::sqrt(6.0);
    const omReal64 w = z / std::sqrt(3.0);
    const omReal64 p[3] = {w + u + v, w - u + v, w - 2 * v};
    const omReal64 radius = (sphere(3) + noise * random.noise()) / std::hypot(p[0], p[1], p[2]);
    for (std::size_t k = 0; k < 3; ++k) values.push_back(sphere(k) + radius * p[k]);
  }
  return values;
}

/// Relative to the radius.
omReal64 error(const RealVector& params, const RealVector& sphere) {
  omReal64 largest = 0;
  for (std::size_t k = 0; k < 4; ++k) largest = std::max(largest, std::abs(params(k) - sphere(k)));
  return largest / sphere(3);
}

TEST(Sphere3dEstimator, IsExactOnExactData) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const RealVector sphere =
        vectorOf({random.uniform(-2, 2), random.uniform(-2, 2), random.uniform(-2, 2), random.uniform(1, 3)});
    EXPECT_LE(error(fitted<Sphere3dEstimator>(onSphere(sphere, 180 * s_degree, 60, seed)), sphere), 1e-13);
    const RealVector far = vectorOf({1e6, -1e6, 1e6, 1});
    EXPECT_LE(error(fitted<Sphere3dEstimator>(onSphere(far, 180 * s_degree, 60, seed)), far), 1e-9);
    const RealVector unit = vectorOf({0, 0, 0, 1});
    EXPECT_LE(error(fitted<Sphere3dEstimator>(onSphere(unit, 5 * s_degree, 200, seed)), unit), 1e-10);
  }
}

TEST(Sphere3dEstimator, PassesThroughFourPoints) {
  const Values points{1, 0, 0, 0, 1, 0, 0, 0, 1, -1, 0, 0};
  EXPECT_LE(error(fitted<Sphere3dEstimator>(points), vectorOf({0, 0, 0, 1})), 1e-15);
}

TEST(Sphere3dEstimator, RefusesFlatPoints) {
  for (const std::size_t count : {std::size_t{4}, std::size_t{50}})
    for (const omReal64 offset : {0.0, 1e6, 1e9}) {
      Random random(2);
      Values plan;
      Values line;
      for (std::size_t i = 0; i < count; ++i) {
        const omReal64 x = random.uniform(-10, 10);
        const omReal64 y = random.uniform(-10, 10);
        plan.insert(plan.end(), {offset + x, y - offset, 0.5 * x - 0.25 * y + offset});
        line.insert(line.end(), {offset + x, 0.25 * x, offset - x});
      }
      EXPECT_EQ(failureOf<Sphere3dEstimator>(plan), s_rankMessage) << count << " at " << offset;
      EXPECT_EQ(failureOf<Sphere3dEstimator>(line), s_rankMessage) << count << " at " << offset;
      EXPECT_EQ(failureOf<Sphere3dEstimator>(Values(3 * count, offset)), s_rankMessage) << count << " at " << offset;
    }
}

TEST(Sphere3dEstimator, MovesAndScalesWithItsData) {
  const RealVector sphere = vectorOf({0.25, -0.5, 0.75, 1.5});
  const Values values = onSphere(sphere, 2, 64, 3, 0.05);
  const RealVector params = fitted<Sphere3dEstimator>(values);
  for (const omReal64 scale : {0x1p-400, 0x1p-40, 0x1p30, 0x1p400}) {
    Values scaled = values;
    for (omReal64& value : scaled) value *= scale;
    EXPECT_LE(error(fitted<Sphere3dEstimator>(scaled) / scale, params), 1e-14) << scale;
  }
  Values far = values;
  for (omReal64& value : far) value += 1024;
  RealVector moved = fitted<Sphere3dEstimator>(far);
  for (std::size_t k = 0; k < 3; ++k) moved(k) -= 1024;
  EXPECT_LE(error(moved, params), 1e-11);
}

TEST(Sphere3dEstimator, MinimisesItsResiduals) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    const Values values = onSphere(vectorOf({1, 2, 3, 4}), 1.5, 30, seed, 0.2);
    expectLeastSquares<Sphere3dEstimator>(values, fitted<Sphere3dEstimator>(values));
  }
}

TEST(Sphere3dEstimator, ResidualsAreAlgebraicAndSigned) {
  const RealVector sphere = vectorOf({1, 2, 3, 2});
  EXPECT_EQ(valuesOf(residualsOf<Sphere3dEstimator>({1, 2, 3, 4, 2, 3, 1, 2, 1}, sphere)), (Values{-4, 5, 0}));
  EXPECT_EQ(Sphere3dEstimator().getResidualScale(sphere), 4);
}

TEST(Sphere3dCostFunction, HasOneEquationForEachPoint) {
  Sphere3dCostFunction function;
  ASSERT_TRUE(function.init(dataSetOf({3, 5, 7, 0, 0, 0}, 3)));
  EXPECT_EQ(function.getNbEquations(), 2u);
  EXPECT_EQ(function.getSampleDimension(), 3u);
  RealVector values;
  ASSERT_TRUE(function.processEquations(vectorOf({2, 3, 4, 5}), values));
  EXPECT_EQ(valuesOf(values), (Values{1 + 4 + 9 - 25, 4 + 9 + 16 - 25}));
  RealMatrix jacobian;
  ASSERT_TRUE(function.processJacobian(vectorOf({2, 3, 4, 5}), jacobian));
  // Not the derivative (intended): the first three columns carry the centre's coordinates.
  const omReal64 expected[2][4] = {{-2 * 1 * 2, -2 * 2 * 3, -2 * 3 * 4, -10}, {2 * 2 * 2, 2 * 3 * 3, 2 * 4 * 4, -10}};
  for (std::size_t i = 0; i < 2; ++i)
    for (std::size_t k = 0; k < 4; ++k) EXPECT_EQ(jacobian(i, k), expected[i][k]);
  function.clear();
  EXPECT_EQ(function.getNbEquations(), 0u);
  EXPECT_FALSE(function.processEquations(vectorOf({2, 3, 4}), values));
}

TEST(Sphere3dCostFunction, RefinementNeverWorsens) {
  const Sphere3dEstimator estimator;
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    const Values values = onSphere(vectorOf({5, 3, 2, 2}), 2, 40, seed, 0.05);
    const RealVector start = vectorOf({4.5, 3.4, 2.2, 1.7});
    RealVector refined;
    const BoolResult result = estimator.refineEstimation(dataSetOf(values, 3), start, refined);
    ASSERT_TRUE(result) << result.getMessage();
    EXPECT_LE(sumOfSquares<Sphere3dEstimator>(values, refined), sumOfSquares<Sphere3dEstimator>(values, start));
  }
}

TEST(Sphere3dCostFunction, SaysWhyItCannotBeInitialised) {
  const std::string start = "Can't initialize sphere 3d cost function\n";
  RealVector params = vectorOf({42});
  const Values bad{1, 2, 3, 4, std::numeric_limits<omReal64>::infinity(), 3};
  for (const DataSet& dataSet : {DataSet{}, dataSetOf({1, 2}, 2), dataSetOf(bad, 3)}) {
    const BoolResult result = Sphere3dEstimator().refineEstimation(dataSet, vectorOf({0, 0, 0, 1}), params);
    EXPECT_FALSE(result);
    EXPECT_EQ(result.getMessage().substr(0, start.size()), start);
    EXPECT_GT(result.getMessage().size(), start.size());
    EXPECT_EQ(valuesOf(params), Values{42});
  }
}

}  // namespace
