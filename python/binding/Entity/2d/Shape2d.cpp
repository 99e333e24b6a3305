#include "../../Frame/Family.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/2d/Shape/Shape2d.h>

#include <pybind11/stl.h>
#include <algorithm>
#include <optional>

namespace ormix::python {
namespace {

using geom::RowIntersections;
using geom::Shape2d;
using Polygons = Shape2d::PolygonWithHolesColl;

void setPolygons(Shape2d& shape, const Polygons& polygons) {
  if (std::find(polygons.begin(), polygons.end(), nullptr) != polygons.end())
    throw py::type_error("polygons: None is no polygon");
  const Changing changing;
  shape.setPolygonWithHolesColl(polygons);
}

}  // namespace

void bindShape2d(py::module_& module) {
  bindEntity<Shape2d>(
      module, "Shape2d", py::make_tuple("row_intersections", "polygons"),
      "A region of an image: its pixels, and the polygons that bound its connected parts. `label` makes shapes of a\n"
      "mask. Nothing checks that both agree; measures and transforms use the polygons.\n\n"
      "row_intersections: the pixels, RowIntersections.\n"
      "polygons: sequence of PolygonWithHoles2d of float32, which are copied.\n\n"
      ">>> Shape2d(RowIntersections([[0, 2, 5]])).nb_pixels\n"
      "3")
      .def(py::init([](const std::optional<RowIntersections>& pixels, const Polygons& polygons) {
             auto shape = boost::make_shared<Shape2d>();
             if (pixels) shape->getRowIntersections() = *pixels;
             setPolygons(*shape, polygons);
             return shape;
           }),
           "row_intersections"_a = py::none(), "polygons"_a = py::tuple())
      .def_property(
          "row_intersections", [](const Shape2d& self) { return self.getRowIntersections(); },
          [](Shape2d& self, const RowIntersections& pixels) {
            const Changing changing;
            self.getRowIntersections() = pixels;
          },
          "A copy of the pixels. Assigning replaces them; the polygons stay.")
      .def_property(
          "polygons", [](const Shape2d& self) { return self.getPolygonWithHolesColl(); }, &setPolygons,
          "The polygons themselves, in a new list. Assigning replaces them by copies; the pixels stay.")
      .def_property_readonly("start_y", &Shape2d::getStartY, "The y of the first row of pixels.")
      .def_property_readonly("end_y", &Shape2d::getEndY, "The y after the last row of pixels.")
      .def_property_readonly("nb_pixels", &Shape2d::getNbPixels, "The number of pixels. Linear in the runs.")
      .def_property_readonly("nb_tot_polygons", &Shape2d::getNbTotPolygons,
                             "The number of rings of all polygons, holes included.")
      .def_property_readonly("nb_tot_points", &Shape2d::getNbTotPoints, "The number of vertices of all of them.")
      .def("clear", &Shape2d::clear, ChangingCall(), "Remove pixels and polygons.");
}

}  // namespace ormix::python
