#include <ORMIXSerialization/Archive/ArchiveItem.h>
#include <ORMIXSerialization/Archive/FileTarget.h>
#include <ORMIXSerialization/Message/SerializationMessage.h>
#include <ORMIXSerialization/ORMIXSerializationException.h>
#include <ORMIXSerialization/ORMIXSerializationLogger.h>
#include <ORMIXSerialization/Object/ObjectArchive.h>

#include <fstream>

namespace ormix {

namespace {

using Message = eORMIXSerializationMessage;
/// The key in messages about an object whose class is not known yet.
constexpr std::string_view s_unknownObjectKey = "(an object)";

[[noreturn]] void logAndThrow(const std::string& text, const char* function, int line) {
  logMessage(getORMIXSerializationLogger(), s_errorLogLevel, text);
  throw ORMIXSerializationException(text, function, __FILE__, line);
}

/// Reads the next object of the archive; null when `result` is a failure or there is none.
SerializationObjectPtr readNext(BaseIArchive& archive, BoolResult& result) {
  SerializationObjectPtr object = detail::createNextObject(archive, s_unknownObjectKey, result);
  if (object && !detail::readUnseenObject(archive, object, result)) return nullptr;
  return object;
}

/// The failure that there is no object left.
BoolResult noObject() { return failure(serializationMessage(Message::eSM_KeyMissing, s_unknownObjectKey)); }

/// Reads exactly one object, or all objects up to the end of the archive.
BoolResult readObjects(std::istream& stream, SerializationObjectPtrColl& objects, bool exactlyOne) {
  const std::unique_ptr<BaseIArchive> archive = openArchive(stream);
  BoolResult result = archive->state();
  while (result && (!exactlyOne || objects.empty())) {
    SerializationObjectPtr object = readNext(*archive, result);
    if (!object) break;
    objects.push_back(std::move(object));
  }
  if (result && exactlyOne && objects.empty()) return noObject();
  return result ? archive->close() : result;
}

SerializationObjectPtrColl loadObjects(std::istream& stream, bool exactlyOne) {
  SerializationObjectPtrColl objects;
  const BoolResult result = readObjects(stream, objects, exactlyOne);
  if (!result) logAndThrow(result.getMessage(), __PRETTY_FUNCTION__, __LINE__);
  return objects;
}

SerializationObjectPtrColl loadObjects(const std::string& path, bool exactlyOne) {
  SerializationObjectPtrColl objects;
  std::ifstream file;
  BoolResult result = openFile(path, file);
  try {
    if (result) result = readObjects(file, objects, exactlyOne);
  } catch (const ORMIXSerializationException& newer) {
    // It was logged where it was thrown; only the path is missing there.
    throw ORMIXSerializationException(serializationMessage(Message::eSM_File, path, newer.getMessage()),
                                      newer.getFunction(), newer.getFile(), newer.getLine());
  }
  if (!result)
    logAndThrow(serializationMessage(Message::eSM_File, path, result.getMessage()), __PRETTY_FUNCTION__, __LINE__);
  return objects;
}

template <class Write>
BoolResult saveFile(const std::string& path, Write&& write) {
  FileTarget target(path);
  BoolResult result = target.open();
  if (result) result = write(target.stream());
  if (result) result = target.commit();
  return result ? result : failure(serializationMessage(Message::eSM_File, path, result.getMessage()));
}

}  // namespace

BoolResult writeObject(BaseOArchive& archive, const BaseSerializationObject& object) {
  return detail::writeObjectItem(archive, object.getClassName(), object);
}

ProcessingResult<SerializationObjectPtr> readObject(BaseIArchive& archive) {
  BoolResult result;
  SerializationObjectPtr object = readNext(archive, result);
  if (object) return object;
  return {nullptr, result ? noObject().getMessage() : result.getMessage()};
}

BoolResult save(std::ostream& stream, const BaseSerializationObject& object, eArchiveFormat format) {
  const std::unique_ptr<BaseOArchive> archive = createArchive(stream, format);
  const BoolResult result = writeObject(*archive, object);
  return result ? archive->close() : result;
}

BoolResult saveAll(std::ostream& stream, const SerializationObjectPtrColl& objects, eArchiveFormat format) {
  const std::unique_ptr<BaseOArchive> archive = createArchive(stream, format);
  BoolResult result;
  for (auto object = objects.begin(); result && object != objects.end(); ++object)
    result = *object ? writeObject(*archive, **object) : detail::nullPointer(s_unknownObjectKey);
  return result ? archive->close() : result;
}

BoolResult save(const std::string& path, const BaseSerializationObject& object) {
  return saveFile(path, [&](std::ostream& stream) { return save(stream, object, archiveFormatOf(path)); });
}

BoolResult saveAll(const std::string& path, const SerializationObjectPtrColl& objects) {
  return saveFile(path, [&](std::ostream& stream) { return saveAll(stream, objects, archiveFormatOf(path)); });
}

SerializationObjectPtr load(std::istream& stream) { return loadObjects(stream, true).front(); }
SerializationObjectPtrColl loadAll(std::istream& stream) { return loadObjects(stream, false); }
SerializationObjectPtr load(const std::string& path) { return loadObjects(path, true).front(); }
SerializationObjectPtrColl loadAll(const std::string& path) { return loadObjects(path, false); }

}  // namespace ormix
