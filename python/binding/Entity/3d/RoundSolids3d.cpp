#include "../AsType.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/3d/Circle/Circle3d.h>
#include <ORMIXGeometry/Entity/3d/Cone/Cone3d.h>
#include <ORMIXGeometry/Entity/3d/Cylinder/Cylinder3d.h>
#include <ORMIXGeometry/Entity/3d/Line/Line3d.h>
#include <ORMIXGeometry/Entity/3d/Torus/Torus3d.h>

namespace ormix::python {

namespace {

using Direction = geom::Point3dData<omReal64>;

/// Area, volume and distances, which all solids have.
template <class PythonClass>
void bindSolid(PythonClass& entity) {
  using Solid = typename PythonClass::type;
  entity.def_property_readonly("area", &Solid::area, "The area of the whole surface.")
      .def_property_readonly("volume", &Solid::volume, "The volume inside.")
      .def("signed_distance", &Solid::signedDistance, "point"_a,
           "The distance of a point (x, y, z) from the surface, negative inside.")
      .def("distance", &Solid::distance, "point"_a, "The distance of a point from the surface, not to the solid.");
}

/// The centres of both ends.
template <class PythonClass>
void bindEnds(PythonClass& entity) {
  using Solid = typename PythonClass::type;
  bindField(entity, "point0", &Solid::getPoint0, &Solid::setPoint0, "The center of the first disc, (x, y, z).");
  bindField(entity, "point1", &Solid::getPoint1, &Solid::setPoint1, "The center of the second disc, (x, y, z).");
  entity.def_property_readonly("height", &Solid::getHeight, "The distance of the centers.")
      .def_property_readonly("axis", &Solid::getAxis,
                             "The unit vector from point0 to point1; (0, 0, 1) where they are equal.");
}

}  // namespace

void bindCylinder3d(py::module_& module) {
  bindFamily<geom::Cylinder3d>(
      module, "Cylinder3d", py::make_tuple("point0", "point1", "radius"),
      "The solid cylinder between two discs of one radius. The sign of the radius is ignored.\n\n"
      ">>> Cylinder3d(point0=(0, 0, 0), point1=(0, 0, 4), radius=3).signed_distance((0, 7, 7))\n"
      "5.0",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Cylinder = geom::Cylinder3d<T>;
        using Point = geom::Point3dData<T>;
        entity.def(py::init<const Point&, const Point&, T>(), "point0"_a, "point1"_a, "radius"_a)
            .def(
                "compare",
                [](const Cylinder& a, const Cylinder& b, T tolerance) { return geom::compare(a, b, tolerance); },
                "other"_a, "tolerance"_a, "Whether both centers and the radii differ by at most the tolerance.");
        bindEnds(entity);
        bindField(entity, "radius", &Cylinder::getRadius, &Cylinder::setRadius, "The radius of both discs.");
        bindSolid(entity);
        bindAsType(entity, [](const auto& c, auto to) {
          using TOut = decltype(to);
          return geom::Cylinder3d<TOut>(geom::cast<TOut>(c.getPoint0()), geom::cast<TOut>(c.getPoint1()),
                                        castScalar<TOut>(c.getRadius()));
        });
      });
}

void bindCone3d(py::module_& module) {
  bindFamily<geom::Cone3d>(
      module, "Cone3d", py::make_tuple("point0", "point1", "radius0", "radius1"),
      "The solid cone, or frustum of one, between two discs; radius 0 is an apex. Signs of radii are ignored.\n\n"
      ">>> round(Cone3d((0, 0, 0), (0, 0, 4), 3, 0).volume, 3)\n"
      "37.699",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Cone = geom::Cone3d<T>;
        using Point = geom::Point3dData<T>;
        entity.def(py::init<const Point&, const Point&, T, T>(), "point0"_a, "point1"_a, "radius0"_a, "radius1"_a)
            .def(
                "compare", [](const Cone& a, const Cone& b, T tolerance) { return geom::compare(a, b, tolerance); },
                "other"_a, "tolerance"_a, "Whether centers and radii differ by at most the tolerance.")
            .def_property_readonly("half_angle", &Cone::getHalfAngle, "The angle between axis and side, in radians.");
        bindEnds(entity);
        bindField(entity, "radius0", &Cone::getRadius0, &Cone::setRadius0, "The radius of the first disc.");
        bindField(entity, "radius1", &Cone::getRadius1, &Cone::setRadius1, "The radius of the second disc.");
        bindSolid(entity);
        bindAsType(entity, [](const auto& c, auto to) {
          using TOut = decltype(to);
          return geom::Cone3d<TOut>(geom::cast<TOut>(c.getPoint0()), geom::cast<TOut>(c.getPoint1()),
                                    castScalar<TOut>(c.getRadius0()), castScalar<TOut>(c.getRadius1()));
        });
      });
}

void bindTorus3d(py::module_& module) {
  bindFamily<geom::Torus3d>(
      module, "Torus3d", py::make_tuple("center", "axis", "major_radius", "minor_radius"),
      "What is at most the minor radius away from a circle with the major radius around an axis.\n\n"
      "Error for an axis that is zero or not finite; its length does not matter.\n\n"
      ">>> Torus3d((0, 0, 0), (0, 0, 2), 5, 2).distance((0, 0, 0))\n"
      "3.0",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Torus = geom::Torus3d<T>;
        using Point = geom::Point3dData<T>;
        entity
            .def(py::init<const Point&, const Direction&, T, T>(), "center"_a, "axis"_a, "major_radius"_a,
                 "minor_radius"_a)
            .def(
                "compare",
                [](const Torus& a, const Torus& b, T tolerance, omReal64 angleTolerance) {
                  return geom::compare(a, b, tolerance, angleTolerance);
                },
                "other"_a, "tolerance"_a, "angle_tolerance"_a,
                "Whether centers and radii differ by at most a tolerance, and axes by an angle in radians.");
        bindField(entity, "center", &Torus::center, &Torus::setCenter, "The center, (x, y, z).");
        bindField(entity, "axis", &Torus::getAxis, &Torus::setAxis, "The axis, a unit vector.");
        bindField(entity, "major_radius", &Torus::getMajorRadius, &Torus::setMajorRadius, "The radius of the circle.");
        bindField(entity, "minor_radius", &Torus::getMinorRadius, &Torus::setMinorRadius, "The radius of the tube.");
        bindSolid(entity);
        bindAsType(entity, [](const auto& t, auto to) {
          using TOut = decltype(to);
          return geom::Torus3d<TOut>(geom::cast<TOut>(t.center()), t.getAxis(), castScalar<TOut>(t.getMajorRadius()),
                                     castScalar<TOut>(t.getMinorRadius()));
        });
      });
}

void bindCircle3d(py::module_& module) {
  bindFamily<geom::Circle3d>(
      module, "Circle3d", py::make_tuple("center", "normal", "radius"),
      "The circle of space around a center in the plane across a normal: a curve, not a disc.\n\n"
      "Error for a normal that is zero or not finite; its length does not matter.\n\n"
      ">>> Circle3d((0, 0, 0), (0, 0, 2), 3).distance((0, 7, 3))\n"
      "5.0",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Circle = geom::Circle3d<T>;
        using Point = geom::Point3dData<T>;
        entity.def(py::init<const Point&, const Direction&, T>(), "center"_a, "normal"_a, "radius"_a)
            .def_property_readonly("length", &Circle::length, "The length of the circle.")
            .def("distance", &Circle::distance, "point"_a, "The distance of a point (x, y, z) from the curve.")
            .def(
                "compare",
                [](const Circle& a, const Circle& b, T tolerance, omReal64 angleTolerance) {
                  return geom::compare(a, b, tolerance, angleTolerance);
                },
                "other"_a, "tolerance"_a, "angle_tolerance"_a,
                "Whether centers and radii differ by at most a tolerance, and normals by an angle in radians.");
        bindField(entity, "center", &Circle::center, &Circle::setCenter, "The center, (x, y, z).");
        bindField(entity, "normal", &Circle::getNormal, &Circle::setNormal, "The normal, a unit vector.");
        bindField(entity, "radius", &Circle::getRadius, &Circle::setRadius, "The radius.");
        bindAsType(entity, [](const auto& c, auto to) {
          using TOut = decltype(to);
          return geom::Circle3d<TOut>(geom::cast<TOut>(c.center()), c.getNormal(), castScalar<TOut>(c.getRadius()));
        });
      });
}

void bindLine3d(py::module_& module) {
  using geom::Line3d;
  bindEntity<Line3d>(module, "Line3d", py::make_tuple("point", "direction"),
                     "The line through a point, of which the one nearest to the origin is kept, in a direction.\n\n"
                     "Error for a direction that is zero or not finite; its length does not matter.\n\n"
                     ">>> Line3d((1, 2, 3), (0, 0, 2)).point\n"
                     "(1.0, 2.0, 0.0)")
      .def(py::init<const Direction&, const Direction&>(), "point"_a, "direction"_a)
      .def_static("through", &Line3d::through, "first"_a, "second"_a, "The line through two points.")
      .def_property_readonly("point", &Line3d::getNearestPointFromOrigin, "Its point nearest to the origin.")
      .def_property_readonly("direction", &Line3d::getDirection, "The unit vector along it.")
      .def("nearest_point", &Line3d::nearestPoint, "point"_a, "The point of the line that is nearest to a point.")
      .def("distance", &Line3d::distance, "point"_a, "The distance of a point (x, y, z) from the line.")
      .def(
          "compare",
          [](const Line3d& a, const Line3d& b, omReal64 tolerance, omReal64 angleTolerance) {
            return geom::compare(a, b, tolerance, angleTolerance);
          },
          "other"_a, "tolerance"_a, "angle_tolerance"_a,
          "Whether the points differ by at most a tolerance, and the directions by an angle in radians.");
}

}  // namespace ormix::python
