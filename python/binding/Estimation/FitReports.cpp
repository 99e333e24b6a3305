#include "../Frame/Errors.h"
#include "../Frame/Object.h"
#include "FitArguments.h"

#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Estimation/2d/ErrorEllipse.h>
#include <ORMIXGeometry/Estimation/FitReport.h>

#include <pybind11/stl.h>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <sstream>

namespace ormix::python {
namespace {

using geom::FitReport;

py::array_t<bool> flagsOf(const std::vector<bool>& flags) {
  py::array_t<bool> array(static_cast<py::ssize_t>(flags.size()));
  std::copy(flags.begin(), flags.end(), array.mutable_data());
  return array;
}

// The index of a parameter that is given by its index, from the end where it is negative, or by its name.
std::size_t indexOf(const FitReport& report, const py::object& parameter) {
  if (!py::isinstance<py::str>(parameter)) {
    if (PyIndex_Check(parameter.ptr()) == 0) throw py::type_error("parameter: its name or index was wanted");
    const auto nb = static_cast<py::ssize_t>(report.params.size());
    const py::ssize_t index = PyNumber_AsSsize_t(parameter.ptr(), PyExc_IndexError);
    if (PyErr_Occurred() != nullptr) throw py::error_already_set();
    if (index < -nb || index >= nb) throw py::index_error("there is no parameter " + std::to_string(index));
    return static_cast<std::size_t>(index < 0 ? index + nb : index);
  }
  const auto& names = report.parameterNames;
  const auto found = std::find(names.begin(), names.end(), py::cast<std::string>(parameter));
  if (found == names.end()) throw py::key_error(py::cast<std::string>(parameter));
  return static_cast<std::size_t>(found - names.begin());
}

py::array_t<omReal64> covarianceOf(const FitReport& report) {
  const auto nb = static_cast<py::ssize_t>(report.params.size());
  return py::array_t<omReal64>({nb, nb}, report.covariance.data());
}

py::array_t<omReal64> uncertaintiesOf(const FitReport& report) {
  std::vector<omReal64> all;
  for (std::size_t i = 0; i < report.params.size(); ++i) all.push_back(report.standardUncertainty(i));
  return copyOf(all);
}

void bindStatus(py::module_& module) {
  using Status = EstimationStatus;
  py::class_<Status>(module, "EstimationStatus", "How an estimation ended, as data. True where it succeeded.")
      .def_readonly("code", &Status::code, "What went wrong, or eEC_Success.")
      .def_readonly("quantity", &Status::quantity, "What was compared, as \"rank\"; empty where nothing was.")
      .def_readonly("value", &Status::value, "Its value.")
      .def_readonly("threshold", &Status::threshold, "The bound that the value misses.")
      .def_readonly("indices", &Status::indices, "The first samples that are to blame, at most 16.")
      .def_readonly("advice", &Status::advice, "What would help.")
      .def_readonly("message", &Status::message, "The text of the failure.")
      .def("__bool__", [](const Status& self) { return static_cast<bool>(self); })
      .def("__repr__", [](const Status& self) {
        std::ostringstream text;
        text << '<' << self << '>';
        return text.str();
      });
}

void bindReport(py::module_& module) {
  ClassOf<FitReport, BaseSerializationObject>(
      module, "FitReport",
      "What a fit found, how sure it is and how it came about, of `fit_circle(points, report=True)` and its like.\n\n"
      ">>> circle, report = og.fit_circle([[1, 0], [0, 1.1], [-1, 0], [0, -1]], report=True)\n"
      ">>> report.params.round(3).tolist(), report.covariance.shape, report.degrees_of_freedom\n"
      "([0.0, 0.051, 1.026], (3, 3), 1)")
      .def(py::init<>())
      .def_property_readonly(
          "model", [](const FitReport& self) { return self.model; }, "The class that was fitted.")
      .def_property_readonly(
          "method", [](const FitReport& self) { return self.method; }, "What was minimised.")
      .def_property_readonly(
          "parameter_names", [](const FitReport& self) { return self.parameterNames; }, "One for each parameter.")
      .def_property_readonly(
          "params", [](const FitReport& self) { return copyOf(self.params); }, "The parameters, radians for angles.")
      .def_property_readonly("covariance", &covarianceOf, "Their covariance, of shape (n, n); NaN where it is unknown.")
      .def_property_readonly("standard_uncertainties", &uncertaintiesOf, "Their standard deviations.")
      .def_property_readonly(
          "sigma0", [](const FitReport& self) { return self.sigma0; }, "Standard deviation of a sample of weight 1.")
      .def_property_readonly(
          "degrees_of_freedom", [](const FitReport& self) { return self.degreesOfFreedom; },
          "Samples that were used, less parameters.")
      .def_property_readonly(
          "residuals", [](const FitReport& self) { return copyOf(self.residuals); },
          "A distance for each sample, signed where the model has sides.")
      .def_property_readonly(
          "weights", [](const FitReport& self) { return copyOf(self.weights); },
          "The weight of each sample in the last step; empty when all are 1.")
      .def_property_readonly(
          "condition_number", [](const FitReport& self) { return self.conditionNumber; },
          "Ratio of the largest singular value of the Jacobian to the smallest.")
      .def_property_readonly(
          "rank", [](const FitReport& self) { return self.rank; }, "How many parameters the samples determine.")
      .def_property_readonly(
          "rank_threshold", [](const FitReport& self) { return self.rankThreshold; },
          "The part of the largest singular value up to which one counts as zero.")
      .def_property_readonly(
          "nb_iterations", [](const FitReport& self) { return self.nbIterations; }, "Steps of the refinement.")
      .def_property_readonly(
          "inliers", [](const FitReport& self) { return flagsOf(self.inliers); },
          "A mask of the samples that the robust loop kept; empty without one.")
      .def_property_readonly(
          "status", [](const FitReport& self) { return self.status; }, "How the fit ended, an EstimationStatus.")
      .def(
          "standard_uncertainty",
          [](const FitReport& self, const py::object& parameter) {
            return self.standardUncertainty(indexOf(self, parameter));
          },
          "parameter"_a, "The standard deviation of a parameter, by its name or index.")
      .def(
          "correlation",
          [](const FitReport& self, const py::object& first, const py::object& second) {
            return self.correlation(indexOf(self, first), indexOf(self, second));
          },
          "first"_a, "second"_a, "The correlation of two parameters, by their names or indices.")
      .def("__str__", [](const FitReport& self) { return toString(self); })
      .def("__repr__", [](const FitReport& self) { return "<FitReport " + toString(self) + '>'; });
}

}  // namespace

void bindFitReports(py::module_& module) {
  bindEnumeration<eEstimationCode>(module, "Why an estimation failed, or that it did not.");
  bindEnumeration<eFitMethod>(module, "What a fit minimises.");
  bindEnumeration<eLoss>(module, "How much a residual costs.");
  bindStatus(module);
  bindReport(module);
  module.def(
      "error_ellipse",
      [](const FitReport& report, const py::object& first, const py::object& second, omReal64 probability) {
        auto ellipse = boost::make_shared<geom::Ellipse2d<omReal64>>();
        check(geom::errorEllipse(report, indexOf(report, first), indexOf(report, second), probability, *ellipse));
        return ellipse;
      },
      "report"_a, "first"_a, "second"_a, "probability"_a = 0.95,
      "The Ellipse2d in which two parameters of a FitReport lie with a probability, by their names or indices.\n\n"
      ">>> circle, report = og.fit_circle([[1, 0], [0, 1.1], [-1, 0], [0, -1]], report=True)\n"
      ">>> og.error_ellipse(report, 'center x', 'center y').major_radius > 0\n"
      "True");
  module.def("with_uncertainty", &geom::withUncertainty, "value"_a, "standard_uncertainty"_a, "k"_a = 2,
             "A value with k standard deviations, these to two digits and the value to the same place.\n\n"
             ">>> og.with_uncertainty(4.1093, 0.0155)\n"
             "'4.109 ± 0.031 (k = 2)'");
}

}  // namespace ormix::python
