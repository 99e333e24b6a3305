#pragma once

// STL files written by hand, without the library.

#include <ORMIXUtil/ScalarTypes.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

namespace stlsamples {

using ormix::omReal32;
using ormix::omUInt32;
using Corners = std::array<omReal32, 9>;

/// The faces of a tetrahedron, seen from outside, with this corner at the right angles.
inline std::vector<Corners> tetrahedron(omReal32 at = 0, omReal32 size = 1) {
  const std::array<std::array<omReal32, 3>, 4> v{
      {{at, at, at}, {at + size, at, at}, {at, at + size, at}, {at, at, at + size}}};
  std::vector<Corners> faces;
  for (const std::array<std::size_t, 3>& f : {std::array<std::size_t, 3>{0, 2, 1}, {0, 1, 3}, {0, 3, 2}, {1, 2, 3}})
    faces.push_back(
        {v[f[0]][0], v[f[0]][1], v[f[0]][2], v[f[1]][0], v[f[1]][1], v[f[1]][2], v[f[2]][0], v[f[2]][1], v[f[2]][2]});
  return faces;
}

inline std::string binary(const std::vector<Corners>& triangles, omUInt32 count, std::string header = "by hand") {
  std::string bytes = std::move(header);
  bytes.resize(80, ' ');
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(count >> shift & 0xFF);
  for (const Corners& corners : triangles) {
    std::array<char, 50> record{};
    std::memcpy(&record[12], corners.data(), 36);  // on a little-endian machine
    bytes.append(record.data(), record.size());
  }
  return bytes;
}
inline std::string binary(const std::vector<Corners>& triangles) {
  return binary(triangles, static_cast<omUInt32>(triangles.size()));
}

inline std::string facet(const std::array<std::string, 9>& numbers, const std::string& eol = "\n") {
  std::string text = "facet normal 0 0 1" + eol + "outer loop" + eol;
  for (std::size_t at = 0; at < 9; at += 3)
    text += "vertex " + numbers[at] + " " + numbers[at + 1] + " " + numbers[at + 2] + eol;
  return text + "endloop" + eol + "endfacet" + eol;
}
/// A facet whose first coordinate is this text.
inline std::string facetWith(const std::string& number) {
  return facet({number, "0", "0", "1", "0", "0", "0", "1", "0"});
}
inline std::string facets(const std::vector<Corners>& triangles) {
  std::string text;
  for (const Corners& corners : triangles) {
    std::array<std::string, 9> numbers;
    for (std::size_t at = 0; at < 9; ++at) numbers[at] = std::to_string(corners[at]);
    text += facet(numbers);
  }
  return text;
}
inline std::string ascii(const std::string& facets, const std::string& name = "part") {
  return "solid " + name + "\n" + facets + "endsolid " + name + "\n";
}

/// A name in the tests' folder for a file that is gone at the end.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& bytes = "") : path(::testing::TempDir() + "ormix_stl_" + unique()) {
    std::ofstream(path, std::ios::binary) << bytes;
  }
  ~TemporaryFile() {
    std::error_code code;
    std::filesystem::remove(path, code);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  std::string bytes() const {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  const std::string path;

 private:
  static std::string unique() {
    static int count = 0;
    return std::to_string(::getpid()) + "_" + std::to_string(count++);
  }
};

/// A file that may be anything, and how many triangles the readers find in it.
struct HostileFile {
  std::string what, bytes;
  std::size_t nbTriangles;
};

inline std::vector<HostileFile> hostileFiles() {
  constexpr omReal32 inf = std::numeric_limits<omReal32>::infinity();
  constexpr omReal32 nan = std::numeric_limits<omReal32>::quiet_NaN();
  constexpr omReal32 tiny = std::numeric_limits<omReal32>::denorm_min();
  const std::vector<Corners> solid = tetrahedron();
  const Corners one = solid[0];
  const Corners back{one[0], one[1], one[2], one[6], one[7], one[8], one[3], one[4], one[5]};
  const Corners turned{one[3], one[4], one[5], one[6], one[7], one[8], one[0], one[1], one[2]};
  std::vector<Corners> fan;
  for (int at = 0; at < 500; ++at)
    fan.push_back({0, 0, 0, static_cast<omReal32>(at), 1, 0, static_cast<omReal32>(at + 1), 1, 0});
  const std::string text = facets(solid);

  std::vector<HostileFile> files{
      {"nothing", "", 0},
      {"one byte", "s", 0},
      {"no record", binary({}), 0},
      {"a header cut", binary({}).substr(0, 83), 0},
      {"count 0 before records", binary(solid, 0), 0},
      {"count 1 before four", binary(solid, 1), 1},
      {"count 5 before four", binary(solid, 5), 4},
      {"count 2^32 - 1", binary(solid, 0xFFFFFFFFu), 4},
      {"count just past 4 GiB", binary(solid, (0x100000000u + 49) / 50), 4},
      {"count 2^31", binary(solid, 0x80000000u), 4},
      {"bytes behind the last record", binary(solid) + std::string(49, 'x'), 4},
      {"solid in the header", binary(solid, 4, "solid part"), 4},
      {"all the words in a binary header", binary(solid, 4, "solid facet normal\n"), 0},
      {"three of the words in a header", binary(solid, 4, "solid facet\n"), 4},
      {"only zeros", std::string(1000, '\0'), 0},
      {"only 0xFF", std::string(1000, '\xFF'), 18},
      {"infinities", binary({{inf, -inf, 0, inf, inf, inf, 0, -inf, inf}, one}), 2},
      {"NaN", binary({{nan, 0, 0, 0, nan, 0, 0, 0, -nan}, {nan, 0, 0, 1, 0, 0, 0, 1, 0}, one}), 3},
      {"denormals", binary({{tiny, 0, 0, -tiny, 0, 0, 0, tiny, 0}}), 1},
      {"both zeros", binary({{0, 0, 0, 1, -0.0f, 0, -0.0f, 1, 0}, {-0.0f, -0.0f, -0.0f, 0, 1, 0, -1, 0, 0}}), 2},
      {"the same triangle often", binary(std::vector<Corners>(2000, one)), 2000},
      {"a triangle turned", binary({one, turned}), 2},
      {"back to back", binary({one, back}), 2},
      {"back to back twice", binary({one, back, one, back}), 4},
      {"one point", binary(std::vector<Corners>(3, Corners{})), 3},
      {"folded", binary({{0, 0, 0, 1, 0, 0, 1, 0, 0}, {0, 0, 0, 1, 0, 0, 0, 0, 0}, one}), 3},
      {"a fan", binary(fan), 500},
      {"text", ascii(text), 4},
      {"text without a name", "solid\n" + text + "endsolid\n", 4},
      {"a name of two words", ascii(text, "two words"), 0},
      {"a name that is a keyword", ascii(text, "endsolid"), 0},
      {"a name facet", ascii(text, "facet"), 0},
      {"upper case", ascii(facet({"0", "0", "0", "1", "0", "0", "0", "1", "0"}), "SOLID"), 1},
      {"foreign line ends", "solid p\r\n" + facet({"0", "0", "0", "1", "0", "0", "0", "1", "0"}, "\r\n"), 1},
      {"one line", "solid p " + facet({"0", "0", "0", "1", "0", "0", "0", "1", "0"}, " ") + "\n", 1},
      {"no end", "solid p\n" + text, 4},
      {"the last line end missing", "solid p\n" + text.substr(0, text.size() - 1), 4},
      {"the last letter missing", "solid p\n" + text.substr(0, text.size() - 2), 4},
      {"a second solid", ascii(text) + ascii(text), 4},
      {"no facets", "solid facet normal\nendsolid\n", 0},
      {"NUL in the text", "solid p\n" + text + std::string(3, '\0') + text, 4},
      {"a keyword glued to a number", "solid p\n" + facet({"0", "0", "0", "1", "0", "0", "0", "1", "0endloop"}) + text,
       0},
  };
  for (const std::size_t length : {256u, 1000000u}) {
    // The words are too far behind: the text is read as records.
    const std::string bytes = ascii(text, std::string(length, 'n'));
    files.push_back({"a name of " + std::to_string(length) + " characters", bytes, (bytes.size() - 84) / 50});
  }
  // A number that is none ends the reading before its triangle.
  for (const char* number : {"nan", "inf", "-inf", "x", "1e", "1e+", "+", "-", ".", "e5", "--1", "+-1", "1e39",
                             "-1e999", "1e99999999999999999999", "0x10", "1,5",
                             "\xEF\xBB\xBF"
                             "1"})
    files.push_back({std::string("number ") + number, ascii(text + facetWith(number) + text), 4});
  for (const char* number :
       {"+1", "-.5", "5.", ".5", "1E5", "1e+05", "007", "1e-50", "-1e-99999999999999999999", "1e-40",
        "0e99999999999999999999", "3.4028235e38", "0.00000000000000000000000000000000000000000001"})
    files.push_back({std::string("number ") + number, ascii(text + facetWith(number) + text), 9});
  files.push_back({"10^5 digits", ascii(facetWith("0." + std::string(100000, '3')) + text), 5});
  files.push_back({"10^6 digits", ascii(text + facetWith("0." + std::string(1000000, '3')) + text), 9});
  files.push_back({"10^6 blanks", ascii(text + std::string(1000000, '\n') + text), 8});
  return files;
}

}  // namespace stlsamples
