#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <sstream>

namespace ormix::geom {
namespace {

template <class T>
class BoundingBox2dTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(BoundingBox2dTest, Scalars);

template <class Box>
Box common(const Box& a, const Box& b) {
  Box result;
  intersection(a, b, result);
  return result;
}

TYPED_TEST(BoundingBox2dTest, BoxesThatShareAnEdgeTouch) {
  using Box = BoundingBox2d<TypeParam>;
  const Box left(0, 0, 1, 1);
  const Box right(1, 0, 2, 1);
  const Box apart(2, 0, 3, 1);
  EXPECT_FALSE(intersect(left, right));
  EXPECT_TRUE(intersectOrTouch(left, right));
  EXPECT_EQ(common(left, right), Box(1, 0, 1, 1));
  EXPECT_FALSE(intersectOrTouch(left, apart));
  EXPECT_EQ(common(left, apart), Box(0, 0, 0, 0));
  EXPECT_EQ(common(Box(0, 4, 9, 5), Box(0, 6, 9, 7)), Box(0, 0, 0, 0));
}

TYPED_TEST(BoundingBox2dTest, ContainmentIsStrictUnlessItMayTouch) {
  using Box = BoundingBox2d<TypeParam>;
  const Box outer(0, 0, 9, 9);
  EXPECT_TRUE(isContained(Box(1, 1, 8, 8), outer));
  EXPECT_FALSE(isContained(outer, Box(1, 1, 8, 8)));
  for (const Box& box : {Box(0, 1, 8, 8), Box(1, 0, 8, 8), Box(1, 1, 9, 8), Box(1, 1, 8, 9), outer}) {
    EXPECT_FALSE(isContained(box, outer)) << box;
    EXPECT_TRUE(isContainedOrTouch(box, outer)) << box;
  }
}

TYPED_TEST(BoundingBox2dTest, PredicatesAgreeOnSmallBoxes) {
  using T = TypeParam;
  using Box = BoundingBox2d<T>;
  const unsigned seed = 2718;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 draw(seed);
  const auto box = [&draw] {
    const auto x = static_cast<T>(draw() % 5);
    const auto y = static_cast<T>(draw() % 5);
    return Box(x, y, x + static_cast<T>(1 + draw() % 3), y + static_cast<T>(1 + draw() % 3));
  };
  for (int i = 0; i < 5000; ++i) {
    const Box a = box();
    const Box b = box();
    Box shared = a;
    intersection(shared, b, shared);
    Box both = b;
    merge(a, both, both);
    ASSERT_TRUE(isContainedOrTouch(a, both) && isContainedOrTouch(b, both)) << a << b;
    ASSERT_EQ(intersect(a, b), shared.getArea() > 0) << a << b;
    if (intersectOrTouch(a, b))
      ASSERT_TRUE(isContainedOrTouch(shared, a) && isContainedOrTouch(shared, b)) << a << b;
    else
      ASSERT_EQ(shared, Box(0, 0, 0, 0)) << a << b;
    ASSERT_EQ(isContainedOrTouch(a, b), shared == a) << a << b;
  }
}

TYPED_TEST(BoundingBox2dTest, SettersStoreWhatTheyAreGiven) {
  using T = TypeParam;
  BoundingBox2d<T> box(Point2d<T>(1, 2), Point2d<T>(3, 4));
  box.setXMin(9);
  box.setYMax(1);
  EXPECT_EQ(box, BoundingBox2d<T>(9, 2, 3, 1));
  box.getMinCornerPt().setX(5);
  box.setMaxCornerPt(Point2d<T>(6, 7));
  EXPECT_EQ(box, BoundingBox2d<T>(Point2dData<T>(5, 2), Point2dData<T>(6, 7)));
  EXPECT_TRUE(compare(box, BoundingBox2d<T>(5, 2, 6, 8), T(1)));
  EXPECT_FALSE(compare(box, BoundingBox2d<T>(5, 4, 6, 7), T(1)));
  std::ostringstream text;
  text << BoundingBox2d<T>(0, 0, 2, 3);
  EXPECT_EQ(text.str(), "[min=[0, 0], max=[2, 3]]");
}

TEST(BoundingBox2d, AreasAreComputedInTheCoordinateType) {
  EXPECT_EQ(BoundingBox2d<omInt32>(3, 0, 0, 2).getArea(), -6);
  EXPECT_EQ(BoundingBox2d<omInt32>(0, 0, 65536, 65536).getArea(), 0);
  EXPECT_EQ(BoundingBox2d<omInt32>(-2147483647 - 1, 0, 2147483647, 1).getArea(), -1);
  EXPECT_EQ(BoundingBox2d<omUInt32>(0, 0, 65536, 32768).getArea(), 2147483648u);
  EXPECT_EQ(BoundingBox2d<omReal64>(0, 0, 65536, 65536).getArea(), 4294967296.0);
}

TEST(BoundingBox2d, NanKeepsTheComputedIntersection) {
  const omReal64 nan = std::numeric_limits<omReal64>::quiet_NaN();
  BoundingBox2d<omReal64> result;
  intersection(BoundingBox2d<omReal64>(nan, 1, nan, 5), BoundingBox2d<omReal64>(nan, 2, nan, 6), result);
  EXPECT_NE(result.getXMin(), result.getXMin());
  EXPECT_EQ(result.getYMin(), 2.0);
  EXPECT_EQ(result.getYMax(), 5.0);
}

}  // namespace
}  // namespace ormix::geom
