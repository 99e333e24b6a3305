#pragma once

#include <cstddef>
#include <cstdlib>
#include <iosfwd>
#include <memory>

namespace ormix {

/// The bytes of a stream that begins with a list in JSON, from the start of the list, followed by zeros as padding for
/// a parser that reads ahead. Of any other stream only the beginning is read.
class JsonSource {
 public:
  /// The result of reading the stream.
  enum class eState {
    Read,    ///< all bytes have been read
    NoList,  ///< the stream does not begin with a list
    Broken,  ///< reading has failed
    TooLong  ///< more bytes than allowed
  };

  /// Reads the stream, which need not outlive this object.
  /// \param padding number of zeros behind the bytes
  /// \param maxSize the number of bytes that are allowed
  /// \throw std::bad_alloc when the bytes do not fit into memory
  JsonSource(std::istream& stream, std::size_t padding, std::size_t maxSize);

  /// Whether the stream was read, or why not.
  eState state() const { return _state; }
  /// The first byte of the list.
  const char* data() const { return _bytes.get(); }
  /// The number of bytes without the padding.
  std::size_t size() const { return _size; }
  /// The number of bytes that are allocated from `data()`, including the padding.
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
