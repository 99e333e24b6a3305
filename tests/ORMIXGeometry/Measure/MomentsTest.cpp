#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <boost/multiprecision/cpp_bin_float.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <cmath>
#include <iterator>
#include <set>

#include "support/Checks.h"
#include "support/Random.h"
#include "support/SampleObjects.h"

namespace {

using namespace samples;
using Exact = boost::multiprecision::cpp_bin_float_100;
using ExactMoments = std::array<Exact, PlanarMoments::s_nbMoments>;
constexpr auto at = PlanarMoments::index;

Moments2dO3 momentsOf(const BaseGeometryEntity2d& entity) { return MomentsMsr2d::measure(entity); }
HuMoments2dO3 huOf(const BaseGeometryEntity2d& entity) { return HuMomentsMsr2d::measure(entity); }

template <class Function>
void forOrders(Function function) {
  for (omUInt32 order = 0; order <= 3; ++order)
    for (omUInt32 q = 0; q <= order; ++q) function(order - q, q);
}

// The moments about (x0, y0) in a hundred digits, by other formulas than the library's.

void addPoint(ExactMoments& sums, const Exact& weight, const Exact& x, const Exact& y) {
  const Exact xs[] = {1, x, x * x, x * x * x}, ys[] = {1, y, y * y, y * y * y};
  forOrders([&](omUInt32 p, omUInt32 q) { sums[at(p, q)] += weight * xs[p] * ys[q]; });
}

template <class T>
ExactMoments exactMoments(const PointCloud2d<T>& cloud, const Exact& x0, const Exact& y0) {
  ExactMoments sums;
  for (const auto& point : cloud.getCollection()) addPoint(sums, 1, point.getX() - x0, point.getY() - y0);
  return sums;
}

/// Over the triangles to each edge, by the cubature with four points that is exact for cubic polynomials.
template <class T>
ExactMoments exactMoments(const Polygon2d<T>& ring, const Exact& x0, const Exact& y0) {
  ExactMoments sums;
  for (std::size_t i = 1; i < ring.getNbPoints(); ++i) {
    const auto &p = ring.getPointColl()[i - 1], &q = ring.getPointColl()[i];
    const Exact px = p.getX() - x0, py = p.getY() - y0, qx = q.getX() - x0, qy = q.getY() - y0;
    const Exact area = (px * qy - qx * py) / 2;
    addPoint(sums, area * -9 / 16, (px + qx) / 3, (py + qy) / 3);
    addPoint(sums, area * 25 / 48, (px + qx) / 5, (py + qy) / 5);
    addPoint(sums, area * 25 / 48, (3 * px + qx) / 5, (3 * py + qy) / 5);
    addPoint(sums, area * 25 / 48, (px + 3 * qx) / 5, (py + 3 * qy) / 5);
  }
  return sums;
}

/// By the same cubature over four rows of a pixel: Gauss and Legendre's with two points each way.
ExactMoments exactMoments(const RowIntersections& rows, const Exact& x0, const Exact& y0) {
  ExactMoments sums;
  const Exact node = 1 / sqrt(Exact(3));
  for (omUInt64 y = rows.getStartRow(); y < rows.getEndRow(); ++y)
    for (const PixelRun& run : rows.getRow(y)) {
      const Exact half = (Exact(run.end) - run.begin) / 2, x = run.begin + half - x0, middle = y + Exact(0.5) - y0;
      for (const int sx : {-1, 1})
        for (const int sy : {-1, 1}) addPoint(sums, half / 2, x + sx * node * half, middle + sy * node / 2);
    }
  return sums;
}

/// Compares moments about (0, 0) and central ones, relative to what the extent and the distance from (0, 0) allow.
template <class Set>
void expectMoments(const Moments2dO3& moments, const Set& set, omReal64 tolerance) {
  const ExactMoments raw = exactMoments(set, 0, 0);
  const Exact x = raw[1] / raw[0], y = raw[2] / raw[0];
  const ExactMoments central = exactMoments(set, x, y);
  const Exact extent = sqrt((central[at(2, 0)] + central[at(0, 2)]) / raw[0]);
  forOrders([&](omUInt32 p, omUInt32 q) {
    const Exact limit = tolerance * abs(raw[0]);
    EXPECT_LE(abs(moments.getMoment(p, q) - raw[at(p, q)]), limit * pow(extent + abs(x), p) * pow(extent + abs(y), q));
    EXPECT_LE(abs(moments.getCentralMoment(p, q) - central[at(p, q)]), limit * pow(extent, p + q)) << p << q;
  });
}

/// A ring without symmetry about (offset, 2·offset), with vertices on a grid of 1 / 1024, or of 1 for integers.
template <class T>
Polygon2d<T> star(support::Random& random, std::size_t nbVertices, omReal64 offset) {
  Polygon2d<T> polygon;
  const omReal64 grid = std::is_integral_v<T> ? 1 : 1024;
  for (std::size_t i = 0; i < nbVertices; ++i) {
    const omReal64 angle = 6.28 * omReal64(i) / omReal64(nbVertices);
    const omReal64 radius = 600 + 200 * std::cos(angle) + 100 * std::cos(3 * angle) + random.uniform(0, 40);
    polygon.getPointColl().emplace_back(T(std::round(radius * std::cos(angle) * grid) / grid + offset),
                                        T(std::round(radius * std::sin(angle) * grid) / grid + 2 * offset));
  }
  closePolygon(polygon);
  return polygon;
}

template <class T>
class MomentsOf : public ::testing::Test {};
TYPED_TEST_SUITE(MomentsOf, support::Scalars);

TYPED_TEST(MomentsOf, RingsAndPointsAreExactNearAndFar) {
  support::Random random(1);
  for (const std::size_t nbVertices : {3, 4, 6, 256, 257, 600})
    for (const omReal64 offset : {1000.0, std::is_same_v<TypeParam, omReal32> ? 0.0 : 1e7}) {
      auto polygon = star<TypeParam>(random, nbVertices, offset);
      auto& points = polygon.getPointColl();
      const Moments2dO3 moments = momentsOf(polygon);
      expectMoments(moments, polygon, 1e-13);
      EXPECT_EQ(Moments2dO3(ormix::detail::ringMomentsPortable(coordinates(points), points.size())), moments);
      const PointCloud2d<TypeParam> cloud(points);
      expectMoments(momentsOf(cloud), cloud, 1e-13);
      EXPECT_EQ(Moments2dO3(ormix::detail::pointMomentsPortable(coordinates(points), points.size())), momentsOf(cloud));
      // An interior ring has the opposite mass, and the last edge needs not be stored.
      const HuMoments2dO3 hu = huOf(polygon);
      polygon.setPolygon2dType(eP2DT_Interior);
      EXPECT_EQ(momentsOf(polygon).getMoment(2, 1), -moments.getMoment(2, 1));
      if (nbVertices > 3) points.pop_back();
      EXPECT_EQ(huOf(polygon), hu);
    }
}

/// The polygon of an ellipse within a relative error of 1e-9.
Polygon2d<omReal64> polygonOf(const Ellipse2d<omReal64>& ellipse) {
  Polygon2d<omReal64> polygon;
  constexpr int nbVertices = 200000;
  for (int i = 0; i < nbVertices; ++i) {
    const omReal64 x = ellipse.getMajorRadius() * std::cos(i * s_twoPi / nbVertices);
    const omReal64 y = ellipse.getMinorRadius() * std::sin(i * s_twoPi / nbVertices);
    polygon.getPointColl().emplace_back(ellipse.centerX() + ellipse.getCosTheta() * x - ellipse.getSinTheta() * y,
                                        ellipse.centerY() + ellipse.getSinTheta() * x + ellipse.getCosTheta() * y);
  }
  return polygon;
}
Polygon2d<omReal64> polygonOf(const Rectangle2d<omReal64>& rectangle) {
  Polygon2d<omReal64> polygon;
  polygon.getPointColl() = {rectangle.topLeftCorner(), rectangle.topRightCorner(), rectangle.bottomRightCorner(),
                            rectangle.bottomLeftCorner()};
  return polygon;
}

TYPED_TEST(MomentsOf, FiguresAreThoseOfTheirPolygons) {
  using T = TypeParam;
  const Point2dData<T> c(70, 9);
  const auto expectEqual = [](const BaseGeometryEntity2d& entity, const Polygon2d<omReal64>& polygon) {
    EXPECT_TRUE(compare(momentsOf(entity), momentsOf(polygon), 1e-9)) << momentsOf(entity) << momentsOf(polygon);
    EXPECT_NEAR(momentsOf(entity).getMoment(0, 0), AreaMsr2d::measure(entity), 1e-12);
  };
  expectEqual(Circle2d<T>(c, 3), polygonOf(Ellipse2d<omReal64>({70, 9}, 3, 3, 1)));
  expectEqual(Ellipse2d<T>(c, 5, 3, 0.5), polygonOf(Ellipse2d<omReal64>({70, 9}, 5, 3, 0.5)));
  expectEqual(Square2d<T>(c, 3, 0.5), polygonOf(Rectangle2d<omReal64>({70, 9}, 3, 3, 0.5)));
  expectEqual(Rectangle2d<T>(c, 5, 2, 0.5), polygonOf(Rectangle2d<omReal64>({70, 9}, 5, 2, 0.5)));
  expectEqual(BoundingBox2d<T>(65, 7, 75, 11), polygonOf(Rectangle2d<omReal64>({70, 9}, 5, 2, 0)));
}

TEST(Moments, AreInvariantAsHuSays) {
  support::Random random(3);
  const auto polygon = star<omReal64>(random, 5000, 0);
  const HuMoments2dO3 hu = huOf(polygon);
  const auto expectSame = [&](auto map, omReal64 tolerance) {
    auto image = polygon;
    for (auto& point : image.getPointColl()) {
      const auto [x, y] = map(point.getX(), point.getY());
      point.setCoords(x, y);
    }
    for (omUInt32 i = 0; i < 7; ++i)
      EXPECT_NEAR(huOf(image).getValue(i), hu.getValue(i), tolerance * std::abs(hu.getValue(i))) << i;
    EXPECT_NEAR(matchShapes(image, polygon, eSM_I2), 0, 1e-9);
  };
  expectSame([](omReal64 x, omReal64 y) { return std::pair(x + 1e7, y - 1e7); }, 0);
  expectSame([](omReal64 x, omReal64 y) { return std::pair(std::ldexp(x, -60), std::ldexp(y, -60)); }, 0);
  expectSame([](omReal64 x, omReal64 y) { return std::pair(std::ldexp(x, 100), std::ldexp(y, 100)); }, 0);
  expectSame([](omReal64 x, omReal64 y) { return std::pair(-y + 1e7, x); }, 1e-11);
  expectSame([](omReal64 x, omReal64 y) { return std::pair(0.6 * x - 0.8 * y, 0.8 * x + 0.6 * y); }, 1e-11);
}

// What vanishes by symmetry is 0, however elongated the shape and however it is turned.
TEST(Moments, OfSymmetricShapesHaveNoThirdOrder) {
  for (const omReal64 angle : {0.0, 0.3, 1.0})
    for (const omReal64 width : {1000.0, 10.0, 1.0}) {
      const auto ellipse = polygonOf(Ellipse2d<omReal64>({300, -5000}, 1000, width, angle));
      const auto normalized = momentsOf(ellipse).getNormalizedMoments();
      for (omUInt32 q = 0; q <= 3; ++q) {
        EXPECT_NEAR(momentsOf(ellipse).getNormalizedMoment(3 - q, q), 0, 1e-9);
        EXPECT_EQ(momentsOf(ellipse).getNormalizedMoment(3 - q, q), normalized[PlanarMoments::index(3 - q, q)]);
      }
      const auto hu = huOf(ellipse).getValues();
      EXPECT_TRUE(std::all_of(hu.begin() + 2, hu.end(), [](omReal64 value) { return value == 0; })) << huOf(ellipse);
      EXPECT_EQ(hu[1] == 0, width == 1000) << hu[1];
    }
}

TEST(Moments, OfPartsAddAndHolesAreSubtracted) {
  PolygonWithHoles2d<omInt32> whole;
  whole.getExteriorPolygon() = ring<omInt32>(eP2DT_Exterior, 10000000, 1, 100);
  whole.getPolygonHoles() = {boost::make_shared<PolygonWithHoles2d<omInt32>>()};
  whole.getPolygonHoles()[0]->getExteriorPolygon() = ring<omInt32>(eP2DT_Exterior, 10000010, 20, 30);
  const Moments2dO3 hole = momentsOf(BoundingBox2d<omInt32>(10000010, 20, 10000040, 50));
  const Moments2dO3 exterior = momentsOf(whole.getExteriorPolygon());
  EXPECT_TRUE(compare(momentsOf(whole), exterior - hole, 1e-14));
  EXPECT_TRUE(compare(momentsOf(whole) + hole, exterior, 1e-14));
  EXPECT_NEAR(momentsOf(whole).getMoment(0, 3), (1e2 * (101. * 101 * 101 * 101 - 1) - 30 * (625e4 - 16e4)) / 4, 1e-5);
  EXPECT_EQ(Moments2dO3() + hole, hole);
  MomentsMsr2d measure;
  measure.setHoleMsrPolicy(eHMP_IgnoreHoles);
  Moments2dO3 moments;
  EXPECT_TRUE(measure.measure(whole, moments));
  EXPECT_EQ(moments, exterior);
}

TEST(PixelMoments, AreExact) {
  support::Random random(4);
  for (const omUInt32 width : {20u, 70000u, 0x7FFFFFFFu, 0xFFFFFFFEu})
    for (const omUInt64 startRow : {omUInt64{0}, omUInt64{1} << 33, ~omUInt64{0} - 50}) {
      RowIntersections rows;
      for (omUInt64 y = startRow; y < startRow + 40; ++y) {
        std::set<omUInt32> ends{0, width};
        while (ends.size() < 6) ends.insert(random.below(width));
        for (auto end = ends.begin(); end != ends.end(); std::advance(end, 2))
          EXPECT_TRUE(rows.addRun(y, *end, *std::next(end)));
      }
      expectMoments(moments(rows), rows, 1e-15);
    }
  RowIntersections apart;
  EXPECT_TRUE(apart.setRows(5, {2}, {{0, 1}, {0xFFFFFFFEu, 0xFFFFFFFFu}}));
  expectMoments(moments(apart), apart, 1e-15);
  // The pixels and their contours, with holes and islands, are the same region.
  Moments2dO3 sum;
  RowIntersections speckles;
  for (omUInt64 y = 30; y < 130; ++y)
    for (omUInt32 x = 900; x < 1000; ++x) EXPECT_TRUE(random.below(2) == 0 || speckles.addRun(y, x, x + 1));
  for (const auto& region : traceContours<omReal32>(speckles, ePC_8)) sum += momentsOf(*region);
  EXPECT_TRUE(compare(moments(speckles), sum, 1e-12));
  EXPECT_EQ(moments(RowIntersections()), Moments2dO3());
}

TEST(Moments, GiveTheEquivalentEllipse) {
  for (const omReal64 theta : {-1.5, -0.7, 0.0, 0.4, s_pi / 2}) {
    const Moments2dO3 moments = momentsOf(Ellipse2d<omReal64>({1e6, 5}, 7, 2, theta));
    EXPECT_TRUE(compare(momentsOf(equivalentEllipse(moments)), moments, 1e-13));
    EXPECT_NEAR(principalOrientation(moments), theta, 1e-14);
    EXPECT_NEAR(eccentricity(moments), std::sqrt(1 - 4.0 / 49), 1e-14);
  }
  EXPECT_EQ(principalOrientation(momentsOf(Circle2d<omReal64>({1, 2}, 3))), 0);
  const Ellipse2d<omReal64> flat = equivalentEllipse(momentsOf(PointCloud2d<omInt32>({{0, 0}, {3, 4}, {6, 8}})));
  EXPECT_NEAR(flat.getMajorRadius(), 2 * std::sqrt(50.0 / 3), 1e-14);
  EXPECT_NEAR(flat.getMinorRadius(), 0, 1e-7);
}

TEST(MatchShapes, ComparesTheLogarithms) {
  const HuMoments2dO3 a({0.1, 0.01, 0, 1e-4, -1e-5, 1, 1e-6}), b({0.01, 0.001, 0.5, 1e-4, 1e-5, 0.1, 0});
  EXPECT_NEAR(matchShapes(a, b, eSM_I1), 0.5 + (1.0 / 2 - 1.0 / 3) + 2.0 / 5, 1e-15);
  EXPECT_NEAR(matchShapes(a, b, eSM_I2), 1 + 1 + 10 + 1, 1e-14);
  EXPECT_NEAR(matchShapes(HuMoments2dO3({0.1}), HuMoments2dO3({1e-4}), eSM_I3), 3, 1e-14);
  EXPECT_NEAR(matchShapes(HuMoments2dO3({1e-4}), HuMoments2dO3({0.1}), eSM_I3), 0.75, 1e-14);
  const Rectangle2d<omReal64> flat({0, 0}, 5, 1, 0);
  EXPECT_NEAR(matchShapes(flat, Rectangle2d<omReal32>({70, 9}, 10, 2, 1), eSM_I1), 0, 1e-6);
  EXPECT_GT(matchShapes(flat, Square2d<omReal64>({0, 0}, 1, 0), eSM_I1), 0.1);
  EXPECT_THROW(matchShapes(flat, Line2d(), eSM_I1), ORMIXGeometryException);
}

TEST(Moments, WithoutMassHaveNoCentroid) {
  // The two halves of a bow tie cancel; what is left of them is right.
  Polygon2d<omReal64> bow;
  bow.getPointColl() = {{0, 0}, {2, 2}, {2, 0}, {0, 2}, {0, 0}};
  EXPECT_NEAR(momentsOf(bow).getMoment(1, 0), -4.0 / 3, 1e-15);
  for (const Moments2dO3& moments : {momentsOf(bow), Moments2dO3(), momentsOf(Vector2d(1, 2))}) {
    const std::string text = "Moments of mass 0 have no centroid, no central and no normalized moments";
    EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { moments.getCentroid(); }), text);
    EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { moments.getCentralMoment(2, 0); }), text);
    EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { moments.getNormalizedMoment(2, 0); }), text);
    EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { moments.getNormalizedMoments(); }), text);
    EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { equivalentEllipse(moments); }), text);
  }
  EXPECT_EQ(support::thrownBy<ORMIXGeometryException>([&] { huOf(bow); }),
            "Measure eM2DT_HuMoments failed for geometry entity eE2DT_Polygon");
  EXPECT_THROW(momentsOf(bow).getMoment(omUInt32(-1), 2), ORMIXGeometryException);
  EXPECT_THROW(HuMoments2dO3().getValue(7), ORMIXGeometryException);
  const Moments2dO3 points = momentsOf(PointCloud2d<omInt32>({{0, 0}, {9, 0}, {-9, 0}}));
  EXPECT_THROW(equivalentEllipse(points - momentsOf(BoundingBox2d<omInt32>(-1, -1, 1, 1))), ORMIXGeometryException);
  for (const omReal64 bad : {support::s_nan, support::s_infinity, 1e80}) {
    auto polygon = ring<omReal64>(eP2DT_Exterior, 0, 0, 1);
    polygon.getPointColl()[2].setX(bad);
    EXPECT_THROW(momentsOf(polygon), ORMIXGeometryException) << bad;
    EXPECT_THROW(huOf(PointCloud2d<omReal64>(polygon.getPointColl())), ORMIXGeometryException) << bad;
  }
}

}  // namespace
