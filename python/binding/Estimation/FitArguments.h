#pragma once

#include "../Frame/Enumerations.h"
#include "../Frame/Progress.h"
#include "Estimators.h"

#include <ORMIXGeometry/Estimation/FitReport.h>
#include <ORMIXMath/Estimation/FitOptions.h>
#include <ORMIXMath/Estimation/RobustEstimation.h>

#include <string>

namespace ormix::python {

/// The keyword arguments of fits that can answer a report, and what they hold while the fit runs.
class FitArguments {
 public:
  /// What Python gives; None of `method` is orthogonal where any option is given, else the prescribed estimator.
  struct Given {
    bool report;
    py::object method;
    py::object weights;
    omReal64 sigma;
    eLoss loss;
    omReal64 lossScale;
    py::object robust;
    std::size_t nbMaxIterations;
    py::object progress;
  };

  /// \param dimension of the samples
  /// \throw py::type_error, py::value_error for arguments that are none
  FitArguments(const Given& given, std::size_t dimension);
  FitArguments(const FitArguments&) = delete;
  FitArguments& operator=(const FitArguments&) = delete;

  /// Whether the fit is that without options and report.
  bool isPlain() const { return _isPlain; }
  /// The options; valid as long as this object.
  const FitOptions& options() const { return _options; }
  /// Raises what the progress callback raised.
  void checkProgress() const { _progress.check(); }
  /// The entity, or with `report=True` both.
  py::object answer(py::object entity, geom::FitReport&& report) const;

 private:
  void setRobust(const py::object& robust);

  bool _isPlain;
  bool _isReported;
  SampleArray _weights;
  RobustOptions _robust;
  Progress _progress;
  FitOptions _options;
};

/// Adds a function of samples and the keyword arguments above, from the arguments of its samples on.
template <class Function, class... Arguments>
void defineFit(py::module_& module, const char* name, const Function& function, const std::string& doc,
               const Arguments&... arguments) {
  const FitOptions defaults;
  module.def(name, function, arguments..., py::kw_only(), "report"_a = false, "method"_a = py::none(),
             "weights"_a = py::none(), "sigma"_a = defaults.sigma, enumerator("loss", defaults.loss),
             "loss_scale"_a = defaults.lossScale, "robust"_a = py::none(),
             "nb_max_iterations"_a = defaults.nbMaxIterations, "progress"_a = py::none(), doc.c_str());
}

}  // namespace ormix::python
