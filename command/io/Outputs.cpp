#include <ORMIXSerialization/Archive/FileTarget.h>
#include <command/frame/Errors.h>
#include <command/io/Outputs.h>
#include <command/io/Rows.h>
#include <command/io/Temporary.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

namespace ormix::command {

namespace {

/// A folder that is removed with what is in it.
class TemporaryFolder {
 public:
  TemporaryFolder() : _path(temporaryPattern()) {
    if (!::mkdtemp(_path.data())) throw DataError("a temporary folder cannot be created");
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(_path, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::string& path() const { return _path; }

 private:
  std::string _path;
};

/// One archive on one line: line ends of JSON archives stand between its parts only.
BoolResult writeJsonLine(std::ostream& out, const BaseSerializationObject& object) {
  std::ostringstream text;
  BoolResult saved = save(text, object, eArchiveFormat::Json);
  std::string line = text.str();
  line.erase(std::remove(line.begin(), line.end(), '\n'), line.end());
  out << line << '\n';
  return saved;
}

}  // namespace

Option outputOption(std::string_view help) { return {"output", 'o', eOptionKind::File, "FILE", help}; }

void require(const BoolResult& result) {
  if (!result) throw DataError(result.getMessage());
}

void writeStream(const std::string& path, const std::function<BoolResult(std::ostream&)>& write) {
  if (path == "-") {
    const BoolResult written = write(std::cout);
    flushOutput();
    return require(written);
  }
  FileTarget target(path);
  BoolResult written = target.open();
  if (written) written = write(target.stream());
  if (written) written = target.commit();
  if (!written) throw DataError("\"" + path + "\" cannot be written: " + written.getMessage());
}

void writePath(const std::string& path, const std::function<BoolResult(const std::string&)>& write) {
  if (path != "-") return require(write(path));
  const TemporaryFolder folder;
  const std::string copy = folder.path() + "/output";
  require(write(copy));
  std::ifstream file(copy, std::ios::binary);
  if (file.peek() != std::ifstream::traits_type::eof()) std::cout << file.rdbuf();
  flushOutput();
}

void writeArchive(const std::string& path, const SerializationObjectPtrColl& objects, const std::string& format) {
  writeStream(path, [&](std::ostream& out) {
    if (format != "jsonl") return saveAll(out, objects, format == "json" ? eArchiveFormat::Json : eArchiveFormat::Cbor);
    BoolResult written;
    for (auto object = objects.begin(); written && object != objects.end(); ++object)
      written = writeJsonLine(out, **object);
    return written;
  });
}

std::string archiveFormatNameOf(const std::string& path) {
  const std::string extension = std::filesystem::path(path).extension().string();
  if (path == "-") return "jsonl";
  if (extension.empty()) return "cbor";
  for (const char* format : {"cbor", "json", "jsonl"})
    if (extension.substr(1) == format) return format;
  throw UsageError("the output is an archive, and \"" + path + "\" ends in none of .cbor, .json, .jsonl");
}

}  // namespace ormix::command
