#include "../AsType.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/3d/Sphere/Sphere3d.h>

namespace ormix::python {

void bindSphere3d(py::module_& module) {
  bindFamily<geom::Sphere3d>(
      module, "Sphere3d", py::make_tuple("center", "radius"),
      "The points of space at one distance, the radius, from the center. The radius is not checked.\n\n"
      ">>> Sphere3d(center=(0, 0, 0), radius=2).signed_distance((0, 0, 5))\n"
      "3.0",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Sphere = geom::Sphere3d<T>;
        using Point = geom::Point3dData<T>;
        entity.def(py::init<const Point&, T>(), "center"_a, "radius"_a)
            .def_property_readonly("area", &Sphere::area, "The area of the surface.")
            .def_property_readonly("volume", &Sphere::volume, "The volume inside.")
            .def("signed_distance", &Sphere::signedDistance, "point"_a,
                 "The distance of a point to the center less the radius: negative inside.")
            .def("distance", &Sphere::distance, "point"_a, "The distance of a point to the surface, not to the ball.")
            .def(
                "compare", [](const Sphere& a, const Sphere& b, T tolerance) { return geom::compare(a, b, tolerance); },
                "other"_a, "tolerance"_a, "Whether centers and radii differ by at most the tolerance.");
        bindField(entity, "center", &Sphere::center, py::overload_cast<const Point&>(&Sphere::setCenter),
                  "The center, (x, y, z).");
        bindField(entity, "radius", &Sphere::getRadius, &Sphere::setRadius,
                  "The radius, in the unit of the coordinates.");
        bindAsType(entity, [](const auto& sphere, auto to) {
          using TOut = decltype(to);
          return geom::Sphere3d<TOut>(geom::cast<TOut>(sphere.center()), castScalar<TOut>(sphere.getRadius()));
        });
      });
}

}  // namespace ormix::python
