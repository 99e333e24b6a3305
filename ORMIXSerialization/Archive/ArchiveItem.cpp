#include <ORMIXSerialization/Archive/ArchiveItem.h>
#include <ORMIXSerialization/Archive/ArchiveSectionManager.h>
#include <ORMIXSerialization/Archive/Utf8.h>
#include <ORMIXSerialization/Message/SerializationMessage.h>
#include <ORMIXUtil/Exception/BaseException.h>
#include <ORMIXUtil/Object/DynamicObjectFactory.h>

#include <exception>
#include <utility>

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

namespace {

// Not inlined, so that their stack space is free while nested objects are read.
__attribute__((noinline)) bool beginSection(BaseIArchive& archive, std::string_view key, BoolResult& result) {
  result = archive.beginSection(key);
  return static_cast<bool>(result);
}
__attribute__((noinline)) bool endSection(BaseIArchive& archive, BoolResult& result) {
  result = archive.endSection();
  return static_cast<bool>(result);
}

/// As `ArchiveSectionManager`, but of two machine words: one is on the stack for each level of nested objects.
class ObjectSection {
 public:
  ObjectSection(BaseIArchive& archive, std::string_view key) : _archive(archive), _open(begin(archive, key)) {}
  ~ObjectSection() {
    if (_open) closeQuietly();
  }
  ObjectSection(const ObjectSection&) = delete;
  ObjectSection& operator=(const ObjectSection&) = delete;

  bool isOpen() const { return _open; }
  void close(BoolResult& result) {
    _open = false;
    endSection(_archive, result);
  }

 private:
  __attribute__((noinline)) static bool begin(BaseIArchive& archive, std::string_view key) {
    return static_cast<bool>(archive.beginSection(key));
  }
  __attribute__((noinline)) void closeQuietly() noexcept {
    try {
      _archive.endSection();
    } catch (const std::exception&) {
      // Only std::bad_alloc is possible, while a message was composed; the archive keeps its failed state.
    }
  }

  BaseIArchive& _archive;
  bool _open;
};

using ObjectColl = std::vector<boost::shared_ptr<BaseSerializationObject>>;

/// Appends a new object of the class of the next entry. Returns null at the end of the section and after a failure.
__attribute__((noinline)) BaseSerializationObject* addNextObject(BaseIArchive& archive, std::string_view key,
                                                                 bool (*isAllowed)(const BaseSerializationObject&),
                                                                 ObjectColl& objects, BoolResult& result) {
  boost::shared_ptr<BaseSerializationObject> object = createNextObject(archive, key, result);
  if (object && !isAllowed(*object)) {
    result = wrongClass(key, object->getClassName());
    return nullptr;
  }
  if (!object) return nullptr;
  objects.push_back(std::move(object));
  return objects.back().get();
}

}  // namespace

BoolResult readObjectItem(BaseIArchive& archive, std::string_view key, BaseSerializationObject& object) {
  ObjectSection section(archive, key);
  BoolResult result = section.isOpen() ? object.read(archive) : archive.state();
  if (result) section.close(result);
  return result;
}

bool readSharedObjects(BaseIArchive& archive, std::string_view key, bool (*isAllowed)(const BaseSerializationObject&),
                       ObjectColl& objects, BoolResult& result) {
  if (!beginSection(archive, key, result)) return false;
  while (BaseSerializationObject* object = addNextObject(archive, key, isAllowed, objects, result)) {
    ObjectSection section(archive, object->getClassName());
    result = section.isOpen() ? object->read(archive) : archive.state();
    if (result) section.close(result);
    if (!result) return false;
  }
  return result && endSection(archive, result);
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
