#pragma once

#include "Binding.h"

#include <ORMIXUtil/ProcessingResult.h>

namespace ormix::python {

/// Adds `Error` to the module, and lets every exception of the library arrive in Python as one.
void bindErrors(py::module_& module);

/// Raises `Error` in Python, with or without the interpreter lock.
/// \param className the class that was asked, or empty
/// \param key what was wrong of it: an argument or the key of a field; or empty
[[noreturn]] void raiseError(const std::string& message, const std::string& className = {},
                             const std::string& key = {});

/// Raises `Error` with the message of a failed result.
inline void check(const BoolResult& result, const std::string& className = {}, const std::string& key = {}) {
  if (!result) raiseError(result.getMessage(), className, key);
}

}  // namespace ormix::python
