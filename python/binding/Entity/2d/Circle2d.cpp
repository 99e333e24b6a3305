#include "../../Frame/Family.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>

namespace ormix::python {

void bindCircle2d(py::module_& module) {
  bindFamily<geom::Circle2d>(
      module, "Circle2d", py::make_tuple("center", "radius"),
      "The points at one distance, the radius, from the center. The radius is not checked.\n\n"
      ">>> Circle2d(center=(1, 2), radius=3)\n"
      "Circle2d(center=(1.0, 2.0), radius=3.0)",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Circle = geom::Circle2d<T>;
        entity.def(py::init<const geom::Point2dData<T>&, T>(), "center"_a, "radius"_a)
            .def_property("center", &Circle::center, py::cpp_function(&Circle::setCenter, ChangingCall()),
                          "The center, (x, y).")
            .def_property("radius", &Circle::getRadius, py::cpp_function(&Circle::setRadius, ChangingCall()),
                          "The radius, in the unit of the coordinates.")
            .def("signed_distance", &Circle::signedDistance, "point"_a,
                 "The distance of a point to the center less the radius: negative inside.");
      });
}

}  // namespace ormix::python
