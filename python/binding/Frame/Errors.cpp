#include "Errors.h"

#include <ORMIXUtil/Exception/BaseException.h>

namespace ormix::python {
namespace {

// The class `ormixgeometry.Error`; never destroyed, as exceptions may be translated while Python ends.
PyObject* s_error = nullptr;

// Fills the attributes of an exception that is about to be raised.
void setError(const std::string& message, const std::string& className, const std::string& key,
              const std::string& function = {}, const std::string& file = {}, int line = 0) {
  const py::object error = py::reinterpret_borrow<py::object>(s_error)(message);
  error.attr("message") = message;
  error.attr("class_name") = className;
  error.attr("key") = key;
  error.attr("function") = function;
  error.attr("file") = file;
  error.attr("line") = line;
  PyErr_SetObject(s_error, error.ptr());
}

// What stands between `begin` and the next `end`; empty where there is none. Messages name classes as `Class X:` or
// `class "X"`, and keys as `Key "X"`.
std::string between(const std::string& message, const std::string& begin, char end) {
  const std::size_t found = message.find(begin);
  if (found == std::string::npos) return {};
  const std::size_t text = found + begin.size();
  // Names of classes have double colons, so that a single one ends them.
  for (std::size_t i = text; i < message.size(); ++i) {
    if (message[i] == end && end == ':' && i + 1 < message.size() && message[i + 1] == ':')
      ++i;
    else if (message[i] == end)
      return message.substr(text, i - text);
  }
  return {};
}

std::string classIn(const std::string& message) {
  const std::string name = between(message, "Class ", ':');
  return name.empty() ? between(message, "class \"", '"') : name;
}

std::string keyIn(const std::string& message) { return between(message, "Key \"", '"'); }

}  // namespace

void bindErrors(py::module_& module) {
  s_error = PyErr_NewExceptionWithDoc(
      "ormixgeometry.Error",
      "What the library could not do, and why.\n\n"
      "Attributes: `message`; `class_name` and `key`, the class and the field or argument that were wrong, where they\n"
      "are known, else empty; `function`, `file` and `line`, where the library noticed it.",
      PyExc_RuntimeError, nullptr);
  if (s_error == nullptr) throw py::error_already_set();
  module.attr("Error") = py::reinterpret_borrow<py::object>(s_error);
  py::register_exception_translator([](std::exception_ptr exception) {
    try {
      if (exception) std::rethrow_exception(exception);
    } catch (const BaseException& error) {
      setError(error.getMessage(), classIn(error.getMessage()), keyIn(error.getMessage()), error.getFunction(),
               error.getFile(), error.getLine());
    }
  });
}

void raiseError(const std::string& message, const std::string& className, const std::string& key) {
  const py::gil_scoped_acquire lock;  // a long call may fail in its midst
  setError(message, className.empty() ? classIn(message) : className, key.empty() ? keyIn(message) : key);
  throw py::error_already_set();
}

}  // namespace ormix::python
