#include "../Entities.h"
#include "../Points.h"

#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/2d/PointCloud/PointCloud2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>

namespace ormix::python {

void bindPoint2d(py::module_& module) {
  bindFamily<geom::Point2d>(
      module, "Point2d", py::make_tuple("x", "y"),
      "A point as an entity, which is also the sequence of its coordinates. Arithmetic works component by component;\n"
      "integers wrap around.\n\n"
      ">>> Point2d(1, 2) + Point2d(3, 4)\n"
      "Point2d(x=4.0, y=6.0)",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Point = geom::Point2d<T>;
        entity.def(py::init<T, T>(), "x"_a, "y"_a)
            .def_property_readonly("norm", &Point::normL2, "The distance from the origin.");
        bindField(entity, "x", &Point::getX, &Point::setX, "The coordinate x.");
        bindField(entity, "y", &Point::getY, &Point::setY, "The coordinate y.");
        bindSequence(entity, [](const Point& point) { return py::make_tuple(point.getX(), point.getY()); });
        bindPointArithmetic<geom::Vector2d, T>(entity);
        bindAsType(entity);
      });
}

void bindPointCloud2d(py::module_& module) {
  bindFamily<geom::PointCloud2d>(
      module, "PointCloud2d", py::make_tuple("points"),
      "Points of the plane in order.\n\n"
      "points: array of shape (n, 2).\n\n"
      ">>> len(PointCloud2d(np.zeros((5, 2))))\n"
      "5",
      [](auto& entity, auto coordinate) { bindCloud<geom::Point2dData<decltype(coordinate)>>(entity); });
}

void bindVector2d(py::module_& module) {
  using geom::Vector2d;
  using Point = geom::Point2dData<omReal64>;
  auto entity = bindEntity<Vector2d>(
      module, "Vector2d", py::make_tuple("rho", "theta"),
      "The free vector rho (cos(theta), sin(theta)), theta in radians; it is also the sequence (x, y).\n\n"
      ">>> tuple(Vector2d(rho=2, theta=0) + Vector2d.cartesian(1, 1))\n"
      "(3.0, 1.0)");
  entity.def(py::init<omReal64, omReal64>(), "rho"_a, "theta"_a)
      .def_static(
          "cartesian",
          [](omReal64 x, omReal64 y) {
            auto vector = boost::make_shared<Vector2d>();
            vector->setCoords(Point(x, y));
            return vector;
          },
          "x"_a, "y"_a, "The vector with these components: rho >= 0, theta in (-pi, pi].")
      .def_static(
          "difference",
          [](const Point& first, const Point& second) {
            auto vector = boost::make_shared<Vector2d>();
            vector->setCoords(first, second);
            return vector;
          },
          "first"_a, "second"_a, "The first point minus the second.")
      .def_property_readonly("x", &Vector2d::getX, "The component along x.")
      .def_property_readonly("y", &Vector2d::getY, "The component along y.")
      .def(
          "__add__", [](const Vector2d& a, const Vector2d& b) { return a + b; }, py::is_operator())
      .def(
          "__sub__", [](const Vector2d& a, const Vector2d& b) { return a - b; }, py::is_operator())
      .def(
          "__mul__", [](const Vector2d& a, omReal64 scalar) { return a * scalar; }, py::is_operator())
      .def(
          "__rmul__", [](const Vector2d& a, omReal64 scalar) { return a * scalar; }, py::is_operator())
      .def(
          "__truediv__", [](const Vector2d& a, omReal64 scalar) { return a / scalar; }, py::is_operator())
      .def(
          "compare", [](const Vector2d& a, const Vector2d& b, omReal64 tolerance) { return compare(a, b, tolerance); },
          "other"_a, "tolerance"_a, "Whether the length of the difference is less than the tolerance.");
  bindField(entity, "rho", &Vector2d::getRho, &Vector2d::setRho, "The length, as set; it may be negative.");
  bindField(entity, "theta", &Vector2d::getTheta, &Vector2d::setTheta, "The angle from the x axis in radians.");
  bindSequence(entity, [](const Vector2d& vector) { return py::make_tuple(vector.getX(), vector.getY()); });
}

}  // namespace ormix::python
