#pragma once

#include <ORMIXSerialization/Archive/CborDecoder.h>
#include <ORMIXSerialization/Archive/FirstFailure.h>

#include <string>
#include <string_view>
#include <vector>

namespace ormix {

/// Iterates over the entries of a CBOR archive and its sections: reads the key of each entry; the caller reads the
/// value. After the first failure, which is stored in `failure`, all operations return false.
class CborEntries {
 public:
  /// Reads the start of the archive.
  /// \param stream must outlive this object
  explicit CborEntries(std::istream& stream);

  /// Consumes the start of the next entry, whose key must be `key`. The caller then reads the value from `decoder` and
  /// calls `leaveEntry`.
  bool enterEntry(std::string_view key);
  /// Consumes the end of the current entry; fails when the entry has more than one key.
  bool leaveEntry();
  /// The key of the next entry, which is not consumed; null at the end of the section and after a failure.
  const std::string* peekKey();

  /// Consumes the start of the next entry, whose key must be `key` and whose value must be a list of entries.
  bool enterSection(std::string_view key);
  /// Consumes the end of the current section; fails when it has entries left.
  bool leaveSection();
  /// Consumes the end of the archive; fails when sections are open, entries are left or data follow.
  bool leaveArchive();

  /// Consumes the next item, which must be of this kind; `expected` describes it in the message.
  bool expect(std::string_view key, eCborKind kind, const char* expected, CborToken& token);
  /// Fails with a message about the item that was expected and the item that was found.
  bool refuse(std::string_view key, const char* expected, const CborToken& found);
  /// Reads the contents of a text after its head and checks that they are UTF-8.
  bool takeText(std::string_view key, const CborToken& head, std::string& text);
  /// Whether the stream may have so many more bytes; fails when a declared size exceeds the bytes that are left.
  bool canHold(std::string_view key, omUInt64 size);

  CborDecoder decoder;   ///< reads the values of entries
  FirstFailure failure;  ///< the first failure of the archive

 private:
  /// A list of entries being read.
  struct List {
    bool indefinite;       ///< the list has no declared length and ends with a break
    bool entryIndefinite;  ///< the same for the map of the current entry
    omUInt64 left;         ///< number of entries left in a list of declared length
  };

  bool openArchive();
  bool takeCanonicalStart(std::string_view key);
  bool takeCanonicalStart();
  bool takeStart(std::string_view key);
  bool atEnd();
  bool finish();
  bool appendText(std::string_view key, omUInt64 size, std::string& text);

  std::vector<List> _lists;
  std::string _key;
  bool _pending = false;  ///< the start of the entry with `_key` has been consumed by `peekKey`
};

}  // namespace ormix
