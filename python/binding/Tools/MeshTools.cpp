#include "MeshTools.h"

namespace ormix::python {

void bindMeshTools(py::module_& module) {
  bindMeshConversions(module);
  bindMeshFiles(module);
  bindStlFiles(module);
  bindMeshDefects(module);
  bindMeshRepair(module);
  bindMeshComponents(module);
  bindMeshSimplification(module);
}

}  // namespace ormix::python
