#pragma once

#include <ORMIXSerialization/Archive/NumericArray.h>

#include <cstddef>

namespace ormix {

/// \name Tags of RFC 8746 and RFC 8949.
/// @{
inline constexpr omUInt64 s_rowMajorTag = 40;
inline constexpr omUInt64 s_selfDescribedTag = 55799;
/// @}

// Numbers go to the archive as they lie in memory.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the typed arrays written are little-endian");

/// Tag of a little-endian typed array.
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

/// What a typed array's tag says, bit by bit: 0b010fsell.
struct TypedArrayTag {
  bool real;
  bool isSigned;
  bool littleEndian;
  std::size_t size;  ///< bytes an element

  /// Whether `tag` is one of a typed array whose elements are at most 64 bits wide.
  static constexpr bool understands(omUInt64 tag) {
    return tag >= 64 && tag <= 87 && tag != 83 && tag != 87 && tag != 76;
  }
  constexpr explicit TypedArrayTag(omUInt64 tag)
      : real((tag & 16) != 0),
        isSigned((tag & 8) != 0),
        littleEndian((tag & 4) != 0),
        size(std::size_t{1} << ((tag & 3) + (real ? 1 : 0))) {}
};

}  // namespace ormix
