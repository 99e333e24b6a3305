#pragma once

#include "../Frame/Binding.h"

namespace ormix::python {

/// Each adds the Python classes of some transforms, with the functions that belong to them; bindTransforms() calls them
/// all, with the base classes first. After bindMeasures(), whose policy for holes centroids take.
/// @{
void bindLinearTransforms2d(py::module_& module);
void bindLinearTransforms3d(py::module_& module);
void bindDerivedTransforms(py::module_& module);
void bindSimplification(py::module_& module);
void bindConvert(py::module_& module);
void bindAffinePoints(py::module_& module);
void bindTransforms(py::module_& module);
/// @}

}  // namespace ormix::python
