#include <ORMIXSerialization/Archive/ArchiveItem.h>
#include <ORMIXSerialization/Archive/ArchiveSectionManager.h>
#include <ORMIXSerialization/Archive/Utf8.h>
#include <ORMIXSerialization/Message/SerializationMessage.h>
#include <ORMIXUtil/Exception/BaseException.h>
#include <ORMIXUtil/Object/DynamicObjectFactory.h>

namespace ormix::detail {

using Message = eORMIXSerializationMessage;

BoolResult integerOutOfRange(std::string_view key, std::size_t size, bool isSigned) {
  const std::string kind = (isSigned ? "a signed " : "an unsigned ") + std::to_string(8 * size) + "-bit integer";
  return failure(serializationMessage(Message::eSM_OutOfRange, shownText(key), "the number", kind));
}

BoolResult unknownEnumerator(std::string_view key, std::string_view text, std::string_view typeName) {
  return failure(serializationMessage(Message::eSM_UnknownEnumerator, shownText(key), shownText(text), typeName));
}

BoolResult wrongClass(std::string_view key, const std::string& className) {
  return failure(serializationMessage(Message::eSM_WrongClass, shownText(key), className));
}

BoolResult nullPointer(std::string_view key) {
  return failure(serializationMessage(Message::eSM_NullPointer, shownText(key)));
}

BoolResult writeObjectItem(BaseOArchive& archive, std::string_view key, const BaseSerializationObject& object) {
  ArchiveSectionManager section(archive, key);
  if (!section.getState()) return section.getState();
  if (BoolResult written = object.write(archive); !written) return written;
  return section.close();
}

BoolResult readObjectItem(BaseIArchive& archive, std::string_view key, BaseSerializationObject& object) {
  ArchiveSectionManager section(archive, key);
  if (!section.getState()) return section.getState();
  if (BoolResult read = object.read(archive); !read) return read;
  return section.close();
}

boost::shared_ptr<BaseSerializationObject> createNextObject(BaseIArchive& archive, std::string_view key,
                                                            BoolResult& result) {
  const std::optional<std::string> className = archive.nextKey();
  result = archive.state();
  if (!className) return nullptr;
  boost::shared_ptr<BaseDynamicObject> object;
  try {
    object = DynamicObjectFactory::getInstance().createShared(*className);
  } catch (const BaseException&) {
    result = failure(serializationMessage(Message::eSM_UnregisteredClass, shownText(key), shownText(*className)));
    return nullptr;
  }
  auto readable = boost::dynamic_pointer_cast<BaseSerializationObject>(object);
  if (!readable) result = wrongClass(key, *className);
  return readable;
}

}  // namespace ormix::detail
