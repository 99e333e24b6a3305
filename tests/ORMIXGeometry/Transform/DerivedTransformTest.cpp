// The transforms that answer another geometry: centroids, envelopes, convex hulls, smallest circles and spheres.

#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "support/Checks.h"
#include "support/LogCapture.h"
#include "support/Random.h"
#include "support/SampleObjects.h"

namespace {

using namespace samples;
using support::printed;
using support::Random;
using support::s_infinity;
using support::s_nan;
using support::thrownBy;

struct Plane {
  using Entity = BaseGeometryEntity2d;
  using Transform = BaseGeometryTransform2d;
  using Transforms = PlanarDerivedTransformList;
  using Classes = PlanarEntityList;
  static std::string typeName(const Entity& entity) { return toString(entity.getEntity2dType()); }
};
struct Space {
  using Entity = BaseGeometryEntity3d;
  using Transform = BaseGeometryTransform3d;
  using Transforms = SpatialDerivedTransformList;
  using Classes = SpatialEntityList;
  static std::string typeName(const Entity& entity) { return toString(entity.getEntity3dType()); }
};

/// Which samples have a centroid, a convex hull, an envelope and a smallest ball, by class; all unless named.
const std::map<std::string, std::string> s_support{
    {"Vector2d", "0000"},         {"Line2d", "0000"},       {"Parabola2d", "0000"},
    {"Vector3d", "0000"},         {"Plan3d", "0000"},       {"Skeleton2d", "0000"},
    {"SkeletonVertex2d", "0000"}, {"Point3d", "1011"},      {"Segment3d", "1011"},
    {"Triangle3d", "1011"},       {"PointCloud3d", "1011"}, {"Arc2d", "1011"},
    {"Torus3d", "1011"},          {"Circle3d", "1011"},     {"Line3d", "0000"}};

template <class S, class... T>
void expectSupport(ClassList<T...>) {
  const std::string space = "ormix::geom::";
  typename std::vector<boost::shared_ptr<typename S::Entity>> all, answered;
  for (const ClassCase& each : classCases(typename S::Classes())) {
    SCOPED_TRACE(each.name);
    std::string support;
    (
        [&](const typename S::Transform& transform) {
          const auto entity = boost::dynamic_pointer_cast<typename S::Entity>(each.makeSample());
          const std::string before = each.describe(*entity);
          const auto answer = transform.apply(*entity);
          support += answer ? '1' : '0';
          EXPECT_EQ(each.describe(*entity), before);
          const bool keepsClass = answer && answer->getClassName() == each.name;
          const BoolResult inSitu = transform.applyInSitu(*entity);
          EXPECT_EQ(inSitu.getMessage(), keepsClass ? ""
                                                    : "Transform " + transform.getClassName() +
                                                          " failed for geometry entity " + S::typeName(*entity));
          EXPECT_EQ(each.describe(*entity), keepsClass ? each.describe(*answer) : before);
        }(T()),
        ...);
    const auto row = s_support.find(each.name.substr(space.size(), each.name.find('<') - space.size()));
    EXPECT_EQ(support, row == s_support.end() ? "1111" : row->second);
    all.push_back(boost::dynamic_pointer_cast<typename S::Entity>(each.makeSample()));
    if (support == "1111") answered.push_back(all.back());
  }
  const typename S::Transform* const transforms[] = {new T()...};
  for (const auto* transform : transforms) {
    typename std::vector<boost::shared_ptr<typename S::Entity>> images;
    EXPECT_TRUE(applyAll(*transform, answered, images));
    EXPECT_EQ(images.size(), answered.size());
    const BoolResult result = applyAll(*transform, all, images);
    ASSERT_LT(images.size(), all.size());
    EXPECT_EQ(result.getMessage(), "Transform " + transform->getClassName() + " failed for geometry entity " +
                                       S::typeName(*all[images.size()]));
    delete transform;
  }
}

TEST(DerivedTransforms, AnswerForWhatTheTableSays) {
  expectSupport<Plane>(PlanarDerivedTransformList());
  expectSupport<Space>(SpatialDerivedTransformList());
}

template <class T>
Polygon2d<T> polygon(std::vector<Point2dData<T>> points) {
  Polygon2d<T> result;
  result.getPointColl() = std::move(points);
  return result;
}

template <class T>
class Derived : public ::testing::Test {};
TYPED_TEST_SUITE(Derived, support::Scalars, );

TYPED_TEST(Derived, PlanarResultsAreThoseWorkedByHand) {
  using T = TypeParam;
  const auto tree = TypedSamples<T>::of(ClassTag<PolygonWithHoles2d<T>>());
  const auto clockwise = polygon<T>({{0, 0}, {0, 4}, {2, 4}, {4, 4}, {4, 0}, {0, 0}});
  const auto flat = polygon<T>({{0, 0}, {9, 3}, {3, 1}, {0, 0}});
  const auto point = polygon<T>({{7, 3}, {7, 3}, {7, 3}});
  const Rectangle2d<T> rectangle({10, 20}, 4, 2, 0);
  const Ellipse2d<T> ellipse({10, 20}, 5, 3, 0);
  const BoundingBox2d<T> inverted(5, 9, 1, 2);
  CentroidTransform2d ignoring;
  ignoring.setHoleMsrPolicy(eHMP_IgnoreHoles);
  for (const auto& [result, expected] : std::vector<std::pair<std::string, std::string>>{
           {printed(CentroidTransform2d::centroid(clockwise)), "[2, 2]"},
           {printed(ConvexHullTransform2d::convexHull(clockwise)), "[[0, 0], [4, 0], [4, 4], [0, 4], [0, 0]]"},
           {printed(EnvelopeTransform2d::envelope(clockwise)), "[min=[0, 0], max=[4, 4]]"},
           {printed(MinEnclosingCircleTransform2d::minEnclosingCircle(clockwise)), "[center=[2, 2], radius=2.82843]"},
           {printed(CentroidTransform2d::centroid(flat)), "[4.5, 1.5]"},
           {printed(ConvexHullTransform2d::convexHull(flat)), "[[0, 0], [9, 3], [0, 0]]"},
           {printed(CentroidTransform2d::centroid(point)), "[7, 3]"},
           {printed(ConvexHullTransform2d::convexHull(point)), "[[7, 3]]"},
           {printed(MinEnclosingCircleTransform2d::minEnclosingCircle(point)), "[center=[7, 3], radius=0]"},
           // (100² · 50 − 30² · 25 + 5² · 22.5 − 10² · 55) / (100² − 30² + 5² − 10²)
           {printed(CentroidTransform2d::centroid(tree)), "[52.3615, 52.3615]"},
           {describe(dynamic_cast<const Point2d<omReal64>&>(*ignoring.apply(tree))), "[50, 50]"},
           {printed(ConvexHullTransform2d::convexHull(rectangle)), "[[6, 18], [14, 18], [14, 22], [6, 22], [6, 18]]"},
           {printed(EnvelopeTransform2d::envelope(rectangle)), "[min=[6, 18], max=[14, 22]]"},
           {printed(CentroidTransform2d::centroid(rectangle)), "[10, 20]"},
           {printed(EnvelopeTransform2d::envelope(ellipse)), "[min=[5, 17], max=[15, 23]]"},
           {printed(ConvexHullTransform2d::convexHull(ellipse)), printed(ellipse)},
           {printed(MinEnclosingCircleTransform2d::minEnclosingCircle(ellipse)), "[center=[10, 20], radius=5]"},
           {printed(EnvelopeTransform2d::envelope(inverted)), "[min=[1, 2], max=[5, 9]]"},
           {printed(ConvexHullTransform2d::convexHull(inverted)), "[[1, 2], [5, 2], [5, 9], [1, 9], [1, 2]]"},
           {printed(CentroidTransform2d::centroid(Segment2d<T>(1, 2, 4, 6))), "[2.5, 4]"}})
    EXPECT_EQ(result, expected);
  // Whole numbers stay when a square is turned by a right angle, and the box of one of integers contains its corners.
  if (std::is_integral_v<T>) {
    EXPECT_EQ(EnvelopeTransform2d::envelope(Square2d<T>({10, 20}, 4, s_pi)), BoundingBox2d<T>(6, 16, 14, 24));
    EXPECT_EQ(EnvelopeTransform2d::envelope(Square2d<T>({10, 20}, 4, s_pi / 4)), BoundingBox2d<T>(4, 14, 16, 26));
  }
  EXPECT_EQ(EnvelopeTransform2d::envelope(Circle2d<T>({1, 2}, 3)).getXMin(), std::is_unsigned_v<T> ? T(0) : T(-2));
  // The last values of the type.
  const T low = std::numeric_limits<T>::lowest(), high = std::numeric_limits<T>::max();
  const auto far = polygon<T>({{low, low}, {high, low}, {high, high}, {low, high}});
  EXPECT_EQ(EnvelopeTransform2d::envelope(far), BoundingBox2d<T>(low, low, high, high));
  // Finite, although the sum of the coordinates is not.
  Polygon2d<T> tall;
  tall.getPointColl().assign(20, {T(1), high});
  EXPECT_EQ(EnvelopeTransform2d::envelope(tall), BoundingBox2d<T>(1, high, 1, high));
  EXPECT_EQ(ConvexHullTransform2d::convexHull(far).getNbPoints(), 5u);
  EXPECT_EQ(EnvelopeTransform2d::envelope(Circle2d<T>({high, high}, high)).getXMax(), high);
}

TYPED_TEST(Derived, SpatialResultsAreThoseWorkedByHand) {
  using T = TypeParam;
  const auto tree = TypedSamples<T>::of(ClassTag<MeshWithHoles3d<T>>());
  const Cube3d<T> cube({10, 20, 30}, 2, 0, 0, 0), turned({10, 0, 0}, 1, 0, 0, s_pi / 2);
  const Ellipsoid3d<T> ellipsoid({10, 20, 30}, 6, 5, 4, 0, 0, 0);
  Mesh3d<T> open;
  ASSERT_TRUE(open.build({{0, 0, 0}, {3, 0, 0}, {0, 3, 0}}, {0, 1, 2}));
  CentroidTransform3d ignoring;
  ignoring.setHoleMsrPolicy(eHMP_IgnoreHoles);
  const auto hull = ConvexHullTransform3d::convexHull(cube);
  EXPECT_TRUE(hull.isClosed());
  EXPECT_NEAR(VolumeMsr3d::measure(hull), 64, 1e-13);
  for (const auto& [result, expected] : std::vector<std::pair<std::string, std::string>>{
           {printed(CentroidTransform3d::centroid(hull)), "[10, 20, 30]"},
           {printed(CentroidTransform3d::centroid(cube)), "[10, 20, 30]"},
           {printed(EnvelopeTransform3d::envelope(cube)), "[min=[8, 18, 28], max=[12, 22, 32]]"},
           {printed(MinEnclosingSphereTransform3d::minEnclosingSphere(cube)), "[center=[10, 20, 30], radius=3.4641]"},
           {printed(EnvelopeTransform3d::envelope(ellipsoid)), "[min=[4, 15, 26], max=[16, 25, 34]]"},
           {printed(ConvexHullTransform3d::convexHull(ellipsoid)), printed(ellipsoid)},
           {printed(CentroidTransform3d::centroid(open)), "[1, 1, 0]"},
           // Of corners of cubes at (1, 2, 3), whose centroids are a quarter of the size away, and volumes size³/6.
           {printed(CentroidTransform3d::centroid(tree)), "[26.1811, 27.1811, 28.1811]"},
           {describe(dynamic_cast<const Point3d<omReal64>&>(*ignoring.apply(tree))), "[26, 27, 28]"},
           {printed(CentroidTransform3d::centroid(Segment3d<T>(1, 2, 3, 4, 6, 8))), "[2.5, 4, 5.5]"}})
    EXPECT_EQ(result, expected);
  // Turned about the origin of coordinates.
  EXPECT_NEAR(CentroidTransform3d::centroid(turned).getY(), 10, 1e-14);
  EXPECT_NEAR(omReal64(EnvelopeTransform3d::envelope(turned).getYMax()), 11, 2e-6);
  EXPECT_THROW(ConvexHullTransform3d::convexHull(open), ORMIXGeometryException);
}

/// Turned and shifted entities with their outermost points, all within 40 of (60, 60), in the plane.
template <class T, class Check>
void forRandomEntities(Random& random, Check check) {
  const auto coordinate = [&random] { return static_cast<T>(random.uniform(45, 75)); };
  const auto angle = [&random] { return random.uniform(-4, 4); };
  const Point2dData<T> center(coordinate(), coordinate());
  const T size = static_cast<T>(random.uniform(3, 11)), other = static_cast<T>(random.uniform(1, 11));
  const auto check4 = [&](const auto& e) {
    check(e, {e.topLeftCorner(), e.topRightCorner(), e.bottomLeftCorner(), e.bottomRightCorner()});
  };
  check4(Square2d<T>(center, size, angle()));
  check4(Rectangle2d<T>(center, size, other, angle()));
  std::vector<Point2dData<omReal64>> boundary;
  const Ellipse2d<T> ellipse(center, size, other, angle());
  for (int k = 0; k < 40; ++k) boundary.push_back(ellipse.boundaryPoint(k * 0.16));
  check(ellipse, boundary);
  PointCloud2d<T> cloud;
  for (omUInt32 count = 1 + random.below(60); count > 0; --count)
    cloud.getCollection().emplace_back(coordinate(), coordinate());
  boundary.clear();
  for (const auto& point : cloud.getCollection()) boundary.push_back(cast<omReal64>(point));
  check(cloud, boundary);
  check(polygon<T>(cloud.getCollection()), boundary);
}

TYPED_TEST(Derived, ContainEveryPointAndDoNotDependOnThePlace) {
  using T = TypeParam;
  Random random(31);
  for (int round = 0; round < 300; ++round)
    forRandomEntities<T>(random, [&](const auto& entity, const std::vector<Point2dData<omReal64>>& points) {
      const auto box = EnvelopeTransform2d::envelope(entity);
      const auto circle = MinEnclosingCircleTransform2d::minEnclosingCircle(entity);
      const auto centroid = CentroidTransform2d::centroid(entity);
      // A side of integers may be off by the rounding that keeps whole numbers.
      const omReal64 slack = std::is_integral_v<T> ? 1e-13 : 0;
      const omReal64 error = isOf<Ellipse2d, std::decay_t<decltype(entity)>> ? 1e-13 : 0;  // of the boundary's points
      for (const auto& point : points) {
        EXPECT_TRUE(point.getX() + slack >= box.getXMin() && point.getX() - slack <= box.getXMax());
        EXPECT_TRUE(point.getY() + slack >= box.getYMin() && point.getY() - slack <= box.getYMax());
        EXPECT_LE(circle.signedDistance(point), error);
      }
      EXPECT_TRUE(centroid.getX() >= omReal64(box.getXMin()) && centroid.getX() <= omReal64(box.getXMax()));
      const auto hull = ConvexHullTransform2d::convexHull(entity);
      EXPECT_EQ(describe(ConvexHullTransform2d::convexHull(hull)), describe(hull));
      auto moved = cast<omReal64>(PointCloud2d<T>());
      for (const auto& point : points) moved.getCollection().push_back(point);
      const omReal64 radius = MinEnclosingCircleTransform2d::minEnclosingCircle(moved).getRadius();
      ASSERT_TRUE(RigidTransform2d(random.uniform(-3, 3), 1000, -500).applyInSitu(moved));
      EXPECT_NEAR(MinEnclosingCircleTransform2d::minEnclosingCircle(moved).getRadius(), radius, 1e-12 * 1000);
      EXPECT_TRUE(ScaleTransform2d(2).applyInSitu(moved));
      const auto image = EnvelopeTransform2d::envelope(moved);
      for (const auto& point : moved.getCollection())
        EXPECT_TRUE(isContainedOrTouch(BoundingBox2d<omReal64>(point, point), image));
    });
}

TYPED_TEST(Derived, ContainEveryPointOfSolids) {
  using T = TypeParam;
  Random random(32), others(36);
  for (int round = 0; round < 200; ++round) {
    const Point3dData<T> center(T(60 + random.below(30)), T(60 + random.below(30)), T(60 + random.below(30)));
    const Cuboid3d<T> cuboid(center, T(1 + random.below(9)), T(1 + random.below(9)), T(1 + random.below(9)),
                             random.uniform(0, 0.4), random.uniform(-0.4, 0), random.uniform(0, 0.4));
    const Ellipsoid3d<T> ellipsoid(center, T(1 + random.below(9)), T(1 + random.below(9)), T(1 + random.below(9)),
                                   random.uniform(-4, 4), random.uniform(-2, 2), random.uniform(-4, 4));
    const auto expectInside = [](const auto& entity, const Point3dData<omReal64>& point) {
      const auto box = EnvelopeTransform3d::envelope(entity);
      const auto sphere = MinEnclosingSphereTransform3d::minEnclosingSphere(entity);
      const omReal64 slack = std::is_integral_v<T> ? 1e-12 : 0;
      const omReal64 error = isOf<Ellipsoid3d, std::decay_t<decltype(entity)>> ? 1e-13 : 0;
      EXPECT_TRUE(point.getX() + slack >= box.getXMin() && point.getX() - slack <= box.getXMax());
      EXPECT_TRUE(point.getY() + slack >= box.getYMin() && point.getY() - slack <= box.getYMax());
      EXPECT_TRUE(point.getZ() + slack >= box.getZMin() && point.getZ() - slack <= box.getZMax());
      EXPECT_LE(sphere.signedDistance(point), error);
    };
    for (const auto& corner :
         {cuboid.topLeftFrontCorner(), cuboid.bottomRightFrontCorner(), cuboid.topRightBackCorner(),
          cuboid.bottomLeftBackCorner(), cuboid.topRightFrontCorner()})
      expectInside(cuboid, corner);
    for (int k = 0; k < 20; ++k)
      expectInside(ellipsoid, ellipsoid.boundaryPoint(random.uniform(0, s_pi), random.uniform(-4, 4)));
    const auto size = [&others] { return T(1 + others.below(9)); };
    const Point3dData<T> other(T(60 + others.below(30)), center.getY(), T(60 + others.below(30)));
    const Point3dData<omReal64> axis(others.uniform(), others.uniform(0.1, 1), round % 2 == 0 ? 0 : 1);
    const auto expectTight = [&](const auto& solid) {
      const PreparedEntity3d prepared(solid);
      const auto box = EnvelopeTransform3d::envelope(solid);
      const auto ball = MinEnclosingSphereTransform3d::minEnclosingSphere(solid);
      // The planes of all sides touch, up to whole numbers, and so does the sphere from inside.
      const omReal64 unit = std::is_integral_v<T> ? 1 : 1e-4;
      const auto low = box.getMinCornerPt(), high = box.getMaxCornerPt();
      const auto expectBetween = [&](omReal64 from, omReal64 to, omReal64 theta, omReal64 phi) {
        for (const auto& [rho, inward] : {std::pair(from, unit), std::pair(to, -unit)}) {
          const auto toPlan = [&, theta = theta, phi = phi](omReal64 at) {
            return distance(prepared, PreparedEntity3d(Plan3d(at, theta, phi)));
          };
          if (to - from > 2 * unit) {
            EXPECT_EQ(toPlan(rho + inward), 0) << solid;
          }
          EXPECT_GT(toPlan(rho - inward * 0.01), 0) << solid;
        }
      };
      expectBetween(omReal64(low.getX()), omReal64(high.getX()), s_pi / 2, 0);
      expectBetween(omReal64(low.getY()), omReal64(high.getY()), s_pi / 2, s_pi / 2);
      expectBetween(omReal64(low.getZ()), omReal64(high.getZ()), 0, 0);
      const omReal64 radius = ball.getRadius();
      EXPECT_NEAR(distance(solid, Sphere3d<omReal64>(ball.center(), 1.5 * radius), eIP_Boundary), radius / 2,
                  1e-13 * radius);
      EXPECT_LE(ball.signedDistance(CentroidTransform3d::centroid(solid)), 0);
    };
    expectTight(Cylinder3d<T>(center, other, size()));
    expectTight(Cone3d<T>(center, other, size(), T(0)));
    expectTight(Cone3d<T>(center, center, size(), size()));
    expectTight(Torus3d<T>(center, axis, size(), size()));
    expectTight(Circle3d<T>(center, axis, size()));
  }
}

TEST(CentroidTransform, IsRightFarFromTheOriginAndOfFlatRings) {
  Random random(33);
  for (int round = 0; round < 300; ++round) {
    // Coordinates that are exact at both places.
    const auto dyadic = [&](omReal64 range) { return std::round(random.uniform(-range, range) * 0x1p20) * 0x1p-20; };
    const Point2dData<omReal64> shift(std::round(random.uniform(-1e9, 1e9)), std::round(random.uniform(-1e9, 1e9)));
    std::vector<Point2dData<omReal64>> near, far, flat;
    const Point2dData<omReal64> along(random.uniform(0.5, 1), random.uniform(0.1, 1) / 3);
    omReal64 least = 1e9, most = -1e9;
    for (int k = 0; k < 5 + round; ++k) {
      const omReal64 theta = 2 * s_pi * k / (5 + round), radius = 2 + dyadic(1);
      near.emplace_back(std::round(radius * std::cos(theta) * 0x1p20) * 0x1p-20,
                        std::sin(theta) > 0 ? radius : -radius);
      far.emplace_back(near.back().getX() + shift.getX(), near.back().getY() + shift.getY());
      const omReal64 at = random.uniform(-9, 9);
      flat.emplace_back(at * along.getX() + shift.getX(), at * along.getY() + shift.getX());
      least = std::min(least, at);
      most = std::max(most, at);
    }
    const auto atHome = CentroidTransform2d::centroid(polygon(near)),
               away = CentroidTransform2d::centroid(polygon(far));
    EXPECT_NEAR(away.getX() - shift.getX(), atHome.getX(), 0x1p-23);  // half a unit in the last place, far away
    EXPECT_NEAR(away.getY() - shift.getY(), atHome.getY(), 0x1p-23);
    const auto middle = CentroidTransform2d::centroid(polygon(flat));
    EXPECT_TRUE(middle.getX() >= least * along.getX() + shift.getX() - 1e-6 &&
                middle.getX() <= most * along.getX() + shift.getX() + 1e-6)
        << "outside of a ring that is folded flat";
  }
}

TEST(DerivedTransforms, LogAndThrowWhereThereIsNoAnswer) {
  const support::LogCapture log(getORMIXGeometryLoggerName());
  PointCloud2d<omReal64> cloud;
  cloud.getCollection().assign(100, {1, 2});
  const BaseGeometryEntity2d& base = cloud;
  EXPECT_EQ(CentroidTransform2d::centroid(base).getX(), 1);
  EXPECT_EQ(MinEnclosingCircleTransform2d::minEnclosingCircle(base).getRadius(), 0);
  EXPECT_EQ(EnvelopeTransform2d::envelope(base)->getEntity2dType(), eE2DT_BoundingBox);
  const std::string text = "Transform ormix::geom::EnvelopeTransform2d failed for geometry entity eE2DT_";
  const auto refused = [](const auto& entity) {
    EXPECT_THROW(CentroidTransform2d::centroid(entity), ORMIXGeometryException);
    EXPECT_THROW(ConvexHullTransform2d::convexHull(entity), ORMIXGeometryException);
    EXPECT_THROW(MinEnclosingCircleTransform2d::minEnclosingCircle(entity), ORMIXGeometryException);
    return thrownBy<ORMIXGeometryException>([&] { EnvelopeTransform2d::envelope(entity); });
  };
  for (const omReal64 bad : {s_nan, s_infinity, -s_infinity}) {
    for (const std::size_t at : {0u, 57u, 99u}) {
      auto hostile = cloud;
      hostile.getCollection()[at].setY(bad);
      EXPECT_EQ(refused(hostile), text + "PointCloud");
    }
    EXPECT_EQ(refused(Circle2d<omReal64>({1, 2}, bad)), text + "Circle");
    EXPECT_EQ(refused(Rectangle2d<omReal64>({1, bad}, 3, 4, 0.5)), text + "Rectangle");
  }
  EXPECT_EQ(refused(PointCloud2d<omReal32>()), text + "PointCloud");
  EXPECT_EQ(refused(Polygon2d<omInt32>()), text + "Polygon");
  EXPECT_EQ(refused(Shape2d()), text + "Shape");
  EXPECT_EQ(refused(Line2d(1, 2)), text + "Line");
  PolygonWithHoles2d<omReal64> withNull = Sample<PolygonWithHoles2d<omReal64>>::make();
  withNull.getPolygonHoles().push_back(nullptr);
  EXPECT_EQ(refused(withNull), text + "PolygonWithHoles");
  EXPECT_FALSE(log.messages().empty());
}

TEST(DerivedTransforms, TakeThePixelsOfAShapeWithoutBoundaries) {
  Shape2d shape;
  ASSERT_TRUE(shape.getRowIntersections().addRun(5, 10, 14));
  ASSERT_TRUE(shape.getRowIntersections().addRun(6, 10, 12));
  EXPECT_EQ(printed(CentroidTransform2d::centroid(shape)), "[11.6667, 5.83333]");
  EXPECT_EQ(printed(EnvelopeTransform2d::envelope(shape)), "[min=[10, 5], max=[14, 7]]");
  EXPECT_EQ(printed(ConvexHullTransform2d::convexHull(shape)),
            "[[10, 5], [14, 5], [14, 6], [12, 7], [10, 7], [10, 5]]");
  EXPECT_EQ(printed(MinEnclosingCircleTransform2d::minEnclosingCircle(shape)), "[center=[12, 6], radius=2.23607]");
}

}  // namespace
