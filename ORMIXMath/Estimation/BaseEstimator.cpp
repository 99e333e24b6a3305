#include <ORMIXMath/Estimation/BaseEstimator.h>
#include <ORMIXMath/Estimation/Samples.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

#include <algorithm>
#include <boost/numeric/ublas/vector.hpp>
#include <cassert>
#include <cmath>
#include <functional>
#include <numeric>
#include <string>
#include <vector>

namespace ormix {

template class VersionedLevel<BaseEstimator, BaseSerializationObject>;

namespace {

bool allFinite(const RealVector& values) {
  return std::all_of(values.begin(), values.end(), [](omReal64 value) { return std::isfinite(value); });
}

/// The failure for too few samples, or samples of another dimension than the estimator's; success when there is none.
EstimationStatus checkCount(const BaseEstimator& estimator, std::size_t given, std::size_t needed) {
  if (given >= needed) return {};
  return failedStatus(given == 0 && needed == 1 ? eEC_InvalidInput : eEC_TooFewSamples, "number of samples",
                      static_cast<omReal64>(given), static_cast<omReal64>(needed),
                      estimator.getClassName() + ": " + std::to_string(given) + " samples were given, at least " +
                          std::to_string(needed) + " are needed");
}

EstimationStatus checkDimension(const BaseEstimator& estimator, std::size_t dimension, const std::string& whose) {
  if (dimension == estimator.getSampleDimension()) return {};
  return failedStatus(eEC_InvalidInput, "dimension of a sample", static_cast<omReal64>(dimension),
                      static_cast<omReal64>(estimator.getSampleDimension()),
                      estimator.getClassName() + ": " + whose + " of dimension " + std::to_string(dimension) +
                          " while dimension " + std::to_string(estimator.getSampleDimension()) + " is needed");
}

EstimationStatus checkSamples(const BaseEstimator& estimator, const SampleView& samples, std::size_t needed) {
  EstimationStatus count = checkCount(estimator, samples.nbSamples, needed);
  return count ? checkDimension(estimator, samples.dimension, "the samples are") : count;
}

EstimationStatus checkSamples(const BaseEstimator& estimator, const DataSet& dataSet, std::size_t needed) {
  EstimationStatus count = checkCount(estimator, dataSet.size(), needed);
  if (!count) return count;
  for (std::size_t i = 0; i < dataSet.size(); ++i)
    if (dataSet[i].size() != estimator.getSampleDimension()) {
      EstimationStatus wrong = checkDimension(estimator, dataSet[i].size(), "sample " + std::to_string(i) + " is");
      wrong.indices = {i};
      return wrong;
    }
  return {};
}

/// Whether checkSamples() finds nothing, which mostly is so: a status takes as long to make as a line through 20
/// points.
/// @{
bool areSamples(const BaseEstimator& estimator, const SampleView& samples, std::size_t needed) {
  return samples.nbSamples >= needed && samples.dimension == estimator.getSampleDimension();
}
bool areSamples(const BaseEstimator& estimator, const DataSet& dataSet, std::size_t needed) {
  return dataSet.size() >= needed && std::all_of(dataSet.begin(), dataSet.end(), [&](const RealVector& sample) {
           return sample.size() == estimator.getSampleDimension();
         });
}
/// @}

BoolResult checkParams(const BaseEstimator& estimator, const RealVector& params) {
  if (params.size() != estimator.getNbParams())
    return failure(estimator.getClassName() + ": " + std::to_string(params.size()) + " parameters were given, " +
                   std::to_string(estimator.getNbParams()) + " are needed");
  if (!allFinite(params)) return failure(estimator.getClassName() + ": a parameter is NaN or infinite");
  return {};
}

/// The first samples that are NaN or infinite.
/// @{
std::vector<std::size_t> samplesNotFinite(const SampleView& samples) {
  std::vector<std::size_t> found;
  for (std::size_t i = 0; i < samples.nbSamples && found.size() < EstimationStatus::s_nbMaxIndices; ++i)
    if (!std::all_of(samples[i], samples[i] + samples.dimension, [](omReal64 value) { return std::isfinite(value); }))
      found.push_back(i);
  return found;
}
std::vector<std::size_t> samplesNotFinite(const DataSet& dataSet) {
  std::vector<std::size_t> found;
  for (std::size_t i = 0; i < dataSet.size() && found.size() < EstimationStatus::s_nbMaxIndices; ++i)
    if (!allFinite(dataSet[i])) found.push_back(i);
  return found;
}
/// @}

/// The first samples that repeat an earlier one, bit for bit. O(samples · log samples).
/// @{
std::vector<std::size_t> repeatedSamples(std::size_t nbSamples,
                                         const std::function<int(std::size_t, std::size_t)>& compare) {
  std::vector<std::size_t> order(nbSamples), found;
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    const int sign = compare(a, b);
    return sign != 0 ? sign < 0 : a < b;
  });
  for (std::size_t k = 1; k < nbSamples; ++k)
    if (compare(order[k - 1], order[k]) == 0) found.push_back(order[k]);
  std::sort(found.begin(), found.end());
  found.resize(std::min(found.size(), EstimationStatus::s_nbMaxIndices));
  return found;
}
template <class Row>
int compareRows(const Row& a, const Row& b, std::size_t dimension) {
  for (std::size_t d = 0; d < dimension; ++d)
    if (a[d] != b[d]) return a[d] < b[d] ? -1 : 1;
  return 0;
}
std::vector<std::size_t> repeatedSamples(const SampleView& samples) {
  return repeatedSamples(samples.nbSamples, [&](std::size_t a, std::size_t b) {
    return compareRows(samples[a], samples[b], samples.dimension);
  });
}
std::vector<std::size_t> repeatedSamples(const DataSet& dataSet) {
  return repeatedSamples(dataSet.size(), [&](std::size_t a, std::size_t b) {
    return compareRows(dataSet[a], dataSet[b], dataSet[a].size());
  });
}
/// @}

/// Checks the samples and the parameters, calls `process` with a new vector, and moves that to `residuals` on success.
template <class SampleSet, class Process>
BoolResult evaluate(const BaseEstimator& estimator, const SampleSet& samples, std::size_t nbSamples,
                    const RealVector& params, RealVector& residuals, const Process& process) {
  if (!areSamples(estimator, samples, 1)) return failure(checkSamples(estimator, samples, 1).message);
  if (BoolResult checked = checkParams(estimator, params); !checked) return checked;
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

BoolResult BaseEstimator::fail(eEstimationCode code, std::string_view quantity, omReal64 value, omReal64 threshold,
                               BoolResult prescribed) {
  _status.code = code;
  _status.quantity.assign(quantity);
  _status.value = value;
  _status.threshold = threshold;
  return prescribed;
}

/// Checks the samples, calls `process` with a new vector, and moves that to `params` if it holds a valid model. Notes
/// the status.
template <class SampleSet, class Process>
BoolResult BaseEstimator::estimate(const SampleSet& samples, RealVector& params, const Process& process) {
  if (!_status) _status = {};
  if (!areSamples(*this, samples, _minimalDataSize)) {
    _status = checkSamples(*this, samples, _minimalDataSize);
    return failure(_status.message);
  }
  RealVector found(_nbParams);
  BoolResult result = process(found);
  if (result && (found.size() != _nbParams || !allFinite(found)))
    result = fail(
        eEC_NotFinite, {}, 0, 0,
        failure(getClassName() + ": the samples lead to parameters that are NaN or infinite (are all values finite?)"));
  if (result) {
    if (!_status) _status = {};
    params.swap(found);
    return result;
  }
  if (_status) _status.code = eEC_Unspecified;
  _status.indices = samplesNotFinite(samples);
  if (!_status.indices.empty()) {
    _status.code = eEC_InvalidInput;
    _status.quantity.clear();
    _status.value = _status.threshold = 0;
  } else {
    _status.indices = repeatedSamples(samples);
  }
  _status.advice = adviceAgainst(_status.code);
  _status.message = result.getMessage();
  return result;
}

BoolResult BaseEstimator::computeEstimation(const DataSet& dataSet, RealVector& params) {
  return estimate(dataSet, params, [&](RealVector& found) { return processEstimation(dataSet, found); });
}

BoolResult BaseEstimator::computeEstimation(const SampleView& samples, RealVector& params) {
  return estimate(samples, params, [&](RealVector& found) { return processViewEstimation(samples, found); });
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
  if (!areSamples(*this, dataSet, _minimalDataSize))
    return failure(checkSamples(*this, dataSet, _minimalDataSize).message);
  Samples samples;
  if (BoolResult result = samples.assign(dataSet); !result) return result;
  params.resize(_nbParams, false);
  return processViewEstimation(samples.view(), params);
}

BoolResult BaseEstimator::processResiduals(const DataSet& dataSet, const RealVector& params,
                                           RealVector& residuals) const {
  if (!areSamples(*this, dataSet, 1)) return failure(checkSamples(*this, dataSet, 1).message);
  BoolResult result = checkParams(*this, params);
  Samples samples;
  if (result) result = samples.assign(dataSet);
  if (!result) return result;
  residuals.resize(dataSet.size(), false);
  return processViewResiduals(samples.view(), params, residuals);
}

omReal64 BaseEstimator::getResidualScale(const RealVector&) const { return 1; }

}  // namespace ormix
