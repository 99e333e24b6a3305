#pragma once

#include <ORMIXGeometry/Tools/Stl/StlInput.h>

#include <array>
#include <string_view>
#include <vector>

namespace ormix::geom::detail {

/// Reads a text word by word, as a stream under the classic locale does with `>>`, from blocks of bytes. A word ends at
/// white space (space, tab, line ends, form feed) or at the end of the text. The memory is one block, and more only for
/// a number that is longer than a block.
class StlWords {
 public:
  /// \param input must stay valid as long as this object
  explicit StlWords(StlInput& input);

  /// Reads the next word; false at the end. For a word longer than `s_longestWord` the view has its beginning. It is
  /// valid until the next call.
  bool next(std::string_view& word);
  /// Skips so many words; false when there are fewer.
  bool skip(unsigned nbWords);
  /// Reads a number as a stream reads an omReal32, so that "1.5abc" gives 1.5 and leaves "abc". A number below the
  /// normal range becomes denormal or 0. False for a number above the range, for "nan" and "inf", and for any other
  /// text.
  bool nextNumber(omReal32& number);
  /// Whether there is no further word on the line.
  bool atEndOfLine();

  /// Whether all words have been read.
  bool atEnd() { return !skipBlanks(); }
  /// The number of bytes read so far, which is the offset of the next one.
  omUInt64 getOffset() const { return _offset + static_cast<omUInt64>(_at - _block.data()); }
  /// The line of the next word, counted from 1; linear in the block.
  omUInt64 getLine() const;

  static constexpr std::size_t s_longestWord = 32;  ///< most characters of a word that next() gives

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

}  // namespace ormix::geom::detail
