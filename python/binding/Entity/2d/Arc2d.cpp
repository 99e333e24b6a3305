#include "../AsType.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/2d/Arc/Arc2d.h>

namespace ormix::python {

void bindArc2d(py::module_& module) {
  bindFamily<geom::Arc2d>(
      module, "Arc2d", py::make_tuple("center", "radius", "start_angle", "sweep"),
      "The arc of a circle from an angle through a sweep, positive counter-clockwise, in radians.\n\n"
      "A sweep beyond a full turn is one. Error for angles that are not finite.\n\n"
      ">>> Arc2d(center=(0, 0), radius=3, start_angle=0, sweep=2).length\n"
      "6.0",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Arc = geom::Arc2d<T>;
        entity
            .def(py::init<const geom::Point2dData<T>&, T, omReal64, omReal64>(), "center"_a, "radius"_a,
                 "start_angle"_a, "sweep"_a)
            .def("set_angles", &Arc::setAngles, "start_angle"_a, "sweep"_a, ChangingCall(), "Set both angles.")
            .def_property_readonly("start_angle", &Arc::getStartAngle, "The angle of its start.")
            .def_property_readonly("sweep", &Arc::getSweep, "The angle from its start to its end.")
            .def_property_readonly("is_full", &Arc::isFull, "Whether it is a whole circle.")
            .def_property_readonly("length", &Arc::length, "Its length.")
            .def("point_at", &Arc::pointAt, "share"_a, "The point at a share of the way, from 0 to 1.")
            .def("nearest_point", &Arc::nearestPoint, "point"_a, "Its point that is nearest to a point (x, y).")
            .def("distance", &Arc::distance, "point"_a, "The distance of a point (x, y) from the arc.");
        bindField(entity, "center", &Arc::center, &Arc::setCenter, "The center, (x, y).");
        bindField(entity, "radius", &Arc::getRadius, &Arc::setRadius, "The radius.");
        bindAsType(entity, [](const auto& arc, auto to) {
          using TOut = decltype(to);
          return geom::Arc2d<TOut>(geom::cast<TOut>(arc.center()), castScalar<TOut>(arc.getRadius()),
                                   arc.getStartAngle(), arc.getSweep());
        });
      });
}

}  // namespace ormix::python
