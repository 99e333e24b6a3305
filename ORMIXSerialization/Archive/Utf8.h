#pragma once

#include <string>
#include <string_view>

namespace ormix {

/// Whether a text is well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isUtf8(std::string_view text);

/// A text from an archive as messages show it: valid UTF-8 of at most 80 bytes, control characters as "?".
std::string shownText(std::string_view text);

}  // namespace ormix
