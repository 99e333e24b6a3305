#pragma once

#include <ORMIXGeometry/Estimation/FitReport.h>
#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Estimation/ConditionFit.h>
#include <ORMIXMath/Estimation/FitOptions.h>
#include <ORMIXMath/Estimation/RobustEstimation.h>

#include <algorithm>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

/// \file
/// The fits with a report of what fitConditions() fits; not installed. What is particular to a model is its frame, a
/// class with `Estimator`, `Model` and, for samples in coordinates of its own with a mean near 0 and a spread near 1:
///
/// - `Frame(samples, params)`, from the samples that are used and what the estimator found of them;
/// - `start()`, the model in the frame; `unit()`, by which lengths are multiplied there;
/// - `toFrame(sample, framed)`, and `byFrame(sample, rows)`: the derivatives of the framed values by the given ones;
/// - `params(model, isMoved)` and `byTangent(model)`, the parameters that are reported, where the model did not move
/// from
///   its start those of the estimator, and their derivatives by the tangents; `parts(model, isMoved)`, what the entity
///   or transform is made of.

namespace ormix::geom::detail {

/// The samples with a weight that are no outliers, and their weights: copies only where some are left out.
class UsedSamples {
 public:
  UsedSamples(const SampleView& samples, const SampleView& weights, const std::vector<bool>& inliers)
      : _samples(samples), _weights(weights) {
    const bool isWeighted = weights.dimension == 1 && weights.nbSamples == samples.nbSamples;
    const auto isUsed = [&](std::size_t i) {
      return (inliers.empty() || inliers[i]) && (!isWeighted || weights[i][0] != 0);
    };
    const bool haveFewer = weights.nbSamples != 0 && weights.nbSamples != samples.nbSamples;
    for (std::size_t i = 0; i < samples.nbSamples; ++i)
      if (isUsed(i)) _indices.push_back(i);
    if (_indices.size() == samples.nbSamples || haveFewer) return;
    for (const std::size_t i : _indices) {
      _values.insert(_values.end(), samples[i], samples[i] + samples.dimension);
      if (!weights.empty()) _weightValues.insert(_weightValues.end(), weights[i], weights[i] + weights.dimension);
    }
    _samples = {_values.data(), _indices.size(), samples.dimension};
    if (!weights.empty()) _weights = {_weightValues.data(), _indices.size(), weights.dimension};
  }
  UsedSamples(const UsedSamples&) = delete;
  UsedSamples& operator=(const UsedSamples&) = delete;

  const SampleView& samples() const { return _samples; }
  const SampleView& weights() const { return _weights; }
  /// Of the samples that were given.
  const std::vector<std::size_t>& indices() const { return _indices; }

 private:
  SampleView _samples, _weights;
  std::vector<std::size_t> _indices;
  std::vector<omReal64> _values, _weightValues;
};

/// Fills the report with the failure and answers it.
inline BoolResult failedFit(EstimationStatus status, BoolResult result, FitReport& report) {
  FitReport failed;
  failed.model = report.model;
  failed.status = std::move(status);
  if (failed.status.message.empty()) failed.status.message = result.getMessage();
  report = std::move(failed);
  return result;
}

/// Outliers by the robust loop, where one is wanted.
inline BoolResult findInliers(BaseEstimator& estimator, const SampleView& samples, const FitOptions& options,
                              FitReport& report) {
  if (!options.robust) return {};
  RobustResult robust;
  BoolResult result = robustEstimation(estimator, samples, *options.robust, robust);
  if (!result) return failedFit(failedStatus(eEC_NoConsensus, {}, 0, 0), result, report);
  report.inliers = std::move(robust.inliers);
  return result;
}

/// What is in the frame of the samples, of the weights, and the options.
template <class Frame>
struct FramedFit {
  using Model = typename Frame::Model;
  static constexpr std::size_t M = Model::s_sampleDimension;
  using Rows = std::array<std::array<omReal64, M>, M>;

  std::vector<omReal64> values, covariances;
  FitOptions options;

  FramedFit(const Frame& frame, const SampleView& samples, const SampleView& weights, const FitOptions& given)
      : values(M * samples.nbSamples), options(given) {
    for (std::size_t i = 0; i < samples.nbSamples; ++i) frame.toFrame(samples[i], values.data() + M * i);
    options.weights = weights;
    // With covariances distances are in standard deviations, whatever the unit.
    const bool hasCovariances = weights.dimension == M * M && weights.nbSamples == samples.nbSamples;
    if (!hasCovariances) {
      options.sigma *= frame.unit();
      options.lossScale *= frame.unit();
      return;
    }
    covariances.resize(M * M * samples.nbSamples);
    for (std::size_t i = 0; i < samples.nbSamples; ++i)
      moveCovariance(frame, samples[i], weights[i], covariances.data() + M * M * i);
    options.weights = {covariances.data(), samples.nbSamples, M * M};
  }
  SampleView samples() const { return {values.data(), values.size() / M, M}; }

  static void moveCovariance(const Frame& frame, const omReal64* sample, const omReal64* from, omReal64* to) {
    Rows by;
    frame.byFrame(sample, by);
    Rows half{};
    for (std::size_t r = 0; r < M; ++r)
      for (std::size_t c = 0; c < M; ++c)
        for (std::size_t k = 0; k < M; ++k) half[r][c] += by[r][k] * from[k * M + c];
    for (std::size_t r = 0; r < M; ++r)
      for (std::size_t c = 0; c < M; ++c) {
        omReal64 sum = 0;
        for (std::size_t k = 0; k < M; ++k) sum += half[r][k] * by[c][k];
        to[r * M + c] = sum;
      }
  }
};

/// by · covariance · by', where `by` has n columns.
inline std::vector<omReal64> propagated(const std::vector<omReal64>& by, const std::vector<omReal64>& covariance,
                                        std::size_t n) {
  const std::size_t nbRows = by.size() / n;
  std::vector<omReal64> half(nbRows * n), result(nbRows * nbRows);
  for (std::size_t r = 0; r < nbRows; ++r)
    for (std::size_t c = 0; c < n; ++c)
      for (std::size_t k = 0; k < n; ++k) half[r * n + c] += by[r * n + k] * covariance[k * n + c];
  for (std::size_t r = 0; r < nbRows; ++r)
    for (std::size_t c = 0; c <= r; ++c) {
      for (std::size_t k = 0; k < n; ++k) result[r * nbRows + c] += half[r * n + k] * by[c * n + k];
      result[c * nbRows + r] = result[r * nbRows + c];
    }
  return result;
}

/// Gives residuals and weights their places among all samples and their unit.
template <class Frame>
void spreadResiduals(const Frame& frame, const typename Frame::Model& model, const SampleView& samples,
                     const UsedSamples& used, FitReport& report) {
  using Model = typename Frame::Model;
  constexpr std::size_t K = Model::s_nbConditions, M = Model::s_sampleDimension;
  const bool areAll = used.indices().size() == samples.nbSamples;
  if (!areAll) {
    std::vector<omReal64> weights(samples.nbSamples, 0), residuals(samples.nbSamples);
    for (std::size_t k = 0; k < used.indices().size(); ++k)
      weights[used.indices()[k]] = report.weights.empty() ? 1 : report.weights[k];
    Conditions<K, Model::s_nbTangents, M> conditions;
    std::array<omReal64, M> framed;
    for (std::size_t i = 0; i < samples.nbSamples; ++i) {
      frame.toFrame(samples[i], framed.data());
      model.evaluate(framed.data(), conditions);
      omReal64 square = 0;
      for (const omReal64 value : conditions.values) square += value * value;
      residuals[i] = K == 1 ? conditions.values[0] : std::sqrt(square);
    }
    report.weights = std::move(weights);
    report.residuals = std::move(residuals);
  }
  for (omReal64& residual : report.residuals) residual /= frame.unit();
}

/// Fits the model of the frame. `use` receives what the entity or transform is made of after a success.
/// \param names of the parameters
template <class Frame, class Use>
BoolResult reportOf(const char* model, std::vector<std::string> names, const SampleView& samples,
                    const FitOptions& options, FitReport& report, const Use& use) {
  FitReport found;
  found.model = model;
  typename Frame::Estimator estimator;
  BoolResult result = findInliers(estimator, samples, options, found);
  if (!result) return failedFit(found.status, result, report);
  const UsedSamples used(samples, options.weights, found.inliers);
  RealVector params;
  result = estimator.computeEstimation(used.samples(), params);
  if (!result) {
    EstimationStatus status = estimator.getStatus();
    for (std::size_t& index : status.indices) index = used.indices()[index];
    return failedFit(std::move(status), result, report);
  }
  const Frame frame(used.samples(), params);
  const FramedFit<Frame> framed(frame, used.samples(), used.weights(), options);
  typename Frame::Model fitted = frame.start();
  result = fitConditions(framed.samples(), framed.options, fitted, found);
  if (!result) {
    for (std::size_t& index : found.status.indices) index = used.indices()[index];
    return failedFit(found.status, result, report);
  }
  spreadResiduals(frame, fitted, samples, used, found);
  if (framed.covariances.empty()) found.sigma0 /= frame.unit();
  const bool isMoved = found.nbIterations > 0;
  found.params = frame.params(fitted, isMoved);
  found.covariance = propagated(frame.byTangent(fitted), found.covariance, Frame::Model::s_nbTangents);
  found.parameterNames = std::move(names);
  use(frame.parts(fitted, isMoved));
  report = std::move(found);
  return {};
}

}  // namespace ormix::geom::detail
