#include <ORMIXGeometry/Entity/2d/Shape/Rasterize.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowSetOperations.h>
#include <ORMIXGeometry/Entity/2d/Shape/Shape2dConstructor.h>
#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Transform/2d/AnisotropicScaleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include "support/Checks.h"
#include "support/Random.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

constexpr std::size_t s_width = 23, s_height = 17;

std::vector<omUInt8> randomMask(support::Random& random, unsigned densityOf16) {
  std::vector<omUInt8> mask(s_width * s_height);
  for (omUInt8& pixel : mask) pixel = random() % 16 < densityOf16;
  return mask;
}

/// The same shapes, in the same order.
void expectEqual(const Shape2dPtrColl& a, const Shape2dPtrColl& b) {
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t index = 0; index < a.size(); ++index) {
    EXPECT_EQ(a[index]->getRowIntersections(), b[index]->getRowIntersections());
    EXPECT_EQ(support::printed(*a[index]), support::printed(*b[index]));
  }
}

TEST(LabelShapes, PartTheMaskIntoItsRegions) {
  support::Random random(41);
  for (const ePixelConnectivity connectivity : {ePC_4, ePC_8})
    for (unsigned round = 0; round < 200; ++round) {
      std::vector<omUInt8> mask = randomMask(random, 1 + round % 15);
      const MaskView<omUInt8> view{mask.data(), s_width, s_height, s_width};
      const RowIntersections pixels = toRowIntersections(view);
      const Shape2dPtrColl shapes = labelShapes(view, connectivity);
      std::vector<omUInt32> labels(mask.size());
      RowIntersections together;
      omUInt64 nbPixels = 0;
      for (std::size_t index = 0; index < shapes.size(); ++index) {
        const Shape2d& shape = *shapes[index];
        ASSERT_EQ(shape.getPolygonWithHolesColl().size(), 1u);
        EXPECT_EQ(AreaMsr2d::measure(shape), static_cast<omReal64>(shape.getNbPixels()));
        EXPECT_EQ(rasterize(*shape.getPolygonWithHolesColl()[0]), shape.getRowIntersections());
        EXPECT_EQ(labelShapes(shape.getRowIntersections(), connectivity).size(), 1u);
        nbPixels += shape.getNbPixels();
        together = unite(together, shape.getRowIntersections());
        for (omUInt64 y = shape.getStartY(); y < shape.getEndY(); ++y)
          for (const PixelRun& run : shape.getRowIntersections(y))
            for (omUInt32 x = run.begin; x < run.end; ++x)
              labels[y * s_width + x] = static_cast<omUInt32>(7 * index + 3);
      }
      EXPECT_EQ(together, pixels);
      EXPECT_EQ(nbPixels, pixels.getNbPixels());
      expectEqual(shapesOfLabels(MaskView<omUInt32>{labels.data(), s_width, s_height, s_width}, connectivity), shapes);

      Shape2dConstructor constructor(connectivity);
      Shape2dPtrColl made;
      for (omUInt64 y = pixels.getStartRow(); y < pixels.getEndRow(); ++y) {
        EXPECT_TRUE(constructor.addRow(y, pixels.getRow(y)));
        for (const Shape2dPtr& shape : constructor.takeFinished()) made.push_back(shape);
      }
      for (const Shape2dPtr& shape : constructor.finish()) made.push_back(shape);
      // Regions come as they end; their first pixels tell them apart.
      std::sort(made.begin(), made.end(), [](const Shape2dPtr& a, const Shape2dPtr& b) {
        const auto first = [](const Shape2d& s) {
          return std::pair(s.getStartY(), s.getRowIntersections(s.getStartY())[0].begin);
        };
        return first(*a) < first(*b);
      });
      expectEqual(made, shapes);
    }
}

TEST(Shape2dConstructor, NeedsMemoryForOpenRegionsOnly) {
  Shape2dConstructor constructor;
  const std::size_t before = mallinfo2().uordblks;
  std::size_t nbShapes = 0, most = 0;
  // Long regions beside dots.
  for (omUInt64 y = 0; y < 1000000; ++y) {
    RowIntersections::RunColl runs;
    if (y % 1000 != 999) runs.push_back({0, 5});
    if (y % 10 < 2) runs.push_back({10, 13});
    ASSERT_TRUE(constructor.addRow(y, runs));
    nbShapes += constructor.takeFinished().size();
    if (y % 1000 == 500) most = std::max(most, static_cast<std::size_t>(mallinfo2().uordblks));
  }
  nbShapes += constructor.finish().size();
  EXPECT_EQ(nbShapes, 1000u + 100000u);
  EXPECT_LT(most, before + 200000);
}

TEST(Shape2dConstructor, RefusesWhatIsOutOfOrder) {
  Shape2dConstructor constructor;
  const RowIntersections::RunColl runs{{2, 4}, {6, 7}};
  EXPECT_TRUE(constructor.addRow(5, runs));
  for (const omUInt64 y : {5, 4})
    EXPECT_EQ(
        constructor.addRow(y, runs).getMessage(),
        "Row index mismatch for shapes merge, main shape row index = 5 should be lower or equal to new  shape row "
        "index = " +
            std::to_string(y));
  EXPECT_EQ(
      constructor.addRow(6, RowIntersections::RunColl{{1, 5}, {4, 6}}).getMessage(),
      "Can't add row intersection with row range [4, 6[ to existing row range [1, 5[, ranges should not intersect");
  EXPECT_FALSE(constructor.addRow(6, RowIntersections::RunColl{{3, 3}}));
  ASSERT_EQ(constructor.finish().size(), 2u);
  const std::string text = "Shape 2d constructor has not been initialized";
  EXPECT_EQ(constructor.addRow(7, runs).getMessage(), text);
  EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { constructor.takeFinished(); }), text);
  EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { constructor.finish(); }), text);
}

TEST(LabelShapes, SimplifyBoundariesWhereAsked) {
  RowIntersections stairs;
  for (omUInt32 y = 0; y < 40; ++y) EXPECT_TRUE(stairs.addRun(y, 0, y + 1));
  const auto exact = labelShapes(stairs), rough = labelShapes(stairs, ePC_8, 1);
  EXPECT_EQ(exact[0]->getNbTotPoints(), 82u + 1);
  EXPECT_LE(rough[0]->getNbTotPoints(), 5u);
  EXPECT_EQ(rough[0]->getRowIntersections(), stairs);
  EXPECT_NEAR(AreaMsr2d::measure(*rough[0]), 820, 40);
  for (const omReal64 tolerance : {-1.0, support::s_nan})
    EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { labelShapes(stairs, ePC_4, tolerance); }),
              "Polygon simplification failed while processing shape 2d construction");
}

TEST(Shape2d, MovesItsPolygonsAndKeepsItsPixels) {
  RowIntersections pixels;
  EXPECT_TRUE(pixels.addRun(3, 1, 5));
  const Shape2dPtr shape = makeShape(pixels);
  shape->getPolygonWithHolesColl().push_back(nullptr);
  const auto moved = boost::dynamic_pointer_cast<Shape2d>(TranslationTransform2d(10, 20).apply(*shape));
  const auto scaled = boost::dynamic_pointer_cast<Shape2d>(AnisotropicScaleTransform2d(2, 3).apply(*shape));
  ASSERT_TRUE(moved && scaled);
  EXPECT_EQ(support::printed(*moved),
            "[[exterior=[[11, 23], [15, 23], [15, 24], [11, 24], [11, 23]], holes=[]], null]");
  EXPECT_EQ(support::printed(*scaled), "[[exterior=[[2, 9], [10, 9], [10, 12], [2, 12], [2, 9]], holes=[]], null]");
  EXPECT_EQ(moved->getRowIntersections(), pixels);
  EXPECT_EQ(scaled->getNbPixels(), 0u);
  EXPECT_EQ(shape->getNbTotPoints(), 5u);
  EXPECT_EQ(shape->getNbTotPolygons(), 1u);
}

}  // namespace
