#include <ORMIXSerialization/Archive/JsonText.h>

namespace ormix {

namespace {

/// Whether the character is written without an escape.
bool isPlain(char c) { return static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\'; }

void putEscaped(ByteOutput& out, char c) {
  constexpr const char* digits = "0123456789abcdef";
  const auto code = static_cast<unsigned char>(c);
  if (c == '"' || c == '\\') {
    out.put('\\');
    out.put(c);
  } else if (c == '\n') {
    out.put("\\n");
  } else if (c == '\t') {
    out.put("\\t");
  } else {
    out.put("\\u00");
    out.put(digits[code >> 4]);
    out.put(digits[code & 15]);
  }
}

/// Consumes the four digits of "\uXXXX".
bool takeHexDigits(std::string_view& raw, omUInt32& code) {
  if (raw.size() < 4) return false;
  const auto [end, error] = std::from_chars(raw.data(), raw.data() + 4, code, 16);
  if (error != std::errc() || end != raw.data() + 4) return false;
  raw.remove_prefix(4);
  return true;
}

/// Consumes the rest of an escape after "\u", and the following escape if both are a surrogate pair.
bool takeCodePoint(std::string_view& raw, omUInt32& code) {
  if (!takeHexDigits(raw, code)) return false;
  const bool isHighHalf = code >= 0xD800 && code < 0xDC00;
  if (!isHighHalf || raw.substr(0, 2) != "\\u") return true;
  std::string_view rest = raw.substr(2);
  omUInt32 low = 0;
  if (!takeHexDigits(rest, low)) return false;
  if (low < 0xDC00 || low > 0xDFFF) return true;
  code = 0x10000 + ((code - 0xD800) << 10 | (low - 0xDC00));
  raw = rest;
  return true;
}

void appendUtf8(omUInt32 code, std::string& text) {
  const auto append = [&text](omUInt32 byte) { text += static_cast<char>(byte); };
  const auto appendRest = [&](unsigned shift) { append(0x80 | (code >> shift & 0x3F)); };
  if (code < 0x80) return append(code);
  if (code < 0x800) {
    append(0xC0 | code >> 6);
  } else if (code < 0x10000) {
    append(0xE0 | code >> 12);
    appendRest(6);
  } else {
    append(0xF0 | code >> 18);
    appendRest(12);
    appendRest(6);
  }
  appendRest(0);
}

/// Consumes the rest of an escape after its backslash and appends the character.
bool takeEscape(std::string_view& raw, std::string& text) {
  constexpr std::string_view letters = "\"\\/bfnrt", meanings = "\"\\/\b\f\n\r\t";
  if (raw.empty()) return false;
  const char letter = raw.front();
  raw.remove_prefix(1);
  if (letter == 'u') {
    omUInt32 code = 0;
    if (!takeCodePoint(raw, code)) return false;
    appendUtf8(code, text);
    return true;
  }
  const std::size_t which = letters.find(letter);
  if (which == std::string_view::npos) return false;
  text += meanings[which];
  return true;
}

}  // namespace

bool unescapeJsonText(std::string_view raw, std::string& text) {
  text.clear();
  for (;;) {
    std::size_t length = 0;
    while (length < raw.size() && raw[length] != '"' && raw[length] != '\\') ++length;
    if (length == raw.size()) return false;
    text.append(raw.data(), length);
    const bool isEnd = raw[length] == '"';
    raw.remove_prefix(length + 1);
    if (isEnd) return true;
    if (!takeEscape(raw, text)) return false;
  }
}

void putJsonText(ByteOutput& out, std::string_view text) {
  out.put('"');
  std::size_t done = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (isPlain(text[at])) continue;
    out.put(text.substr(done, at - done));
    putEscaped(out, text[at]);
    done = at + 1;
  }
  out.put(text.substr(done));
  out.put('"');
}

}  // namespace ormix
