#include <ORMIXGeometry/Estimation/FitWithReport.h>
#include <ORMIXMath/Estimation/RobustStatus.h>

#include <algorithm>

namespace ormix::geom::detail {
namespace {

BoolResult failed(EstimationStatus status, FitResult& result) {
  result.status = std::move(status);
  return failure(result.status.message);
}

/// Copies the samples, and their weights, that are used.
void gather(const SampleView& samples, const SampleView& weights, UsedSamples& used) {
  used.values.clear();
  used.weightValues.clear();
  for (std::size_t i = 0; i < samples.nbSamples; ++i) {
    if (!used.isUsed[i]) continue;
    used.values.insert(used.values.end(), samples[i], samples[i] + samples.dimension);
    if (!weights.empty()) used.weightValues.insert(used.weightValues.end(), weights[i], weights[i] + weights.dimension);
  }
  const auto nb = static_cast<std::size_t>(std::count(used.isUsed.begin(), used.isUsed.end(), true));
  used.samples = {used.values.data(), nb, samples.dimension};
  used.weights = weights.empty() ? SampleView() : SampleView{used.weightValues.data(), nb, weights.dimension};
}

/// Leaves out what the robust loop calls outliers among the samples that are used so far.
BoolResult leaveOutOutliers(BaseEstimator& estimator, const SampleView& samples, const FitOptions& options,
                            UsedSamples& used, FitResult& result) {
  RobustResult robust;
  const BoolResult found = robustEstimation(estimator, used.samples, *options.robust, robust);
  used.robust = robustStatus(found, robust, *options.robust, estimator.getMinimalDataSize());
  if (!found || used.robust.code == eEC_Stopped) return failed(std::move(used.robust), result);
  if (used.isUsed.empty()) used.isUsed.assign(samples.nbSamples, true);
  std::size_t next = 0;
  for (std::size_t i = 0; i < samples.nbSamples; ++i)
    if (used.isUsed[i]) used.isUsed[i] = robust.inliers[next++];
  used.inliers = used.isUsed;
  gather(samples, options.weights, used);
  return found;
}

}  // namespace

BoolResult startFit(BaseEstimator& estimator, const SampleView& samples, const FitOptions& options, UsedSamples& used,
                    RealVector& params, FitResult& result) {
  EstimationStatus checked = checkFitOptions(options, samples);
  if (!checked) return failed(std::move(checked), result);
  used.samples = samples;
  used.weights = options.weights;
  if (options.weights.dimension == 1) {
    const omReal64* weights = options.weights.data;
    if (std::find(weights, weights + samples.nbSamples, 0.0) != weights + samples.nbSamples) {
      used.isUsed.assign(samples.nbSamples, false);
      for (std::size_t i = 0; i < samples.nbSamples; ++i) used.isUsed[i] = weights[i] > 0;
      gather(samples, options.weights, used);
    }
  }
  BoolResult found;
  if (options.robust) found = leaveOutOutliers(estimator, samples, options, used, result);
  if (!found) return found;
  found = estimator.computeEstimation(used.samples, params);
  if (!found) {
    result.status = estimator.getStatus();
    nameGivenSamples(used, result.status);
  }
  return found;
}

void nameGivenSamples(const UsedSamples& used, EstimationStatus& status) {
  if (used.isUsed.empty() || status.indices.empty()) return;
  std::vector<std::size_t> given;
  for (std::size_t i = 0; i < used.isUsed.size(); ++i)
    if (used.isUsed[i]) given.push_back(i);
  for (std::size_t& index : status.indices) index = given[index];
}

void finishFit(UsedSamples& used, std::size_t nbSamples, std::vector<omReal64> residuals, FitResult& result) {
  result.residuals = std::move(residuals);
  result.inliers = std::move(used.inliers);
  result.status = std::move(used.robust);
  if (used.isUsed.empty()) return;
  std::vector<omReal64> weights(nbSamples, 0);
  std::size_t next = 0;
  for (std::size_t i = 0; i < nbSamples; ++i)
    if (used.isUsed[i]) weights[i] = result.weights.empty() ? 1 : result.weights[next++];
  result.weights = std::move(weights);
}

FitReport failedReport(const char* name, const FitOptions& options, EstimationStatus status) {
  FitResult failed;
  failed.method = options.method;
  failed.status = std::move(status);
  return FitReport(name, {}, std::move(failed));
}

}  // namespace ormix::geom::detail
