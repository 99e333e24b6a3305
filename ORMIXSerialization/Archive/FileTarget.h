#pragma once

#include <ORMIXSerialization/Export.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <fstream>
#include <iosfwd>
#include <string>

namespace ormix {

/// Opens a file for reading; fails on a directory and on an empty file too.
BoolResult openFile(const std::string& path, std::ifstream& file);

/// A file being written. The bytes go to a temporary file beside it that takes its place in `commit`, once they are on
/// the disk, so that an older file is replaced as a whole or not at all, also where the program is killed or the power
/// fails. The file behind a link is written, not the link.
///
/// Written directly, and so not as a whole, are what exists and is no regular file, and a file beside which no other
/// can be made: in a folder that does not allow it, or with a name that has no room for ".tmp-<process>-<number>".
///
/// A temporary file is locked while it is written. Those of the same file that killed programs have left are removed;
/// where a file system has no locks, after a day.
class ORMIX_SERIALIZATION_API FileTarget {
 public:
  explicit FileTarget(std::string path);
  /// Removes the temporary file unless it was committed.
  ~FileTarget();

  BoolResult open();
  std::ostream& stream() { return _stream; }
  BoolResult commit();

  FileTarget(const FileTarget&) = delete;
  FileTarget& operator=(const FileTarget&) = delete;

 private:
  BoolResult openTemporary();
  BoolResult openDirectly();
  int createTemporary();

  std::string _path;
  std::string _temporary;  ///< empty when written directly, or when there is nothing to remove
  int _lock = -1;          ///< the temporary file, locked
  std::ofstream _stream;
};

}  // namespace ormix
