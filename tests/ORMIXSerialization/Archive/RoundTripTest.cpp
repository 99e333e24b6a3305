
#include "SampleClasses.h"
#include "support/ArchiveFormats.h"
#include "support/Checks.h"
#include "support/Random.h"

namespace {

using namespace ormix;
using namespace sample;
using namespace support;

template <class Format>
using RoundTrip = ArchiveTest<Format>;
TYPED_TEST_SUITE(RoundTrip, Formats);

/// The value after it was archived, with another entry behind it.
template <class Format, class V>
V roundTrip(const V& value, V read = {}) {
  Reading<Format> reading(archived<Format>([&](BaseOArchive& archive) {
    EXPECT_SUCCESS(writeItem(archive, "value", value));
    EXPECT_SUCCESS(writeItem(archive, "after", true));
  }));
  bool after = false;
  EXPECT_SUCCESS(readItem(reading.archive, "value", read));
  EXPECT_SUCCESS(readItem(reading.archive, "after", after));
  EXPECT_SUCCESS(reading.archive.close());
  EXPECT_TRUE(after);
  return read;
}

template <class T>
bool sameBits(T a, T b) {
  return bitsOf(a) == bitsOf(b) || (a != a && b != b);
}

template <class Format, class T>
void expectSameReals() {
  using Limits = std::numeric_limits<T>;
  std::vector<T> values;
  for (const T value : {T(0), -T(0), T(1), T(0.1), T(1) / T(3), T(16777217), T(1e21), T(123456789012345678.0),
                        Limits::max(), Limits::lowest(), Limits::min(), Limits::denorm_min(), -Limits::denorm_min(),
                        Limits::epsilon(), Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
    values.push_back(value);
    EXPECT_TRUE(sameBits(roundTrip<Format>(value), value)) << value;
  }
  Random random(5);
  while (values.size() < 20000) values.push_back(random.bits<T>());
  const std::vector<T> read = roundTrip<Format>(values, std::vector<T>(3));
  ASSERT_EQ(read.size(), values.size());
  for (std::size_t at = 0; at < values.size(); ++at) ASSERT_TRUE(sameBits(read[at], values[at])) << values[at];
}

template <class Format, class... T>
void expectSameIntegers() {
  const auto expectSame = [](auto type) {
    using Limits = std::numeric_limits<decltype(type)>;
    const std::vector<decltype(type)> values{0, 1, 23, 24, 100, Limits::min(), Limits::max()};
    for (const auto value : values) EXPECT_EQ(roundTrip<Format>(value), value);
    if constexpr (sizeof(type) >= 4) {
      EXPECT_EQ(roundTrip<Format>(values), values);
    }
  };
  (expectSame(T()), ...);
}

TYPED_TEST(RoundTrip, NumbersKeepTheirBits) {
  expectSameReals<TypeParam, omReal64>();
  expectSameReals<TypeParam, omReal32>();
  expectSameIntegers<TypeParam, omInt8, omUInt8, omInt16, omUInt16, omInt32, omUInt32, omInt64, omUInt64, long long,
                     unsigned long long>();
}

TYPED_TEST(RoundTrip, CoordinatesAroundTheBlockSize) {
  for (const std::size_t size : {0u, 1u, 4095u, 4096u, 4097u, 100000u}) {
    std::vector<Vertex> vertices(size);
    for (std::size_t at = 0; at < size; ++at) vertices[at] = {std::sqrt(omReal64(at)), -omReal64(at)};
    EXPECT_EQ(roundTrip<TypeParam>(vertices), vertices) << size;
  }
}

TYPED_TEST(RoundTrip, BoolsTextsEnumeratorsAndObjects) {
  EXPECT_TRUE(roundTrip<TypeParam>(true));
  EXPECT_FALSE(roundTrip<TypeParam>(false, true));
  EXPECT_EQ(roundTrip<TypeParam>(eK_Inner), eK_Inner);
  std::string everyCharacter;
  for (char c = 0; c != 127; ++c) everyCharacter += c;
  for (const std::string& text : {std::string(), everyCharacter, std::string("\xF0\x9F\x98\x80 \xE2\x82\xAC"),
                                  std::string(200000, 'x') + "\xC3\xA9"})
    EXPECT_EQ(roundTrip<TypeParam>(text), text);
  EXPECT_EQ(describe(roundTrip<TypeParam>(sampleTree(3))), describe(sampleTree(3)));
}

TYPED_TEST(RoundTrip, KeysMayRepeatAndHoldAnything) {
  const std::string odd = "\"\\\n\xE2\x82\xAC ";
  const std::array<std::string, 5> keys{odd, odd, "", std::string(300, 'k'), std::string(70000, 'k')};
  Reading<TypeParam> reading(archived<TypeParam>([&](BaseOArchive& archive) {
    for (std::size_t at = 0; at < keys.size(); ++at) archive.writeInteger(keys[at], omInt64(at));
  }));
  EXPECT_EQ(reading.archive.nextKey(), odd);
  for (std::size_t at = 0; at < keys.size(); ++at) {
    omInt64 value = -1;
    EXPECT_SUCCESS(reading.archive.readInteger(keys[at], value));
    EXPECT_EQ(value, omInt64(at));
  }
  EXPECT_EQ(reading.archive.nextKey(), std::nullopt);
  EXPECT_SUCCESS(reading.archive.close());
}

/// Reads an array as one of other numbers, into which it may not fit.
template <class Format, class Archived, class V>
BoolResult readAs(const std::vector<Archived>& values, std::vector<V>& read) {
  const std::string bytes = archived<Format>([&](BaseOArchive& archive) { writeItem(archive, "values", values); });
  return readItem(Reading<Format>(bytes).get(), "values", read);
}

TYPED_TEST(RoundTrip, ArraysBecomeOthersOnlyWhereTheyFit) {
  std::vector<omInt32> integers{7};
  EXPECT_FAILURE(readAs<TypeParam>(std::vector<omInt64>{1, 2147483648}, integers), "\"values\"");
  EXPECT_FAILURE(readAs<TypeParam>(std::vector<omReal64>{1, 0.5}, integers), "\"values\"");
  EXPECT_EQ(integers, std::vector<omInt32>{7});
  EXPECT_SUCCESS(readAs<TypeParam>(std::vector<omInt64>{1, -2147483648}, integers));
  EXPECT_EQ(integers, (std::vector<omInt32>{1, -2147483647 - 1}));
  std::vector<omReal64> reals;
  EXPECT_SUCCESS(readAs<TypeParam>(std::vector<omInt64>{-3, 4}, reals));
  EXPECT_EQ(reals, (std::vector<omReal64>{-3, 4}));
  EXPECT_SUCCESS(readAs<TypeParam>(std::vector<omReal32>{0.5f, 4}, reals));
  EXPECT_EQ(reals, (std::vector<omReal64>{0.5, 4}));
  const std::string rows = archived<TypeParam>([&](BaseOArchive& archive) {
    const omReal64 numbers[] = {1, 2, 3, 4, 5, 6};
    archive.writeArray("values", {eArrayScalar::Real64, numbers, 2, 3});
  });
  std::vector<Vertex> vertices{{7, 8}};
  EXPECT_FAILURE(readItem(Reading<TypeParam>(rows).get(), "values", vertices), "rows of 2 numbers were wanted");
  EXPECT_EQ(vertices, (std::vector<Vertex>{{7, 8}}));
}

}  // namespace
