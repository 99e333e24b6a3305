#include "../AsType.h"
#include "../Entities.h"

#include <ORMIXGeometry/Entity/2d/Segment/Segment2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>

namespace ormix::python {

void bindSegment2d(py::module_& module) {
  bindFamily<geom::Segment2d>(
      module, "Segment2d", py::make_tuple("point0", "point1"),
      "The segment between two points, ends included.\n\n"
      ">>> Segment2d((0, 0), (3, 4)).length\n"
      "5.0",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Segment = geom::Segment2d<T>;
        using Point = geom::Point2dData<T>;
        entity.def(py::init<const Point&, const Point&>(), "point0"_a, "point1"_a)
            .def_property_readonly("length", &Segment::getLength, "The length; that of integers wraps around.")
            .def_property_readonly("middle_point", &Segment::getMiddlePoint, "The point halfway, not rounded.")
            .def_property_readonly("direction", &Segment::getDirection, "The vector from point0 to point1.")
            .def_property_readonly("unit_direction", &Segment::getUnitDirection,
                                   "The same of length 1; (1, 0) for equal ends.")
            .def_property_readonly("unit_normal", &Segment::getUnitNormal, "That turned by -pi/2.")
            .def(
                "distance", [](const Segment& self, const Segment& other) { return self.distance(other); }, "other"_a,
                "The distance to another segment or to a point.")
            .def(
                "distance", [](const Segment& self, const Point& other) { return self.distance(other); }, "other"_a);
        bindField(entity, "point0", &Segment::getPoint0, &Segment::setPoint0, "The first end, (x, y).");
        bindField(entity, "point1", &Segment::getPoint1, &Segment::setPoint1, "The second end, (x, y).");
        bindAsType(entity, [](const auto& from, auto to) {
          using TOut = decltype(to);
          return geom::Segment2d<TOut>(geom::cast<TOut>(from.getPoint0()), geom::cast<TOut>(from.getPoint1()));
        });
      });
}

}  // namespace ormix::python
