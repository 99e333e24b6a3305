#pragma once

#include <istream>
#include <memory>
#include <string>
#include <string_view>

namespace ormix::command {

/// A file or the standard input, which is read once, from the first byte. Its first bytes can be looked at before.
class InputFile {
 public:
  /// Opens a file; "-" is the standard input.
  /// \throw DataError
  explicit InputFile(const std::string& name);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  const std::string& name() const { return _name; }
  /// The first bytes, as many as were looked at; at least a line or 512 bytes, where there are as many.
  std::string_view beginning() const;
  /// Looks at more bytes, if there are some and less than 64 KiB were looked at.
  bool lookFurther();

  /// All bytes, from the first one.
  std::istream& stream() { return *_stream; }
  /// The same as one text.
  /// \throw DataError when it is longer than 4 GiB or reading fails
  std::string readAll();
  /// The path of a regular file with the same bytes; what cannot be read twice is copied to a temporary file. Nothing
  /// may have been taken from the stream.
  /// \throw DataError when the copy cannot be made
  std::string path();
  /// The size of a regular file; 0 of others.
  std::size_t size() const { return _size; }
  /// \throw DataError when reading has failed, which the end is not
  void requireRead() const;

 private:
  class Buffer;
  std::string _name;
  std::unique_ptr<Buffer> _buffer;
  std::unique_ptr<std::istream> _stream;
  std::size_t _size = 0;
  bool _isRegular = false;
  int _copy = -1;
};

}  // namespace ormix::command
