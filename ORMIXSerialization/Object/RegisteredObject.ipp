#pragma once

#include <ORMIXSerialization/Archive/ArchiveItem.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <memory>
#include <string>

namespace ormix {

namespace detail {

/// Visitor that writes each field; returns false when writing has failed.
struct FieldWriter {
  BaseOArchive& archive;
  BoolResult result;

  template <class V>
  bool operator()(const char* key, const V& value) {
    result = writeItem(archive, key, value);
    return static_cast<bool>(result);
  }
};

/// Visitor that reads each field; returns false when reading has failed.
struct FieldReader {
  BaseIArchive& archive;
  BoolResult& result;

  template <class V>
  bool operator()(const char* key, V& value) {
    return readField(archive, key, value, result);
  }
};

/// A new object to read into, unless none is needed. A large one is allocated on the heap, since reading of nested
/// objects is recursive and would exhaust the stack.
template <class Self, bool isLarge = (sizeof(Self) > 64)>
struct StagedObject {
  Self object;
  explicit StagedObject(bool) {}
  Self& operator*() { return object; }
};
template <class Self>
struct StagedObject<Self, true> {
  std::unique_ptr<Self> object;
  explicit StagedObject(bool isNeeded) : object(isNeeded ? new Self() : nullptr) {}
  Self& operator*() { return *object; }
};

/// The failure with "Class <name>: " before its message, unless the message has such a prefix: it names the innermost
/// object that failed.
ORMIX_SERIALIZATION_API BoolResult failedField(const std::string& className, const BoolResult& result);
/// The same in place.
ORMIX_SERIALIZATION_API void nameFailedField(const std::string& className, BoolResult& result);

/// Validates and completes an object that was read. Not inlined, so that its stack space is free while nested objects
/// are read.
template <class Self>
__attribute__((noinline)) bool finishRead(Self& object, BoolResult& result) {
  result = FieldAccess::validate(object);
  if (!result) return false;
  FieldAccess::complete(object);
  return true;
}

}  // namespace detail

template <class Self, class Base>
BaseDynamicObject* RegisteredObject<Self, Base>::createNewObject() {
  return new Self();
}

template <class Self, class Base>
boost::shared_ptr<BaseDynamicObject> RegisteredObject<Self, Base>::createSharedObject() {
  return boost::make_shared<Self>();
}

template <class Self, class Base>
BaseDynamicObject* RegisteredObject<Self, Base>::createNew() const {
  return createNewObject();
}

template <class Self, class Base>
boost::shared_ptr<BaseDynamicObject> RegisteredObject<Self, Base>::createShared() const {
  return createSharedObject();
}

template <class Self, class Base>
bool RegisteredObject<Self, Base>::hasCopySupport() const {
  return true;
}

template <class Self, class Base>
BaseDynamicObject* RegisteredObject<Self, Base>::duplicate() const {
  return new Self(static_cast<const Self&>(*this));
}

template <class Self, class Base>
boost::shared_ptr<BaseDynamicObject> RegisteredObject<Self, Base>::duplicateShared() const {
  return boost::make_shared<Self>(static_cast<const Self&>(*this));
}

template <class Self, class Base>
void RegisteredObject<Self, Base>::copy(const BaseDynamicObject& other) {
  Base::copy(other);
  static_cast<Self&>(*this) = static_cast<const Self&>(other);
}

template <class Self, class Base>
BoolResult RegisteredObject<Self, Base>::write(BaseOArchive& archive) const {
  BoolResult result = VersionedLevel<Self, Base>::write(archive);
  if (!result) return result;
  detail::FieldWriter writer{archive, {}};
  if (!FieldAccess::visit(static_cast<const Self&>(*this), writer))
    return detail::failedField(this->getTypeName(), writer.result);
  return result;
}

// The fields are read into a new object, which replaces this one at the end: a failed read changes nothing. An
// object that only the archive has is filled directly: the archive releases it when its read fails.
template <class Self, class Base>
BoolResult RegisteredObject<Self, Base>::read(BaseIArchive& archive) {
  const bool isInPlace = !FieldAccess::hasAdopt<Self>() && archive.takeUnseen(*this);
  detail::StagedObject<Self> staged(!isInPlace);
  Self& read = isInPlace ? static_cast<Self&>(*this) : *staged;
  BoolResult result = read.template VersionedLevel<Self, Base>::read(archive);
  if (!result) return result;
  detail::FieldReader reader{archive, result};
  if (!FieldAccess::visit(read, reader) || !detail::finishRead<Self>(read, result))
    detail::nameFailedField(this->getTypeName(), result);
  else if (!isInPlace)
    FieldAccess::adopt(static_cast<Self&>(*this), read);
  return result;
}

}  // namespace ormix
