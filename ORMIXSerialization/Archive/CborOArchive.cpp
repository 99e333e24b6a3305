#include <ORMIXSerialization/Archive/ArchiveHeader.h>
#include <ORMIXSerialization/Archive/ArrayScalar.h>
#include <ORMIXSerialization/Archive/CborOArchive.h>
#include <ORMIXSerialization/Archive/CborTags.h>
#include <ORMIXSerialization/Archive/WriterState.h>
#include <cbor/encoding.h>

#include <algorithm>

namespace ormix {

namespace {
/// The maximum length of the head of an item, in bytes.
constexpr std::size_t s_headSize = 9;
}  // namespace

struct CborOArchive::Writer {
  WriterState state;

  explicit Writer(std::ostream& stream) : state(stream) {}

  /// Writes the head of an item by an encoding function of libcbor.
  template <class Encode, class... Arguments>
  void head(Encode encode, Arguments... arguments) {
    char* at = state.out.room(s_headSize);
    state.out.advanceTo(at + encode(arguments..., reinterpret_cast<unsigned char*>(at), s_headSize));
  }
  void text(std::string_view value) {
    head(cbor_encode_string_start, value.size());
    state.out.put(value);
  }
  void entry(std::string_view key) {
    head(cbor_encode_map_start, std::size_t{1});
    text(key);
  }
  void shape(const NumericArrayView& array) {
    head(cbor_encode_tag, s_rowMajorTag);
    head(cbor_encode_array_start, std::size_t{2});
    head(cbor_encode_array_start, std::size_t{2});
    head(cbor_encode_uint, omUInt64{array.nbRows});
    head(cbor_encode_uint, omUInt64{array.nbColumns});
  }
};

CborOArchive::CborOArchive(std::ostream& stream) : _writer(new Writer(stream)) {
  _writer->head(cbor_encode_indef_array_start);
  writeArchiveHeader(*this);
}

CborOArchive::~CborOArchive() {
  try {
    close();
  } catch (const std::exception&) {
    // Out of memory, or an exception of the stream's buffer; a destructor cannot report it.
  }
}

BoolResult CborOArchive::beginSection(std::string_view key) {
  if (_writer->state.openSection(key)) {
    _writer->entry(key);
    // The number of entries is not known yet, and a stream need not support going back to write it.
    _writer->head(cbor_encode_indef_array_start);
  }
  return _writer->state.result();
}

BoolResult CborOArchive::endSection() {
  if (_writer->state.closeSection()) _writer->head(cbor_encode_break);
  return _writer->state.result();
}

BoolResult CborOArchive::writeBool(std::string_view key, bool value) {
  if (_writer->state.accepts(key)) {
    _writer->entry(key);
    _writer->head(cbor_encode_bool, value);
  }
  return _writer->state.result();
}

BoolResult CborOArchive::writeInteger(std::string_view key, omInt64 value) {
  if (value >= 0) return writeUnsigned(key, static_cast<omUInt64>(value));
  if (_writer->state.accepts(key)) {
    _writer->entry(key);
    _writer->head(cbor_encode_negint, ~static_cast<omUInt64>(value));
  }
  return _writer->state.result();
}

BoolResult CborOArchive::writeUnsigned(std::string_view key, omUInt64 value) {
  if (_writer->state.accepts(key)) {
    _writer->entry(key);
    _writer->head(cbor_encode_uint, value);
  }
  return _writer->state.result();
}

BoolResult CborOArchive::writeReal(std::string_view key, omReal64 value) {
  if (_writer->state.accepts(key)) {
    _writer->entry(key);
    _writer->head(cbor_encode_double, value);
  }
  return _writer->state.result();
}

BoolResult CborOArchive::writeReal(std::string_view key, omReal32 value) {
  if (_writer->state.accepts(key)) {
    _writer->entry(key);
    _writer->head(cbor_encode_single, value);
  }
  return _writer->state.result();
}

BoolResult CborOArchive::writeText(std::string_view key, std::string_view value) {
  if (_writer->state.acceptsText(key, value)) {
    _writer->entry(key);
    _writer->text(value);
  }
  return _writer->state.result();
}

BoolResult CborOArchive::writeArray(std::string_view key, const NumericArrayView& array) {
  if (_writer->state.accepts(key)) {
    const std::size_t size = array.nbRows * std::max<std::size_t>(array.nbColumns, 1) * scalarSize(array.scalar);
    _writer->entry(key);
    if (array.nbColumns != 0) _writer->shape(array);
    _writer->head(cbor_encode_tag, typedArrayTag(array.scalar));
    _writer->head(cbor_encode_bytestring_start, size);
    _writer->state.out.put(std::string_view(static_cast<const char*>(array.data), size));
  }
  return _writer->state.result();
}

BoolResult CborOArchive::close() {
  if (_writer->state.beginClose()) _writer->head(cbor_encode_break);
  return _writer->state.endClose();
}

}  // namespace ormix
