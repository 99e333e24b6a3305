#include "../Frame/Arrays.h"
#include "../Frame/Calls.h"
#include "../Frame/Enumerations.h"
#include "../Frame/Errors.h"
#include "../Frame/Result.h"
#include "Tools.h"

#include <ORMIXGeometry/Tools/Form/FormZones.h>

#include <sstream>
#include <type_traits>

namespace ormix::python {
namespace {

using FormFunction = EstimationStatus (*)(const SampleView&, eFormReference, FormDeviation&);
using ZoneFunction = py::tuple (*)(const FormDeviation&, const SampleView&);

/// A deviation, how many coordinates its points have, and the entities of its zone.
struct Form : FormDeviation {
  int dimension = 0;
  py::tuple zone;

  py::tuple tupleOf(const SpatialPoint& p) const {
    return dimension == 2 ? py::make_tuple(p.x, p.y) : py::make_tuple(p.x, p.y, p.z);
  }
  py::list contactsOf(int side) const {
    py::list indices;
    for (const FormContact& contact : contacts)
      if (contact.side == side) indices.append(contact.index);
    return indices;
  }
};

/// The entities of the zone that a function of FormZones.h finds, from the points where it takes them.
template <auto zoneOf>
py::tuple entitiesOf(const FormDeviation& form, const SampleView& points) {
  const auto zone = [&] {
    if constexpr (std::is_invocable_v<decltype(zoneOf), const FormDeviation&, const SampleView&>)
      return zoneOf(form, points);
    else
      return zoneOf(form);
  }();
  return py::make_tuple(zone.reference, zone.inner, zone.outer);
}

template <int Dimension>
Form measured(FormFunction function, ZoneFunction zoneOf, const py::object& points, eFormReference reference) {
  const auto rows = matrixOf<omReal64>(points, Dimension, "points");
  const SampleView view{rows.data(), static_cast<std::size_t>(rows.shape(0)), Dimension};
  Form form;
  form.dimension = Dimension;
  const EstimationStatus status = [&] {
    const Reading reading;
    return function(view, reference, form);
  }();
  if (status) {
    form.zone = zoneOf(form, view);
    return form;
  }
  std::ostringstream text;
  text << status;
  raiseError(text.str());
}

template <int Dimension>
void bindOne(py::module_& module, const char* name, FormFunction function, ZoneFunction zoneOf, const char* doc) {
  module.def(
      name,
      [function, zoneOf](const py::object& points, eFormReference reference) {
        return measured<Dimension>(function, zoneOf, points, reference);
      },
      "points"_a, enumerator("reference", eFR_MinimumZone), doc);
}

}  // namespace

void bindForm(py::module_& module) {
  bindEnumeration<eFormReference>(module, "The element that form deviations are measured from.");
  bindEnumeration<eFormOptimum>(module, "What is known of an element that is the best of its kind.");
  Result<Form>(module, "FormDeviation", "How far points are from a line, plane, circle, sphere or cylinder.")
      .value("reference", &Form::reference, "What it is measured from.")
      .value("deviation", &Form::deviation, "The width of the zone that holds all points.")
      .value(
          "point", [](const Form& self) { return self.tupleOf(self.point); },
          "Of the line, plane or axis, or the centre.")
      .value(
          "direction", [](const Form& self) { return self.tupleOf(self.direction); },
          "Of the line or axis, or the normal of the plane; zeros of circles and spheres.")
      .value("radius", &Form::radius, "Of the circle, sphere or cylinder; 0 of lines and planes.")
      .value("lowest", &Form::lowest, "The least distance of the points.")
      .value("highest", &Form::highest, "The greatest distance of the points.")
      .value(
          "outer_contacts", [](const Form& self) { return self.contactsOf(1); },
          "The indices of the points that hold the outer or upper limit.")
      .value(
          "inner_contacts", [](const Form& self) { return self.contactsOf(-1); },
          "The indices of the points that hold the inner or lower limit.")
      .value("imbalance", &Form::imbalance, "What the contacts lack to hold the element: 0 to rounding.")
      .value("optimum", &Form::optimum, "Whether the element is known to be the best of all, or the best near it.")
      .hidden(
          "zone", [](const Form& self) { return self.zone; },
          "The element as an entity, and the limits between which all points lie: (reference, inner, outer), lines,\n"
          "planes, circles, spheres, or for axes cylinders that end where the points end.");
  bindOne<2>(
      module, "planar_straightness", planarStraightness, entitiesOf<geom::zoneOfLine>,
      "Straightness of points of the plane, an array of shape (n, 2): of least squares or of the minimum zone.\n\n"
      ">>> planar_straightness([[0, 0], [1, 0.5], [2, 0]]).deviation\n"
      "0.5");
  bindOne<3>(
      module, "spatial_straightness", spatialStraightness, entitiesOf<geom::zoneOfCylinder>,
      "Straightness of points of space, an array of shape (n, 3): the diameter of the cylinder around the line of\n"
      "least squares, or of the smallest one near it.");
  bindOne<3>(
      module, "flatness", flatness, entitiesOf<geom::zoneOfPlane>,
      "Flatness of points, an array of shape (n, 3): of least squares or of the minimum zone, which is the width\n"
      "of the convex hull.");
  bindOne<2>(module, "roundness", roundness, entitiesOf<geom::zoneOfCircle>,
             "Roundness of points, an array of shape (n, 2), of any reference; the best circle of all.\n\n"
             "Error for points on a line, and where an inscribed circle grows without end.\n\n"
             ">>> points = [[2, 0], [0, 2], [-2, 0], [0, -2], [1, 1], [-1, 1], [-1, -1], [1, -1]]\n"
             ">>> round(roundness(points).deviation, 6)\n"
             "0.585786\n"
             ">>> round(roundness(points, \"eFR_MaximumInscribed\").radius, 6)\n"
             "1.414214\n"
             ">>> [circle.radius for circle in roundness(points).zone[1:]] == [roundness(points).lowest, 2]\n"
             "True");
  bindOne<3>(
      module, "sphericity", sphericity, entitiesOf<geom::zoneOfSphere>,
      "Sphericity of points, an array of shape (n, 3), of any reference.\n\n"
      "Zones and circumscribed spheres are the best of all, inscribed ones the best near that of least squares.");
  bindOne<3>(module, "cylindricity", cylindricity, entitiesOf<geom::zoneOfCylinder>,
             "Cylindricity of points, an array of shape (n, 3), of any reference; the best near the cylinder of least\n"
             "squares.");
}

}  // namespace ormix::python
