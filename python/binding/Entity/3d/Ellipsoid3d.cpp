#include "../AsType.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/3d/Ellipsoid/Ellipsoid3d.h>

namespace ormix::python {
namespace {

template <class T>
py::array_t<omReal64> rotationOf(const geom::Ellipsoid3d<T>& ellipsoid) {
  py::array_t<omReal64> matrix({3, 3});
  auto entries = matrix.template mutable_unchecked<2>();
  for (py::ssize_t row = 0; row < 3; ++row)
    for (py::ssize_t column = 0; column < 3; ++column)
      entries(row, column) = ellipsoid.getMatRot()(static_cast<std::size_t>(row), static_cast<std::size_t>(column));
  return matrix;
}

}  // namespace

void bindEllipsoid3d(py::module_& module) {
  bindFamily<geom::Ellipsoid3d>(
      module, "Ellipsoid3d",
      py::make_tuple("center", "major_radius", "medium_radius", "minor_radius", "alpha", "beta", "chi"),
      "The ellipsoid with three radii along axes that are turned by Rz(alpha) Ry(beta) Rx(chi), angles in radians. "
      "The\n"
      "radii are not checked.\n\n"
      ">>> Ellipsoid3d((0, 0, 0), 3, 2, 1).boundary_point(theta=0, phi=0)\n"
      "(0.0, 0.0, 1.0)",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Ellipsoid = geom::Ellipsoid3d<T>;
        using Point = geom::Point3dData<T>;
        entity
            .def(py::init<const Point&, T, T, T, omReal64, omReal64, omReal64>(), "center"_a, "major_radius"_a,
                 "medium_radius"_a, "minor_radius"_a, "alpha"_a = 0.0, "beta"_a = 0.0, "chi"_a = 0.0)
            .def_property_readonly("alpha", &Ellipsoid::getAlpha, "The last angle of the rotation, about z.")
            .def_property_readonly("beta", &Ellipsoid::getBeta, "The angle about y.")
            .def_property_readonly("chi", &Ellipsoid::getChi, "The first angle, about x.")
            .def("set_orientation", &Ellipsoid::setOrientation, "alpha"_a, "beta"_a, "chi"_a, ChangingCall(),
                 "Set all angles.")
            .def_property_readonly(
                "rotation", &rotationOf<T>,
                "The rotation as an array of shape (3, 3): its columns are the directions of the axes.")
            .def_property_readonly("area", &Ellipsoid::area, "The area of the surface.")
            .def_property_readonly("volume", &Ellipsoid::volume, "The volume inside.")
            .def_property_readonly("excentricity", &Ellipsoid::excentricity,
                                   "Of the section through the largest and the smallest radius, in [0, 1].")
            .def(
                "radius", &Ellipsoid::radius, "theta"_a, "phi"_a,
                "The distance from the center to the surface, at theta from the axis of the minor radius and phi from\n"
                "that of the major one towards the medium one, in radians.")
            .def("boundary_point", &Ellipsoid::boundaryPoint, "theta"_a, "phi"_a,
                 "The point of the surface in that direction.")
            .def(
                "compare",
                [](const Ellipsoid& a, const Ellipsoid& b, T tolerance, omReal64 angleTolerance) {
                  return geom::compare(a, b, tolerance, angleTolerance);
                },
                "other"_a, "tolerance"_a, "angle_tolerance"_a,
                "Whether centers and radii differ by at most the tolerance, and angles by the other one.");
        bindField(entity, "center", &Ellipsoid::center, py::overload_cast<const Point&>(&Ellipsoid::setCenter),
                  "The center, (x, y, z).");
        bindField(entity, "major_radius", &Ellipsoid::getMajorRadius, &Ellipsoid::setMajorRadius, "The first radius.");
        bindField(entity, "medium_radius", &Ellipsoid::getMediumRadius, &Ellipsoid::setMediumRadius,
                  "The second radius.");
        bindField(entity, "minor_radius", &Ellipsoid::getMinorRadius, &Ellipsoid::setMinorRadius, "The third radius.");
        bindAsType(entity, [](const auto& from, auto to) {
          using TOut = decltype(to);
          return geom::Ellipsoid3d<TOut>(geom::cast<TOut>(from.center()), castScalar<TOut>(from.getMajorRadius()),
                                         castScalar<TOut>(from.getMediumRadius()),
                                         castScalar<TOut>(from.getMinorRadius()), from.getAlpha(), from.getBeta(),
                                         from.getChi());
        });
      });
}

}  // namespace ormix::python
