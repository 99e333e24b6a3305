#include <ORMIXSerialization/Archive/TypedArrayElement.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace ormix {

namespace {

/// The bits of an element as an integer, in the byte order of the array.
omUInt64 loadBits(const TypedArrayTag& type, const unsigned char* bytes) {
  omUInt64 bits = 0;
  for (std::size_t at = 0; at < type.size; ++at) bits = bits << 8 | bytes[type.littleEndian ? type.size - 1 - at : at];
  return bits;
}

/// The value of a 16-bit float of IEEE 754, which is exact.
omReal32 fromHalf(omUInt64 bits) {
  const int exponent = static_cast<int>(bits >> 10 & 31);
  const auto mantissa = static_cast<omReal32>(bits & 1023);
  omReal32 value = std::numeric_limits<omReal32>::infinity();
  if (exponent != 31)
    value = exponent == 0 ? std::ldexp(mantissa, -24) : std::ldexp(mantissa + 1024.0f, exponent - 25);
  else if (mantissa != 0)
    value = std::numeric_limits<omReal32>::quiet_NaN();
  return bits >> 15 & 1 ? -value : value;
}

CborToken realNumber(const TypedArrayTag& type, omUInt64 bits) {
  CborToken number;
  number.kind = eCborKind::Real;
  number.isSingle = type.size < 8;
  if (type.size == 8) {
    std::memcpy(&number.real, &bits, sizeof number.real);
    return number;
  }
  const auto low = static_cast<omUInt32>(bits);
  if (type.size == 4) std::memcpy(&number.single, &low, sizeof low);
  if (type.size == 2) number.single = fromHalf(bits);
  number.real = static_cast<omReal64>(number.single);
  return number;
}

}  // namespace

CborToken decodeElement(const TypedArrayTag& type, const unsigned char* bytes) {
  omUInt64 bits = loadBits(type, bytes);
  if (type.real) return realNumber(type, bits);
  CborToken number;
  number.kind = eCborKind::Unsigned;
  const omUInt64 sign = omUInt64{1} << (8 * type.size - 1);
  if (type.isSigned && (bits & sign) != 0) {
    // A negative integer n is stored as -1 - n, which is the bitwise complement of its sign-extended bits.
    number.kind = eCborKind::Negative;
    bits = ~(bits | ~(sign | (sign - 1)));
  }
  number.number = bits;
  return number;
}

}  // namespace ormix
