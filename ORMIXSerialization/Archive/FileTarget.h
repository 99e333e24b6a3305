#pragma once

#include <ORMIXSerialization/Export.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <fstream>
#include <iosfwd>
#include <string>

namespace ormix {

/// Opens a file for reading; fails on a directory and on an empty file too.
BoolResult openFile(const std::string& path, std::ifstream& file);

/// A file being written. The bytes go to a temporary file beside it that takes its place in `commit`, so that an older
/// file is replaced as a whole or not at all. What exists and is no regular file is written directly.
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

  std::string _path;
  std::string _temporary;  ///< empty when written directly, or when there is nothing to remove
  std::ofstream _stream;
};

}  // namespace ormix
