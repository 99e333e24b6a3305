#include "../Frame/Result.h"
#include "Estimators.h"

#include <ORMIXGeometry/Estimation/Uncertainty.h>

#include <boost/smart_ptr/make_shared_object.hpp>

namespace ormix::python {
namespace {

using geom::FitReport;
using geom::UncertainValue;

template <class Measure>
void bindMeasure(py::module_& module, const char* name, const Measure& measure, const char* doc) {
  module.def(
      name,
      [measure](const FitReport& report) {
        UncertainValue value;
        check(measure(report, value), FitReport::s_className);
        return value;
      },
      "report"_a, doc);
}

void bindValue(py::module_& module) {
  Result<UncertainValue>(module, "UncertainValue", "A value and its standard deviation; its text has k = 2.")
      .value("value", &UncertainValue::value, "In the unit of the samples, its square or its cube.")
      .value("standard_uncertainty", &UncertainValue::standardUncertainty, "One standard deviation.");
  py::reinterpret_borrow<py::class_<UncertainValue>>(module.attr("UncertainValue"))
      .def("__str__",
           [](const UncertainValue& self) { return geom::withUncertainty(self.value, self.standardUncertainty); });
}

void bindConsequences(py::module_& module) {
  const auto image = [](const FitReport& report, const auto& by) {
    const auto moved = boost::make_shared<FitReport>();
    check(geom::transformed(report, by, *moved), FitReport::s_className);
    return moved;
  };
  const char* doc = "The report on the image of a fitted entity by a transform, or by a transform with its report.";
  module.def(
      "transformed",
      [image](const FitReport& report, const geom::BaseGeometryTransform2d& by) { return image(report, by); },
      "report"_a, "by"_a, doc);
  module.def(
      "transformed",
      [image](const FitReport& report, const geom::BaseGeometryTransform3d& by) { return image(report, by); },
      "report"_a, "by"_a, doc);
  module.def(
      "transformed", [image](const FitReport& report, const FitReport& by) { return image(report, by); }, "report"_a,
      "by"_a, doc);
  using Value = UncertainValue;
  bindMeasure(
      module, "uncertain_area", [](const FitReport& r, Value& v) { return geom::area(r, v); },
      "The area of a fitted entity, of space that of its surface, as an UncertainValue.");
  bindMeasure(
      module, "uncertain_perimeter", [](const FitReport& r, Value& v) { return geom::perimeter(r, v); },
      "The perimeter of a fitted planar entity, as an UncertainValue.");
  bindMeasure(
      module, "uncertain_volume", [](const FitReport& r, Value& v) { return geom::volume(r, v); },
      "The volume of a fitted solid, as an UncertainValue.");
  module.def(
      "uncertain_distance",
      [](const FitReport& a, const FitReport& b) {
        UncertainValue value;
        check(geom::distance(a, b, value), FitReport::s_className);
        return value;
      },
      "a"_a, "b"_a, "The distance of two fitted entities, whose fits are independent, as an UncertainValue.");
}

}  // namespace

void bindUncertainties(py::module_& module) {
  bindValue(module);
  bindConsequences(module);
}

}  // namespace ormix::python
