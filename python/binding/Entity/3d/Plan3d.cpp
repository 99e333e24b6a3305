#include "../../Frame/Family.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/3d/Plan/Plan3d.h>
#include <ORMIXGeometry/Entity/3d/Vector/Vector3d.h>

namespace ormix::python {

void bindPlan3d(py::module_& module) {
  using geom::Plan3d;
  using geom::Vector3d;
  using Point = geom::Point3dData<omReal64>;
  bindEntity<Plan3d>(
      module, "Plan3d", py::make_tuple("rho", "theta", "phi"),
      "The plane of the points p with n p = rho, where n is Vector3d(1, theta, phi), angles in radians.\n\n"
      ">>> Plan3d.through((0, 0, 2), (1, 0, 2), (0, 1, 2)).rho\n"
      "2.0")
      .def(py::init<omReal64, omReal64, omReal64>(), "rho"_a, "theta"_a, "phi"_a)
      .def_static(
          "through",
          [](const Point& p0, const Point& p1, const Point& p2) {
            auto plan = boost::make_shared<Plan3d>();
            plan->setCoords(p0, p1, p2);
            return plan;
          },
          "p0"_a, "p1"_a, "p2"_a, "The plane through three points; the x-y plane where they are on one line.")
      .def_static(
          "at",
          [](const Point& point, const Vector3d& normal) {
            auto plan = boost::make_shared<Plan3d>();
            plan->setCoords(point, normal);
            return plan;
          },
          "point"_a, "normal"_a, "The plane through a point across a Vector3d.")
      .def(
          "set_coords",
          [](Plan3d& self, omReal64 rho, omReal64 theta, omReal64 phi) { self.setCoords(rho, theta, phi); }, "rho"_a,
          "theta"_a, "phi"_a, ChangingCall(), "Set all parameters.")
      .def_property_readonly("rho", &Plan3d::getRho, "The signed distance from the origin along the normal.")
      .def_property_readonly("theta", &Plan3d::getTheta, "The angle of the normal from the z axis, in [-pi, pi).")
      .def_property_readonly("phi", &Plan3d::getPhi, "The azimuth of the normal, in [-pi, pi).")
      .def_property_readonly("normal", &Plan3d::getNormal, "The unit normal.")
      .def_property_readonly("nearest_point_from_origin", &Plan3d::getNearestPointFromOrigin,
                             "The point of the plane that is nearest to the origin.")
      .def(
          "signed_distance", [](const Plan3d& self, const Point& point) { return self.signedDistance(point); },
          "point"_a,
          "(x - rho nx) nx + (y - rho ny) ny + (y - rho nz) nz, with y in the third term as in C++: the distance only\n"
          "where y = z or nz = 0.")
      .def(
          "__add__", [](const Plan3d& a, const Vector3d& b) { return a + b; }, py::is_operator())
      .def(
          "__sub__", [](const Plan3d& a, const Vector3d& b) { return a - b; }, py::is_operator())
      .def(
          "compare", [](const Plan3d& a, const Plan3d& b, omReal64 tolerance) { return compare(a, b, tolerance); },
          "other"_a, "tolerance"_a, "Whether rho, theta and phi each differ by at most the tolerance.");
}

}  // namespace ormix::python
