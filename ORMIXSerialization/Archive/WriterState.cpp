#include <ORMIXSerialization/Archive/Utf8.h>
#include <ORMIXSerialization/Archive/WriterState.h>

namespace ormix {

using Message = eORMIXSerializationMessage;

WriterState::WriterState(std::ostream& stream) : out(stream) {}

bool WriterState::accepts(std::string_view key) {
  if (_failure.failed()) return false;
  if (_closed) return _failure.set(Message::eSM_Closed);
  return isUtf8(key) || _failure.set(Message::eSM_InvalidText, shownText(key));
}

bool WriterState::openSection(std::string_view key) {
  if (!accepts(key)) return false;
  if (_depth == s_maxArchiveDepth) return _failure.set(Message::eSM_TooDeep, shownText(key), s_maxArchiveDepth);
  ++_depth;
  return true;
}

bool WriterState::closeSection() {
  if (_failure.failed()) return false;
  if (_depth == 0) return _failure.set(Message::eSM_NoSectionOpen);
  --_depth;
  return true;
}

bool WriterState::acceptsText(std::string_view key, std::string_view text) {
  return accepts(key) && (isUtf8(text) || _failure.set(Message::eSM_InvalidText, shownText(key)));
}

BoolResult WriterState::failedResult() {
  if (!out.good()) _failure.set(Message::eSM_StreamNotWritable);
  return _failure.result();
}

bool WriterState::beginClose() {
  if (_closed) return false;
  _closed = true;
  if (_depth != 0) _failure.set(Message::eSM_SectionsOpen, _depth);
  return !_failure.failed();
}

BoolResult WriterState::endClose() {
  out.flush();
  return result();
}

}  // namespace ormix
