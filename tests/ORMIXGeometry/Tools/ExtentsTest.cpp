// Sizes in any direction.

#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

#include "support/Checks.h"
#include "support/Random.h"
#include "support/SampleObjects.h"

namespace {

using namespace samples;
using support::Random;

TEST(PlanarExtents, AreThoseOfATurnedRectangleAnEllipseAndASegment) {
  const Rectangle2d<omReal64> rectangle({100, -50}, 4, 1, 0.6);
  const Ellipse2d<omReal64> ellipse({100, -50}, 1, 4, 0.6 - s_pi / 2);
  for (const BaseGeometryEntity2d* entity : std::vector<const BaseGeometryEntity2d*>{&rectangle, &ellipse}) {
    for (const eRectangleSize size : {eRectangleSize::Area, eRectangleSize::Perimeter}) {
      const auto around = smallestRectangle(*entity, size);
      EXPECT_NEAR(around.centerX(), 100, 1e-13);
      EXPECT_NEAR(around.centerY(), -50, 1e-13);
      EXPECT_NEAR(around.getHalfLength(), 4, 1e-13);
      EXPECT_NEAR(around.getHalfWidth(), 1, 1e-13);
      EXPECT_NEAR(around.getOrientation(), 0.6, 1e-14);
    }
    EXPECT_NEAR(leastFeretDiameter(*entity).length, 2, 1e-13);
    EXPECT_NEAR(largestInscribedCircle(*entity).getRadius(), 1, 2e-9);
  }
  EXPECT_NEAR(greatestFeretDiameter(rectangle).length, 2 * std::sqrt(17), 1e-13);
  const FeretDiameter across = feretDiameterAt(ellipse, 0.6 + 5 * s_pi + 0.3);
  EXPECT_NEAR(across.length, 2 * std::hypot(4 * std::cos(0.3), std::sin(0.3)), 1e-13);
  // The points where the lines touch are on the ellipse, and as far apart along the direction.
  const omReal64 dx = across.to.x - across.from.x, dy = across.to.y - across.from.y;
  EXPECT_NEAR(std::abs(dx * std::cos(across.angle) + dy * std::sin(across.angle)), across.length, 1e-13);
  const omReal64 a = (across.to.x - 100) * std::cos(0.6) + (across.to.y + 50) * std::sin(0.6);
  const omReal64 b = (across.to.y + 50) * std::cos(0.6) - (across.to.x - 100) * std::sin(0.6);
  EXPECT_NEAR(a * a / 16 + b * b, 1, 1e-13);
  const Segment2d<omInt32> segment(0, 0, 3, 4);
  EXPECT_EQ(greatestFeretDiameter(segment).length, 5);
  EXPECT_EQ(leastFeretDiameter(segment).length, 0);
  EXPECT_THROW(largestInscribedCircle(segment), ORMIXGeometryException);
  EXPECT_THROW(smallestRectangle(Line2d(1, 2)), ORMIXGeometryException);
}

TEST(PlanarExtents, LeaveHolesOutOfTheLargestCircle) {
  PolygonWithHoles2d<omInt32> plate;
  plate.getExteriorPolygon() = ring<omInt32>(eP2DT_Exterior, 0, 0, 100);
  EXPECT_NEAR(largestInscribedCircle(plate).getRadius(), 50, 1e-7);
  const auto hole = boost::make_shared<PolygonWithHoles2d<omInt32>>();
  hole->getExteriorPolygon() = ring<omInt32>(eP2DT_Interior, 40, 40, 20);
  plate.getPolygonHoles().push_back(hole);
  // In a corner, through the corner of the hole: r (1 + √2) = 40 √2.
  omReal64 excess = -1;
  EXPECT_NEAR(largestInscribedCircle(plate, &excess).getRadius(), 40 * std::sqrt(2.0) / (1 + std::sqrt(2.0)), 1e-7);
  EXPECT_TRUE(excess >= 0 && excess < 1e-7);
}

omReal64 volumeOf(const Cuboid3d<omReal64>& box) {
  return 8 * box.getHalfLength() * box.getHalfWidth() * box.getHalfHeight();
}

/// The volume of the best of many boxes, each improved by random turns for as long as that helps.
omReal64 searchedVolume(Random& random, const std::vector<Point3dData<omReal64>>& points) {
  omReal64 best = support::s_infinity;
  for (int start = 0; start < 12; ++start) {
    std::array<omReal64, 4> turn{random.noise(), random.noise(), random.noise(), random.noise()};
    omReal64 smallest = support::s_infinity;
    for (omReal64 step = 1; step > 1e-5;) {
      std::array<omReal64, 4> q = turn;
      for (omReal64& part : q) part += step * random.noise();
      RotationMatrix axes;
      omReal64 volume = 1;
      if (!quaternionToMatrix(q[0], q[1], q[2], q[3], axes)) continue;
      for (const auto& axis : axes) {
        omReal64 low = support::s_infinity, high = -low;
        for (const auto& p : points) {
          const omReal64 at = axis[0] * p.getX() + axis[1] * p.getY() + axis[2] * p.getZ();
          low = std::min(low, at);
          high = std::max(high, at);
        }
        volume *= high - low;
      }
      step *= volume < smallest ? 1.5 : 0.96;
      if (volume < smallest) smallest = volume, turn = q;
    }
    best = std::min(best, smallest);
  }
  return best;
}

TEST(SpatialExtents, AreWithinOnePercentOfTheSmallestBox) {
  Random random(41);
  for (int round = 0; round < 12; ++round) {
    PointCloud3d<omReal64> cloud;
    auto& points = cloud.getCollection();
    for (int k = 0; k < 4 + 2 * round; ++k)
      points.emplace_back(random.uniform(-3, 3), random.uniform(-2, 2), random.uniform());
    const auto box = smallestBox(cloud);
    EXPECT_LE(volumeOf(box), 1.01 * searchedVolume(random, points));
    EXPECT_TRUE(box.getHalfLength() >= box.getHalfWidth() && box.getHalfWidth() >= box.getHalfHeight());
    // Every point is between the planes of its faces, which are where its corners are.
    const auto corner = box.bottomRightFrontCorner();
    for (const auto& other : {box.bottomRightBackCorner(), box.bottomLeftFrontCorner(), box.topRightFrontCorner()}) {
      const auto edge = corner - other;
      const auto along = [&edge](const Point3dData<omReal64>& v) {
        return edge.getX() * v.getX() + edge.getY() * v.getY() + edge.getZ() * v.getZ();
      };
      for (const auto& point : points) {
        const omReal64 at = along(point - other) / along(edge);
        EXPECT_TRUE(at > -1e-13 && at < 1 + 1e-13) << at;
      }
    }
  }
}

TEST(SpatialExtents, AreThoseOfSolidsAndOfWhatIsFlat) {
  // No face of a regular tetrahedron is along one of its smallest box, the cube around it.
  PointCloud3d<omReal64> cloud({{1, 1, 1}, {1, -1, -1}, {-1, 1, -1}, {-1, -1, 1}});
  EXPECT_NEAR(volumeOf(smallestBox(cloud)), 8, 1e-12);
  const Cuboid3d<omReal64> cuboid({10, 20, 30}, 3, 2, 1, 0.3, -0.4, 0.5);
  EXPECT_NEAR(volumeOf(smallestBox(cuboid)), 48, 1e-11);
  const Ellipsoid3d<omReal64> ellipsoid({10, 20, 30}, 1, 3, 2, 0.3, -0.4, 0.5);
  const auto around = EnvelopeTransform3d::envelope(ellipsoid);
  const auto box = smallestBox(ellipsoid), same = smallestBox(Ellipsoid3d<omReal64>({10, 20, 30}, 1, 3, 2, 0, 0, 0));
  EXPECT_EQ(volumeOf(box), 48);
  EXPECT_NEAR(CentroidTransform3d::centroid(box).getZ(), around.centerZ(), 1e-13);
  const auto turned = EnvelopeTransform3d::envelope(same);
  EXPECT_NEAR(turned.sizeX(), 2, 1e-12);
  EXPECT_NEAR(turned.sizeY(), 6, 1e-12);
  EXPECT_NEAR(smallestBox(Triangle3d<omReal32>({0, 0, 0}, {3, 0, 0}, {0, 4, 0})).getHalfHeight(), 0, 1e-14);
  EXPECT_EQ(volumeOf(smallestBox(Point3d<omReal64>(1, 2, 3))), 0);
  EXPECT_THROW(smallestBox(Plan3d(1, 0.5, 0.5)), ORMIXGeometryException);
  EXPECT_THROW(smallestBox(PointCloud3d<omReal64>()), ORMIXGeometryException);
}

}  // namespace
