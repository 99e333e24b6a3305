#pragma once

#include <ORMIXSerialization/Object/ObjectArchive.h>
#include <command/frame/Arguments.h>

#include <functional>
#include <iosfwd>
#include <string>

namespace ormix::command {

/// --output.
/// \param help what is written
Option outputOption(std::string_view help);

/// Writes what `write` writes to a stream to a file, which is replaced when it is complete, or to the standard output
/// where the path is "-".
/// \throw DataError when it cannot be written
void writeStream(const std::string& path, const std::function<BoolResult(std::ostream&)>& write);
/// The same for what writes to the path of a file only; for "-" it is given that of a temporary file.
void writePath(const std::string& path, const std::function<BoolResult(const std::string&)>& write);

/// Writes objects as one archive, or each as an archive of its own on a line.
/// \param format cbor, json or jsonl
void writeArchive(const std::string& path, const SerializationObjectPtrColl& objects, const std::string& format);
/// The format of an archive by the extension of its path: cbor, json or jsonl, cbor without one; jsonl for the standard
/// output.
/// \throw UsageError for another extension, which promises what is not written
std::string archiveFormatNameOf(const std::string& path);

/// \throw DataError with the message of a failure
void require(const BoolResult& result);

}  // namespace ormix::command
