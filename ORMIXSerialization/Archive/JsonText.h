#pragma once

#include <ORMIXSerialization/Archive/ByteOutput.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <charconv>
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

namespace ormix {

/// An upper bound of the number of characters of a number in JSON.
inline constexpr std::size_t s_longestNumber = 32;

/// The texts for the real values that JSON cannot express as numbers.
/// @{
inline constexpr std::string_view s_nanText = "nan";
inline constexpr std::string_view s_infinityText = "inf";
inline constexpr std::string_view s_minusInfinityText = "-inf";
/// @}

/// Writes a UTF-8 text in quotes, with escapes for the characters that JSON requires to be escaped.
void putJsonText(ByteOutput& out, std::string_view text);

/// Decodes the escapes of a text in quotes. A single half of a surrogate pair is encoded in three bytes, which `isUtf8`
/// rejects.
/// \param raw begins after the opening quote; what follows the closing quote is ignored
/// \return false when an escape is not one of JSON and when the closing quote is missing
bool unescapeJsonText(std::string_view raw, std::string& text);

/// Writes a number to `at`, where at least `s_longestNumber` bytes are free, and returns the end of its text.
template <class T>
char* formatJsonNumber(char* at, T value) {
  if constexpr (std::is_floating_point_v<T>) {
    if (!std::isfinite(value)) {
      const std::string_view text = std::isnan(value) ? s_nanText : value > 0 ? s_infinityText : s_minusInfinityText;
      *at++ = '"';
      std::memcpy(at, text.data(), text.size());
      at += text.size();
      *at++ = '"';
      return at;
    }
  }
  return std::to_chars(at, at + s_longestNumber, value).ptr;
}

}  // namespace ormix
