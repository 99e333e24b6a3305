#pragma once

#include <cstddef>
#include <cstdlib>
#include <iosfwd>
#include <memory>

namespace ormix {

/// All bytes of a stream that begins with a list in JSON, from that list on, followed by zeros as padding for a parser
/// that reads ahead. Of any other stream only the beginning is read.
class JsonSource {
 public:
  enum class eState { Read, NoList, Broken, TooLong };

  /// \param padding number of zeros behind the bytes
  /// \param longest more bytes than this are not read
  JsonSource(std::istream& stream, std::size_t padding, std::size_t longest);

  eState state() const { return _state; }
  const char* data() const { return _bytes.get(); }
  std::size_t size() const { return _size; }
  /// Number of bytes from `data()` that may be read.
  std::size_t capacity() const { return _capacity; }

 private:
  struct Free {
    void operator()(char* bytes) const { std::free(bytes); }
  };
  void grow(std::size_t capacity);

  std::unique_ptr<char, Free> _bytes;
  std::size_t _size = 0;
  std::size_t _capacity = 0;
  eState _state = eState::Read;
};

}  // namespace ormix
