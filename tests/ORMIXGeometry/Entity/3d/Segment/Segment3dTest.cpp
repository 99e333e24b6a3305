#include <ORMIXGeometry/Entity/3d/Segment/Segment3d.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>

namespace ormix::geom {
namespace {

constexpr omReal64 s_right = 1.5707963267948966;

template <class T>
class Segment3dTest : public testing::Test {};
using Scalars = testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(Segment3dTest, Scalars);

TYPED_TEST(Segment3dTest, IsBuiltFromPointsCoordinatesOrAVector) {
  using T = TypeParam;
  using Segment = Segment3d<T>;
  Segment segment(1, 2, 3, 3, 5, 9);
  for (const Segment& same :
       {Segment({1, 2, 3}, {3, 5, 9}), Segment(Point3d<T>(1, 2, 3), Point3dData<T>(3, 5, 9)),
        Segment(Point3d<T>(1, 2, 3), Vector3d(2, s_right, 0) + Vector3d(3, s_right, s_right) + Vector3d(6, 0, 0))}) {
    EXPECT_EQ(same.getPoint0(), segment.getPoint0());
    EXPECT_LE(distance(cast<omReal64>(same.getPoint1()), Point3dData<omReal64>(3, 5, 9)), 1e-6);
  }
  EXPECT_EQ(segment.getLength(), 7.0);
  EXPECT_EQ(segment.getMiddlePoint(), Point3dData<omReal64>(2, 3.5, 6));
  std::ostringstream text;
  text << segment;
  EXPECT_EQ(text.str(), "[p0=[1, 2, 3], p1=[3, 5, 9]]");
  segment.setPoint0(Point3d<T>(3, 5, 8));
  EXPECT_EQ(segment.getLength(), 1.0);
}

TYPED_TEST(Segment3dTest, DirectionLeadsFromTheFirstToTheSecondEnd) {
  using Segment = Segment3d<TypeParam>;
  for (const auto& [segment, x, y, z] :
       {std::tuple(Segment(1, 1, 1, 3, 4, 7), 2.0, 3.0, 6.0),
        // Decreasing coordinates, for which unsigned differences would wrap.
        std::tuple(Segment(3, 4, 7, 1, 1, 1), -2.0, -3.0, -6.0), std::tuple(Segment(0, 3, 1, 0, 0, 1), 0.0, -3.0, 0.0),
        // Straight down comes out pointing up.
        std::tuple(Segment(1, 1, 5, 1, 1, 1), 0.0, 0.0, 4.0)}) {
    const Point3dData<omReal64> expected(x, y, z);
    EXPECT_EQ(segment.getDirection().getRho(), segment.getLength()) << segment;
    EXPECT_LE(distance(convert<omReal64>(segment.getDirection()), expected), 1e-14) << segment;
    EXPECT_LE(distance(convert<omReal64>(segment.getUnitDirection()), expected / expected.normL2()), 1e-15) << segment;
  }
  EXPECT_EQ(Segment(1, 2, 3, 1, 2, 3).getDirection(), Vector3d());
  EXPECT_EQ(Segment(1, 2, 3, 1, 2, 3).getUnitDirection(), Vector3d(1, 0, 0));
}

TYPED_TEST(Segment3dTest, NearestPointsAreThoseOfTheDistance) {
  using T = TypeParam;
  using Real = Point3dData<omReal64>;
  // A square of side 10 in the plane z = 5, and an edge above it across its middle.
  const Segment3d<T> edge(0, 0, 5, 10, 0, 5);
  const Segment3d<T> across(4, 8, 9, 4, 0, 9);
  Real nearest;
  Real other;
  EXPECT_EQ(edge.distance(Point3d<T>(4, 3, 9)), 5.0);
  EXPECT_EQ(edge.distance(Point3d<T>(12, 3, 11), nearest), 7.0);
  EXPECT_EQ(nearest, Real(10, 0, 5));
  EXPECT_EQ(edge.distance(across), 4.0);
  EXPECT_EQ(across.distance(edge, nearest, other), 4.0);
  EXPECT_EQ(nearest, Real(4, 0, 9));
  EXPECT_EQ(other, Real(4, 0, 5));
  EXPECT_EQ(edge.distance(Segment3d<T>(7, 0, 5, 7, 9, 9)), 0.0);
}

TEST(Segment3d, NoPairOfPointsIsNearer) {
  const unsigned seed = 4711;
  SCOPED_TRACE(testing::Message() << "seed " << seed);
  std::mt19937 draw(seed);
  const auto point = [&draw] {
    return Point3dData<omInt32>(static_cast<omInt32>(draw() % 41) - 20, static_cast<omInt32>(draw() % 41) - 20,
                                static_cast<omInt32>(draw() % 41) - 20);
  };
  const auto at = [](const Segment3d<omInt32>& segment, omReal64 t) {
    return cast<omReal64>(segment.getPoint0()) * (1 - t) + cast<omReal64>(segment.getPoint1()) * t;
  };
  for (int i = 0; i < 200; ++i) {
    const Segment3d<omInt32> a(point(), point());
    const Segment3d<omInt32> b(point(), point());
    Point3dData<omReal64> onA;
    Point3dData<omReal64> onB;
    const omReal64 result = a.distance(b, onA, onB);
    ASSERT_NEAR(distance(onA, onB), result, 1e-13) << a << b;
    for (int s = 0; s <= 16; ++s)
      for (int t = 0; t <= 16; ++t) ASSERT_LE(result, distance(at(a, s / 16.0), at(b, t / 16.0)) + 1e-13) << a << b;
  }
}

TEST(Segment3d, OnlyTheLengthWrapsForIntegers) {
  const omInt32 highest = std::numeric_limits<omInt32>::max();
  const omInt32 lowest = std::numeric_limits<omInt32>::min();
  EXPECT_TRUE(std::isnan(Segment3d<omInt32>(0, 0, 0, 50000, 0, 0).getLength()));
  const Segment3d<omInt32> segment(lowest, 0, 0, highest, 0, 0);
  EXPECT_EQ(segment.getDirection().getRho(), 4294967295.0);
  EXPECT_EQ(segment.distance(Point3d<omInt32>(0, 60000, 0)), 60000.0);
  EXPECT_EQ(segment.getMiddleX(), -0.5);
}

}  // namespace
}  // namespace ormix::geom
