#pragma once

#include <ORMIXSerialization/Message/SerializationMessage.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <string>
#include <utility>

namespace ormix {

/// The first failure of an archive: it stays, and every later operation answers it again.
class FirstFailure {
 public:
  bool failed() const { return _failed; }
  /// Success, or the first failure.
  BoolResult result() const { return _failed ? failure(_message) : BoolResult(); }

  /// Fails with a message of the library's catalogue, unless something failed before. Always false, to be returned.
  template <class... Arguments>
  bool set(eORMIXSerializationMessage::eId id, const Arguments&... arguments) {
    const bool isFirst = !_failed;
    _failed = true;  // also when there is no memory for the message
    if (isFirst) _message = serializationMessage(id, arguments...);
    return false;
  }
  /// Fails with a text that says more than the first failure did.
  void replace(std::string message) {
    _message = std::move(message);
    _failed = true;
  }

 private:
  std::string _message;
  bool _failed = false;
};

}  // namespace ormix
