#pragma once

#include <ORMIXSerialization/Archive/ByteInput.h>

#include <cstdint>
#include <cstring>

namespace ormix {

/// The kinds of data items, and the reasons why there is none.
enum class eCborKind : unsigned char {
  Unsigned,  ///< integer from 0 to 2^64 - 1
  Negative,  ///< integer from -2^64 to -1
  Real,      ///< float of 16, 32 or 64 bits
  Bool,      ///< true or false
  Null,      ///< null or undefined
  Bytes,     ///< byte string
  Text,      ///< UTF-8 text
  Array,     ///< list of items
  Map,       ///< list of pairs of items
  Tag,       ///< tag of the following item
  Break,     ///< end of an item of indefinite length
  End,       ///< the stream ends before or inside an item
  Malformed  ///< bytes that are no data item
};

/// A data item of CBOR, or the head (RFC 8949) of an item that has contents.
struct CborToken {
  eCborKind kind = eCborKind::Malformed;  ///< decides which of the other members are valid
  bool indefinite = false;                ///< the length of a text, byte string, array or map is not given
  bool isSingle = false;                  ///< a real has at most 32 bits and is in `single`, too
  bool boolean = false;                   ///< value of a Boolean
  omReal32 single = 0;                    ///< value of a real of at most 32 bits, including the bits of a NaN
  omUInt64 number = 0;                    ///< value, length or tag; for a negative integer n it is -1 - n
  omReal64 real = 0;                      ///< value of a real
};

/// The kind of an item in words ("a text", "an integer"), for messages.
const char* describe(const CborToken& token);

/// Reads CBOR from a stream item by item. The contents of texts and byte strings are not consumed; the caller reads
/// them from `input`.
class CborDecoder {
 public:
  /// \param stream must outlive this object
  explicit CborDecoder(std::istream& stream) : input(stream) {}

  /// Consumes the next item, or the head of one with contents.
  /// @{
  CborToken next() {
    CborToken item;
    next(item);
    return item;
  }
  void next(CborToken& item) {
    item = CborToken();
    const std::size_t size = input.buffered() < s_longestHead ? 0 : decodeCommon(input.peek(s_longestHead), item);
    if (size == 0) item = nextOfAny();
    input.skip(size);
  }
  /// @}
  /// Consumes the next byte if it has this value; returns whether it has.
  bool takeByte(unsigned char byte) {
    const unsigned char* at = input.peek(1);
    if (!at || *at != byte) return false;
    input.skip(1);
    return true;
  }
  /// Consumes the next item if it is a break; returns whether it is one.
  bool takeBreak() { return takeByte(0xFF); }
  /// Whether the next item is a break.
  bool atBreak() {
    const unsigned char* at = input.peek(1);
    return at && *at == 0xFF;
  }

  /// Decodes the head of an item of this type (the upper bits of its first byte) whose argument is in it, and moves
  /// `at` behind it; from nine bytes. False for another item.
  static bool takeHead(const unsigned char*& at, unsigned type, omUInt64& argument) {
    const unsigned info = *at & 31u;
    if (*at >> 5 != type || info >= 28) return false;
    const std::size_t size = info < 24 ? 0 : std::size_t{1} << (info - 24);
    argument = size == 0 ? info : bigEndian(at + 1, size);
    at += 1 + size;
    return true;
  }

  ByteInput input;  ///< the bytes after the items read so far

 private:
  static constexpr std::size_t s_longestHead = 9;  ///< bytes

  /// An unsigned integer of 1, 2, 4 or 8 bytes, most significant byte first; eight bytes are read.
  static omUInt64 bigEndian(const unsigned char* bytes, std::size_t size) {
    omUInt64 bits;
    std::memcpy(&bits, bytes, sizeof bits);
    return __builtin_bswap64(bits) >> (64 - 8 * size);
  }
  /// Decodes an item of one of the kinds that archives consist of, from `s_longestHead` bytes.
  /// \return the length of its head; 0 for an item of another kind
  static std::size_t decodeCommon(const unsigned char* bytes, CborToken& item);
  CborToken nextOfAny();
  CborToken stringHead(unsigned char first);
};

}  // namespace ormix
