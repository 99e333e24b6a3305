#include "../Boxes.h"
#include "../Entities.h"

namespace ormix::python {

void bindBoundingBox2d(py::module_& module) {
  bindFamily<geom::BoundingBox2d>(
      module, "BoundingBox2d", py::make_tuple("min_corner", "max_corner"),
      "The box between two corners along the axes. It is not checked which corner is which.\n\n"
      ">>> box = BoundingBox2d(min_corner=(0, 0), max_corner=(4, 3))\n"
      ">>> box.contains((4, 1)), box.contains((4, 1), strictly=True)\n"
      "(True, False)",
      [](auto& entity, auto coordinate) {
        using T = decltype(coordinate);
        entity.def_property_readonly("area", &geom::BoundingBox2d<T>::getArea,
                                     "The area, in the type of the coordinates; integers wrap around.");
        bindBox<geom::Point2dData<T>>(entity);
      });
}

}  // namespace ormix::python
