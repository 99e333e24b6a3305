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

/// Whether a name consists of this prefix and two numbers, as in "archive.cbor.tmp-4711-0".
bool isTemporaryName(std::string_view name, std::string_view prefix) {
  constexpr std::string_view digits = "0123456789";
  if (name.substr(0, prefix.size()) != prefix) return false;
  name.remove_prefix(prefix.size());
  const std::size_t dash = name.find_first_not_of(digits);
  if (dash == 0 || dash == std::string_view::npos || name[dash] != '-') return false;
  name.remove_prefix(dash + 1);
  return !name.empty() && name.find_first_not_of(digits) == std::string_view::npos;
}

/// Whether the path still refers to the open file: another program may have removed or replaced it. Sets `status`.
bool isSameFile(int file, const char* path, struct stat& status) {
  struct stat named {};
  return ::fstat(file, &status) == 0 && ::lstat(path, &named) == 0 && S_ISREG(status.st_mode) &&
         status.st_dev == named.st_dev && status.st_ino == named.st_ino;
}

/// The result of locking a file.
enum class eLock {
  Taken,   ///< this program has the lock
  Busy,    ///< another program has it
  Unknown  ///< the file system has no locks
};

/// Locks a file without waiting. The lock is released when the last descriptor of the file is closed.
eLock lockFile(int file) {
  if (::flock(file, LOCK_EX | LOCK_NB) == 0) return eLock::Taken;
  return errno == EWOULDBLOCK ? eLock::Busy : eLock::Unknown;
}

/// Removes a temporary file unless another program is writing it: if it is locked, or, in a file system without locks,
/// was modified during the last day.
void removeIfAbandoned(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return;
  constexpr std::time_t oneDay = 24 * 60 * 60;
  const eLock lock = lockFile(file);
  struct stat status {};
  if (lock != eLock::Busy && isSameFile(file, path.c_str(), status) &&
      (lock == eLock::Taken || std::time(nullptr) - status.st_mtime > oneDay))
    ::unlink(path.c_str());
  ::close(file);
}

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

/// The number of folder entries that may be searched for temporary files; negative when more have been searched.
std::atomic<omInt64> g_nbEntriesAllowed{0};

/// Removes the temporary files of killed programs for the same path. When a program saves many files into one large
/// folder, only the first and then some of the saves search the folder: about 256 entries for each save on average.
/// Otherwise the total time would be quadratic.
void removeLeftovers(const std::string& path) {
  if (path.empty() || path.back() == '/') return;
  constexpr omInt64 nbEntriesPerSave = 256;
  if (g_nbEntriesAllowed.fetch_add(nbEntriesPerSave) < 0) return;
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
  const std::string prefix = path.substr(folder.size()) + std::string(s_temporaryMark);
  const std::unique_ptr<DIR, CloseFolder> entries(::opendir(folder.empty() ? "." : folder.c_str()));
  if (!entries) return;
  omInt64 nbEntries = 0;
  for (; const dirent* entry = ::readdir(entries.get()); ++nbEntries)
    if (isTemporaryName(entry->d_name, prefix)) removeIfAbandoned(folder + entry->d_name);
  g_nbEntriesAllowed.fetch_sub(nbEntries);
}

/// Replaces a path that is a symbolic link to a file that does not exist by the path of that file.
BoolResult followLinks(std::string& path) {
  constexpr int maxLinks = 40;
  for (int link = 0; link < maxLinks; ++link) {
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
    if (errno == EINVAL || errno == ENOSYS) return true;  // not supported by the file system
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

/// Creates and locks a temporary file with a name that does not exist yet. Returns 0 or the error code.
int FileTarget::createTemporary() {
  struct stat old {};
  const bool replaces = ::stat(_path.c_str(), &old) == 0;
  // More than other programs remove in a row: then file numbers mean nothing in this file system.
  constexpr int maxNbLost = 100;
  int nbLost = 0;
  for (unsigned number = 0;; ++number) {
    std::string name = temporaryName(_path, number);
    const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, replaces ? 0600 : 0666);
    if (file < 0 && errno == EEXIST) continue;
    if (file < 0) return errno;
    // Before it was locked, another program may have removed it as abandoned.
    struct stat status {};
    if (lockFile(file) == eLock::Busy || !isSameFile(file, name.c_str(), status)) {
      ::close(file);
      if (++nbLost == maxNbLost) return EBUSY;
      continue;
    }
    _lock = file;
    _temporary = std::move(name);
    if (replaces) ::fchmod(file, old.st_mode & 07777);  // ignored by file systems without modes
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
  // Otherwise the new name may be on the disk before the bytes are.
  if (!flushToDisk(_lock)) return systemFailure("it cannot be written", errno);
  std::error_code code;
  fs::rename(_temporary, _path, code);
  if (code) return systemFailure("it cannot be replaced", code.value());
  _temporary.clear();
  return {};
}

}  // namespace ormix
