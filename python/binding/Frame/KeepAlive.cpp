#include "KeepAlive.h"

#include <memory>
#include <utility>

namespace ormix::python {
namespace {

// The object that pybind11 releases with the node; null without one.
PyObject** keeperSlot(const py::object& node) {
  auto& patients = py::detail::get_internals().patients;
  const auto found = patients.find(node.ptr());
  return found == patients.end() || found->second.empty() ? nullptr : &found->second.front();
}

}  // namespace

py::object keeperOf(const py::object& node, boost::shared_ptr<const void> owner) {
  PyObject* const* const slot = keeperSlot(node);
  if (slot != nullptr && *slot != Py_None) return py::reinterpret_borrow<py::object>(*slot);
  using Owner = boost::shared_ptr<const void>;
  auto held = std::make_unique<Owner>(std::move(owner));
  py::capsule keeper(held.get(), [](void* pointer) { delete static_cast<Owner*>(pointer); });
  held.release();
  return std::move(keeper);
}

void keepAlive(const py::object& node, const py::object& keeper) {
  if (PyObject** const slot = keeperSlot(node)) {
    // What is released may change the table, so it is released last.
    const py::object former = py::reinterpret_steal<py::object>(std::exchange(*slot, keeper.inc_ref().ptr()));
    return;
  }
  py::detail::keep_alive_impl(node, keeper);
}

}  // namespace ormix::python
