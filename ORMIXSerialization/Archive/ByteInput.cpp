#include <ORMIXSerialization/Archive/ByteInput.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <istream>

namespace ormix {

ByteInput::ByteInput(std::istream& stream) : _stream(stream), _block(new unsigned char[s_archiveBlockSize]) {}

// The caller may have enabled exceptions of the stream; here the end of the stream is an ordinary case.
std::size_t ByteInput::readStream(void* target, std::size_t size) {
  if (!_stream.good()) return 0;
  try {
    _stream.read(static_cast<char*>(target), static_cast<std::streamsize>(size));
  } catch (const std::exception&) {
    // The state bits, tested below, distinguish the cases.
  }
  const auto count = static_cast<std::size_t>(_stream.gcount());
  _broken = _broken || _stream.bad();
  if (_streamLeft) *_streamLeft -= std::min<omUInt64>(*_streamLeft, count);
  return count;
}

const unsigned char* ByteInput::refill(std::size_t size) {
  std::memmove(_block.get(), _block.get() + _begin, _end - _begin);
  _end -= _begin;
  _begin = 0;
  _end += readStream(_block.get() + _end, s_archiveBlockSize - _end);
  return _end >= size ? _block.get() : nullptr;
}

std::size_t ByteInput::read(void* target, std::size_t size) {
  const std::size_t buffered = std::min(size, _end - _begin);
  if (buffered != 0) std::memcpy(target, _block.get() + _begin, buffered);
  _begin += buffered;
  if (buffered == size) return size;
  return buffered + readStream(static_cast<unsigned char*>(target) + buffered, size - buffered);
}

// A device may report that no bytes remain and deliver some nevertheless; the number then counts as unknown.
void ByteInput::measureStream() {
  _measured = true;
  std::streambuf& buffer = *_stream.rdbuf();
  const std::streamoff here = buffer.pubseekoff(0, std::ios::cur, std::ios::in);
  if (here < 0) return;
  const std::streamoff end = buffer.pubseekoff(0, std::ios::end, std::ios::in);
  if (end < 0) return;
  const std::streamoff back = buffer.pubseekpos(here, std::ios::in);
  if (back != here)
    _broken = true;
  else if (end > here)
    _streamLeft = static_cast<omUInt64>(end - here);
}

std::optional<omUInt64> ByteInput::measuredRemaining() {
  if (!_measured) measureStream();
  if (_streamLeft) return *_streamLeft + buffered();
  if (_stream.good()) return std::nullopt;
  return buffered();
}

omUInt64 ByteInput::available() {
  if (const auto known = remaining()) return *known;
  const std::streamsize waiting = _stream.rdbuf()->in_avail();
  return buffered() + (waiting > 0 ? static_cast<omUInt64>(waiting) : 0);
}

}  // namespace ormix
