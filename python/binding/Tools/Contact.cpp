#include "../Frame/Calls.h"
#include "../Frame/Result.h"
#include "Tools.h"

#include <ORMIXGeometry/Entity/2d/Segment/Segment2d.h>
#include <ORMIXGeometry/Tools/Contact/ContactLength.h>
#include <ORMIXGeometry/Tools/Contact/ContactSurface.h>
#include <ORMIXGeometry/Tools/Contact/RegionContacts.h>

#include <pybind11/stl.h>
#include <boost/smart_ptr/make_shared_object.hpp>

namespace ormix::python {
namespace {

using Planar = geom::BaseGeometryEntity2d;
using Spatial = geom::BaseGeometryEntity3d;

// The vertices of each piece as an array of shape (n, 2).
std::vector<py::array> polylinesOf(const geom::ContactSide2d& side) {
  std::vector<py::array> polylines;
  for (const geom::ContactPiece2d& piece : side.pieces) {
    std::vector<omReal64> xy;
    for (const auto& segment : piece) {
      const auto& begin = segment.getPoint0();
      xy.insert(xy.end(), {begin.getX(), begin.getY()});
    }
    if (!piece.empty()) xy.insert(xy.end(), {piece.back().getPoint1().getX(), piece.back().getPoint1().getY()});
    polylines.push_back(
        py::array_t<omReal64>(std::vector<py::ssize_t>{static_cast<py::ssize_t>(xy.size() / 2), 2}, xy.data()));
  }
  return polylines;
}

// The graph as columns: one row a contact, one a region.
py::dict tableOf(const geom::RegionContacts& graph) {
  std::vector<py::ssize_t> first, second;
  std::vector<omReal64> onFirst, onSecond, length, perimeter, freeLength;
  for (const geom::RegionContact& contact : graph.contacts) {
    first.push_back(static_cast<py::ssize_t>(contact.first));
    second.push_back(static_cast<py::ssize_t>(contact.second));
    onFirst.push_back(contact.lengthOnFirst);
    onSecond.push_back(contact.lengthOnSecond);
    length.push_back(contact.length());
  }
  for (const geom::RegionBorder& border : graph.borders) {
    perimeter.push_back(border.perimeter);
    freeLength.push_back(border.freeLength);
  }
  return py::dict(
      "contacts"_a = py::dict("first"_a = copyOf(first), "second"_a = copyOf(second), "length"_a = copyOf(length),
                              "length_on_first"_a = copyOf(onFirst), "length_on_second"_a = copyOf(onSecond)),
      "borders"_a = py::dict("perimeter"_a = copyOf(perimeter), "free_length"_a = copyOf(freeLength)));
}

void bindPlanarContact(py::module_& module) {
  using geom::Contact2d;
  using geom::ContactSide2d;
  Result<ContactSide2d>(module, "ContactSide2d", "The parts of the boundary of a region that are in contact.")
      .value("length", &ContactSide2d::length, "Of all parts.")
      .hidden("polylines", &polylinesOf, "Each part as an array of its vertices, (n, 2).");
  Result<Contact2d>(module, "Contact2d", "What two regions have in contact.")
      .value("length", &Contact2d::length, "The mean of both lengths.")
      .value("on_a", &Contact2d::onA, "On the boundary of the first region.")
      .value("on_b", &Contact2d::onB, "On the boundary of the second region.");
  module.def("contact_length", &geom::contactLength, "a"_a, "b"_a, "gap"_a = 0.0, LongCall(),
             "The length along which two regions touch, or face each other within a gap.\n\n"
             "Regions are polygons, polygons with holes and shapes.\n\n"
             ">>> a = Polygon2d([[0, 0], [2, 0], [2, 2], [0, 2]])\n"
             ">>> b = Polygon2d([[2, 1], [4, 1], [4, 3], [2, 3]])\n"
             ">>> contact_length(a, b)\n"
             "1.0");
  module.def("contact", py::overload_cast<const Planar&, const Planar&, omReal64>(&geom::contact), "a"_a, "b"_a,
             "gap"_a = 0.0, LongCall(), "The same with the parts of both boundaries.");
  module.def(
      "contacts",
      [](const std::vector<geom::GeometryEntity2dPtr>& regions, omReal64 gap) {
        const auto graph = [&] {
          const Reading reading;
          return geom::contacts(regions, gap);
        }();
        return tableOf(graph);
      },
      "regions"_a, "gap"_a = 0.0,
      "Which regions of a list touch, and for how long: a graph with the regions as nodes.\n\n"
      "A dictionary of two dictionaries of columns: `contacts`, one row a pair with the indices `first` and `second`\n"
      "and its `length`, and `borders`, one row a region with its `perimeter` and its `free_length`. Where several\n"
      "regions are near, each point of a boundary is given to the nearest.");
}

void bindSpatialContact(py::module_& module) {
  using geom::Contact3d;
  using geom::ContactArea;
  using geom::ContactSurface;
  Result<ContactArea>(module, "ContactArea", "An area that is right to a bound.")
      .value("area", &ContactArea::area, "The area.")
      .value("bound", &ContactArea::bound, "The true area differs by at most this.");
  Result<ContactSurface>(module, "ContactSurface", "The areas along which two bodies are in contact.")
      .value("area", &ContactSurface::area, "The mean of both.")
      .value("bound", &ContactSurface::bound, "The true mean differs by at most this.")
      .value("on_a", &ContactSurface::onA, "On the first body.")
      .value("on_b", &ContactSurface::onB, "On the second body.");
  py::class_<Contact3d>(module, "Contact3d", "The areas in contact, and the parts of both surfaces as meshes.")
      .def_readonly("surface", &Contact3d::surface, "The areas.")
      .def_property_readonly(
          "on_a", [](const Contact3d& self) { return boost::make_shared<geom::Mesh3d<omReal64>>(self.onA); },
          "The part on the first body.")
      .def_property_readonly(
          "on_b", [](const Contact3d& self) { return boost::make_shared<geom::Mesh3d<omReal64>>(self.onB); },
          "The part on the second body.");
  module.def(
      "contact_surface",
      [](const Spatial& a, const Spatial& b, omReal64 gap, omReal64 tolerance, omReal64 effort) {
        return geom::contactSurface(a, b, gap, {tolerance, effort});
      },
      "a"_a, "b"_a, "gap"_a, "tolerance"_a = 0.01, "effort"_a = 200.0, LongCall(),
      "The area along which two bodies touch or face each other within a gap, with a bound of its error.\n\n"
      "`tolerance` is the bound that is wanted, as a share of the area; `effort` the most distances a triangle.");
  module.def(
      "contact",
      [](const Spatial& a, const Spatial& b, omReal64 gap, omReal64 tolerance, omReal64 effort) {
        return geom::contact(a, b, gap, {tolerance, effort});
      },
      "a"_a, "b"_a, "gap"_a, "tolerance"_a = 0.01, "effort"_a = 200.0, LongCall(),
      "The same with the parts of both surfaces.");
}

}  // namespace

void bindContact(py::module_& module) {
  bindPlanarContact(module);
  bindSpatialContact(module);
}

}  // namespace ormix::python
