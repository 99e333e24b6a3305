#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <limits>

#include "support/SampleObjects.h"

namespace {

using namespace samples;

template <class T>
Polygon2d<T> polygonOf(const std::vector<Point2dData<T>>& points) {
  Polygon2d<T> polygon;
  polygon.getPointColl() = points;
  return polygon;
}

/// A square with a flat corner in the middle of each side, and a hole in that of the lower one.
template <class T>
PolygonWithHoles2d<T> dentedSquare() {
  PolygonWithHoles2d<T> root;
  root.getExteriorPolygon() =
      polygonOf<T>({{0, 4}, {50, 0}, {100, 4}, {97, 50}, {100, 100}, {50, 97}, {0, 100}, {3, 50}, {0, 4}});
  const auto hole = boost::make_shared<PolygonWithHoles2d<T>>();
  hole->getExteriorPolygon() = polygonOf<T>({{48, 2}, {50, 1}, {52, 2}, {52, 6}, {48, 6}, {48, 2}});
  hole->getExteriorPolygon().setPolygon2dType(eP2DT_Interior);
  root.getPolygonHoles().push_back(hole);
  return root;
}

template <class T>
class SimplifyTransform2dOf : public ::testing::Test {};
using Scalars = ::testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(SimplifyTransform2dOf, Scalars);

TYPED_TEST(SimplifyTransform2dOf, KeepsHolesInsideAndRoles) {
  using T = TypeParam;
  const PolygonWithHoles2d<T> polygon = dentedSquare<T>();
  // The lower corner stays, as the side would cross the hole without it, and the hole is still a ring.
  const auto simplified = SimplifyTransform2d::simplify(polygon, 4.5);
  const std::vector<Point2dData<T>> expected{{0, 4}, {50, 0}, {100, 4}, {100, 100}, {0, 100}, {0, 4}};
  EXPECT_EQ(simplified.getExteriorPolygon().getPointColl(), expected);
  ASSERT_EQ(simplified.getNbHoles(), 1u);
  const Polygon2d<T>& hole = simplified.getPolygonHoles()[0]->getExteriorPolygon();
  EXPECT_EQ(hole.getPolygon2dType(), eP2DT_Interior);
  EXPECT_GE(hole.getNbPoints(), 4u);
  EXPECT_EQ(hole.getPointColl().front(), hole.getPointColl().back());
  EXPECT_EQ(simplified.getPolygonHoles()[0]->getParent().get(), nullptr);  // the root is on the stack

  const GeometryEntity2dPtr copy = apply(SimplifyTransform2d(4.5), boost::make_shared<PolygonWithHoles2d<T>>(polygon));
  ASSERT_TRUE(copy);
  EXPECT_EQ(describe(static_cast<const PolygonWithHoles2d<T>&>(*copy)), describe(simplified));
  PolygonWithHoles2d<T> inPlace = polygon;
  ASSERT_TRUE(SimplifyTransform2d(4.5).applyInSitu(inPlace));
  EXPECT_EQ(describe(inPlace), describe(simplified));
  const GeometryEntity2dPtr ofBase =
      SimplifyTransform2d::simplify(static_cast<const BaseGeometryEntity2d&>(polygon), 4.5);
  EXPECT_EQ(describe(static_cast<const PolygonWithHoles2d<T>&>(*ofBase)), describe(simplified));
}

TYPED_TEST(SimplifyTransform2dOf, LeavesOpenPolygonsOpen) {
  using T = TypeParam;
  const auto path = polygonOf<T>({{0, 0}, {5, 1}, {10, 0}, {10, 10}, {9, 5}, {0, 1}});
  const std::vector<Point2dData<T>> expected{{0, 0}, {10, 0}, {10, 10}, {0, 1}};
  EXPECT_EQ(SimplifyTransform2d::simplify(path, 1.5).getPointColl(),
            (std::vector<Point2dData<T>>{{0, 0}, {10, 0}, {10, 10}, {9, 5}, {0, 1}}));
  EXPECT_EQ(SimplifyTransform2d::simplify(path, 4).getPointColl(), expected);
  EXPECT_TRUE(SimplifyTransform2d::simplify(Polygon2d<T>(), 1).isEmpty());
}

TEST(SimplifyTransform2d, KeepsThePixelsOfShapesAndIgnoresNull) {
  Shape2d shape;
  ASSERT_TRUE(shape.getRowIntersections().addRun(3, 1, 5));
  shape.getPolygonWithHolesColl() = {nullptr,
                                     boost::make_shared<PolygonWithHoles2d<omReal32>>(dentedSquare<omReal32>())};
  ASSERT_TRUE(SimplifyTransform2d(4.5).applyInSitu(shape));
  EXPECT_EQ(shape.getNbPixels(), 4u);
  EXPECT_EQ(shape.getPolygonWithHolesColl()[1]->getNbExteriorPoints(), 6u);
}

// Neighbours of different classes and coordinate types, of which one alone would lose the border's only corner.
TEST(SimplifyTransform2d, KeepsSharedBordersOfCollections) {
  const auto left = boost::make_shared<Polygon2d<omInt32>>(
      polygonOf<omInt32>({{0, 0}, {10, 0}, {11, 3}, {9, 7}, {10, 10}, {0, 10}, {0, 0}}));
  const auto right = boost::make_shared<PolygonWithHoles2d<omReal64>>();
  right->getExteriorPolygon() = polygonOf<omReal64>({{9, 7}, {11, 3}, {10, 0}, {20, 0}, {20, 10}, {10, 10}, {9, 7}});
  const GeometryEntity2dPtrColl together = SimplifyTransform2d::simplifyAll({left, right}, 2);
  EXPECT_EQ(::testing::PrintToString(static_cast<const Polygon2d<omInt32>&>(*together[0])),
            "[[0, 0], [10, 0], [10, 10], [0, 10], [0, 0]]");
  EXPECT_EQ(
      ::testing::PrintToString(static_cast<const PolygonWithHoles2d<omReal64>&>(*together[1]).getExteriorPolygon()),
      "[[10, 0], [20, 0], [20, 10], [10, 10], [10, 0]]");
  EXPECT_EQ(left->getNbPoints(), 7u);
  EXPECT_THROW(SimplifyTransform2d::simplifyAll({left, nullptr}, 2), ORMIXGeometryException);
}

TEST(SimplifyTransform2d, SaysWhyItFails) {
  const auto messageOf = [](const BaseGeometryEntity2d& entity, omReal64 tolerance) -> std::string {
    try {
      SimplifyTransform2d::simplify(entity, tolerance);
    } catch (const ORMIXGeometryException& e) {
      return e.getMessage();
    }
    return "";
  };
  const auto bowTie = polygonOf<omReal64>({{0, 0}, {4, 4}, {4, 0}, {0, 4}, {0, 0}});
  EXPECT_EQ(messageOf(bowTie, 0.1),
            formatMessage<eTransformMessage>(eTransformMessage::eTM_SelfIntersectionRefinement, 2.0, 2.0));
  auto notFinite = polygonOf<omReal64>({{0, 0}, {4, std::numeric_limits<omReal64>::quiet_NaN()}, {4, 0}});
  EXPECT_EQ(messageOf(notFinite, 0.1), formatMessage<eTransformMessage>(eTransformMessage::eTM_SelfIntersectionTable));
  EXPECT_EQ(messageOf(Circle2d<omReal64>({0, 0}, 1), 0.1),
            "Transform ormix::geom::SimplifyTransform2d failed for geometry entity eE2DT_Circle");
  EXPECT_NE(messageOf(bowTie, -1), "");
  EXPECT_NE(messageOf(bowTie, std::numeric_limits<omReal64>::infinity()), "");
  Polygon2d<omReal64> unchanged = bowTie;
  EXPECT_FALSE(SimplifyTransform2d(0.1).applyInSitu(unchanged));
  EXPECT_EQ(describe(unchanged), describe(bowTie));
}

}  // namespace
