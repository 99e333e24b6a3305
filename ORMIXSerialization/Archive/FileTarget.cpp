#include <ORMIXSerialization/Archive/FileTarget.h>
#include <ORMIXSerialization/Message/SerializationMessage.h>
#include <ORMIXUtil/ScalarTypes.h>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

namespace ormix {

namespace fs = std::filesystem;

namespace {

BoolResult systemFailure(const char* what, int code) {
  return failure(std::string(what) + ": " + std::generic_category().message(code));
}

constexpr std::string_view s_temporaryMark = ".tmp-";

std::string temporaryName(const std::string& path, unsigned number) {
  return path + std::string(s_temporaryMark) + std::to_string(::getpid()) + "-" + std::to_string(number);
}

/// Whether a name is this prefix and two numbers, "archive.cbor.tmp-4711-0".
bool isTemporaryName(std::string_view name, std::string_view prefix) {
  constexpr std::string_view digits = "0123456789";
  if (name.substr(0, prefix.size()) != prefix) return false;
  name.remove_prefix(prefix.size());
  const std::size_t dash = name.find_first_not_of(digits);
  if (dash == 0 || dash == std::string_view::npos || name[dash] != '-') return false;
  name.remove_prefix(dash + 1);
  return !name.empty() && name.find_first_not_of(digits) == std::string_view::npos;
}

/// Whether the open file still bears this name, so that it is not somebody else's file.
bool isNamed(int file, const char* path, struct stat& status) {
  struct stat named {};
  return ::fstat(file, &status) == 0 && ::lstat(path, &named) == 0 && S_ISREG(status.st_mode) &&
         status.st_dev == named.st_dev && status.st_ino == named.st_ino;
}

enum class eLock { Taken, Busy, Unknown };

/// Without waiting; the lock ends with the file's last descriptor.
eLock lockFile(int file) {
  if (::flock(file, LOCK_EX | LOCK_NB) == 0) return eLock::Taken;
  return errno == EWOULDBLOCK ? eLock::Busy : eLock::Unknown;
}

void removeAbandoned(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return;
  constexpr std::time_t oneDay = 24 * 60 * 60;
  const eLock lock = lockFile(file);
  struct stat status {};
  if (lock != eLock::Busy && isNamed(file, path.c_str(), status) &&
      (lock == eLock::Taken || std::time(nullptr) - status.st_mtime > oneDay))
    ::unlink(path.c_str());
  ::close(file);
}

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

/// Entries of folders that may be looked at for leftovers, below zero when too many were.
std::atomic<omInt64> g_nbEntriesAllowed{0};

/// Removes what programs that were killed while they wrote the file have left beside it. A program that saves many
/// files into one large folder looks through it at the first and then at some of the saves only: otherwise all of them
/// together would take quadratic time.
void removeLeftovers(const std::string& path) {
  if (path.empty() || path.back() == '/') return;
  constexpr omInt64 nbEntriesOfASave = 256;
  if (g_nbEntriesAllowed.fetch_add(nbEntriesOfASave) < 0) return;
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
  const std::string prefix = path.substr(folder.size()) + std::string(s_temporaryMark);
  const std::unique_ptr<DIR, CloseFolder> entries(::opendir(folder.empty() ? "." : folder.c_str()));
  if (!entries) return;
  omInt64 nbEntries = 0;
  for (; const dirent* entry = ::readdir(entries.get()); ++nbEntries)
    if (isTemporaryName(entry->d_name, prefix)) removeAbandoned(folder + entry->d_name);
  g_nbEntriesAllowed.fetch_sub(nbEntries);
}

/// Replaces a path that does not exist by the one that it is a link to, if any.
BoolResult followLinks(std::string& path) {
  constexpr int mostLinks = 40;
  for (int link = 0; link < mostLinks; ++link) {
    std::error_code code;
    if (!fs::is_symlink(fs::symlink_status(path, code))) return {};
    const fs::path target = fs::read_symlink(path, code);
    if (code) return systemFailure("it cannot be opened", code.value());
    path = (fs::path(path).parent_path() / target).string();
  }
  return systemFailure("it cannot be opened", ELOOP);
}

/// Waits until a file's bytes are on the disk.
bool flushToDisk(int file) {
  while (::fsync(file) != 0) {
    if (errno == EINVAL || errno == ENOSYS) return true;  // the file system does without
    if (errno != EINTR) return false;
  }
  return true;
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
  if (_lock >= 0) ::close(_lock);
}

BoolResult FileTarget::open() {
  std::error_code code;
  const fs::file_status status = fs::status(_path, code);
  if (fs::is_directory(status)) return failure("it is a directory");
  if (fs::exists(status)) {
    if (!fs::is_regular_file(status)) return openDirectly();
    const fs::path real = fs::canonical(_path, code);
    if (code) return openDirectly();
    _path = real.string();
  } else if (BoolResult followed = followLinks(_path); !followed) {
    return followed;
  }
  return openTemporary();
}

BoolResult FileTarget::openDirectly() {
  errno = 0;
  _stream.open(_path, std::ios::binary);
  return _stream ? BoolResult() : systemFailure("it cannot be opened", errno);
}

/// Creates a temporary file of a name that nobody has, and locks it. \return 0, or the error
int FileTarget::createTemporary() {
  struct stat old {};
  const bool replaces = ::stat(_path.c_str(), &old) == 0;
  for (unsigned number = 0;; ++number) {
    std::string name = temporaryName(_path, number);
    const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, replaces ? 0600 : 0666);
    if (file < 0 && errno == EEXIST) continue;
    if (file < 0) return errno;
    // Between the two calls another program may have taken it for left over.
    struct stat status {};
    if (lockFile(file) == eLock::Busy || !isNamed(file, name.c_str(), status)) {
      ::close(file);
      continue;
    }
    _lock = file;
    _temporary = std::move(name);
    if (replaces) ::fchmod(file, old.st_mode & 07777);  // where the file system has modes
    return 0;
  }
}

BoolResult FileTarget::openTemporary() {
  removeLeftovers(_path);
  const int error = createTemporary();
  const bool isImpossible = error == EACCES || error == EPERM || error == EROFS || error == ENAMETOOLONG;
  if (isImpossible) return openDirectly();
  if (error != 0) return systemFailure("a temporary file beside it cannot be created", error);
  errno = 0;
  _stream.open(_temporary, std::ios::binary);
  return _stream ? BoolResult() : systemFailure("a temporary file beside it cannot be opened", errno);
}

BoolResult FileTarget::commit() {
  errno = 0;
  _stream.close();
  if (!_stream) return systemFailure("it cannot be written", errno);
  if (_temporary.empty()) return {};
  // Otherwise the new name may reach the disk before the bytes do.
  if (!flushToDisk(_lock)) return systemFailure("it cannot be written", errno);
  std::error_code code;
  fs::rename(_temporary, _path, code);
  if (code) return systemFailure("it cannot be replaced", code.value());
  _temporary.clear();
  return {};
}

}  // namespace ormix
