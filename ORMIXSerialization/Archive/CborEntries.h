#pragma once

#include <ORMIXSerialization/Archive/CborDecoder.h>
#include <ORMIXSerialization/Archive/FirstFailure.h>

#include <string>
#include <string_view>
#include <vector>

namespace ormix {

/// Walks through the entries of a CBOR archive and its sections: finds each entry's key and leaves the value to the
/// caller. Its operations answer false after the first failure, which `failure` holds.
class CborEntries {
 public:
  explicit CborEntries(std::istream& stream);

  /// Takes the start of the next entry, which must bear `key`; the caller then takes the value and calls `leaveEntry`.
  bool enterEntry(std::string_view key);
  bool leaveEntry();
  /// Looks at the key of the next entry, null at the section's end.
  const std::string* peekKey();

  bool enterSection(std::string_view key);
  bool leaveSection();
  /// Leaves the archive itself.
  bool leaveArchive();

  /// Takes the next item, which must be of this kind; `wanted` names it in the message.
  bool expect(std::string_view key, eCborKind kind, const char* wanted, CborToken& token);
  /// Fails with what was found instead of what was wanted.
  bool refuse(std::string_view key, const char* wanted, const CborToken& found);
  /// Takes the contents of a text whose head has been taken.
  bool takeText(std::string_view key, const CborToken& head, std::string& text);
  /// Whether so many bytes can still come.
  bool canHold(std::string_view key, omUInt64 size);

  CborDecoder decoder;
  FirstFailure failure;

 private:
  /// A list of entries being read.
  struct List {
    bool indefinite;       ///< ends with a break
    bool entryIndefinite;  ///< so does the map of the entry being read
    omUInt64 left;         ///< entries left where their number is stated
  };

  bool openArchive();
  bool takeCanonicalStart(std::string_view key);
  bool takeStart(std::string_view key);
  bool atEnd();
  bool finish();
  bool appendText(std::string_view key, omUInt64 size, std::string& text);

  std::vector<List> _lists;
  std::string _key;
  bool _pending = false;  ///< `_key` belongs to an entry whose start is taken
};

}  // namespace ormix
