
#include "SampleClasses.h"
#include "support/ArchiveFormats.h"
#include "support/Checks.h"

namespace {

using namespace ormix;
using namespace sample;
using namespace support;

const std::string g_header = R"([{"ormix-archive": [{"version": 1}, {"writer": "x"}]})";

/// An archive of one entry with key "v" and this value.
std::string entry(const std::string& value) { return g_header + ", {\"v\": " + value + "}]"; }

template <class V>
V valueOf(const std::string& value) {
  V read{};
  EXPECT_SUCCESS(readValue<Json>(entry(value), read));
  return read;
}

TEST(JsonText, OfAnObject) {
  const std::string text = archived<Json>([](BaseOArchive& archive) {
    EXPECT_SUCCESS(Disc({1, 2}, 3).write(archive));
    EXPECT_SUCCESS(Disc({-0.0, 0.1}, 1e-7).write(archive));
  });
  EXPECT_EQ(text, R"([
{"ormix-archive": [{"version": 1}, {"writer": "ORMIX )" +
                      getSDKStrVersion() + R"("}]},
{"sample::Level0": [{"version": 1}]},
{"sample::Level1": [{"version": 1}]},
{"sample::Level2<ormix::omReal64>": [{"version": 1}]},
{"sample::Disc": [{"version": 1}]},
{"_centerPt": [{"x": 1}, {"y": 2}]},
{"_radius": 3},
{"_centerPt": [{"x": -0}, {"y": 0.1}]},
{"_radius": 1e-07}
]
)");
}

TEST(JsonText, OfArraysTextsAndPolymorphicObjects) {
  const std::string text = archived<Json>([](BaseOArchive& archive) {
    writeItem(archive, "_pointColl", std::vector<Vertex>{{0, 0}, {10, 0}});
    writeItem(archive, "none", std::vector<Vertex>());
    writeItem(archive, "params", std::vector<omReal32>{0.1f, NAN, -INFINITY});
    writeItem(archive, "text", std::string("\"\\/\n\x02\xE2\x82\xAC"));
    writeObject(archive, Disc());
  });
  const std::string entries = text.substr(text.find('\n', 2) + 1);
  EXPECT_EQ(entries, R"({"_pointColl": [[0, 0], [10, 0]]},
{"none": []},
{"params": [0.1, "nan", "-inf"]},
{"text": "\"\\/\n\u0002€"},
{"sample::Disc": [{"sample::Level0": [{"version": 1}]}, {"sample::Level1": [{"version": 1}]}, {"sample::Level2<ormix::omReal64>": [{"version": 1}]},
{"sample::Disc": [{"version": 1}]}, {"_centerPt": [{"x": 0}, {"y": 0}]}, {"_radius": 0}]}
]
)");
  std::istringstream lines(
      archived<Json>([](BaseOArchive& archive) { writeItem(archive, "values", std::vector<omInt32>(1000, 1234567)); }));
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 120u);
}

TEST(JsonText, AnyWhiteSpaceAndEscapesAreRead) {
  std::string spaced;
  for (const char c : g_header + R"(,{"v":[[1,2],[3.5,-4e0]]}])") {
    spaced += c;
    if (c == ',' || c == ':' || c == '[' || c == '{' || c == ']' || c == '}') spaced += " \t\r\n ";
  }
  std::vector<Vertex> rows;
  EXPECT_SUCCESS(readValue<Json>("\xEF\xBB\xBF \n" + spaced, rows));
  EXPECT_EQ(rows, (std::vector<Vertex>{{1, 2}, {3.5, -4}}));
  bool flag = false;
  EXPECT_SUCCESS(readValue<Json>(g_header + R"(, {"\u0076": true}])", flag));
  EXPECT_TRUE(flag);
  EXPECT_EQ(valueOf<std::string>(R"("\ud83d\ude00\u00e9\/")"), "\xF0\x9F\x98\x80\xC3\xA9/");
  EXPECT_EQ(valueOf<std::string>(R"("\"\\\b\f\n\r\t\u0000\uD7ff\uFFFF\uDBFF\uDFFFz")"),
            std::string("\"\\\b\f\n\r\t\0\xED\x9F\xBF\xEF\xBF\xBF\xF4\x8F\xBF\xBFz", 19));
  EXPECT_TRUE(std::isnan(valueOf<omReal64>(R"("n\u0061n")")));
}

TEST(JsonText, ReadsNumbersToTheNearest) {
  EXPECT_EQ(valueOf<omReal64>("0.1000000000000000055511151231257827021181583404541015625"), 0.1);
  EXPECT_EQ(valueOf<omReal64>("0.95000000000000000000"), 0.95);
  EXPECT_EQ(valueOf<omReal32>("-0.95000000000000000000"), -0.95f);
  EXPECT_EQ(valueOf<omReal64>("1e-400"), 0);
  EXPECT_EQ(valueOf<omReal64>("0.00000000000000000000000000000001e-400"), 0);
  EXPECT_TRUE(std::signbit(valueOf<omReal64>("-0")));
  EXPECT_TRUE(std::signbit(valueOf<omReal32>("-0.0")));
  // Just above the middle of two floats: rounded by way of a double it would fall on the middle and go down.
  EXPECT_EQ(valueOf<omReal32>("1.00000005960464477540"), 1.00000011920928955078125f);
  EXPECT_EQ(valueOf<omReal32>("1.000000059604644775390625"), 1.0f);
  EXPECT_EQ(valueOf<omReal32>("1e-60"), 0.0f);
  EXPECT_EQ(valueOf<omReal32>("3.4028235e38"), std::numeric_limits<omReal32>::max());
  EXPECT_EQ(valueOf<omReal32>("7.006492321624085e-46"), 0.0f);
  EXPECT_EQ(valueOf<omReal32>("7.0064923216240854e-46"), std::numeric_limits<omReal32>::denorm_min());
}

TEST(JsonText, RefusesWhatIsNoNumber) {
  omReal64 real = 7;
  omReal32 single = 7;
  omInt64 integer = 7;
  for (const std::string& bad : split("1e400|1000000000000000000000000000e400|01|+1|.5|5.|1e|0x10|NaN|nan|Infinity|- 1|"
                                      "1,5|\"1\"|\"NAN\"|tru|null|[1]|{}|--1|1 2",
                                      '|')) {
    EXPECT_FALSE(readValue<Json>(entry(bad), real)) << bad;
    EXPECT_FALSE(readValue<Json>(entry(bad), single)) << bad;
    EXPECT_FALSE(readValue<Json>(entry(bad), integer)) << bad;
  }
  EXPECT_FAILURE(readValue<Json>(entry("1e39"), single), "a 32-bit real was wanted, the value 1e39 was found");
  EXPECT_FAILURE(readValue<Json>(entry("1.5"), integer), "a signed 64-bit integer was wanted, the value 1.5 was found");
  EXPECT_FAILURE(readValue<Json>(entry("9223372036854775808"), integer), "the value 9223372036854775808 was found");
  EXPECT_TRUE(real == 7 && single == 7 && integer == 7);
}

TEST(JsonText, RefusesWhatIsNoArchive) {
  bool flag = true;
  for (const std::string bad :
       {"", " ", "{}", "1", "[", "]", "[]", "[{}]", "[1]", "[{\"v\": true}]", "\"[]\"", "[}", "[[]]"})
    EXPECT_FALSE(Reading<Json>(bad).archive.state()) << bad;
  EXPECT_FAILURE(Reading<Json>("").archive.state(), "The archive is empty");
  EXPECT_EQ(Reading<Json>("[{}]").archive.state().getMessage().rfind("The data are not an archive"), 0u) << "said once";
  for (const std::string bad :
       {R"(, {"v": true, "w": 1}])", R"(, {}])", R"(, {"v" true}])", R"(, {"v": true]])", R"(, {"v": true}}])",
        R"( {"v": true}])", R"(, {"v": true},])", R"(, {"v": true})", R"(, {"v": true}] ])", R"(, {"v": true}] x)",
        R"(, {"v": true}][])", R"(, {v: true}])", R"(, "v", true])", R"(, {"v": }])", R"(, {"v": "\ud800"}])"})
    EXPECT_FALSE(readValue<Json>(g_header + bad, flag)) << bad;
  std::string text;
  for (const std::string bad :
       {"\\udc00", "\\ud800", "\\ud800x", "\\ud800\\n", "\\ud800\\ud800", "\\ud800\\u0041", "\\ud800\\u"})
    EXPECT_FALSE(readValue<Json>(entry('"' + bad + '"'), text)) << bad;
  for (const std::string bad : {"\\x", "\\", "\\u", "\\u12", "\\u12g4", "\\u-123", "\\u 123", "\\U0041"})
    EXPECT_FALSE(readValue<Json>(entry('"' + bad + '"'), text)) << bad;
  EXPECT_FALSE(readValue<Json>(entry("\"\n\""), text));
  EXPECT_FAILURE(Reading<Json>(R"([{"ormix-archive": [{"version": 2}, {"writer": "x"}]}])").archive.state(),
                 "format version 2, the newest known is 1");
}

TEST(JsonText, RowsAreOfOneLength) {
  std::vector<Vertex> rows;
  for (const std::string& bad : split("[1, 2]|[[1]]|[[1, 2, 3]]|[[1, 2], []]|[[1, [2]]]|[[1, 2], 3]|[[1, 2]", '|'))
    EXPECT_FALSE(readValue<Json>(entry(bad), rows)) << bad;
  EXPECT_FAILURE(readValue<Json>(entry("[[1, 2, 3]]"), rows), "\"v\": rows of 2 numbers were wanted");
}

}  // namespace
