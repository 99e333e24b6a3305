#include <ORMIXGeometry/Entity/3d/Mesh/RoundMeshes.h>
#include <ORMIXGeometry/Tools/Distance/SpatialDistance.h>

#include <cmath>
#include <functional>

#include "support/Random.h"
#include "support/SampleObjects.h"

namespace {

using namespace ormix;
using namespace ormix::geom;

using P = Point3dData<omReal64>;

omReal64 norm(const P& p) { return std::hypot(p.getX(), p.getY(), p.getZ()); }
omReal64 apart(const SpatialNearestPoints& pair) { return norm(pair.onB - pair.onA); }

/// An entity, and points of it that are drawn without the library: of all of it or of its boundary.
struct Case {
  GeometryEntity3dPtr entity;
  std::function<P(eInteriorPolicy)> draw;
  bool canTurn = true;
};

class SpatialDistanceTest : public testing::Test {
 protected:
  static constexpr int s_nbKinds = 19;

  P vector(omReal64 size) {
    return {random.uniform(-size, size), random.uniform(-size, size), random.uniform(-size, size)};
  }
  static P cross(const P& a, const P& b) {
    return {a.getY() * b.getZ() - a.getZ() * b.getY(), a.getZ() * b.getX() - a.getX() * b.getZ(),
            a.getX() * b.getY() - a.getY() * b.getX()};
  }
  P direction() {
    for (;;) {
      const P v = vector(1);
      if (norm(v) > 0.1 && norm(v) < 1) return 1 / norm(v) * v;
    }
  }
  P onTriangle(const P& a, const P& b, const P& c) {
    omReal64 u = random.uniform(0, 1), v = random.uniform(0, 1);
    if (u + v > 1) u = 1 - u, v = 1 - v;
    return a + u * (b - a) + v * (c - a);
  }
  /// Points of what is star-shaped about a centre: between a share of the way to the outside and all of it.
  template <class Draw>
  std::function<P(eInteriorPolicy)> filling(const P& center, const Draw& draw, omReal64 hollow = 0) {
    return [=](eInteriorPolicy policy) {
      const omReal64 inner = hollow > 0 && random.below(2) == 0 ? hollow : 1.0;
      const bool isInside = policy == eIP_Filled && random.below(2) == 0;
      return center + (isInside ? random.uniform(hollow, 1) : inner) * (draw() - center);
    };
  }
  template <class Solid>
  Case box(const Solid& solid, const std::array<P, 8>& k, bool canTurn) {
    // The faces by corners that are numbered by bits.
    const auto draw = [this, k] {
      const std::size_t axis = std::size_t(1) << random.below(3), other = axis == 4 ? 1 : axis * 2;
      const P& at = k[random.below(2) * axis];
      const std::size_t from = std::size_t(&at - k.data()), third = 7 - axis - other;
      return at + random.uniform(0, 1) * (k[from + other] - at) + random.uniform(0, 1) * (k[from + third] - at);
    };
    return {boost::make_shared<Solid>(solid), filling(0.5 * (k[0] + k[7]), draw), canTurn};
  }
  /// An octahedron, which may have another inside, or none of a side.
  std::vector<P> octahedron(const P& center, omReal64 size) {
    const P x = size * P(1, 0.2, 0), y = size * P(-0.3, 1.2, 0.1), z = size * P(0.1, 0, 0.8);
    return {center + x, center - x, center + y, center - y, center + z, center - z};
  }
  static Mesh3d<omReal64> meshOf(const std::vector<P>& v, std::size_t nbTriangles) {
    std::vector<omUInt32> indices{0, 2, 4, 2, 1, 4, 1, 3, 4, 3, 0, 4, 2, 0, 5, 1, 2, 5, 3, 1, 5, 0, 3, 5};
    indices.resize(3 * nbTriangles);
    Mesh3d<omReal64> mesh;
    mesh.build(v, indices);
    return mesh;
  }
  std::function<P()> onOctahedron(const std::vector<P>& v, std::size_t nbTriangles) {
    return [this, v, nbTriangles] {
      const auto indices = meshOf(v, nbTriangles).getTriangleVertexIndices(random.below(omUInt32(nbTriangles)));
      return onTriangle(v[indices[0]], v[indices[1]], v[indices[2]]);
    };
  }

  Case make(int kind) {
    const P c = P(3, 3, 3) + vector(3);
    const auto size = [this] { return random.uniform(0.3, 2); };
    switch (kind) {
      case 0:
        return {boost::make_shared<Point3d<omReal64>>(c), [c](auto) { return c; }};
      case 1: {
        const P d = c + vector(3);
        return {boost::make_shared<Segment3d<omReal64>>(c, d),
                [=](auto) { return c + random.uniform(0, 1) * (d - c); }};
      }
      case 2: {
        const P d = c + vector(3), e = c + vector(3);
        return {boost::make_shared<Triangle3d<omReal64>>(c, d, e), [=](auto) { return onTriangle(c, d, e); }};
      }
      case 3: {
        const Plan3d plan(random.uniform(-5, 5), random.uniform(0, 3), random.uniform(-3, 3));
        const Vector3d n = plan.getNormal();
        const P normal(n.getX(), n.getY(), n.getZ());
        const auto draw = [=](auto) {
          const P p = P(3, 3, 3) + vector(12), q = p * normal;
          return p - (q.getX() + q.getY() + q.getZ() - plan.getRho()) * normal;
        };
        return {boost::make_shared<Plan3d>(plan), draw, false};
      }
      case 4: {
        std::array<P, 8> k;
        const P half(size(), size(), size());
        for (std::size_t i = 0; i < 8; ++i)
          k[i] = c + P((i & 1) ? half.getX() : -half.getX(), (i & 2) ? half.getY() : -half.getY(),
                       (i & 4) ? half.getZ() : -half.getZ());
        return box(BoundingBox3d<omReal64>(k[0], k[7]), k, false);
      }
      case 5:
      case 6: {
        const auto all = [&](const auto& s) {
          return box(
              s,
              {s.topLeftFrontCorner(), s.topRightFrontCorner(), s.bottomLeftFrontCorner(), s.bottomRightFrontCorner(),
               s.topLeftBackCorner(), s.topRightBackCorner(), s.bottomLeftBackCorner(), s.bottomRightBackCorner()},
              false);
        };
        if (kind == 5) return all(Cube3d<omReal64>(c, size(), random.uniform(), random.uniform(), random.uniform()));
        return all(Cuboid3d<omReal64>(c, size(), size(), size(), random.uniform(), random.uniform(), random.uniform()));
      }
      case 7: {
        const omReal64 r = size();
        return {boost::make_shared<Sphere3d<omReal64>>(c, r), filling(c, [=] { return c + r * direction(); })};
      }
      case 8: {
        const omReal64 u = size() + 1, v = size(), w = size() / 2;
        const EulerAngles angles{random.uniform(-3, 3), random.uniform(-3, 3), random.uniform(-3, 3)};
        const RotationMatrix m = eulerToMatrix(angles);
        const auto draw = [=] {
          const P d = direction();
          const std::array<omReal64, 3> q{u * d.getX(), v * d.getY(), w * d.getZ()};
          const auto row = [&](std::size_t i) { return m[i][0] * q[0] + m[i][1] * q[1] + m[i][2] * q[2]; };
          return c + P(row(0), row(1), row(2));
        };
        return {boost::make_shared<Ellipsoid3d<omReal64>>(c, u, v, w, angles.alpha, angles.beta, angles.chi),
                filling(c, draw)};
      }
      case 9:
      case 10: {
        // Closed, or without the lower half.
        const std::size_t nbTriangles = kind == 9 ? 8 : 4;
        const auto v = octahedron(c, 2 * size());
        return {boost::make_shared<Mesh3d<omReal64>>(meshOf(v, nbTriangles)),
                filling(c, onOctahedron(v, nbTriangles), kind == 9 ? 0 : 1)};
      }
      case 11: {
        const omReal64 s = 2 * size();
        auto mesh = boost::make_shared<MeshWithHoles3d<omReal64>>();
        mesh->getExteriorMesh() = meshOf(octahedron(c, s), 8);
        mesh->getMeshHoles().push_back(boost::make_shared<MeshWithHoles3d<omReal64>>());
        mesh->getMeshHoles()[0]->getExteriorMesh() = meshOf(octahedron(c, s / 2), 8);
        return {mesh, filling(c, onOctahedron(octahedron(c, s), 8), 0.5)};
      }
      case 12: {
        std::vector<P> points{c, c + vector(2), c + vector(2)};
        return {boost::make_shared<PointCloud3d<omReal64>>(points), [=](auto) { return points[random.below(3)]; }};
      }
      case 14:
      case 15: {
        const P d = c + vector(3), axis = 1 / norm(d - c) * (d - c);
        const omReal64 r0 = size(), r1 = kind == 14 ? r0 : size() - 0.3, length = norm(d - c);
        const auto draw = [=](eInteriorPolicy policy) {
          // On a disc, or on a circle of the side.
          const P v = direction(), across = cross(axis, v);
          const omReal64 at = random.uniform(0, 1);
          const bool isDisc = random.below(3) == 0, isFirst = random.below(2) == 0;
          const omReal64 z = isDisc ? (isFirst ? 0 : 1) : at, rim = r0 + (r1 - r0) * z;
          const omReal64 share = isDisc || policy == eIP_Filled ? random.uniform(0, 1) : 1;
          return c + z * length * axis + (share * rim / norm(across)) * across;
        };
        if (kind == 14) return {boost::make_shared<Cylinder3d<omReal64>>(c, d, r0), draw};
        return {boost::make_shared<Cone3d<omReal64>>(c, d, r0, -r1), draw};
      }
      case 16:
      case 17: {
        const P axis = direction();
        const omReal64 minor = kind == 16 ? size() / 2 : 0, major = size() + minor;
        const auto draw = [=](eInteriorPolicy policy) {
          const P v = cross(axis, direction()), out = 1 / norm(v) * v;
          const omReal64 angle = random.uniform(-4, 4), r = minor * (policy == eIP_Filled ? random.uniform(0, 1) : 1);
          return c + (major + r * std::cos(angle)) * out + r * std::sin(angle) * axis;
        };
        if (kind == 16) return {boost::make_shared<Torus3d<omReal64>>(c, 3 * axis, major, minor), draw};
        return {boost::make_shared<Circle3d<omReal64>>(c, -1 * axis, major), draw};
      }
      case 18: {
        const P along = direction();
        return {boost::make_shared<Line3d>(c, along), [=](auto) { return c + random.uniform(-9, 9) * along; }};
      }
      default: {
        // A block of voxels, of runs that adjoin.
        Shape3d shape;
        shape.getRowIntersections().zOffset = 2;
        shape.getRowIntersections().rowIntersectionsColl.resize(3);
        for (RowIntersections& slice : shape.getRowIntersections().rowIntersectionsColl)
          slice.setRows(1, {2, 2}, {{3, 4}, {4, 6}, {3, 5}, {5, 6}});
        std::array<P, 8> k;
        for (std::size_t i = 0; i < 8; ++i) k[i] = {(i & 1) ? 6.0 : 3.0, (i & 2) ? 3.0 : 1.0, (i & 4) ? 5.0 : 2.0};
        return box(shape, k, false);
      }
    }
  }

  support::Random random{2024};
};

TEST_F(SpatialDistanceTest, OfAllPairsIsThatOfTheirPoints) {
  constexpr int nbStarts = 8;
  int nbZero = 0;
  for (int kindA = 0; kindA < s_nbKinds; ++kindA)
    for (int kindB = kindA; kindB < s_nbKinds; ++kindB)
      for (int i = 0; i < 2; ++i) {
        const eInteriorPolicy policy = i % 2 == 0 ? eIP_Filled : eIP_Boundary;
        const Case a = make(kindA), b = make(kindB);
        SCOPED_TRACE(testing::Message() << kindA << " and " << kindB << ", " << i);
        const PreparedEntity3d pa(*a.entity), pb(*b.entity);
        const SpatialNearestPoints pair = nearestPoints(pa, pb, policy), back = nearestPoints(pb, pa, policy);
        ASSERT_EQ(back.distance, pair.distance);
        ASSERT_TRUE(back.onA == pair.onB && back.onB == pair.onA);
        nbZero += pair.distance == 0;
        ASSERT_NEAR(apart(pair), pair.distance, 1e-12);
        ASSERT_LE(distance(Point3d<omReal64>(pair.onA), *a.entity, policy), 1e-12);
        ASSERT_LE(distance(Point3d<omReal64>(pair.onB), *b.entity, policy), 1e-12);
        for (int k = 0; k < nbStarts; ++k) {
          // No points that are drawn are nearer, nor those to which ways from them to and fro lead.
          P p = a.draw(policy), q = b.draw(policy);
          ASSERT_GE(norm(q - p), pair.distance - 1e-12);
          for (int step = 0; step < 8; ++step) {
            q = nearestPoints(PreparedEntity3d(Point3d<omReal64>(p)), pb, policy).onB;
            p = nearestPoints(PreparedEntity3d(Point3d<omReal64>(q)), pa, policy).onB;
          }
          ASSERT_GE(norm(q - p), pair.distance - 1e-12);
        }
        if (!a.canTurn || !b.canTurn) continue;
        const RigidTransform3d motion(0.5, -0.25, 1.5, 3, -2, 1);
        ASSERT_NEAR(distance(*motion.apply(*a.entity), *motion.apply(*b.entity), policy), pair.distance, 1e-11);
      }
  EXPECT_GT(nbZero, 25);
}

TEST_F(SpatialDistanceTest, OfEllipsoidsIsTheLeastOfDenselySampledOnes) {
  for (int i = 0; i < 6; ++i) {
    // Apart, and the surface of one inside the other.
    const P c = i % 2 == 0 ? P(6, 1, 2) + vector(1) : vector(0.5);
    const omReal64 size = i % 2 == 0 ? 1 : 5;
    const Ellipsoid3d<omReal64> a(P(), 1.5, random.uniform(0.5, 1.5), 0.5, random.uniform(), random.uniform(), 1);
    const Ellipsoid3d<omReal64> b(c, 2 * size, random.uniform(1, 2) * size, size, random.uniform(), random.uniform(),
                                  2);
    const omReal64 found = distance(a, b, eIP_Boundary);
    EXPECT_EQ(distance(a, b, eIP_Filled), i % 2 == 0 ? found : 0);
    // Points of a at steps that become finer around the nearest, to their distance from b.
    const PreparedEntity3d other(b);
    const RotationMatrix m = eulerToMatrix(a.getAlpha(), a.getBeta(), a.getChi());
    const auto at = [&](omReal64 u, omReal64 v) {
      const std::array<omReal64, 3> q{a.getMajorRadius() * std::cos(u) * std::cos(v),
                                      a.getMediumRadius() * std::sin(u) * std::cos(v),
                                      a.getMinorRadius() * std::sin(v)};
      const auto row = [&](std::size_t k) { return m[k][0] * q[0] + m[k][1] * q[1] + m[k][2] * q[2]; };
      return distance(PreparedEntity3d(Point3d<omReal64>(row(0), row(1), row(2))), other, eIP_Boundary);
    };
    omReal64 least = 1e300, bestU = 0, bestV = 0, centerU = 0, centerV = 0;
    for (omReal64 reach = 3.2; reach > 1e-6; reach *= 0.25) {
      for (int k = 0; k < 400; ++k) {
        const omReal64 u = centerU + reach * (k % 20 - 9.5) / 10, v = centerV + reach * (k / 20 - 9.5) / 10;
        const omReal64 sampled = at(u, v);
        if (sampled < least) least = sampled, bestU = u, bestV = v;
      }
      centerU = bestU, centerV = bestV;
    }
    EXPECT_NEAR(found, least, 1e-9 * size) << i;
  }
}

TEST_F(SpatialDistanceTest, IsExactWhereItIsKnown) {
  const auto of = [](const auto& a, const auto& b, eInteriorPolicy policy = eIP_Filled) {
    return std::make_pair(distance(a, b, policy), distance(b, a, policy));
  };
  const auto both = [](omReal64 value) { return std::make_pair(value, value); };
  const Sphere3d<omInt32> ball({0, 0, 0}, 5);
  EXPECT_EQ(of(ball, Point3d<omReal32>(3, 0, 0)), both(0));
  EXPECT_EQ(of(ball, Point3d<omReal32>(3, 0, 0), eIP_Boundary), both(2));
  EXPECT_EQ(of(ball, Sphere3d<omReal64>({0, 9, 0}, -1)), both(3));
  EXPECT_EQ(of(ball, Sphere3d<omReal64>({0, 1, 0}, 2), eIP_Boundary), both(2));
  EXPECT_EQ(of(ball, Plan3d(7, 0, 0)), both(2));
  EXPECT_EQ(of(Plan3d(7, 0.3, 0.7), Plan3d(-2, 0.3, 0.7)), both(9));
  EXPECT_EQ(of(Plan3d(7, 0.3, 0.7), Plan3d(-2, 0.4, 0.7)), both(0));
  // A flat ellipsoid, and one without extent.
  EXPECT_NEAR(distance(Ellipsoid3d<omInt32>({0, 0, 0}, 4, 3, 0, 0, 0, 0), Point3d<omInt32>(1, 1, 6)), 6, 1e-11);
  EXPECT_EQ(of(Sphere3d<omInt32>({1, 2, 3}, 0), Point3d<omInt32>(1, 2, 5)), both(2));
  // An inverted box is the box between its corners.
  const BoundingBox3d<omInt32> box(4, 4, 4, 0, 0, 0);
  EXPECT_EQ(of(box, Point3d<omInt32>(1, 2, 2)), both(0));
  EXPECT_EQ(of(box, Point3d<omInt32>(1, 2, 2), eIP_Boundary), both(1));
  EXPECT_EQ(of(box, BoundingBox3d<omInt32>(1, 1, 1, 3, 2, 2)), both(0));
  EXPECT_EQ(of(box, BoundingBox3d<omReal32>(1, 1, 1, 3, 2, 2), eIP_Boundary), both(1));
  EXPECT_EQ(of(box, BoundingBox3d<omUInt32>(6, 7, 2, 9, 9, 9)), both(std::sqrt(13.0)));

  // A cavity is outside, a body in it inside again; either way round of the triangles.
  const auto node = [](omReal64 size) {
    auto mesh = boost::make_shared<MeshWithHoles3d<omReal64>>();
    Mesh3d<omReal64>& m = mesh->getExteriorMesh();
    m.build({{size, 0, 0}, {-size, 0, 0}, {0, size, 0}, {0, -size, 0}, {0, 0, size}, {0, 0, -size}},
            {0, 2, 4, 2, 1, 4, 1, 3, 4, 3, 0, 4, 2, 0, 5, 1, 2, 5, 3, 1, 5, 0, 3, 5});
    return mesh;
  };
  const auto body = node(9);
  body->getMeshHoles() = {node(6), nullptr};
  body->getMeshHoles()[0]->getMeshHoles() = {node(3)};
  body->getMeshHoles()[0]->getExteriorMesh().reverseOrientation();
  const omReal64 third = std::sqrt(1.0 / 3);
  for (const auto& [x, filled] : {std::make_pair(0.0, 0.0), {2.0, 0.0}, {4.0, 1.0}, {7.0, 0.0}, {10.0, 1.0}}) {
    EXPECT_NEAR(distance(Point3d<omReal64>(x, 0, 0), *body), filled, 1e-15) << x;
  }
  // Nothing is inside of a mesh that is not closed.
  const auto& vertices = body->getExteriorMesh().getVertexColl();
  EXPECT_NEAR(distance(Point3d<omReal64>(0, 0, 0), meshOf(vertices, 7)), 9 * third, 1e-14);
  EXPECT_EQ(distance(Point3d<omReal64>(0, 0, 0), meshOf(vertices, 8)), 0);
}

TEST_F(SpatialDistanceTest, OfRoundSolidsIsThatOfTheirMeshes) {
  constexpr omUInt32 nbSides = 64;
  // No point of a solid of this size is farther from its mesh, nor the other way round.
  const auto sagittaOf = [](omReal64 size) { return 2 * size * (1 - std::cos(4 * std::atan(1.0) / nbSides)); };
  struct Solid {
    GeometryEntity3dPtr entity;
    boost::shared_ptr<Mesh3d<omReal64>> mesh;
    omReal64 size;
  };
  const auto makeSolid = [&](int kind) -> Solid {
    const P c = vector(2), d = c + vector(3);
    const omReal64 r = random.uniform(0.3, 2), s = random.uniform(0.1, 1.2);
    const auto solidOf = [&](const auto& solid, omReal64 size) -> Solid {
      return {boost::make_shared<std::decay_t<decltype(solid)>>(solid),
              boost::make_shared<Mesh3d<omReal64>>(toMesh3d(solid, nbSides)), size};
    };
    if (kind == 0) return solidOf(Cylinder3d<omReal64>(c, d, r), r);
    if (kind == 1) return solidOf(Cone3d<omReal64>(c, d, r, s), r + s);
    const omReal64 tube = r * random.uniform(0.1, 0.8);
    // Half as many sides around the tube.
    return solidOf(Torus3d<omReal64>(c, d - c, r, tube), r + 5 * tube);
  };
  int nbApart = 0;
  for (int i = 0; i < 54; ++i) {
    const eInteriorPolicy policy = i % 2 == 0 ? eIP_Filled : eIP_Boundary;
    const Solid a = makeSolid(i % 3), b = makeSolid(i / 3 % 3);
    SCOPED_TRACE(i);
    const omReal64 found = distance(*a.entity, *b.entity, policy);
    nbApart += found > 0;
    EXPECT_NEAR(distance(*a.mesh, *b.entity, policy), found, sagittaOf(a.size));
    EXPECT_NEAR(distance(*a.entity, *b.mesh, policy), found, sagittaOf(b.size));
    EXPECT_NEAR(distance(*a.mesh, *b.mesh, policy), found, sagittaOf(a.size) + sagittaOf(b.size));
  }
  EXPECT_GT(nbApart, 15);
}

TEST_F(SpatialDistanceTest, OfEveryClassIsSymmetricOrRefused) {
  std::vector<GeometryEntity3dPtr> all;
  forEachClass(SpatialEntityList(), [&all](auto tag) {
    using Class = typename decltype(tag)::Type;
    if constexpr (!std::is_same_v<Class, Vector3d>) all.push_back(boost::make_shared<Class>(samples::makeSample(tag)));
  });
  for (const auto& a : all)
    for (const auto& b : all) {
      const omReal64 found = distance(*a, *b, eIP_Boundary);
      EXPECT_TRUE(found >= 0 && found == distance(*b, *a, eIP_Boundary));
      EXPECT_LE(distance(*a, *b), found);
    }
  const Point3d<omReal64> point(1, 2, 3);
  const auto messageOf = [&point](const BaseGeometryEntity3d& entity) -> std::string {
    try {
      distance(point, entity);
    } catch (const ORMIXGeometryException& e) {
      return e.getMessage();
    }
    return {};
  };
  EXPECT_EQ(messageOf(Vector3d(1, 2, 3)), "No distance is defined to a ormix::geom::Vector3d, which is not bounded");
  EXPECT_EQ(messageOf(PointCloud3d<omInt32>()),
            "No distance is defined to a ormix::geom::PointCloud3d<ormix::omInt32> without points");
  EXPECT_EQ(messageOf(Mesh3d<omReal32>()),
            "No distance is defined to a ormix::geom::Mesh3d<ormix::omReal32> without points");
  EXPECT_EQ(messageOf(Shape3d()), "No distance is defined to a ormix::geom::Shape3d without points");
  EXPECT_EQ(messageOf(Sphere3d<omReal64>({0, 0, 0}, support::s_nan)),
            "No distance is defined to a ormix::geom::Sphere3d<ormix::omReal64> with a coordinate or size that is not "
            "finite");
  EXPECT_EQ(
      messageOf(Point3d<omReal64>(0, support::s_infinity, 0)),
      "No distance is defined to a ormix::geom::Point3d<ormix::omReal64> with a coordinate or size that is not finite");
}

TEST_F(SpatialDistanceTest, ScalesWithTheCoordinates) {
  for (const int exponent : {-1000, -600, -300, -100, 100, 300, 500, 1000}) {
    const omReal64 unit = std::ldexp(1.0, exponent);
    const auto p = [unit](omReal64 x, omReal64 y, omReal64 z) { return P(x * unit, y * unit, z * unit); };
    const Sphere3d<omReal64> sphere(p(9, 0, 0), 2 * unit);
    const BoundingBox3d<omReal64> box(p(0, -1, -1), p(3, 1, 1));
    const Triangle3d<omReal64> triangle(p(5, 0, 0), p(5, 9, 0), p(5, 0, 9));
    EXPECT_EQ(distance(sphere, box), 4 * unit) << exponent;
    EXPECT_EQ(distance(triangle, box), 2 * unit) << exponent;
    EXPECT_EQ(distance(triangle, sphere), 2 * unit) << exponent;
    EXPECT_EQ(distance(Ellipsoid3d<omReal64>(p(1, 0, 0), unit, unit / 2, unit / 4, 0, 0, 0), box, eIP_Boundary), 0);
    EXPECT_EQ(distance(Plan3d(12 * unit, std::acos(-1.0) / 2, 0), sphere), unit) << exponent;
  }
  // Sizes that are nothing beside others.
  const Ellipsoid3d<omReal64> tiny(P(1, 1e-300, 1e-300), 1e-300, 3, 1, 0, 1, 2);
  EXPECT_EQ(distance(tiny, Sphere3d<omReal64>(P(0, 1e17, 0), 1e300)), 0);
  EXPECT_EQ(distance(tiny, Cone3d<omReal64>(P(0, 0, -1e300), P(0, 0, 1e300), 1e300, 1)), 0);
  EXPECT_EQ(distance(Point3d<omReal64>(1e308, 0, 0), BoundingBox3d<omReal64>(-1.5e308, 0, 0, -1e308, 1, 1)),
            support::s_infinity);
}

}  // namespace
