#pragma once

#include "Binding.h"

namespace ormix::python {

/// Lets every use of an object whose constructor never ran raise TypeError: of one made by `__new__` alone, or used by
/// a derived class before it calls `__init__` of its base. pybind11 would pass on memory that holds nothing. To be
/// called when all classes are in the module.
void requireConstruction(const py::module_& module);

}  // namespace ormix::python
