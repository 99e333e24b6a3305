#include "Instances.h"

namespace ormix::python {
namespace {

// pybind11 calls it for memory where an instance has no value yet and one is asked for; constructors do not need it.
void* refuse(std::size_t) { throw py::type_error("the object was not made: __init__ of its class was not called"); }

}  // namespace

void requireConstruction(const py::module_& module) {
  for (const auto& item : py::cast<py::dict>(module.attr("__dict__"))) {
    if (!PyType_Check(item.second.ptr())) continue;
    auto* const type = reinterpret_cast<PyTypeObject*>(item.second.ptr());
    if (py::detail::type_info* const info = py::detail::get_type_info(type)) info->operator_new = &refuse;
  }
}

}  // namespace ormix::python
