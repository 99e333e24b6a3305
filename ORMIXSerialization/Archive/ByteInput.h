#pragma once

#include <ORMIXSerialization/Archive/ByteOutput.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <optional>

namespace ormix {

/// Reads a stream in blocks and lets its next bytes be looked at in place. Needs no seeking, but where the stream can
/// seek it tells how many bytes remain.
class ByteInput {
 public:
  explicit ByteInput(std::istream& stream);

  /// The next `size` bytes (at most a block) without taking them, null when the stream ends before.
  const unsigned char* peek(std::size_t size) { return _end - _begin >= size ? _block.get() + _begin : refill(size); }
  /// Takes bytes that `peek` has shown.
  void skip(std::size_t size) { _begin += size; }
  /// Copies the next bytes; answers how many, fewer than `size` only at the end of the stream.
  std::size_t read(void* target, std::size_t size);

  /// Number of bytes until the end, where the stream can say.
  std::optional<omUInt64> remaining();
  /// A number of bytes that are certainly there, without waiting for them.
  omUInt64 available();
  /// True when reading failed otherwise than by reaching the end.
  bool broken() const { return _broken; }

 private:
  const unsigned char* refill(std::size_t size);
  std::size_t readStream(void* target, std::size_t size);
  void measureStream();

  std::istream& _stream;
  std::unique_ptr<unsigned char[]> _block;
  std::size_t _begin = 0;
  std::size_t _end = 0;
  std::optional<omUInt64> _streamLeft;
  bool _measured = false;
  bool _broken = false;
};

}  // namespace ormix
