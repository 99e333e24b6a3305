#include <ORMIXGeometry/Tools/MeshFiles/NumberText.h>
#include <ORMIXGeometry/Tools/Stl/StlWords.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace ormix::geom::detail {

namespace {

constexpr std::size_t s_blockSize = std::size_t(1) << 18;
/// The number of blanks after the text, so that eight bytes can be read at any position and a search for a blank always
/// ends.
constexpr std::size_t s_padding = 16;
/// The block is refilled before a number is parsed if it has fewer characters left, so that most numbers are in one
/// piece.
constexpr std::ptrdiff_t s_usualNumber = 64;

constexpr bool isDigit(char character) { return character >= '0' && character <= '9'; }

/// Finds the first blank at or after `at`, eight bytes at a time: the first byte below '!' is a blank or a control
/// character; control characters are skipped.
const char* findBlank(const char* at) {
  constexpr omUInt64 ones = 0x0101010101010101u;
  for (;;) {
    omUInt64 bytes = 0;
    std::memcpy(&bytes, at, sizeof bytes);
    if (__BYTE_ORDER__ == __ORDER_BIG_ENDIAN__) bytes = __builtin_bswap64(bytes);
    const omUInt64 below = (bytes - ones * '!') & ~bytes & ones * 0x80;
    if (below == 0) {
      at += 8;
      continue;
    }
    at += __builtin_ctzll(below) / 8;
    if (isBlank(*at)) return at;
    ++at;
  }
}

/// The end of the characters that an input stream accumulates for a real number before it converts them.
const char* endOfNumberText(const char* at, const char* end) {
  bool hasPoint = false, hasDigit = false, hasExponent = false;
  if (at != end && (*at == '+' || *at == '-')) ++at;
  for (; at != end; ++at) {
    if (isDigit(*at)) {
      hasDigit = true;
    } else if (*at == '.' && !hasPoint && !hasExponent) {
      hasPoint = true;
    } else if ((*at == 'e' || *at == 'E') && hasDigit && !hasExponent) {
      hasExponent = true;
      if (at + 1 != end && (at[1] == '+' || at[1] == '-')) ++at;
    } else {
      break;
    }
  }
  return at;
}

/// Parses a text that is a number as a whole; a number below the range of omReal32 is a zero with its sign.
bool parseNumber(std::string_view text, omReal32& number) {
  const char* end = text.data() + text.size();
  return !text.empty() && parseReal(text.data(), end, number) == end;
}

}  // namespace

StlWords::StlWords(StlInput& input)
    : _input(input), _block(s_blockSize), _at(_block.data()), _end(_block.data()), _word() {
  more();
}

/// Moves the unread bytes to the start of the block and fills it from the input; false when the input has ended.
bool StlWords::more() {
  const auto kept = static_cast<std::size_t>(_end - _at);
  _nbLines += static_cast<omUInt64>(std::count(const_cast<const char*>(_block.data()), _at, '\n'));
  _offset += static_cast<omUInt64>(_at - _block.data());
  std::memmove(_block.data(), _at, kept);
  if (2 * kept > _block.size()) _block.resize(2 * _block.size());
  const std::size_t got = _input.read(_block.data() + kept, _block.size() - s_padding - kept);
  _at = _block.data();
  _end = _at + kept + got;
  std::memset(_block.data() + kept + got, ' ', s_padding);
  return got != 0;
}

bool StlWords::skipBlanks() {
  do {
    while (_at != _end && isBlank(*_at)) ++_at;
  } while (_at == _end && more());
  return _at != _end;
}

bool StlWords::skip(unsigned nbWords) {
  for (; nbWords != 0; --nbWords) {
    if (!skipBlanks()) return false;
    do _at = findBlank(_at);
    while (_at == _end && more());
  }
  return true;
}

bool StlWords::next(std::string_view& word) {
  if (!skipBlanks()) return false;
  const char* end = findBlank(_at);
  if (end != _end) {
    word = std::string_view(_at, std::min(static_cast<std::size_t>(end - _at), s_longestWord));
    _at = end;
    return true;
  }
  if (static_cast<std::size_t>(_end - _at) < s_longestWord) more();
  const std::size_t length = std::min(static_cast<std::size_t>(findBlank(_at) - _at), s_longestWord);
  std::memcpy(_word.data(), _at, length);
  word = std::string_view(_word.data(), length);
  return skip(1);
}

bool StlWords::nextNumber(omReal32& number) {
  if (!skipBlanks()) return false;
  if (_end - _at < s_usualNumber) more();
  const char* from = _at;
  if (*from == '+') ++from;
  // Fast path for a number that begins with a digit, after at most one sign, and ends at a blank in the block.
  if (!isDigit(*from) && !(*from == '-' && from == _at && isDigit(from[1]))) return nextUnusualNumber(number);
  const auto [rest, error] = std::from_chars(from, _end, number);
  if (error != std::errc() || rest == _end || !isBlank(*rest)) return nextUnusualNumber(number);
  _at = rest;
  return true;
}

bool StlWords::nextUnusualNumber(omReal32& number) {
  // The whole word must be in the block.
  std::ptrdiff_t searched = 0;
  do searched = findBlank(_at + searched) - _at;
  while (_at + searched == _end && more());
  const char* rest = endOfNumberText(_at, _at + searched);
  omReal32 value = 0;
  if (!parseNumber(std::string_view(_at, static_cast<std::size_t>(rest - _at)), value)) return false;
  number = value;
  _at = rest;
  return true;
}

bool StlWords::atEndOfLine() {
  do {
    while (_at != _end && isBlank(*_at) && *_at != '\n') ++_at;
  } while (_at == _end && more());
  return _at == _end || *_at == '\n';
}

omUInt64 StlWords::getLine() const {
  return 1 + _nbLines + static_cast<omUInt64>(std::count(_block.data(), _at, '\n'));
}

}  // namespace ormix::geom::detail
