#include "Progress.h"

#include <string>
#include <utility>

namespace ormix::python {

Progress::Progress(py::object callable) : _callable(std::move(callable)) {
  if (!_callable.is_none() && PyCallable_Check(_callable.ptr()) == 0)
    throw py::type_error("progress: a function of a number was wanted, not " +
                         py::cast<std::string>(py::repr(py::type::handle_of(_callable))));
}

ProgressCallback Progress::callback() {
  return [this](omReal64 fraction) { return ask(fraction); };
}

void Progress::check() const {
  if (_error) std::rethrow_exception(_error);
}

bool Progress::ask(omReal64 fraction) {
  constexpr std::chrono::milliseconds interval(50);
  const auto now = std::chrono::steady_clock::now();
  if (now < _nextTime && fraction < 1) return true;
  const py::gil_scoped_acquire acquire;
  try {
    if (_error) return false;
    if (PyErr_CheckSignals() != 0) throw py::error_already_set();
    if (!_callable.is_none()) {
      const py::object answer = _callable(fraction);
      if (!answer.is_none() && !py::bool_(answer)) return false;
    }
  } catch (const py::error_already_set&) {
    _error = std::current_exception();
    return false;
  }
  // A callable that takes long is not asked again at once.
  _nextTime = std::chrono::steady_clock::now() + interval;
  return true;
}

}  // namespace ormix::python
