#pragma once

#include <ORMIXSerialization/Archive/ArchiveItem.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <memory>
#include <string>

namespace ormix {

namespace detail {

/// Writes the fields one by one until one fails.
struct FieldWriter {
  BaseOArchive& archive;
  BoolResult result;

  template <class V>
  bool operator()(const char* key, const V& value) {
    result = writeItem(archive, key, value);
    return static_cast<bool>(result);
  }
};

struct FieldReader {
  BaseIArchive& archive;
  BoolResult& result;

  template <class V>
  bool operator()(const char* key, V& value) {
    return readField(archive, key, value, result);
  }
};

/// A fresh object to read into. A large one is not on the stack, where objects within each other add up.
template <class Self, bool isLarge = (sizeof(Self) > 64)>
struct StagedObject {
  Self object;
  Self& operator*() { return object; }
};
template <class Self>
struct StagedObject<Self, true> {
  std::unique_ptr<Self> object{new Self()};
  Self& operator*() { return *object; }
};

/// The class is named here, once, by the innermost object that failed.
ORMIX_SERIALIZATION_API BoolResult failedField(const std::string& className, const BoolResult& result);
ORMIX_SERIALIZATION_API void nameFailedField(const std::string& className, BoolResult& result);

template <class Self>
__attribute__((noinline)) bool isValid(const Self& object, BoolResult& result) {
  result = FieldAccess::validate(object);
  return static_cast<bool>(result);
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

// The fields arrive in a fresh object that is moved over this one at the end: a failed read changes nothing.
template <class Self, class Base>
BoolResult RegisteredObject<Self, Base>::read(BaseIArchive& archive) {
  detail::StagedObject<Self> staged;
  BoolResult result = (*staged).VersionedLevel<Self, Base>::read(archive);
  if (!result) return result;
  detail::FieldReader reader{archive, result};
  if (FieldAccess::visit(*staged, reader) && detail::isValid<Self>(*staged, result))
    FieldAccess::adopt(static_cast<Self&>(*this), *staged);
  else
    detail::nameFailedField(this->getTypeName(), result);
  return result;
}

}  // namespace ormix
