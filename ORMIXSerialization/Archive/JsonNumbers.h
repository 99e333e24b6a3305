#pragma once

#include <ORMIXSerialization/Archive/JsonEntries.h>
#include <ORMIXSerialization/Archive/JsonText.h>
#include <ORMIXSerialization/Archive/NumberBlock.h>

#include <charconv>
#include <limits>
#include <type_traits>

namespace ormix {

/// Reads numbers and arrays of numbers from the values of a JSON archive. The operations return false when they have
/// failed; `entries` then has the failure.
class JsonNumbers {
 public:
  /// \param key of the entry, for messages
  JsonNumbers(JsonEntries& entries, std::string_view key) : _entries(entries), _key(key) {}

  /// Reads a number; fails when it is outside the range of T, or not an integer for an integer T. Reals are rounded to
  /// the nearest value of T.
  template <class T>
  bool read(json::value value, T& number) {
    if constexpr (std::is_floating_point_v<T>)
      return readReal(value, number);
    else
      return readInteger(value, number);
  }

  /// Reads an array of numbers of type T, or of rows of them if the sink has columns, and passes them to the sink.
  template <class T>
  bool readArray(json::value value, NumericArraySink& sink) {
    NumberBlock<T> block(sink);
    json::array array;
    sink.reserve(0);
    simdjson::error_code error = value.get_array().get(array);
    if (error == simdjson::INCORRECT_TYPE) return _entries.refuse(_key, "an array of numbers", value);
    if (error != simdjson::SUCCESS) return _entries.malformed(_key, error);
    for (auto item : array) {
      json::value element;
      if ((error = std::move(item).get(element)) != simdjson::SUCCESS) return _entries.malformed(_key, error);
      if (sink.nbColumns == 0 ? !readNext(element, block) : !readRow(element, sink.nbColumns, block)) return false;
    }
    block.flush();
    return true;
  }

 private:
  template <class T>
  bool readNext(json::value value, NumberBlock<T>& block) {
    T number = 0;
    if (!read(value, number)) return false;
    block.push(number);
    return true;
  }

  template <class T>
  bool readRow(json::value value, std::size_t nbColumns, NumberBlock<T>& block) {
    json::array row;
    simdjson::error_code error = value.get_array().get(row);
    if (error == simdjson::INCORRECT_TYPE) return _entries.refuse(_key, "a row of numbers", value);
    if (error != simdjson::SUCCESS) return _entries.malformed(_key, error);
    std::size_t count = 0;
    for (auto item : row) {
      json::value element;
      if ((error = std::move(item).get(element)) != simdjson::SUCCESS) return _entries.malformed(_key, error);
      if (count++ == nbColumns) return badRow(nbColumns);
      if (!readNext(element, block)) return false;
    }
    return count == nbColumns || badRow(nbColumns);
  }

  bool badRow(std::size_t nbColumns) {
    return _entries.failure.set(eORMIXSerializationMessage::eSM_ArrayShape, shownText(_key), nbColumns,
                                "a row of another length was found");
  }

  template <class T>
  bool readInteger(json::value value, T& number) {
    if constexpr (std::is_signed_v<T>) {
      omInt64 wide = 0;
      if (value.get_int64().get(wide) == simdjson::SUCCESS && convertInteger(wide, number)) return true;
    } else {
      omUInt64 wide = 0;
      if (value.get_uint64().get(wide) == simdjson::SUCCESS && convertInteger(wide, number)) return true;
    }
    return _entries.refuse(_key, integerKind<T>(), value);
  }

  template <class T>
  static constexpr const char* integerKind() {
    if (sizeof(T) == 4) return std::is_signed_v<T> ? "a signed 32-bit integer" : "an unsigned 32-bit integer";
    return std::is_signed_v<T> ? "a signed 64-bit integer" : "an unsigned 64-bit integer";
  }

  // Converts the text of the value instead of using the number of simdjson, for three reasons: version 3.0 returns a
  // wrong number if more than 19 digits follow "0." (its issue 2093), it cannot round to a float, and, compiled for any
  // processor, it is slower. The iterator of simdjson skips the text by itself.
  template <class T>
  bool readReal(json::value value, T& number) {
    const std::string_view token = value.raw_json_token();
    if (startsLikeNumber(token)) {
      const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), number);
      const bool whole = token.find_first_not_of(" \t\r\n", static_cast<std::size_t>(end - token.data())) == token.npos;
      if (whole && (error == std::errc() || underflows(value, number))) return true;
    } else if (token.front() == '"') {
      std::string text;
      if (unescapeJsonText(token.substr(1), text) && readSpecial(text, number)) return true;
    }
    return _entries.refuse(_key, sizeof(T) == 4 ? "a 32-bit real" : "a real", value);
  }

  static bool isDigit(char c) { return c >= '0' && c <= '9'; }

  /// Whether a text has the integer part that JSON requires, and a digit after its point; `from_chars` checks neither.
  static bool startsLikeNumber(std::string_view token) {
    const char* at = token.data();
    const char* end = at + token.size();
    if (*at == '-') ++at;
    const char* first = at;
    while (at != end && isDigit(*at)) ++at;
    if (at == first || (*first == '0' && at - first > 1)) return false;
    return at == end || *at != '.' || (at + 1 != end && isDigit(at[1]));
  }

  /// Whether a number out of range is too small rather than too large; `number` is then a zero with its sign.
  template <class T>
  static bool underflows(json::value value, T& number) {
    omReal64 about = 0;
    if (value.get_double().get(about) != simdjson::SUCCESS || std::abs(about) > 1) return false;
    number = std::copysign(T(0), static_cast<T>(std::signbit(about) ? -1 : 1));
    return true;
  }

  /// Reads a text for NaN or infinity.
  template <class T>
  static bool readSpecial(std::string_view text, T& number) {
    using Limits = std::numeric_limits<T>;
    if (text == s_nanText) return number = Limits::quiet_NaN(), true;
    if (text == s_infinityText) return number = Limits::infinity(), true;
    if (text == s_minusInfinityText) return number = -Limits::infinity(), true;
    return false;
  }

  JsonEntries& _entries;
  std::string_view _key;
};

}  // namespace ormix
