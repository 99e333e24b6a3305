#include "../AsType.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/3d/Circle/Circle3d.h>
#include <ORMIXGeometry/Entity/3d/Cone/Cone3d.h>
#include <ORMIXGeometry/Entity/3d/Cylinder/Cylinder3d.h>
#include <ORMIXGeometry/Entity/3d/Line/Line3d.h>
#include <ORMIXGeometry/Entity/3d/Torus/Torus3d.h>

#include <tuple>

namespace ormix::python {

namespace {

using Direction = geom::Point3dData<omReal64>;

/// A unit vector, which stays one whatever the type of the coordinates.
struct Unit {
  Direction direction;
};

/// What the constructors take, in their order.
/// @{
template <class T>
auto partsOf(const geom::Cylinder3d<T>& c) {
  return std::make_tuple(c.getPoint0(), c.getPoint1(), c.getRadius());
}
template <class T>
auto partsOf(const geom::Cone3d<T>& c) {
  return std::make_tuple(c.getPoint0(), c.getPoint1(), c.getRadius0(), c.getRadius1());
}
template <class T>
auto partsOf(const geom::Torus3d<T>& t) {
  return std::make_tuple(t.center(), Unit{t.getAxis()}, t.getMajorRadius(), t.getMinorRadius());
}
template <class T>
auto partsOf(const geom::Circle3d<T>& c) {
  return std::make_tuple(c.center(), Unit{c.getNormal()}, c.getRadius());
}
/// @}

/// A part with coordinates of another type.
template <class TOut, class Part>
auto castPart(const Part& part) {
  if constexpr (std::is_arithmetic_v<Part>)
    return castScalar<TOut>(part);
  else if constexpr (std::is_same_v<Part, Unit>)
    return part.direction;
  else
    return geom::cast<TOut>(part);
}

template <class PythonClass, class... Parts, class... Names>
void bindConstructor(PythonClass& entity, const std::tuple<Parts...>& /*parts*/, const Names&... names) {
  entity.def(py::init<const std::conditional_t<std::is_same_v<Parts, Unit>, Direction, Parts>&...>(), names...);
}

/// What all classes have that are made of parts: the constructor, a comparison, and the conversion to other types.
template <template <class> class Solid, class T, class PythonClass, class... Names>
void bindParts(PythonClass& entity, const char* compareDoc, const Names&... names) {
  using Entity = Solid<T>;
  using Parts = decltype(partsOf(std::declval<const Entity&>()));
  bindConstructor(entity, Parts(partsOf(Entity())), names...);
  if constexpr (std::is_same_v<std::tuple_element_t<1, Parts>, Unit>)
    entity.def(
        "compare",
        [](const Entity& a, const Entity& b, T tolerance, omReal64 angleTolerance) {
          return geom::compare(a, b, tolerance, angleTolerance);
        },
        "other"_a, "tolerance"_a, "angle_tolerance"_a, compareDoc);
  else
    entity.def(
        "compare", [](const Entity& a, const Entity& b, T tolerance) { return geom::compare(a, b, tolerance); },
        "other"_a, "tolerance"_a, compareDoc);
  bindAsType(entity, [](const auto& from, auto to) {
    using TOut = decltype(to);
    return std::apply([](const auto&... parts) { return Solid<TOut>(castPart<TOut>(parts)...); }, partsOf(from));
  });
}

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
        bindParts<geom::Cylinder3d, T>(entity, "Whether both centers and the radii differ by at most the tolerance.",
                                       "point0"_a, "point1"_a, "radius"_a);
        bindEnds(entity);
        bindField(entity, "radius", &Cylinder::getRadius, &Cylinder::setRadius, "The radius of both discs.");
        bindSolid(entity);
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
        bindParts<geom::Cone3d, T>(entity, "Whether centers and radii differ by at most the tolerance.", "point0"_a,
                                   "point1"_a, "radius0"_a, "radius1"_a);
        entity.def_property_readonly("half_angle", &Cone::getHalfAngle, "The angle between axis and side, in radians.");
        bindEnds(entity);
        bindField(entity, "radius0", &Cone::getRadius0, &Cone::setRadius0, "The radius of the first disc.");
        bindField(entity, "radius1", &Cone::getRadius1, &Cone::setRadius1, "The radius of the second disc.");
        bindSolid(entity);
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
        bindParts<geom::Torus3d, T>(
            entity, "Whether centers and radii differ by at most a tolerance, and axes by an angle in radians.",
            "center"_a, "axis"_a, "major_radius"_a, "minor_radius"_a);
        bindField(entity, "center", &Torus::center, &Torus::setCenter, "The center, (x, y, z).");
        bindField(entity, "axis", &Torus::getAxis, &Torus::setAxis, "The axis, a unit vector.");
        bindField(entity, "major_radius", &Torus::getMajorRadius, &Torus::setMajorRadius, "The radius of the circle.");
        bindField(entity, "minor_radius", &Torus::getMinorRadius, &Torus::setMinorRadius, "The radius of the tube.");
        bindSolid(entity);
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
        bindParts<geom::Circle3d, T>(
            entity, "Whether centers and radii differ by at most a tolerance, and normals by an angle in radians.",
            "center"_a, "normal"_a, "radius"_a);
        entity.def_property_readonly("length", &Circle::length, "The length of the circle.")
            .def("distance", &Circle::distance, "point"_a, "The distance of a point (x, y, z) from the curve.");
        bindField(entity, "center", &Circle::center, &Circle::setCenter, "The center, (x, y, z).");
        bindField(entity, "normal", &Circle::getNormal, &Circle::setNormal, "The normal, a unit vector.");
        bindField(entity, "radius", &Circle::getRadius, &Circle::setRadius, "The radius.");
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
