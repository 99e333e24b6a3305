#include "../../Frame/Enumerations.h"
#include "../AsType.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>

#include <exception>
#include <new>
#include <string>

namespace ormix::python {
namespace {

template <class T>
void setPoints(geom::Polygon2d<T>& polygon, const py::object& values) {
  auto points = pointsOf<geom::Point2dData<T>>(values);
  const Changing changing;
  requireNoView(polygon.getPointColl().data(), "points");
  polygon.getPointColl() = std::move(points);
}

template <class T>
boost::shared_ptr<geom::Polygon2d<T>> fromString(const std::string& text) {
  auto polygon = boost::make_shared<geom::Polygon2d<T>>();
  try {
    geom::fromString(*polygon, text);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& error) {
    throw py::value_error(error.what());
  }
  return polygon;
}

// Calls a function that may move the points.
template <class T, class Change>
void resize(geom::Polygon2d<T>& polygon, Change change) {
  const Changing changing;
  requireNoView(polygon.getPointColl().data(), "points");
  change();
}

}  // namespace

void bindPolygon2d(py::module_& module) {
  bindEnumeration<geom::ePolygon2dType>(module, "The role of a ring.");
  bindFamily<geom::Polygon2d>(
      module, "Polygon2d", py::make_tuple("points", "type"),
      "The region bounded by one ring of vertices, in their order. The ring may be stored open or closed; measures "
      "take\n"
      "closed ones, counter-clockwise for the role of an exterior ring, clockwise for that of a hole.\n\n"
      ">>> Polygon2d([[0, 0], [4, 0], [4, 3]])\n"
      "Polygon2d(points=[[0.0, 0.0], [4.0, 0.0], [4.0, 3.0]])",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Polygon = geom::Polygon2d<T>;
        entity.attr("_defaults") = py::dict("type"_a = geom::eP2DT_Exterior);
        entity
            .def(py::init([](const py::object& points, geom::ePolygon2dType type) {
                   auto polygon = boost::make_shared<Polygon>();
                   polygon->getPointColl() = pointsOf<geom::Point2dData<T>>(points);
                   polygon->setPolygon2dType(type);
                   return polygon;
                 }),
                 "points"_a, "type"_a = geom::eP2DT_Exterior)
            .def_static(
                "from_string", &fromString<T>, "text"_a,
                "The closed ring of a coordinate list as in WKT, \"1 1, 4 1, 4 5\". ValueError for other texts.")
            .def_property(
                "points",
                [](const boost::shared_ptr<Polygon>& self) { return viewOfPoints(self, self->getPointColl()); },
                &setPoints<T>,
                "The vertices as an array of shape (n, 2), a view. Assigning an array replaces them; while a view is\n"
                "alive that is a BufferError.")
            .def_property("type", &Polygon::getPolygon2dType,
                          py::cpp_function(&Polygon::setPolygon2dType, ChangingCall()), "The role of the ring.")
            .def("__len__", &Polygon::getNbPoints)
            .def_property_readonly(
                "is_closed", [](const Polygon& self) { return geom::isClosed(self); },
                "Whether the last vertex repeats the first.")
            .def(
                "close", [](Polygon& self) { resize(self, [&] { geom::closePolygon(self); }); },
                "Append the first vertex if the last one differs. Where both have the same x, an end that lies on a\n"
                "vertical edge is moved to the other instead.")
            .def(
                "clear", [](Polygon& self) { resize(self, [&] { self.clear(); }); }, "Remove all vertices.");
        bindAsType(entity);
      });
}

}  // namespace ormix::python
