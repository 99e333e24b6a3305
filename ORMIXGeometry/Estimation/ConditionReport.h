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
/// class with `Estimator`, `Model` and, for coordinates of its own with a mean near 0 and a spread near 1:
///
/// - `Frame(samples, params)`, from the samples that are used and what the estimator found of them;
/// - `start()`, the model in the frame; `unit()`, a power of two by which lengths are multiplied there;
/// - `samples()`, the SampleFrame;
/// - `params(model, isMoved)` and `byTangent(model)`, the parameters that are reported, where the model did not move
/// from
///   its start those of the estimator, and their derivatives by the tangents; `parts(model, isMoved)`, what the entity
///   or transform is made of.

namespace ormix::geom::detail {

/// What is fitted: samples and weights as they are. Frames that do more than shift and scale have their own.
template <class Frame>
struct FramedSamples {
  SampleView samples, weights;
  FramedSamples(const Frame& /*frame*/, const SampleView& given, const SampleView& theirWeights)
      : samples(given), weights(theirWeights) {}
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

/// The residuals of all samples that were given, in their unit; `found` has those of the ones that are used.
template <class Frame>
std::vector<omReal64> residualsOf(const Frame& frame, const typename Frame::Model& model, const SampleView& samples,
                                  const UsedSamples& used, std::vector<omReal64>& found) {
  using Model = typename Frame::Model;
  constexpr std::size_t K = Model::s_nbConditions, M = Model::s_sampleDimension;
  if (used.isUsed.empty()) {
    // A power of two: nothing is rounded.
    const omReal64 length = 1 / frame.unit();
    for (omReal64& residual : found) residual *= length;
    return std::move(found);
  }
  std::vector<omReal64> residuals(samples.nbSamples);
  Conditions<K, Model::s_nbTangents, M> conditions;
  std::array<omReal64, M> framed;
  const SampleFrame<M> by = frame.samples();
  const FramedSamples<Frame> all(frame, samples, {});
  for (std::size_t i = 0; i < samples.nbSamples; ++i) {
    for (std::size_t m = 0; m < M; ++m) framed[m] = (all.samples[i][m] - by.shift[m]) * by.scale[m];
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
    typename Frame::Model fitted = frame.start();
    FitOptions inFrame = options;
    const FramedSamples<Frame> framed(frame, used.samples, used.weights);
    inFrame.weights = framed.weights;
    // With covariances distances are in standard deviations, whatever the unit.
    const omReal64 unit = used.weights.dimension > 1 ? 1 : frame.unit();
    inFrame.sigma *= unit;
    inFrame.lossScale *= unit;
    result = fitConditions(framed.samples, frame.samples(), inFrame, fitted, found);
    if (result) {
      finishFit(used, samples.nbSamples, residualsOf(frame, fitted, samples, used, found.residuals), found);
      found.sigma0 /= unit;
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
