#include <ORMIXSerialization/Archive/ArchiveItem.h>
#include <ORMIXSerialization/Archive/ArchiveSectionManager.h>
#include <ORMIXSerialization/Message/SerializationMessage.h>
#include <ORMIXSerialization/ORMIXSerializationException.h>
#include <ORMIXSerialization/ORMIXSerializationLogger.h>
#include <ORMIXSerialization/Object/ClassVersion.h>

namespace ormix {

namespace {
constexpr std::string_view s_versionKey = "version";

[[noreturn]] void refuseNewerVersion(const std::string& className, omUInt32 archived, omUInt32 known) {
  const std::string text =
      serializationMessage(eORMIXSerializationMessage::eSM_ClassVersionTooRecent, className, archived, known);
  logMessage(getORMIXSerializationLogger(), s_errorLogLevel, text);
  throw ORMIXSerializationException(text, __PRETTY_FUNCTION__, __FILE__, __LINE__);
}
}  // namespace

BoolResult writeClassVersion(BaseOArchive& archive, const std::string& className, omUInt32 version) {
  if (archive.isClassVersionRegistred(className)) return {};
  ArchiveSectionManager section(archive, className);
  if (!section.getState()) return section.getState();
  if (BoolResult written = writeItem(archive, s_versionKey, version); !written) return written;
  archive.registerClassVersion(className, version);
  return section.close();
}

BoolResult readClassVersion(BaseIArchive& archive, const std::string& className, omUInt32 version, omUInt32 oldest) {
  if (archive.isClassVersionRegistred(className)) return {};
  ArchiveSectionManager section(archive, className);
  if (!section.getState()) return section.getState();
  omUInt32 archived = 0;
  if (BoolResult read = readItem(archive, s_versionKey, archived); !read) return read;
  if (archived > version) refuseNewerVersion(className, archived, version);
  if (archived < oldest)
    return failure(
        serializationMessage(eORMIXSerializationMessage::eSM_ClassVersionTooOld, className, archived, oldest));
  archive.registerClassVersion(className, archived);
  return section.close();
}

}  // namespace ormix
