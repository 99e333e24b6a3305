#include "../../Frame/Family.h"
#include "../../Frame/Print.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/2d/Parabola/Parabola2d.h>
#include <ORMIXGeometry/Tools/Distance/ParabolaArc2d.h>

namespace ormix::python {
namespace {

using geom::Line2d;
using geom::Parabola2d;
using geom::ParabolaArc2d;
using Point = geom::Point2dData<omReal64>;

// Points take 16 bytes each.
constexpr omUInt32 s_mostSamples = omUInt32{1} << 28;

py::array_t<omReal64> sampleArc(const Parabola2d& parabola, omReal64 from, omReal64 to, omUInt32 nbPoints) {
  if (nbPoints > s_mostSamples) throw py::value_error("nb_points: at most " + std::to_string(s_mostSamples));
  const auto points = [&] {
    const Reading reading;
    return parabola.sampleArc(from, to, nbPoints);
  }();
  return py::array_t<omReal64>({static_cast<py::ssize_t>(points.size()), py::ssize_t{2}},
                               reinterpret_cast<const omReal64*>(points.data()));
}

void bindArc(py::module_& module) {
  py::class_<ParabolaArc2d> arc(module, "ParabolaArc2d",
                                "The part of a parabola between two abscissas, ends included, for distances.\n\n"
                                ">>> ParabolaArc2d(Parabola2d((0, 1), Line2d(0, np.pi / 2)), -1, 1).to_abscissa\n"
                                "1.0");
  arc.attr("__match_args__") = py::make_tuple("parabola", "from_abscissa", "to_abscissa");
  arc.def(py::init([](const Parabola2d& parabola, omReal64 from, omReal64 to) {
            return ParabolaArc2d{parabola, from, to};
          }),
          "parabola"_a, "from_abscissa"_a, "to_abscissa"_a)
      .def_property_readonly(
          "parabola", [](const ParabolaArc2d& self) { return self.parabola; }, "A copy of the parabola.")
      .def_readonly("from_abscissa", &ParabolaArc2d::fromAbscissa, "Where the arc begins.")
      .def_readonly("to_abscissa", &ParabolaArc2d::toAbscissa, "Where it ends.")
      .def(
          "__eq__",
          [](const py::object& a, const ParabolaArc2d& b) {
            const auto& arcA = py::cast<const ParabolaArc2d&>(a);
            return arcA.fromAbscissa == b.fromAbscissa && arcA.toAbscissa == b.toAbscissa &&
                   py::cast(arcA.parabola).equal(py::cast(b.parabola));
          },
          py::is_operator())
      .def("__repr__", &print)
      .def(py::pickle(
          [](const ParabolaArc2d& self) { return py::make_tuple(self.parabola, self.fromAbscissa, self.toAbscissa); },
          [](const py::tuple& state) {
            return ParabolaArc2d{state[0].cast<Parabola2d>(), state[1].cast<omReal64>(), state[2].cast<omReal64>()};
          }));
  arc.attr("__hash__") = py::none();
}

}  // namespace

void bindParabola2d(py::module_& module) {
  auto entity = bindEntity<Parabola2d>(module, "Parabola2d", py::make_tuple("focus", "directrix"),
                                       "The points as far from the focus as from a line, the directrix.\n\n"
                                       "focus: point (x, y).\n"
                                       "directrix: Line2d, which is copied.\n\n"
                                       ">>> Parabola2d(focus=(0, 1), directrix=Line2d(-1, np.pi / 2)).focal_length\n"
                                       "1.0");
  entity
      .def(py::init([](const Point& focus, const Line2d& directrix) {
             return boost::make_shared<Parabola2d>(focus, directrix);
           }),
           "focus"_a, "directrix"_a)
      .def_property_readonly("vertex", &Parabola2d::getVertex,
                             "The point nearest to the focus; the focus if degenerated.")
      .def_property_readonly("symmetry_axis", &Parabola2d::getSymmetryAxis,
                             "The line through the focus across the directrix.")
      .def_property_readonly("focal_length", &Parabola2d::getFocalLength, "The distance from the focus to the vertex.")
      .def_property_readonly("is_degenerated", &Parabola2d::isDegenerated, "Whether the focus is on the directrix.")
      .def("is_inside", &Parabola2d::isInside, "point"_a, "Whether a point is inside or on the parabola.")
      .def("is_strictly_inside", &Parabola2d::isStrictlyInside, "point"_a, "Whether a point is inside and not on it.")
      .def("abscissa", &Parabola2d::getAbscissa, "point"_a, "The signed distance of a point from the symmetry axis.")
      .def("point", &Parabola2d::getPoint, "abscissa"_a, "The point of the parabola at an abscissa.")
      .def("arc_length", &Parabola2d::computeArcLength, "from_abscissa"_a, "to_abscissa"_a,
           "The length between two abscissas, in either order.")
      .def("sample_arc", &sampleArc, "from_abscissa"_a, "to_abscissa"_a, "nb_points"_a,
           "Points at equal lengths along an arc, with both ends, as an array of shape (nb_points, 2); empty if the\n"
           "parabola is degenerated.");
  bindField(
      entity, "focus", &Parabola2d::getFocus, [](Parabola2d& self, const Point& focus) { self.setFocus(focus); },
      "The focus, (x, y).");
  const auto directrix = [](const Parabola2d& self) { return self.getDirectrix(); };
  bindField(entity, "directrix", directrix, &Parabola2d::setDirectrix, "A copy of the directrix.");
  bindArc(module);
}

}  // namespace ormix::python
