#include <ORMIXSerialization/Archive/ByteOutput.h>

#include <algorithm>
#include <exception>
#include <ostream>

namespace ormix {

ByteOutput::ByteOutput(std::ostream& stream)
    : _stream(stream), _block(new char[s_archiveBlockSize]), _good(stream.good()) {}

// A stream whose owner has asked for exceptions must not throw through the archive's destructor.
void ByteOutput::write(const char* bytes, std::size_t size) {
  try {
    if (_good) _stream.write(bytes, static_cast<std::streamsize>(size));
    _good = _good && _stream.good();
  } catch (const std::exception&) {
    _good = false;
  }
}

void ByteOutput::send() {
  write(_block.get(), _used);
  _sent += _used;
  _used = 0;
}

void ByteOutput::putLarge(const void* bytes, std::size_t size) {
  send();
  const char* at = static_cast<const char*>(bytes);
  // A sink in memory doubles its room when it is full: after a first piece of just over half it has room for the second
  // and for the end of the archive, and moves half of the data once instead of all of them for the sake of a few bytes.
  const std::size_t first = std::min(size, size / 2 + s_archiveBlockSize);
  write(at, first);
  write(at + first, size - first);
  _sent += size;
}

void ByteOutput::flush() {
  send();
  try {
    if (_good) _good = _stream.flush().good();
  } catch (const std::exception&) {
    _good = false;
  }
}

}  // namespace ormix
