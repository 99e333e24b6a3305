#include "../AsType.h"
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
            .def_property_readonly("area", &Circle::area, "The area inside.")
            .def_property_readonly("perimeter", &Circle::perimeter, "The length of the circle.")
            .def("signed_distance", &Circle::signedDistance, "point"_a,
                 "The distance of a point to the center less the radius: negative inside.")
            .def("distance", &Circle::distance, "point"_a, "The distance of a point to the curve, not to the disk.");
        bindField(entity, "center", &Circle::center, &Circle::setCenter, "The center, (x, y).");
        bindField(entity, "radius", &Circle::getRadius, &Circle::setRadius,
                  "The radius, in the unit of the coordinates.");
        bindAsType(entity, [](const auto& circle, auto to) {
          using TOut = decltype(to);
          return geom::Circle2d<TOut>(geom::cast<TOut>(circle.center()), castScalar<TOut>(circle.getRadius()));
        });
      });
}

}  // namespace ormix::python
