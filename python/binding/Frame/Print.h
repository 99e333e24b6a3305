#pragma once

#include "Binding.h"

#include <string>

namespace ormix::python {

/// "Circle2d(center=(1.0, 2.0), radius=3.0)": the class with the properties that it names in `__match_args__`, and the
/// dtype of a class template unless it is float64. A property whose value is that of the dictionary `_defaults` of the
/// class is left out. Of longer arrays and lists the first elements.
std::string print(const py::object& object);

}  // namespace ormix::python
