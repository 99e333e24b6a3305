#include <ORMIXGeometry/Tools/Stl/StlInput.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

namespace ormix::geom {

namespace {

std::string systemText(int code) { return std::generic_category().message(code); }

}  // namespace

StlInput::~StlInput() {
  if (_file >= 0) ::close(_file);
}

BoolResult StlInput::open(const std::string& path) {
  // Without O_NONBLOCK, opening a pipe would block until another program opens it for writing.
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return failure("it cannot be opened: " + systemText(errno));
  if (_file >= 0) ::close(_file);
  _file = file;
  struct stat status {};
  if (::fstat(file, &status) != 0) return failure("it cannot be looked at: " + systemText(errno));
  if (S_ISDIR(status.st_mode)) return failure("it is a directory");
  if (!S_ISREG(status.st_mode)) return failure("it is not a regular file");
  _size = static_cast<omUInt64>(status.st_size);
  return {};
}

std::size_t StlInput::read(char* to, std::size_t size) {
  if (_file < 0) {
    const std::size_t taken = std::min(size, _bytes.size() - _at);
    if (taken != 0) std::memcpy(to, _bytes.data() + _at, taken);
    _at += taken;
    return taken;
  }
  std::size_t taken = 0;
  while (taken < size && !_failed) {
    const ssize_t got = ::read(_file, to + taken, size - taken);
    if (got == 0) break;
    if (got > 0)
      taken += static_cast<std::size_t>(got);
    else
      _failed = errno != EINTR;
  }
  return taken;
}

void StlInput::rewind() {
  _at = 0;
  if (_file >= 0 && ::lseek(_file, 0, SEEK_SET) != 0) _failed = true;
}

std::size_t StlInput::getRoom(omUInt64 bytesOfTriangle) const {
  constexpr omUInt64 maxTriangles = (omUInt64(256) << 20) / 36;  // 256 MiB of corners, 36 bytes for each triangle
  return static_cast<std::size_t>(std::min(_size / bytesOfTriangle, maxTriangles));
}

}  // namespace ormix::geom
