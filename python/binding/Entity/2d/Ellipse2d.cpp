#include "../AsType.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>

namespace ormix::python {

void bindEllipse2d(py::module_& module) {
  bindFamily<geom::Ellipse2d>(
      module, "Ellipse2d", py::make_tuple("center", "major_radius", "minor_radius", "theta"),
      "The ellipse with a radius in the direction theta, in radians, and another across it. Either radius may be the\n"
      "larger one; they are not checked.\n\n"
      ">>> round(Ellipse2d((0, 0), major_radius=2, minor_radius=1, theta=0.5).excentricity, 6)\n"
      "0.866025",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Ellipse = geom::Ellipse2d<T>;
        entity
            .def(py::init<const geom::Point2dData<T>&, T, T, omReal64>(), "center"_a, "major_radius"_a,
                 "minor_radius"_a, "theta"_a = 0.0)
            .def_property_readonly("area", &Ellipse::area, "The area inside.")
            .def_property_readonly("perimeter_lower_bound", &Ellipse::perimeterLowerBound,
                                   "The perimeter is at least this.")
            .def_property_readonly("perimeter_upper_bound", &Ellipse::perimeterUpperBound,
                                   "The perimeter is at most this.")
            .def_property_readonly("excentricity", &Ellipse::excentricity, "In [0, 1]: 0 for a circle.")
            .def_property_readonly("focal_length", &Ellipse::focalLength, "The distance of the foci from the center.")
            .def_property_readonly("focus1", &Ellipse::focus1, "The point at the focal length along theta.")
            .def_property_readonly("focus2", &Ellipse::focus2, "The point at the focal length against theta.")
            .def("radius", &Ellipse::radius, "angle"_a,
                 "The distance from the center to the ellipse at an angle from the major radius, in radians.")
            .def("boundary_point", &Ellipse::boundaryPoint, "angle"_a, "The point of the ellipse at that angle.");
        bindField(entity, "center", &Ellipse::center, &Ellipse::setCenter, "The center, (x, y).");
        bindField(entity, "major_radius", &Ellipse::getMajorRadius, &Ellipse::setMajorRadius,
                  "The radius along theta.");
        bindField(entity, "minor_radius", &Ellipse::getMinorRadius, &Ellipse::setMinorRadius, "The radius across it.");
        bindField(entity, "theta", &Ellipse::getTheta, &Ellipse::setTheta,
                  "The angle of the major radius from the x axis, in radians.");
        bindAsType(entity, [](const auto& ellipse, auto to) {
          using TOut = decltype(to);
          return geom::Ellipse2d<TOut>(geom::cast<TOut>(ellipse.center()), castScalar<TOut>(ellipse.getMajorRadius()),
                                       castScalar<TOut>(ellipse.getMinorRadius()), ellipse.getTheta());
        });
      });
}

}  // namespace ormix::python
