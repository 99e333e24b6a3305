#pragma once

#include "Binding.h"

#include <ORMIXUtil/ScalarTypes.h>

#include <string>

namespace ormix::python {

/// Types of coordinates to choose from by `dtype=`.
template <class... T>
struct Dtypes {};
using AllDtypes = Dtypes<omReal64, omReal32, omInt32, omUInt32>;
using RealDtypes = Dtypes<omReal64, omReal32>;

/// Calls a function with a value of the type that a dtype names, as numpy understands it: `call(omReal32())` for
/// "float32".
/// \throw py::type_error for types that are not among them
template <class First, class... Others, class Call>
auto callWithDtype(Dtypes<First, Others...>, const py::object& dtype, Call call) {
  const std::string name = py::cast<std::string>(py::dtype::from_args(dtype).attr("name"));
  const auto isNamed = [&name](auto coordinate) {
    return name == py::cast<std::string>(py::dtype::of<decltype(coordinate)>().attr("name"));
  };
  if constexpr (sizeof...(Others) == 0) {
    if (!isNamed(First())) throw py::type_error("there is none of dtype " + name);
    return call(First());
  } else {
    return isNamed(First()) ? call(First()) : callWithDtype(Dtypes<Others...>(), dtype, call);
  }
}

}  // namespace ormix::python
