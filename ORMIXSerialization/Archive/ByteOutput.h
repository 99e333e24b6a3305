#pragma once

#include <cstddef>
#include <cstring>
#include <iosfwd>
#include <memory>
#include <string_view>

namespace ormix {

/// Largest piece that archives keep in memory besides the data themselves.
inline constexpr std::size_t s_archiveBlockSize = 65536;

/// Collects small pieces and hands them to a stream in blocks; what is larger than a block goes straight to the stream.
/// The stream's locale has no influence. After a failure everything is dropped.
class ByteOutput {
 public:
  explicit ByteOutput(std::ostream& stream);

  /// Room for at least `size` bytes (at most a block), to be filled from the front and then taken by `advanceTo`.
  char* room(std::size_t size) {
    if (s_archiveBlockSize - _used < size) send();
    return _block.get() + _used;
  }
  void advanceTo(const char* end) { _used = static_cast<std::size_t>(end - _block.get()); }

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
  void putLarge(const void* bytes, std::size_t size);

  /// Number of bytes put so far.
  std::size_t position() const { return _sent + _used; }
  /// Hands everything over and flushes the stream; a full disk shows here at the latest.
  void flush();
  bool good() const { return _good; }

 private:
  void send();
  void write(const char* bytes, std::size_t size);

  std::ostream& _stream;
  std::unique_ptr<char[]> _block;
  std::size_t _used = 0;
  std::size_t _sent = 0;
  bool _good;
};

}  // namespace ormix
