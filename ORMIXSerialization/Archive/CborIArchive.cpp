#include <ORMIXSerialization/Archive/ArchiveHeader.h>
#include <ORMIXSerialization/Archive/CborArrayReader.h>
#include <ORMIXSerialization/Archive/CborEntries.h>
#include <ORMIXSerialization/Archive/CborIArchive.h>
#include <ORMIXSerialization/Archive/NumberBlock.h>
#include <ORMIXSerialization/Archive/Utf8.h>

#include <limits>

namespace ormix {

using Message = eORMIXSerializationMessage;

struct CborIArchive::Reader {
  CborEntries entries;
  bool closed = false;

  explicit Reader(std::istream& stream) : entries(stream) {}

  /// Reads the entry with this key; `readValue(token, read)` reads its value, of which `token` is the first item. The
  /// value is assigned when the entry has ended as it should.
  template <class Value, class ReadValue>
  BoolResult entry(std::string_view key, Value& value, ReadValue&& readValue) {
    Value read{};
    if (entries.enterEntry(key) && readValue(entries.decoder.next(), read) && entries.leaveEntry())
      value = std::move(read);
    return entries.failure.result();
  }
  bool outOfRange(std::string_view key, const char* range) {
    return entries.failure.set(Message::eSM_OutOfRange, shownText(key), "the number", range);
  }
  template <class T>
  BoolResult integer(std::string_view key, T& value, const char* range) {
    return entry(key, value, [&](const CborToken& token, T& read) {
      const bool negative = token.kind == eCborKind::Negative;
      if (!negative && token.kind != eCborKind::Unsigned) return entries.refuse(key, "an integer", token);
      const auto below = static_cast<omInt64>(~token.number);
      const bool fits = negative ? below < 0 && convertInteger(below, read) : convertInteger(token.number, read);
      if (!fits) return outOfRange(key, range);
      return true;
    });
  }
  template <class T>
  BoolResult real(std::string_view key, T& value) {
    return entry(key, value, [&](const CborToken& token, T& read) {
      if (token.kind == eCborKind::Unsigned)
        read = static_cast<T>(token.number);
      else if (token.kind == eCborKind::Negative)
        read = T(-1) - static_cast<T>(token.number);
      else if (token.kind != eCborKind::Real)
        return entries.refuse(key, "a real", token);
      else if (std::is_same_v<T, omReal32> && token.isSingle)
        read = token.single;
      else if (!convertReal(token.real, read))
        return outOfRange(key, "a 32-bit real");
      return true;
    });
  }
};

CborIArchive::CborIArchive(std::istream& stream) : _reader(new Reader(stream)) {
  // The message about the header describes the failure better than that of the entry inside it.
  const BoolResult header = readArchiveHeader(*this);
  if (!header) _reader->entries.failure.replace(header.getMessage());
}

CborIArchive::~CborIArchive() = default;

BoolResult CborIArchive::beginSection(std::string_view key) {
  _reader->entries.enterSection(key);
  return state();
}

BoolResult CborIArchive::endSection() {
  _reader->entries.leaveSection();
  return state();
}

std::optional<std::string> CborIArchive::nextKey() {
  const std::string* key = peekKey();
  return key ? std::optional<std::string>(*key) : std::nullopt;
}

const std::string* CborIArchive::peekKey() { return _reader->entries.peekKey(); }

BoolResult CborIArchive::readBool(std::string_view key, bool& value) {
  return _reader->entry(key, value, [&](const CborToken& token, bool& read) {
    if (token.kind != eCborKind::Bool) return _reader->entries.refuse(key, "a bool", token);
    read = token.boolean;
    return true;
  });
}

BoolResult CborIArchive::readInteger(std::string_view key, omInt64& value) {
  return _reader->integer(key, value, "a signed 64-bit integer");
}

BoolResult CborIArchive::readUnsigned(std::string_view key, omUInt64& value) {
  return _reader->integer(key, value, "an unsigned 64-bit integer");
}

BoolResult CborIArchive::readReal(std::string_view key, omReal64& value) { return _reader->real(key, value); }

BoolResult CborIArchive::readReal(std::string_view key, omReal32& value) { return _reader->real(key, value); }

BoolResult CborIArchive::readText(std::string_view key, std::string& value) {
  return _reader->entry(key, value, [&](const CborToken& token, std::string& read) {
    if (token.kind != eCborKind::Text) return _reader->entries.refuse(key, "a text", token);
    return _reader->entries.takeText(key, token, read);
  });
}

BoolResult CborIArchive::readArray(std::string_view key, NumericArraySink& sink) {
  CborEntries& entries = _reader->entries;
  if (entries.enterEntry(key) && CborArrayReader(entries, key, sink).read()) entries.leaveEntry();
  return state();
}

BoolResult CborIArchive::close() {
  if (!_reader->closed) _reader->entries.leaveArchive();
  _reader->closed = true;
  return state();
}

BoolResult CborIArchive::state() const { return _reader->entries.failure.result(); }

}  // namespace ormix
