#pragma once

#include <ORMIXSerialization/Archive/BaseIArchive.h>
#include <ORMIXSerialization/Archive/BaseOArchive.h>

#include <iosfwd>
#include <memory>
#include <string>

namespace ormix {

/// The encodings of an archive; docs/archives.md describes both.
enum class eArchiveFormat {
  Cbor,  ///< binary (RFC 8949), compact and fast
  Json   ///< text, readable by people
};

/// JSON for a path that ends in ".json" (in lower case), CBOR for any other.
ORMIX_SERIALIZATION_API eArchiveFormat archiveFormatOf(const std::string& path);

/// A new archive that writes to the stream, which must be open in binary mode and outlive the archive.
ORMIX_SERIALIZATION_API std::unique_ptr<BaseOArchive> createArchive(std::ostream& stream, eArchiveFormat format);

/// An archive that reads from the stream, which must be open in binary mode and outlive the archive. The format is
/// detected from the first byte, without seeking. If the data are not an archive, the object's `state()` is a failure.
/// \throw std::bad_alloc when the text of a JSON archive does not fit into memory
ORMIX_SERIALIZATION_API std::unique_ptr<BaseIArchive> openArchive(std::istream& stream);

}  // namespace ormix
