#include <ORMIXSerialization/Archive/ByteInput.h>
#include <ORMIXSerialization/Archive/JsonSource.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace ormix {

// Grows by what has really arrived: a stream that is known to be long gets its room at once, any other by doubling.
JsonSource::JsonSource(std::istream& stream, std::size_t padding, std::size_t longest) {
  ByteInput input(stream);
  const auto expected = static_cast<std::size_t>(std::min<omUInt64>(input.available(), longest));
  grow(std::max(expected + 1, s_archiveBlockSize) + padding);
  for (;;) {
    const std::size_t room = _capacity - padding - _size;
    const std::size_t count = input.read(_bytes.get() + _size, room);
    _size += count;
    if (count < room) break;
    if (_size > longest) break;
    grow(2 * _capacity);
  }
  if (_size > longest) _state = eState::TooLong;
  if (input.broken()) _state = eState::Broken;
  std::memset(_bytes.get() + _size, 0, _capacity - _size < padding ? _capacity - _size : padding);
  skipByteOrderMark();
}

// realloc moves whole pages instead of copying them.
void JsonSource::grow(std::size_t capacity) {
  char* bytes = static_cast<char*>(std::realloc(_bytes.get(), capacity));
  if (!bytes) throw std::bad_alloc();
  static_cast<void>(_bytes.release());
  _bytes.reset(bytes);
  _capacity = capacity;
}

void JsonSource::skipByteOrderMark() {
  if (_size >= 3 && std::memcmp(_bytes.get(), "\xEF\xBB\xBF", 3) == 0) _start = 3;
}

}  // namespace ormix
