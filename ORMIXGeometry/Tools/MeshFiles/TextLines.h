#pragma once

#include <ORMIXGeometry/Tools/MeshFiles/FileBlock.h>
#include <ORMIXGeometry/Tools/MeshFiles/NumberText.h>

#include <limits>
#include <string_view>

// Not installed.
namespace ormix::geom::detail {

/// Whether a backslash at the end of a line continues it on the next one.
enum class LineContinuation { None, Backslash };

/// Reads a text line by line and each line word by word. Lines end with a line feed, a carriage return or both; blank
/// lines and what follows a word that begins with '#' are left out.
class TextLines {
 public:
  /// \param block must stay valid as long as this object; after each line it is at the first byte of the next one
  TextLines(FileBlock& block, LineContinuation continuation);

  /// Goes to the next line that has a word; false at the end.
  bool next();
  /// Takes the next word of the line; false at its end.
  bool nextWord(std::string_view& word);
  /// Takes a number, and what is glued to it. A number before "#", as in the "1.#IND" of some systems, is NaN. False,
  /// with nothing taken, at the end of the line and before any other text.
  template <class Real>
  bool nextNumber(Real& number);
  /// Takes an integer and leaves what follows it, for example "/3"; false, with nothing taken, where there is none.
  bool nextInteger(omInt64& number);
  /// Takes the rest of a word after an integer.
  void skipWord();
  /// Whether the line has no further word.
  bool atEnd() { return !skipBlanks(); }

  /// The first byte of the next word, and its line, counted from 1.
  /// @{
  omUInt64 getOffset() const { return _block.getOffset() - static_cast<omUInt64>(_next - _at); }
  omUInt64 getLine() const { return _line; }
  /// @}

 private:
  bool findLine();
  bool skipBlanks();

  FileBlock& _block;
  bool _joins;
  char _terminator = '\n';
  char* _at = nullptr;     ///< next byte of the line
  char* _end = nullptr;    ///< end of the line
  char* _next = nullptr;   ///< begin of the next line
  omUInt64 _line = 0;      ///< number of this line
  omUInt64 _nextLine = 1;  ///< number of the next line
};

inline bool TextLines::skipBlanks() {
  while (_at != _end && isBlank(*_at)) ++_at;
  if (_at != _end && *_at == '#') _at = _end;
  return _at != _end;
}

inline void TextLines::skipWord() {
  while (_at != _end && !isBlank(*_at)) ++_at;
}

inline bool TextLines::nextWord(std::string_view& word) {
  if (!skipBlanks()) return false;
  const char* first = _at;
  skipWord();
  word = std::string_view(first, static_cast<std::size_t>(_at - first));
  return true;
}

template <class Real>
bool TextLines::nextNumber(Real& number) {
  if (!skipBlanks()) return false;
  const char* rest = parseReal<Real>(_at, _end, number);
  if (rest == nullptr) return false;
  if (rest != _end && !isBlank(*rest)) {
    if (*rest == '#') number = std::numeric_limits<Real>::quiet_NaN();
    skipWord();
  } else {
    _at += rest - _at;
  }
  return true;
}

inline bool TextLines::nextInteger(omInt64& number) {
  if (!skipBlanks()) return false;
  const char* at = _at;
  if (*at == '+') ++at;
  const auto [rest, error] = std::from_chars(at, static_cast<const char*>(_end), number);
  if (error != std::errc()) return false;
  _at += rest - _at;
  return true;
}

}  // namespace ormix::geom::detail
