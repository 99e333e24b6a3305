#pragma once

#include <ORMIXSerialization/Object/ClassVersion.h>
#include <ORMIXSerialization/Object/VersionedLevel.h>

namespace ormix {

namespace detail {
template <class Class>
struct RegisteredName {
  static std::string make() { return Class::s_className; }
};
template <template <class> class Class, class T>
struct RegisteredName<Class<T>> {
  static std::string make() { return std::string(Class<T>::s_className) + "<" + scalarName<T>() + ">"; }
};
}  // namespace detail

// The language makes the first construction of a function-local static safe between threads; later calls read it.
template <class Self, class Base>
const std::string& VersionedLevel<Self, Base>::getTypeName() {
  static const std::string name = detail::RegisteredName<Self>::make();
  return name;
}

template <class Self, class Base>
omUInt32 VersionedLevel<Self, Base>::getVersion() {
  static const omUInt32 version = Self::s_classVersion;
  return version;
}

template <class Self, class Base>
const std::string& VersionedLevel<Self, Base>::getClassName() const {
  return getTypeName();
}

template <class Self, class Base>
BoolResult VersionedLevel<Self, Base>::write(BaseOArchive& archive) const {
  BoolResult result = Base::write(archive);
  return result ? writeClassVersion(archive, getTypeName(), getVersion()) : result;
}

template <class Self, class Base>
BoolResult VersionedLevel<Self, Base>::read(BaseIArchive& archive) {
  BoolResult result = Base::read(archive);
  return result ? readClassVersion(archive, getTypeName(), getVersion(), Self::s_oldestClassVersion) : result;
}

}  // namespace ormix
