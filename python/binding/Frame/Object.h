#pragma once

#include "Binding.h"

namespace ormix::python {

/// The Python class of objects below a base.
template <class Class, class Base>
using ClassOf = py::class_<Class, Base, boost::shared_ptr<Class>>;

/// Adds `Object`, the base of everything that archives hold, with `Entity`, `Entity2d` and `Entity3d`, and the
/// functions that create, read and write objects of any class.
void bindObjects(py::module_& module);

}  // namespace ormix::python
