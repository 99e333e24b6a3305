#pragma once

#include <cstddef>
#include <cstring>
#include <iosfwd>
#include <memory>
#include <string_view>

namespace ormix {

/// The size of the buffers of archives, in bytes.
inline constexpr std::size_t s_archiveBlockSize = 65536;

/// Collects small pieces of data and writes them to a stream in blocks; larger pieces are written directly. The locale
/// of the stream has no influence. After a failure, data are discarded.
class ByteOutput {
 public:
  /// \param stream must outlive this object
  explicit ByteOutput(std::ostream& stream);

  /// A buffer for at least `size` bytes (at most `s_archiveBlockSize`). The bytes that the caller stores at its
  /// beginning become part of the output by `advanceTo`.
  char* room(std::size_t size) {
    if (s_archiveBlockSize - _used < size) writeBlock();
    return _block.get() + _used;
  }
  /// Appends the bytes from `room()` to `end` to the output.
  void advanceTo(const char* end) { _used = static_cast<std::size_t>(end - _block.get()); }

  /// Appends one byte or several.
  /// @{
  void put(char c) {
    char* at = room(1);
    *at = c;
    ++_used;
  }
  void put(std::string_view bytes) {
    if (bytes.size() > s_archiveBlockSize / 2) return putLarge(bytes.data(), bytes.size());
    if (bytes.empty()) return;
    std::memcpy(room(bytes.size()), bytes.data(), bytes.size());
    _used += bytes.size();
  }
  /// @}
  /// Appends bytes without copying them to the buffer.
  void putLarge(const void* bytes, std::size_t size);

  /// The number of bytes of the output so far.
  std::size_t position() const { return _written + _used; }
  /// Writes the buffer to the stream and flushes the stream; a full disk is detected here at the latest.
  void flush();
  /// False when writing to the stream has failed.
  bool good() const { return _good; }

 private:
  void writeBlock();
  void write(const char* bytes, std::size_t size);

  std::ostream& _stream;
  std::unique_ptr<char[]> _block;
  std::size_t _used = 0;     ///< bytes in the block
  std::size_t _written = 0;  ///< bytes before the block
  bool _good;
};

}  // namespace ormix
