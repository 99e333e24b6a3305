#include <ORMIXGeometry/Tools/Distance/PlanarDistance.h>
#include <ORMIXGeometry/Tools/Location/NearestPoint.h>

#include <functional>
#include <limits>

#include "support/Checks.h"
#include "support/Random.h"
#include "support/SampleObjects.h"

namespace {

using namespace ormix;
using namespace ormix::geom;
using P2 = Point2dData<omReal64>;

/// An entity with all points of its boundary as a function on [0, 1]; of a parabola the arc that is near.
struct Sample {
  boost::shared_ptr<BaseGeometryEntity2d> entity;
  std::function<P2(omReal64)> at;
  bool isParabola = false;
};

std::function<P2(omReal64)> alongRing(std::vector<P2> ring, bool isClosed = true) {
  return [ring, isClosed](omReal64 t) {
    const omReal64 place = t * static_cast<omReal64>(isClosed ? ring.size() : ring.size() - 1);
    const auto edge = static_cast<std::size_t>(place);
    const omReal64 part = place - static_cast<omReal64>(edge);
    const P2& p = ring[edge % ring.size()];
    const P2& q = ring[(edge + 1) % ring.size()];
    return P2(p.getX() + part * (q.getX() - p.getX()), p.getY() + part * (q.getY() - p.getY()));
  };
}

template <class Entity>
Sample cornered(const Entity& entity) {
  return {boost::make_shared<Entity>(entity), alongRing({entity.topLeftCorner(), entity.topRightCorner(),
                                                         entity.bottomRightCorner(), entity.bottomLeftCorner()})};
}

Sample roundSample(const Ellipse2d<omReal64>& ellipse) {
  const auto at = [ellipse](omReal64 t) {
    const omReal64 x = ellipse.getMajorRadius() * std::cos(s_twoPi * t),
                   y = ellipse.getMinorRadius() * std::sin(s_twoPi * t);
    const omReal64 c = ellipse.getCosTheta(), s = ellipse.getSinTheta();
    return P2(ellipse.centerX() + x * c - y * s, ellipse.centerY() + x * s + y * c);
  };
  if (ellipse.getMajorRadius() == ellipse.getMinorRadius())
    return {boost::make_shared<Circle2d<omReal64>>(ellipse.center(), ellipse.getMajorRadius()), at};
  return {boost::make_shared<Ellipse2d<omReal64>>(ellipse), at};
}

constexpr int s_nbKinds = 14;

/// A random entity of each kind, at about the origin: flat and round ellipses, regions with holes and pixels, too.
Sample sample(int kind, support::Random& random) {
  const P2 center(random.uniform(-3, 3), random.uniform(-3, 3));
  const omReal64 angle = random.uniform(-3, 3), a = random.uniform(0.2, 3), b = random.uniform(0.2, 3);
  const auto shifted = [&](omReal64 x, omReal64 y) { return P2(center.getX() + x, center.getY() + y); };
  const std::vector<P2> star{shifted(0, 0), shifted(a, -b), shifted(0.3 * a, b), shifted(-a, 0.2 * b)};
  Polygon2d<omReal64> polygon;
  polygon.getPointColl() = star;
  switch (kind) {
    case 0:
      return {boost::make_shared<Point2d<omReal64>>(center), [center](omReal64) { return center; }};
    case 1:
      return {boost::make_shared<Segment2d<omReal64>>(center, star[1]), alongRing({center, star[1]}, false)};
    case 2:
      return {boost::make_shared<BoundingBox2d<omReal64>>(center, shifted(a, b)),
              alongRing({center, shifted(a, 0), shifted(a, b), shifted(0, b)})};
    case 3:
      return roundSample({center, a, a, 0});
    case 4:
      return roundSample({center, a, b, angle});
    case 5:
      return roundSample({center, a, a / 1000, angle});
    case 6:
      return roundSample({P2(0, 0), a, a * (1 + 1e-7 * b), angle});
    case 7:
      return cornered(Square2d<omReal64>(center, a, angle));
    case 8:
      return cornered(Rectangle2d<omReal64>(center, a, b, angle));
    case 9:
      return {boost::make_shared<Polygon2d<omReal64>>(polygon), alongRing(star)};
    case 10:
      return {boost::make_shared<PointCloud2d<omReal64>>(star),
              [star](omReal64 t) { return star[static_cast<std::size_t>(t * 3.999)]; }};
    case 11: {
      Shape2d shape;
      const auto x = 1 + random.below(3), y = 1 + random.below(3);
      EXPECT_TRUE(shape.getRowIntersections().addRun(y, x, x + 2));
      const omReal64 left = x, low = y;
      return {boost::make_shared<Shape2d>(shape),
              alongRing({{left, low}, {left + 2, low}, {left + 2, low + 1}, {left, low + 1}})};
    }
    case 13: {
      const Arc2d<omReal64> arc(center, -a, angle, 2 * b);
      return {boost::make_shared<Arc2d<omReal64>>(arc), [arc](omReal64 t) { return arc.pointAt(t); }};
    }
    default: {
      const Parabola2d parabola(center, Line2d(a, angle));
      return {boost::make_shared<Parabola2d>(parabola),
              [parabola](omReal64 t) { return parabola.getPoint(24 * t - 12); }, true};
    }
  }
}

/// The least distance of many points of one boundary from the other, made least around the least of them.
omReal64 oracle(const Sample& a, const Sample& b) {
  const auto far = [&](omReal64 t) { return distance(a.at(t), nearestBoundaryPoint(*b.entity, a.at(t)).getCoords()); };
  constexpr int nb = 150;
  std::vector<omReal64> values(nb + 1);
  for (int i = 0; i <= nb; ++i) values[static_cast<std::size_t>(i)] = far(omReal64(i) / nb);
  omReal64 least = *std::min_element(values.begin(), values.end());
  const omReal64 limit = least * 1.2 + 0.1;
  for (int i = 0; i <= nb; ++i) {
    const auto at = static_cast<std::size_t>(i);
    if (values[at] > limit || (i > 0 && values[at - 1] < values[at]) || (i < nb && values[at + 1] < values[at]))
      continue;
    omReal64 low = std::max(0, i - 1) / omReal64(nb), high = std::min(nb, i + 1) / omReal64(nb);
    for (int step = 0; step < 70; ++step) {
      const omReal64 left = low + 0.4 * (high - low), right = low + 0.6 * (high - low);
      (far(left) < far(right) ? high : low) = far(left) < far(right) ? right : left;
    }
    least = std::min(least, far(low));
  }
  return least;
}

/// How far a point is from an entity or its boundary.
omReal64 offset(const Sample& sample, const P2& point, eInteriorPolicy policy) {
  if (!sample.isParabola)
    return distance(point, (policy == eIP_Filled ? nearestPoint(*sample.entity, point)
                                                 : nearestBoundaryPoint(*sample.entity, point))
                               .getCoords());
  const auto& parabola = dynamic_cast<const Parabola2d&>(*sample.entity);
  return std::abs(distance(point, parabola.getFocus()) - std::abs(parabola.getDirectrix().signedDistance(point)));
}

TEST(PlanarDistance, OfAllPairsIsThatOfDensePointsAndSymmetric) {
  support::Random random(1402);
  for (int kindA = 0; kindA < s_nbKinds; ++kindA)
    for (int kindB = 0; kindB < s_nbKinds; ++kindB)
      for (int count = 0; count < 2; ++count) {
        SCOPED_TRACE(testing::Message() << kindA << ' ' << kindB << ' ' << count);
        const Sample a = sample(kindA, random), b = sample(kindB, random);
        const auto isOther = [](int kind) { return kind >= 4 && kind <= 6; };
        const bool isArcAndCurve =
            (kindA == 13 && (isOther(kindB) || b.isParabola)) || (kindB == 13 && (isOther(kindA) || a.isParabola));
        if (isArcAndCurve || (a.isParabola && b.isParabola)) {
          EXPECT_THROW(nearestPoints(*a.entity, *b.entity), ORMIXGeometryException);
          continue;
        }
        const omReal64 expected = b.isParabola ? oracle(b, a) : oracle(a, b);
        for (const eInteriorPolicy policy : {eIP_Filled, eIP_Boundary}) {
          const PlanarNearestPoints found = nearestPoints(*a.entity, *b.entity, policy);
          const PlanarNearestPoints back = nearestPoints(*b.entity, *a.entity, policy);
          ASSERT_TRUE(found.distance == back.distance && found.onA == back.onB && found.onB == back.onA);
          ASSERT_NEAR(found.distance, distance(found.onA, found.onB), 1e-14);
          ASSERT_LE(offset(a, found.onA, policy), 1e-12);
          ASSERT_LE(offset(b, found.onB, policy), 1e-12);
          // The oracle comes near a crossing, not to it.
          if (found.distance > 0 || policy == eIP_Boundary)
            ASSERT_NEAR(found.distance, expected, 1e-9 * expected + (expected < 1e-7 ? 1e-7 : 0));
          else
            ASSERT_TRUE(found.onA == found.onB);
        }
      }
}

TEST(PlanarDistance, FollowsMotionsAndTheTriangleInequality) {
  support::Random random(1403);
  for (int count = 0; count < 2000; ++count) {
    const auto [i, j, k] = std::array{int(random.below(12)), int(random.below(12)), int(random.below(12))};
    const Sample a = sample(i, random), b = sample(j, random), c = sample(k, random);
    // Of sets, as b is passed from one of its points to another.
    const PlanarNearestPoints ab = nearestPoints(*a.entity, *b.entity), bc = nearestPoints(*b.entity, *c.entity);
    ASSERT_LE(distance(*a.entity, *c.entity), ab.distance + distance(ab.onB, bc.onA) + bc.distance + 1e-12);
    const RigidTransform2d motion(random.uniform(), random.uniform(-9, 9), random.uniform(-9, 9));
    if (i == 2 || j == 2 || i == 11 || j == 11) continue;  // which stay upright
    ASSERT_TRUE(a.entity->visitInSitu(motion) && b.entity->visitInSitu(motion));
    ASSERT_NEAR(distance(*a.entity, *b.entity), ab.distance, 1e-12) << i << ' ' << j;
  }
}

TEST(PlanarDistance, OfAllClassesAndArcs) {
  const Point2d<omReal32> point(1000, -7);
  forEachClass(PlanarEntityList(), [&](auto tag) {
    const auto entity = samples::makeSample(tag);
    using Entity = typename decltype(tag)::Type;
    if constexpr (isListed<Entity>(ClassList<Line2d, Skeleton2d, Vector2d>()))
      EXPECT_THROW(nearestPoints(entity, point), ORMIXGeometryException);
    else
      EXPECT_GT(nearestPoints(entity, point).distance, 10);
  });
  const Parabola2d parabola(P2(0, 1), Line2d(P2(0, -1), P2(1, -1)));  // y = x^2 / 4
  const auto at = [&](omReal64 abscissa) { return parabola.getAbscissa(P2(abscissa, 0)); };
  EXPECT_NEAR(distance(parabola, Point2d<omReal64>(0, 10)), 6, 1e-14);
  EXPECT_NEAR(distance(Point2d<omInt32>(0, 10), ParabolaArc2d{parabola, at(2), at(-2)}), std::hypot(2, 9), 1e-14);
  EXPECT_NEAR(distance(ParabolaArc2d{parabola, at(1), at(2)}, ParabolaArc2d{parabola, at(-3), at(-1)}), 2, 1e-14);
  EXPECT_EQ(distance(ParabolaArc2d{parabola, at(1), at(2)}, Square2d<omInt32>({0, 0}, 1, 0)), 0);
  const PlanarNearestPoints touching = nearestPoints(Circle2d<omInt32>({0, 0}, 3), Circle2d<omInt32>({3, 4}, 2));
  EXPECT_TRUE(touching.distance == 0 && touching.onA == touching.onB);
  PolygonWithHoles2d<omInt32> annulus = samples::makeSample(ClassTag<PolygonWithHoles2d<omInt32>>());
  EXPECT_EQ(distance(annulus, Circle2d<omReal64>({15, 15}, 1)), 4);
  EXPECT_EQ(distance(annulus, Ellipse2d<omReal64>({22, 22}, 1, 1.5, 0)), 0);
  EXPECT_EQ(distance(annulus, Ellipse2d<omReal64>({22, 22}, 1, 1.5, 0), eIP_Boundary), 0.5);
}

TEST(PlanarDistance, OfAnyMagnitudeAndOfNothing) {
  for (const omReal64 unit : {1e300, 1.0, 1e-300}) {
    const Circle2d<omReal64> circle({-unit, 0}, unit / 2);
    const Ellipse2d<omReal64> ellipse({unit, 0}, unit / 4, unit / 8, 0);
    Polygon2d<omReal64> polygon;
    polygon.getPointColl() = {{-3 * unit, -3 * unit}, {3 * unit, -3 * unit}, {0, 3 * unit}};
    EXPECT_NEAR(distance(circle, ellipse) / unit, 1.25, 1e-15);
    EXPECT_NEAR(distance(Parabola2d(P2(3 * unit, 0), Line2d(2 * unit, 0)), ellipse) / unit, 1.25, 1e-12);
    EXPECT_EQ(distance(polygon, ellipse), 0);
    EXPECT_GT(distance(polygon, ellipse, eIP_Boundary) / unit, 0.1);
  }
  constexpr omReal64 nan = std::numeric_limits<omReal64>::quiet_NaN();
  const Point2d<omReal64> origin(0, 0);
  EXPECT_THROW(nearestPoints(Polygon2d<omReal64>(), origin), ORMIXGeometryException);
  EXPECT_THROW(nearestPoints(origin, Shape2d()), ORMIXGeometryException);
  EXPECT_THROW(nearestPoints(Circle2d<omReal64>({0, 0}, nan), origin), ORMIXGeometryException);
  EXPECT_THROW(nearestPoints(origin, Segment2d<omReal64>(0, 0, 1, nan)), ORMIXGeometryException);
  EXPECT_THROW(nearestPoints(ParabolaArc2d{Parabola2d(P2(0, 1), Line2d(-1, 0)), 0, nan}, origin),
               ORMIXGeometryException);
  EXPECT_THROW(nearestPoints(Parabola2d(), origin), ORMIXGeometryException);
}

}  // namespace
