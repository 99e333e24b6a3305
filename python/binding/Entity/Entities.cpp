#include "Entities.h"

namespace ormix::python {

void bindEntities2d(py::module_& module) {
  bindCircle2d(module);
  bindLine2d(module);
  bindPolygon2d(module);
  bindPolygonWithHoles2d(module);
  bindRowIntersections(module);
  bindShape2d(module);
}

void bindEntities3d(py::module_& module) { bindRowIntersections3d(module); }

}  // namespace ormix::python
