#pragma once

#include <ORMIXUtil/ScalarTypes.h>

// Not installed.
namespace ormix::geom::detail {

/// The lower-case form of an ASCII letter, whatever the locale; other characters are returned unchanged.
constexpr char lowerCase(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// The 32-bit number in four bytes, in little-endian order.
constexpr omUInt32 littleEndian(const char* bytes) {
  omUInt32 value = 0;
  for (unsigned at = 0; at < 4; ++at) value |= omUInt32(static_cast<unsigned char>(bytes[at])) << 8 * at;
  return value;
}

}  // namespace ormix::geom::detail
