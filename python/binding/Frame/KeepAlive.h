#pragma once

#include "Binding.h"

namespace ormix::python {

/// The object that keeps the tree alive of which `node` is part: what `keepAlive` gave it, else one that owns `node`
/// itself. It owns the root and not the nodes between, so that no chain of Python objects can become long.
/// \param owner the node
py::object keeperOf(const py::object& node, boost::shared_ptr<const void> owner);

/// Lets the object of a node keep alive what `keeper` owns, in place of what it kept alive before. None: nothing.
void keepAlive(const py::object& node, const py::object& keeper);

}  // namespace ormix::python
