#include <command/frame/Errors.h>
#include <command/io/JsonDocuments.h>

namespace ormix::command {

bool JsonDocuments::next(std::string& document) {
  constexpr std::size_t longest = std::size_t(1) << 30, deepest = 2000;
  constexpr int end = std::istream::traits_type::eof();
  std::streambuf& bytes = *_stream.rdbuf();
  document.clear();
  std::size_t depth = 0;
  bool isInText = false, isEscaped = false;
  for (int byte = bytes.sbumpc(); byte != end; byte = bytes.sbumpc()) {
    const char c = static_cast<char>(byte);
    if (c == '\n') ++_line;
    if (document.empty()) {
      if (c == ' ' || c == '\t' || c == '\r' || c == '\n') continue;
      _firstLine = _line;
    }
    document += c;
    if (document.size() > longest) throw DataError("a JSON archive is longer than 1 GiB");
    if (isInText) {
      isInText = isEscaped || c != '"';
      isEscaped = !isEscaped && c == '\\';
      continue;
    }
    isInText = c == '"';
    if (c == '[' || c == '{') ++depth;
    if (depth > deepest) throw DataError("a JSON archive is nested more than 2000 levels deep");
    if (depth == 0 ? c == '\n' : (c == ']' || c == '}') && --depth == 0) return true;
  }
  return !document.empty();
}

}  // namespace ormix::command
