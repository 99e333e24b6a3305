#pragma once

#include <string>
#include <string_view>

namespace ormix {

/// Whether a text is well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF. Linear in the text.
bool isUtf8(std::string_view text);

/// A text from an archive for use in messages: at most its first 80 bytes as valid UTF-8, with "?" for control
/// characters and "..." for the omitted rest; "(not UTF-8)" for any other bytes.
std::string shownText(std::string_view text);

}  // namespace ormix
