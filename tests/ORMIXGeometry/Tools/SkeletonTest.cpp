#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "support/Random.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

using Ring = std::vector<Point2dData<omReal64>>;

Polygon2d<omReal64> polygonOf(Ring ring, ePolygon2dType type = eP2DT_Exterior) {
  Polygon2d<omReal64> polygon;
  polygon.getPointColl() = std::move(ring);
  if (!polygon.isEmpty()) polygon.getPointColl().push_back(polygon.getPointColl().front());
  polygon.setPolygon2dType(type);
  return polygon;
}

PolygonWithHoles2d<omReal64> regionWith(Ring exterior, const std::vector<Ring>& holes = {}) {
  PolygonWithHoles2d<omReal64> region;
  region.getExteriorPolygon() = polygonOf(std::move(exterior));
  for (Ring hole : holes) {
    std::reverse(hole.begin(), hole.end());  // clockwise, as the area of holes expects
    region.getPolygonHoles().push_back(boost::make_shared<PolygonWithHoles2d<omReal64>>());
    region.getPolygonHoles().back()->getExteriorPolygon() = polygonOf(std::move(hole), eP2DT_Interior);
  }
  return region;
}

/// A ring around a point whose radius is drawn between two numbers.
Ring star(support::Random& random, std::size_t nb, omReal64 x, omReal64 y, omReal64 least, omReal64 greatest) {
  Ring ring;
  for (std::size_t i = 0; i < nb; ++i) {
    const omReal64 angle = 2 * s_pi * (static_cast<omReal64>(i) + random.uniform(0, 0.8)) / static_cast<omReal64>(nb);
    const omReal64 radius = random.uniform(least, greatest);
    ring.emplace_back(x + radius * std::cos(angle), y + radius * std::sin(angle));
  }
  return ring;
}

omReal64 areaOf(const std::vector<boost::shared_ptr<PolygonWithHoles2d<omReal64>>>& region) {
  omReal64 area = 0;
  for (const auto& polygon : region) area += AreaMsr2d::measure(*polygon);
  return area;
}

/// Each point of the skeleton has its radius as its distance to the boundary, and both parts of its edge at it.
void expectAxis(const Skeleton2d& skeleton, const PolygonWithHoles2d<omReal64>& region, omReal64 tolerance) {
  for (std::size_t e = 0; e < skeleton.getNbEdges(); ++e)
    for (const omReal64 s : {0.0, 0.3, 0.5, 1.0}) {
      const AxisCurve curve = skeleton.getCurve(e);
      const Point2dData<omReal64> point(curve.point(s).x, curve.point(s).y);
      ASSERT_NEAR(distance(nearestBoundaryPoint(region, point).getCoords(), point), curve.radius(s), tolerance)
          << point;
      if (curve.radius(s) > tolerance) {
        ASSERT_NE(locate(region, point), ePL_Outside) << point;
      }
      for (const omUInt32 p : skeleton.getEdge(e).parts) {
        const AxisPart& part = skeleton.getPartColl()[p];
        const Segment2d<omReal64> segment(part.start.x, part.start.y, part.end.x, part.end.y);
        ASSERT_NEAR(segment.distance(point), curve.radius(s), tolerance) << point;
      }
    }
}

TEST(Skeleton, PointsAreAsFarFromTheBoundaryAsTheySay) {
  support::Random random(1);
  for (int round = 0; round < 60; ++round) {
    const auto region =
        regionWith(star(random, 5 + random.below(60), 0, 0, 9, 15),
                   {star(random, 3 + random.below(9), 1.5, 0, 0.2, 1.2), star(random, 12, -2, 0, 1, 2)});
    SkeletonReport report;
    const Skeleton2d skeleton = computeSkeleton(region, {}, &report);
    expectAxis(skeleton, region, 1e-7);
    const SkeletonCounts counts = countsOf(skeleton);
    EXPECT_EQ(counts.nbComponents, 1u);
    EXPECT_EQ(counts.nbCycles, 2u);
    EXPECT_LT(report.areaError, 1e-12);
    EXPECT_LE(report.greatestMove, report.gridUnit);
    const omReal64 area = AreaMsr2d::measure(region);
    EXPECT_NEAR(areaOf(regionOf(skeleton, 1e-3)), area, 1e-7 * area);
    for (std::size_t v = 0; v < skeleton.getNbVertices(); ++v) EXPECT_GE(skeleton.getNearestParts(v).size(), 2u);
  }
}

TEST(Skeleton, ClosedForms) {
  const auto rectangle = computeSkeleton(regionWith({{0, 0}, {6, 0}, {6, 2}, {0, 2}}));
  const SkeletonPath path = longestPath(rectangle);
  EXPECT_NEAR(path.length, 4 + 2 * std::sqrt(2.0), 1e-9);
  EXPECT_NEAR(widthsAlong(rectangle).greatest, 2, 1e-9);
  EXPECT_EQ(countsOf(rectangle).nbEndPoints, 4u);

  // Two rooms of width 1: the branch around the reflex corner has an arc of the parabola with the corner as focus.
  const auto bent = computeSkeleton(regionWith({{0, 0}, {4, 0}, {4, 1}, {1, 1}, {1, 4}, {0, 4}}));
  EXPECT_EQ(countsOf(bent).nbEndPoints, 5u);
  std::size_t nbArcs = 0;
  for (std::size_t e = 0; e < bent.getNbEdges(); ++e) {
    const AxisEdge& edge = bent.getEdge(e);
    if (!bent.getCurve(e).isArc()) {
      EXPECT_THROW(bent.getParabola(edge.vertices[0], edge.vertices[1]), ORMIXGeometryException);
      continue;
    }
    ++nbArcs;
    const Parabola2d parabola = bent.getParabola(edge.vertices[1], edge.vertices[0]);
    EXPECT_EQ(parabola.getFocus(), Point2dData<omReal64>(1, 1));
    const PlanarPoint middle = bent.getCurve(e).point(0.4);
    const Point2dData<omReal64> point(middle.x, middle.y);
    EXPECT_NEAR(distance(point, parabola.getFocus()), std::abs(parabola.getDirectrix().signedDistance(point)), 1e-9);
    const omReal64 length =
        parabola.computeArcLength(parabola.getAbscissa(bent.getVertex(edge.vertices[0]).getPoint()),
                                  parabola.getAbscissa(bent.getVertex(edge.vertices[1]).getPoint()));
    EXPECT_NEAR(bent.getCurve(e).length(), length, 1e-9);
  }
  EXPECT_EQ(nbArcs, 2u);

  for (const omUInt32 nb : {3u, 5u, 6u, 12u}) {
    Ring ring;
    for (omUInt32 i = 0; i < nb; ++i) ring.emplace_back(std::cos(2 * s_pi * i / nb), std::sin(2 * s_pi * i / nb));
    const auto regular = computeSkeleton(polygonOf(ring));
    EXPECT_EQ(regular.getNbEdges(), nb);
    EXPECT_EQ(countsOf(regular).nbBranchPoints, 1u);
  }

  // Between two circles the axis is the circle half way, and pruning leaves just that.
  Ring outer, inner;
  for (int i = 0; i < 720; ++i) {
    outer.emplace_back(3 * std::cos(i * s_pi / 360), 3 * std::sin(i * s_pi / 360));
    inner.emplace_back(std::cos(i * s_pi / 360), std::sin(i * s_pi / 360));
  }
  const auto ring = pruneSkeleton(computeSkeleton(regionWith(outer, {inner})), 0.01);
  EXPECT_NEAR(countsOf(ring).length, 4 * s_pi, 1e-3);
  EXPECT_EQ(countsOf(ring).nbEndPoints, 0u);
  const SkeletonWidths widths = widthsAlong(ring, 4);
  EXPECT_NEAR(widths.mean, 2, 1e-3);
  omReal64 sum = 0;
  for (const omReal64 length : widths.histogram) sum += length;
  EXPECT_NEAR(sum, countsOf(ring).length, 1e-9);
}

/// Components, cycles and the region itself are those of the pixels, joined over corners and not.
void expectSkeletonOf(std::vector<omUInt8> mask, std::size_t width) {
  const RowIntersections pixels = toRowIntersections(MaskView<omUInt8>{mask.data(), width, mask.size() / width, width});
  for (const ePixelConnectivity connectivity : {ePC_4, ePC_8}) {
    SkeletonOptions options;
    options.connectivity = connectivity;
    const Skeleton2d skeleton = computeSkeleton(pixels, options);
    std::size_t nbRegions = 0, nbHoles = 0;
    for (const auto& polygon : traceContours<omReal64>(pixels, connectivity))
      visitNodes(*polygon, [&](const PolygonWithHoles2d<omReal64>& node) {
        ++(node.getPolygon2dType() == eP2DT_Interior ? nbHoles : nbRegions);
        return true;
      });
    const SkeletonCounts counts = countsOf(skeleton);
    ASSERT_EQ(counts.nbComponents, nbRegions);
    ASSERT_EQ(counts.nbCycles, nbHoles);
    ASSERT_NEAR(areaOf(regionOf(skeleton, 1e-3)), static_cast<omReal64>(pixels.getNbPixels()), 1e-7);
  }
}

TEST(Skeleton, IsConnectedAsPixelsAre) {
  for (omUInt32 bits = 1; bits < 512; ++bits) {
    std::vector<omUInt8> mask(9);
    for (omUInt32 i = 0; i < 9; ++i) mask[i] = static_cast<omUInt8>((bits >> i) & 1u);
    SCOPED_TRACE(bits);
    expectSkeletonOf(mask, 3);
  }
  // Holes of one region behind the next region, islands, and vertices where many sectors meet.
  support::Random random(17);
  for (int round = 0; round < 10; ++round) {
    std::vector<omUInt8> mask(30 * 40);
    for (omUInt8& pixel : mask) pixel = static_cast<omUInt8>(random.below(10) < 6);
    expectSkeletonOf(mask, 40);
  }
}

TEST(Skeleton, PruningKeepsEverythingWithinItsBound) {
  support::Random random(7);
  for (const omReal64 threshold : {0.5, 1.5, 3.0}) {
    RowIntersections pixels = rasterize(regionWith(star(random, 9, 60, 60, 20, 55), {star(random, 7, 60, 60, 5, 12)}));
    const Skeleton2d whole = computeSkeleton(pixels);
    PruningReport report;
    const Skeleton2d pruned = pruneSkeleton(whole, threshold, &report);
    EXPECT_GT(report.nbPrunedEdges, 0u);
    EXPECT_LE(report.distanceBound, threshold);
    EXPECT_EQ(countsOf(pruned).nbComponents, countsOf(whole).nbComponents);
    EXPECT_EQ(countsOf(pruned).nbCycles, countsOf(whole).nbCycles);
    // A circle that was removed reaches out of the union of the others by the bound at most.
    for (const SkeletonVertex2d& vertex : whole.getVertexColl()) {
      omReal64 out = std::numeric_limits<omReal64>::infinity();
      for (const SkeletonVertex2d& other : pruned.getVertexColl())
        out = std::min(out, distance(vertex.getPoint(), other.getPoint()) + vertex.getRadius() - other.getRadius());
      ASSERT_LE(out, report.distanceBound + 1e-9);
    }
    const auto region = regionOf(pruned, 1e-3);
    ASSERT_EQ(region.size(), 1u);
    EXPECT_EQ(region[0]->getPolygonHoles().size(), countsOf(whole).nbCycles);
    const omReal64 perimeter = PerimeterMsr2d::measure(*traceContours<omReal64>(pixels, ePC_8)[0]);
    EXPECT_GT(areaOf(region), static_cast<omReal64>(pixels.getNbPixels()) - threshold * perimeter);
    EXPECT_LE(areaOf(region), static_cast<omReal64>(pixels.getNbPixels()));
  }
  EXPECT_THROW(pruneSkeleton(Skeleton2d(), -1), ORMIXGeometryException);
  EXPECT_TRUE(pruneSkeleton(Skeleton2d(), 1).isEmpty());
}

TEST(Skeleton, BranchesAndSamplesCoverIt) {
  support::Random random(3);
  const auto region = regionWith(star(random, 40, 0, 0, 4, 10), {star(random, 8, 0, 0, 1, 2)});
  const Skeleton2d skeleton = computeSkeleton(region);
  std::size_t nbSteps = 0;
  omReal64 length = 0;
  for (const SkeletonPath& branch : branchesOf(skeleton)) {
    nbSteps += branch.steps.size();
    length += branch.length;
    const auto samples = samplePath(skeleton, branch, 0.25);
    EXPECT_EQ(samples.size(), static_cast<std::size_t>(std::ceil(branch.length / 0.25)) + 1);
    for (std::size_t i = 1; i < samples.size(); ++i) {
      EXPECT_LE(distance(samples[i].center(), samples[i - 1].center()), 0.25 + 1e-9);
      const auto nearest = nearestBoundaryPoint(region, samples[i].center()).getCoords();
      EXPECT_NEAR(distance(nearest, samples[i].center()), samples[i].getRadius(), 1e-7);
    }
  }
  EXPECT_EQ(nbSteps, skeleton.getNbEdges());
  EXPECT_NEAR(length, countsOf(skeleton).length, 1e-9);
  const SkeletonPath longest = longestPath(skeleton);
  EXPECT_EQ(samplePath(skeleton, longest, 1e9).size(), 2u);
  EXPECT_THROW(samplePath(skeleton, longest, 0), ORMIXGeometryException);
}

TEST(Skeleton, MovesWithItsRegion) {
  support::Random random(9);
  const auto region = regionWith(star(random, 25, 0, 0, 4, 10));
  const Similarity2d map(2.5, 0.7, 30, -20);
  const auto moved = boost::dynamic_pointer_cast<Skeleton2d>(SimilarityTransform2d(map).apply(computeSkeleton(region)));
  const auto image =
      boost::dynamic_pointer_cast<PolygonWithHoles2d<omReal64>>(SimilarityTransform2d(map).apply(region));
  ASSERT_TRUE(moved && image);
  expectAxis(*moved, *image, 1e-6);
  EXPECT_NEAR(countsOf(*moved).length, countsOf(computeSkeleton(*image)).length, 1e-4);
}

TEST(Skeleton, HostileRegions) {
  const omReal64 nan = std::numeric_limits<omReal64>::quiet_NaN();
  const auto errorOf = [](const BaseGeometryEntity2d& region) {
    Skeleton2d skeleton;
    const BoolResult result = computeSkeleton(region, {}, skeleton);
    EXPECT_EQ(static_cast<bool>(result), !skeleton.isEmpty());
    return result.getMessage();
  };
  const std::string start = "Failed to compute the skeleton: ";
  EXPECT_EQ(errorOf(polygonOf({{0, 0}, {4, 4}, {4, 0}, {0, 4}})),
            start + "The boundary crosses itself at [2, 2], edge 0 of ring 0 and edge 2 of ring 0");
  EXPECT_EQ(errorOf(polygonOf({{0, 0}, {nan, 4}, {4, 0}})), start + "Vertex 1 of ring 0 is not finite");
  EXPECT_EQ(errorOf(polygonOf({{1, 1}, {1, 1}, {1, 1}})), start + "The rings bound no area");
  EXPECT_EQ(errorOf(polygonOf({{0, 0}, {1, 1}, {2, 2}})), start + "The rings bound no area");
  EXPECT_EQ(errorOf(Circle2d<omReal64>({0, 0}, 1)), start + "ormix::geom::Circle2d<ormix::omReal64> bounds no polygon");
  SkeletonReport report;
  const auto antenna = polygonOf({{0, 0}, {4, 0}, {4, 0}, {4, 4}, {2, 4}, {2, 6}, {2, 4}, {0, 4}});
  EXPECT_EQ(computeSkeleton(antenna, {}, &report).getNbEdges(), 4u);
  ASSERT_TRUE(report.mergedPoints.size() == 1 && report.lostEdges.size() == 2);
  EXPECT_EQ(report.mergedPoints[0].pointIdx, 2u);
  EXPECT_EQ(report.lostEdges[0].pointIdx + report.lostEdges[1].pointIdx, 9u);
  EXPECT_EQ(errorOf(regionWith({{0, 0}, {4, 0}, {4, 4}, {0, 4}}, {{{5, 5}, {6, 5}, {5, 6}}})),
            start +
                "The Voronoi diagram has an edge that is inside and outside, turned or not; are holes inside, and "
                "polygons apart?");
  EXPECT_NE(errorOf(Polygon2d<omReal64>()), "");
  // What is thinner than the grid, repeated and collinear vertices, holes that touch, the ends of the range.
  for (const Ring& ring : {Ring{{0, 0}, {1, 0}, {1, 1e-9}, {0, 1e-9}}, Ring{{0, 0}, {1, 0}, {2, 0}, {2, 0}, {2, 2}},
                           Ring{{0, 0}, {4, 0}, {4, 4}, {2, 4}, {2, 6}, {2, 4}, {0, 4}},
                           Ring{{-1e308, -1e308}, {1e308, -1e308}, {1e308, 1e308}, {-1e308, 1e308}},
                           Ring{{1e9, 1e9}, {1e9 + 4, 1e9}, {1e9 + 4, 1e9 + 1}, {1e9, 1e9 + 1}}})
    EXPECT_EQ(errorOf(polygonOf(ring)), "");
  const auto touching = computeSkeleton(
      regionWith({{0, 0}, {8, 0}, {8, 8}, {0, 8}}, {{{4, 0}, {5, 2}, {3, 2}}, {{5, 2}, {6, 3}, {5, 4}}}));
  EXPECT_EQ(countsOf(touching).nbComponents, 1u);
}

}  // namespace
