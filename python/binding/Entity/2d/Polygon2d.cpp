#include "../../Frame/Enumerations.h"
#include "../../Frame/Family.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>

namespace ormix::python {
namespace {

template <class T>
void setPoints(geom::Polygon2d<T>& polygon, const py::object& values) {
  auto points = pointsOf<geom::Point2dData<T>>(values);
  const Changing changing;
  requireNoView(polygon.getPointColl().data(), "points");
  polygon.getPointColl() = std::move(points);
}

}  // namespace

void bindPolygon2d(py::module_& module) {
  bindEnumeration<geom::ePolygon2dType>(module, "The role of a ring.");
  bindFamily<geom::Polygon2d>(
      module, "Polygon2d", py::make_tuple("points", "type"),
      "The region bounded by one ring of vertices, in their order. The ring may be stored open or closed.\n\n"
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
                "Whether the last vertex repeats the first.");
      });
}

}  // namespace ormix::python
