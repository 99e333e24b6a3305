#pragma once

#include <cstddef>
#include <cstdlib>
#include <iosfwd>
#include <memory>

namespace ormix {

/// All bytes of a stream, followed by zeros as padding for a parser that reads ahead.
class JsonSource {
 public:
  enum class eState { Read, Broken, TooLong };

  /// \param padding number of zeros behind the bytes
  /// \param longest more bytes than this are not read
  JsonSource(std::istream& stream, std::size_t padding, std::size_t longest);

  eState state() const { return _state; }
  const char* data() const { return _bytes.get() + _start; }
  std::size_t size() const { return _size - _start; }
  /// Number of bytes from `data()` that may be read.
  std::size_t capacity() const { return _capacity - _start; }

 private:
  struct Free {
    void operator()(char* bytes) const { std::free(bytes); }
  };
  void grow(std::size_t capacity);
  void skipByteOrderMark();

  std::unique_ptr<char, Free> _bytes;
  std::size_t _start = 0;
  std::size_t _size = 0;
  std::size_t _capacity = 0;
  eState _state = eState::Read;
};

}  // namespace ormix
