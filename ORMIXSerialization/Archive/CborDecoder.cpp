#include <ORMIXSerialization/Archive/CborDecoder.h>
#include <cbor/streaming.h>

#include <cstddef>
#include <cstring>

namespace ormix {

namespace {

/// The item that is being decoded, from the context pointer of libcbor.
CborToken& token(void* context) { return *static_cast<CborToken*>(context); }

void keep(void* context, eCborKind kind, omUInt64 number, bool indefinite = false) {
  token(context).kind = kind;
  token(context).number = number;
  token(context).indefinite = indefinite;
}

void keepReal(void* context, omReal32 value) {
  token(context).kind = eCborKind::Real;
  token(context).isSingle = true;
  token(context).single = value;
  token(context).real = static_cast<omReal64>(value);
}

/// The functions that the decoder of libcbor calls for each kind of item, except strings, which are not passed to it.
cbor_callbacks makeCallbacks() {
  using Kind = eCborKind;
  cbor_callbacks calls = cbor_empty_callbacks;
  calls.uint8 = [](void* c, uint8_t n) { keep(c, Kind::Unsigned, n); };
  calls.uint16 = [](void* c, uint16_t n) { keep(c, Kind::Unsigned, n); };
  calls.uint32 = [](void* c, uint32_t n) { keep(c, Kind::Unsigned, n); };
  calls.uint64 = [](void* c, uint64_t n) { keep(c, Kind::Unsigned, n); };
  calls.negint8 = [](void* c, uint8_t n) { keep(c, Kind::Negative, n); };
  calls.negint16 = [](void* c, uint16_t n) { keep(c, Kind::Negative, n); };
  calls.negint32 = [](void* c, uint32_t n) { keep(c, Kind::Negative, n); };
  calls.negint64 = [](void* c, uint64_t n) { keep(c, Kind::Negative, n); };
  calls.array_start = [](void* c, size_t n) { keep(c, Kind::Array, n); };
  calls.indef_array_start = [](void* c) { keep(c, Kind::Array, 0, true); };
  calls.map_start = [](void* c, size_t n) { keep(c, Kind::Map, n); };
  calls.indef_map_start = [](void* c) { keep(c, Kind::Map, 0, true); };
  calls.tag = [](void* c, uint64_t n) { keep(c, Kind::Tag, n); };
  calls.float2 = keepReal;
  calls.float4 = keepReal;
  calls.float8 = [](void* c, double value) {
    token(c).kind = Kind::Real;
    token(c).real = value;
  };
  calls.undefined = [](void* c) { keep(c, Kind::Null, 0); };
  calls.null = [](void* c) { keep(c, Kind::Null, 0); };
  calls.boolean = [](void* c, bool value) {
    token(c).kind = Kind::Bool;
    token(c).boolean = value;
  };
  calls.indef_break = [](void* c) { keep(c, Kind::Break, 0); };
  return calls;
}

const cbor_callbacks g_callbacks = makeCallbacks();

/// The length in bytes of the head of an item, from its first byte.
std::size_t headSize(unsigned char first) {
  const unsigned info = first & 31u;
  return info >= 24 && info <= 27 ? 1 + (std::size_t{1} << (info - 24)) : 1;
}

bool isString(unsigned char first) { return (first >> 5) == 2 || (first >> 5) == 3; }

}  // namespace

std::size_t CborDecoder::decodeCommon(const unsigned char* bytes, CborToken& item) {
  constexpr eCborKind kinds[] = {eCborKind::Unsigned, eCborKind::Negative, eCborKind::Bytes, eCborKind::Text,
                                 eCborKind::Array,    eCborKind::Map,      eCborKind::Tag};
  constexpr unsigned char openList = 0x9F, single = 0xFA, real = 0xFB;
  const unsigned char first = bytes[0];
  const unsigned type = first >> 5;
  const unsigned info = first & 31u;
  const std::size_t size = headSize(first);
  // Not all short tags are known to libcbor, which decides about them.
  if (type < 6 ? info < 28 : type == 6 && info >= 24 && info < 28) {
    item.kind = kinds[type];
    item.number = size == 1 ? info : bigEndian(bytes + 1, size - 1);
    return size;
  }
  if (first == openList) {
    keep(&item, eCborKind::Array, 0, true);
    return size;
  }
  if (first == real) {
    const omUInt64 bits = bigEndian(bytes + 1, sizeof bits);
    item.kind = eCborKind::Real;
    std::memcpy(&item.real, &bits, sizeof bits);
    return size;
  }
  if (first == single) {
    const auto bits = static_cast<omUInt32>(bigEndian(bytes + 1, sizeof(omUInt32)));
    omReal32 value;
    std::memcpy(&value, &bits, sizeof bits);
    keepReal(&item, value);
    return size;
  }
  return 0;
}

CborToken CborDecoder::nextOfAny() {
  CborToken result;
  result.kind = eCborKind::End;
  const unsigned char* first = input.peek(1);
  if (!first) return result;
  const std::size_t size = headSize(*first);
  const unsigned char* item = input.peek(size);
  if (!item) return result;
  // The decoder of libcbor requires the whole string in memory, whatever length its head declares.
  if (isString(*item)) return stringHead(*item);
  const cbor_decoder_result decoded = cbor_stream_decode(item, size, &g_callbacks, &result);
  if (decoded.status != CBOR_DECODER_FINISHED) result.kind = eCborKind::Malformed;
  input.skip(size);
  return result;
}

CborToken CborDecoder::stringHead(unsigned char first) {
  CborToken result;
  const std::size_t size = headSize(first);
  const unsigned char* item = input.peek(size);
  result.kind = (first >> 5) == 2 ? eCborKind::Bytes : eCborKind::Text;
  result.indefinite = (first & 31u) == 31;
  if (size == 1) result.number = first & 31u;
  for (std::size_t at = 1; at < size; ++at) result.number = result.number << 8 | item[at];
  if (size == 1 && (first & 31u) >= 28 && !result.indefinite) result.kind = eCborKind::Malformed;
  input.skip(size);
  return result;
}

const char* describe(const CborToken& token) {
  switch (token.kind) {
    case eCborKind::Unsigned:
    case eCborKind::Negative:
      return "an integer";
    case eCborKind::Real:
      return "a real";
    case eCborKind::Bool:
      return "a bool";
    case eCborKind::Null:
      return "a null";
    case eCborKind::Bytes:
      return "a byte string";
    case eCborKind::Text:
      return "a text";
    case eCborKind::Array:
      return "a list";
    case eCborKind::Map:
      return "a map";
    case eCborKind::Tag:
      return "a tagged value";
    case eCborKind::Break:
      return "the end of a list";
    case eCborKind::End:
      return "the end of the archive";
    case eCborKind::Malformed:
      break;
  }
  return "an unknown item";
}

}  // namespace ormix
