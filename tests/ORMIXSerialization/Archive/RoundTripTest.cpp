#include "ArchiveFormats.h"

#include <cstring>
#include <limits>

namespace {

using namespace ormix;
using namespace sample;

template <class Format>
using RoundTrip = ArchiveTest<Format>;
TYPED_TEST_SUITE(RoundTrip, Formats);

template <class Format, class V>
V roundTrip(const V& value) {
  const std::string bytes =
      archived<Format>([&](BaseOArchive& archive) { EXPECT_SUCCESS(writeItem(archive, "value", value)); });
  Reading<Format> reading(bytes);
  V read{};
  EXPECT_SUCCESS(readItem(reading.archive, "value", read));
  EXPECT_SUCCESS(reading.archive.close());
  return read;
}

template <class T>
bool sameBits(T a, T b) {
  return std::memcmp(&a, &b, sizeof a) == 0 || (a != a && b != b);
}

template <class Format, class T>
void expectSameReals() {
  using Limits = std::numeric_limits<T>;
  for (const T value : {T(0), -T(0), T(1), T(0.1), T(1) / T(3), Limits::max(), Limits::lowest(), Limits::min(),
                        Limits::denorm_min(), -Limits::denorm_min(), Limits::epsilon(), Limits::infinity(),
                        -Limits::infinity(), Limits::quiet_NaN(), T(16777217), T(1e21), T(123456789012345678.0)})
    EXPECT_TRUE(sameBits(roundTrip<Format>(value), value)) << value;
}

template <class Format, class T>
void expectSameIntegers() {
  using Limits = std::numeric_limits<T>;
  for (const T value : {T(0), T(1), T(23), T(24), T(100), Limits::min(), Limits::max()})
    EXPECT_EQ(roundTrip<Format>(value), value);
}

TYPED_TEST(RoundTrip, RealsKeepTheirBits) {
  expectSameReals<TypeParam, omReal64>();
  expectSameReals<TypeParam, omReal32>();
}

TYPED_TEST(RoundTrip, IntegersReachTheirLimits) {
  expectSameIntegers<TypeParam, omInt8>();
  expectSameIntegers<TypeParam, omUInt8>();
  expectSameIntegers<TypeParam, omInt16>();
  expectSameIntegers<TypeParam, omUInt16>();
  expectSameIntegers<TypeParam, omInt32>();
  expectSameIntegers<TypeParam, omUInt32>();
  expectSameIntegers<TypeParam, omInt64>();
  expectSameIntegers<TypeParam, omUInt64>();
  expectSameIntegers<TypeParam, long long>();
}

TYPED_TEST(RoundTrip, BoolsTextsAndEnumerators) {
  EXPECT_TRUE(roundTrip<TypeParam>(true));
  EXPECT_FALSE(roundTrip<TypeParam>(false));
  EXPECT_EQ(roundTrip<TypeParam>(eK_Inner), eK_Inner);
  std::string everyCharacter;
  for (char c = 0; c != 127; ++c) everyCharacter += c;
  for (const std::string& text : {std::string(), everyCharacter, std::string("\xF0\x9F\x98\x80 \xE2\x82\xAC"),
                                  std::string(200000, 'x') + "\xC3\xA9"})
    EXPECT_EQ(roundTrip<TypeParam>(text), text);
}

TYPED_TEST(RoundTrip, ObjectsInsideObjects) {
  const Tree tree = sampleTree(3);
  EXPECT_EQ(describe(roundTrip<TypeParam>(tree)), describe(tree));
}

TYPED_TEST(RoundTrip, KeysMayRepeatAndHoldAnything) {
  const std::string odd = "\"\\\n\xE2\x82\xAC ";
  const std::string bytes = archived<TypeParam>([&](BaseOArchive& archive) {
    archive.writeInteger(odd, -1);
    archive.writeInteger(odd, -2);
    archive.writeInteger("", -3);
    archive.writeInteger(std::string(300, 'k'), -4);
    archive.writeInteger(std::string(70000, 'k'), -5);
  });
  Reading<TypeParam> reading(bytes);
  omInt64 value = 0;
  EXPECT_EQ(reading.archive.nextKey(), odd);
  for (const auto& [key, expected] : {std::pair(odd, -1),
                                      {odd, -2},
                                      {std::string(), -3},
                                      {std::string(300, 'k'), -4},
                                      {std::string(70000, 'k'), -5}}) {
    EXPECT_SUCCESS(reading.archive.readInteger(key, value));
    EXPECT_EQ(value, expected);
  }
  EXPECT_EQ(reading.archive.nextKey(), std::nullopt);
  EXPECT_SUCCESS(reading.archive.close());
}

TYPED_TEST(RoundTrip, HeaderNamesFormatAndWriter) {
  const std::string bytes = archived<TypeParam>([](BaseOArchive&) {});
  EXPECT_NE(bytes.find("ormix-archive"), std::string::npos);
  EXPECT_NE(bytes.find("ORMIX " + getSDKStrVersion()), std::string::npos);
}

}  // namespace
