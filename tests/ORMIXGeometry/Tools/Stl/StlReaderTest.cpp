#include <ORMIXGeometry/Tools/Stl/StlReader.h>

#include "StlSamples.h"
#include "support/Checks.h"
#include "support/Random.h"

using namespace ormix;
using namespace ormix::geom;
using namespace stlsamples;

namespace {

StlTriangles read(const std::string& bytes) {
  StlInput input(bytes);
  const bool isAscii = hasStlAsciiFormat(input);
  input.rewind();
  return isAscii ? readAsciiTriangles(input) : readBinaryTriangles(input);
}
StlTriangles readAscii(const std::string& bytes) {
  StlInput input(bytes);
  return readAsciiTriangles(input);
}
StlTriangles readTolerant(const std::string& bytes) {
  StlInput input(bytes);
  return readTolerantAsciiTriangles(input);
}

/// The grammar as a stream reads it.
std::vector<omReal32> readByStream(const std::string& text) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  std::vector<omReal32> coords;
  std::string word;
  stream >> word;
  while (stream >> word && word != "endsolid") {
    const int nbWords = word == "facet" ? 6 : 7;
    for (int at = 0; at < nbWords; ++at) stream >> word;
    std::array<omReal32, 9> corners{};
    for (std::size_t at = 0; at < 9; ++at) {
      if (at % 3 == 0) stream >> word;
      stream >> corners[at];
    }
    stream >> word >> word;
    if (!stream) break;
    coords.insert(coords.end(), corners.begin(), corners.end());
  }
  return coords;
}

}  // namespace

TEST(StlReader, hostileFilesGiveTheTrianglesThatAreThere) {
  const std::vector<HostileFile> files = hostileFiles();
  EXPECT_GE(files.size(), 60u);
  for (const HostileFile& file : files) {
    const StlTriangles triangles = read(file.bytes);
    EXPECT_EQ(triangles.getNbTriangles(), file.nbTriangles) << file.what;
    EXPECT_LE(triangles.stopOffset, file.bytes.size()) << file.what;
    readTolerant(file.bytes);
  }
}

TEST(StlReader, everyPrefixHasItsWholeTriangles) {
  const std::string records = binary(tetrahedron());
  for (std::size_t length = 0; length <= records.size(); ++length)
    ASSERT_EQ(read(records.substr(0, length)).getNbTriangles(), length < 84 ? 0 : (length - 84) / 50) << length;
  const std::string text = ascii(facets(tetrahedron()));
  for (std::size_t length = 0, nbBegun = 0, nbTriangles = 0; length <= text.size(); ++length) {
    const std::string prefix = text.substr(0, length);
    const auto endsWith = [&](const std::string& last) {
      return length >= last.size() && prefix.compare(length - last.size(), last.size(), last) == 0;
    };
    nbBegun += endsWith("endloop\ne") ? 1 : 0;
    nbTriangles += endsWith("endfacet") ? 1 : 0;
    ASSERT_EQ(readAscii(prefix).getNbTriangles(), nbBegun) << prefix;
    ASSERT_EQ(readTolerant(prefix).getNbTriangles(), nbTriangles) << prefix;
  }
}

TEST(StlReader, textIsReadAsAStreamReadsIt) {
  support::Random random(23);
  const std::vector<std::string> pieces{
      "facet", "endsolid",           "vertex", "1",   "-2.5e1", "\n", " ", "\t", "e", ".", "+", "nan", "1e39",
      "x",     std::string(1, '\0'), "9e-46",  "\x80"};
  for (int trial = 0; trial < 5000; ++trial) {
    std::string text = ascii(facets(tetrahedron()));
    for (auto edit = random() % 3; edit != 0; --edit) {
      const std::string& piece = pieces[random() % pieces.size()];
      text.replace(random() % text.size(), random() % 3, piece);
    }
    ASSERT_EQ(readAscii(text).coordColl, readByStream(text)) << text;
  }
  // Blocks end anywhere in a text.
  for (int trial = 0; trial < 50; ++trial) {
    std::string text = "solid" + std::string(random() % 1000 + 1, ' ');
    while (text.size() < 600000) text += facets(tetrahedron(static_cast<omReal32>(random() % 100000)));
    ASSERT_EQ(readAscii(text).coordColl, readByStream(text));
  }
}

TEST(StlReader, saysWhereAndWhyItStopped) {
  const std::string text = "solid p\n" + facets(tetrahedron());
  const auto expectStop = [](const StlTriangles& triangles, eStlStop stop, std::size_t offset, std::size_t line) {
    EXPECT_EQ(triangles.stop, stop);
    EXPECT_EQ(triangles.stopOffset, offset);
    EXPECT_EQ(triangles.stopLine, line);
  };
  expectStop(readAscii(text + "endsolid p\n"), eSS_EndOfSolid, text.size() + 8, 30);
  expectStop(readAscii(text), eSS_EndOfFile, text.size(), 30);
  expectStop(readAscii(text + "facet normal 0 0"), eSS_InsideTriangle, text.size() + 16, 30);
  expectStop(readAscii(text + facetWith("nan")), eSS_NoNumber, text.size() + 37, 32);
  expectStop(readTolerant(text + "facet normal 0 0 1 outer hoop"), eSS_UnexpectedWord, text.size() + 29, 30);
  const std::string records = binary(tetrahedron());
  expectStop(read(records), eSS_EndOfSolid, 284, 0);
  expectStop(read(records.substr(0, 200)), eSS_InsideTriangle, 200, 0);
  expectStop(read(records.substr(0, 184)), eSS_EndOfFile, 184, 0);
  expectStop(read("short"), eSS_EndOfFile, 5, 0);
  EXPECT_EQ(toString(eSS_TooMany), "eSS_TooMany");
}

TEST(StlReader, tolerantReadingTakesWhatProgramsWrite) {
  const std::string text = facets(tetrahedron());
  std::string upper = ascii(text, "TWO WORDS");
  for (char& c : upper) c = static_cast<char>(std::toupper(c));
  std::string spaced = text;
  for (std::size_t at = 0; (at = spaced.find("endloop\nendfacet", at)) != std::string::npos;)
    spaced.replace(at, 16, "end loop\nend facet");
  const std::string oneLine =
      "solid a b facet normal 0 0 1 outer loop vertex 0 0 0 vertex 1 0 0 vertex 0 1 0 endloop endfacet endsolid";
  const std::vector<std::tuple<std::string, std::size_t, std::size_t>> cases{
      {ascii(text, "a name of many words"), 4, 1},
      {ascii(text, "facet of endsolid"), 4, 1},
      {ascii(text, ""), 4, 1},
      {ascii(text, std::string(1000000, 'n')), 4, 1},
      {ascii(text) + "\n" + ascii(text, "and another") + ascii(""), 8, 3},
      {"solid a\n" + text + "end solid a\nsolid b\n" + text + "END SOLID", 8, 2},
      {"\xEF\xBB\xBF" + ascii(text), 4, 1},
      {upper, 4, 1},
      {ascii(spaced), 4, 1},
      {"solid a b\r\n" + facet({"0", "0", "0", "1", "0", "0", "0", "1", "0"}, "\r\n"), 1, 1},
      {oneLine, 1, 1},
      {"facet normal outer loop vertex 0 0 0 vertex 1 0 0 vertex 0 1 0 endloop endfacet", 1, 0},
      {ascii(facetWith("-NaN") + facetWith("+inf") + facetWith("-Infinity")), 3, 1}};
  for (const auto& [bytes, nbTriangles, nbSolids] : cases) {
    const StlTriangles triangles = readTolerant(bytes);
    const std::string shown = bytes.substr(0, 100);
    EXPECT_EQ(triangles.getNbTriangles(), nbTriangles) << shown;
    EXPECT_EQ(triangles.nbSolids, nbSolids) << shown;
    EXPECT_TRUE(triangles.stop == eSS_EndOfFile) << shown << toString(triangles.stop);
  }
}

TEST(StlReader, numbersDoNotDependOnTheLocale) {
  const support::CommaLocale comma;
  const StlTriangles triangles = readAscii("solid\n" + facetWith("2.5"));
  ASSERT_EQ(triangles.getNbTriangles(), 1u);
  EXPECT_EQ(triangles.coordColl[0], 2.5f);
}
