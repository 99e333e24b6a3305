#pragma once

#include "../Frame/Binding.h"

namespace ormix::python {

/// Adds the results of measures that are objects: `Moments2dO3` and `HuMoments2dO3`.
void bindMoments(py::module_& module);

/// Adds the measures as objects, the functions `area`, `perimeter`, … of one entity or of many, and the properties of
/// entities with these names. After bindMoments().
void bindMeasures(py::module_& module);

}  // namespace ormix::python
