#pragma once

#include <ORMIXSerialization/Archive/JsonEntries.h>
#include <ORMIXSerialization/Archive/JsonText.h>
#include <ORMIXSerialization/Archive/NumberBlock.h>

#include <charconv>
#include <limits>
#include <type_traits>

namespace ormix {

/// Reads numbers and arrays of numbers from the values of a JSON archive. Answers false when `entries` has failed.
class JsonNumbers {
 public:
  JsonNumbers(JsonEntries& entries, std::string_view key) : _entries(entries), _key(key) {}

  template <class T>
  bool read(json::value value, T& number) {
    if constexpr (std::is_floating_point_v<T>)
      return readReal(value, number);
    else
      return readInteger(value, number);
  }

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

  template <class T>
  bool readReal(json::value value, T& number) {
    const std::string_view token = value.raw_json_token();
    omReal64 wide = 0;
    if (value.get_double().get(wide) == simdjson::SUCCESS) {
      if (token.size() <= s_longestExactToken ? narrow(wide, token, number) : readAgain(token, wide, number))
        return true;
    } else if (token.front() == '"') {
      std::string_view text;
      if (value.get_string().get(text) == simdjson::SUCCESS && readSpecial(text, number)) return true;
    }
    return _entries.refuse(_key, sizeof(T) == 4 ? "a 32-bit real" : "a real", value);
  }

  template <class T>
  static bool readSpecial(std::string_view text, T& number) {
    using Limits = std::numeric_limits<T>;
    if (text == s_nanText) return number = Limits::quiet_NaN(), true;
    if (text == s_infinityText) return number = Limits::infinity(), true;
    if (text == s_minusInfinityText) return number = -Limits::infinity(), true;
    return false;
  }

  static bool narrow(omReal64 wide, std::string_view, omReal64& number) {
    number = wide;
    return true;
  }
  // Rounding twice, to double and then to float, goes wrong only where the double lies halfway between two floats
  // (their spacing is wider among the subnormal ones): there the text is read again.
  static bool narrow(omReal64 wide, std::string_view token, omReal32& number) {
    omUInt64 bits = 0;
    std::memcpy(&bits, &wide, sizeof bits);
    const omReal64 size = std::abs(wide);
    const bool halfway = (bits & 0x1FFFFFFFu) == 0x10000000u;
    const bool normal = size >= std::numeric_limits<omReal32>::min() && size <= std::numeric_limits<omReal32>::max();
    if ((!normal || halfway) && wide != 0) return readAgain(token, wide, number);
    number = static_cast<omReal32>(wide);
    return true;
  }

  /// Reads a number whose grammar simdjson has checked. \param wide about its value
  template <class T>
  static bool readAgain(std::string_view token, omReal64 wide, T& number) {
    if (std::from_chars(token.data(), token.data() + token.size(), number).ec == std::errc()) return true;
    // Nearer to 0 than the smallest number, or beyond the largest.
    number = std::copysign(T(0), static_cast<T>(std::signbit(wide) ? -1 : 1));
    return std::abs(wide) < 1;
  }

  /// simdjson 3.0 gives a wrong value where more than 19 digits follow "0." (its issue 2093): what is longer than this,
  /// it only checks.
  static constexpr std::size_t s_longestExactToken = 20;

  JsonEntries& _entries;
  std::string_view _key;
};

}  // namespace ormix
