#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <string>
#include <string_view>

/// \file
/// Texts, numbers and bytes as pages have them; not installed.

namespace ormix::geom::detail {

/// A text as the content of an element or of an attribute in double quotes: characters of markup are replaced, so are
/// control characters and others that may not stand in a page, by blanks, and bytes that are not UTF-8, by U+FFFD.
std::string htmlText(std::string_view text);

/// A text as a string of JSON inside a script element, with its quotes; what htmlText() replaces is replaced, and
/// nothing of it can end the script.
std::string jsonText(std::string_view text);

/// A finite number with all its digits, for programs, whatever the locale.
std::string exactNumber(omReal64 number);

/// Appends bytes in base 64, as data in a page have it. Linear.
/// @{
void appendBase64(std::string& text, std::string_view bytes);
template <class Numbers>
void appendBase64(std::string& text, const Numbers& numbers) {
  appendBase64(text, {reinterpret_cast<const char*>(numbers.data()), numbers.size() * sizeof numbers[0]});
}
/// @}

}  // namespace ormix::geom::detail
