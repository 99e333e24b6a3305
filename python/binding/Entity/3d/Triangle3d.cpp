#include "../../Frame/Print.h"
#include "../AsType.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/3d/Triangle/LightTriangle3d.h>
#include <ORMIXGeometry/Entity/3d/Triangle/Triangle3d.h>
#include <ORMIXGeometry/Entity/3d/Vector/Vector3d.h>

namespace ormix::python {
namespace {

// Constructor and vertices of both classes of triangles.
template <class T, class Class>
void bindVertices(Class& entity) {
  using Triangle = typename Class::type;
  using Point = geom::Point3dData<T>;
  entity.def(py::init<const Point&, const Point&, const Point&>(), "point0"_a, "point1"_a, "point2"_a);
  bindField(entity, "point0", &Triangle::getPoint0, &Triangle::setPoint0, "The first vertex, (x, y, z).");
  bindField(entity, "point1", &Triangle::getPoint1, &Triangle::setPoint1, "The second vertex, (x, y, z).");
  bindField(entity, "point2", &Triangle::getPoint2, &Triangle::setPoint2, "The third vertex, (x, y, z).");
}

template <template <class> class Triangle, class TOut, class TIn>
Triangle<TOut> castTriangle(const Triangle<TIn>& from) {
  return {geom::cast<TOut>(from.getPoint0()), geom::cast<TOut>(from.getPoint1()), geom::cast<TOut>(from.getPoint2())};
}

const py::tuple& fields() {
  static const auto* const names = new py::tuple(py::make_tuple("point0", "point1", "point2"));
  return *names;
}

// A triangle that is no entity: a value.
template <class T>
py::object bindLight(py::module_& module, const char* name) {
  using Triangle = geom::LightTriangle3d<T>;
  py::class_<Triangle, boost::shared_ptr<Triangle>> entity(
      module, name,
      "Three vertices: an element of a run of many triangles.\n\n"
      ">>> LightTriangle3d((0, 0, 0), (1, 0, 0), (0, 1, 0)).to_triangle3d().area\n"
      "0.5");
  entity.attr("__match_args__") = fields();
  entity.def(py::init<>())
      .def("to_triangle3d", &Triangle::toTriangle3d, "The triangle as an entity.")
      .def(
          "compare", [](const Triangle& a, const Triangle& b, T tolerance) { return geom::compare(a, b, tolerance); },
          "other"_a, "tolerance"_a, "Whether each vertex is at most the tolerance from that of the other triangle.")
      .def(
          "copy", [](const Triangle& self) { return self; }, "A copy.")
      .def("__copy__", [](const Triangle& self) { return self; })
      .def(
          "__deepcopy__", [](const Triangle& self, const py::dict&) { return self; }, "memo"_a)
      .def(
          "__eq__", [](const Triangle& a, const Triangle& b) { return a == b; }, py::is_operator())
      .def("__repr__", &print)
      .def(py::pickle(
          [](const Triangle& self) { return py::make_tuple(self.getPoint0(), self.getPoint1(), self.getPoint2()); },
          [](const py::tuple& state) {
            using Point = geom::Point3dData<T>;
            return Triangle(state[0].cast<Point>(), state[1].cast<Point>(), state[2].cast<Point>());
          }));
  entity.attr("__hash__") = py::none();
  bindVertices<T>(entity);
  bindAsType(entity, [](const auto& from, auto to) { return castTriangle<geom::LightTriangle3d, decltype(to)>(from); });
  return std::move(entity);
}

}  // namespace

void bindTriangle3d(py::module_& module) {
  bindFamily<geom::Triangle3d>(
      module, "Triangle3d", fields(),
      "The triangle of three vertices, counter-clockwise as seen from where its normal points to.\n\n"
      ">>> Triangle3d((0, 0, 0), (1, 0, 0), (0, 1, 0)).unit_normal\n"
      "(0.0, 0.0, 1.0)",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Triangle = geom::Triangle3d<T>;
        bindVertices<T>(entity);
        const auto normal = [](const Triangle& self) {
          geom::Point3dData<omReal64> components;
          omReal64 x = 0, y = 0, z = 0;
          self.getNormal(x, y, z);
          components.setCoords(x, y, z);
          return components;
        };
        const auto unitNormal = [](const Triangle& self) {
          omReal64 x = 0, y = 0, z = 0;
          self.getUnitNormal(x, y, z);
          return geom::Point3dData<omReal64>(x, y, z);
        };
        entity.def_property_readonly("normal", normal, "The normal (x, y, z), whose length is twice the area.")
            .def_property_readonly("unit_normal", unitNormal,
                                   "The normal of length 1; (0, 0, 0) of a triangle without an area.")
            .def_property_readonly("barycenter", &Triangle::getBarycenter, "The mean of the vertices, not rounded.")
            .def_property_readonly("perimeter", &Triangle::perimeter,
                                   "The length of the edges; that of integers wraps around.")
            .def_property_readonly("area", &Triangle::area, "The area.");
        bindAsType(entity,
                   [](const auto& from, auto to) { return castTriangle<geom::Triangle3d, decltype(to)>(from); });
      });
  bindTemplate(module, "LightTriangle3d",
               [&](const char* name, auto coordinate) { return bindLight<decltype(coordinate)>(module, name); });
}

}  // namespace ormix::python
