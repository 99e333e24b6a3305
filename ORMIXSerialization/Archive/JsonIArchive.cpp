#include <ORMIXSerialization/Archive/ArchiveHeader.h>
#include <ORMIXSerialization/Archive/ArrayScalar.h>
#include <ORMIXSerialization/Archive/JsonIArchive.h>
#include <ORMIXSerialization/Archive/JsonNumbers.h>

#include <utility>

namespace ormix {
namespace {
// simdjson chooses its kernels at the first use, in functions that must not throw, and allocates there: chosen when
// the library is loaded, a lack of memory in the first archive of a program is an exception as anywhere else.
[[maybe_unused]] const std::string& g_chosenKernels = simdjson::get_active_implementation()->name();
}  // namespace

struct JsonIArchive::Reader {
  JsonEntries entries;
  bool closed = false;

  explicit Reader(std::istream& stream) : entries(stream) {}

  template <class T>
  BoolResult number(std::string_view key, T& value) {
    T read = 0;
    if (entries.enterEntry(key) && JsonNumbers(entries, key).read(entries.value, read) && entries.leaveEntry())
      value = read;
    return entries.failure.result();
  }
};

JsonIArchive::JsonIArchive(std::istream& stream) : _reader(new Reader(stream)) {
  // The message about the header describes the failure better than that of the entry inside it.
  const BoolResult header = readArchiveHeader(*this);
  if (!header) _reader->entries.failure.replace(header.getMessage());
}

JsonIArchive::~JsonIArchive() = default;

BoolResult JsonIArchive::beginSection(std::string_view key) {
  _reader->entries.enterSection(key);
  return state();
}

BoolResult JsonIArchive::endSection() {
  _reader->entries.leaveSection();
  return state();
}

std::optional<std::string> JsonIArchive::nextKey() {
  const std::string* key = peekKey();
  return key ? std::optional<std::string>(*key) : std::nullopt;
}

const std::string* JsonIArchive::peekKey() { return _reader->entries.peekKey(); }

BoolResult JsonIArchive::readBool(std::string_view key, bool& value) {
  JsonEntries& entries = _reader->entries;
  if (!entries.enterEntry(key)) return state();
  bool read = false;
  if (entries.value.get_bool().get(read) != simdjson::SUCCESS)
    entries.refuse(key, "a bool", entries.value);
  else if (entries.leaveEntry())
    value = read;
  return state();
}

BoolResult JsonIArchive::readInteger(std::string_view key, omInt64& value) { return _reader->number(key, value); }

BoolResult JsonIArchive::readUnsigned(std::string_view key, omUInt64& value) { return _reader->number(key, value); }

BoolResult JsonIArchive::readReal(std::string_view key, omReal64& value) { return _reader->number(key, value); }

BoolResult JsonIArchive::readReal(std::string_view key, omReal32& value) { return _reader->number(key, value); }

BoolResult JsonIArchive::readText(std::string_view key, std::string& value) {
  JsonEntries& entries = _reader->entries;
  if (!entries.enterEntry(key)) return state();
  json::raw_json_string raw;
  std::string text;
  const simdjson::error_code error = entries.value.get_raw_json_string().get(raw);
  if (error == simdjson::INCORRECT_TYPE)
    entries.refuse(key, "a text", entries.value);
  else if (error != simdjson::SUCCESS)
    entries.malformed(key, error);
  else if (entries.takeText(key, raw, text) && entries.leaveEntry())
    value = std::move(text);
  return state();
}

BoolResult JsonIArchive::readArray(std::string_view key, NumericArraySink& sink) {
  JsonEntries& entries = _reader->entries;
  if (!entries.enterEntry(key)) return state();
  const bool read = withScalar(
      sink.scalar, [&](auto zero) { return JsonNumbers(entries, key).readArray<decltype(zero)>(entries.value, sink); });
  if (read) entries.leaveEntry();
  return state();
}

BoolResult JsonIArchive::close() {
  if (!_reader->closed) _reader->entries.leaveArchive();
  _reader->closed = true;
  return state();
}

BoolResult JsonIArchive::state() const { return _reader->entries.failure.result(); }

}  // namespace ormix
