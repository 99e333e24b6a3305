#include <ORMIXGeometry/Tools/MeshFiles/TextLines.h>

#include <algorithm>
#include <cstring>

namespace ormix::geom::detail {

TextLines::TextLines(FileBlock& block, LineContinuation continuation)
    : _block(block), _joins(continuation == LineContinuation::Backslash), _next(block.getAt()) {
  // A file whose first line ends with a carriage return alone has no other line ends.
  const char* first = std::find_if(_block.getAt(), _block.getEnd(), [](char c) { return c == '\n' || c == '\r'; });
  if (_block.getEnd() - first > 1 && *first == '\r' && first[1] != '\n') _terminator = '\r';
  if (_block.ensure(3) && std::memcmp(_block.getAt(), "\xEF\xBB\xBF", 3) == 0) _block.setAt(_block.getAt() + 3);
}

bool TextLines::findLine() {
  _line = _nextLine;
  std::size_t searched = 0;
  for (;;) {
    char* from = _block.getAt() + searched;
    const std::size_t nbSearched = _block.getNbUnread() - searched;
    auto* found = nbSearched == 0 ? nullptr : static_cast<char*>(std::memchr(from, _terminator, nbSearched));
    if (found == nullptr) {
      searched = _block.getNbUnread();
      if (_block.more()) continue;
      if (searched == 0) return false;
      found = _block.getEnd();  // the last line has no end of its own
    } else {
      ++_nextLine;
      char* last = found;
      if (last != _block.getAt() && last[-1] == '\r') --last;
      if (_joins && last != _block.getAt() && last[-1] == '\\') {
        std::fill(last - 1, found + 1, ' ');
        searched = static_cast<std::size_t>(found + 1 - _block.getAt());
        continue;
      }
    }
    _at = _block.getAt();
    _end = found;
    _next = std::min(found + 1, _block.getEnd());
    _block.setAt(_next);
    return true;
  }
}

bool TextLines::next() {
  do {
    if (!findLine()) {
      _at = _end = _next = _block.getAt();
      return false;
    }
  } while (!skipBlanks());
  return true;
}

}  // namespace ormix::geom::detail
