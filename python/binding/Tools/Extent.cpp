#include "../Frame/Calls.h"
#include "../Frame/Result.h"
#include "Tools.h"

#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Tools/Extent/PlanarExtents.h>
#include <ORMIXGeometry/Tools/Extent/SpatialExtents.h>

#include <boost/smart_ptr/make_shared_object.hpp>

namespace ormix::python {
namespace {

using Planar = geom::BaseGeometryEntity2d;

template <class Value>
boost::shared_ptr<Value> shared(const Value& value) {
  return boost::make_shared<Value>(value);
}

}  // namespace

void bindExtent(py::module_& module) {
  Result<FeretDiameter>(module, "FeretDiameter", "The distance of two parallel lines that touch an entity.")
      .value("length", &FeretDiameter::length, "The distance.")
      .value("angle", &FeretDiameter::angle, "Of the direction across the lines, radians in (-pi/2, pi/2].")
      .value(
          "from_", [](const FeretDiameter& self) { return py::make_tuple(self.from.x, self.from.y); },
          "A point of the first line.")
      .value(
          "to", [](const FeretDiameter& self) { return py::make_tuple(self.to.x, self.to.y); },
          "A point of the second line.");
  module.def(
      "smallest_rectangle",
      [](const Planar& entity, const std::string& by) {
        if (by != "area" && by != "perimeter")
          throw py::value_error("by: \"area\" or \"perimeter\" was wanted, not \"" + by + '"');
        const Reading reading;
        return shared(geom::smallestRectangle(entity, by == "area" ? eRectangleSize::Area : eRectangleSize::Perimeter));
      },
      "entity"_a, "by"_a = "area",
      "The smallest rectangle around an entity in any direction, by area or by perimeter.");
  module.def("greatest_feret_diameter", &geom::greatestFeretDiameter, "entity"_a, LongCall(),
             "The greatest distance of two points of an entity.\n\n"
             ">>> greatest_feret_diameter(Polygon2d([[0, 0], [3, 0], [3, 4], [0, 4]])).length\n"
             "5.0");
  module.def("least_feret_diameter", &geom::leastFeretDiameter, "entity"_a, LongCall(), "The width of an entity.");
  module.def("feret_diameter_at", &geom::feretDiameterAt, "entity"_a, "angle"_a, LongCall(),
             "The extent of an entity in a direction, an angle in radians.");
  module.def(
      "largest_inscribed_circle", [](const Planar& entity) { return shared(geom::largestInscribedCircle(entity)); },
      "entity"_a, LongCall(), "A largest circle inside an entity with an area.");
  module.def(
      "smallest_box", [](const geom::BaseGeometryEntity3d& entity) { return shared(geom::smallestBox(entity)); },
      "entity"_a, LongCall(),
      "A smallest box around a spatial entity in any direction, mostly within 1 % of the smallest.");
}

}  // namespace ormix::python
