#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <charconv>
#include <string_view>

// Not installed.
namespace ormix::geom::detail {

/// White space under the classic locale.
constexpr bool isBlank(char character) {
  return character == ' ' || static_cast<unsigned char>(character - '\t') < 5;  // \t \n \v \f \r
}

/// Whether a decimal number that `std::from_chars` finds out of range is too large rather than too small.
bool isTooLarge(std::string_view text);

/// Reads a decimal number, "nan" or "inf", whatever the locale, with an optional sign. A number below the range is a
/// zero with its sign.
/// \return the address after the number; null, with the number unchanged, when there is none or it is above the range
template <class Real>
const char* parseReal(const char* at, const char* end, Real& number) {
  if (at != end && *at == '+' && (++at == end || *at == '-')) return nullptr;
  const auto [rest, error] = std::from_chars(at, end, number);
  if (error == std::errc()) return rest;
  if (error != std::errc::result_out_of_range || isTooLarge({at, static_cast<std::size_t>(rest - at)})) return nullptr;
  number = *at == '-' ? -Real(0) : Real(0);
  return rest;
}

}  // namespace ormix::geom::detail
