#pragma once

#include <ORMIXSerialization/Archive/BaseIArchive.h>
#include <ORMIXSerialization/Archive/BaseOArchive.h>
#include <ORMIXSerialization/Archive/PackedCoordinates.h>
#include <ORMIXSerialization/Object/BaseSerializationObject.h>
#include <ORMIXUtil/Enumeration.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

/// \file
/// How a field is archived: `writeItem(archive, key, value)` and `readItem(archive, key, value)`, one pair of overloads
/// a kind of field, found by argument-dependent look-up. A library adds overloads for its own types in their namespace.
/// A failed `readItem` leaves the value as it was; the message names the key.

namespace ormix {

namespace detail {

template <class V>
inline constexpr bool isIntegerItem = std::is_integral_v<V> && !std::is_same_v<V, bool>;
template <class V>
inline constexpr bool isRealItem = std::is_same_v<V, omReal32> || std::is_same_v<V, omReal64>;
template <class V>
inline constexpr bool isObjectItem = std::is_base_of_v<BaseSerializationObject, V>;
/// The scalar of a numeric array that holds values of the fundamental type V, whatever the type's name.
template <class V>
using ArrayScalarOf =
    std::conditional_t<std::is_floating_point_v<V>, std::conditional_t<sizeof(V) == 4, omReal32, omReal64>,
                       std::conditional_t<sizeof(V) == 4, std::conditional_t<std::is_signed_v<V>, omInt32, omUInt32>,
                                          std::conditional_t<std::is_signed_v<V>, omInt64, omUInt64>>>;
template <class V>
inline constexpr bool isArrayElement = isRealItem<V> || (isIntegerItem<V> && (sizeof(V) == sizeof(omInt32) ||
                                                                              sizeof(V) == sizeof(omInt64)));

ORMIX_SERIALIZATION_API BoolResult integerOutOfRange(std::string_view key, std::size_t size, bool isSigned);
ORMIX_SERIALIZATION_API BoolResult unknownEnumerator(std::string_view key, std::string_view text,
                                                     std::string_view typeName);
ORMIX_SERIALIZATION_API BoolResult wrongClass(std::string_view key, const std::string& className);
ORMIX_SERIALIZATION_API BoolResult nullPointer(std::string_view key);

ORMIX_SERIALIZATION_API BoolResult writeObjectItem(BaseOArchive& archive, std::string_view key,
                                                   const BaseSerializationObject& object);
ORMIX_SERIALIZATION_API BoolResult readObjectItem(BaseIArchive& archive, std::string_view key,
                                                  BaseSerializationObject& object);
/// The key of the next entry as the name of a class, and a new object of it; null otherwise, with a failed result
/// unless the section ends.
ORMIX_SERIALIZATION_API boost::shared_ptr<BaseSerializationObject> createNextObject(BaseIArchive& archive,
                                                                                    std::string_view key,
                                                                                    BoolResult& result);

/// Reads the entries of the section under the key as objects of which `isWanted` says that they may stand there.
/// Objects nest down to the deepest section of an archive: of each level no more is on the stack than must be, here and
/// in `RegisteredObject::read`.
/// \return whether all went well; `result` tells
ORMIX_SERIALIZATION_API bool readSharedObjects(BaseIArchive& archive, std::string_view key,
                                               bool (*isWanted)(const BaseSerializationObject&),
                                               std::vector<boost::shared_ptr<BaseSerializationObject>>& objects,
                                               BoolResult& result);

template <class V>
__attribute__((noinline)) void takeAs(const std::vector<boost::shared_ptr<BaseSerializationObject>>& objects,
                                      std::vector<boost::shared_ptr<V>>& values) {
  std::vector<boost::shared_ptr<V>> taken;
  taken.reserve(objects.size());
  for (const auto& object : objects) taken.push_back(boost::dynamic_pointer_cast<V>(object));
  values = std::move(taken);
}

/// Reads a field into `value`; `result` and the return value tell whether that went well.
template <class V>
__attribute__((noinline)) bool readField(BaseIArchive& archive, std::string_view key, V& value, BoolResult& result);
template <class V, std::enable_if_t<isObjectItem<V>, int> = 0>
bool readField(BaseIArchive& archive, std::string_view key, std::vector<boost::shared_ptr<V>>& values,
               BoolResult& result) {
  std::vector<boost::shared_ptr<BaseSerializationObject>> objects;
  const auto isWanted = [](const BaseSerializationObject& object) {
    return dynamic_cast<const V*>(&object) != nullptr;
  };
  if (!readSharedObjects(archive, key, isWanted, objects, result)) return false;
  takeAs(objects, values);
  return true;
}

template <class P>
BoolResult readVector(BaseIArchive& archive, std::string_view key, std::vector<P>& values, eArrayScalar scalar,
                      std::size_t nbColumns) {
  std::vector<P> read;
  VectorSink<P> sink(read, scalar, nbColumns);
  BoolResult result = archive.readArray(key, sink);
  if (result) values = std::move(read);
  return result;
}

}  // namespace detail

/// \name Items by type: `writeItem` puts a value under a key, `readItem` takes it back or leaves the value as it was.
/// @{
/// Bools and texts. A text is UTF-8.
template <class V, std::enable_if_t<std::is_same_v<V, bool>, int> = 0>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const V& value) {
  return archive.writeBool(key, value);
}
template <class V, std::enable_if_t<std::is_same_v<V, bool>, int> = 0>
BoolResult readItem(BaseIArchive& archive, std::string_view key, V& value) {
  return archive.readBool(key, value);
}
inline BoolResult writeItem(BaseOArchive& archive, std::string_view key, const std::string& value) {
  return archive.writeText(key, value);
}
inline BoolResult readItem(BaseIArchive& archive, std::string_view key, std::string& value) {
  return archive.readText(key, value);
}

/// Integers of every size, checked against the type's range when read.
template <class V, std::enable_if_t<detail::isIntegerItem<V>, int> = 0>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const V& value) {
  if constexpr (std::is_signed_v<V>)
    return archive.writeInteger(key, value);
  else
    return archive.writeUnsigned(key, value);
}
template <class V, std::enable_if_t<detail::isIntegerItem<V>, int> = 0>
BoolResult readItem(BaseIArchive& archive, std::string_view key, V& value) {
  using Wide = std::conditional_t<std::is_signed_v<V>, omInt64, omUInt64>;
  Wide wide = 0;
  BoolResult result;
  if constexpr (std::is_signed_v<V>)
    result = archive.readInteger(key, wide);
  else
    result = archive.readUnsigned(key, wide);
  if (!result) return result;
  if (wide < Wide{std::numeric_limits<V>::min()} || wide > Wide{std::numeric_limits<V>::max()})
    return detail::integerOutOfRange(key, sizeof(V), std::is_signed_v<V>);
  value = static_cast<V>(wide);
  return result;
}

/// Reals, bit for bit.
template <class V, std::enable_if_t<detail::isRealItem<V>, int> = 0>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const V& value) {
  return archive.writeReal(key, value);
}
template <class V, std::enable_if_t<detail::isRealItem<V>, int> = 0>
BoolResult readItem(BaseIArchive& archive, std::string_view key, V& value) {
  return archive.readReal(key, value);
}

/// Enumerations with `EnumerationNames`, by the enumerator's name; another value or name is a failure.
template <class V, std::enable_if_t<isNamedEnumeration<V>, int> = 0>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const V& value) {
  using Names = EnumerationNames<V>;
  const auto index = static_cast<std::size_t>(value);
  if (index < Names::names.size()) return archive.writeText(key, Names::names[index]);
  return detail::unknownEnumerator(key, std::to_string(static_cast<long long>(value)), Names::typeName);
}
template <class V, std::enable_if_t<isNamedEnumeration<V>, int> = 0>
BoolResult readItem(BaseIArchive& archive, std::string_view key, V& value) {
  std::string name;
  BoolResult result = archive.readText(key, name);
  if (!result) return result;
  const std::optional<V> read = enumerationFromString<V>(name);
  if (!read) return detail::unknownEnumerator(key, name, EnumerationNames<V>::typeName);
  value = *read;
  return result;
}

/// Serializable objects: a section under the key, in it what the object writes.
template <class V, std::enable_if_t<detail::isObjectItem<V>, int> = 0>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const V& value) {
  return detail::writeObjectItem(archive, key, value);
}
template <class V, std::enable_if_t<detail::isObjectItem<V>, int> = 0>
BoolResult readItem(BaseIArchive& archive, std::string_view key, V& value) {
  return detail::readObjectItem(archive, key, value);
}

/// Shared objects: a section under the key, in it an entry an object under the name of its class. Reading creates
/// them through the factory; a class that is not registered or not a V, and a null pointer in writing, are failures.
template <class V, std::enable_if_t<detail::isObjectItem<V>, int> = 0>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const std::vector<boost::shared_ptr<V>>& values) {
  for (const boost::shared_ptr<V>& value : values)
    if (!value) return detail::nullPointer(key);
  BoolResult result = archive.beginSection(key);
  for (auto value = values.begin(); result && value != values.end(); ++value)
    result = detail::writeObjectItem(archive, (*value)->getClassName(), **value);
  return result ? archive.endSection() : result;
}
template <class V, std::enable_if_t<detail::isObjectItem<V>, int> = 0>
BoolResult readItem(BaseIArchive& archive, std::string_view key, std::vector<boost::shared_ptr<V>>& values) {
  BoolResult result;
  detail::readField(archive, key, values, result);
  return result;
}

/// Vectors of 32- and 64-bit numbers, and of coordinates with `PackedCoordinates`: one numeric array.
template <class V, std::enable_if_t<detail::isArrayElement<V>, int> = 0>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const std::vector<V>& values) {
  return archive.writeArray(key, {arrayScalar<detail::ArrayScalarOf<V>>(), values.data(), values.size(), 0});
}
template <class V, std::enable_if_t<detail::isArrayElement<V>, int> = 0>
BoolResult readItem(BaseIArchive& archive, std::string_view key, std::vector<V>& values) {
  return detail::readVector(archive, key, values, arrayScalar<detail::ArrayScalarOf<V>>(), 0);
}
template <class P, std::enable_if_t<detail::HasPackedCoordinates<P>::value, int> = 0>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const std::vector<P>& values) {
  using Packed = PackedCoordinates<P>;
  return archive.writeArray(key,
                            {arrayScalar<typename Packed::Scalar>(), values.data(), values.size(), Packed::nbColumns});
}
template <class P, std::enable_if_t<detail::HasPackedCoordinates<P>::value, int> = 0>
BoolResult readItem(BaseIArchive& archive, std::string_view key, std::vector<P>& values) {
  using Packed = PackedCoordinates<P>;
  return detail::readVector(archive, key, values, arrayScalar<typename Packed::Scalar>(), Packed::nbColumns);
}
/// @}

template <class V>
bool detail::readField(BaseIArchive& archive, std::string_view key, V& value, BoolResult& result) {
  result = readItem(archive, key, value);
  return static_cast<bool>(result);
}

}  // namespace ormix
