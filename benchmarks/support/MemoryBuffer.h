#pragma once

#include <cstddef>
#include <streambuf>
#include <string>
#include <utility>

namespace ormix::benchmarks {

/// For an std::ostream: appends to a string that is handed over at the end, where std::ostringstream would copy it.
class StringSink : public std::streambuf {
 public:
  /// \param expected number of bytes to come, as far as it is known
  explicit StringSink(std::size_t expected = 0) { _text.reserve(expected); }
  std::string take() { return std::move(_text); }

 private:
  std::streamsize xsputn(const char* data, std::streamsize size) override {
    _text.append(data, static_cast<std::size_t>(size));
    return size;
  }
  int_type overflow(int_type c) override {
    if (!traits_type::eq_int_type(c, traits_type::eof())) _text.push_back(traits_type::to_char_type(c));
    return traits_type::not_eof(c);
  }

  std::string _text;
};

/// For an std::istream: reads a string in place, where std::istringstream would copy it. The string must outlive this.
class StringSource : public std::streambuf {
 public:
  explicit StringSource(const std::string& text) {
    char* data = const_cast<char*>(text.data());  // a buffer for reading never writes through these pointers
    setg(data, data, data + text.size());
  }

 private:
  pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode) override {
    const off_type base = from == std::ios_base::beg   ? 0
                          : from == std::ios_base::cur ? gptr() - eback()
                                                       : egptr() - eback();
    const off_type target = base + offset;
    if (target < 0 || target > egptr() - eback()) return pos_type(off_type(-1));
    setg(eback(), eback() + target, egptr());
    return pos_type(target);
  }
  pos_type seekpos(pos_type position, std::ios_base::openmode mode) override {
    return seekoff(off_type(position), std::ios_base::beg, mode);
  }
};

}  // namespace ormix::benchmarks
