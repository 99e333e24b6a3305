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

// The same of a list.
std::string printList(const py::list& list) {
  constexpr std::size_t mostItems = 4;
  if (list.size() <= mostItems) return py::cast<std::string>(py::repr(list));
  std::string text = py::cast<std::string>(py::repr(list[py::slice(0, mostItems, 1)]));
  text.pop_back();
  return text + ", ... " + std::to_string(list.size() - mostItems) + " more]";
}

std::string printValue(const py::object& value) {
  if (py::isinstance<py::array>(value)) return printArray(value);
  if (py::isinstance<py::list>(value)) return printList(value);
  return py::cast<std::string>(py::repr(value));
}

}  // namespace

std::string print(const py::object& object) {
  const py::handle type = py::type::handle_of(object);
  const bool isTemplate = py::hasattr(type, "family");
  std::string text = py::cast<std::string>(isTemplate ? type.attr("family") : type.attr("__name__")) + '(';
  const char* separator = "";
  const py::dict defaults = py::getattr(type, "_defaults", py::dict());
  for (const py::handle field : py::getattr(type, "__match_args__", py::tuple())) {
    const py::object value = object.attr(field);
    if (defaults.contains(field) && value.equal(defaults[field])) continue;
    text += separator + py::cast<std::string>(field) + '=' + printValue(value);
    separator = ", ";
  }
  if (isTemplate) {
    const auto dtype = py::cast<std::string>(type.attr("dtype").attr("name"));
    if (dtype != "float64") text += std::string(separator) + "dtype='" + dtype + "'";
  }
  return text + ')';
}

}  // namespace ormix::python
