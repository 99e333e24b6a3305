#pragma once

#include <ORMIXSerialization/Archive/BaseIArchive.h>
#include <ORMIXSerialization/Archive/BaseOArchive.h>

#include <iosfwd>
#include <memory>
#include <string>

namespace ormix {

/// The spellings of an archive.
enum class eArchiveFormat { Cbor, Json };

/// JSON for a path that ends in ".json", CBOR for any other.
ORMIX_SERIALIZATION_API eArchiveFormat archiveFormatOf(const std::string& path);

/// An archive that writes to the stream, which must outlive it.
ORMIX_SERIALIZATION_API std::unique_ptr<BaseOArchive> createArchive(std::ostream& stream, eArchiveFormat format);

/// An archive that reads from the stream, which must outlive it: CBOR or JSON by the stream's first byte, without
/// seeking. Whether it is an archive at all, its state tells.
ORMIX_SERIALIZATION_API std::unique_ptr<BaseIArchive> openArchive(std::istream& stream);

}  // namespace ormix
