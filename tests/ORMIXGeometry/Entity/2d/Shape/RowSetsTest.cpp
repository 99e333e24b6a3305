#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/MaskView.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowSetOperations.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <string>

#include "support/Checks.h"
#include "support/Random.h"

// Everything on sets of pixels against an image of one number a pixel, and the plainest loops over it.
namespace {

using namespace ormix;
using namespace ormix::geom;

struct Image {
  int width, height;
  std::vector<int> pixels = std::vector<int>(static_cast<std::size_t>(width * height));

  int& at(int x, int y) { return pixels[static_cast<std::size_t>(y * width + x)]; }
  int get(int x, int y) const {
    return x < 0 || y < 0 || x >= width || y >= height ? 0 : pixels[static_cast<std::size_t>(y * width + x)];
  }
  template <class F>
  Image map(F pixel) const {
    Image result{width, height};
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x) result.at(x, y) = pixel(x, y);
    return result;
  }
};

/// The pixels with this value, or all that are not 0; their runs joined, or one for each pixel.
RowIntersections rowsOf(const Image& image, int value = 0, bool joined = true) {
  RowIntersections rows;
  const auto isIn = [&](int x, int y) { return value != 0 ? image.get(x, y) == value : image.get(x, y) != 0; };
  for (int y = 0; y < image.height; ++y)
    for (int x = 0, end; x < image.width; x = end) {
      end = x + 1;
      if (!isIn(x, y)) continue;
      while (joined && end < image.width && isIn(end, y)) ++end;
      EXPECT_TRUE(rows.addRun(static_cast<omUInt64>(y), static_cast<omUInt32>(x), static_cast<omUInt32>(end)));
    }
  return rows;
}

Image randomImage(support::Random& random, int width, int height, int nbValues = 2) {
  const omUInt32 density = 1 + random.below(10);
  const omUInt32 coherence = random.below(10);  // how often a pixel repeats the one to the left
  Image image{width, height};
  return image.map([&](int x, int y) {
    if (x > 0 && random.below(10) < coherence) return image.at(x, y) = image.get(x - 1, y);
    return image.at(x, y) =
               random.below(10) < density ? 1 + static_cast<int>(random.below(static_cast<omUInt32>(nbValues - 1))) : 0;
  });
}

/// All images of 3 × 3 pixels, and random ones of all kinds of widths.
void forImages(const std::function<void(const Image&, support::Random&)>& check) {
  support::Random random(7);
  for (int mask = 0; mask < 512; ++mask)
    check(Image{3, 3}.map([mask](int x, int y) { return mask >> (3 * y + x) & 1; }), random);
  for (int round = 0; round < 150 && !::testing::Test::HasFailure(); ++round) {
    const int width = 1 + static_cast<int>(random.below(round % 5 == 0 ? 200 : 20));
    check(randomImage(random, width, 1 + static_cast<int>(random.below(16))), random);
  }
}

template <class T>
void expectMaskIsRead(const Image& image, const RowIntersections& expected) {
  const std::size_t stride = static_cast<std::size_t>(image.width) + 3;
  const auto height = static_cast<std::size_t>(image.height);
  std::vector<T> pixels(stride * height, T{77});
  for (int y = 0; y < image.height; ++y)
    for (int x = 0; x < image.width; ++x)
      pixels[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x)] =
          image.get(x, y) != 0 ? static_cast<T>(T{1} << (static_cast<unsigned>(x) % (8 * sizeof(T)))) : T{0};
  const MaskView<T> view{pixels.data(), stride - 3, height, stride};
  EXPECT_EQ(toRowIntersections(view), expected);
  ASSERT_TRUE(toMask(expected, view, 5));
  for (std::size_t index = 0; index < pixels.size(); ++index) {
    const bool isInside = index % stride < view.width && contains(expected, index % stride, index / stride);
    ASSERT_EQ(pixels[index], index % stride >= view.width ? T{77} : isInside ? T{5} : T{0});
  }
}

TEST(RowSets, AreThePixelsOfMasks) {
  forImages([](const Image& image, support::Random&) {
    const RowIntersections rows = rowsOf(image);
    EXPECT_EQ(normalized(rowsOf(image, 0, false)), rows);
    expectMaskIsRead<omUInt8>(image, rows);
    expectMaskIsRead<omUInt16>(image, rows);
    expectMaskIsRead<omUInt32>(image, rows);
    expectMaskIsRead<omInt32>(image, rows);
  });
  // Rows that are read in several pieces, with runs from one piece to the next.
  std::vector<omUInt8> wide(20000, 1);
  for (const std::size_t gap : {0u, 4095u, 4096u, 8191u, 19999u}) wide[gap] = 0;
  EXPECT_EQ(toRowIntersections(MaskView<omUInt8>{wide.data(), wide.size(), 1, wide.size()}).getRunColl(),
            (RowIntersections::RunColl{{1, 4095}, {4097, 8191}, {8192, 19999}}));
}

TEST(RowSets, AreCombinedAsTheirPixels) {
  forImages([](const Image& a, support::Random& random) {
    const Image b = randomImage(random, a.width, a.height);
    const auto expected = [&](auto keeps) {
      return rowsOf(a.map([&](int x, int y) { return keeps(a.get(x, y), b.get(x, y)); }));
    };
    const RowIntersections rowsOfA = rowsOf(a, 0, random.below(2) == 0);
    const RowIntersections rowsOfB = rowsOf(b, 0, random.below(2) == 0);
    EXPECT_EQ(unite(rowsOfA, rowsOfB), expected([](int p, int q) { return p | q; }));
    EXPECT_EQ(intersect(rowsOfA, rowsOfB), expected([](int p, int q) { return p & q; }));
    EXPECT_EQ(subtract(rowsOfA, rowsOfB), expected([](int p, int q) { return p & ~q; }));
    EXPECT_EQ(exclude(rowsOfA, rowsOfB), expected([](int p, int q) { return p ^ q; }));
    const BoundingBox2d<omReal64> box(1, 1, a.width, a.height + 1);
    EXPECT_EQ(
        complement(rowsOfA, box),
        rowsOf(Image{a.width, a.height + 1}.map([&](int x, int y) { return x > 0 && y > 0 && a.get(x, y) == 0; })));
    const RowIntersections moved = translate(rowsOfA, 4294960000, 1L << 62);
    EXPECT_EQ(translate(moved, -4294960000, -(1L << 62)), normalized(rowsOfA));
    EXPECT_EQ(unite(moved, translate(rowsOfB, 4294960000, 1L << 62)),
              translate(unite(rowsOfA, rowsOfB), 4294960000, 1L << 62));
    for (int y = -1; y <= a.height; ++y)
      for (int x = -1; x <= a.width; ++x)
        EXPECT_EQ(contains(rowsOfA, static_cast<omUInt64>(x), static_cast<omUInt64>(y)), a.get(x, y) != 0);
  });
}

}  // namespace
