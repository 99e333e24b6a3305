#include "../../Frame/Family.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/2d/Line/Line2d.h>

namespace ormix::python {

void bindLine2d(py::module_& module) {
  using geom::Line2d;
  using Point = geom::Point2dData<omReal64>;
  bindEntity<Line2d>(module, "Line2d", py::make_tuple("rho", "theta"),
                     "The line x cos(theta) + y sin(theta) = rho, theta in radians.\n\n"
                     ">>> Line2d(rho=2, theta=0)\n"
                     "Line2d(rho=2.0, theta=0.0)")
      .def(py::init<omReal64, omReal64>(), "rho"_a, "theta"_a)
      .def_static(
          "through", [](const Point& first, const Point& second) { return boost::make_shared<Line2d>(first, second); },
          "first"_a, "second"_a, "The line through two points, with rho >= 0.")
      .def_property("rho", &Line2d::getRho, py::cpp_function(&Line2d::setRho, ChangingCall()),
                    "The signed distance from the origin along the normal.")
      .def_property("theta", &Line2d::getTheta, py::cpp_function(&Line2d::setTheta, ChangingCall()),
                    "The angle of the normal in radians.");
}

}  // namespace ormix::python
