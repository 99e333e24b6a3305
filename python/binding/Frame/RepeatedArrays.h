#pragma once

#include "Binding.h"

#include <pybind11/numpy.h>

namespace ormix::python {

/// Refuses an array that repeats its elements by its strides, as np.broadcast_to makes it, with more than 2^28 of them:
/// it may be larger than any memory and take as long as one likes to read. All others are bounded by the memory that
/// they have.
/// \param name names the argument in errors
/// \throw py::value_error
void requireEnd(const py::array& array, const char* name);

}  // namespace ormix::python
