#include <ORMIXSerialization/Archive/ByteInput.h>
#include <ORMIXSerialization/Archive/JsonSource.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace ormix {

namespace {

/// Skips a byte-order mark and white space. Returns whether a list or the end of the stream follows.
bool skipToList(ByteInput& input) {
  const unsigned char* bytes = input.peek(3);
  if (bytes && std::memcmp(bytes, "\xEF\xBB\xBF", 3) == 0) input.skip(3);
  while ((bytes = input.peek(1)) && (*bytes == ' ' || *bytes == '\t' || *bytes == '\r' || *bytes == '\n'))
    input.skip(1);
  return !bytes || *bytes == '[';
}

}  // namespace

// If the number of bytes in the stream is known, memory is allocated at once, else it is doubled when it is full.
JsonSource::JsonSource(std::istream& stream, std::size_t padding, std::size_t maxSize) {
  ByteInput input(stream);
  if (!skipToList(input)) {
    _state = eState::NoList;
    return;
  }
  const auto expected = static_cast<std::size_t>(std::min<omUInt64>(input.available(), maxSize));
  grow(std::max(expected + 1, s_archiveBlockSize) + padding);
  for (;;) {
    const std::size_t room = _capacity - padding - _size;
    const std::size_t count = input.read(_bytes.get() + _size, room);
    _size += count;
    if (count < room) break;
    if (_size > maxSize) break;
    grow(2 * _capacity);
  }
  if (_size > maxSize) _state = eState::TooLong;
  if (input.broken()) _state = eState::Broken;
  std::memset(_bytes.get() + _size, 0, _capacity - _size < padding ? _capacity - _size : padding);
}

// realloc can move a large block by remapping its pages instead of copying it.
void JsonSource::grow(std::size_t capacity) {
  char* bytes = static_cast<char*>(std::realloc(_bytes.get(), capacity));
  if (!bytes) throw std::bad_alloc();
  static_cast<void>(_bytes.release());
  _bytes.reset(bytes);
  _capacity = capacity;
}

}  // namespace ormix
