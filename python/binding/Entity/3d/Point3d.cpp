#include "../Entities.h"
#include "../Points.h"

#include <ORMIXGeometry/Entity/3d/Point/Point3d.h>
#include <ORMIXGeometry/Entity/3d/PointCloud/PointCloud3d.h>
#include <ORMIXGeometry/Entity/3d/Vector/Vector3d.h>

namespace ormix::python {

void bindPoint3d(py::module_& module) {
  bindFamily<geom::Point3d>(
      module, "Point3d", py::make_tuple("x", "y", "z"),
      "A point as an entity, which is also the sequence of its coordinates. Arithmetic works component by component;\n"
      "integers wrap around.\n\n"
      ">>> 2 * Point3d(1, 2, 3)\n"
      "Point3d(x=2.0, y=4.0, z=6.0)",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Point = geom::Point3d<T>;
        entity.def(py::init<T, T, T>(), "x"_a, "y"_a, "z"_a)
            .def_property_readonly("norm", &Point::normL2, "The distance from the origin.")
            .def(
                "cross", [](const Point& a, const Point& b) { return geom::crossProduct(a, b); }, "other"_a,
                "The cross product of both as position vectors.");
        bindField(entity, "x", &Point::getX, &Point::setX, "The coordinate x.");
        bindField(entity, "y", &Point::getY, &Point::setY, "The coordinate y.");
        bindField(entity, "z", &Point::getZ, &Point::setZ, "The coordinate z.");
        bindSequence(entity,
                     [](const Point& point) { return py::make_tuple(point.getX(), point.getY(), point.getZ()); });
        bindPointArithmetic<geom::Vector3d, T>(entity);
        bindAsType(entity);
      });
}

void bindPointCloud3d(py::module_& module) {
  bindFamily<geom::PointCloud3d>(
      module, "PointCloud3d", py::make_tuple("points"),
      "Points of space in order.\n\n"
      "points: array of shape (n, 3).\n\n"
      ">>> len(PointCloud3d(np.zeros((5, 3))))\n"
      "5",
      [](auto& entity, auto coordinate) { bindCloud<geom::Point3dData<decltype(coordinate)>>(entity); });
}

void bindVector3d(py::module_& module) {
  using geom::Vector3d;
  using Point = geom::Point3dData<omReal64>;
  auto entity = bindEntity<Vector3d>(
      module, "Vector3d", py::make_tuple("rho", "theta", "phi"),
      "The free vector rho (sin(theta) cos(phi), sin(theta) sin(phi), cos(theta)), angles in radians; it is also the\n"
      "sequence (x, y, z). Where theta reduced to [0, 2 pi) is pi or more, pi is taken off both angles: z changes its\n"
      "sign, so that no vector has the direction -z.\n\n"
      ">>> round(Vector3d.cartesian(3, 0, 4).rho, 9)\n"
      "5.0");
  entity.def(py::init<omReal64, omReal64, omReal64>(), "rho"_a, "theta"_a, "phi"_a)
      .def_static(
          "cartesian",
          [](omReal64 x, omReal64 y, omReal64 z) {
            return boost::make_shared<Vector3d>(geom::convert(Point(x, y, z)));
          },
          "x"_a, "y"_a, "z"_a, "The vector with these components, as far as there is one.")
      .def_static(
          "difference",
          [](const Point& from, const Point& to) {
            auto vector = boost::make_shared<Vector3d>();
            vector->setCoords(from, to);
            return vector;
          },
          "from_point"_a, "to_point"_a, "The vector from one point to another.")
      .def_property_readonly("rho", &Vector3d::getRho, "The length, as set; it may be negative.")
      .def_property_readonly("theta", &Vector3d::getTheta, "The angle from the z axis in radians.")
      .def_property_readonly("phi", &Vector3d::getPhi, "The azimuth from x towards y in radians.")
      .def_property_readonly("x", &Vector3d::getX, "The component along x.")
      .def_property_readonly("y", &Vector3d::getY, "The component along y.")
      .def_property_readonly("z", &Vector3d::getZ, "The component along z.")
      .def(
          "__add__", [](const Vector3d& a, const Vector3d& b) { return a + b; }, py::is_operator())
      .def(
          "__sub__", [](const Vector3d& a, const Vector3d& b) { return a - b; }, py::is_operator())
      .def(
          "__mul__", [](const Vector3d& a, omReal64 scalar) { return a * scalar; }, py::is_operator())
      .def(
          "__rmul__", [](const Vector3d& a, omReal64 scalar) { return a * scalar; }, py::is_operator())
      .def(
          "__truediv__", [](const Vector3d& a, omReal64 scalar) { return a / scalar; }, py::is_operator())
      .def(
          "dot", [](const Vector3d& a, const Vector3d& b) { return geom::scalarProduct(a, b); }, "other"_a,
          "The dot product.")
      .def(
          "cross", [](const Vector3d& a, const Vector3d& b) { return geom::crossProduct(a, b); }, "other"_a,
          "The cross product.")
      .def(
          "compare", [](const Vector3d& a, const Vector3d& b, omReal64 tolerance) { return compare(a, b, tolerance); },
          "other"_a, "tolerance"_a, "Whether the length of the difference is less than the tolerance.");
  bindSequence(entity,
               [](const Vector3d& vector) { return py::make_tuple(vector.getX(), vector.getY(), vector.getZ()); });
}

}  // namespace ormix::python
