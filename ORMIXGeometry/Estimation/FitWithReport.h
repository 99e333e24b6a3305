#pragma once

#include <ORMIXGeometry/Estimation/FitReport.h>
#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Estimation/BaseEstimator.h>
#include <ORMIXMath/Estimation/DistanceFit.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <boost/numeric/ublas/vector.hpp>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

/// \file
/// Fits of models of distances, from an estimator's parameters on, with a report; not installed.

namespace ormix::geom::detail {

/// The samples that a fit uses: those with a weight that the robust loop, if there is one, calls inliers.
struct UsedSamples {
  SampleView samples;         ///< The given ones, or `values`.
  SampleView weights;         ///< Theirs, as given or `weightValues`; empty for none.
  std::vector<bool> isUsed;   ///< For each sample that was given; empty when all are used.
  std::vector<bool> inliers;  ///< The same, of the robust loop; empty without one.
  EstimationStatus robust;    ///< How that loop ended, which may be without confidence.
  std::vector<omReal64> values;
  std::vector<omReal64> weightValues;
};

/// Checks the options, selects the samples and estimates the parameters from them. On failure the status is in
/// `result`.
BoolResult startFit(BaseEstimator& estimator, const SampleView& samples, const FitOptions& options, UsedSamples& used,
                    RealVector& params, FitResult& result);
/// Makes the indices of a status those of the samples that were given, where fewer are used.
void nameGivenSamples(const UsedSamples& used, EstimationStatus& status);
/// Completes a result with what it has for each sample that was given, and how the robust loop ended.
void finishFit(UsedSamples& used, std::size_t nbSamples, std::vector<omReal64> residuals, FitResult& result);

/// The report on a fit that failed.
FitReport failedReport(const char* name, const FitOptions& options, EstimationStatus status);

/// Estimates the parameters, takes them as the start `stateOf(model, params)` of a fit of `Model`, and answers the
/// report; on success `use(reported parameters)` is called.
template <class Model, class StateOf, class Use>
BoolResult fitWithReport(BaseEstimator& estimator, const char* name, const std::vector<std::string>& parameterNames,
                         const SampleView& samples, const FitOptions& options, FitReport& report,
                         const StateOf& stateOf, const Use& use) {
  UsedSamples used;
  RealVector params;
  FitResult found;
  BoolResult result = startFit(estimator, samples, options, used, params, found);
  if (result) {
    Model model(used.samples);
    DistanceModel::State state = stateOf(model, params);
    FitOptions usedOptions = options;
    usedOptions.weights = used.weights;
    result = fitDistances(model, usedOptions, state, found);
    if (result) {
      std::vector<omReal64> jacobian(model.nbReported * model.nbUnknowns);
      const omReal64 sign = model.report(state, found.params.data(), jacobian.data());
      model.use(samples);
      finishFit(used, samples.nbSamples, distancesFrom(model, state, sign), found);
      use(found.params);
      report = FitReport(name, parameterNames, std::move(found));
      return result;
    }
    nameGivenSamples(used, found.status);
  }
  report = failedReport(name, options, std::move(found.status));
  return result;
}

}  // namespace ormix::geom::detail
