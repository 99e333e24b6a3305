
#include "SampleClasses.h"
#include "support/ArchiveFormats.h"
#include "support/Checks.h"
#include "support/Random.h"

namespace {

using namespace ormix;
using namespace sample;
using namespace support;

/// Bytes from hexadecimal digits; anything else between them is skipped.
std::string hex(std::string_view digits) {
  std::string bytes;
  int high = -1;
  for (const char c : digits) {
    const int value = c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
    if (value < 0) continue;
    if (high >= 0) bytes += static_cast<char>(high * 16 + value);
    high = high >= 0 ? -1 : value;
  }
  return bytes;
}

/// {"ormix-archive": [{"version": 1}, {"writer": "x"}]} with lists of stated length.
const std::string g_header =
    hex("a1 6d") + "ormix-archive" + hex("82 a1 67") + "version" + hex("01 a1 66") + "writer" + hex("61 78");

/// An archive of one entry with key "v" and this value.
std::string entry(std::string_view value) { return hex("82") + g_header + hex("a1 61 76") + hex(value); }

template <class V>
V valueOf(std::string_view value) {
  V read{};
  EXPECT_SUCCESS(readValue<Cbor>(entry(value), read));
  return read;
}

TEST(CborBytes, AreThoseOfTheStandard) {
  const std::string bytes = archived<Cbor>([](BaseOArchive& archive) {
    writeItem(archive, "p", std::vector<Vertex>{{0, 0}, {10, -1}});
    writeItem(archive, "n", std::vector<omInt32>{1, -2});
    archive.writeInteger("i", -500);
    archive.writeReal("r", 1.5);
    archive.writeReal("f", 1.5f);
    archive.writeBool("b", true);
    archive.beginSection("s");
    archive.writeText("t", "\xC3\xA9");
    archive.endSection();
  });
  const std::string writer = "ORMIX " + getSDKStrVersion();
  const std::string expected = hex("9f a1 6d") + "ormix-archive" + hex("9f a1 67") + "version" + hex("01 a1 66") +
                               "writer" + static_cast<char>(0x60 + writer.size()) + writer + hex("ff") +
                               hex("a1 61 70 d8 28 82 82 02 02 d8 56 58 20 0000000000000000 0000000000000000 "
                                   "0000000000002440 000000000000f0bf") +
                               hex("a1 61 6e d8 4e 48 01000000 feffffff") + hex("a1 61 69 39 01f3") +
                               hex("a1 61 72 fb 3ff8000000000000") + hex("a1 61 66 fa 3fc00000") + hex("a1 61 62 f5") +
                               hex("a1 61 73 9f a1 61 74 62 c3 a9 ff") + hex("ff");
  EXPECT_EQ(bytes, expected);
}

TEST(CborBytes, RealsOfEveryWidthAreRead) {
  EXPECT_EQ(valueOf<omReal64>("f9 3e00"), 1.5);
  EXPECT_EQ(valueOf<omReal64>("fa 3fc00000"), 1.5);
  EXPECT_EQ(valueOf<omReal64>("03"), 3);
  EXPECT_EQ(valueOf<omReal64>("38 63"), -100);
  EXPECT_EQ(valueOf<omReal64>("3b ffffffffffffffff"), -18446744073709551616.0);
  EXPECT_EQ(valueOf<omReal32>("fb 3ff8000000000000"), 1.5f);
  EXPECT_TRUE(std::isinf(valueOf<omReal32>("fb 7ff0000000000000")));
  EXPECT_TRUE(std::isnan(valueOf<omReal32>("f9 7e00")));
  omReal32 value = 7;
  EXPECT_FAILURE(readValue<Cbor>(entry("fb 7fefffffffffffff"), value), "out of range");
  EXPECT_EQ(value, 7);
  // The payload of a signalling NaN, too.
  const std::string bytes =
      archived<Cbor>([](BaseOArchive& archive) { archive.writeReal("v", fromBits<omReal32>(0x7FA12345)); });
  EXPECT_NE(bytes.find(hex("fa 7fa12345")), std::string::npos);
  EXPECT_SUCCESS(readValue<Cbor>(bytes, value));
  EXPECT_EQ(bitsOf(value), 0x7FA12345u);
}

TEST(CborBytes, OtherSpellingsOfAnArchiveAreRead) {
  // Lists and maps of unstated length, a text in pieces, heads longer than needed, the tag of self-described CBOR.
  const std::string bytes = hex("d9 d9f7 9f") + g_header + hex("bf 7f 61 76 60 ff bf 00");
  bool flag = false;
  EXPECT_FALSE(readValue<Cbor>(bytes, flag));
  EXPECT_SUCCESS(readValue<Cbor>(hex("d9 d9f7 9f") + g_header + hex("bf 7f 61 76 60 ff f5 ff ff"), flag));
  EXPECT_TRUE(flag);
  EXPECT_SUCCESS(readValue<Cbor>(hex("9b 0000000000000002") + g_header + hex("b9 0001 78 01 76 f4"), flag));
  EXPECT_FALSE(flag);
  EXPECT_EQ(valueOf<omUInt64>("1b 0000000000000005"), 5u);
  EXPECT_EQ(valueOf<std::string>("7f 62 c3a9 61 21 ff"), "\xC3\xA9!");
}

TEST(CborBytes, LengthsAreComparedWithWhatIsLeft) {
  std::string text;
  EXPECT_FAILURE(readValue<Cbor>(entry("7a 7fffffff 61"), text), "2147483647");
  EXPECT_EQ(text, "");
}

TEST(CborBytes, EntriesAreOnePair) {
  const auto refuses = [](std::string_view item, const char* why) {
    bool flag = true;
    EXPECT_FAILURE(readValue<Cbor>(hex("82") + g_header + hex(item), flag), why);
  };
  for (const char* item : {"a2 61 76 f4 61 77 f4", "a0", "bf 61 76 f4 61 77 f4 ff"})
    refuses(item, "not one key with one value");
  refuses("bf ff", "a key was wanted");
  refuses("a1 01 f4", "a key was wanted, an integer was found");
  refuses("01", "an entry was wanted, an integer was found");
}

TEST(CborBytes, NumericArraysOfOtherSpellings) {
  using Numbers = std::vector<omReal64>;
  EXPECT_EQ(valueOf<Numbers>("83 01 f9 3e00 20"), (Numbers{1, 1.5, -1}));
  EXPECT_EQ(valueOf<Numbers>("9f 01 ff"), Numbers{1});
  EXPECT_EQ(valueOf<Numbers>("d8 52 48 3ff8000000000000"), Numbers{1.5});  // big-endian doubles
  EXPECT_EQ(valueOf<Numbers>("d8 51 44 3fc00000"), Numbers{1.5});          // big-endian floats
  EXPECT_EQ(valueOf<Numbers>("d8 54 4a 003e 01 00 00 7c 00fc ff83"),
            (Numbers{1.5, std::ldexp(1.0, -24), INFINITY, -INFINITY, -std::ldexp(1023.0, -24)}));
  EXPECT_EQ(valueOf<Numbers>("d8 40 42 01 ff"), (Numbers{1, 255}));  // bytes
  EXPECT_EQ(valueOf<Numbers>("d8 48 42 01 ff"), (Numbers{1, -1}));   // signed bytes
  EXPECT_EQ(valueOf<std::vector<omInt32>>("d8 4b 48 fffffffffffffffe"), std::vector<omInt32>{-2});
  EXPECT_EQ(valueOf<std::vector<omUInt64>>("d8 41 42 0102"), std::vector<omUInt64>{258});
}

TEST(CborBytes, RowsOfOtherSpellings) {
  using Rows = std::vector<Vertex>;
  EXPECT_EQ(valueOf<Rows>("82 82 00 01 9f 02 03 ff"), (Rows{{0, 1}, {2, 3}}));
  EXPECT_EQ(valueOf<Rows>("d8 28 82 82 02 02 84 00 01 02 03"), (Rows{{0, 1}, {2, 3}}));
  EXPECT_EQ(valueOf<Rows>("d8 28 82 82 01 02 d8 55 48 00000000 0000803f"), (Rows{{0, 1}}));
  const auto refuses = [](auto value, std::string_view bytes, const char* why) {
    EXPECT_FAILURE(readValue<Cbor>(entry(bytes), value), why);
  };
  for (const char* bytes : {"d8 28 82 82 03 02 84 00 01 02 03", "d8 28 82 82 02 02 d8 55 44 00000000",
                            "d8 28 82 82 1b 8000000000000001 02 d8 55 48 00000000 0000803f"})
    refuses(Rows(), bytes, "than the shape says");
  refuses(Rows(), "82 82 00 01 81 02", "a row of another length");
  refuses(Rows(), "d8 56 40", "without its shape");
  refuses(Rows(), "d8 28 82 83 01 01 01 80", "two dimensions");
  using Numbers = std::vector<omReal64>;
  refuses(Numbers(), "d8 28 82 82 01 01 d8 56 48 0000000000000000", "several dimensions");
  refuses(Numbers(), "d8 56 47 00000000000000", "a part of a number");
  refuses(Numbers(), "d8 57 50 00000000000000000000000000000000", "an array of numbers was wanted");
  refuses(Numbers(), "82 01 61 76", "a number was wanted, a text was found");
}

TEST(CborBytes, AnotherFormatIsRefused) {
  EXPECT_FAILURE(Reading<Cbor>("").archive.state(), "The archive is empty");
  EXPECT_FAILURE(Reading<Cbor>(hex("81 a1 61 76 01")).archive.state(), "not an archive of this family");
  EXPECT_FAILURE(Reading<Cbor>(hex("01")).archive.state(), "not an archive of this family");
  const std::string newer =
      hex("81 a1 6d") + "ormix-archive" + hex("82 a1 67") + "version" + hex("02 a1 66") + "writer" + hex("61 78");
  EXPECT_FAILURE(Reading<Cbor>(newer).archive.state(), "format version 2, the newest known is 1");
  EXPECT_SUCCESS(Reading<Cbor>(hex("81") + g_header).archive.close());
}

/// An item near the end of the stream and one in its middle are decoded in two ways.
TEST(CborBytes, AreReadAlikeAtTheEndAndBefore) {
  Random random(18);
  for (unsigned first = 0; first < 256; ++first) {
    std::string item(1, static_cast<char>(first));
    const unsigned info = first & 31u;
    for (unsigned left = info < 24 || info > 27 ? 0 : 1u << (info - 24); left != 0; --left)
      item += static_cast<char>(random.below(256));
    const std::string start = hex("9f") + g_header + hex("a1 61 76") + item;
    const auto outcome = [](const std::string& bytes, auto value) {
      Reading<Cbor> reading(bytes);
      const BoolResult result = readItem(reading.archive, "v", value);
      std::ostringstream text;
      text << std::hexfloat << value << result.getMessage();
      return text.str();
    };
    const std::string padded = start + std::string(20, '\x80');
    EXPECT_EQ(outcome(start, omReal64(0)), outcome(padded, omReal64(0))) << first;
    EXPECT_EQ(outcome(start, omReal32(0)), outcome(padded, omReal32(0))) << first;
    EXPECT_EQ(outcome(start, omInt64(0)), outcome(padded, omInt64(0))) << first;
    EXPECT_EQ(outcome(start, omUInt64(0)), outcome(padded, omUInt64(0))) << first;
  }
}

}  // namespace
