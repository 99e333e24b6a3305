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

void bindEntities3d(py::module_& module) {
  bindTriMesh3d(module);
  bindFaceVertexTriMesh3d(module);
  bindFaceVertexAdjTriMesh3d(module);
  bindMesh3d(module);
  bindMeshWithHoles3d(module);
  bindRowIntersections3d(module);
  bindShape3d(module);
}

}  // namespace ormix::python
