#include <ORMIXSerialization/Archive/ArchiveHeader.h>
#include <ORMIXSerialization/Archive/ArrayScalar.h>
#include <ORMIXSerialization/Archive/JsonOArchive.h>
#include <ORMIXSerialization/Archive/JsonText.h>
#include <ORMIXSerialization/Archive/WriterState.h>

#include <exception>

namespace ormix {

namespace {
/// A line is broken after the first comma behind this number of characters.
constexpr std::size_t s_lineLength = 100;
}  // namespace

struct JsonOArchive::Writer {
  WriterState state;
  bool firstEntry = true;  ///< of the section being written
  std::size_t lineStart = 0;

  explicit Writer(std::ostream& stream) : state(stream) {}

  void newLine() {
    state.out.put('\n');
    lineStart = state.out.position();
  }
  void comma(bool entryOfArchive) {
    state.out.put(',');
    if (entryOfArchive || state.out.position() - lineStart > s_lineLength)
      newLine();
    else
      state.out.put(' ');
  }
  /// Writes the start of an entry up to its value, and what separates it from the entry before.
  /// \param depth number of open sections that contain the entry
  void entry(std::string_view key, std::size_t depth) {
    if (!firstEntry)
      comma(depth == 0);
    else if (depth == 0)
      newLine();
    firstEntry = false;
    state.out.put('{');
    putJsonText(state.out, key);
    state.out.put(": ");
  }
  template <class T>
  void number(T value) {
    state.out.advanceTo(formatJsonNumber(state.out.room(s_longestNumber), value));
  }
  template <class T>
  BoolResult numberEntry(std::string_view key, T value) {
    if (state.accepts(key)) {
      entry(key, state.depth());
      number(value);
      state.out.put('}');
    }
    return state.result();
  }
  template <class T>
  void row(const T* numbers, std::size_t nbColumns) {
    state.out.put('[');
    for (std::size_t column = 0; column < nbColumns; ++column) {
      if (column != 0) state.out.put(", ");
      number(numbers[column]);
    }
    state.out.put(']');
  }
  template <class T>
  void rows(const T* numbers, const NumericArrayView& array) {
    state.out.put('[');
    for (std::size_t index = 0; index < array.nbRows; ++index) {
      if (index != 0) comma(false);
      if (array.nbColumns == 0)
        number(numbers[index]);
      else
        row(numbers + index * array.nbColumns, array.nbColumns);
    }
    state.out.put(']');
  }
};

JsonOArchive::JsonOArchive(std::ostream& stream) : _writer(new Writer(stream)) {
  _writer->state.out.put('[');
  writeArchiveHeader(*this);
}

JsonOArchive::~JsonOArchive() {
  try {
    close();
  } catch (const std::exception&) {
    // Out of memory, or an exception of the stream's buffer; a destructor cannot report it.
  }
}

BoolResult JsonOArchive::beginSection(std::string_view key) {
  if (_writer->state.openSection(key)) {
    _writer->entry(key, _writer->state.depth() - 1);
    _writer->state.out.put('[');
    _writer->firstEntry = true;
  }
  return _writer->state.result();
}

BoolResult JsonOArchive::endSection() {
  if (_writer->state.closeSection()) {
    _writer->state.out.put("]}");
    _writer->firstEntry = false;
  }
  return _writer->state.result();
}

BoolResult JsonOArchive::writeBool(std::string_view key, bool value) {
  if (_writer->state.accepts(key)) {
    _writer->entry(key, _writer->state.depth());
    _writer->state.out.put(value ? "true}" : "false}");
  }
  return _writer->state.result();
}

BoolResult JsonOArchive::writeInteger(std::string_view key, omInt64 value) { return _writer->numberEntry(key, value); }

BoolResult JsonOArchive::writeUnsigned(std::string_view key, omUInt64 value) {
  return _writer->numberEntry(key, value);
}

BoolResult JsonOArchive::writeReal(std::string_view key, omReal64 value) { return _writer->numberEntry(key, value); }

BoolResult JsonOArchive::writeReal(std::string_view key, omReal32 value) { return _writer->numberEntry(key, value); }

BoolResult JsonOArchive::writeText(std::string_view key, std::string_view value) {
  if (_writer->state.acceptsText(key, value)) {
    _writer->entry(key, _writer->state.depth());
    putJsonText(_writer->state.out, value);
    _writer->state.out.put('}');
  }
  return _writer->state.result();
}

BoolResult JsonOArchive::writeArray(std::string_view key, const NumericArrayView& array) {
  if (_writer->state.accepts(key)) {
    _writer->entry(key, _writer->state.depth());
    withScalar(array.scalar, [&](auto zero) { _writer->rows(static_cast<const decltype(zero)*>(array.data), array); });
    _writer->state.out.put('}');
  }
  return _writer->state.result();
}

BoolResult JsonOArchive::close() {
  if (_writer->state.beginClose()) _writer->state.out.put("\n]\n");
  return _writer->state.endClose();
}

}  // namespace ormix
