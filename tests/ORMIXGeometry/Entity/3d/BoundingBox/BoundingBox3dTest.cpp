#include <ORMIXGeometry/Entity/3d/BoundingBox/BoundingBox3d.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <sstream>

namespace ormix::geom {
namespace {

template <class T>
class BoundingBox3dTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(BoundingBox3dTest, Scalars);

TYPED_TEST(BoundingBox3dTest, SettersStoreWhatTheyAreGiven) {
  using T = TypeParam;
  using Box = BoundingBox3d<T>;
  Box box(Point3d<T>(1, 2, 3), Point3d<T>(4, 6, 8));
  EXPECT_EQ(box, Box(1, 2, 3, 4, 6, 8));
  EXPECT_EQ(Point3d<T>(box.sizeX(), box.sizeY(), box.sizeZ()), Point3d<T>(3, 4, 5));
  EXPECT_EQ(box.center(), Point3dData<omReal64>(2.5, 4, 5.5));
  box.setXMin(9);
  box.setYMin(8);
  box.setZMin(7);
  box.setXMax(6);
  box.setYMax(5);
  box.setZMax(4);
  EXPECT_EQ(box, Box(9, 8, 7, 6, 5, 4));
  box.setMinCornerPt(Point3d<T>(1, 1, 1));
  box.setMaxCornerPt({2, 2, 2});
  EXPECT_EQ(Box(box.getXMin(), box.getYMin(), box.getZMin(), box.getXMax(), box.getYMax(), box.getZMax()), box);
  EXPECT_EQ(box.getMaxCornerPt(), Point3dData<T>(2, 2, 2));
}

TYPED_TEST(BoundingBox3dTest, EmptyIntersectionIsTheZeroBox) {
  using Box = BoundingBox3d<TypeParam>;
  const Box box(1, 1, 1, 3, 3, 3);
  for (const Box& apart : {Box(4, 1, 1, 5, 3, 3), Box(1, 4, 1, 3, 5, 3), Box(1, 1, 4, 3, 3, 5)}) {
    std::ostringstream text;
    text << intersection(box, apart);
    EXPECT_EQ(text.str(), "[min=[0, 0, 0], max=[0, 0, 0]]") << apart;
  }
  EXPECT_EQ(intersection(box, Box(3, 1, 1, 5, 2, 3)), Box(3, 1, 1, 3, 2, 3));
}

TYPED_TEST(BoundingBox3dTest, IntersectionAndMergeHoldTheirPoints) {
  using T = TypeParam;
  using Box = BoundingBox3d<T>;
  const auto holds = [](const Box& box, const Point3dData<T>& p) {
    return p.getX() >= box.getXMin() && p.getX() <= box.getXMax() && p.getY() >= box.getYMin() &&
           p.getY() <= box.getYMax() && p.getZ() >= box.getZMin() && p.getZ() <= box.getZMax();
  };
  const unsigned seed = 2718;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 draw(seed);
  const auto point = [&draw] {
    return Point3dData<T>(static_cast<T>(1 + draw() % 5), static_cast<T>(1 + draw() % 5),
                          static_cast<T>(1 + draw() % 5));
  };
  for (int i = 0; i < 500; ++i) {
    const auto a0 = point();
    const auto b0 = point();
    const Box a(a0, a0 + T(2));
    const Box b(b0, b0 + T(1));
    Box both = a;
    merge(both, b, both);
    const Box common = intersection(a, b);
    for (int j = 0; j < 50; ++j) {
      const auto p = point();
      ASSERT_EQ(holds(common, p), holds(a, p) && holds(b, p)) << a << b << p;
      ASSERT_TRUE(holds(both, p) || !(holds(a, p) || holds(b, p))) << a << b << p;
    }
    // No larger than needed.
    ASSERT_EQ(intersection(both, a), a);
    ASSERT_TRUE(both.getXMin() == a.getXMin() || both.getXMin() == b.getXMin());
    ASSERT_TRUE(both.getZMax() == a.getZMax() || both.getZMax() == b.getZMax());
  }
}

TYPED_TEST(BoundingBox3dTest, ComparesBothCorners) {
  using T = TypeParam;
  const BoundingBox3d<T> box(5, 5, 5, 9, 9, 9);
  EXPECT_TRUE(compare(box, BoundingBox3d<T>(6, 5, 5, 9, 9, 10), T(1)));
  EXPECT_FALSE(compare(box, BoundingBox3d<T>(5, 5, 7, 9, 9, 9), T(1)));
  EXPECT_FALSE(compare(box, BoundingBox3d<T>(5, 5, 5, 9, 9, 11), T(1)));
}

TEST(BoundingBox3d, SizesWrapAndCentresDoNot) {
  const omInt32 lowest = std::numeric_limits<omInt32>::min();
  const omInt32 highest = std::numeric_limits<omInt32>::max();
  const BoundingBox3d<omInt32> box(lowest, 0, 3, highest, highest, 1);
  EXPECT_EQ(box.sizeX(), -1);
  EXPECT_EQ(box.sizeZ(), -2);
  EXPECT_EQ(box.center(), Point3dData<omReal64>(-0.5, 1073741823.5, 2));
}

TEST(BoundingBox3d, NanKeepsTheComputedIntersection) {
  const omReal64 nan = std::numeric_limits<omReal64>::quiet_NaN();
  const BoundingBox3d<omReal64> box(nan, 1, 1, nan, 5, 5);
  EXPECT_EQ(intersection(box, BoundingBox3d<omReal64>(nan, 2, 2, nan, 6, 6)).getZMin(), 2.0);
}

}  // namespace
}  // namespace ormix::geom
