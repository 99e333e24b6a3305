#include <ORMIXGeometry/Tools/PointsBoundingBox.h>
#include <ORMIXGeometry/Tools/Text/RingFile.h>
#include <sys/resource.h>

#include <fstream>

#include "support/Checks.h"
#include "support/Random.h"

using namespace ormix;
using namespace ormix::geom;
using support::bitsOf;
using support::s_infinity;
using support::s_nan;

namespace {

RingFile read(const std::string& text) {
  std::istringstream stream(text);
  return readRings(stream);
}

/// Rings as text, problems as their line numbers.
std::string summary(const RingFile& file) {
  std::ostringstream text;
  for (const auto& ring : file.rings) text << ring << ' ';
  for (const auto& problem : file.problems) text << '!' << problem.line;
  return text.str();
}

}  // namespace

TEST(RingFile, blocksAreKeptAsTheyStandAndRingsOfOneLineAreClosed) {
  const std::pair<const char*, const char*> cases[] = {
      {"0 0\n4 0\n4 3\n\n\n \t\n 1 1 \n2\t2\n1 1\n", "[[0, 0], [4, 0], [4, 3]] [[1, 1], [2, 2], [1, 1]] "},
      {"0 0, 4 0, 4 3\n1 1,\t2 2, 3 1, 1 1", "[[0, 0], [4, 0], [4, 3], [0, 0]] [[1, 1], [2, 2], [3, 1], [1, 1]] "},
      {"7 7\n8 8\n0 0, 4 0, 4 3\n9 9", "[[7, 7], [8, 8]] [[0, 0], [4, 0], [4, 3], [0, 0]] [[9, 9]] "},
      // Comments do not end a block.
      {"# coast\n0 0\n# a remark\n4 0 # cape\n\n#\n1 1", "[[0, 0], [4, 0]] [[1, 1]] "},
      // Foreign line ends behind a byte order mark.
      {"\xEF\xBB\xBF"
       "0 0\r\n4 0\r\n\r\n1 1\r\n",
       "[[0, 0], [4, 0]] [[1, 1]] "}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(summary(read(text)), expected) << text;
}

TEST(RingFile, malformedLinesAreNamedAndSkipped) {
  for (const char* line : {"x", "1", "1 2 3", "1 y", "1,5 x", "0x10 1", "nan 1", "1 inf", "1e999 1", "1 2,",
                           "0 0, 1 1, 2", "0 0), (1 1, 2 2", "nan nan, 1 1", "++1 2", "+-1 2", "1-2"}) {
    const RingFile file = read(std::string("5 5\n") + line + "\n6 6\n");
    ASSERT_LE(file.nbProblems, 1u) << line;
    if (std::string(line) == "1 2,") continue;  // a ring of one point: fromString takes a comma at the end
    ASSERT_EQ(file.nbProblems, 1u) << line;
    EXPECT_EQ(file.problems[0].line, 2u) << line;
    EXPECT_NE(file.problems[0].message.find(std::string(line).substr(0, 3)), std::string::npos)
        << file.problems[0].message;
  }
  EXPECT_EQ(summary(read("5 5\noops\n6 6\n")), "[[5, 5], [6, 6]] !2") << "the block goes on";
}

TEST(RingFile, hostileTextIsBounded) {
  std::string text;
  for (int line = 0; line < 5000; ++line) text += "\x01\xFF" + std::string(200, 'z') + "\n";
  const RingFile file = read(text);
  EXPECT_EQ(file.nbProblems, 5000u);
  EXPECT_EQ(file.problems.size(), RingFile::s_maxProblems);
  EXPECT_LT(file.problems[0].message.size(), 200u);
  EXPECT_EQ(file.problems[0].message.find('\x01'), std::string::npos);
}

// Lines are read in pieces of 65536 bytes, which must not show.
TEST(RingFile, linesMayBeLongerThanABlock) {
  std::string manyPoints;
  while (manyPoints.size() < 65520) manyPoints += "7 8,";
  for (std::size_t nbBlanks = 0; nbBlanks <= 20; ++nbBlanks)
    for (const std::string rest : {"1 1, 2 0", ",1 1", "1,1 1", "1 1,", "1 1,,", "1 1,, 2 2", "1 1 # x", "1 1,nan 0"}) {
      const std::string line = manyPoints + std::string(nbBlanks, ' ') + rest;
      Polygon2d<omReal64> ring;
      try {
        fromString(ring, line.substr(0, line.find('#')));
      } catch (const std::exception&) {
      }
      const bool isProblem = ring.isEmpty() || line.find("nan") != std::string::npos;
      const RingFile file = read("9 9\n" + line + "\n8 8");
      ASSERT_EQ(file.rings.size(), isProblem ? 2u : 3u) << nbBlanks << rest;
      ASSERT_EQ(file.nbProblems, isProblem ? 1u : 0u) << nbBlanks << rest;
      ASSERT_TRUE(isProblem || file.rings[1].getPointColl() == ring.getPointColl()) << nbBlanks << rest;
    }
  std::string points = "0 0";
  for (int at = 1; at < 40000; ++at) points += ",\t" + std::to_string(at) + "\t" + std::to_string(at % 7);
  const RingFile file = read(points + "\n" + points + ", x 1, " + points + "\n" + points);
  ASSERT_EQ(file.rings.size(), 2u);
  EXPECT_EQ(file.rings[0].getPointColl().size(), 40001u);
  EXPECT_EQ(file.rings[0].getPointColl()[39999], Point2dData<omReal64>(39999, 39999 % 7));
  EXPECT_EQ(file.rings[1].getPointColl(), file.rings[0].getPointColl());
  EXPECT_EQ(file.problems.at(0).line, 2u);
  EXPECT_EQ(summary(read("#" + std::string(200000, ',') + "\n1 1 #" + std::string(70000, ',') + "\n2 2")),
            "[[1, 1], [2, 2]] ");
}

/// So many zeros without a line end.
struct Zeros : std::streambuf {
  explicit Zeros(std::size_t size) : left(size) {}
  int_type underflow() override {
    if (left == 0) return traits_type::eof();
    const std::size_t count = std::min(left, block.size());
    left -= count;
    setg(block.data(), block.data(), block.data() + count);
    return 0;
  }
  std::vector<char> block = std::vector<char>(65536);
  std::size_t left;
};

/// Most memory this process has had so far, in KiB.
long peakMemory() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

TEST(RingFile, aLineWithoutEndTakesNoMemory) {
  const long before = peakMemory();
  Zeros zeros(std::size_t(256) << 20);
  std::istream stream(&zeros);
  EXPECT_EQ(readRings(stream).nbProblems, 1u);
  EXPECT_EQ(zeros.left, 0u);
  EXPECT_LT(peakMemory(), before + 32 * 1024);
}

TEST(RingFile, numbersDoNotDependOnTheLocale) {
  const RingFile file = [] {
    const support::CommaLocale comma;
    return read("0.5 1e3\n+1 -2\n\n0.5 1, 2 2, 3 1\n");
  }();
  EXPECT_EQ(summary(file), "[[0.5, 1000], [1, -2]] [[0.5, 1], [2, 2], [3, 1], [0.5, 1]] ");
}

TEST(RingFile, filesThatCannotBeReadAreNamed) {
  for (const std::string& path : {::testing::TempDir(), std::string("/no/such/file")}) {
    const ProcessingResult<RingFile> result = readRings(path);
    EXPECT_NE(result.getMessage().find(path), std::string::npos) << result.getMessage();
    EXPECT_TRUE(result.getResult().rings.empty());
  }
  const std::string path = ::testing::TempDir() + "ormix_rings.txt";
  std::ofstream(path) << "0 0, 1 0, 1 1\n";
  EXPECT_EQ(readRings(path).getMessage(), "");
  EXPECT_EQ(readRings(path).getResult().rings.size(), 1u);
}

TEST(PointsBoundingBox, enclosesEveryPoint) {
  const std::vector<Point2dData<omInt32>> points{{3, -7}, {-2, 5}, {9, 0}};
  EXPECT_EQ(pointsBoundingBox(points), BoundingBox2d<omInt32>(-2, -7, 9, 5));
  EXPECT_EQ(pointsBoundingBox(std::vector<Point2dData<omReal32>>()), BoundingBox2d<omReal32>(0, 0, 0, 0));
}

// Whatever is computed side by side: to the bit, of zeros the first, of NaNs that of the first point.
TEST(PointsBoundingBox, isThatOfComparingOneAfterTheOther) {
  support::Random random(7);
  const omReal64 odd[] = {0.0, -0.0, 1, -1, s_nan, -s_nan, s_infinity, -s_infinity};
  for (int trial = 0; trial < 20000; ++trial) {
    std::vector<Point3dData<omReal64>> points(1 + random.below(40));
    const omUInt32 nbOdd = 1 + random.below(8);
    for (auto& point : points) point = {odd[random.below(nbOdd)], odd[random.below(2)], odd[random.below(nbOdd)]};
    std::array<omReal64, 6> expected{points[0].getX(), points[0].getY(), points[0].getZ(),
                                     points[0].getX(), points[0].getY(), points[0].getZ()};
    for (const auto& point : points) {
      const std::array<omReal64, 3> place{point.getX(), point.getY(), point.getZ()};
      for (std::size_t axis = 0; axis < 3; ++axis) {
        expected[axis] = std::min(expected[axis], place[axis]);
        expected[3 + axis] = std::max(expected[3 + axis], place[axis]);
      }
    }
    const auto box = pointsBoundingBox(points);
    const std::array<omReal64, 6> sides{box.getXMin(), box.getYMin(), box.getZMin(),
                                        box.getXMax(), box.getYMax(), box.getZMax()};
    for (std::size_t side = 0; side < 6; ++side) ASSERT_EQ(bitsOf(sides[side]), bitsOf(expected[side])) << trial;
  }
}
