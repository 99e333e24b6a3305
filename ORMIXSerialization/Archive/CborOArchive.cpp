#include <ORMIXSerialization/Archive/ArchiveHeader.h>
#include <ORMIXSerialization/Archive/ArrayScalar.h>
#include <ORMIXSerialization/Archive/CborOArchive.h>
#include <ORMIXSerialization/Archive/CborTags.h>
#include <ORMIXSerialization/Archive/WriterState.h>

#include <algorithm>
#include <cstring>

namespace ormix {

namespace {

/// The maximum length of the head of an item, in bytes.
constexpr std::size_t s_headSize = 9;
/// The most heads that follow a key: those of an array, its shape and its type.
constexpr std::size_t s_maxNbHeads = 7;

/// The kinds of items (RFC 8949, section 3.1), in the upper bits of their heads.
enum eMajorType : unsigned char { Unsigned, Negative, Bytes, Text, Array, Map, Tag, Simple };

constexpr char s_openList = '\x9F';  ///< the head of a list that is ended by a break
constexpr char s_break = '\xFF';
constexpr char s_false = '\xF4';
constexpr char s_true = '\xF5';

/// Writes a byte and an unsigned integer behind it, most significant byte first; returns their end.
template <class Integer>
char* putBigEndian(char* at, unsigned first, Integer value) {
  *at++ = static_cast<char>(first);
  for (std::size_t shift = 8 * sizeof value; shift != 0; ++at) *at = static_cast<char>(value >> (shift -= 8));
  return at;
}

/// Writes the head of an item in its shortest form and returns its end.
char* putHead(char* at, eMajorType type, omUInt64 argument) {
  const unsigned first = unsigned{type} << 5;
  if (argument < 24) {
    *at = static_cast<char>(first | static_cast<unsigned>(argument));
    return at + 1;
  }
  if (argument <= 0xFF) return putBigEndian(at, first | 24, static_cast<unsigned char>(argument));
  if (argument <= 0xFFFF) return putBigEndian(at, first | 25, static_cast<unsigned short>(argument));
  if (argument <= 0xFFFFFFFF) return putBigEndian(at, first | 26, static_cast<omUInt32>(argument));
  return putBigEndian(at, first | 27, argument);
}

/// Writes a real with all its bits and returns its end.
/// @{
char* putReal(char* at, omReal32 value) {
  omUInt32 bits;
  std::memcpy(&bits, &value, sizeof bits);
  return putBigEndian(at, 0xFA, bits);
}
char* putReal(char* at, omReal64 value) {
  omUInt64 bits;
  std::memcpy(&bits, &value, sizeof bits);
  return putBigEndian(at, 0xFB, bits);
}
/// @}

char* putShape(char* at, const NumericArrayView& array) {
  at = putHead(at, Tag, s_rowMajorTag);
  at = putHead(at, Array, 2);
  at = putHead(at, Array, 2);
  at = putHead(at, Unsigned, array.nbRows);
  return putHead(at, Unsigned, array.nbColumns);
}

}  // namespace

struct CborOArchive::Writer {
  WriterState state;

  explicit Writer(std::ostream& stream) : state(stream) {}

  void item(char byte) { state.out.put(byte); }
  /// Writes the start of an entry. Returns where its value follows, with room for all heads of a value.
  char* start(std::string_view key) {
    constexpr std::size_t room = s_maxNbHeads * s_headSize;
    if (key.size() > s_archiveBlockSize / 2) {
      char* at = putHead(state.out.room(room), Map, 1);
      state.out.advanceTo(putHead(at, Text, key.size()));
      state.out.put(key);
      return state.out.room(room);
    }
    char* at = putHead(state.out.room(key.size() + 2 * room), Map, 1);
    at = putHead(at, Text, key.size());
    std::memcpy(at, key.data(), key.size());
    return at + key.size();
  }
  /// Writes an entry whose value `putValue` writes to the place that it is given, and of which it returns the end.
  template <class PutValue>
  BoolResult entry(std::string_view key, PutValue putValue) {
    if (state.accepts(key)) state.out.advanceTo(putValue(start(key)));
    return state.result();
  }
};

CborOArchive::CborOArchive(std::ostream& stream) : _writer(new Writer(stream)) {
  _writer->item(s_openList);
  writeArchiveHeader(*this);
}

CborOArchive::~CborOArchive() {
  try {
    close();
  } catch (const std::exception&) {
    // Out of memory, or an exception of the stream's buffer; a destructor cannot report it.
  }
}

// The number of entries is not known yet, and a stream need not support going back to write it.
BoolResult CborOArchive::beginSection(std::string_view key) {
  if (_writer->state.openSection(key)) {
    char* at = _writer->start(key);
    *at = s_openList;
    _writer->state.out.advanceTo(at + 1);
  }
  return _writer->state.result();
}

BoolResult CborOArchive::endSection() {
  if (_writer->state.closeSection()) _writer->item(s_break);
  return _writer->state.result();
}

BoolResult CborOArchive::writeBool(std::string_view key, bool value) {
  return _writer->entry(key, [value](char* at) { return *at = value ? s_true : s_false, at + 1; });
}

BoolResult CborOArchive::writeInteger(std::string_view key, omInt64 value) {
  const auto bits = static_cast<omUInt64>(value);
  return _writer->entry(
      key, [=](char* at) { return value >= 0 ? putHead(at, Unsigned, bits) : putHead(at, Negative, ~bits); });
}

BoolResult CborOArchive::writeUnsigned(std::string_view key, omUInt64 value) {
  return _writer->entry(key, [value](char* at) { return putHead(at, Unsigned, value); });
}

BoolResult CborOArchive::writeReal(std::string_view key, omReal64 value) {
  return _writer->entry(key, [value](char* at) { return putReal(at, value); });
}

BoolResult CborOArchive::writeReal(std::string_view key, omReal32 value) {
  return _writer->entry(key, [value](char* at) { return putReal(at, value); });
}

BoolResult CborOArchive::writeText(std::string_view key, std::string_view value) {
  if (_writer->state.acceptsText(key, value)) {
    _writer->state.out.advanceTo(putHead(_writer->start(key), Text, value.size()));
    _writer->state.out.put(value);
  }
  return _writer->state.result();
}

BoolResult CborOArchive::writeArray(std::string_view key, const NumericArrayView& array) {
  if (_writer->state.accepts(key)) {
    const std::size_t size = array.nbRows * std::max<std::size_t>(array.nbColumns, 1) * scalarSize(array.scalar);
    char* at = _writer->start(key);
    if (array.nbColumns != 0) at = putShape(at, array);
    at = putHead(at, Tag, typedArrayTag(array.scalar));
    _writer->state.out.advanceTo(putHead(at, Bytes, size));
    _writer->state.out.put(std::string_view(static_cast<const char*>(array.data), size));
  }
  return _writer->state.result();
}

BoolResult CborOArchive::close() {
  if (_writer->state.beginClose()) _writer->item(s_break);
  return _writer->state.endClose();
}

}  // namespace ormix
