#include <ORMIXSerialization/Archive/FileTarget.h>
#include <ORMIXSerialization/Message/SerializationMessage.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace ormix {

namespace fs = std::filesystem;

namespace {

BoolResult systemFailure(const char* what, int code) {
  return failure(std::string(what) + ": " + std::generic_category().message(code));
}

/// Creates an empty file that did not exist before; errno tells why it could not.
bool createExclusively(const std::string& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  return file >= 0 && ::close(file) == 0;
}

}  // namespace

BoolResult openFile(const std::string& path, std::ifstream& file) {
  std::error_code code;
  if (fs::is_directory(path, code)) return failure("it is a directory");
  errno = 0;
  file.open(path, std::ios::binary);
  if (!file) return systemFailure("it cannot be opened", errno);
  if (fs::is_regular_file(path, code) && fs::file_size(path, code) == 0 && !code)
    return failure(serializationMessage(eORMIXSerializationMessage::eSM_EmptyArchive));
  return {};
}

FileTarget::FileTarget(std::string path) : _path(std::move(path)) {}

FileTarget::~FileTarget() {
  if (!_temporary.empty()) ::unlink(_temporary.c_str());
}

BoolResult FileTarget::open() {
  std::error_code code;
  const fs::file_status status = fs::status(_path, code);
  if (fs::is_directory(status)) return failure("it is a directory");
  if (!fs::exists(status) || fs::is_regular_file(status)) return openTemporary();
  errno = 0;
  _stream.open(_path, std::ios::binary);
  return _stream ? BoolResult() : systemFailure("it cannot be opened", errno);
}

BoolResult FileTarget::openTemporary() {
  std::error_code code;
  // The file behind a link is replaced, not the link.
  if (const fs::path real = fs::canonical(_path, code); !code) _path = real.string();
  for (int attempt = 0; attempt < 100; ++attempt) {
    std::string name = _path;
    name += ".tmp-" + std::to_string(::getpid()) + "-" + std::to_string(attempt);
    if (createExclusively(name)) {
      _temporary = std::move(name);
      break;
    }
    if (errno != EEXIST) break;
  }
  if (_temporary.empty()) return systemFailure("a temporary file beside it cannot be created", errno);
  const fs::file_status old = fs::status(_path, code);
  if (fs::exists(old)) fs::permissions(_temporary, old.permissions(), code);
  errno = 0;
  _stream.open(_temporary, std::ios::binary);
  return _stream ? BoolResult() : systemFailure("a temporary file beside it cannot be opened", errno);
}

BoolResult FileTarget::commit() {
  errno = 0;
  _stream.close();
  if (!_stream) return systemFailure("it cannot be written", errno);
  if (_temporary.empty()) return {};
  std::error_code code;
  fs::rename(_temporary, _path, code);
  if (code) return systemFailure("it cannot be replaced", code.value());
  _temporary.clear();
  return {};
}

}  // namespace ormix
