#pragma once

#include "Binding.h"

#include <ORMIXUtil/Enumeration.h>

#include <algorithm>
#include <set>
#include <string>

namespace ormix::python {

/// Adds an enumeration of the library with the names of its enumerators. Arguments of its type may also be given by
/// name: `type="eP2DT_Interior"`.
template <class Enumeration>
void bindEnumeration(py::module_& module, const char* doc) {
  using Names = EnumerationNames<Enumeration>;
  py::enum_<Enumeration> enumeration(module, std::string(Names::typeName).c_str(), doc);
  for (std::size_t i = 0; i < Names::names.size(); ++i)
    enumeration.value(std::string(Names::names[i]).c_str(), static_cast<Enumeration>(i));
  // Those of py::enum_ take any number, also one that is no enumerator.
  for (const char* unchecked : {"__init__", "__setstate__"}) py::delattr(enumeration, unchecked);
  enumeration.def(py::init([](std::size_t value) {
                    if (value >= Names::names.size())
                      throw py::value_error(std::to_string(value) + " is no " + std::string(Names::typeName));
                    return static_cast<Enumeration>(value);
                  }),
                  "value"_a);
  enumeration.def("__reduce__", [](const py::object& self) {
    return py::make_tuple(py::type::of(self), py::make_tuple(py::int_(self)));
  });
  enumeration.def(py::init([](const std::string& name) {
                    const auto found = std::find(Names::names.begin(), Names::names.end(), name);
                    if (found == Names::names.end())
                      throw py::value_error("\"" + name + "\" is no " + std::string(Names::typeName));
                    return static_cast<Enumeration>(found - Names::names.begin());
                  }),
                  "name"_a);
  // As it is written in a program: "ePolygon2dType.eP2DT_Exterior".
  enumeration.attr("__repr__") = enumeration.attr("__str__");
  py::implicitly_convertible<py::str, Enumeration>();
}

/// An argument that is an enumerator, with a default that signatures show by name.
template <class Enumeration>
py::arg_v enumerator(const char* name, Enumeration value) {
  static std::set<std::string> texts;  // pybind11 reads a text after it was given
  return {name, value, texts.insert("'" + toString(value) + "'").first->c_str()};
}

}  // namespace ormix::python
