#include <ORMIXGeometry/ORMIXGeometry.h>

#include "support/Checks.h"
#include "support/Random.h"

namespace {

using namespace ormix;
using namespace ormix::geom;
using P2 = Point2dData<omReal64>;

Polygon2d<omReal64> polygonOf(const std::vector<P2>& points) {
  Polygon2d<omReal64> polygon;
  polygon.getPointColl() = points;
  return polygon;
}

/// A star around a random place, sometimes with another one as its hole or beside it.
PolygonWithHoles2d<omReal64> randomRegion(support::Random& random) {
  const auto star = [&random](omReal64 size) {
    std::vector<P2> points;
    const P2 center(random.uniform(), random.uniform());
    const omReal64 nb = 3 + random.below(6);
    for (omReal64 i = 0; i < nb; ++i) {
      const omReal64 radius = size * random.uniform(0.3, 1), angle = s_twoPi * i / nb;
      points.emplace_back(center.getX() + radius * std::cos(angle), center.getY() + radius * std::sin(angle));
    }
    return polygonOf(points);
  };
  PolygonWithHoles2d<omReal64> region;
  region.getExteriorPolygon() = star(4);
  if (random.below(2) == 0) {
    const auto hole = boost::make_shared<PolygonWithHoles2d<omReal64>>();
    hole->getExteriorPolygon() = star(2);
    region.getPolygonHoles() = {hole};
  }
  return region;
}

std::vector<const Polygon2d<omReal64>*> ringsOf(const PolygonWithHoles2d<omReal64>& region) {
  std::vector<const Polygon2d<omReal64>*> rings{&region.getExteriorPolygon()};
  for (const auto& hole : region.getPolygonHoles()) rings.push_back(&hole->getExteriorPolygon());
  return rings;
}

/// The largest distance of many points of the boundary of a, made largest around the largest ones.
omReal64 boundaryOracle(const PolygonWithHoles2d<omReal64>& a, const PreparedBoundary2d& b) {
  constexpr int nb = 100;
  omReal64 largest = 0;
  for (const auto* ring : ringsOf(a))
    for (std::size_t i = 0; i < ring->getNbPoints(); ++i) {
      const P2 p = ring->getPointColl()[i], q = ring->getPointColl()[(i + 1) % ring->getNbPoints()];
      const auto far = [&](omReal64 t) {
        const P2 at(p.getX() + t * (q.getX() - p.getX()), p.getY() + t * (q.getY() - p.getY()));
        return distance(at, b.nearestPoint(at).getCoords());
      };
      for (int k = 0; k <= nb; ++k) {
        omReal64 low = std::max(0, k - 1) / omReal64(nb), high = std::min(nb, k + 1) / omReal64(nb);
        if (far(0.5 * (low + high)) < largest - 8.0 / nb) continue;
        for (int step = 0; step < 70; ++step) {
          const omReal64 left = low + 0.4 * (high - low), right = low + 0.6 * (high - low);
          (far(left) > far(right) ? high : low) = far(left) > far(right) ? right : left;
        }
        largest = std::max({largest, far(low), far(0), far(1)});
      }
    }
  return largest;
}

/// The largest distance of the points of a grid that are in a.
omReal64 regionOracle(const PolygonWithHoles2d<omReal64>& a, const PolygonWithHoles2d<omReal64>& b, omReal64 step) {
  const PreparedPolygon2d inA(a), inB(b);
  const PreparedBoundary2d ofB(b);
  omReal64 largest = 0;
  for (omReal64 x = -5; x <= 5; x += step)
    for (omReal64 y = -5; y <= 5; y += step)
      if (inA.locate(P2(x, y)) != ePL_Outside && inB.locate(P2(x, y)) == ePL_Outside)
        largest = std::max(largest, distance(P2(x, y), ofB.nearestPoint(P2(x, y)).getCoords()));
  return largest;
}

TEST(Hausdorff2d, IsThatOfDensePoints) {
  support::Random random(1404);
  for (int count = 0; count < 6; ++count) {
    SCOPED_TRACE(count);
    const auto a = randomRegion(random), b = randomRegion(random), c = randomRegion(random);
    const PlanarHausdorff there = directedHausdorff(a, b, eIP_Boundary);
    const omReal64 expected = boundaryOracle(a, PreparedBoundary2d(b));
    ASSERT_NEAR(there.distance, expected, 1e-12 * expected);
    ASSERT_NEAR(distance(there.onA, there.onB), there.distance, 1e-14);
    ASSERT_LE(distance(there.onB, nearestBoundaryPoint(b, there.onB).getCoords()), 1e-14);
    ASSERT_LE(distance(there.onA, nearestBoundaryPoint(a, there.onA).getCoords()), 1e-14);

    constexpr omReal64 step = 0.1;
    const PlanarHausdorff region = directedHausdorff(a, b, eIP_Filled);
    const omReal64 onGrid = regionOracle(a, b, step);
    ASSERT_GE(region.distance, onGrid - 1e-14);
    ASSERT_LE(region.distance, onGrid + 3 * step);
    ASSERT_EQ(region.excess, 0);
    ASSERT_LE(distance(region.onA, nearestPoint(a, region.onA).getCoords()), 1e-14);
    ASSERT_NEAR(distance(region.onA, region.onB), region.distance, 1e-14);
    ASSERT_NEAR(distance(region.onA, nearestPoint(b, region.onA).getCoords()), region.distance, 1e-14);

    for (const eInteriorPolicy policy : {eIP_Filled, eIP_Boundary}) {
      const PlanarHausdorff ab = hausdorff(a, b, policy), ba = hausdorff(b, a, policy);
      ASSERT_TRUE(ab.distance == ba.distance && ab.onA == ba.onB && ab.isFromA != ba.isFromA);
      ASSERT_EQ(std::max(directedHausdorff(a, b, policy).distance, directedHausdorff(b, a, policy).distance),
                ab.distance);
      ASSERT_LE(hausdorff(a, c, policy).distance, ab.distance + hausdorff(b, c, policy).distance + 1e-12);
      ASSERT_EQ(hausdorff(a, a, policy).distance, 0);
    }
  }
}

TEST(Hausdorff2d, OfKnownSets) {
  PolygonWithHoles2d<omInt32> frame;
  frame.getExteriorPolygon() = cast<omInt32>(polygonOf({{0, 0}, {20, 0}, {20, 10}, {0, 10}}));
  frame.getPolygonHoles() = {boost::make_shared<PolygonWithHoles2d<omInt32>>()};
  frame.getPolygonHoles()[0]->getExteriorPolygon() = cast<omInt32>(polygonOf({{4, 3}, {16, 3}, {16, 7}, {4, 7}}));
  const BoundingBox2d<omInt32> box(0, 0, 20, 10);
  // All points between the sides of the hole are equally far.
  const PlanarHausdorff inHole = hausdorff(frame, box, eIP_Filled);
  EXPECT_NEAR(inHole.distance, 2, 1e-12);
  EXPECT_FALSE(inHole.isFromA || inHole.excess > 0);
  EXPECT_EQ(directedHausdorff(frame, box, eIP_Filled).distance, 0);
  EXPECT_EQ(hausdorff(frame, box).distance, 4);  // the ends of the hole
  // Between two points, not at a vertex; and inside a region.
  const PointCloud2d<omReal64> pair({{0, 1}, {8, 1}});
  const PlanarHausdorff between = directedHausdorff(Segment2d<omReal64>(-1, -2, 9, -2), pair);
  EXPECT_EQ(between.distance, 5);
  EXPECT_EQ(between.onA, P2(4, -2));
  EXPECT_NEAR(directedHausdorff(BoundingBox2d<omReal64>(0, 0, 8, 2), pair, eIP_Filled).distance, std::sqrt(17.0),
              1e-12);
  EXPECT_NEAR(hausdorff(Circle2d<omReal64>({0, 0}, 1), Ellipse2d<omReal64>({0, 0}, 3, 1, 0.4)).distance, 2, 1e-7);
  EXPECT_NEAR(hausdorff(Circle2d<omReal64>({0, 0}, 2), Circle2d<omReal64>({0, 0}, 1)).distance, 1, 1e-7);
  // Regions that are nearly the same: what is inside both costs nothing, nor the places along both boundaries.
  std::vector<P2> inner, outer;
  for (int i = 0; i < 3000; ++i) {
    inner.emplace_back(std::cos(i * s_twoPi / 3000), std::sin(i * s_twoPi / 3000));
    outer.emplace_back(1.0000001 * std::cos(i * s_twoPi / 2999), 1.0000001 * std::sin(i * s_twoPi / 2999));
  }
  outer.pop_back();
  const PlanarHausdorff near = directedHausdorff(polygonOf(inner), polygonOf(outer), eIP_Filled);
  EXPECT_NEAR(near.distance, 1 - 1.0000001 * std::cos(s_pi / 2999), 1e-10);
  EXPECT_EQ(near.excess, 0);
  for (const omReal64 unit : {1e300, 1e-300})
    EXPECT_NEAR(hausdorff(Segment2d<omReal64>(0, 0, 8 * unit, 0), Point2d<omReal64>(0, 6 * unit)).distance / unit, 10,
                1e-14);
  EXPECT_THROW(hausdorff(box, Parabola2d(P2(0, 1), Line2d(-1, 0))), ORMIXGeometryException);
  EXPECT_THROW(hausdorff(box, Polygon2d<omReal32>()), ORMIXGeometryException);
  EXPECT_THROW(hausdorff(Point2d<omReal64>(std::nan(""), 0), box), ORMIXGeometryException);
}

}  // namespace
