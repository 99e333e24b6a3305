#include <ORMIXSerialization/Archive/ArchiveHeader.h>
#include <ORMIXSerialization/Archive/ArchiveSectionManager.h>
#include <ORMIXSerialization/Archive/BaseIArchive.h>
#include <ORMIXSerialization/Archive/BaseOArchive.h>
#include <ORMIXSerialization/Message/SerializationMessage.h>
#include <ORMIXUtil/Version.h>

namespace ormix {

namespace {
constexpr std::string_view s_formatKey = "ormix-archive";
constexpr std::string_view s_versionKey = "version";
constexpr std::string_view s_writerKey = "writer";
constexpr omUInt64 s_formatVersion = 1;
}  // namespace

BoolResult writeArchiveHeader(BaseOArchive& archive) {
  ArchiveSectionManager section(archive, s_formatKey);
  archive.writeUnsigned(s_versionKey, s_formatVersion);
  archive.writeText(s_writerKey, "ORMIX " + getSDKStrVersion());
  return section.close();
}

BoolResult readArchiveHeader(BaseIArchive& archive) {
  using Message = eORMIXSerializationMessage;
  if (BoolResult opened = archive.state(); !opened) return opened;
  ArchiveSectionManager section(archive, s_formatKey);
  omUInt64 version = 0;
  BoolResult read = section.getState();
  if (read) read = archive.readUnsigned(s_versionKey, version);
  if (!read) return failure(serializationMessage(Message::eSM_NotAnArchive, read.getMessage()));
  if (version > s_formatVersion)
    return failure(serializationMessage(Message::eSM_FormatTooRecent, version, s_formatVersion));
  std::string writer;
  read = archive.readText(s_writerKey, writer);
  return read ? section.close() : read;
}

}  // namespace ormix
