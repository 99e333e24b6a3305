#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/ConnectedComponents.h>
#include <ORMIXGeometry/Entity/2d/Shape/LabelledRows.h>
#include <ORMIXGeometry/Entity/2d/Shape/MaskView.h>
#include <ORMIXGeometry/Entity/2d/Shape/OpenComponents.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowMorphology.h>
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
using geom::detail::OpenComponents;

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

/// Numbers the components of the pixels of the same value as (x, y), by flooding, and says whether they touch the edge.
bool flood(const Image& image, int x, int y, ePixelConnectivity connectivity, int number, Image& numbers) {
  bool touchesEdge = false;
  std::vector<std::pair<int, int>> open{{x, y}};
  numbers.at(x, y) = number;
  while (!open.empty()) {
    const auto [px, py] = open.back();
    open.pop_back();
    touchesEdge |= px == 0 || py == 0 || px == image.width - 1 || py == image.height - 1;
    for (int qy = std::max(py - 1, 0); qy <= std::min(py + 1, image.height - 1); ++qy)
      for (int qx = std::max(px - 1, 0); qx <= std::min(px + 1, image.width - 1); ++qx) {
        if (numbers.at(qx, qy) != 0 || !image.get(qx, qy) != !image.get(x, y)) continue;
        if (connectivity == ePC_4 && qx != px && qy != py) continue;
        numbers.at(qx, qy) = number;
        open.emplace_back(qx, qy);
      }
  }
  return touchesEdge;
}

std::vector<RowIntersections> floodedComponents(const Image& image, ePixelConnectivity connectivity) {
  Image numbers{image.width, image.height};
  std::vector<RowIntersections> components;
  for (int y = 0; y < image.height; ++y)
    for (int x = 0; x < image.width; ++x) {
      if (image.get(x, y) == 0 || numbers.get(x, y) != 0) continue;
      const int number = static_cast<int>(components.size()) + 1;
      flood(image, x, y, connectivity, number, numbers);
      components.push_back(rowsOf(numbers, number));
    }
  return components;
}

Image filledImage(const Image& image, ePixelConnectivity connectivity) {
  Image numbers{image.width, image.height};
  Image filled = image;
  for (int y = 0, number = 1; y < image.height; ++y)
    for (int x = 0; x < image.width; ++x)
      if (image.get(x, y) == 0 && numbers.get(x, y) == 0 &&
          !flood(image, x, y, connectivity == ePC_4 ? ePC_8 : ePC_4, number, numbers))
        for (int& pixel : filled.pixels)
          pixel |= numbers.pixels[static_cast<std::size_t>(&pixel - &filled.pixels[0])] == number;
      else
        ++number;
  return filled;
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
  for (const std::size_t gap : {0u, 4000u, 4096u, 8191u, 19999u}) wide[gap] = 0;
  EXPECT_EQ(toRowIntersections(MaskView<omUInt8>{wide.data(), wide.size(), 1, wide.size()}).getRunColl(),
            (RowIntersections::RunColl{{1, 4000}, {4001, 4096}, {4097, 8191}, {8192, 19999}}));
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

TEST(RowSets, GrowAndShrinkAsTheirPixels) {
  // The square of the root of 41 is below 41, and rounded to it.
  const omReal64 radii[] = {
      0, 0.999, 1, std::sqrt(2.0), std::nextafter(std::sqrt(2.0), 0), 2.5, std::sqrt(13.0), std::sqrt(41.0), 8};
  forImages([&](const Image& image, support::Random& random) {
    const int nbX = static_cast<int>(random.below(4)), nbY = static_cast<int>(random.below(6));
    const omReal64 radius = radii[random.below(9)];
    const auto isInBox = [&](int dx, int dy) { return std::abs(dx) <= nbX && std::abs(dy) <= nbY; };
    const auto isInDisc = [&](int dx, int dy) {
      return static_cast<long double>(dx * dx + dy * dy) <= static_cast<long double>(radius) * radius;
    };
    const int reach = static_cast<int>(radius);
    // Pixels of which one, or all, in reach are inside; an image grows into a margin.
    const auto count = [&](auto isInReach, int margin, bool all) {
      return rowsOf(Image{image.width + margin, image.height + margin}.map([&](int x, int y) {
        bool any = false, every = true;
        for (int dy = -margin; dy <= margin; ++dy)
          for (int dx = -margin; dx <= margin; ++dx)
            if (isInReach(dx, dy)) {
              any = any || image.get(x + dx, y + dy) != 0;
              every = every && image.get(x + dx, y + dy) != 0;
            }
        return all ? every : any;
      }));
    };
    const RowIntersections rows = rowsOf(image, 0, random.below(2) == 0);
    const auto halfWidth = static_cast<omUInt32>(nbX), halfHeight = static_cast<omUInt32>(nbY);
    EXPECT_EQ(dilate(rows, halfWidth, halfHeight), count(isInBox, 5, false));
    EXPECT_EQ(erode(rows, halfWidth, halfHeight), count(isInBox, 5, true));
    EXPECT_EQ(dilate(rows, radius), count(isInDisc, reach, false)) << radius;
    EXPECT_EQ(erode(rows, radius), count(isInDisc, reach, true)) << radius;
  });
}

TEST(RowSets, HaveTheComponentsAndHolesThatFloodingFinds) {
  forImages([](const Image& image, support::Random& random) {
    for (const ePixelConnectivity connectivity : {ePC_4, ePC_8}) {
      const RowIntersections rows = rowsOf(image, 0, random.below(2) == 0);
      const std::vector<RowIntersections> expected = floodedComponents(image, connectivity);
      EXPECT_EQ(connectedComponents(rows, connectivity), expected);
      EXPECT_EQ(fillHoles(rows, connectivity), rowsOf(filledImage(image, connectivity)));
      OpenComponents open(connectivity);
      std::map<std::pair<omUInt64, omUInt32>, RowIntersections> found;
      const auto collect = [&found](const std::vector<RowIntersections>& components) {
        for (const RowIntersections& part : components) found[{part.getStartRow(), part.getRunColl()[0].begin}] = part;
      };
      for (omUInt64 y = rows.getStartRow(); y < rows.getEndRow(); ++y) {
        ASSERT_TRUE((rows.getRow(y).empty() && random.below(2) == 0) || open.addRow(y, rows.getRow(y)));
        if (random.below(3) == 0) collect(open.takeFinished());
      }
      collect(open.finish());
      ASSERT_EQ(found.size(), expected.size());
      std::size_t index = 0;
      for (const auto& [first, part] : found) EXPECT_EQ(part, expected[index++]);
    }
  });
}

TEST(RowSets, AreThePixelsOfEachLabel) {
  support::Random random(8);
  for (int round = 0; round < 60; ++round) {
    const Image image =
        randomImage(random, 1 + static_cast<int>(random.below(90)), 1 + static_cast<int>(random.below(9)), 5);
    // Labels of all magnitudes, with their order.
    const omInt32 labels[] = {0, std::numeric_limits<omInt32>::min(), -1, 1, 3000};
    std::vector<omInt32> pixels;
    for (const int value : image.pixels) pixels.push_back(labels[value]);
    const auto width = static_cast<std::size_t>(image.width), height = static_cast<std::size_t>(image.height);
    std::vector<LabelledRows> expected;
    for (int value = 1; value < 5; ++value)
      if (RowIntersections rows = rowsOf(image, value); rows.getNbRows() > 0) expected.push_back({labels[value], rows});
    const auto check = [&](const std::vector<LabelledRows>& found) {
      ASSERT_EQ(found.size(), expected.size());
      for (std::size_t index = 0; index < found.size(); ++index) {
        EXPECT_EQ(found[index].label, expected[index].label);
        EXPECT_EQ(found[index].rows, expected[index].rows);
      }
    };
    check(labelledRows(MaskView<const omInt32>{pixels.data(), width, height, width}));
    const std::vector<omUInt16> small(image.pixels.begin(), image.pixels.end());
    for (LabelledRows& rows : expected) rows.label = std::find(labels, labels + 5, rows.label) - labels;
    check(labelledRows(MaskView<const omUInt16>{small.data(), width, height, width}));
  }
}

TEST(RowSets, EndWhereColumnsAndRowsEnd) {
  constexpr omUInt64 lastRow = std::numeric_limits<omUInt64>::max() - 1;
  RowIntersections corner;
  ASSERT_TRUE(corner.addRun(lastRow, 0xFFFFFFFEu, 0xFFFFFFFFu));
  for (const RowIntersections& grown : {dilate(corner, 2, 1), dilate(corner, 1.5)}) {
    EXPECT_EQ(grown.getStartRow(), lastRow - 1);
    EXPECT_EQ(grown.getNbRows(), 2u);
    EXPECT_EQ(grown.getRow(lastRow)[0].end, 0xFFFFFFFFu);
  }
  EXPECT_EQ(erode(dilate(corner, 0, 0), 0.0), corner);
  EXPECT_EQ(fillHoles(corner), corner);
  EXPECT_EQ(connectedComponents(corner, ePC_8), std::vector<RowIntersections>{corner});
  EXPECT_EQ(dilate(translate(corner, -0xFFFFFFFEll, 0), 0xFFFFFFFFu, 0).getRunColl()[0], (PixelRun{0, 0xFFFFFFFFu}));
  RowIntersections origin;
  ASSERT_TRUE(origin.addRun(0, 0, 1));
  EXPECT_EQ(intersect(origin, corner), RowIntersections());
  EXPECT_EQ(subtract(origin, corner), origin);
  EXPECT_EQ(unite(origin, {}), origin);
  EXPECT_EQ(erode(origin, 0xFFFFFFFFu, 0xFFFFFFFFu), RowIntersections());
  EXPECT_EQ(erode(origin, 4e9), RowIntersections());
}

// What is refused, and by which words.
TEST(RowSets, RefuseWhatCannotBe) {
  omUInt8 pixel = 1;
  constexpr std::size_t huge = std::numeric_limits<std::size_t>::max();
  RowIntersections rows, far;
  ASSERT_TRUE(rows.addRun(3, 2, 4));
  ASSERT_TRUE(far.addRun(omUInt64{1} << 40, 2, 4));
  using Box = BoundingBox2d<omReal64>;
  const auto read = [](MaskView<const omUInt8> view) { return [view] { toRowIntersections(view); }; };
  const std::vector<std::pair<std::function<void()>, std::string>> cases{
      {read({nullptr, 2, 1, 2}), "Mask of 2 columns and 1 rows: its pixels are at a null pointer"},
      {read({&pixel, 2, 1, 1}), "rows are 1 elements apart, less than their columns"},
      {read({&pixel, omUInt64{1} << 32, 1, huge}), "at most 4294967295 columns"},
      {read({&pixel, 1, omUInt64{1} << 32, 1}), "at most 4294967295 rows"},
      {read({&pixel, 1, 4, huge / 4}), "reach beyond all addresses"},
      {[&] {
         toMask(rows, MaskView<omUInt8>{nullptr, 9, 9, 9});
       },
       "null pointer"},
      {[&] {
         labelledRows(MaskView<const omUInt8>{nullptr, 9, 9, 9});
       },
       "null pointer"},
      {[&] { unite(rows, far); }, "Pixels from row 3 to row 1099511627776 are not one set"},
      {[&] { exclude(far, rows); }, "are not one set"},
      {[&] { dilate(unite(rows, translate(rows, 0, 9)), 0, 0x80000000u); }, "are not one set"},
      {[&] { dilate(far, 4294967295.0); }, "are not one set"},
      {[&] { translate(rows, -3, 0); }, "Pixels of column 2 cannot be moved by (-3, 0), there is no such column"},
      {[&] { translate(rows, 4294967292, 0); }, "Pixels of column 3 cannot"},
      {[&] { translate(rows, std::numeric_limits<omInt64>::min(), 0); }, "no such column"},
      {[&] { translate(rows, 0, -4); }, "Pixels of row 3 cannot"},
      {[&] { complement(rows, Box(0, 0, 0.5, 1)); }, "xMax = 0.5 is not a whole number from 0 to 4294967295"},
      {[&] { complement(rows, Box(0, support::s_nan, 1, 1)); }, "yMin = nan is not a whole number"},
      {[&] { complement(rows, BoundingBox2d<omInt32>(-1, 0, 1, 1)); }, "xMin = -1 is not a whole number"},
      {[&] { complement(rows, Box(2, 0, 1, 1)); }, "do not ascend"},
      {[&] { complement(rows, Box(0, 0, 1, 1e10)); }, "are not one set"},
      {[&] { dilate(rows, -1.0); }, "Disc of radius -1: the radius is not a number from 0 on"},
      {[&] { erode(rows, support::s_nan); }, "Disc of radius nan"},
      {[&] { dilate(rows, support::s_infinity); }, "Disc of radius inf"}};
  for (const auto& [call, text] : cases)
    EXPECT_NE(support::thrownBy<ORMIXGeometryException>(call).find(text), std::string::npos) << text;
  EXPECT_EQ(toRowIntersections(MaskView<const omUInt8>{nullptr, 0, huge, 0}), RowIntersections());
  omUInt8 pixels[] = {7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7};
  EXPECT_EQ(toMask(rows, {pixels, 3, 4, 3}).getMessage(), "Pixel (3, 3) lies outside the mask of 3 columns and 4 rows");
  EXPECT_EQ(toMask(rows, {pixels, 4, 3, 4}).getMessage(), "Pixel (2, 3) lies outside the mask of 4 columns and 3 rows");
  EXPECT_FALSE(toMask(RowIntersections(), {pixels, 4, 3, 4}, 0));
  EXPECT_EQ(std::count(pixels, pixels + 12, 7), 12);
}

TEST(RowSets, ComeInOrderToOpenComponents) {
  OpenComponents open(ePC_8);
  const std::vector<PixelRun> row{{3, 5}, {7, 9}}, overlapping{{3, 5}, {4, 9}}, empty{{3, 3}};
  const auto view = [](const std::vector<PixelRun>& runs) {
    return RowIntersections::Row(runs.data(), runs.data() + runs.size());
  };
  ASSERT_TRUE(open.addRow(5, view(row)));
  const std::string mismatch =
      "Row index mismatch for shapes merge, main shape row index = 5 should be lower or equal to new  shape row index "
      "= ";
  EXPECT_EQ(open.addRow(5, view(row)).getMessage(), mismatch + "5");
  EXPECT_EQ(open.addRow(4, view(row)).getMessage(), mismatch + "4");
  EXPECT_EQ(
      open.addRow(6, view(overlapping)).getMessage(),
      "Can't add row intersection with row range [4, 9[ to existing row range [3, 5[, ranges should not intersect");
  EXPECT_EQ(open.addRow(6, view(empty)).getMessage(), "Run [3, 3[ has no pixels");
  EXPECT_FALSE(open.addRow(std::numeric_limits<omUInt64>::max(), view(row)));
  EXPECT_TRUE(open.takeFinished().empty());
  ASSERT_TRUE(open.addRow(std::numeric_limits<omUInt64>::max() - 1, view(row)));
  EXPECT_EQ(open.takeFinished().size(), 2u);
  EXPECT_EQ(open.finish().size(), 2u);
  EXPECT_TRUE(open.finish().empty());
}

}  // namespace
