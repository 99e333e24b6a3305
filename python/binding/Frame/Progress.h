#pragma once

#include "Binding.h"
#include "Calls.h"
#include "Errors.h"

#include <ORMIXMath/Estimation/ProgressCallback.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <chrono>
#include <exception>
#include <string>

namespace ormix::python {

/// A progress callback of the library that asks Python, within a call that has released the interpreter lock: whether
/// the user wants to interrupt it (Ctrl-C), and what a callable of the user says. It asks at most 20 times a second, so
/// that it costs next to nothing how often the library calls it; at the first call and at the fraction 1 always.
/// \code
/// Progress progress(callable);
/// options.progress = progress.callback();
/// progress.run([&] { return simplify(mesh, options); });
/// \endcode
class Progress {
 public:
  /// \param callable what is called with the fraction, 0 to 1, or None. It stops the call by an exception, or by a
  /// result that is false and not None
  /// \throw py::type_error for what cannot be called
  explicit Progress(py::object callable);

  /// The callback, for one thread at a time; valid as long as this object, which must stay where it is.
  ProgressCallback callback();

  /// Calls `work`, which answers a BoolResult, as a long call, and raises in Python what stopped it or why it failed.
  /// \param className the class that was asked, or empty
  template <class Work>
  void run(const Work& work, const std::string& className = {}) const {
    const BoolResult result = [&] {
      const Reading reading;
      return work();
    }();
    check();
    python::check(result, className);
  }

  /// Raises in Python what the callable has raised, or KeyboardInterrupt; to be called after the long call.
  void check() const;

 private:
  bool ask(omReal64 fraction);

  py::object _callable;
  std::exception_ptr _error;
  std::chrono::steady_clock::time_point _nextTime;
};

}  // namespace ormix::python
