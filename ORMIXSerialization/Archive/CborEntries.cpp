#include <ORMIXSerialization/Archive/CborEntries.h>
#include <ORMIXSerialization/Archive/CborTags.h>
#include <ORMIXSerialization/Archive/Utf8.h>
#include <ORMIXSerialization/Archive/WriterState.h>

#include <algorithm>
#include <cstring>

namespace ormix {

using Message = eORMIXSerializationMessage;

namespace {
constexpr unsigned char s_onePairMap = 0xA1;
constexpr unsigned char s_textHead = 0x60;
}  // namespace

CborEntries::CborEntries(std::istream& stream) : decoder(stream) { openArchive(); }

bool CborEntries::openArchive() {
  CborToken head = decoder.next();
  if (decoder.input.broken()) return failure.set(Message::eSM_StreamNotReadable);
  if (head.kind == eCborKind::End) return failure.set(Message::eSM_EmptyArchive);
  if (head.kind == eCborKind::Tag && head.number == s_selfDescribedTag) head = decoder.next();
  if (head.kind != eCborKind::Array) return failure.set(Message::eSM_NotAnArchive, "it is not a list of entries");
  _lists.push_back({head.indefinite, false, head.number});
  return true;
}

bool CborEntries::refuse(std::string_view key, const char* expected, const CborToken& found) {
  if (decoder.input.broken()) return failure.set(Message::eSM_StreamNotReadable);
  if (found.kind == eCborKind::End) return failure.set(Message::eSM_Truncated, shownText(key));
  return failure.set(Message::eSM_WrongKind, shownText(key), expected, describe(found));
}

bool CborEntries::expect(std::string_view key, eCborKind kind, const char* expected, CborToken& token) {
  decoder.next(token);
  return token.kind == kind || refuse(key, expected, token);
}

bool CborEntries::canHold(std::string_view key, omUInt64 size) {
  if (decoder.input.isAtHand(size)) return true;
  const auto remaining = decoder.input.remaining();
  if (!remaining || size <= *remaining) return true;
  return failure.set(Message::eSM_DeclaredTooLong, shownText(key), size, *remaining);
}

bool CborEntries::appendText(std::string_view key, omUInt64 size, std::string& text) {
  if (!canHold(key, size)) return false;
  for (omUInt64 left = size; left != 0;) {
    const auto piece = static_cast<std::size_t>(std::min<omUInt64>(left, s_archiveBlockSize));
    const unsigned char* bytes = decoder.input.peek(piece);
    if (!bytes) return refuse(key, "a text", CborToken{eCborKind::End});
    text.append(reinterpret_cast<const char*>(bytes), piece);
    decoder.input.skip(piece);
    left -= piece;
  }
  return true;
}

bool CborEntries::takeText(std::string_view key, const CborToken& head, std::string& text) {
  text.clear();
  if (!head.indefinite && !appendText(key, head.number, text)) return false;
  while (head.indefinite && !decoder.takeBreak()) {
    CborToken chunk;
    if (!expect(key, eCborKind::Text, "a text", chunk)) return false;
    if (chunk.indefinite) return failure.set(Message::eSM_Malformed, shownText(key), "a text's piece has no length");
    if (!appendText(key, chunk.number, text)) return false;
  }
  return isUtf8(text) || failure.set(Message::eSM_InvalidText, shownText(key));
}

bool CborEntries::atEnd() {
  const List& list = _lists.back();
  return list.indefinite ? decoder.atBreak() : list.left == 0;
}

// Fast path: compares the shortest encoding of the start of an entry without copying the key. `takeStart` reads all
// other encodings.
bool CborEntries::takeCanonicalStart(std::string_view key) {
  const std::size_t head = key.size() < 24 ? 2 : 3;
  if (key.size() > 255) return false;
  const unsigned char* at = decoder.input.peek(head + key.size());
  if (!at || at[0] != s_onePairMap) return false;
  const bool sameSize =
      head == 2 ? at[1] == (s_textHead | key.size()) : at[1] == (s_textHead | 24) && at[2] == key.size();
  if (!sameSize || std::memcmp(at + head, key.data(), key.size()) != 0) return false;
  decoder.input.skip(head + key.size());
  _lists.back().entryIndefinite = false;
  return true;
}

/// The same for an entry with any key, whose text is stored; mostly it is that of the entry before.
bool CborEntries::takeCanonicalStart() {
  const unsigned char* at = decoder.input.peek(3);
  if (!at || at[0] != s_onePairMap) return false;
  const bool isShort = at[1] >= s_textHead && at[1] < s_textHead + 24;
  if (!isShort && at[1] != (s_textHead | 24)) return false;
  const std::size_t size = isShort ? at[1] - s_textHead : at[2];
  const std::size_t head = isShort ? 2 : 3;
  at = decoder.input.peek(head + size);
  if (!at) return false;
  if (_key.size() != size || std::memcmp(_key.data(), at + head, size) != 0)
    _key.assign(reinterpret_cast<const char*>(at + head), size);
  decoder.input.skip(head + size);
  _lists.back().entryIndefinite = false;
  return true;
}

bool CborEntries::takeStart(std::string_view key) {
  if (takeCanonicalStart()) return isUtf8(_key) || failure.set(Message::eSM_InvalidText, shownText(key));
  CborToken head;
  if (!expect(key, eCborKind::Map, "an entry", head)) return false;
  if (!head.indefinite && head.number != 1)
    return failure.set(Message::eSM_Malformed, shownText(key), "an entry is not one key with one value");
  _lists.back().entryIndefinite = head.indefinite;
  return expect(key, eCborKind::Text, "a key", head) && takeText(key, head, _key);
}

bool CborEntries::enterEntry(std::string_view key) {
  if (failure.failed()) return false;
  if (!_pending) {
    if (atEnd()) return failure.set(Message::eSM_KeyMissing, shownText(key));
    if (takeCanonicalStart(key)) return true;
    if (!takeStart(key)) return false;
  }
  _pending = false;
  return _key == key || failure.set(Message::eSM_KeyMismatch, shownText(key), shownText(_key));
}

bool CborEntries::leaveEntry() {
  List& list = _lists.back();
  if (list.entryIndefinite && !decoder.takeBreak())
    return failure.set(Message::eSM_Malformed, shownText(_key), "an entry is not one key with one value");
  if (!list.indefinite) --list.left;
  return true;
}

const std::string* CborEntries::peekKey() {
  if (failure.failed()) return nullptr;
  if (_pending) return &_key;
  if (atEnd() || !takeStart("")) return nullptr;
  _pending = true;
  return &_key;
}

bool CborEntries::enterSection(std::string_view key) {
  CborToken head;
  if (!enterEntry(key)) return false;
  if (_lists.size() > s_maxArchiveDepth) return failure.set(Message::eSM_TooDeep, shownText(key), s_maxArchiveDepth);
  if (!expect(key, eCborKind::Array, "a section", head)) return false;
  _lists.push_back({head.indefinite, false, head.number});
  return true;
}

bool CborEntries::finish() {
  if (const std::string* key = peekKey()) return failure.set(Message::eSM_UnreadEntry, shownText(*key));
  if (failure.failed()) return false;
  if (_lists.back().indefinite && !decoder.takeBreak()) return failure.set(Message::eSM_Truncated, "");
  return true;
}

bool CborEntries::leaveSection() {
  if (failure.failed()) return false;
  if (_lists.size() == 1) return failure.set(Message::eSM_NoSectionOpen);
  if (!finish()) return false;
  _lists.pop_back();
  return leaveEntry();
}

bool CborEntries::leaveArchive() {
  if (failure.failed()) return false;
  if (_lists.size() != 1) return failure.set(Message::eSM_SectionsOpen, _lists.size() - 1);
  if (!finish()) return false;
  if (decoder.input.peek(1)) return failure.set(Message::eSM_TrailingData);
  return !decoder.input.broken() || failure.set(Message::eSM_StreamNotReadable);
}

}  // namespace ormix
