#pragma once

#include "Arrays.h"
#include "Print.h"

#include <string>
#include <type_traits>
#include <utility>

namespace ormix::python {

/// Adds the class of a result of several values, which Python reads and does not change. It is printed with all of
/// them.
/// \code
/// Result<Width>(module, "Width", "A width and where it is.").value("width", &Width::width, "In the unit of the
/// points.");
/// \endcode
template <class Struct>
class Result {
 public:
  Result(py::module_& module, const char* name, const char* doc) : _class(module, name, doc) {
    _class.def("__repr__", &print);
  }
  ~Result() { _class.attr("__match_args__") = py::tuple(_names); }
  Result(const Result&) = delete;
  Result& operator=(const Result&) = delete;

  /// Adds a value: a member, or a function of the struct, as `def_property_readonly` takes it.
  template <class Value>
  Result& value(const char* name, Value&& get, const char* doc) {
    _class.def_property_readonly(name, std::forward<Value>(get), doc);
    _names.append(name);
    return *this;
  }
  /// A member, also one of a base.
  template <class Member, class Owner, std::enable_if_t<!std::is_function_v<Member>, int> = 0>
  Result& value(const char* name, Member Owner::*member, const char* doc) {
    _class.def_property_readonly(
        name, [member](const Struct& self) { return self.*member; }, doc);
    _names.append(name);
    return *this;
  }
  /// Adds a value that is not printed, as one that is large.
  template <class Value>
  Result& hidden(const char* name, Value&& get, const char* doc) {
    _class.def_property_readonly(name, std::forward<Value>(get), doc);
    return *this;
  }

 private:
  py::class_<Struct> _class;
  py::list _names;
};

}  // namespace ormix::python
