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

/// Longest text of a number in JSON, generously.
inline constexpr std::size_t s_longestNumber = 32;

/// Texts that stand for the reals JSON has no numbers for.
inline constexpr std::string_view s_nanText = "nan";
inline constexpr std::string_view s_infinityText = "inf";
inline constexpr std::string_view s_minusInfinityText = "-inf";

/// Puts a UTF-8 text in quotes, escaping what JSON wants escaped.
void putJsonText(ByteOutput& out, std::string_view text);

/// Resolves the escapes of a text in quotes. Half of a surrogate pair, alone, becomes the three bytes that `isUtf8`
/// refuses.
/// \param raw begins behind the opening quote and may go on behind the closing one
/// \return false on an escape that JSON does not have, and without a closing quote
bool unescapeJsonText(std::string_view raw, std::string& text);

/// Writes a number at `at`, where `s_longestNumber` bytes are free, and answers its end.
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
