#pragma once

#include <ORMIXSerialization/Archive/ByteInput.h>

#include <cstdint>

namespace ormix {

enum class eCborKind { Unsigned, Negative, Real, Bool, Null, Bytes, Text, Array, Map, Tag, Break, End, Malformed };

/// One data item of CBOR, or the head of one that has contents.
struct CborToken {
  eCborKind kind = eCborKind::Malformed;
  bool indefinite = false;  ///< of a text, byte string, array or map whose length is not stated
  bool isSingle = false;    ///< of a real: `single` holds its very bits
  bool boolean = false;
  omReal32 single = 0;
  /// Value, length or tag; of a negative integer its distance below -1.
  omUInt64 number = 0;
  omReal64 real = 0;
};

/// "a text", "an integer" and so on, for messages.
const char* describe(const CborToken& token);

/// Takes CBOR from a stream item by item. Contents of texts and byte strings are left in `input` to the caller.
class CborDecoder {
 public:
  explicit CborDecoder(std::istream& stream) : input(stream) {}

  CborToken next();
  /// Takes the next byte when it is this one.
  bool takeByte(unsigned char byte) {
    const unsigned char* at = input.peek(1);
    if (!at || *at != byte) return false;
    input.skip(1);
    return true;
  }
  bool takeBreak() { return takeByte(0xFF); }
  bool atBreak() {
    const unsigned char* at = input.peek(1);
    return at && *at == 0xFF;
  }

  ByteInput input;

 private:
  CborToken stringHead(unsigned char first);
};

}  // namespace ormix
