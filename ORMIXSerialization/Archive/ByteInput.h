#pragma once

#include <ORMIXSerialization/Archive/ByteOutput.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <optional>

namespace ormix {

/// Reads a stream in blocks and gives access to the next bytes before they are consumed. The stream need not support
/// seeking; if it does, the number of remaining bytes is known.
class ByteInput {
 public:
  /// \param stream must outlive this object
  explicit ByteInput(std::istream& stream);

  /// The next `size` bytes (at most `s_archiveBlockSize`), which are not consumed and valid until the next call; null
  /// when fewer are left.
  const unsigned char* peek(std::size_t size) { return buffered() >= size ? _block.get() + _begin : refill(size); }
  /// The number of bytes that `peek` returns without reading the stream.
  std::size_t buffered() const { return _end - _begin; }
  /// Consumes bytes that `peek` has returned.
  void skip(std::size_t size) { _begin += size; }
  /// Consumes the next bytes and copies them to `target`. Returns their number, which is below `size` only at the end
  /// of the stream or when reading has failed.
  std::size_t read(void* target, std::size_t size);

  /// The number of bytes up to the end of the stream, if it can be determined.
  std::optional<omUInt64> remaining() {
    return _streamLeft ? std::optional<omUInt64>(*_streamLeft + buffered()) : measuredRemaining();
  }
  /// Whether `peek` returns so many bytes without reading the stream; false until `remaining` was asked for once.
  bool isAtHand(omUInt64 size) const { return _measured && size <= buffered(); }
  /// A lower bound of `remaining()`: bytes that can be read without waiting for them.
  omUInt64 available();
  /// Whether reading has failed for another reason than the end of the stream.
  bool broken() const { return _broken; }

 private:
  const unsigned char* refill(std::size_t size);
  std::size_t readStream(void* target, std::size_t size);
  std::optional<omUInt64> measuredRemaining();
  void measureStream();

  std::istream& _stream;
  std::unique_ptr<unsigned char[]> _block;
  std::size_t _begin = 0;  ///< bytes of the block from here to `_end` have been read and not consumed
  std::size_t _end = 0;
  std::optional<omUInt64> _streamLeft;  ///< bytes of the stream behind the block, if known
  bool _measured = false;
  bool _broken = false;
};

}  // namespace ormix
