#include <ORMIXSerialization/Archive/JsonText.h>

namespace ormix {

namespace {

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

}  // namespace

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
