#pragma once

#include "../Frame/Binding.h"

namespace ormix::python {

/// Each adds the functions on meshes of one kind; `bindMeshTools` calls them all.
/// @{
void bindMeshComponents(py::module_& module);
void bindMeshConversions(py::module_& module);
void bindMeshDefects(py::module_& module);
void bindMeshFiles(py::module_& module);
void bindMeshRepair(py::module_& module);
void bindMeshSimplification(py::module_& module);
void bindMeshTools(py::module_& module);
void bindStlFiles(py::module_& module);
/// @}

}  // namespace ormix::python
