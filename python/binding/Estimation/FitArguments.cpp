#include "FitArguments.h"

#include <boost/smart_ptr/make_shared_object.hpp>
#include <string>
#include <type_traits>

namespace ormix::python {
namespace {

/// Weights of one dimension, or covariances of shape (n, d, d), as rows.
SampleArray weightRows(const py::object& weights, std::size_t dimension) {
  auto numbers = numbersOf<omReal64>(weights, "weights");
  const auto d = static_cast<py::ssize_t>(dimension);
  if (numbers.ndim() == 1) return numbers.reshape({numbers.shape(0), py::ssize_t(1)});
  if (numbers.ndim() == 3 && numbers.shape(1) == d && numbers.shape(2) == d)
    return numbers.reshape({numbers.shape(0), d * d});
  const std::string side = std::to_string(dimension);
  throw py::value_error("weights: an array of shape (n,) or (n, " + side + ", " + side + ") was wanted");
}

/// An option that comes as any object.
/// \throw py::type_error that names the option, where pybind11 has a text about C++ types only
template <class T>
T optionOf(const std::string& name, const py::handle& value) {
  py::detail::make_caster<T> caster;
  if (!caster.load(value, true))
    throw py::type_error(name + ": " + py::cast<std::string>(py::repr(value)) + " is no value of it");
  return py::detail::cast_op<T>(caster);
}

}  // namespace

FitArguments::FitArguments(const Given& given, std::size_t dimension)
    : _isPlain(!given.report && given.method.is_none() && given.weights.is_none() && given.sigma == 0 &&
               given.loss == eLS_Squares && given.robust.is_none() && given.progress.is_none()),
      _isReported(given.report),
      _progress(given.progress) {
  if (!given.method.is_none()) _options.method = optionOf<eFitMethod>("method", given.method);
  if (!given.weights.is_none()) {
    _weights = weightRows(given.weights, dimension);
    _options.weights = samplesOf(_weights);
    // An empty array is one for no samples, and not none.
    if (_options.weights.empty()) throw py::value_error("weights: there are none");
  }
  _options.sigma = given.sigma;
  _options.loss = given.loss;
  _options.lossScale = given.lossScale;
  _options.nbMaxIterations = given.nbMaxIterations;
  _options.progress = _progress.callback();
  setRobust(given.robust);
}

void FitArguments::setRobust(const py::object& robust) {
  if (robust.is_none() || (py::isinstance<py::bool_>(robust) && !py::cast<bool>(robust))) return;
  _options.robust = &_robust;
  _robust.progress = _options.progress;
  if (py::isinstance<py::bool_>(robust)) return;
  if (!py::isinstance<py::dict>(robust))
    throw py::type_error("robust: True, or a dict of options of robust_estimation was wanted");
  for (const auto& [key, value] : py::reinterpret_borrow<py::dict>(robust)) {
    const std::string name = py::cast<std::string>(py::str(key));
    const auto set = [where = "robust: " + name, value = value](auto& option) {
      option = optionOf<std::decay_t<decltype(option)>>(where, value);
    };
    if (name == "method")
      set(_robust.method);
    else if (name == "seed")
      set(_robust.seed);
    else if (name == "threshold")
      set(_robust.threshold);
    else if (name == "confidence")
      set(_robust.confidence);
    else if (name == "nb_max_iterations")
      set(_robust.nbMaxIterations);
    else if (name == "local_optimisation")
      set(_robust.localOptimisation);
    else if (name == "max_false_alarms")
      set(_robust.maxFalseAlarms);
    else if (name == "is_ranked")
      set(_robust.isRanked);
    else
      throw py::value_error("robust: there is no option \"" + name + "\"");
  }
}

py::object FitArguments::answer(py::object entity, geom::FitReport&& report) const {
  if (!_isReported) return entity;
  return py::make_tuple(std::move(entity), boost::make_shared<geom::FitReport>(std::move(report)));
}

}  // namespace ormix::python
