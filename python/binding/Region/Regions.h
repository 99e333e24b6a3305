#pragma once

#include "../Frame/Binding.h"

namespace ormix::python {

/// Each adds the functions on regions of one kind; `bindRegions` calls them all.
/// @{
void bindConstructors(py::module_& module);
void bindContours(py::module_& module);
void bindLabels(py::module_& module);
void bindMasks(py::module_& module);
void bindPerimeters(py::module_& module);
void bindPixelSets(py::module_& module);
void bindRegionProperties(py::module_& module);
void bindRegions(py::module_& module);
void bindVolumes(py::module_& module);
/// @}

}  // namespace ormix::python
