#pragma once

#include <ORMIXGeometry/Tools/Stl/StlInput.h>

#include <array>
#include <string_view>
#include <vector>

namespace ormix::geom {

/// Reads a text word by word as a stream under the classic locale does with `>>`, but from blocks. A word ends at a
/// blank (space, tab, line ends, form feed) or at the end of the text. Memory is one block, more only for a number with
/// more digits than a block holds.
class StlWords {
 public:
  explicit StlWords(StlInput& input);

  /// Takes the next word; false at the end. Of a word longer than `s_longestWord` the view shows the beginning. It is
  /// valid until the next call.
  bool next(std::string_view& word);
  /// Passes over so many words; false when there are fewer.
  bool skip(unsigned nbWords);
  /// Takes a number: what a stream takes of the text for an omReal32, so that "1.5abc" gives 1.5 and leaves "abc".
  /// A number too small is 0 or denormal; one too large is none, nor are "nan" and "inf", in letters or not.
  bool nextNumber(omReal32& number);
  /// True when no further word stands on the line.
  bool atEndOfLine();

  /// True when the word taken last was ended by the end of the text and not by a blank.
  bool endedWithInput() const { return _at == _end; }
  /// True when all words were taken.
  bool atEnd() { return !skipBlanks(); }
  omUInt64 getOffset() const { return _offset + static_cast<omUInt64>(_at - _block.data()); }
  /// The line of the next word, counted from 1; linear in the block.
  omUInt64 getLine() const;

  static constexpr std::size_t s_longestWord = 32;

 private:
  bool more();
  bool skipBlanks();
  bool nextUnusualNumber(omReal32& number);

  StlInput& _input;
  std::vector<char> _block;
  const char* _at;
  const char* _end;  ///< a few blanks stand behind it
  omUInt64 _offset = 0;
  omUInt64 _nbLines = 0;
  std::array<char, s_longestWord> _word;  ///< the beginning of a word that a block cut
};

}  // namespace ormix::geom
