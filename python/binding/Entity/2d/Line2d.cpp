#include "../../Frame/Family.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/2d/Line/Line2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>

namespace ormix::python {

void bindLine2d(py::module_& module) {
  using geom::Line2d;
  using geom::Vector2d;
  using Point = geom::Point2dData<omReal64>;
  auto entity = bindEntity<Line2d>(module, "Line2d", py::make_tuple("rho", "theta"),
                                   "The line x cos(theta) + y sin(theta) = rho, theta in radians.\n\n"
                                   ">>> Line2d(rho=2, theta=0)\n"
                                   "Line2d(rho=2.0, theta=0.0)");
  entity.def(py::init<omReal64, omReal64>(), "rho"_a, "theta"_a)
      .def_static(
          "through", [](const Point& first, const Point& second) { return boost::make_shared<Line2d>(first, second); },
          "first"_a, "second"_a, "The line through two points, with rho >= 0.")
      .def_static(
          "along",
          [](const Point& point, const Vector2d& direction) { return boost::make_shared<Line2d>(point, direction); },
          "point"_a, "direction"_a, "The line through a point along a Vector2d, with rho >= 0.")
      .def_property_readonly("nearest_point_from_origin", &Line2d::getNearestPointFromOrigin,
                             "The point of the line that is nearest to the origin.")
      .def_property_readonly("normal", &Line2d::getNormal, "The unit normal.")
      .def_property_readonly("direction", &Line2d::getDirection,
                             "The unit vector along the line, the normal turned by pi/2.")
      .def(
          "signed_distance", [](const Line2d& self, const Point& point) { return self.signedDistance(point); },
          "point"_a, "The distance of a point, positive on the side of the normal.")
      .def(
          "__add__", [](const Line2d& a, const Vector2d& b) { return a + b; }, py::is_operator())
      .def(
          "__sub__", [](const Line2d& a, const Vector2d& b) { return a - b; }, py::is_operator());
  bindField(entity, "rho", &Line2d::getRho, &Line2d::setRho, "The signed distance from the origin along the normal.");
  bindField(entity, "theta", &Line2d::getTheta, &Line2d::setTheta, "The angle of the normal in radians.");
}

}  // namespace ormix::python
