#pragma once

#include <command/frame/Errors.h>

#include <filesystem>
#include <string>

namespace ormix::command {

/// The pattern of a path in the folder for temporary files, for mkstemp() and its like.
/// \throw DataError when TMPDIR names no folder
inline std::string temporaryPattern(const std::string& extension = "") {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
  if (error) throw DataError("there is no folder for temporary files: TMPDIR is wrong");
  return (folder / ("ormix-XXXXXX" + extension)).string();
}

}  // namespace ormix::command
