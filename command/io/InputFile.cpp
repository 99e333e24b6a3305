#include <command/frame/Errors.h>
#include <command/io/InputFile.h>
#include <command/io/Temporary.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <streambuf>
#include <vector>

namespace ormix::command {

namespace {

[[noreturn]] void fail(const std::string& what) { throw DataError(what + ": " + std::strerror(errno)); }

/// A new file that has no name any more.
int createNameless() {
  std::string path = temporaryPattern();
  const int file = ::mkstemp(path.data());
  if (file >= 0) ::unlink(path.c_str());
  return file;
}

bool writeAll(int file, const char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t nbWritten = ::write(file, bytes, size);
    if (nbWritten < 0 && errno == EINTR) continue;
    if (nbWritten <= 0) return false;
    bytes += nbWritten;
    size -= static_cast<std::size_t>(nbWritten);
  }
  return true;
}

}  // namespace

/// Reads a descriptor block by block.
class InputFile::Buffer : public std::streambuf {
 public:
  explicit Buffer(int file) : _file(file), _bytes(s_size) { setg(_bytes.data(), _bytes.data(), _bytes.data()); }
  ~Buffer() override {
    if (_file != STDIN_FILENO) ::close(_file);
  }

  std::string_view unread() const { return {gptr(), static_cast<std::size_t>(egptr() - gptr())}; }
  /// Reads more bytes behind those in memory; false at the end and when there is no room.
  bool more() {
    const auto room = static_cast<std::size_t>(_bytes.data() + s_size - egptr());
    if (room == 0) return false;
    ssize_t nbRead = 0;
    do nbRead = ::read(_file, egptr(), room);
    while (nbRead < 0 && errno == EINTR);
    if (nbRead < 0) _error = errno;
    if (nbRead > 0) setg(eback(), gptr(), egptr() + nbRead);
    return nbRead > 0;
  }
  int error() const { return _error; }

 protected:
  int_type underflow() override {
    if (gptr() == egptr()) {
      setg(_bytes.data(), _bytes.data(), _bytes.data());
      if (!more()) return traits_type::eof();
    }
    return traits_type::to_int_type(*gptr());
  }

 private:
  static constexpr std::size_t s_size = std::size_t(1) << 16;
  int _file;
  int _error = 0;
  std::vector<char> _bytes;
};

InputFile::InputFile(const std::string& name) : _name(name) {
  const int file = name == "-" ? STDIN_FILENO : ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) fail("it cannot be opened");
  _buffer = std::make_unique<Buffer>(file);
  struct stat status {};
  if (::fstat(file, &status) != 0) fail("it cannot be opened");
  if (S_ISDIR(status.st_mode)) throw DataError("it is a directory");
  _isRegular = S_ISREG(status.st_mode) && name != "-";
  if (_isRegular) _size = static_cast<std::size_t>(status.st_size);
  _stream = std::make_unique<std::istream>(_buffer.get());
  constexpr std::size_t enough = 512;
  while (beginning().size() < enough && beginning().find('\n') == std::string_view::npos)
    if (!lookFurther()) break;
}

InputFile::~InputFile() {
  if (_copy >= 0) ::close(_copy);
}

std::string_view InputFile::beginning() const { return _buffer->unread(); }

bool InputFile::lookFurther() { return _buffer->more(); }

void InputFile::requireRead() const {
  if (_buffer->error() != 0) throw DataError(std::string("it cannot be read: ") + std::strerror(_buffer->error()));
}

std::string InputFile::readAll() {
  constexpr std::size_t longest = std::size_t(1) << 32;
  std::string bytes;
  bytes.reserve(_size < longest ? _size : 0);
  while (_stream->peek() != std::istream::traits_type::eof()) {
    const std::string_view block = _buffer->unread();
    if (bytes.size() + block.size() > longest) throw DataError("it is longer than 4 GiB");
    bytes.append(block);
    _stream->ignore(static_cast<std::streamsize>(block.size()));
  }
  requireRead();
  return bytes;
}

std::string InputFile::path() {
  if (_isRegular) return _name;
  if (_copy < 0) {
    _copy = createNameless();
    if (_copy < 0) fail("a temporary file cannot be created");
    while (_stream->peek() != std::istream::traits_type::eof()) {
      const std::string_view block = _buffer->unread();
      if (!writeAll(_copy, block.data(), block.size())) fail("a temporary file cannot be written");
      _stream->ignore(static_cast<std::streamsize>(block.size()));
    }
    requireRead();
  }
  return "/proc/self/fd/" + std::to_string(_copy);
}

}  // namespace ormix::command
