#pragma once

// The On-Demand parser of simdjson is compiled where its header is included: in JsonIArchive.cpp only. Its development
// checks are disabled, since they limit the nesting of lists to the size of a fixed table.
#define SIMDJSON_DEVELOPMENT_CHECKS 0

#include <ORMIXSerialization/Archive/FirstFailure.h>
#include <ORMIXSerialization/Archive/JsonSource.h>
#include <ORMIXSerialization/Archive/JsonText.h>
#include <ORMIXSerialization/Archive/Utf8.h>
#include <ORMIXSerialization/Archive/WriterState.h>
#include <simdjson.h>

#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace ormix {

namespace json = simdjson::ondemand;

/// Iterates over the entries of a JSON archive and its sections: reads the key of each entry; the caller reads the
/// value. After the first failure, which is stored in `failure`, all operations return false.
class JsonEntries {
 public:
  /// Reads the whole stream and the start of the archive.
  explicit JsonEntries(std::istream& stream)
      : _source(stream, simdjson::SIMDJSON_PADDING, simdjson::SIMDJSON_MAXSIZE_BYTES) {
    openArchive();
  }

  /// Consumes the start of the next entry, whose key must be `key`. The caller then reads `value` and calls
  /// `leaveEntry`.
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
  /// Decodes a text and checks that it is UTF-8. The decoder of simdjson is not used, since version 3.0 writes to a
  /// buffer without checking that its allocation has succeeded.
  bool takeText(std::string_view key, json::raw_json_string raw, std::string& text);

  /// Fails with a message about the value that was expected and the value that was found.
  bool refuse(std::string_view key, const char* expected, json::value found);
  /// Fails with an error of the parser.
  bool malformed(std::string_view key, simdjson::error_code error) {
    return failure.set(Message::eSM_Malformed, shownText(key), simdjson::error_message(error));
  }

  json::value value;     ///< of the current entry
  FirstFailure failure;  ///< the first failure of the archive

 private:
  using Message = eORMIXSerializationMessage;

  /// A list of entries being read, and the one-member object of the entry that is open in it.
  struct List {
    json::array_iterator entries;
    json::object_iterator entry;
    bool isEntryOpen = false;  ///< the start of an entry has been consumed, and not yet its end
  };
  template <class Iterator>
  static bool isOpen(const Iterator& iterator) {
    return iterator != Iterator();
  }

  bool openArchive();
  bool openList(std::string_view key, json::array array);
  bool takeStart(std::string_view key);
  /// Whether the last entry was not read to its end because of an exception; fails then, since the iterators of
  /// simdjson must not be advanced in this state.
  bool isEntryUnfinished() {
    return _lists.back().isEntryOpen && !failure.set(Message::eSM_UnreadEntry, shownText(_key));
  }
  bool notOnePair(std::string_view key) {
    return failure.set(Message::eSM_Malformed, shownText(key), "an entry is not one key with one value");
  }
  bool finish();

  JsonSource _source;
  json::parser _parser;
  json::document _document;
  std::vector<List> _lists;
  std::string _key;
  bool _pending = false;  ///< the start of the entry with `_key` has been consumed by `peekKey`
};

inline bool JsonEntries::openArchive() {
  if (_source.state() == JsonSource::eState::Broken) return failure.set(Message::eSM_StreamNotReadable);
  if (_source.state() == JsonSource::eState::NoList)
    return failure.set(Message::eSM_NotAnArchive, "it begins neither as CBOR nor as a list in JSON");
  if (_source.state() == JsonSource::eState::TooLong)
    return failure.set(Message::eSM_NotAnArchive, "JSON of 4 GiB or more");
  const simdjson::padded_string_view text(_source.data(), _source.size(), _source.capacity());
  simdjson::error_code error = _parser.iterate(text).get(_document);
  json::array array;
  if (error == simdjson::SUCCESS) error = _document.get_array().get(array);
  if (error == simdjson::MEMALLOC) throw std::bad_alloc();
  if (error == simdjson::EMPTY) return failure.set(Message::eSM_EmptyArchive);
  if (error != simdjson::SUCCESS) return failure.set(Message::eSM_NotAnArchive, simdjson::error_message(error));
  return openList("", array);
}

inline bool JsonEntries::openList(std::string_view key, json::array array) {
  List list;
  const simdjson::error_code error = array.begin().get(list.entries);
  if (error != simdjson::SUCCESS) return malformed(key, error);
  _lists.push_back(list);
  return true;
}

/// The kind of a value in words ("a text", "a list"), for messages; of a number its text.
inline std::string describe(json::value value) {
  std::string_view token = value.raw_json_token();
  token = token.substr(0, token.find_last_not_of(" \t\r\n") + 1);
  if (token == "true" || token == "false") return "a bool";
  if (token == "null") return "a null";
  if (!token.empty() && token.front() == '[') return "a list";
  if (!token.empty() && token.front() == '{') return "a map";
  if (!token.empty() && token.front() == '"') return "a text";
  return "the value " + shownText(token);
}

inline bool JsonEntries::refuse(std::string_view key, const char* expected, json::value found) {
  return failure.set(Message::eSM_WrongKind, shownText(key), expected, describe(found));
}

inline bool JsonEntries::takeText(std::string_view key, json::raw_json_string raw, std::string& text) {
  const char* const end = _source.data() + _source.size();
  if (!unescapeJsonText({raw.raw(), static_cast<std::size_t>(end - raw.raw())}, text))
    return malformed(key, simdjson::STRING_ERROR);
  return isUtf8(text) || failure.set(Message::eSM_InvalidText, shownText(key));
}

inline bool JsonEntries::takeStart(std::string_view key) {
  List& list = _lists.back();
  list.isEntryOpen = true;
  json::value element;
  json::object object;
  json::field field;
  simdjson::error_code error = (*list.entries).get(element);
  if (error == simdjson::SUCCESS) error = element.get_object().get(object);
  if (error == simdjson::INCORRECT_TYPE) return refuse(key, "an entry", element);
  if (error == simdjson::SUCCESS) error = object.begin().get(list.entry);
  if (error == simdjson::SUCCESS && !isOpen(list.entry)) return notOnePair(key);
  if (error == simdjson::SUCCESS) error = (*list.entry).get(field);
  if (error != simdjson::SUCCESS) return malformed(key, error);
  if (!takeText(key, field.key(), _key)) return false;
  value = field.value();
  return true;
}

inline bool JsonEntries::enterEntry(std::string_view key) {
  if (failure.failed()) return false;
  if (!_pending && isEntryUnfinished()) return false;
  if (!_pending && !isOpen(_lists.back().entries)) return failure.set(Message::eSM_KeyMissing, shownText(key));
  if (!_pending && !takeStart(key)) return false;
  _pending = false;
  return _key == key || failure.set(Message::eSM_KeyMismatch, shownText(key), shownText(_key));
}

inline bool JsonEntries::leaveEntry() {
  List& list = _lists.back();
  ++list.entry;
  if (isOpen(list.entry)) return notOnePair(_key);
  ++list.entries;
  list.isEntryOpen = false;
  return true;
}

inline const std::string* JsonEntries::peekKey() {
  if (failure.failed()) return nullptr;
  if (_pending) return &_key;
  if (isEntryUnfinished() || !isOpen(_lists.back().entries) || !takeStart("")) return nullptr;
  _pending = true;
  return &_key;
}

inline bool JsonEntries::enterSection(std::string_view key) {
  if (!enterEntry(key)) return false;
  if (_lists.size() > s_maxArchiveDepth) return failure.set(Message::eSM_TooDeep, shownText(key), s_maxArchiveDepth);
  json::array array;
  const simdjson::error_code error = value.get_array().get(array);
  if (error == simdjson::INCORRECT_TYPE) return refuse(key, "a section", value);
  return error == simdjson::SUCCESS ? openList(key, array) : malformed(key, error);
}

inline bool JsonEntries::finish() {
  if (const std::string* key = peekKey()) return failure.set(Message::eSM_UnreadEntry, shownText(*key));
  return !failure.failed();
}

inline bool JsonEntries::leaveSection() {
  if (failure.failed()) return false;
  if (_lists.size() == 1) return failure.set(Message::eSM_NoSectionOpen);
  if (!finish()) return false;
  _lists.pop_back();
  return leaveEntry();
}

inline bool JsonEntries::leaveArchive() {
  if (failure.failed()) return false;
  if (_lists.size() != 1) return failure.set(Message::eSM_SectionsOpen, _lists.size() - 1);
  if (!finish()) return false;
  const char* next = nullptr;
  return _document.current_location().get(next) == simdjson::OUT_OF_BOUNDS || failure.set(Message::eSM_TrailingData);
}

}  // namespace ormix
