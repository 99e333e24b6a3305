#pragma once

#include <ORMIXMath/Estimation/BaseEstimator.h>

#include <boost/numeric/ublas/vector.hpp>
#include <cstddef>
#include <initializer_list>

#include "support/Checks.h"
#include "support/Random.h"

/// Samples for the tests of estimators, and what all of them ask of a result.
namespace estimation {

using namespace ormix;
using support::s_infinity;
using support::s_nan;

using Values = std::vector<omReal64>;

inline SampleView viewOf(const Values& values, std::size_t dimension) {
  return {values.data(), values.size() / dimension, dimension};
}

inline DataSet dataSetOf(const Values& values, std::size_t dimension) {
  DataSet dataSet;
  for (std::size_t i = 0; i + dimension <= values.size(); i += dimension) {
    RealVector& sample = dataSet.emplace_back(dimension);
    for (std::size_t d = 0; d < dimension; ++d) sample(d) = values[i + d];
  }
  return dataSet;
}

inline RealVector vectorOf(std::initializer_list<omReal64> values) {
  RealVector vector(values.size());
  std::copy(values.begin(), values.end(), vector.begin());
  return vector;
}

inline Values valuesOf(const RealVector& vector) { return {vector.begin(), vector.end()}; }

using support::Random;

/// The parameters, after a success that is one.
template <class Estimator>
RealVector fitted(const Values& values) {
  Estimator estimator;
  RealVector params;
  const BoolResult result = estimator.computeEstimation(viewOf(values, estimator.getSampleDimension()), params);
  EXPECT_TRUE(result) << result.getMessage();
  if (!result) return RealVector(estimator.getNbParams(), 0);
  for (const omReal64 param : params) EXPECT_TRUE(std::isfinite(param));
  return params;
}

/// The message of a failure that left the parameters alone.
template <class Estimator>
std::string failureOf(const Values& values) {
  Estimator estimator;
  RealVector params = vectorOf({42});
  const BoolResult result = estimator.computeEstimation(viewOf(values, estimator.getSampleDimension()), params);
  EXPECT_FALSE(result);
  EXPECT_EQ(valuesOf(params), Values{42});
  return result.getMessage();
}

template <class Estimator>
RealVector residualsOf(const Values& values, const RealVector& params) {
  const Estimator estimator;
  RealVector residuals;
  const BoolResult result =
      estimator.computeResiduals(viewOf(values, estimator.getSampleDimension()), params, residuals);
  EXPECT_TRUE(result) << result.getMessage();
  return residuals;
}

template <class Estimator>
omReal64 largestResidual(const Values& values, const RealVector& params) {
  omReal64 largest = 0;
  for (const omReal64 residual : residualsOf<Estimator>(values, params))
    largest = std::isnan(residual) ? residual : std::max(largest, std::abs(residual));
  return largest;
}

template <class Estimator>
omReal64 sumOfSquares(const Values& values, const RealVector& params) {
  const RealVector residuals = residualsOf<Estimator>(values, params);
  return inner_prod(residuals, residuals);
}

/// No parameter, changed a little, makes the sum of squared residuals smaller.
template <class Estimator>
void expectLeastSquares(const Values& values, const RealVector& params) {
  const omReal64 least = sumOfSquares<Estimator>(values, params);
  for (std::size_t k = 0; k < params.size(); ++k)
    for (const omReal64 step : {1e-2, -1e-2, 1e-4, -1e-4, 1e-6, -1e-6}) {
      RealVector changed = params;
      changed(k) += step;
      EXPECT_GE(sumOfSquares<Estimator>(values, changed), least * (1 - 1e-12)) << "parameter " << k << " by " << step;
    }
}

}  // namespace estimation
