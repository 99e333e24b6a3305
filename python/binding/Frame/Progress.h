#pragma once

#include "Binding.h"

#include <ORMIXMath/Estimation/ProgressCallback.h>

#include <chrono>
#include <exception>

namespace ormix::python {

/// A progress callback of the library that asks Python, within a call that has released the interpreter lock: whether
/// the user wants to interrupt it (Ctrl-C), and what a callable of the user says. It asks at most 20 times a second, so
/// that it costs next to nothing how often the library calls it; at the first call and at the fraction 1 always.
/// \code
/// Progress progress(callable);
/// options.progress = progress.callback();
/// const BoolResult result = [&] { const Reading reading; return simplify(mesh, options); }();
/// progress.check();
/// check(result);
/// \endcode
class Progress {
 public:
  /// \param callable what is called with the fraction, 0 to 1, or None. It stops the call by an exception, or by a
  /// result that is false and not None
  /// \throw py::type_error for what cannot be called
  explicit Progress(py::object callable);

  /// The callback, for one thread at a time; valid as long as this object, which must stay where it is.
  ProgressCallback callback();

  /// Raises in Python what the callable has raised, or KeyboardInterrupt; to be called after the long call.
  void check() const;

 private:
  bool ask(omReal64 fraction);

  py::object _callable;
  std::exception_ptr _error;
  std::chrono::steady_clock::time_point _nextTime;
};

}  // namespace ormix::python
