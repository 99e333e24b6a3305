#include <ORMIXGeometry/Tools/MeshFiles/NumberText.h>

#include <algorithm>

namespace ormix::geom {

bool detail::isTooLarge(std::string_view text) {
  const std::size_t exponentAt = std::min(text.find_first_of("eE"), text.size());
  const std::string_view mantissa = text.substr(0, exponentAt);
  const std::size_t first = mantissa.find_first_of("123456789");
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  omInt64 exponent = 0;
  if (exponentAt < text.size()) {
    std::string_view digits = text.substr(exponentAt + 1);
    const bool negative = digits[0] == '-';
    if (digits[0] == '+') digits.remove_prefix(1);
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    if (result.ec != std::errc()) return !negative;
    constexpr omInt64 maxExponent = omInt64(1) << 60;
    exponent = std::clamp(exponent, -maxExponent, maxExponent);
  }
  // The value is about 10^(point - first + exponent). As it is out of range, this exponent is far from 0; its sign
  // decides.
  return static_cast<omInt64>(point) - static_cast<omInt64>(first) > -exponent;
}

}  // namespace ormix::geom
