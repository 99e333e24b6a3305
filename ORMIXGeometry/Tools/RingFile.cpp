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

class RingReader {
 public:
  RingFile read(std::istream& stream) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    for (std::string line; std::getline(stream, line);) {
      ++_line;
      std::string_view text = line;
      if (_line == 1 && text.substr(0, byteOrderMark.size()) == byteOrderMark) text.remove_prefix(byteOrderMark.size());
      take(text);
    }
    endBlock();
    return std::move(_file);
  }

 private:
  void take(std::string_view line) {
    const std::string_view content = contentOf(line);
    if (content.find(',') != std::string_view::npos)
      takeRing(std::string(content));
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

  void takeRing(std::string text) {
    endBlock();
    for (char& character : text)
      if (s_blanks.find(character) != std::string_view::npos) character = ' ';
    Polygon2d<omReal64> ring;
    try {
      fromString(ring, text);
    } catch (const boost::geometry::read_wkt_exception& error) {
      return addProblem("not a ring \"x y, x y, ...\": " + shownText(text));
    }
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

  RingFile _file;
  Polygon2d<omReal64> _block;
  std::size_t _line = 0;
};

}  // namespace

RingFile readRings(std::istream& stream) { return RingReader().read(stream); }

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
