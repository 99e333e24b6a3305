#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Distance/RoundSolidDistance.h>
#include <ORMIXMath/Distance/TrianglesDistance.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include "support/Random.h"

namespace {

using namespace ormix;
using ormix::detail::operator+;
using ormix::detail::operator-;
using ormix::detail::operator*;

omReal64 apart(const SpatialPoint& p, const SpatialPoint& q) { return std::hypot(p.x - q.x, p.y - q.y, p.z - q.z); }

/// Any of the shapes, with its nearest point to a point.
struct Shape {
  enum Kind { eFrustum, eTorus, eEllipsoid, eTriangle, eSegment } kind;
  RoundSolid round;
  SpatialEllipsoid ellipsoid;
  SpatialTriangle triangle;

  SpatialPoint nearest(const SpatialPoint& p, bool isFilled) const {
    if (kind <= eTorus) return nearestOn(round, p, isFilled);
    if (kind >= eTriangle) return pointTriangleNearestPair(p, triangle).onB;
    return isFilled && ellipsoidLevel(ellipsoid, p) <= 1 ? p : nearestOnEllipsoid(ellipsoid, p);
  }
};

SpatialNearestPair nearestPair(const Shape& a, const Shape& b, bool isFilled) {
  if (a.kind == Shape::eSegment) return segmentRoundNearestPair({a.triangle.p0, a.triangle.p1}, b.round, isFilled);
  if (a.kind == Shape::eTriangle) return triangleRoundNearestPair(a.triangle, b.round, isFilled);
  if (a.kind == Shape::eEllipsoid) return ellipsoidRoundNearestPair(a.ellipsoid, b.round, isFilled);
  return roundsNearestPair(a.round, b.round, isFilled);
}

/// How shapes lie: far from each other, in each other, and around one axis.
enum ePlacement { eApart, eNested, eCoaxial };

class RoundSolidDistanceTest : public testing::Test {
 protected:
  SpatialPoint vector(omReal64 size) {
    return {random.uniform(-size, size), random.uniform(-size, size), random.uniform(-size, size)};
  }
  Shape make(Shape::Kind kind, ePlacement placement) {
    const SpatialPoint c =
        placement == eCoaxial ? SpatialPoint{0, 0, random.uniform(-0.2, 0.2)} : vector(placement == eApart ? 3 : 0.4);
    const SpatialPoint axis = placement == eCoaxial ? SpatialPoint{0, 0, 1} : unitVector(vector(1));
    const omReal64 size = std::exp(random.uniform(-2.3, 1.1));
    const auto part = [&](omReal64 most) { return size * random.uniform(0, most); };
    Shape shape{kind, {}, {}, {}};
    if (kind == Shape::eFrustum) {
      // Discs, cylinders and cones among them.
      const SpatialPoint half = axis * (random.below(8) == 0 ? 0 : part(1.5));
      const omReal64 radius = part(1);
      const std::array<omReal64, 3> others{radius, 0, part(1)};
      shape.round = frustumBetween(c - half, c + half, radius, others[random.below(3)]);
    } else if (kind == Shape::eTorus) {
      // Circles, and tubes that are wider than the ring.
      const std::array<omReal64, 4> tubes{0, part(0.2), part(0.5), part(2)};
      shape.round = torusAround(c, axis, size * random.uniform(0.2, 1.5), tubes[random.below(4)]);
    } else if (kind == Shape::eEllipsoid) {
      const auto angle = [&] { return placement == eCoaxial ? 0 : random.uniform(-3, 3); };
      const omReal64 second = placement == eCoaxial ? size : part(1);
      shape.ellipsoid = toSpatialEllipsoid(c, size, second, part(1), angle(), angle(), angle());
    } else {
      shape.triangle = {c + vector(size), c + vector(size), c + vector(size)};
      if (kind == Shape::eSegment) shape.triangle.p2 = shape.triangle.p1;
    }
    return shape;
  }
  support::Random random{1604};
};

TEST_F(RoundSolidDistanceTest, IsThatOfPointsThatNoWayToAndFroBringsNearer) {
  constexpr std::array<Shape::Kind, 5> kinds{Shape::eFrustum, Shape::eTorus, Shape::eEllipsoid, Shape::eTriangle,
                                             Shape::eSegment};
  int nbNested = 0;
  for (const Shape::Kind kindA : kinds)
    for (const Shape::Kind kindB : {Shape::eFrustum, Shape::eTorus})
      for (int i = 0; i < 120; ++i) {
        const auto placement = static_cast<ePlacement>(i % 3);
        const bool isFilled = i % 2 == 0;
        const Shape a = make(kindA, placement), b = make(kindB, placement);
        SCOPED_TRACE(testing::Message() << kindA << " and " << kindB << ", " << i);
        const SpatialNearestPair pair = nearestPair(a, b, isFilled);
        EXPECT_NEAR(apart(pair.onA, pair.onB), pair.distance, 1e-12);
        EXPECT_LE(apart(a.nearest(pair.onA, isFilled), pair.onA), 1e-12);
        EXPECT_LE(apart(b.nearest(pair.onB, isFilled), pair.onB), 1e-12);
        nbNested += !isFilled && pair.distance > 0 && nearestPair(a, b, true).distance == 0;
        for (int start = 0; start < 25; ++start) {
          SpatialPoint p = a.nearest(vector(5), false), q = b.nearest(p, isFilled);
          for (int step = 0; step < 40; ++step) {
            p = a.nearest(q, isFilled);
            q = b.nearest(p, isFilled);
          }
          ASSERT_GE(apart(p, q), pair.distance - 1e-10);
        }
      }
  EXPECT_GT(nbNested, 60);
}

TEST_F(RoundSolidDistanceTest, IsExactWhereItIsKnown) {
  const RoundSolid ring = torusAround({0, 0, 0}, {0, 0, 1}, 5, 1), shaft = frustumBetween({0, 0, -9}, {0, 0, 9}, 3, 3);
  const RoundSolid spindle = torusAround({0, 0, 0}, {0, 0, 1}, 3, 5);
  const auto between = [](const RoundSolid& a, const RoundSolid& b, bool isFilled = true) {
    return roundsNearestPair(a, b, isFilled).distance;
  };
  EXPECT_NEAR(between(ring, shaft), 1, 1e-14);
  EXPECT_NEAR(between(shaft, ring), 1, 1e-14);
  // A shaft that is not quite in the middle, or not quite parallel.
  EXPECT_NEAR(between(ring, frustumBetween({1e-7, 0, -9}, {1e-7, 0, 9}, 3, 3)), 1 - 1e-7, 1e-12);
  EXPECT_NEAR(between(ring, torusAround({0, 0, 3}, {0, 0, 1}, 5, 0.5)), 1.5, 1e-14);
  EXPECT_EQ(between(ring, torusAround({10, 0, 0}, {0, 1, 0}, 5, 0.5)), 0);
  EXPECT_NEAR(between(ring, torusAround({0, 0, 0}, {0, 0, 1}, 5, 0.25), false), 0.75, 1e-14);
  EXPECT_EQ(between(ring, torusAround({0, 0, 0}, {0, 0, 1}, 5, 0.25)), 0);
  EXPECT_NEAR(between(spindle, frustumBetween({0, 0, -1}, {0, 0, 1}, 1, 1), false), 3, 1e-12);
  // Beside, across and in each other; a needle through a plate, whose rims are apart.
  EXPECT_NEAR(between(shaft, frustumBetween({8, 0, -4}, {8, 0, 20}, 2, 2)), 3, 1e-12);
  EXPECT_NEAR(between(shaft, frustumBetween({9, -5, 0}, {9, 5, 0}, 2, 2)), 4, 1e-12);
  EXPECT_NEAR(between(shaft, frustumBetween({1, 0, -3}, {1, 0, 3}, 1, 1), false), 1, 1e-12);
  const RoundSolid plate = frustumBetween({0, 0, 0}, {0, 0, 0.1}, 5, 5),
                   needle = frustumBetween({1, 1, -5}, {1, 2, 5}, 0.1, 0);
  for (const bool isFilled : {true, false}) EXPECT_EQ(between(plate, needle, isFilled), 0);
  const SpatialEllipsoid egg = toSpatialEllipsoid({0, 0, 20}, 4, 2, 1, 0, 0, 0);
  EXPECT_NEAR(ellipsoidRoundNearestPair(egg, shaft, true).distance, 10, 1e-12);
  EXPECT_NEAR(ellipsoidRoundNearestPair(toSpatialEllipsoid({0, 0, 0}, 2, 2, 1, 0, 0, 0), shaft, false).distance, 1,
              1e-12);
  EXPECT_NEAR(ellipsoidRoundNearestPair(toSpatialEllipsoid({0, 0, 0}, 2, 2, 9, 0, 0, 0), ring, false).distance, 2,
              1e-12);
  // A triangle whose edges are all in the tube, but the point on the axis is not.
  const SpatialTriangle around{{5, 0, 0}, {-5, 5, 0}, {-5, -5, 0}};
  EXPECT_EQ(triangleRoundNearestPair(around, torusAround({0, 0, 0}, {0, 0, 1}, 5, 4.5), false).distance, 0);
}

}  // namespace
