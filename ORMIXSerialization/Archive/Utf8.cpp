#include <ORMIXSerialization/Archive/Utf8.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <cstring>

namespace ormix {

namespace {

template <class Word>
Word wordAt(const unsigned char* text) {
  Word word;
  std::memcpy(&word, text, sizeof word);
  return word;
}

/// Whether all characters are ASCII. The words at the end overlap those before, so that no byte is looked at alone.
template <class Word>
bool isAscii(const unsigned char* text, std::size_t size) {
  Word bits = wordAt<Word>(text + size - sizeof(Word));
  for (std::size_t at = 0; at + sizeof(Word) < size; at += sizeof(Word)) bits |= wordAt<Word>(text + at);
  return (bits & static_cast<Word>(0x8080808080808080u)) == 0;
}

/// Most keys and texts contain no other characters.
bool isAscii(const unsigned char* text, std::size_t size) {
  if (size >= 8) return isAscii<omUInt64>(text, size);
  if (size >= 4) return isAscii<omUInt32>(text, size);
  return std::all_of(text, text + size, [](unsigned char byte) { return byte < 0x80; });
}

/// The number of ASCII characters at the start.
std::size_t asciiPrefix(const unsigned char* text, std::size_t size) {
  std::size_t at = 0;
  for (; at + sizeof(omUInt64) <= size; at += sizeof(omUInt64))
    if (wordAt<omUInt64>(text + at) & 0x8080808080808080u) break;
  while (at < size && text[at] < 0x80) ++at;
  return at;
}

/// The length in bytes of the multi-byte character at `text`; 0 when it is not well formed.
std::size_t characterLength(const unsigned char* text, std::size_t size) {
  const unsigned char lead = text[0];
  const std::size_t length = lead >= 0xC2 && lead < 0xE0 ? 2
                             : (lead & 0xF0) == 0xE0     ? 3
                             : (lead & 0xF8) == 0xF0     ? 4
                                                         : 0;
  if (length == 0 || length > size) return 0;
  for (std::size_t at = 1; at < length; ++at)
    if ((text[at] & 0xC0) != 0x80) return 0;
  const bool overlong = (lead == 0xE0 && text[1] < 0xA0) || (lead == 0xF0 && text[1] < 0x90);
  const bool surrogate = lead == 0xED && text[1] >= 0xA0;
  const bool beyond = lead > 0xF4 || (lead == 0xF4 && text[1] >= 0x90);
  return overlong || surrogate || beyond ? 0 : length;
}

}  // namespace

bool isUtf8(std::string_view text) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
  if (isAscii(bytes, text.size())) return true;
  std::size_t at = asciiPrefix(bytes, text.size());
  while (at < text.size()) {
    const std::size_t length = characterLength(bytes + at, text.size() - at);
    if (length == 0) return false;
    at += length;
    at += asciiPrefix(bytes + at, text.size() - at);
  }
  return true;
}

std::string shownText(std::string_view text) {
  constexpr std::size_t maxLength = 80;
  if (!isUtf8(text)) return "(not UTF-8)";
  std::string shown(text.substr(0, maxLength));
  for (char& c : shown)
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '?';
  if (shown.size() == text.size()) return shown;
  // Remove the character that was cut in two.
  while (!shown.empty() && !isUtf8(shown)) shown.pop_back();
  return shown + "...";
}

}  // namespace ormix
