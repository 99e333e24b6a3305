#pragma once

#include "../Frame/Arrays.h"
#include "../Frame/Calls.h"
#include "../Frame/Errors.h"

#include <ORMIXMath/Estimation/BaseEstimator.h>
#include <ORMIXSerialization/Object/BaseSerializationObject.h>

#include <boost/numeric/ublas/vector.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>
#include <string>

namespace ormix::python {

/// Adds the classes of the estimators.
void bindEstimators(py::module_& module);
/// Adds `FitReport`, with the enumerations of fits. Before bindFits().
void bindFitReports(py::module_& module);
/// Adds `fit_circle` and its like.
void bindFits(py::module_& module);
/// Adds `UncertainValue` and what follows from reports. After bindFitReports().
void bindUncertainties(py::module_& module);
/// Adds `robust_estimation` with its result, and the refinement of circles and spheres. After bindEstimators().
void bindRobustEstimation(py::module_& module);

using EstimatorPtr = boost::shared_ptr<BaseEstimator>;

/// Rows of numbers from Python, read in place where they are omReal64 and C-contiguous.
using SampleArray = py::array_t<omReal64, py::array::c_style>;

/// The rows as samples; valid as long as the array.
inline SampleView samplesOf(const SampleArray& rows) {
  return {rows.data(), static_cast<std::size_t>(rows.shape(0)), static_cast<std::size_t>(rows.shape(1))};
}

/// Samples for an estimator.
/// \throw py::value_error when they have another number of columns
inline SampleArray samplesFor(const BaseEstimator& estimator, const py::object& values) {
  return matrixOf<omReal64>(values, static_cast<py::ssize_t>(estimator.getSampleDimension()), "samples");
}

/// Raises `Error` when a fit to samples failed. Where it is for a sample that is not finite, its text names that, as
/// the library has only its indices.
/// \param name of the samples in the text
void checkFit(const BoolResult& result, const SampleArray& rows, const std::string& className,
              const char* name = "samples");

/// A vector from an array of one dimension, and back.
/// @{
RealVector vectorOf(const py::object& values, const char* name);
py::array_t<omReal64> arrayOf(const RealVector& values);
/// @}

/// The entity or transform whose parameters an estimator of the library computes.
/// \throw Error when there are not as many as it has
py::object modelOf(const BaseEstimator& estimator, const RealVector& params);

}  // namespace ormix::python
