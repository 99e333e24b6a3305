#pragma once

#include "../Frame/Binding.h"

namespace ormix::python {

/// Each adds the functions and classes of the folder of that name in ORMIXGeometry/Tools.
/// @{
void bindContact(py::module_& module);
void bindDistance(py::module_& module);
void bindExtent(py::module_& module);
void bindForm(py::module_& module);
void bindHtml(py::module_& module);
void bindLocation(py::module_& module);
void bindRTree(py::module_& module);
void bindSkeleton(py::module_& module);
void bindSvg(py::module_& module);
/// @}

}  // namespace ormix::python
