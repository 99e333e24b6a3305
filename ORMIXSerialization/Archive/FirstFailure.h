#pragma once

#include <ORMIXSerialization/Message/SerializationMessage.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <string>
#include <utility>

namespace ormix {

/// The first failure of an archive, which every later operation returns again.
class FirstFailure {
 public:
  /// Whether an operation has failed.
  bool failed() const { return _failed; }
  /// Success, or the first failure.
  BoolResult result() const { return _failed ? failure(_message) : BoolResult(); }

  /// Stores a failure with a message of the library's catalogue, unless there is one already.
  /// \return always false, so that callers can write `return failure.set(…);`
  template <class... Arguments>
  bool set(eORMIXSerializationMessage::eId id, const Arguments&... arguments) {
    const bool isFirst = !_failed;
    _failed = true;  // also when there is no memory for the message
    if (isFirst) _message = serializationMessage(id, arguments...);
    return false;
  }
  /// Replaces the failure by a more specific message.
  void replace(std::string message) {
    _message = std::move(message);
    _failed = true;
  }

 private:
  std::string _message;
  bool _failed = false;
};

}  // namespace ormix
