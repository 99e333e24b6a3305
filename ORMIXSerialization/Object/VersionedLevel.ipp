#pragma once

#include <ORMIXSerialization/Object/ClassVersion.h>
#include <ORMIXSerialization/Object/VersionedLevel.h>

#include <string>
#include <type_traits>

namespace ormix {

namespace detail {

/// The registered name of a class or of a scalar type, with the registered name of its template argument if it has one.
template <class Class>
struct RegisteredName {
  static std::string make() {
    if constexpr (std::is_arithmetic_v<Class>)
      return scalarName<Class>();
    else
      return Class::s_className;
  }
};
template <template <class> class Class, class Argument>
struct RegisteredName<Class<Argument>> {
  static std::string make() {
    const std::string argument = RegisteredName<Argument>::make();
    // A blank separates two closing brackets.
    return std::string(Class<Argument>::s_className) + "<" + argument + (argument.back() == '>' ? " >" : ">");
  }
};

}  // namespace detail

// The initialization of a function-local static is thread-safe; later calls only read it.
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
