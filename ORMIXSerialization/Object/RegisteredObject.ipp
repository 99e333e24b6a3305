#pragma once

#include <ORMIXSerialization/Archive/ArchiveItem.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>
#include <ORMIXSerialization/Object/VersionedLevel.ipp>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <string>
#include <utility>

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
  BoolResult result;

  template <class V>
  bool operator()(const char* key, V& value) {
    result = readItem(archive, key, value);
    return static_cast<bool>(result);
  }
};

/// The class is named here, once, by the innermost object that failed.
ORMIX_SERIALIZATION_API BoolResult failedField(const std::string& className, const BoolResult& result);

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
  Self staged;
  BoolResult result = staged.VersionedLevel<Self, Base>::read(archive);
  if (!result) return result;
  detail::FieldReader reader{archive, {}};
  if (!FieldAccess::visit(staged, reader)) return detail::failedField(this->getTypeName(), reader.result);
  if (const BoolResult valid = FieldAccess::validate(static_cast<const Self&>(staged)); !valid)
    return detail::failedField(this->getTypeName(), valid);
  static_cast<Self&>(*this) = std::move(staged);
  return result;
}

}  // namespace ormix
