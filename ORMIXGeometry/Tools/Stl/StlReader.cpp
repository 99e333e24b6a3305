#include <ORMIXGeometry/Tools/Stl/StlBytes.h>
#include <ORMIXGeometry/Tools/Stl/StlReader.h>
#include <ORMIXGeometry/Tools/Stl/StlWords.h>
#include <ORMIXUtil/Memory/LargePages.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <string>
#include <utility>

namespace ormix::geom {

namespace {

/// Whether the word is the keyword, ignoring upper and lower case; `keyword` is in lower case.
bool isKeyword(std::string_view word, std::string_view keyword) {
  return word.size() == keyword.size() && std::equal(word.begin(), word.end(), keyword.begin(),
                                                     [](char a, char b) { return detail::lowerCase(a) == b; });
}

/// The common part of the readers of ASCII files: the words, the triangles, and why reading has stopped.
class AsciiReader {
 protected:
  explicit AsciiReader(StlInput& input) : _input(input), _words(input) {
    constexpr omUInt64 smallestFacet = 80;
    reserveLarge(_triangles.coordColl, 9 * input.getRoom(smallestFacet));
  }

  /// Stores why reading stops. Always returns false.
  bool stop(eStlStop why) {
    _triangles.stop = _input.hasFailed() ? eSS_ReadError : why;
    return false;
  }

  /// Appends a triangle, unless there are too many.
  bool keep(const std::array<omReal32, 9>& corners) {
    if (_triangles.getNbTriangles() == StlTriangles::s_maxTriangles) return stop(eSS_TooMany);
    _triangles.coordColl.insert(_triangles.coordColl.end(), corners.begin(), corners.end());
    return true;
  }

  StlTriangles finish() {
    _triangles.stopOffset = _words.getOffset();
    _triangles.stopLine = _words.getLine();
    return std::move(_triangles);
  }

  StlInput& _input;
  detail::StlWords _words;
  StlTriangles _triangles;
};

/// Reads words at fixed positions, see `readAsciiTriangles`.
class PlainAsciiReader : AsciiReader {
 public:
  explicit PlainAsciiReader(StlInput& input) : AsciiReader(input) {}

  StlTriangles read() {
    if (_words.skip(1)) _triangles.nbSolids = 1;
    while (takeTriangle()) {
    }
    return finish();
  }

 private:
  bool takeTriangle() {
    std::string_view word;
    if (!_words.next(word)) return stop(eSS_EndOfFile);
    if (word == "endsolid") return stop(eSS_EndOfSolid);
    const bool isFacet = word == "facet";
    if (!_words.skip(isFacet ? 1 : 2)) return stop(isFacet ? eSS_InsideTriangle : eSS_EndOfFile);
    std::array<omReal32, 9> corners{};
    if (!_words.skip(5)) return stop(eSS_InsideTriangle);
    for (std::size_t at = 0; at < 9; ++at) {
      if (at % 3 == 0 && !_words.skip(1)) return stop(eSS_InsideTriangle);
      if (!_words.nextNumber(corners[at])) return stop(_words.atEnd() ? eSS_InsideTriangle : eSS_NoNumber);
    }
    if (!_words.skip(2)) return stop(eSS_InsideTriangle);
    return keep(corners);
  }
};

/// Reads statements by their keywords, see `readTolerantAsciiTriangles`.
class TolerantAsciiReader : AsciiReader {
 public:
  explicit TolerantAsciiReader(StlInput& input) : AsciiReader(input) {}

  StlTriangles read() {
    while (takeStatement()) {
    }
    return finish();
  }

 private:
  bool take() { return _words.next(_word); }
  bool unexpected() { return stop(eSS_UnexpectedWord); }

  bool takeStatement() {
    if (!take()) return stop(eSS_EndOfFile);
    if (_word.substr(0, 3) == "\xEF\xBB\xBF") _word.remove_prefix(3);  // byte order mark
    if (isKeyword(_word, "facet")) return takeFacet();
    if (isKeyword(_word, "solid")) {
      ++_triangles.nbSolids;
      return skipName();
    }
    if (isKeyword(_word, "end") && (!take() || !isKeyword(_word, "solid"))) return unexpected();
    return isKeyword(_word, "endsolid") || isKeyword(_word, "solid") ? skipName() : unexpected();
  }

  /// Skips the name of a solid: the rest of the line, or up to "facet normal" in a file with all words on one line.
  bool skipName() {
    while (!_words.atEndOfLine() && take())
      if (isKeyword(_word, "facet") && !_words.atEndOfLine() && take() && isKeyword(_word, "normal"))
        return takeAfterNormal();
    return true;
  }

  bool expect(std::string_view keyword) {
    if (!take()) return stop(eSS_InsideTriangle);
    return isKeyword(_word, keyword) || unexpected();
  }
  /// Consumes "endloop" or "end loop", for example.
  bool expectEnd(std::string_view what) {
    if (!take()) return stop(eSS_InsideTriangle);
    if (isKeyword(_word, "end")) return expect(what);
    return (isKeyword(_word.substr(0, 3), "end") && isKeyword(_word.substr(3), what)) || unexpected();
  }

  bool takeFacet() { return expect("normal") && takeAfterNormal(); }

  /// Consumes a facet after "facet normal": up to three words for the normal, "outer loop" and the corners.
  bool takeAfterNormal() {
    for (unsigned nbWords = 0; nbWords < 4; ++nbWords) {
      if (!take()) return stop(eSS_InsideTriangle);
      if (isKeyword(_word, "outer")) return expect("loop") && takeCorners();
    }
    return unexpected();
  }

  bool takeCorners() {
    std::array<omReal32, 9> corners{};
    for (std::size_t at = 0; at < 9; ++at)
      if ((at % 3 == 0 && !expect("vertex")) || !takeNumber(corners[at])) return false;
    return expectEnd("loop") && expectEnd("facet") && keep(corners);
  }

  /// Consumes a number, or a word that begins with "inf" or "nan" after an optional sign.
  bool takeNumber(omReal32& number) {
    if (_words.nextNumber(number)) return true;
    if (!take()) return stop(eSS_InsideTriangle);
    const bool isNegative = _word[0] == '-';
    if (isNegative || _word[0] == '+') _word.remove_prefix(1);
    if (isKeyword(_word.substr(0, 3), "inf"))
      number = std::numeric_limits<omReal32>::infinity();
    else if (isKeyword(_word.substr(0, 3), "nan"))
      number = std::numeric_limits<omReal32>::quiet_NaN();
    else
      return stop(eSS_NoNumber);
    if (isNegative) number = -number;
    return true;
  }

  std::string_view _word;
};

constexpr std::size_t s_headerSize = 84;  // with the number of triangles
constexpr std::size_t s_recordSize = 50;  // normal, three corners, attribute

/// Copies the corners from the records of triangles, 9 numbers for each.
void copyCorners(const char* records, std::size_t nbRecords, omReal32* to) {
  if (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__) {
    for (std::size_t at = 0; at < nbRecords; ++at) std::memcpy(to + 9 * at, records + s_recordSize * at + 12, 36);
    return;
  }
  for (std::size_t at = 0; at < 9 * nbRecords; ++at) {
    const omUInt32 bits = detail::littleEndian(records + s_recordSize * (at / 9) + 12 + 4 * (at % 9));
    std::memcpy(to + at, &bits, sizeof bits);
  }
}

}  // namespace

bool hasStlAsciiFormat(StlInput& input) {
  std::string text(256, '\0');
  text.resize(input.read(text.data(), text.size()));
  std::transform(text.begin(), text.end(), text.begin(), detail::lowerCase);
  const auto contains = [&text](const char* word) { return text.find(word) != std::string::npos; };
  return contains("solid") && contains("\n") && contains("facet") && contains("normal");
}

StlTriangles readAsciiTriangles(StlInput& input) { return PlainAsciiReader(input).read(); }
StlTriangles readTolerantAsciiTriangles(StlInput& input) { return TolerantAsciiReader(input).read(); }

StlTriangles readBinaryTriangles(StlInput& input, StlCount count) {
  constexpr std::size_t recordsOfBlock = 5000;
  StlTriangles triangles;
  std::vector<char> block(recordsOfBlock * s_recordSize);
  std::size_t got = input.read(block.data(), s_headerSize);
  triangles.stopOffset = got;
  if (got < s_headerSize) {
    triangles.stop = input.hasFailed() ? eSS_ReadError : eSS_EndOfFile;
    return triangles;
  }
  triangles.nbSolids = 1;
  const omUInt32 declared = detail::littleEndian(block.data() + 80);
  const bool readsAll = declared == 0 && count == StlCount::Hint;
  const std::size_t nbWanted =
      readsAll ? StlTriangles::s_maxTriangles : std::min<std::size_t>(declared, StlTriangles::s_maxTriangles);
  std::vector<omReal32>& coords = triangles.coordColl;
  reserveLarge(coords, 9 * std::min(nbWanted, input.getRoom(s_recordSize)));
  std::size_t nbRead = 0, partial = 0;
  while (nbRead < nbWanted) {
    const std::size_t wanted = std::min(recordsOfBlock, nbWanted - nbRead) * s_recordSize;
    got = input.read(block.data(), wanted);
    const std::size_t nbRecords = got / s_recordSize;
    coords.resize(coords.size() + 9 * nbRecords);
    copyCorners(block.data(), nbRecords, coords.data() + 9 * nbRead);
    nbRead += nbRecords;
    partial = got % s_recordSize;
    if (got < wanted) break;
  }
  triangles.stopOffset = s_headerSize + omUInt64(nbRead) * s_recordSize + partial;
  if (input.hasFailed())
    triangles.stop = eSS_ReadError;
  else if (nbRead == nbWanted)
    triangles.stop = nbRead < declared ? eSS_TooMany : eSS_EndOfSolid;
  else if (partial != 0)
    triangles.stop = eSS_InsideTriangle;
  else
    triangles.stop = readsAll ? eSS_EndOfSolid : eSS_EndOfFile;
  return triangles;
}

}  // namespace ormix::geom
