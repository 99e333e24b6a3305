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
#include <typeinfo>
#include <utility>
#include <vector>

/// \file
/// How a field is archived: `writeItem(archive, key, value)` and `readItem(archive, key, value)`, a pair of overloads
/// for each kind of field, found by argument-dependent lookup. A library adds overloads for its own types in their
/// namespace. When `readItem` fails, the value is unchanged and the message names the key.

namespace ormix {

namespace detail {

/// Whether V is archived as an integer.
template <class V>
inline constexpr bool isIntegerItem = std::is_integral_v<V> && !std::is_same_v<V, bool>;
/// Whether V is archived as a real number.
template <class V>
inline constexpr bool isRealItem = std::is_same_v<V, omReal32> || std::is_same_v<V, omReal64>;
/// Whether V is a class of serializable objects.
template <class V>
inline constexpr bool isObjectItem = std::is_base_of_v<BaseSerializationObject, V>;
/// The element type of a numeric array for values of the fundamental type V, chosen by size and signedness: of two
/// types with the same representation (`long` and `long long`) only one is an element type by name.
template <class V>
using ArrayScalarOf =
    std::conditional_t<std::is_floating_point_v<V>, std::conditional_t<sizeof(V) == 4, omReal32, omReal64>,
                       std::conditional_t<sizeof(V) == 4, std::conditional_t<std::is_signed_v<V>, omInt32, omUInt32>,
                                          std::conditional_t<std::is_signed_v<V>, omInt64, omUInt64>>>;
/// Whether a vector of V is archived as a numeric array.
template <class V>
inline constexpr bool isArrayElement = isRealItem<V> || (isIntegerItem<V> && (sizeof(V) == sizeof(omInt32) ||
                                                                              sizeof(V) == sizeof(omInt64)));

/// Failures that name the key; `size` is that of the integer type in bytes.
/// @{
ORMIX_SERIALIZATION_API BoolResult integerOutOfRange(std::string_view key, std::size_t size, bool isSigned);
ORMIX_SERIALIZATION_API BoolResult unknownEnumerator(std::string_view key, std::string_view text,
                                                     std::string_view typeName);
ORMIX_SERIALIZATION_API BoolResult wrongClass(std::string_view key, const std::string& className);
ORMIX_SERIALIZATION_API BoolResult nullPointer(std::string_view key);
/// @}

/// Writes or reads an object in a section of its own under the key.
/// @{
ORMIX_SERIALIZATION_API BoolResult writeObjectItem(BaseOArchive& archive, std::string_view key,
                                                   const BaseSerializationObject& object);
ORMIX_SERIALIZATION_API BoolResult readObjectItem(BaseIArchive& archive, std::string_view key,
                                                  BaseSerializationObject& object);
/// @}

/// Reads an object that `createNextObject` has returned, in a section under the name of its class; directly into it
/// where nobody else owns it, so that it is to be dropped when that fails.
/// \return whether `result` is a success
ORMIX_SERIALIZATION_API bool readUnseenObject(BaseIArchive& archive,
                                              const boost::shared_ptr<BaseSerializationObject>& object,
                                              BoolResult& result);

/// A new object of the class whose name is the key of the next entry, which is not consumed. Null when there is none;
/// `result` is then a failure, unless the section has no more entries.
ORMIX_SERIALIZATION_API boost::shared_ptr<BaseSerializationObject> createNextObject(BaseIArchive& archive,
                                                                                    std::string_view key,
                                                                                    BoolResult& result);

/// Reads the entries of the section under the key as objects; fails when `isAllowed` returns false for one of them. The
/// functions for nested objects, here and in `RegisteredObject::read`, call each other recursively up to the maximum
/// depth of sections. They are written to use little stack: results are output parameters, and what is not needed
/// during the recursion is in functions that are not inlined.
/// \return whether `result` is a success
ORMIX_SERIALIZATION_API bool readSharedObjects(BaseIArchive& archive, std::string_view key,
                                               bool (*isAllowed)(BaseSerializationObject&),
                                               std::vector<boost::shared_ptr<BaseSerializationObject>>& objects,
                                               BoolResult& result);

/// The object as one of class V, null when it is none. Mostly it is one of V itself, which is seen without a search
/// through its base classes.
template <class V>
V* castObject(BaseSerializationObject& object) {
  return typeid(object) == typeid(V) ? static_cast<V*>(dynamic_cast<void*>(&object)) : dynamic_cast<V*>(&object);
}

/// Sets `values` to the objects, all of which are of class V; `objects` are null afterwards.
template <class V>
__attribute__((noinline)) void castObjects(std::vector<boost::shared_ptr<BaseSerializationObject>>& objects,
                                           std::vector<boost::shared_ptr<V>>& values) {
  std::vector<boost::shared_ptr<V>> typed;
  typed.reserve(objects.size());
  for (auto& object : objects) {
    V* const value = castObject<V>(*object);
    typed.emplace_back(std::move(object), value);
  }
  values = std::move(typed);
}

/// Reads a field by its `readItem`.
/// \return whether `result` is a success
template <class V>
__attribute__((noinline)) bool readField(BaseIArchive& archive, std::string_view key, V& value, BoolResult& result);
template <class V, std::enable_if_t<isObjectItem<V>, int> = 0>
bool readField(BaseIArchive& archive, std::string_view key, std::vector<boost::shared_ptr<V>>& values,
               BoolResult& result) {
  std::vector<boost::shared_ptr<BaseSerializationObject>> objects;
  const auto isAllowed = [](BaseSerializationObject& object) { return castObject<V>(object) != nullptr; };
  if (!readSharedObjects(archive, key, isAllowed, objects, result)) return false;
  castObjects(objects, values);
  return true;
}

/// Reads a numeric array with elements of type `scalar` into a vector, which is unchanged on failure.
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

/// Writes or reads a Boolean value.
/// @{
template <class V, std::enable_if_t<std::is_same_v<V, bool>, int> = 0>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const V& value) {
  return archive.writeBool(key, value);
}
template <class V, std::enable_if_t<std::is_same_v<V, bool>, int> = 0>
BoolResult readItem(BaseIArchive& archive, std::string_view key, V& value) {
  return archive.readBool(key, value);
}
/// @}

/// Writes or reads a text, which must be valid UTF-8.
/// @{
inline BoolResult writeItem(BaseOArchive& archive, std::string_view key, const std::string& value) {
  return archive.writeText(key, value);
}
inline BoolResult readItem(BaseIArchive& archive, std::string_view key, std::string& value) {
  return archive.readText(key, value);
}
/// @}

/// Writes or reads an integer of any size; reading fails when the value is outside the range of V.
/// @{
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
/// @}

/// Writes or reads a real number without loss, including NaN and infinity.
/// @{
template <class V, std::enable_if_t<detail::isRealItem<V>, int> = 0>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const V& value) {
  return archive.writeReal(key, value);
}
template <class V, std::enable_if_t<detail::isRealItem<V>, int> = 0>
BoolResult readItem(BaseIArchive& archive, std::string_view key, V& value) {
  return archive.readReal(key, value);
}
/// @}

/// Writes or reads an enumerator by its name in `EnumerationNames`; fails for other values and names.
/// @{
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
/// @}

/// Writes or reads an object of a known class: a section under the key that contains what the object writes.
/// @{
template <class V, std::enable_if_t<detail::isObjectItem<V>, int> = 0>
BoolResult writeItem(BaseOArchive& archive, std::string_view key, const V& value) {
  return detail::writeObjectItem(archive, key, value);
}
template <class V, std::enable_if_t<detail::isObjectItem<V>, int> = 0>
BoolResult readItem(BaseIArchive& archive, std::string_view key, V& value) {
  return detail::readObjectItem(archive, key, value);
}
/// @}

/// Writes or reads shared objects of V and derived classes: a section under the key with one entry for each object,
/// under the registered name of its class, by which the factory of dynamic objects creates it. Writing fails for a null
/// pointer, reading for a class that is not registered or not derived from V.
/// @{
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
/// @}

/// Writes or reads a vector of 32- or 64-bit numbers, or of coordinates with `PackedCoordinates`, as one numeric array.
/// Linear in the numbers.
/// @{
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
