#pragma once

#include <ORMIXGeometry/Tools/MeshFiles/PlyHeader.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <cstring>

// Not installed.
namespace ormix::geom::detail {

/// Whether numbers of a binary format have another order of bytes than those of this machine.
constexpr bool isSwapped(eMeshFileFormat format) {
  return (format == eMFF_PlyBigEndian) != (__BYTE_ORDER__ == __ORDER_BIG_ENDIAN__);
}

/// The number that begins at an address.
template <class Number>
Number loadNumber(const char* at, bool isSwapped) {
  char bytes[sizeof(Number)];
  std::memcpy(bytes, at, sizeof(Number));
  if (isSwapped) std::reverse(bytes, bytes + sizeof(Number));
  Number number;
  std::memcpy(&number, bytes, sizeof(Number));
  return number;
}

/// Writes a number and returns the address behind it.
template <class Number>
char* storeNumber(char* at, Number number, bool isSwapped) {
  std::memcpy(at, &number, sizeof(Number));
  if (isSwapped) std::reverse(at, at + sizeof(Number));
  return at + sizeof(Number);
}

/// Calls `use(number)` with the number of a type at an address.
template <class Use>
auto withNumber(PlyType type, const char* at, bool isSwapped, Use use) {
  switch (type) {
    case PlyType::Int8:
      return use(loadNumber<omInt8>(at, isSwapped));
    case PlyType::UInt8:
      return use(loadNumber<omUInt8>(at, isSwapped));
    case PlyType::Int16:
      return use(loadNumber<omInt16>(at, isSwapped));
    case PlyType::UInt16:
      return use(loadNumber<omUInt16>(at, isSwapped));
    case PlyType::Int32:
      return use(loadNumber<omInt32>(at, isSwapped));
    case PlyType::UInt32:
      return use(loadNumber<omUInt32>(at, isSwapped));
    case PlyType::Int64:
      return use(loadNumber<omInt64>(at, isSwapped));
    case PlyType::UInt64:
      return use(loadNumber<omUInt64>(at, isSwapped));
    case PlyType::Real32:
      return use(loadNumber<omReal32>(at, isSwapped));
    case PlyType::Real64:
    case PlyType::None:
      break;
  }
  return use(loadNumber<omReal64>(at, isSwapped));
}

}  // namespace ormix::geom::detail
