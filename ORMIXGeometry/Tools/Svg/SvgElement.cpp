#include <ORMIXGeometry/Tools/Svg/SvgElement.h>

#include <charconv>
#include <cmath>

namespace ormix::geom::detail {

std::string shortNumber(omReal64 number) {
  char digits[32];
  return {digits, std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 6).ptr};
}

SvgElement& SvgElement::operator<<(omReal64 number) {
  // From this value on, the spacing of omReal64 exceeds a thousandth.
  constexpr omReal64 roundedBelow = 1e12;
  if (!std::isfinite(number)) {
    _finite = false;
    return *this;
  }
  if (std::abs(number) < roundedBelow) number = std::round(number * 1000) / 1000 + 0.0;  // + 0.0: no "-0"
  char digits[32];
  const auto written = std::to_chars(digits, digits + sizeof digits, number);
  _text.append(digits, written.ptr);
  return *this;
}

SvgElement& SvgElement::escaped(std::string_view text) {
  // U+FFFE and U+FFFF, the only other characters of UTF-8 that XML has no way to write, in their last byte.
  const auto isNoCharacter = [text](std::size_t last) {
    return last >= 2 && text[last - 2] == '\xEF' && text[last - 1] == '\xBF' &&
           (text[last] == '\xBE' || text[last] == '\xBF');
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char character = text[i];
    switch (character) {
      case '&':
        _text += "&amp;";
        break;
      case '<':
        _text += "&lt;";
        break;
      case '>':
        _text += "&gt;";
        break;
      case '"':
        _text += "&quot;";
        break;
      // XML has no way to write most control characters.
      default:
        _text += static_cast<unsigned char>(character) < 0x20 ? ' ' : character;
        if (isNoCharacter(i)) _text.replace(_text.size() - 3, 3, " ");
    }
  }
  return *this;
}

}  // namespace ormix::geom::detail
