#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/2d/Shape/Contours.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Region/PerimeterEstimators.h>
#include <ORMIXGeometry/Region/RegionTable.h>
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "support/Checks.h"
#include "support/Random.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

constexpr omReal64 s_pi = 3.141592653589793;

/// The pixels below column and row 300 whose centers, in the unit of the spacing, are inside.
template <class Inside>
RowIntersections digitized(const Inside& inside, const PixelSpacing& spacing = {}) {
  RowIntersections pixels;
  for (omUInt32 y = 0; y < 300; ++y)
    for (omUInt32 x = 0; x < 300; ++x)
      if (inside((x + 0.5) * spacing.x, (y + 0.5) * spacing.y)) {
        omUInt32 end = x + 1;
        while (end < 300 && inside((end + 0.5) * spacing.x, (y + 0.5) * spacing.y)) ++end;
        EXPECT_TRUE(pixels.addRun(y, x, end));
        x = end;
      }
  return pixels;
}

auto disk(omReal64 x0, omReal64 y0, omReal64 radius) {
  return [=](omReal64 x, omReal64 y) { return std::hypot(x - x0, y - y0) < radius; };
}

auto square(omReal64 x0, omReal64 y0, omReal64 side, omReal64 angle) {
  return [=, c = std::cos(angle), s = std::sin(angle)](omReal64 x, omReal64 y) {
    const omReal64 u = c * (x - x0) + s * (y - y0), v = c * (y - y0) - s * (x - x0);
    return std::max(std::abs(u), std::abs(v)) < side / 2;
  };
}

/// Of the relative errors of an estimate.
struct Errors {
  omReal64 mean = 0, greatest = 0;
  void add(omReal64 estimate, omReal64 length, int count) {
    mean += (estimate / length - 1) / count;
    greatest = std::max(greatest, std::abs(estimate / length - 1));
  }
  void expectWithin(omReal64 ofMean, omReal64 ofGreatest, const char* what) const {
    EXPECT_LT(std::abs(mean), ofMean) << what;
    EXPECT_LT(greatest, ofGreatest) << what;
  }
};

TEST(Perimeters, AreAsExactAsStated) {
  support::Random random(5);
  const auto uniform = [&] { return static_cast<omReal64>(random() % 100000) / 100000; };
  constexpr int count = 100;
  Errors ofDisk[4], ofSquare[3];
  for (int round = 0; round < count; ++round) {
    const omReal64 x = 150 + uniform(), y = 150 + uniform(), radius = 20 + round % 10, side = 60;
    const RegionProperties d = regionProperties(digitized(disk(x, y, radius)));
    const RegionProperties s = regionProperties(digitized(square(x, y, side, uniform() * s_pi / 2)));
    const omReal64 length = 2 * s_pi * radius;
    ofDisk[0].add(d.croftonPerimeter, length, count);
    ofDisk[1].add(d.perimeter, length, count);
    ofDisk[2].add(d.minimumLengthPerimeter, length, count);
    ofDisk[3].add(d.polygonPerimeter, length * 4 / s_pi, count);
    ofSquare[0].add(s.minimumLengthPerimeter, 4 * side, count);
    ofSquare[1].add(s.perimeter, 4 * side, count);
    ofSquare[2].add(s.croftonPerimeter, 4 * side, count);
    EXPECT_LT(d.circularity, 1.01);
    EXPECT_LT(s.circularity, s_pi / 4 * 1.05);
  }
  ofDisk[0].expectWithin(0.001, 0.012, "Crofton, disk");
  ofDisk[1].expectWithin(0.003, 0.008, "corner count, disk");
  ofDisk[2].expectWithin(0.015, 0.018, "minimum length, disk");
  ofDisk[3].expectWithin(0.002, 0.013, "edges, disk");
  ofSquare[0].expectWithin(0.003, 0.009, "minimum length, square");
  ofSquare[1].expectWithin(0.008, 0.025, "corner count, square");
  ofSquare[2].expectWithin(0.01, 0.06, "Crofton, square");
}

/// What the sizes of an entity and of another description of it may differ by, relative.
void expectAlike(const RegionProperties& a, const RegionProperties& b, omReal64 tolerance) {
  const omReal64 size = b.equivalentDiameter;
  const auto expectNear = [&](omReal64 x, omReal64 y, omReal64 unit, const char* what) {
    EXPECT_LE(std::abs(x - y), tolerance * unit) << what << ": " << x << " for " << y;
  };
  expectNear(a.area, b.area, b.area, "area");
  expectNear(a.centroid.getX(), b.centroid.getX(), size, "x");
  expectNear(a.centroid.getY(), b.centroid.getY(), size, "y");
  expectNear(a.box.getXMax(), b.box.getXMax(), size, "box");
  expectNear(a.box.getYMin(), b.box.getYMin(), size, "box");
  expectNear(a.perimeter, b.perimeter, b.perimeter, "perimeter");
  expectNear(a.convexArea, b.convexArea, b.area, "convex area");
  expectNear(a.convexPerimeter, b.convexPerimeter, b.perimeter, "convex perimeter");
  expectNear(a.greatestFeret.length, b.greatestFeret.length, size, "greatest Feret");
  expectNear(a.leastFeret.length, b.leastFeret.length, size, "least Feret");
  expectNear(a.feretAcross.length, b.feretAcross.length, size, "Feret across");
  expectNear(a.equivalentEllipse.getMajorRadius(), b.equivalentEllipse.getMajorRadius(), size, "major");
  expectNear(a.equivalentEllipse.getMinorRadius(), b.equivalentEllipse.getMinorRadius(), size, "minor");
  expectNear(std::remainder(a.equivalentEllipse.getTheta() - b.equivalentEllipse.getTheta(), s_pi), 0, 1,
             "orientation");
  expectNear(a.smallestRectangle.getHalfLength(), b.smallestRectangle.getHalfLength(), size, "rectangle");
  expectNear(a.enclosingCircle.getRadius(), b.enclosingCircle.getRadius(), size, "enclosing");
  expectNear(a.inscribedCircle.getRadius(), b.inscribedCircle.getRadius(), size, "inscribed");
  expectNear(a.huMoments.getValue(0), b.huMoments.getValue(0), b.huMoments.getValue(0), "Hu");
  EXPECT_EQ(a.eulerNumber, b.eulerNumber);
  EXPECT_EQ(a.nbHoles, b.nbHoles);
}

TEST(RegionProperties, AgreeOfEntityPolygonAndPixels) {
  // An ellipse on pixels of two by three, once as an entity in the plane of the pixels.
  const PixelSpacing spacing{0.5, 0.75, "mm"};
  const omReal64 a = 60, b = 30, c = std::cos(0.4), s = std::sin(0.4);
  const auto inside = [&](omReal64 x, omReal64 y) {
    return std::hypot((c * (x - 75) + s * (y - 80)) / a, (c * (y - 80) - s * (x - 75)) / b) < 1;
  };
  const RegionProperties exact = regionProperties(Ellipse2d<omReal64>(Point2dData<omReal64>(75, 80), a, b, 0.4));
  Polygon2d<omReal64> polygon;
  for (int k = 0; k <= 3000; ++k) {
    const omReal64 u = a * std::cos(k * s_pi / 1500), v = b * std::sin(k * s_pi / 1500);
    polygon.getPointColl().push_back({(75 + c * u - s * v) / spacing.x, (80 + s * u + c * v) / spacing.y});
  }
  expectAlike(regionProperties(polygon, spacing), exact, 2e-6);
  expectAlike(regionProperties(digitized(inside, spacing), spacing), exact, 0.03);
  EXPECT_EQ(exact.solidity, 1);
  EXPECT_NEAR(exact.roundness, b / a, 1e-12);

  const RegionProperties round = regionProperties(Circle2d<omReal32>(Point2dData<omReal32>(4, 6), 2), {2, 1, "mm"});
  EXPECT_NEAR(round.greatestFeret.length, 8, 1e-12);
  EXPECT_NEAR(round.leastFeret.length, 4, 1e-12);
  EXPECT_NEAR(round.centroid.getX(), 8, 1e-12);
  for (const auto& region : {regionProperties(BoundingBox2d<omInt32>(1, 2, 5, 4)),
                             regionProperties(Rectangle2d<omReal64>(Point2dData<omReal64>(3, 3), 2, 1, 0)),
                             regionProperties(Square2d<omReal64>(Point2dData<omReal64>(3, 1.5), 1, 0), {1, 2, "px"})}) {
    EXPECT_NEAR(region.leastFeret.length, region.area / 4, 1e-12);
    EXPECT_NEAR(region.area, region.convexArea, 1e-12);
    EXPECT_NEAR(region.inscribedCircle.getRadius(), region.leastFeret.length / 2, 1e-8);
  }
}

TEST(RegionProperties, CountHolesAndIslands) {
  const auto rings = [](omReal64 x, omReal64 y) {
    const omReal64 r = std::hypot(x - 100, y - 100);
    return (r < 80 && r > 50) || r < 20 || disk(250, 250, 10)(x, y);
  };
  const RowIntersections pixels = digitized(rings);
  Shape2d shape;
  shape.getPolygonWithHolesColl() = traceContours<omReal32>(pixels, ePC_8);
  const RegionProperties ofPixels = regionProperties(pixels), ofPolygons = regionProperties(shape);
  for (const RegionProperties& p : {ofPixels, ofPolygons}) {
    EXPECT_EQ(p.nbParts, 3u);
    EXPECT_EQ(p.nbHoles, 1u);
    EXPECT_EQ(p.eulerNumber, 2);
    EXPECT_NEAR(p.holeArea, s_pi * (2500 - 400), 60);
    EXPECT_NEAR(p.inscribedCircle.getRadius(), 20, 1);
  }
  EXPECT_EQ(ofPixels.area, ofPolygons.area);
  EXPECT_EQ(ofPixels.holeArea, ofPolygons.holeArea);
  EXPECT_EQ(ofPixels.polygonPerimeter, ofPolygons.perimeter);
  EXPECT_NEAR(ofPixels.perimeter, 2 * s_pi * (80 + 50 + 20 + 10), 8);
}

TEST(RegionProperties, OfOnePixel) {
  RowIntersections pixel;
  EXPECT_TRUE(pixel.addRun(7, 4294967294u, 4294967295u));
  const RegionProperties p = regionProperties(pixel);
  EXPECT_EQ(p.area, 1);
  EXPECT_EQ(p.centroid, Point2dData<omReal64>(4294967294.5, 7.5));
  EXPECT_EQ(p.polygonPerimeter, 4);
  EXPECT_NEAR(p.perimeter, s_pi, 1e-12);
  EXPECT_NEAR(p.minimumLengthPerimeter, s_pi, 1e-12);
  EXPECT_NEAR(p.greatestFeret.length, std::sqrt(2), 1e-12);
  EXPECT_NEAR(p.inscribedCircle.getRadius(), 0.5, 1e-9);
}

TEST(RegionProperties, RefuseWhatHasNone) {
  const auto refusal = [](const auto& region, const PixelSpacing& spacing = {}) {
    return support::thrownBy<ORMIXGeometryException>([&] { regionProperties(region, spacing); });
  };
  RowIntersections pixel;
  EXPECT_TRUE(pixel.addRun(0, 0, 1));
  Polygon2d<omReal64> flat, endless;
  flat.getPointColl() = {{0, 0}, {1, 0}, {2, 0}, {0, 0}};
  endless.getPointColl() = {{0, 0}, {1, 0}, {support::s_infinity, 1}, {0, 0}};
  EXPECT_EQ(refusal(RowIntersections()), "No region properties: there are no pixels");
  EXPECT_EQ(refusal(Line2d()), "No region properties: a ormix::geom::Line2d has no area");
  for (const PixelSpacing& spacing : {PixelSpacing{0, 1}, PixelSpacing{1, -1}, PixelSpacing{support::s_nan, 1}})
    EXPECT_NE(refusal(pixel, spacing).find("spacing"), std::string::npos);
  for (const Polygon2d<omReal64>& polygon : {flat, endless, Polygon2d<omReal64>()})
    EXPECT_NE(refusal(polygon), "") << polygon;
}

TEST(RegionTable, HasALineForEachRegion) {
  RowIntersections pixels;
  EXPECT_TRUE(pixels.addRun(2, 3, 6));
  RegionOptions little;
  little.allPerimeters = little.moments = little.hull = little.circles = false;
  std::ostringstream stream;
  EXPECT_TRUE(writeRegionTable(stream, {regionProperties(pixels, {0.1, 1}), regionProperties(pixels, {}, little)},
                               {0.1, 1, "\"mm\", about"}));
  std::istringstream lines(stream.str());
  std::string names, first, second, end;
  std::getline(lines, names);
  std::getline(lines, first);
  std::getline(lines, second);
  EXPECT_FALSE(std::getline(lines, end));
  EXPECT_EQ(names.find("region,pixels,\"area [\"\"mm\"\", about^2]\",\"centroid x [\"\"mm\"\", about]\","), 0u)
      << names;
  EXPECT_EQ(first.find("1,3,0.30000000000000004,0.45,2.5,0.30000000000000004,2,0.6000000000000001,3,"), 0u) << first;
  EXPECT_EQ(second.find("2,3,3,4.5,2.5,3,2,6,3,1,"), 0u) << second;
  EXPECT_EQ(std::count(first.begin(), first.end(), ','), std::count(second.begin(), second.end(), ','));
  EXPECT_EQ(first.find(",,"), std::string::npos) << first;
  EXPECT_EQ(second.substr(second.size() - 21), std::string(20, ',') + '\r');
}

}  // namespace
