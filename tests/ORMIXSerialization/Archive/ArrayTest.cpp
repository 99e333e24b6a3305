#include "ArchiveFormats.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace {

using namespace ormix;
using namespace sample;

template <class Format>
using Arrays = ArchiveTest<Format>;
TYPED_TEST_SUITE(Arrays, Formats);

template <class Format, class V>
std::vector<V> roundTrip(const std::vector<V>& values) {
  const std::string bytes = archived<Format>([&](BaseOArchive& archive) {
    EXPECT_SUCCESS(writeItem(archive, "values", values));
    EXPECT_SUCCESS(writeItem(archive, "after", true));
  });
  Reading<Format> reading(bytes);
  std::vector<V> read(3);
  bool after = false;
  EXPECT_SUCCESS(readItem(reading.archive, "values", read));
  EXPECT_SUCCESS(readItem(reading.archive, "after", after));
  EXPECT_SUCCESS(reading.archive.close());
  EXPECT_TRUE(after);
  return read;
}

template <class Format, class T>
void expectSame() {
  using Limits = std::numeric_limits<T>;
  const std::vector<T> values{T(0), T(1), Limits::min(), Limits::max(), Limits::lowest(), T(100)};
  EXPECT_EQ(roundTrip<Format>(values), values);
  EXPECT_EQ(roundTrip<Format>(std::vector<T>()), std::vector<T>());
}

TYPED_TEST(Arrays, OfEveryNumber) {
  expectSame<TypeParam, omInt32>();
  expectSame<TypeParam, omUInt32>();
  expectSame<TypeParam, omInt64>();
  expectSame<TypeParam, omUInt64>();
  expectSame<TypeParam, omReal32>();
  expectSame<TypeParam, omReal64>();
  expectSame<TypeParam, unsigned long long>();
}

TYPED_TEST(Arrays, OfRealsThatAreNoNumbers) {
  const omReal32 infinity = std::numeric_limits<omReal32>::infinity();
  const std::vector<omReal32> read =
      roundTrip<TypeParam>(std::vector<omReal32>{infinity, -infinity, std::nanf(""), -0.0f});
  EXPECT_EQ(read[0], infinity);
  EXPECT_EQ(read[1], -infinity);
  EXPECT_TRUE(std::isnan(read[2]));
  EXPECT_TRUE(std::signbit(read[3]));
}

TYPED_TEST(Arrays, OfCoordinatesAroundTheBlockSize) {
  for (const std::size_t size : {0u, 1u, 4095u, 4096u, 4097u, 100000u}) {
    std::vector<Vertex> vertices(size);
    for (std::size_t at = 0; at < size; ++at) vertices[at] = {std::sqrt(omReal64(at)), -omReal64(at)};
    EXPECT_EQ(roundTrip<TypeParam>(vertices), vertices) << size;
  }
}

// Any bit pattern that is a number comes back as it was.
TYPED_TEST(Arrays, OfRandomBits) {
  const unsigned seed = std::random_device()();
  std::mt19937_64 random(seed);
  std::vector<omReal64> wide;
  std::vector<omReal32> narrow;
  while (wide.size() < 50000) {
    const omUInt64 bits = random();
    const auto low = static_cast<omUInt32>(bits);
    omReal64 real = 0;
    omReal32 single = 0;
    std::memcpy(&real, &bits, sizeof real);
    std::memcpy(&single, &low, sizeof single);
    if (!std::isnan(real)) wide.push_back(real);
    if (!std::isnan(single)) narrow.push_back(single);
  }
  EXPECT_EQ(roundTrip<TypeParam>(wide), wide) << "seed " << seed;
  EXPECT_EQ(roundTrip<TypeParam>(narrow), narrow) << "seed " << seed;
}

TYPED_TEST(Arrays, RefuseAnotherWidth) {
  const std::string bytes = archived<TypeParam>([](BaseOArchive& archive) {
    const std::vector<omReal64> numbers{1, 2, 3, 4, 5, 6};
    archive.writeArray("values", {eArrayScalar::Real64, numbers.data(), 2, 3});
  });
  std::vector<Vertex> vertices{{7, 8}};
  EXPECT_FAILURE(readItem(Reading<TypeParam>(bytes).get(), "values", vertices), "rows of 2 numbers were wanted");
  EXPECT_EQ(vertices, (std::vector<Vertex>{{7, 8}}));
}

TYPED_TEST(Arrays, RefuseNumbersThatDoNotFit) {
  std::vector<omInt32> integers{7};
  const std::string big = archived<TypeParam>([](BaseOArchive& archive) {
    writeItem(archive, "values", std::vector<omInt64>{1, 2147483648});
  });
  const std::string reals = archived<TypeParam>([](BaseOArchive& archive) {
    writeItem(archive, "values", std::vector<omReal64>{1, 0.5});
  });
  const std::string small = archived<TypeParam>([](BaseOArchive& archive) {
    writeItem(archive, "values", std::vector<omInt64>{1, -2147483648});
  });
  EXPECT_FAILURE(readItem(Reading<TypeParam>(big).get(), "values", integers), "\"values\"");
  EXPECT_FAILURE(readItem(Reading<TypeParam>(reals).get(), "values", integers), "\"values\"");
  EXPECT_EQ(integers, std::vector<omInt32>{7});
  EXPECT_SUCCESS(readItem(Reading<TypeParam>(small).get(), "values", integers));
  EXPECT_EQ(integers, (std::vector<omInt32>{1, -2147483647 - 1}));
}

TYPED_TEST(Arrays, RealsTakeIntegersAndNarrowerReals) {
  std::vector<omReal64> wide;
  const std::string integers = archived<TypeParam>([](BaseOArchive& archive) {
    writeItem(archive, "values", std::vector<omInt64>{-3, 4});
  });
  const std::string singles = archived<TypeParam>([](BaseOArchive& archive) {
    writeItem(archive, "values", std::vector<omReal32>{0.5f, 4});
  });
  EXPECT_SUCCESS(readItem(Reading<TypeParam>(integers).get(), "values", wide));
  EXPECT_EQ(wide, (std::vector<omReal64>{-3, 4}));
  EXPECT_SUCCESS(readItem(Reading<TypeParam>(singles).get(), "values", wide));
  EXPECT_EQ(wide, (std::vector<omReal64>{0.5, 4}));
}

}  // namespace
