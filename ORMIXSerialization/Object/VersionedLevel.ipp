#pragma once

#include <ORMIXSerialization/Archive/BaseIArchive.h>
#include <ORMIXSerialization/Archive/BaseOArchive.h>
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

/// Whether objects of a class have nothing but class versions in an archive, which is so as long as `read` and `write`
/// are those of levels.
/// @{
template <class Level>
struct HasVersionsOnly : std::false_type {};
template <>
struct HasVersionsOnly<BaseSerializationObject> : std::true_type {};
template <class Level>
HasVersionsOnly<Level> readerOf(BoolResult (Level::*)(BaseIArchive&));
template <class Level>
HasVersionsOnly<Level> writerOf(BoolResult (Level::*)(BaseOArchive&) const);
template <class Class>
constexpr auto hasVersionsOnly(int) -> decltype(readerOf(&Class::read), writerOf(&Class::write), bool()) {
  return decltype(readerOf(&Class::read))::value && decltype(writerOf(&Class::write))::value;
}
template <class Class>
constexpr bool hasVersionsOnly(long) {
  return false;  // functions that cannot be told
}
template <class Self, class Base>
struct HasVersionsOnly<VersionedLevel<Self, Base>> : std::bool_constant<hasVersionsOnly<Base>(0)> {};
/// @}

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
  if (detail::hasVersionsOnly<Base>(0) && archive.isRegisteredWithBases(getTypeName())) return {};
  BoolResult result = Base::write(archive);
  if (result) result = writeClassVersion(archive, getTypeName(), getVersion());
  if (result) archive.registerWithBases(getTypeName());
  return result;
}

template <class Self, class Base>
BoolResult VersionedLevel<Self, Base>::read(BaseIArchive& archive) {
  if (detail::hasVersionsOnly<Base>(0) && archive.isRegisteredWithBases(getTypeName())) return {};
  BoolResult result = Base::read(archive);
  if (result) result = readClassVersion(archive, getTypeName(), getVersion(), Self::s_oldestClassVersion);
  if (result) archive.registerWithBases(getTypeName());
  return result;
}

}  // namespace ormix
