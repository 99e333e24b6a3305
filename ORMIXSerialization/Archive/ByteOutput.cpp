#include <ORMIXSerialization/Archive/ByteOutput.h>

#include <algorithm>
#include <exception>
#include <ostream>

namespace ormix {

ByteOutput::ByteOutput(std::ostream& stream)
    : _stream(stream), _block(new char[s_archiveBlockSize]), _good(stream.good()) {}

// The caller may have enabled exceptions of the stream; none may leave the destructor of an archive.
void ByteOutput::write(const char* bytes, std::size_t size) {
  try {
    if (_good) _stream.write(bytes, static_cast<std::streamsize>(size));
    _good = _good && _stream.good();
  } catch (const std::exception&) {
    _good = false;
  }
}

void ByteOutput::writeBlock() {
  write(_block.get(), _used);
  _written += _used;
  _used = 0;
}

void ByteOutput::putLarge(const void* bytes, std::size_t size) {
  writeBlock();
  const char* at = static_cast<const char*>(bytes);
  // A stream in memory doubles its buffer when it is full. In one piece, the data would fill it exactly, and the few
  // bytes after them would cause a copy of all data. With a first piece of just over half, the doubled buffer has space
  // for the rest, and only that first piece is copied.
  const std::size_t first = std::min(size, size / 2 + s_archiveBlockSize);
  write(at, first);
  write(at + first, size - first);
  _written += size;
}

void ByteOutput::flush() {
  writeBlock();
  try {
    if (_good) _good = _stream.flush().good();
  } catch (const std::exception&) {
    _good = false;
  }
}

}  // namespace ormix
