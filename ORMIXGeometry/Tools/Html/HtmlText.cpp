#include <ORMIXGeometry/Tools/Html/HtmlText.h>

#include <array>
#include <boost/locale/utf.hpp>
#include <charconv>

namespace ormix::geom::detail {

namespace {

using Utf8 = boost::locale::utf::utf_traits<char>;
using CodePoint = boost::locale::utf::code_point;

constexpr std::string_view s_replacement = "\xEF\xBF\xBD";

/// Control characters and those that Unicode reserves for the inside of programs.
bool isNoCharacter(CodePoint c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || (c >= 0xFDD0 && c <= 0xFDEF) || (c & 0xFFFE) == 0xFFFE;
}

/// Calls `put(character, bytes)` with each character and its bytes, replaced where it may not stand in a page.
template <class Put>
void visitCharacters(std::string_view text, Put put) {
  for (auto place = text.begin(); place != text.end();) {
    const auto begin = place;
    const CodePoint c = Utf8::decode(place, text.end());
    if (boost::locale::utf::is_valid_codepoint(c)) {
      const auto offset = static_cast<std::size_t>(begin - text.begin());
      put(c, isNoCharacter(c) ? " " : text.substr(offset, static_cast<std::size_t>(place - begin)));
    } else {
      // Only the first byte is to blame: what follows may be a character.
      place = begin + 1;
      put(CodePoint{0xFFFD}, s_replacement);
    }
  }
}

}  // namespace

std::string htmlText(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  visitCharacters(text, [&result](CodePoint c, std::string_view bytes) {
    switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      case '\'':
        result += "&#39;";
        break;
      default:
        result += bytes;
    }
  });
  return result;
}

std::string jsonText(std::string_view text) {
  std::string result = "\"";
  visitCharacters(text, [&result](CodePoint c, std::string_view bytes) {
    switch (c) {
      case '"':
      case '\\':
        result += '\\';
        result += bytes;
        break;
      // Neither "</script" nor "<!--" may stand in a script.
      case '<':
        result += "\\u003c";
        break;
      default:
        result += bytes;
    }
  });
  return result += '"';
}

std::string exactNumber(omReal64 number) {
  std::array<char, 32> digits{};
  return {digits.begin(), std::to_chars(digits.begin(), digits.end(), number).ptr};
}

void appendBase64(std::string& text, std::string_view bytes) {
  static constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const std::size_t begin = text.size();
  text.resize(begin + (bytes.size() + 2) / 3 * 4, '=');
  char* out = text.data() + begin;
  const auto byteAt = [&bytes](std::size_t i) {
    return i < bytes.size() ? static_cast<unsigned>(static_cast<unsigned char>(bytes[i])) : 0U;
  };
  for (std::size_t i = 0; i < bytes.size(); i += 3, out += 4) {
    const unsigned triple = byteAt(i) << 16 | byteAt(i + 1) << 8 | byteAt(i + 2);
    out[0] = digits[triple >> 18];
    out[1] = digits[triple >> 12 & 63];
    if (i + 1 < bytes.size()) out[2] = digits[triple >> 6 & 63];
    if (i + 2 < bytes.size()) out[3] = digits[triple & 63];
  }
}

}  // namespace ormix::geom::detail
