#pragma once

#include <string>
#include <type_traits>
#include <utility>

namespace ormix {

/// The outcome of an operation that can fail: a value and a message, empty when all went well.
template <class T>
class ProcessingResult {
 public:
  /// No message; `ProcessingResult<bool>` starts successful, other values value-initialised.
  ProcessingResult() : _result(std::is_same_v<T, bool> ? static_cast<T>(true) : T()) {}
  /// A value without a message.
  ProcessingResult(T value) : _result(std::move(value)) {}  // NOLINT(google-explicit-constructor): `return true;`
  /// A value and what there is to say of it.
  ProcessingResult(T value, std::string message) : _result(std::move(value)), _message(std::move(message)) {}

  /// The value.
  const T& getResult() const { return _result; }
  /// Why the operation failed, for a person; empty after a success.
  const std::string& getMessage() const { return _message; }

  /// True when a boolean result is true.
  explicit operator bool() const { return static_cast<bool>(_result); }

 private:
  T _result;
  std::string _message;
};

/// Success, or failure with a message that says why. Successful when default-constructed.
using BoolResult = ProcessingResult<bool>;

/// A failed result with its reason.
inline BoolResult failure(std::string message) { return BoolResult(false, std::move(message)); }

}  // namespace ormix
