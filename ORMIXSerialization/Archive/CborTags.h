#pragma once

#include <ORMIXSerialization/Archive/NumericArray.h>

#include <cstddef>

namespace ormix {

/// Tag of a multi-dimensional array with its dimensions, in row-major order (RFC 8746).
inline constexpr omUInt64 s_rowMajorTag = 40;
/// Tag that identifies data as CBOR (RFC 8949, section 3.4.6).
inline constexpr omUInt64 s_selfDescribedTag = 55799;

// Arrays are written as they are in memory.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the typed arrays written are little-endian");

/// Tag of a little-endian typed array (RFC 8746).
constexpr omUInt64 typedArrayTag(eArrayScalar scalar) {
  switch (scalar) {
    case eArrayScalar::UInt32:
      return 70;
    case eArrayScalar::UInt64:
      return 71;
    case eArrayScalar::Int32:
      return 78;
    case eArrayScalar::Int64:
      return 79;
    case eArrayScalar::Real32:
      return 85;
    case eArrayScalar::Real64:
      break;
  }
  return 86;
}

/// The properties in the bits of the tag of a typed array, 0b010fsell (RFC 8746, section 2.1).
struct TypedArrayTag {
  bool real;          ///< elements are floating-point numbers
  bool isSigned;      ///< elements are signed integers; without meaning for real ones
  bool littleEndian;  ///< byte order of the elements
  std::size_t size;   ///< bytes of an element

  /// Whether `tag` is that of a typed array whose elements have at most 64 bits.
  static constexpr bool isSupported(omUInt64 tag) {
    return tag >= 64 && tag <= 87 && tag != 83 && tag != 87 && tag != 76;
  }
  /// \param tag one for which `isSupported` returns true
  constexpr explicit TypedArrayTag(omUInt64 tag)
      : real((tag & 16) != 0),
        isSigned((tag & 8) != 0),
        littleEndian((tag & 4) != 0),
        size(std::size_t{1} << ((tag & 3) + (real ? 1 : 0))) {}
};

}  // namespace ormix
