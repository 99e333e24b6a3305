#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2dPrivateUtils.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <boost/geometry/core/cs.hpp>
#include <boost/geometry/io/wkt/read.hpp>
#include <charconv>
#include <cmath>
#include <limits>
#include <locale>
#include <sstream>
#include <string>

namespace ormix::geom::detail {

namespace {

// Words are delimited as in Boost's WKT reader: by spaces, and by commas and parentheses, which are words themselves.
bool isSeparator(char c) { return c == ' ' || c == ',' || c == '(' || c == ')'; }

/// The word that starts at `it`, empty at the end of the text.
std::string_view wordAt(const char* it, const char* end) {
  const char* stop = it != end && isSeparator(*it) ? it + 1 : std::find_if(it, end, isSeparator);
  return {it, static_cast<std::size_t>(stop - it)};
}

[[noreturn]] void throwMalformed(std::string_view text, const char* at, const std::string& message) {
  // The message shows only this many characters, as the text may be huge.
  constexpr std::size_t s_nbShown = 100;
  const std::string word(wordAt(at, text.data() + text.size()).substr(0, s_nbShown));
  std::string wkt = "POLYGON((";
  wkt += text.substr(0, s_nbShown);
  wkt += "))";
  BOOST_THROW_EXCEPTION(boost::geometry::read_wkt_exception(message, &word, &word + (word.empty() ? 0 : 1), wkt));
}

/// Whether the word equals `name`, given in lower case, apart from the case of its letters.
bool equalsIgnoringCase(std::string_view word, std::string_view name) {
  return std::equal(word.begin(), word.end(), name.begin(), name.end(),
                    [](char a, char b) { return a == b || (a >= 'A' && a <= 'Z' && a - 'A' + 'a' == b); });
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Reads integers that std::from_chars refuses: with a plus sign, and for unsigned types a zero with a minus sign.
/// \return false for any other word
template <class T>
std::enable_if_t<std::is_integral_v<T>, bool> readUnusualNumber(std::string_view word, T& value) {
  const bool negative = std::is_unsigned_v<T> && word.substr(0, 1) == "-";
  if (!negative && word.substr(0, 1) != "+") return false;
  word.remove_prefix(1);
  if (word.empty() || !isDigit(word.front())) return false;
  const auto [stop, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  return error == std::errc() && stop == word.data() + word.size() && (!negative || value == 0);
}

/// Reads reals that std::from_chars refuses: with a plus sign, by name ("nan", "inf", "infinity"), and numbers that
/// underflow, which a stream reads; its classic locale makes it independent of the global one.
/// \return false for any other word
template <class T>
std::enable_if_t<std::is_floating_point_v<T>, bool> readUnusualNumber(std::string_view word, T& value) {
  const bool hasSign = !word.empty() && (word.front() == '-' || word.front() == '+');
  const std::string_view name = word.substr(hasSign ? 1 : 0);
  const T sign = hasSign && word.front() == '-' ? T(-1) : T(1);
  if (equalsIgnoringCase(name, "nan")) {
    value = std::copysign(std::numeric_limits<T>::quiet_NaN(), sign);
    return true;
  }
  if (equalsIgnoringCase(name, "inf") || equalsIgnoringCase(name, "infinity")) {
    value = sign * std::numeric_limits<T>::infinity();
    return true;
  }
  std::istringstream stream{std::string(word)};
  stream.imbue(std::locale::classic());
  return (stream >> std::noskipws >> value) && stream.peek() == std::istringstream::traits_type::eof();
}

/// Whether the value is finite: the spellings that std::from_chars takes for NaN and infinities are not all allowed.
template <class T>
bool isFinite(T value) {
  if constexpr (std::is_floating_point_v<T>)
    return std::isfinite(value);
  else
    return true;
}

/// Reads the points of a text one after the other, in a single pass.
template <class T>
class RingReader {
 public:
  explicit RingReader(std::string_view text) : _text(text), _it(text.data()), _end(text.data() + text.size()) {
    skipSpaces();
  }

  bool isAtEnd() const { return _it == _end; }

  Point2dData<T> readPoint() {
    const T x = readCoordinate();
    const T y = readCoordinate();
    if (!isAtEnd() && *_it != ',')
      throwMalformed(_text, _it, "Expected ',' or the end of the ring after two coordinates");
    return {x, y};
  }

  /// Skips the comma after a point, if there is one.
  void skipComma() {
    if (isAtEnd()) return;
    ++_it;
    skipSpaces();
  }

 private:
  void skipSpaces() {
    while (_it != _end && *_it == ' ') ++_it;
  }

  T readCoordinate() {
    T value{};
    // The same value as from Boost's reader: both round to the nearest.
    const auto [stop, error] = std::from_chars(_it, _end, value);
    if (error == std::errc() && (stop == _end || isSeparator(*stop)) && isFinite(value)) {
      _it = stop;
    } else {
      const std::string_view word = wordAt(_it, _end);
      if (!readUnusualNumber(word, value)) throwMalformed(_text, _it, "Expected a coordinate of the polygon's type");
      _it += word.size();
    }
    skipSpaces();
    return value;
  }

  std::string_view _text;
  const char* _it;
  const char* _end;
};

/// Counts commas in blocks whose count fits a byte: three times as fast as std::count, which counts in 64 bits.
std::size_t nbCommas(std::string_view text) {
  constexpr std::size_t s_blockSize = 255;
  std::size_t count = 0;
  for (; !text.empty(); text.remove_prefix(std::min(s_blockSize, text.size()))) {
    omUInt8 inBlock = 0;
    for (const char c : text.substr(0, s_blockSize)) inBlock = static_cast<omUInt8>(inBlock + (c == ','));
    count += inBlock;
  }
  return count;
}

/// Upper bound of the number of vertices, with the one that closes the ring. A point has at least four characters with
/// its comma; this limits the memory reserved for a text of commas only.
std::size_t nbPointsExpected(std::string_view text) { return std::min(nbCommas(text), text.size() / 4) + 2; }

}  // namespace

template <class T>
void readRing(std::string_view text, std::vector<Point2dData<T>>& points) {
  RingReader<T> reader(text);
  if (reader.isAtEnd()) return;
  points.reserve(points.size() + nbPointsExpected(text));
  for (; !reader.isAtEnd(); reader.skipComma()) points.push_back(reader.readPoint());
}

template void readRing(std::string_view, std::vector<Point2dData<omInt32>>&);
template void readRing(std::string_view, std::vector<Point2dData<omUInt32>>&);
template void readRing(std::string_view, std::vector<Point2dData<omReal32>>&);
template void readRing(std::string_view, std::vector<Point2dData<omReal64>>&);

}  // namespace ormix::geom::detail
