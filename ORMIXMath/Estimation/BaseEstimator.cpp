#include <ORMIXMath/Estimation/BaseEstimator.h>
#include <ORMIXMath/Estimation/Samples.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

#include <algorithm>
#include <boost/numeric/ublas/vector.hpp>
#include <cassert>
#include <cmath>
#include <string>

namespace ormix {

template class VersionedLevel<BaseEstimator, BaseSerializationObject>;

namespace {

bool allFinite(const RealVector& values) {
  return std::all_of(values.begin(), values.end(), [](omReal64 value) { return std::isfinite(value); });
}

BoolResult checkCount(const BaseEstimator& estimator, std::size_t given, std::size_t needed) {
  if (given >= needed) return {};
  return failure(estimator.getClassName() + ": " + std::to_string(given) + " samples were given, at least " +
                 std::to_string(needed) + " are needed");
}

BoolResult checkDimension(const BaseEstimator& estimator, std::size_t dimension, const std::string& whose) {
  if (dimension == estimator.getSampleDimension()) return {};
  return failure(estimator.getClassName() + ": " + whose + " of dimension " + std::to_string(dimension) +
                 " while dimension " + std::to_string(estimator.getSampleDimension()) + " is needed");
}

BoolResult checkSamples(const BaseEstimator& estimator, const SampleView& samples, std::size_t needed) {
  const BoolResult count = checkCount(estimator, samples.nbSamples, needed);
  return count ? checkDimension(estimator, samples.dimension, "the samples are") : count;
}

BoolResult checkSamples(const BaseEstimator& estimator, const DataSet& dataSet, std::size_t needed) {
  const BoolResult count = checkCount(estimator, dataSet.size(), needed);
  if (!count) return count;
  for (std::size_t i = 0; i < dataSet.size(); ++i)
    if (dataSet[i].size() != estimator.getSampleDimension())
      return checkDimension(estimator, dataSet[i].size(), "sample " + std::to_string(i) + " is");
  return {};
}

BoolResult checkParams(const BaseEstimator& estimator, const RealVector& params) {
  if (params.size() != estimator.getNbParams())
    return failure(estimator.getClassName() + ": " + std::to_string(params.size()) + " parameters were given, " +
                   std::to_string(estimator.getNbParams()) + " are needed");
  if (!allFinite(params)) return failure(estimator.getClassName() + ": a parameter is NaN or infinite");
  return {};
}

/// Checks the samples, calls `process` with a new vector, and moves that to `params` if it holds a valid model.
template <class SampleSet, class Process>
BoolResult estimate(const BaseEstimator& estimator, const SampleSet& samples, RealVector& params,
                    const Process& process) {
  const BoolResult checked = checkSamples(estimator, samples, estimator.getMinimalDataSize());
  if (!checked) return checked;
  RealVector found(estimator.getNbParams());
  BoolResult result = process(found);
  if (!result) return result;
  if (found.size() != estimator.getNbParams() || !allFinite(found))
    return failure(estimator.getClassName() +
                   ": the samples lead to parameters that are NaN or infinite (are all values finite?)");
  params.swap(found);
  return result;
}

/// Checks the samples and the parameters, calls `process` with a new vector, and moves that to `residuals` on success.
template <class SampleSet, class Process>
BoolResult evaluate(const BaseEstimator& estimator, const SampleSet& samples, std::size_t nbSamples,
                    const RealVector& params, RealVector& residuals, const Process& process) {
  BoolResult checked = checkSamples(estimator, samples, 1);
  if (checked) checked = checkParams(estimator, params);
  if (!checked) return checked;
  RealVector found(nbSamples);
  BoolResult result = process(found);
  if (result) residuals.swap(found);
  return result;
}

}  // namespace

BaseEstimator::~BaseEstimator() = default;

void BaseEstimator::initBase(std::size_t minimalDataSize, std::size_t nbParams, std::size_t sampleDimension) {
  assert(minimalDataSize > 0 && nbParams > 0 && sampleDimension > 0);
  _minimalDataSize = minimalDataSize;
  _nbParams = nbParams;
  _sampleDimension = sampleDimension;
}

BoolResult BaseEstimator::computeEstimation(const DataSet& dataSet, RealVector& params) {
  return estimate(*this, dataSet, params, [&](RealVector& found) { return processEstimation(dataSet, found); });
}

BoolResult BaseEstimator::computeEstimation(const SampleView& samples, RealVector& params) {
  return estimate(*this, samples, params, [&](RealVector& found) { return processViewEstimation(samples, found); });
}

BoolResult BaseEstimator::computeResiduals(const DataSet& dataSet, const RealVector& params,
                                           RealVector& residuals) const {
  return evaluate(*this, dataSet, dataSet.size(), params, residuals,
                  [&](RealVector& found) { return processResiduals(dataSet, params, found); });
}

BoolResult BaseEstimator::computeResiduals(const SampleView& samples, const RealVector& params,
                                           RealVector& residuals) const {
  return evaluate(*this, samples, samples.nbSamples, params, residuals,
                  [&](RealVector& found) { return processViewResiduals(samples, params, found); });
}

// The checks are repeated since processEstimation() and processResiduals() can be called directly.
BoolResult BaseEstimator::processEstimation(const DataSet& dataSet, RealVector& params) {
  BoolResult result = checkSamples(*this, dataSet, _minimalDataSize);
  Samples samples;
  if (result) result = samples.assign(dataSet);
  if (!result) return result;
  params.resize(_nbParams, false);
  return processViewEstimation(samples.view(), params);
}

BoolResult BaseEstimator::processResiduals(const DataSet& dataSet, const RealVector& params,
                                           RealVector& residuals) const {
  BoolResult result = checkSamples(*this, dataSet, 1);
  if (result) result = checkParams(*this, params);
  Samples samples;
  if (result) result = samples.assign(dataSet);
  if (!result) return result;
  residuals.resize(dataSet.size(), false);
  return processViewResiduals(samples.view(), params, residuals);
}

omReal64 BaseEstimator::getResidualScale(const RealVector&) const { return 1; }

}  // namespace ormix
