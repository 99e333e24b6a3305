#pragma once

#include <cstddef>
#include <istream>
#include <string>

namespace ormix::command {

/// Takes apart a text of several JSON arrays, one after the other, each on one line or on several.
class JsonDocuments {
 public:
  explicit JsonDocuments(std::istream& stream) : _stream(stream) {}

  /// Takes the next array; what is no array is taken to the end of its line. An array that does not end is taken as far
  /// as it goes.
  /// \return false at the end of the text
  /// \throw DataError when it is longer than 1 GiB or nested more than 2,000 levels deep
  bool next(std::string& document);
  /// The line in which the last one began, counted from 1.
  std::size_t line() const { return _firstLine; }

 private:
  std::istream& _stream;
  std::size_t _line = 1;
  std::size_t _firstLine = 1;
};

}  // namespace ormix::command
