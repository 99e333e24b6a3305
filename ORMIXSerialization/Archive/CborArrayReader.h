#pragma once

#include <ORMIXSerialization/Archive/CborEntries.h>
#include <ORMIXSerialization/Archive/NumericArray.h>

#include <optional>
#include <string_view>

namespace ormix {

/// Reads the value of one numeric array: a typed array (with its dimensions if the sink has columns), or a list of
/// numbers or of rows. Numbers are converted to the type of the sink; fails when one is outside the range of that type.
class CborArrayReader {
 public:
  /// \param entries after the start of the entry with this key; must outlive this object, as the sink
  CborArrayReader(CborEntries& entries, std::string_view key, NumericArraySink& sink)
      : _entries(entries), _key(key), _sink(sink) {}

  /// Returns false when `entries` has failed; the sink may then have received a part of the array.
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
  bool readConverted(omUInt64 tag, omUInt64 size);
  template <class T>
  bool readPlain(const CborToken& list, std::optional<omUInt64> nbRows);
  template <class T>
  bool readRows(const CborToken& list);
  template <class T, class Push>
  bool readNumbers(const CborToken& list, Push&& push, omUInt64& count);
  template <class T>
  bool convert(const CborToken& number, T& result);

  bool takeCanonicalHeads(omUInt64& size);
  bool readShape(omUInt64& nbRows);
  bool badShape(const char* found);
  bool truncated();
  void reserve(omUInt64 nbRows, omUInt64 rowSize);

  CborEntries& _entries;
  std::string_view _key;
  NumericArraySink& _sink;
};

}  // namespace ormix
