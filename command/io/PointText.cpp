#include <command/io/PointText.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

namespace ormix::command {

namespace {

constexpr std::string_view s_separators = " \t\r\v\f,;";
constexpr std::size_t s_longestLine = 65536;

/// Takes a line without its end, of a longer one the beginning; false at the end of the text.
bool takeLine(std::streambuf& bytes, std::string& line, bool& isTooLong) {
  line.clear();
  isTooLong = false;
  int byte = bytes.sbumpc();
  if (byte == std::streambuf::traits_type::eof()) return false;
  for (; byte != std::streambuf::traits_type::eof() && byte != '\n'; byte = bytes.sbumpc())
    if (line.size() < s_longestLine)
      line += static_cast<char>(byte);
    else
      isTooLong = true;
  return true;
}

/// The next word of a line, which is taken from its beginning; empty at its end.
std::string_view takeWord(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(s_separators), text.size()));
  const std::string_view word = text.substr(0, text.find_first_of(s_separators));
  text.remove_prefix(word.size());
  return word;
}

/// Whether a word is written as a number; one that no real holds is NaN.
bool parseNumber(std::string_view word, omReal64& number) {
  const bool hasPlus = word.size() > 1 && word[0] == '+' && word[1] != '-';
  const char* const end = word.data() + word.size();
  number = std::numeric_limits<omReal64>::quiet_NaN();
  const auto [rest, error] = std::from_chars(word.data() + hasPlus, end, number);
  return error != std::errc::invalid_argument && rest == end;
}

/// Appends the numbers of a line; answers what is wrong, or nothing.
std::string parseLine(std::string_view text, std::vector<omReal64>& numbers) {
  for (std::string_view word = takeWord(text); !word.empty(); word = takeWord(text)) {
    omReal64 number = 0;
    if (!parseNumber(word, number) || !std::isfinite(number)) {
      std::string shown(word.substr(0, 40));
      for (char& c : shown)
        if (c < ' ' || c > '~') c = '?';
      return "\"" + shown + "\" is not a finite number";
    }
    numbers.push_back(number);
  }
  return "";
}

/// Whether a line begins with a word, as the head of a table does. "nan" is none: it stands where a number was missing.
bool isHead(std::string_view text) {
  omReal64 number = 0;
  return !parseNumber(takeWord(text), number);
}

}  // namespace

PointText readPoints(std::istream& stream) {
  PointText result;
  PointSet set;
  std::string line;
  std::vector<omReal64> numbers;
  bool isTooLong = false, isFirst = true;
  const auto endSet = [&] {
    if (set.dimension > 0) result.sets.push_back(std::move(set));
    set = {};
  };
  for (std::size_t number = 1; takeLine(*stream.rdbuf(), line, isTooLong); ++number) {
    std::string_view text = line;
    if (number == 1 && text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);
    const bool hasComment = text.find('#') != text.npos;
    text = text.substr(0, text.find('#'));
    if (text.find_first_not_of(s_separators) == text.npos) {
      if (!hasComment) endSet();
      continue;
    }
    numbers.clear();
    if (std::exchange(isFirst, false) && isHead(text)) continue;
    std::string why = isTooLong ? "the line is too long" : parseLine(text, numbers);
    if (set.dimension == 0 && why.empty()) set.dimension = numbers.size();
    if (why.empty() && numbers.size() != set.dimension)
      why = "it has " + std::to_string(numbers.size()) + " numbers, not " + std::to_string(set.dimension);
    if (why.empty())
      set.values.insert(set.values.end(), numbers.begin(), numbers.end());
    else if (++result.nbProblems <= PointText::s_maxProblems)
      result.problems.push_back({number, why});
  }
  endSet();
  return result;
}

}  // namespace ormix::command
