#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2dPrivateUtils.h>
#include <ORMIXGeometry/Tools/Text/RingFile.h>

#include <boost/geometry/io/wkt/read.hpp>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <istream>
#include <optional>
#include <string_view>
#include <vector>

namespace ormix::geom {

namespace {

constexpr std::string_view s_blanks = " \t\r\v\f";

/// The text before a comment, without leading and trailing blanks.
std::string_view contentOf(std::string_view line) {
  line = line.substr(0, line.find('#'));
  const std::size_t first = line.find_first_not_of(s_blanks);
  if (first == std::string_view::npos) return {};
  return line.substr(first, line.find_last_not_of(s_blanks) - first + 1);
}

/// A text from a file for use in messages, in quotes: at most its first 40 characters, "?" for non-printable ones.
std::string shownText(std::string_view text) {
  constexpr std::size_t maxLength = 40;
  std::string shown = "\"";
  for (const char character : text.substr(0, maxLength))
    shown += character >= ' ' && character <= '~' ? character : '?';
  return shown + (text.size() > maxLength ? "...\"" : "\"");
}

/// Consumes a finite number at the start of the text.
bool takeNumber(std::string_view& text, omReal64& number) {
  if (!text.empty() && text.front() == '+' && text.size() > 1 && text[1] != '-') text.remove_prefix(1);
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || !std::isfinite(number)) return false;
  text.remove_prefix(static_cast<std::size_t>(rest - text.data()));
  return true;
}

/// The point "x y" that the whole text denotes; no value for any other text.
std::optional<Point2dData<omReal64>> parsePoint(std::string_view text) {
  omReal64 x = 0, y = 0;
  if (!takeNumber(text, x)) return std::nullopt;
  const std::size_t gap = text.find_first_not_of(s_blanks);
  if (gap == 0 || gap == std::string_view::npos) return std::nullopt;
  text.remove_prefix(gap);
  if (!takeNumber(text, y) || !text.empty()) return std::nullopt;
  return Point2dData<omReal64>(x, y);
}

bool isFinite(const Polygon2d<omReal64>& ring) {
  for (const Point2dData<omReal64>& point : ring.getPointColl())
    if (!std::isfinite(point.getX()) || !std::isfinite(point.getY())) return false;
  return true;
}

/// Splits a text into lines, and lines that are longer than a block into pieces, so that memory is bounded by a block.
class LinePieces {
 public:
  explicit LinePieces(std::istream& stream) : _stream(stream), _block(s_size) {}

  /// Reads the next line, or a piece of it if it does not fit into the block; false at the end of the text.
  bool take() {
    const char* lineEnd = findLineEnd();
    if (lineEnd == nullptr) {
      refill();
      lineEnd = findLineEnd();
    }
    if (_begin == _end) return false;
    _endsLine = lineEnd != nullptr || _end - _begin < s_size;
    const char* from = _block.data() + _begin;
    const std::size_t length = lineEnd != nullptr ? static_cast<std::size_t>(lineEnd - from) : _end - _begin;
    _piece = std::string_view(from, length);
    _begin += length + (lineEnd != nullptr ? 1 : 0);
    return true;
  }
  /// The current piece, valid until the next call of `take`.
  std::string_view piece() const { return _piece; }
  /// Whether the current piece reaches the end of its line.
  bool endsLine() const { return _endsLine; }

  /// Shortens a piece that does not reach the end of its line; the next piece begins with the rest.
  void shorten(std::size_t length) {
    _begin -= _piece.size() - length;
    _piece = _piece.substr(0, length);
  }
  /// Skips the remaining pieces of the line.
  void skipLine() {
    while (!_endsLine && take()) {
    }
  }

 private:
  static constexpr std::size_t s_size = 65536;

  const char* findLineEnd() const {
    return static_cast<const char*>(std::memchr(_block.data() + _begin, '\n', _end - _begin));
  }
  /// Moves the unread bytes to the start of the block and fills it from the stream.
  void refill() {
    std::memmove(_block.data(), _block.data() + _begin, _end - _begin);
    _end -= _begin;
    _begin = 0;
    if (!_stream) return;
    _stream.read(_block.data() + _end, static_cast<std::streamsize>(s_size - _end));
    _end += static_cast<std::size_t>(_stream.gcount());
  }

  std::istream& _stream;
  std::vector<char> _block;
  std::size_t _begin = 0;
  std::size_t _end = 0;
  std::string_view _piece;
  bool _endsLine = true;
};

/// Parses rings and collects the problems line by line.
class RingReader {
 public:
  explicit RingReader(std::istream& stream) : _lines(stream) {}

  RingFile read() {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    while (_lines.take()) {
      ++_line;
      std::string_view text = _lines.piece();
      if (_line == 1 && text.substr(0, byteOrderMark.size()) == byteOrderMark) text.remove_prefix(byteOrderMark.size());
      if (_lines.endsLine() || text.find('#') != std::string_view::npos)
        take(text);
      else
        takeLongRing(text);
      _lines.skipLine();
    }
    endBlock();
    return std::move(_file);
  }

 private:
  void take(std::string_view line) {
    const std::string_view content = contentOf(line);
    if (content.find(',') != std::string_view::npos)
      takeRing(content);
    else if (!content.empty())
      takePoint(content);
    else if (line.find('#') == std::string_view::npos)
      endBlock();  // a line that holds only a comment does not end a block
  }

  void takePoint(std::string_view text) {
    const auto point = parsePoint(text);
    if (point)
      _block.getPointColl().push_back(*point);
    else
      addProblem("neither two finite numbers \"x y\" nor a ring \"x y, x y, ...\": " + shownText(text));
  }

  void takeRing(std::string_view text) {
    endBlock();
    Polygon2d<omReal64> ring;
    if (appendPoints(text, ring)) finishRing(ring, text);
  }

  /// Reads a ring whose line does not fit into a block, in pieces that end at their last comma.
  void takeLongRing(std::string_view text) {
    endBlock();
    Polygon2d<omReal64> ring;
    for (;;) {
      const std::size_t comment = text.find('#');
      const bool isLast = _lines.endsLine() || comment != std::string_view::npos;
      text = text.substr(0, comment);
      if (!isLast) {
        const std::size_t comma = text.rfind(',');
        if (comma == std::string_view::npos)
          return addProblem("a coordinate or comment without end: " + shownText(text));
        _lines.shorten(_lines.piece().size() - (text.size() - comma - 1));
        text = text.substr(0, comma);
        // `appendPoints` accepts a comma at the end of its text, which is allowed only at the end of the ring.
        if (const std::string_view content = contentOf(text); content.empty() || content.back() == ',')
          return addProblem("not a ring \"x y, x y, ...\": " + shownText(text));
      }
      if (!appendPoints(text, ring)) return;
      if (isLast || !_lines.take()) return finishRing(ring, text);
      text = _lines.piece();
    }
  }

  /// Appends the points "x y, x y, ..." to the ring; adds a problem and returns false for any other text.
  bool appendPoints(std::string_view text, Polygon2d<omReal64>& ring) {
    std::string spaced(text);
    for (char& character : spaced)
      if (s_blanks.find(character) != std::string_view::npos) character = ' ';
    auto& points = ring.getPointColl();
    try {
      std::vector<Point2dData<omReal64>> read;
      detail::readRing(spaced, read);
      if (points.empty())
        points = std::move(read);
      else
        points.insert(points.end(), read.begin(), read.end());
    } catch (const boost::geometry::read_wkt_exception& error) {
      addProblem("not a ring \"x y, x y, ...\": " + shownText(text));
      return false;
    }
    return true;
  }

  void finishRing(Polygon2d<omReal64>& ring, std::string_view text) {
    closePolygon(ring);
    if (!isFinite(ring)) return addProblem("a ring with a coordinate that is not finite: " + shownText(text));
    _file.rings.push_back(std::move(ring));
  }

  void endBlock() {
    if (!_block.isEmpty()) _file.rings.push_back(std::move(_block));
    _block = {};
  }

  void addProblem(std::string message) {
    if (_file.nbProblems++ < RingFile::s_maxProblems) _file.problems.push_back({_line, std::move(message)});
  }

  LinePieces _lines;
  RingFile _file;
  Polygon2d<omReal64> _block;
  std::size_t _line = 0;
};

}  // namespace

RingFile readRings(std::istream& stream) { return RingReader(stream).read(); }

ProcessingResult<RingFile> readRings(const std::string& path) {
  const auto cannotRead = [&path](const std::string& why) {
    return ProcessingResult<RingFile>({}, "Cannot read rings from \"" + path + "\": " + why);
  };
  // A directory can be opened like a file; only reading would fail, without a reason.
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) return cannotRead("it is a directory");
  errno = 0;
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return cannotRead(std::strerror(errno));
  RingFile file = readRings(stream);
  if (stream.bad()) return cannotRead("reading failed");
  return file;
}

}  // namespace ormix::geom
