#include <ORMIXSerialization/Archive/ArrayScalar.h>
#include <ORMIXSerialization/Archive/CborArrayReader.h>
#include <ORMIXSerialization/Archive/CborTags.h>
#include <ORMIXSerialization/Archive/NumberBlock.h>
#include <ORMIXSerialization/Archive/TypedArrayElement.h>
#include <ORMIXSerialization/Archive/Utf8.h>

namespace ormix {

using Message = eORMIXSerializationMessage;

bool CborArrayReader::badShape(const char* found) {
  return _entries.failure.set(Message::eSM_ArrayShape, shownText(_key), _sink.nbColumns, found);
}

bool CborArrayReader::truncated() { return _entries.refuse(_key, "an array", CborToken{eCborKind::End}); }

// Reserves memory only for rows that are present in the stream, whatever number was declared.
void CborArrayReader::reserve(omUInt64 nbRows, omUInt64 rowSize) {
  const omUInt64 present = _entries.decoder.input.available() / rowSize;
  _sink.reserve(static_cast<std::size_t>(std::min(nbRows, present)));
}

bool CborArrayReader::read() {
  return withScalar(_sink.scalar, [this](auto zero) { return readAs<decltype(zero)>(); });
}

// Fast path: the heads as CborOArchive writes them, in one piece, of an array of the wanted type whose numbers are at
// hand. Consumes nothing of any other array, which `readAs` reads or refuses item by item.
bool CborArrayReader::takeCanonicalHeads(omUInt64& size) {
  constexpr std::size_t longest = 4 + 9 + 9 + 2 + 9;
  constexpr unsigned isUnsigned = 0, isBytes = 2;
  constexpr unsigned char shortTag = 0xD8, pair = 0x82;
  static_assert(s_rowMajorTag < 256);
  ByteInput& input = _entries.decoder.input;
  if (!input.isAtHand(longest)) return false;
  const unsigned char* const start = input.peek(longest);
  const unsigned char* at = start;
  omUInt64 nbRows = 0, nbColumns = 0;
  if (_sink.nbColumns != 0) {
    if (at[0] != shortTag || at[1] != s_rowMajorTag || at[2] != pair || at[3] != pair) return false;
    at += 4;
    if (!CborDecoder::takeHead(at, isUnsigned, nbRows) || !CborDecoder::takeHead(at, isUnsigned, nbColumns))
      return false;
    if (nbColumns != _sink.nbColumns) return false;
  }
  if (at[0] != shortTag || at[1] != typedArrayTag(_sink.scalar)) return false;
  at += 2;
  if (!CborDecoder::takeHead(at, isBytes, size)) return false;
  const auto headSize = static_cast<std::size_t>(at - start);
  if (size > s_archiveBlockSize || !input.isAtHand(headSize + size)) return false;
  const std::size_t rowSize = scalarSize(_sink.scalar) * std::max<std::size_t>(_sink.nbColumns, 1);
  if (size % rowSize != 0 || (_sink.nbColumns != 0 && size / rowSize != nbRows)) return false;
  input.skip(headSize);
  return true;
}

template <class T>
bool CborArrayReader::readAs() {
  if (omUInt64 size = 0; takeCanonicalHeads(size)) {
    _sink.reserve(static_cast<std::size_t>(size) / (sizeof(T) * std::max<std::size_t>(_sink.nbColumns, 1)));
    return readBytes<T>(size);
  }
  const CborToken head = _entries.decoder.next();
  if (head.kind == eCborKind::Tag && head.number == s_rowMajorTag) {
    omUInt64 nbRows = 0;
    return readShape(nbRows) && readElements<T>(_entries.decoder.next(), nbRows);
  }
  if (head.kind == eCborKind::Array && _sink.nbColumns != 0) return readRows<T>(head);
  return readElements<T>(head, std::nullopt);
}

bool CborArrayReader::readShape(omUInt64& nbRows) {
  CborToken token;
  if (_sink.nbColumns == 0) return badShape("an array of several dimensions was found");
  if (!_entries.expect(_key, eCborKind::Array, "an array's shape and numbers", token)) return false;
  if (token.indefinite || token.number != 2) return badShape("a shape without numbers was found");
  if (!_entries.expect(_key, eCborKind::Array, "an array's shape", token)) return false;
  if (token.indefinite || token.number != 2) return badShape("a shape of other than two dimensions was found");
  if (!_entries.expect(_key, eCborKind::Unsigned, "a number of rows", token)) return false;
  nbRows = token.number;
  if (!_entries.expect(_key, eCborKind::Unsigned, "a number of columns", token)) return false;
  return token.number == _sink.nbColumns || badShape("rows of another length were found");
}

template <class T>
bool CborArrayReader::readElements(const CborToken& head, std::optional<omUInt64> nbRows) {
  const bool shaped = nbRows || _sink.nbColumns == 0;
  if (head.kind == eCborKind::Array) return readPlain<T>(head, nbRows);
  if (head.kind != eCborKind::Tag || !TypedArrayTag::isSupported(head.number))
    return _entries.refuse(_key, "an array of numbers", head);
  return shaped ? readTyped<T>(head.number, nbRows) : badShape("an array without its shape was found");
}

template <class T>
bool CborArrayReader::readTyped(omUInt64 tag, std::optional<omUInt64> nbRows) {
  const TypedArrayTag type(tag);
  CborToken bytes;
  if (!_entries.expect(_key, eCborKind::Bytes, "a typed array's bytes", bytes)) return false;
  if (bytes.indefinite) return _entries.refuse(_key, "a typed array of stated length", bytes);
  if (bytes.number % type.size != 0) return badShape("a part of a number was found");
  const omUInt64 count = bytes.number / type.size;
  if (nbRows && (count % _sink.nbColumns != 0 || count / _sink.nbColumns != *nbRows))
    return badShape("another number of numbers than the shape says was found");
  if (!_entries.canHold(_key, bytes.number)) return false;
  reserve(count / std::max<std::size_t>(_sink.nbColumns, 1), type.size * std::max<std::size_t>(_sink.nbColumns, 1));
  return tag == typedArrayTag(_sink.scalar) ? readBytes<T>(bytes.number) : readConverted<T>(tag, bytes.number);
}

template <class T>
bool CborArrayReader::readBytes(omUInt64 size) {
  // The sink clears the memory of each piece or copies the piece again; both are fast in the first-level cache.
  constexpr std::size_t pieceSize = 8192;
  const std::size_t rowSize = sizeof(T) * std::max<std::size_t>(_sink.nbColumns, 1);
  const std::size_t nbRowsOfPiece = std::max<std::size_t>(pieceSize / rowSize, 1);
  std::unique_ptr<T[]> staged;
  for (omUInt64 nbRows = size / rowSize; nbRows != 0;) {
    const auto nbNext = static_cast<std::size_t>(std::min<omUInt64>(nbRows, nbRowsOfPiece));
    void* const place = _sink.extend(nbNext);
    if (!place && !staged) staged.reset(new T[nbNext * rowSize / sizeof(T)]);
    void* const rows = place ? place : staged.get();
    if (_entries.decoder.input.read(rows, nbNext * rowSize) != nbNext * rowSize) return truncated();
    if (!place) _sink.append(rows, nbNext);
    nbRows -= nbNext;
  }
  return true;
}

template <class T>
bool CborArrayReader::readConverted(omUInt64 tag, omUInt64 size) {
  const TypedArrayTag type(tag);
  NumberBlock<T> block(_sink, size / type.size);
  for (; size != 0; size -= type.size) {
    const unsigned char* bytes = _entries.decoder.input.peek(type.size);
    if (!bytes) return truncated();
    T number = 0;
    if (!convert(decodeElement(type, bytes), number)) return false;
    _entries.decoder.input.skip(type.size);
    block.push(number);
  }
  block.flush();
  return true;
}

template <class T>
bool CborArrayReader::convert(const CborToken& number, T& result) {
  bool fits = false;
  if (number.kind == eCborKind::Unsigned) {
    fits = convertInteger(number.number, result);
  } else if (number.kind == eCborKind::Negative) {
    const auto value = static_cast<omInt64>(~number.number);
    fits = value < 0 && convertInteger(value, result);
  } else if (number.kind == eCborKind::Real && std::is_floating_point_v<T>) {
    if constexpr (std::is_same_v<T, omReal32>)
      if (number.isSingle) return result = number.single, true;
    fits = convertReal(number.real, result);
  } else {
    return _entries.refuse(_key, std::is_integral_v<T> ? "an integer" : "a number", number);
  }
  return fits || _entries.failure.set(Message::eSM_OutOfRange, shownText(_key), "a number", "the array's type");
}

template <class T, class Push>
bool CborArrayReader::readNumbers(const CborToken& list, Push&& push, omUInt64& count) {
  for (count = 0; list.indefinite ? !_entries.decoder.takeBreak() : count < list.number; ++count) {
    T number = 0;
    if (!convert(_entries.decoder.next(), number)) return false;
    if (!push(number)) return false;
  }
  return true;
}

template <class T>
bool CborArrayReader::readPlain(const CborToken& list, std::optional<omUInt64> nbRows) {
  const omUInt64 width = std::max<std::size_t>(_sink.nbColumns, 1);
  if (!list.indefinite && !_entries.canHold(_key, list.number)) return false;
  NumberBlock<T> block(_sink);
  const auto push = [&block](T number) { return block.push(number), true; };
  omUInt64 count = 0;
  _sink.reserve(0);
  if (!readNumbers<T>(list, push, count)) return false;
  if (nbRows && (count % width != 0 || count / width != *nbRows))
    return badShape("another number of numbers than the shape says was found");
  block.flush();
  return true;
}

template <class T>
bool CborArrayReader::readRows(const CborToken& list) {
  if (!list.indefinite && !_entries.canHold(_key, list.number)) return false;
  NumberBlock<T> block(_sink);
  const auto push = [&block](T number) { return block.push(number), true; };
  _sink.reserve(0);
  for (omUInt64 row = 0; list.indefinite ? !_entries.decoder.takeBreak() : row < list.number; ++row) {
    CborToken head;
    omUInt64 count = 0;
    if (!_entries.expect(_key, eCborKind::Array, "a row of numbers", head)) return false;
    if (!head.indefinite && head.number != _sink.nbColumns) return badShape("a row of another length was found");
    if (!readNumbers<T>(head, push, count)) return false;
    if (count != _sink.nbColumns) return badShape("a row of another length was found");
  }
  block.flush();
  return true;
}

}  // namespace ormix
