#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2dPrivateUtils.h>
#include <ORMIXGeometry/Tools/RingFile.h>

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

/// The text up to a comment, without blanks at its ends.
std::string_view contentOf(std::string_view line) {
  line = line.substr(0, line.find('#'));
  const std::size_t first = line.find_first_not_of(s_blanks);
  if (first == std::string_view::npos) return {};
  return line.substr(first, line.find_last_not_of(s_blanks) - first + 1);
}

/// A text from a file as a message shows it: printable, and not longer than a line on a screen.
std::string shownText(std::string_view text) {
  constexpr std::size_t longest = 40;
  std::string shown = "\"";
  for (const char character : text.substr(0, longest)) shown += character >= ' ' && character <= '~' ? character : '?';
  return shown + (text.size() > longest ? "...\"" : "\"");
}

/// Takes a finite number from the front of the text.
bool takeNumber(std::string_view& text, omReal64& number) {
  if (!text.empty() && text.front() == '+' && text.size() > 1 && text[1] != '-') text.remove_prefix(1);
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || !std::isfinite(number)) return false;
  text.remove_prefix(static_cast<std::size_t>(rest - text.data()));
  return true;
}

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

/// Cuts a text into lines, and lines longer than a block into pieces, so that no line is in memory as a whole.
class LinePieces {
 public:
  explicit LinePieces(std::istream& stream) : _stream(stream), _block(s_size) {}

  /// Takes the next line, or as much of it as there is room for; false at the end of the text.
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
  /// Valid until the next piece is taken.
  std::string_view piece() const { return _piece; }
  /// Whether the line ends with this piece.
  bool endsLine() const { return _endsLine; }

  /// Shortens a piece that does not end its line; what is left out begins the next one.
  void shorten(std::size_t length) {
    _begin -= _piece.size() - length;
    _piece = _piece.substr(0, length);
  }
  void skipLine() {
    while (!_endsLine && take()) {
    }
  }

 private:
  static constexpr std::size_t s_size = 65536;

  const char* findLineEnd() const {
    return static_cast<const char*>(std::memchr(_block.data() + _begin, '\n', _end - _begin));
  }
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

  /// A ring whose line does not fit a block: read piece by piece, each up to its last comma.
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
        // `appendPoints` would take this comma for the one that may stand at the very end.
        if (const std::string_view content = contentOf(text); content.empty() || content.back() == ',')
          return addProblem("not a ring \"x y, x y, ...\": " + shownText(text));
      }
      if (!appendPoints(text, ring)) return;
      if (isLast || !_lines.take()) return finishRing(ring, text);
      text = _lines.piece();
    }
  }

  /// Appends "x y, x y, ...", or tells why not.
  bool appendPoints(std::string_view text, Polygon2d<omReal64>& ring) {
    std::string spaced(text);
    for (char& character : spaced)
      if (s_blanks.find(character) != std::string_view::npos) character = ' ';
    auto& points = ring.getPointColl();
    try {
      std::vector<Point2dData<omReal64>> read;
      readRing(spaced, read);
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
  // A directory opens like a file and only then has nothing to read.
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
