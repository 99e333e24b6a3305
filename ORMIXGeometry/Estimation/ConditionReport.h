#pragma once

#include <ORMIXGeometry/Estimation/FitReport.h>
#include <ORMIXGeometry/Estimation/FitWithReport.h>
#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Estimation/ConditionFit.h>
#include <ORMIXMath/Estimation/FitOptions.h>

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

/// The residuals of all samples that were given, in their unit.
template <class Frame>
std::vector<omReal64> residualsOf(const Frame& frame, const typename Frame::Model& model, const SampleView& samples) {
  using Model = typename Frame::Model;
  constexpr std::size_t K = Model::s_nbConditions, M = Model::s_sampleDimension;
  std::vector<omReal64> residuals(samples.nbSamples);
  Conditions<K, Model::s_nbTangents, M> conditions;
  std::array<omReal64, M> framed;
  for (std::size_t i = 0; i < samples.nbSamples; ++i) {
    frame.toFrame(samples[i], framed.data());
    model.evaluate(framed.data(), conditions);
    omReal64 square = 0;
    for (const omReal64 value : conditions.values) square += value * value;
    residuals[i] = (K == 1 ? conditions.values[0] : std::sqrt(square)) / frame.unit();
  }
  return residuals;
}

/// Fits the model of the frame. `use` receives what the entity or transform is made of after a success.
/// \param names of the parameters
template <class Frame, class Use>
BoolResult reportOf(const char* model, std::vector<std::string> names, const SampleView& samples,
                    const FitOptions& options, FitReport& report, const Use& use) {
  typename Frame::Estimator estimator;
  UsedSamples used;
  RealVector params;
  FitResult found;
  BoolResult result = startFit(estimator, samples, options, used, params, found);
  if (result) {
    const Frame frame(used.samples, params);
    const FramedFit<Frame> framed(frame, used.samples, used.weights, options);
    typename Frame::Model fitted = frame.start();
    result = fitConditions(framed.samples(), framed.options, fitted, found);
    if (result) {
      finishFit(used, samples.nbSamples, residualsOf(frame, fitted, samples), found);
      if (framed.covariances.empty()) found.sigma0 /= frame.unit();
      const bool isMoved = found.nbIterations > 0;
      found.params = frame.params(fitted, isMoved);
      found.covariance = propagated(frame.byTangent(fitted), found.covariance, Frame::Model::s_nbTangents);
      use(frame.parts(fitted, isMoved));
      report = FitReport(model, std::move(names), std::move(found));
      return result;
    }
    nameGivenSamples(used, found.status);
  }
  report = failedReport(model, options, std::move(found.status));
  return result;
}

}  // namespace ormix::geom::detail
