#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/3d/BoundingBox/BoundingBox3d.h>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix::geom {
namespace {

template <class T>
class BoundingBoxTest : public testing::Test {};
TYPED_TEST_SUITE(BoundingBoxTest, support::Scalars);

TYPED_TEST(BoundingBoxTest, PredicatesOfThePlaneAgreeOnSmallBoxes) {
  using T = TypeParam;
  using Box = BoundingBox2d<T>;
  support::Random draw(2718);
  const auto box = [&draw] {
    const T x = T(draw.below(5)), y = T(draw.below(5));
    return Box(x, y, T(x + T(1 + draw.below(3))), T(y + T(1 + draw.below(3))));
  };
  for (int i = 0; i < 5000; ++i) {
    const Box a = box(), b = box();
    SCOPED_TRACE(testing::Message() << a << b);
    Box shared = a, both = b;
    intersection(shared, b, shared);
    merge(a, both, both);
    ASSERT_TRUE(isContainedOrTouch(a, both) && isContainedOrTouch(b, both));
    ASSERT_EQ(intersect(a, b), shared.getArea() > 0);
    if (intersectOrTouch(a, b))
      ASSERT_TRUE(isContainedOrTouch(shared, a) && isContainedOrTouch(shared, b));
    else
      ASSERT_EQ(shared, Box(0, 0, 0, 0));
    ASSERT_EQ(isContainedOrTouch(a, b), shared == a);
    ASSERT_EQ(isContained(a, b), a.getXMin() > b.getXMin() && a.getYMin() > b.getYMin() && a.getXMax() < b.getXMax() &&
                                     a.getYMax() < b.getYMax());
  }
  EXPECT_TRUE(intersectOrTouch(Box(0, 0, 1, 1), Box(1, 0, 2, 1)));
  EXPECT_TRUE(compare(Box(0, 0, 9, 9), Box(0, 0, 9, 8), T(1)));
  EXPECT_FALSE(compare(Box(0, 0, 9, 9), Box(0, 2, 9, 9), T(1)));
}

TYPED_TEST(BoundingBoxTest, OfSpaceHoldTheirPoints) {
  using T = TypeParam;
  using Box = BoundingBox3d<T>;
  const auto holds = [](const Box& box, const Point3dData<T>& p) {
    return p.getX() >= box.getXMin() && p.getX() <= box.getXMax() && p.getY() >= box.getYMin() &&
           p.getY() <= box.getYMax() && p.getZ() >= box.getZMin() && p.getZ() <= box.getZMax();
  };
  support::Random draw(2718);
  const auto point = [&draw] {
    return Point3dData<T>(T(1 + draw.below(5)), T(1 + draw.below(5)), T(1 + draw.below(5)));
  };
  for (int i = 0; i < 500; ++i) {
    const auto a0 = point(), b0 = point();
    const Box a(a0, a0 + T(2)), b(b0, b0 + T(1));
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
  const Box box(1, 1, 1, 3, 3, 3);
  for (const Box& apart : {Box(4, 1, 1, 5, 3, 3), Box(1, 4, 1, 3, 5, 3), Box(1, 1, 4, 3, 3, 5)})
    EXPECT_EQ(intersection(box, apart), Box(0, 0, 0, 0, 0, 0)) << apart;
  EXPECT_TRUE(compare(box, Box(2, 1, 1, 3, 3, 4), T(1)));
  EXPECT_FALSE(compare(box, Box(1, 1, 3, 3, 3, 3), T(1)));
  EXPECT_FALSE(compare(box, Box(1, 1, 1, 3, 3, 5), T(1)));
}

TEST(BoundingBox, SizesOfIntegersWrapAndCentresDoNot) {
  EXPECT_EQ(BoundingBox2d<omInt32>(3, 0, 0, 2).getArea(), -6);
  EXPECT_EQ(BoundingBox2d<omInt32>(0, 0, 65536, 65536).getArea(), 0);
  EXPECT_EQ(BoundingBox2d<omUInt32>(0, 0, 65536, 32768).getArea(), 2147483648u);
  EXPECT_EQ(BoundingBox2d<omReal64>(0, 0, 65536, 65536).getArea(), 4294967296.0);
  const BoundingBox3d<omInt32> box(-2147483647 - 1, 0, 3, 2147483647, 2147483647, 1);
  EXPECT_EQ(box.sizeX(), -1);
  EXPECT_EQ(box.sizeZ(), -2);
  EXPECT_EQ(box.center(), Point3dData<omReal64>(-0.5, 1073741823.5, 2));
}

TEST(BoundingBox, NanKeepsTheComputedIntersection) {
  const omReal64 nan = support::s_nan;
  BoundingBox2d<omReal64> flat;
  intersection(BoundingBox2d<omReal64>(nan, 1, nan, 5), BoundingBox2d<omReal64>(nan, 2, nan, 6), flat);
  EXPECT_TRUE(flat.getXMin() != flat.getXMin() && flat.getYMin() == 2 && flat.getYMax() == 5) << flat;
  const BoundingBox3d<omReal64> real(nan, 1, 1, nan, 5, 5);
  EXPECT_EQ(intersection(real, BoundingBox3d<omReal64>(nan, 2, 2, nan, 6, 6)).getZMin(), 2.0);
}

}  // namespace
}  // namespace ormix::geom
