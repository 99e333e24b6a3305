#pragma once

#include <ORMIXSerialization/Archive/CborEntries.h>
#include <ORMIXSerialization/Archive/NumericArray.h>

#include <optional>
#include <string_view>

namespace ormix {

/// Reads the value of one numeric array: a typed array (with its shape when the sink wants rows), or a plain list of
/// numbers or of rows. Numbers of another type than the sink's are converted where they fit.
class CborArrayReader {
 public:
  CborArrayReader(CborEntries& entries, std::string_view key, NumericArraySink& sink)
      : _entries(entries), _key(key), _sink(sink) {}

  /// False when `entries` has failed; the sink may then hold a part.
  bool read();

 private:
  template <class T>
  bool readAs();
  template <class T>
  bool readElements(const CborToken& head, std::optional<omUInt64> nbRows);
  template <class T>
  bool readTyped(omUInt64 tag, std::optional<omUInt64> nbRows);
  template <class T>
  bool readBytes(omUInt64 size);
  template <class T>
  bool readForeign(omUInt64 tag, omUInt64 size);
  template <class T>
  bool readPlain(const CborToken& list, std::optional<omUInt64> nbRows);
  template <class T>
  bool readRows(const CborToken& list);
  template <class T, class Push>
  bool readNumbers(const CborToken& list, Push&& push, omUInt64& count);
  template <class T>
  bool convert(const CborToken& number, T& result);

  bool readShape(omUInt64& nbRows);
  bool badShape(const char* found);
  bool truncated();
  void reserve(omUInt64 nbRows, omUInt64 rowSize);

  CborEntries& _entries;
  std::string_view _key;
  NumericArraySink& _sink;
};

}  // namespace ormix
