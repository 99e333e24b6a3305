#include <ORMIXSerialization/Archive/ArchiveItem.h>
#include <ORMIXSerialization/Archive/Utf8.h>
#include <ORMIXSerialization/Message/SerializationMessage.h>
#include <ORMIXUtil/Exception/BaseException.h>

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
template <class Archive>
class ObjectSection {
 public:
  ObjectSection(Archive& archive, std::string_view key, BoolResult& result)
      : _archive(archive), _open(begin(key, result)) {}
  ~ObjectSection() {
    if (_open) closeQuietly();
  }
  ObjectSection(const ObjectSection&) = delete;
  ObjectSection& operator=(const ObjectSection&) = delete;

  bool isOpen() const { return _open; }
  void close(BoolResult& result) {
    _open = false;
    end(result);
  }

 private:
  __attribute__((noinline)) bool begin(std::string_view key, BoolResult& result) {
    result = _archive.beginSection(key);
    return static_cast<bool>(result);
  }
  __attribute__((noinline)) void end(BoolResult& result) { result = _archive.endSection(); }
  __attribute__((noinline)) void closeQuietly() noexcept {
    try {
      _archive.endSection();
    } catch (const std::exception&) {
      // Only std::bad_alloc is possible, while a message was composed; the archive keeps its failed state.
    }
  }

  Archive& _archive;
  bool _open;
};

/// Lets an object be filled directly by the call of its `read`, and by no later one, whether that has asked or not.
class UnseenScope {
 public:
  UnseenScope(BaseIArchive& archive, const BaseSerializationObject* object) : _archive(archive) {
    archive.setUnseen(object);
  }
  ~UnseenScope() { _archive.setUnseen(nullptr); }
  UnseenScope(const UnseenScope&) = delete;
  UnseenScope& operator=(const UnseenScope&) = delete;

 private:
  BaseIArchive& _archive;
};

using ObjectColl = std::vector<boost::shared_ptr<BaseSerializationObject>>;

/// `readUnseenObject`; inlined, as a function of its own would take stack for each level of nested objects.
[[gnu::always_inline]] inline bool readInSection(BaseIArchive& archive,
                                                 const boost::shared_ptr<BaseSerializationObject>& object,
                                                 BoolResult& result) {
  ObjectSection<BaseIArchive> section(archive, object->getClassName(), result);
  if (!section.isOpen()) return false;
  {
    const UnseenScope unseen(archive, object.use_count() == 1 ? object.get() : nullptr);
    result = object->read(archive);
  }
  if (result) section.close(result);
  return static_cast<bool>(result);
}

/// Appends a new object of the class of the next entry. Returns false at the end of the section and after a failure.
__attribute__((noinline)) bool addNextObject(BaseIArchive& archive, std::string_view key,
                                             bool (*isAllowed)(BaseSerializationObject&), ObjectColl& objects,
                                             BoolResult& result) {
  boost::shared_ptr<BaseSerializationObject> object = createNextObject(archive, key, result);
  if (object && !isAllowed(*object)) {
    result = wrongClass(key, object->getClassName());
    return false;
  }
  if (!object) return false;
  objects.push_back(std::move(object));
  return true;
}

}  // namespace

BoolResult writeObjectItem(BaseOArchive& archive, std::string_view key, const BaseSerializationObject& object) {
  BoolResult result;
  ObjectSection<BaseOArchive> section(archive, key, result);
  if (section.isOpen()) result = object.write(archive);
  if (result) section.close(result);
  return result;
}

BoolResult readObjectItem(BaseIArchive& archive, std::string_view key, BaseSerializationObject& object) {
  BoolResult result;
  ObjectSection<BaseIArchive> section(archive, key, result);
  if (section.isOpen()) result = object.read(archive);
  if (result) section.close(result);
  return result;
}

bool readSharedObjects(BaseIArchive& archive, std::string_view key, bool (*isAllowed)(BaseSerializationObject&),
                       ObjectColl& objects, BoolResult& result) {
  if (!beginSection(archive, key, result)) return false;
  while (addNextObject(archive, key, isAllowed, objects, result))
    if (!readInSection(archive, objects.back(), result)) return false;
  return result && endSection(archive, result);
}

bool readUnseenObject(BaseIArchive& archive, const boost::shared_ptr<BaseSerializationObject>& object,
                      BoolResult& result) {
  return readInSection(archive, object, result);
}

boost::shared_ptr<BaseSerializationObject> createNextObject(BaseIArchive& archive, std::string_view key,
                                                            BoolResult& result) {
  const std::string* className = archive.peekKey();
  if (!className) {
    result = archive.state();
    return nullptr;
  }
  boost::shared_ptr<BaseSerializationObject> object;
  try {
    object = archive.createObject(*className);
  } catch (const BaseException&) {
    result = failure(serializationMessage(Message::eSM_UnregisteredClass, shownText(key), shownText(*className)));
    return nullptr;
  }
  result = object ? BoolResult() : wrongClass(key, *className);
  return object;
}

}  // namespace ormix::detail
