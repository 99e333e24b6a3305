#pragma once

#include <ORMIXSerialization/Export.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <fstream>
#include <iosfwd>
#include <string>

namespace ormix {

/// Opens a file for reading. Fails, with the reason in the message, when it cannot be opened, is a directory or is
/// empty.
BoolResult openFile(const std::string& path, std::ifstream& file);

/// A file that is written. The bytes go to a temporary file in the same folder, which `commit` renames once they are on
/// the disk. An existing file is thus replaced completely or not at all, even if the program is killed or the power
/// fails. If the path is a symbolic link, the file that it refers to is replaced.
///
/// Two kinds of files are written in place instead and may be left incomplete: existing ones that are not regular
/// files, and files for which no temporary file can be created, because the folder does not permit it or the name is
/// too long for the suffix ".tmp-<process>-<number>".
///
/// A temporary file is locked while it is written. Temporary files of the same path that are not locked were left by
/// killed programs and are removed; in file systems without locks, after a day.
class ORMIX_SERIALIZATION_API FileTarget {
 public:
  /// Does not access the file yet.
  explicit FileTarget(std::string path);
  /// Removes the temporary file unless it was committed.
  ~FileTarget();

  /// Opens the file for writing; on failure the message has the reason, without the path.
  BoolResult open();
  /// The stream to write to, in binary mode, after a successful `open`.
  std::ostream& stream() { return _stream; }
  /// Closes the stream and replaces the file. Fails, and leaves an existing file as it was, when not all bytes could be
  /// written to the disk or the file cannot be replaced.
  BoolResult commit();

  FileTarget(const FileTarget&) = delete;
  FileTarget& operator=(const FileTarget&) = delete;

 private:
  BoolResult openTemporary();
  BoolResult openDirectly();
  int createTemporary();

  std::string _path;
  std::string _temporary;  ///< its path; empty when the file is written in place or has been replaced
  int _lock = -1;          ///< descriptor of the temporary file, which has the lock
  std::ofstream _stream;
};

}  // namespace ormix
