#include <ORMIXGeometry/ORMIXGeometry.h>

#include <map>

#include "support/Checks.h"
#include "support/Random.h"

namespace {

using namespace ormix;
using namespace ormix::geom;
using support::thrownBy;
using Polygon = Polygon2d<omReal64>;
using Mesh = Mesh3d<omReal64>;

constexpr omReal64 s_pi = 3.14159265358979323846;

template <class T = omReal64>
Polygon2d<T> rectangle(T x0, T y0, T x1, T y1, bool isClockwise = false) {
  Polygon2d<T> polygon;
  polygon.getPointColl() = {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
  if (isClockwise) std::reverse(polygon.beginPoint(), polygon.endPoint());
  return polygon;
}

/// A polygon around (x, y) of random radii.
Polygon star(support::Random& random, omReal64 x, omReal64 y, int n) {
  Polygon polygon;
  for (int k = 0; k < n; ++k) {
    const omReal64 radius = random.uniform(0.5, 1), angle = 2 * s_pi * k / n;
    polygon.getPointColl().emplace_back(x + radius * std::cos(angle), y + radius * std::sin(angle));
  }
  closePolygon(polygon);
  return polygon;
}

/// Which of several counter-clockwise polygons is nearest to a point of an edge in this direction and faces it; -1
/// where none is within the gap.
int nearestFacing(const std::vector<Polygon>& polygons, std::size_t own, const Point2dData<omReal64>& point,
                  const Vector2d& direction, omReal64 gap) {
  int nearest = -1;
  for (std::size_t j = 0; j < polygons.size(); ++j) {
    const auto& points = polygons[j].getPointColl();
    for (std::size_t k = 0; j != own && k < points.size(); ++k) {
      const Segment2d<omReal64> edge(points[k], points[(k + 1) % points.size()]);
      const Vector2d along = edge.getDirection();
      if (along.getX() * direction.getX() + along.getY() * direction.getY() >= 0 || edge.distance(point) > gap)
        continue;
      gap = edge.distance(point);
      nearest = static_cast<int>(j);
    }
  }
  return nearest;
}

// Independent: many points of each edge, each with the nearest of all edges.
TEST(Contacts, AreThoseOfManyPointsOfRandomPolygons) {
  support::Random random(1401);
  constexpr int nbSamples = 100;
  for (int round = 0; round < 20; ++round) {
    std::vector<Polygon> polygons;
    for (int k = 0; k < 3; ++k) polygons.push_back(star(random, random.uniform(0, 2), random.uniform(0, 2), 12));
    const omReal64 gap = random.uniform(0.02, 0.6);
    std::map<std::pair<std::size_t, int>, omReal64> lengths;
    omReal64 onA = 0;
    for (std::size_t i = 0; i < 3; ++i)
      for (std::size_t k = 0; k < 12; ++k) {
        const Segment2d<omReal64> edge(polygons[i].getPointColl()[k], polygons[i].getPointColl()[k + 1]);
        for (int s = 0; s < nbSamples; ++s) {
          const omReal64 part = (s + 0.5) / nbSamples;
          const Point2dData<omReal64> point(
              edge.getPoint0().getX() + part * (edge.getPoint1().getX() - edge.getPoint0().getX()),
              edge.getPoint0().getY() + part * (edge.getPoint1().getY() - edge.getPoint0().getY()));
          lengths[{i, nearestFacing(polygons, i, point, edge.getDirection(), gap)}] += edge.getLength() / nbSamples;
          if (i == 0 && nearestFacing({polygons[0], polygons[1]}, 0, point, edge.getDirection(), gap) == 1)
            onA += edge.getLength() / nbSamples;
        }
      }
    const RegionContacts found = contacts(polygons, gap);
    std::map<std::pair<std::size_t, int>, omReal64> answered;
    for (const RegionContact& c : found.contacts) {
      EXPECT_LT(c.first, c.second);
      answered[{c.first, static_cast<int>(c.second)}] = c.lengthOnFirst;
      answered[{c.second, static_cast<int>(c.first)}] = c.lengthOnSecond;
    }
    for (std::size_t i = 0; i < 3; ++i) {
      omReal64 sum = answered[{i, -1}] = found.borders[i].freeLength;
      for (int j = 0; j < 3; ++j) sum += answered[{i, j}];
      EXPECT_NEAR(sum, found.borders[i].perimeter, 1e-12);
      EXPECT_NEAR(found.borders[i].perimeter, PerimeterMsr2d::measure(polygons[i]), 1e-12);
      for (int j = -1; j < 3; ++j) EXPECT_NEAR((answered[{i, j}]), (lengths[{i, j}]), 0.03) << i << ' ' << j;
    }
    const Contact2d pair = contact(polygons[0], polygons[1], gap);
    EXPECT_NEAR(pair.onA.length, onA, 0.03);
    EXPECT_EQ(pair.length, contactLength(polygons[0], polygons[1], gap));
    EXPECT_EQ(pair.length, contactLength(polygons[1], polygons[0], gap));
    omReal64 sum = 0;
    for (const ContactPiece2d& piece : pair.onA.pieces)
      for (std::size_t k = 0; k < piece.size(); ++k) {
        sum += piece[k].getLength();
        EXPECT_TRUE(k == 0 || piece[k].getPoint0() == piece[k - 1].getPoint1());
      }
    EXPECT_NEAR(sum, pair.onA.length, 1e-12);
    // Turned and moved.
    const RigidTransform2d motion(random.uniform(), 100, -200);
    for (Polygon& polygon : polygons) ASSERT_TRUE(motion.applyInSitu(polygon));
    EXPECT_NEAR(contactLength(polygons[0], polygons[1], gap), pair.length, 1e-9);
  }
}

// Counted: edges between a pixel of one label and a pixel of another.
TEST(Contacts, OfLabelsAreCountedPixelEdges) {
  support::Random random(1402);
  for (int round = 0; round < 20; ++round) {
    constexpr std::size_t width = 17, height = 13;
    std::vector<omUInt8> labels(width * height);
    for (omUInt8& label : labels) label = static_cast<omUInt8>(random.below(5));
    std::map<std::pair<std::size_t, std::size_t>, omReal64> counted;
    std::array<omReal64, 4> perimeters{}, free{};
    const auto at = [&](std::size_t x, std::size_t y) -> std::size_t {
      return x >= width || y >= height ? 0 : labels[y * width + x];
    };
    for (std::size_t y = 0; y < height; ++y)
      for (std::size_t x = 0; x < width; ++x)
        for (const std::size_t other : {at(x + 1, y), at(x - 1, y), at(x, y + 1), at(x, y - 1)}) {
          const std::size_t label = at(x, y);
          if (label == 0 || label == other) continue;
          perimeters[label - 1] += 1;
          if (other == 0) free[label - 1] += 1;
          if (label < other) counted[{label - 1, other - 1}] += 1;
        }
    Shape2dPtrColl shapes = shapesOfLabels(MaskView<omUInt8>{labels.data(), width, height, width});
    for (int pass = 0; pass < 2; ++pass) {
      const RegionContacts found = contacts(shapes, 0);
      ASSERT_EQ(found.contacts.size(), counted.size());
      for (const RegionContact& c : found.contacts) {
        EXPECT_EQ((counted[{c.first, c.second}]), c.lengthOnFirst);
        EXPECT_EQ(c.lengthOnSecond, c.lengthOnFirst);
        EXPECT_EQ(contactLength(*shapes[c.second], *shapes[c.first], 0), c.length());
      }
      for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(found.borders[i].perimeter, perimeters[i]);
        EXPECT_EQ(found.borders[i].freeLength, free[i]);
      }
      // The pixels alone are as good.
      for (const Shape2dPtr& shape : shapes) shape->clearPolygonWithHolesColl();
    }
  }
}

// A partition that does not lie along the axes: the common vertices have the same bits, the lengths are found at gap 0.
TEST(Contacts, OfATurnedGridOfSquares) {
  std::vector<Polygon> squares;
  for (int y = 0; y < 5; ++y)
    for (int x = 0; x < 7; ++x) {
      squares.push_back(rectangle(10.0 * x, 10.0 * y, 10.0 * x + 10, 10.0 * y + 10, (x + y) % 2 == 0));
      ASSERT_TRUE(RigidTransform2d(0.7, 3, 5).applyInSitu(squares.back()));
    }
  for (const omReal64 gap : {0.0, 1e-6}) {
    const RegionContacts found = contacts(squares, gap);
    EXPECT_EQ(found.contacts.size(), std::size_t{4 * 7 + 5 * 6});
    omReal64 free = 0;
    for (const RegionContact& c : found.contacts) {
      EXPECT_NEAR(c.length(), 10, 1e-5);
      EXPECT_NEAR(contactLength(squares[c.first], squares[c.second], gap), 10, 1e-5);
    }
    for (const RegionBorder& border : found.borders) free += border.freeLength;
    EXPECT_NEAR(free, 240, 1e-5);
  }
}

TEST(ContactLength, OfTangentCirclesOfManyVertices) {
  const auto circle = [](omReal64 x) {
    Polygon polygon;
    for (int k = 0; k < 100000; ++k)
      polygon.getPointColl().emplace_back(x + std::cos(2 * s_pi * k / 1e5), std::sin(2 * s_pi * k / 1e5));
    return polygon;
  };
  for (const omReal64 gap : {1e-3, 0.1, 0.3})
    EXPECT_NEAR(contactLength(circle(0), circle(2), gap), 2 * std::acos((5 - (1 + gap) * (1 + gap)) / 4), 1e-4) << gap;
}

template <class T>
class ContactOf : public ::testing::Test {};
TYPED_TEST_SUITE(ContactOf, support::Scalars);

// A square in the hole of another, where the hole is wider by 1 on all sides; and a sheet, whose back is within the
// gap.
TYPED_TEST(ContactOf, HolesAndSheets) {
  using T = TypeParam;
  for (const bool isClockwise : {false, true}) {
    PolygonWithHoles2d<T> frame;
    frame.getExteriorPolygon() = rectangle<T>(0, 0, 100, 100, isClockwise);
    const auto hole = boost::make_shared<PolygonWithHoles2d<T>>();
    hole->getExteriorPolygon() = rectangle<T>(40, 40, 60, 60, !isClockwise);
    frame.getPolygonHoles() = {nullptr, hole};
    const Polygon2d<T> inner = rectangle<T>(41, 41, 59, 59, isClockwise);
    const omReal64 corner = std::sqrt(0.25 * 9 - 1);
    const Contact2d found = contact(frame, inner, 1.5);
    EXPECT_NEAR(found.onB.length, 4 * 18, 1e-12);
    EXPECT_NEAR(found.onA.length, 4 * (18 + 2 * std::min(corner, 1.0)), 1e-12);
    ASSERT_EQ(found.onB.pieces.size(), 1u);
    EXPECT_EQ(found.onB.pieces[0].size(), 4u);
    EXPECT_EQ(found.onB.pieces[0].front().getPoint0(), found.onB.pieces[0].back().getPoint1());
    const Contact2d sheet = contact(rectangle<T>(0, 0, 100, 100), rectangle<T>(101, 0, 102, 100, isClockwise), 5);
    EXPECT_EQ(sheet.onA.length, 100);
    EXPECT_EQ(sheet.onB.length, 100);
    EXPECT_EQ(contactLength(rectangle<T>(0, 0, 100, 100), rectangle<T>(101, 0, 102, 100), 0), 0);
  }
}

/// The text that a contact is refused with.
template <class A, class B>
std::string refusal(const A& a, const B& b, omReal64 gap) {
  return thrownBy<ORMIXGeometryException>([&] { contact(a, b, gap); });
}

TEST(Contacts, RefuseBadInputByName) {
  const Polygon square = rectangle<omReal64>(0, 0, 1, 1);
  EXPECT_EQ(refusal(square, square, -1), "The gap of a contact must be finite and at least 0, -1 was given");
  EXPECT_EQ(refusal(square, rectangle<omReal64>(0, 0, support::s_infinity, 1), 1),
            "No contact is defined of boundaries with a coordinate that is not finite");
  EXPECT_EQ(refusal(square, Circle2d<omReal64>(), 1), "No contact is defined of a eE2DT_Circle");
  EXPECT_EQ(thrownBy<ORMIXGeometryException>([] { contacts(Shape2dPtrColl(2), 0); }), "Region 0 of 2 regions is null");
  EXPECT_EQ(contactLength(square, Polygon(), 1), 0);
  EXPECT_TRUE(contacts(std::vector<Polygon>(), 1).borders.empty());
  // Squares of these coordinates overflow, or vanish.
  for (const omReal64 size : {1e300, 1e-300}) {
    const Polygon left = rectangle(-size, 0.0, 0.0, size), right = rectangle(0.5 * size, 0.0, size, size);
    EXPECT_NEAR(contactLength(left, right, 0.6 * size) / size, 1, 1e-12);
    EXPECT_EQ(contactLength(left, right, 0.4 * size), 0);
    EXPECT_NEAR(contacts(std::vector<Polygon>{left, right}, 1e308).contacts.at(0).length() / size, 3.5, 1e-12);
  }
}

Mesh hullOf(const std::vector<Point3dData<omReal64>>& points) {
  Mesh mesh;
  EXPECT_TRUE(quickHull(points, mesh));
  return mesh;
}

Mesh cuboid(omReal64 x0, omReal64 x1, omReal64 size) {
  std::vector<Point3dData<omReal64>> corners;
  for (int k = 0; k < 8; ++k) corners.emplace_back(k & 1 ? x1 : x0, k & 2 ? size : 0, k & 4 ? size : 0);
  return hullOf(corners);
}

// Faces that touch, with triangles that need not match; a plate, whose back is within the gap; a body in a cavity.
TEST(ContactSurface, OfFacesPlatesAndCavities) {
  Mesh left = cuboid(-10, 0, 10);
  for (const bool isReversed : {false, true}) {
    if (isReversed) left.reverseOrientation();
    for (const auto& [right, gap, onA, onB] :
         {std::tuple(cuboid(0, 5, 10), 0.0, 100.0, 100.0), std::tuple(cuboid(0, 5, 4), 0.0, 16.0, 16.0),
          std::tuple(cuboid(1, 1.5, 10), 2.0, 100.0, 100.0), std::tuple(cuboid(1, 3, 10), 0.5, 0.0, 0.0)}) {
      const ContactSurface found = contactSurface(left, right, gap, {1e-3, 200});
      EXPECT_NEAR(found.onA.area, onA, found.onA.bound + 1e-9);
      EXPECT_NEAR(found.onB.area, onB, found.onB.bound + 1e-9);
      EXPECT_LE(found.bound, 1e-3 * found.area + 1e-9);
      EXPECT_EQ(contactSurface(right, left, gap, {1e-3, 200}).area, found.area);
    }
  }
  Shape3d shape;
  shape.getMeshWithHolesColl() = {boost::make_shared<MeshWithHoles3d<omReal32>>()};
  MeshWithHoles3d<omReal32>& body = *shape.getMeshWithHolesColl()[0];
  cast(cuboid(-30, 30, 30), body.getExteriorMesh());
  body.getMeshHoles() = {boost::make_shared<MeshWithHoles3d<omReal32>>()};
  cast(cuboid(2, 12, 10), body.getMeshHoles()[0]->getExteriorMesh());
  const Contact3d found = contact(cuboid(2, 12, 10), shape, 0);
  EXPECT_NEAR(found.surface.area, 600, found.surface.bound + 1e-3);
  EXPECT_NEAR(AreaMsr3d::measure(found.onA), 600, 2 * found.surface.bound + 1e-3);
}

TEST(ContactSurface, OfTangentSpheresIsWithinItsBound) {
  const auto sphere = [](omReal64 x) {
    std::vector<Point3dData<omReal64>> points;
    for (int k = 0; k < 1000; ++k) {
      const omReal64 z = 1 - (2 * k + 1) / 1000.0, angle = k * s_pi * (3 - std::sqrt(5.0)), r = std::sqrt(1 - z * z);
      points.emplace_back(x + r * std::cos(angle), r * std::sin(angle), z);
    }
    return hullOf(points);
  };
  const Mesh a = sphere(0), b = sphere(2);
  omReal64 finest = 0;
  for (const omReal64 tolerance : {2e-3, 1e-2, 0.1}) {
    const Contact3d found = contact(a, b, 0.1, {tolerance, 1e4});
    EXPECT_NEAR(found.surface.area, 2 * s_pi * (1 - (5 - 1.1 * 1.1) / 4), 0.02 + found.surface.bound);
    EXPECT_LE(found.surface.bound, tolerance * found.surface.area);
    EXPECT_NEAR(AreaMsr3d::measure(found.onA), found.surface.onA.area, found.surface.onA.bound + 1e-12);
    if (tolerance == 2e-3) finest = found.surface.onA.area;
    EXPECT_NEAR(found.surface.onA.area, finest, found.surface.onA.bound + 2e-3 * finest);
  }
  // What no effort decides has a bound.
  const ContactSurface limited = contactSurface(a, b, 0.1, {0, 0});
  EXPECT_GT(limited.bound, 0);
  EXPECT_NEAR(limited.onA.area, finest, limited.onA.bound + 2e-3 * finest);
}

TEST(ContactSurface, RefusesBadInputByName) {
  const Mesh cube = cuboid(0, 1, 1);
  EXPECT_EQ(refusal(cube, cube, support::s_nan), "The gap of a contact must be finite and at least 0, nan was given");
  EXPECT_EQ(refusal(cube, Sphere3d<omReal64>(), 1), "No contact is defined of a eE3DT_Sphere");
  Mesh damaged = cube;
  damaged.getVertexColl()[3].setY(support::s_nan);
  EXPECT_EQ(refusal(cube, damaged, 1), "No contact is defined of boundaries with a coordinate that is not finite");
  Shape3d voxels;
  voxels.getRowIntersections().rowIntersectionsColl.resize(1);
  ASSERT_TRUE(voxels.getRowIntersections().rowIntersectionsColl[0].addRun(0, 0, 3));
  EXPECT_EQ(refusal(cube, voxels, 1), "A shape of 3 voxels has no surface to be in contact");
  EXPECT_EQ(contactSurface(cube, Mesh(), 1).area, 0);
  for (const omReal64 size : {1e100, 1e-100})
    EXPECT_NEAR(contactSurface(cuboid(-size, 0, size), cuboid(0, size, size), 0).area / size / size, 1, 0.01);
  EXPECT_EQ(contactSurface(cuboid(0, 1e300, 1e300), cuboid(-1e300, 0, 1e300), 1e308).area, support::s_infinity);
}

}  // namespace
