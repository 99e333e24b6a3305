#include "Print.h"

namespace ormix::python {
namespace {

// The first rows of an array as a list, and how many more there are.
std::string printArray(const py::array& array) {
  constexpr py::ssize_t mostRows = 4;
  if (array.ndim() == 0 || array.shape(0) <= mostRows) return py::cast<std::string>(py::repr(array.attr("tolist")()));
  const py::object first = array[py::slice(0, mostRows, 1)].attr("tolist")();
  std::string text = py::cast<std::string>(py::repr(first));
  text.pop_back();
  return text + ", ... " + std::to_string(array.shape(0) - mostRows) + " more]";
}

}  // namespace

std::string print(const py::object& object) {
  const py::handle type = py::type::handle_of(object);
  const bool isTemplate = py::hasattr(type, "family");
  std::string text = py::cast<std::string>(isTemplate ? type.attr("family") : type.attr("__name__")) + '(';
  const char* separator = "";
  for (const py::handle field : py::getattr(type, "__match_args__", py::tuple())) {
    const py::object value = object.attr(field);
    text += separator + py::cast<std::string>(field) + '=';
    text += py::isinstance<py::array>(value) ? printArray(value) : py::cast<std::string>(py::repr(value));
    separator = ", ";
  }
  if (isTemplate) {
    const auto dtype = py::cast<std::string>(type.attr("dtype").attr("name"));
    if (dtype != "float64") text += std::string(separator) + "dtype='" + dtype + "'";
  }
  return text + ')';
}

}  // namespace ormix::python
