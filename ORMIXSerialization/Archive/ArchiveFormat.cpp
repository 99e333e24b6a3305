#include <ORMIXSerialization/Archive/ArchiveFormat.h>
#include <ORMIXSerialization/Archive/CborIArchive.h>
#include <ORMIXSerialization/Archive/CborOArchive.h>
#include <ORMIXSerialization/Archive/JsonIArchive.h>
#include <ORMIXSerialization/Archive/JsonOArchive.h>

#include <istream>

namespace ormix {

namespace {

/// An archive in CBOR starts with an array or a tag, whose first bytes cannot start an archive in JSON: this starts
/// with
/// "[", white space or a byte-order mark.
bool startsLikeCbor(int first) { return first >= 0x80 && first < 0xE0; }

/// The next byte, which is left in the stream; -1 at the end of the stream and when it cannot be read.
int firstByte(std::istream& stream) {
  try {
    const auto first = stream.peek();
    return first == std::istream::traits_type::eof() ? -1 : static_cast<unsigned char>(first);
  } catch (const std::exception&) {
    return -1;
  }
}

}  // namespace

eArchiveFormat archiveFormatOf(const std::string& path) {
  constexpr std::string_view ending = ".json";
  const bool json =
      path.size() >= ending.size() && path.compare(path.size() - ending.size(), ending.size(), ending) == 0;
  return json ? eArchiveFormat::Json : eArchiveFormat::Cbor;
}

std::unique_ptr<BaseOArchive> createArchive(std::ostream& stream, eArchiveFormat format) {
  if (format == eArchiveFormat::Json) return std::make_unique<JsonOArchive>(stream);
  return std::make_unique<CborOArchive>(stream);
}

std::unique_ptr<BaseIArchive> openArchive(std::istream& stream) {
  if (startsLikeCbor(firstByte(stream))) return std::make_unique<CborIArchive>(stream);
  return std::make_unique<JsonIArchive>(stream);
}

}  // namespace ormix
