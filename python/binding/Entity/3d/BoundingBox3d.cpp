#include "../Boxes.h"
#include "../Entities.h"

namespace ormix::python {

void bindBoundingBox3d(py::module_& module) {
  bindFamily<geom::BoundingBox3d>(
      module, "BoundingBox3d", py::make_tuple("min_corner", "max_corner"),
      "The box between two corners along the axes. It is not checked which corner is which.\n\n"
      ">>> BoundingBox3d((0, 0, 0), (4, 3, 2)).size\n"
      "(4.0, 3.0, 2.0)",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        using Box = geom::BoundingBox3d<T>;
        bindField(entity, "z_min", &Box::getZMin, &Box::setZMin, "The smallest z.");
        bindField(entity, "z_max", &Box::getZMax, &Box::setZMax, "The largest z.");
        entity
            .def_property_readonly(
                "size", [](const Box& self) { return py::make_tuple(self.sizeX(), self.sizeY(), self.sizeZ()); },
                "The extent along each axis, in the type of the coordinates; integers wrap around.")
            .def_property_readonly("center", &Box::center, "The point halfway between the corners, not rounded.");
        bindBox<geom::Point3dData<T>>(entity);
      });
}

}  // namespace ormix::python
