#pragma once

#include "Binding.h"

namespace ormix::python {

/// Adds `Object`, the base of everything that archives hold, with `Entity`, `Entity2d` and `Entity3d`, and the
/// functions that create, read and write objects of any class.
void bindObjects(py::module_& module);

}  // namespace ormix::python
