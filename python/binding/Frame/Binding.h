#pragma once

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <boost/smart_ptr/shared_ptr.hpp>

PYBIND11_DECLARE_HOLDER_TYPE(Class, boost::shared_ptr<Class>)

/// \file
/// What every source of the Python module includes: pybind11 with the pointers that the library uses.
///
/// The module has one function `bind...` for each room of the library, in a folder of the same name; Module.cpp calls
/// them in an order in which base classes come first.

namespace ormix::python {

namespace py = pybind11;
using namespace py::literals;  // "name"_a

}  // namespace ormix::python
