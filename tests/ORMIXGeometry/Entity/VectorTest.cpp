#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>
#include <ORMIXGeometry/Entity/3d/Vector/Vector3d.h>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix::geom {
namespace {

constexpr omReal64 s_pi = 3.141592653589793;
using Components = Point3dData<omReal64>;

Components componentsOf(const Vector2d& v) { return {v.getX(), v.getY(), 0}; }
Components componentsOf(const Vector3d& v) { return {v.getX(), v.getY(), v.getZ()}; }

template <class V>
void expectNear(const V& vector, const Components& expected, omReal64 tolerance) {
  ASSERT_LE(distance(componentsOf(vector), expected), tolerance) << vector;
}

template <class T>
class VectorFromPointsTest : public testing::Test {};
TYPED_TEST_SUITE(VectorFromPointsTest, support::Scalars);

// The vector of the plane leads from the second point to the first, that of space from the first to the second.
TYPED_TEST(VectorFromPointsTest, LeadsFromOneToTheOther) {
  using T = TypeParam;
  const Point2dData<T> flatOrigin(0, 0), flatEnd(3, 4);
  const Point3dData<T> origin(1, 1, 1), end(3, 4, 7);
  Vector2d flat;
  flat.setCoords(Point2d<T>(flatEnd), Point2d<T>(flatOrigin));
  EXPECT_EQ(flat.getRho(), 5.0);
  EXPECT_DOUBLE_EQ(flat.getTheta(), std::atan2(4.0, 3.0));
  flat.setCoords(flatOrigin, flatEnd);  // no wrap for unsigned points
  expectNear(flat, {-3, -4, 0}, 1e-14);
  flat.setCoords(flatEnd);
  expectNear(flat, {3, 4, 0}, 1e-14);
  flat.setCoords(flatEnd, flatEnd);
  EXPECT_TRUE(flat.getRho() == 0 && flat.getTheta() == 0) << flat;
  Vector3d vector;
  vector.setCoords(Point3d<T>(origin), Point3d<T>(end));
  EXPECT_EQ(vector.getRho(), 7.0);
  expectNear(vector, {2, 3, 6}, 1e-14);
  vector.setCoords(end, origin);
  expectNear(vector, {-2, -3, -6}, 1e-14);
  vector.setCoords(end, end);
  EXPECT_EQ(vector, Vector3d());
  for (const Point3dData<T>& point : {Point3dData<T>(2, 3, 6), Point3dData<T>(1000000, 7, 1)}) {
    EXPECT_EQ(convert<T>(Point3d<T>(point)), convert(point));
    EXPECT_LE(distance(cast<omReal64>(convert<T>(convert(point))), cast<omReal64>(point)), 0.1) << point;
  }
}

TEST(Vector, OfThePlaneKeepsWhatItIsGiven) {
  Vector2d vector(-2, 7);
  EXPECT_TRUE(vector.getRho() == -2 && vector.getTheta() == 7 && vector.getX() == -2 * std::cos(7.0));
  vector.setTheta(1);
  EXPECT_EQ(vector.getY(), -2 * std::sin(1.0));
  // Only results of arithmetic are brought into the range, of which half a turn is the upper end.
  EXPECT_EQ((Vector2d(1, 0) - Vector2d(3, 0)).getTheta(), s_pi);
  EXPECT_EQ((Vector2d(1, 0) * -1).getTheta(), s_pi);
  EXPECT_EQ((Vector2d(2, -s_pi) * 2).getTheta(), s_pi);
  EXPECT_EQ((Vector2d(2, 1.25) - Vector2d(2, 1.25)).getTheta(), 0.0);
}

TEST(Vector, OfSpaceIsFoldedAsCallersRelyOn) {
  const Vector3d vector(1, 1.5 * s_pi, 0);
  EXPECT_EQ(vector.getTheta(), s_pi / 2);
  EXPECT_EQ(vector.getPhi(), -s_pi);
  // From half a turn on z is reversed, x and y stay; everywhere else the components are those of the angles given.
  support::Random draw(11);
  for (int i = 0; i < 2000; ++i) {
    const omReal64 theta = draw.uniform(-20, 20), phi = draw.uniform(-20, 20);
    const Vector3d u(-2.5, theta, phi);
    ASSERT_EQ(u.getRho(), -2.5);
    ASSERT_TRUE(u.getTheta() >= -s_pi && u.getTheta() < s_pi && u.getPhi() >= -s_pi && u.getPhi() < s_pi);
    ASSERT_NO_FATAL_FAILURE(expectNear(u,
                                       {-2.5 * std::sin(theta) * std::cos(phi), -2.5 * std::sin(theta) * std::sin(phi),
                                        (std::sin(theta) < 0 ? 2.5 : -2.5) * std::cos(theta)},
                                       1e-13));
  }
  EXPECT_TRUE(Vector3d(1, s_pi, 0).getTheta() == 0 && Vector3d(1, s_pi, 0).getPhi() == -s_pi);
  EXPECT_EQ(Vector3d(1, 1, s_pi).getPhi(), -s_pi);
  EXPECT_EQ(Vector3d(1, 2 * s_pi, 2 * s_pi), Vector3d(1, 0, 0));
  EXPECT_TRUE(std::isnan(Vector3d(1, support::s_infinity, 0).getTheta()));
}

TEST(Vector, OfSpaceComesFromPoints) {
  EXPECT_EQ(convert(Components(-0.0, -0.0, -0.0)), Vector3d());
  EXPECT_EQ(convert(Components(0, 0, 5)), Vector3d(5, 0, 0));
  EXPECT_EQ(convert(Components(-2, 0, 0)), Vector3d(2, s_pi / 2, s_pi));
  EXPECT_EQ(convert(Components(-2, -0.0, 0)), Vector3d(2, s_pi / 2, s_pi));
  // Straight down comes out pointing up.
  expectNear(convert(Components(0, 0, -5)), {0, 0, 5}, 0);
  expectNear(convert(Components(1e-9, 0, -5)), {1e-9, 0, -5}, 1e-15);
  const Vector3d steep = convert(Components(3e-9, 4e-9, 1));
  EXPECT_NEAR(steep.getX() / 3e-9, 1, 1e-15);
  EXPECT_NEAR(steep.getY() / 4e-9, 1, 1e-15);
  for (const omReal64 scale : {1e-200, 1e200})
    EXPECT_DOUBLE_EQ(convert(Components(2 * scale, 3 * scale, 6 * scale)).getRho(), 7 * scale);
}

template <class V>
void expectArithmetic(const V& u, const V& v, omReal64 s) {
  const Components a = componentsOf(u), b = componentsOf(v);
  for (const auto& [result, expected] : {std::pair(u + v, a + b), std::pair(u - v, a - b), std::pair(u * s, a * s),
                                         std::pair(s * u, a * s), std::pair(u / s, a / s)})
    ASSERT_NO_FATAL_FAILURE(expectNear(result, expected, 1e-14 * (20 + expected.normL2()))) << u << v << s;
}

TEST(Vector, ArithmeticIsThatOfTheComponents) {
  support::Random draw(31337);
  for (int i = 0; i < 2000; ++i) {
    const auto length = [&] { return draw.uniform(-10, 10); };
    const auto angle = [&] { return draw.uniform(-20, 20); };
    const omReal64 s = length();
    const Vector2d flat(length(), angle());
    ASSERT_NO_FATAL_FAILURE(expectArithmetic(flat, Vector2d(length(), angle()), s));
    for (const Vector2d& result : {flat + flat, flat * s, flat / s})
      ASSERT_TRUE(result.getRho() >= 0 && result.getTheta() > -s_pi && result.getTheta() <= s_pi) << flat << s;
    const Vector3d u(length(), angle(), angle()), v(length(), angle(), angle());
    ASSERT_NO_FATAL_FAILURE(expectArithmetic(u, v, s));
    ASSERT_EQ((u * s).getRho(), u.getRho() * s);
    const Components a = componentsOf(u), b = componentsOf(v), cross = crossProduct(a, b);
    ASSERT_NO_FATAL_FAILURE(expectNear(crossProduct(u, v), cross, 1e-14 * (20 + cross.normL2())));
    ASSERT_NEAR(scalarProduct(u, v), a.getX() * b.getX() + a.getY() * b.getY() + a.getZ() * b.getZ(), 1e-13);
  }
}

TEST(Vector, ComparesStrictly) {
  EXPECT_FALSE(compare(Vector2d(5, 0), Vector2d(3, 0), 2) || compare(Vector3d(5, 0, 0), Vector3d(3, 0, 0), 2));
  EXPECT_TRUE(compare(Vector2d(5, 0), Vector2d(3, 0), 2.0000001));
  EXPECT_TRUE(compare(Vector3d(5, 0, 0), Vector3d(3, 0, 0), 2.0000001));
  EXPECT_FALSE(compare(Vector2d(5, 1), Vector2d(5, 1), 0) || compare(Vector3d(5, 1, 2), Vector3d(5, 1, 2), 0));
  EXPECT_TRUE(Vector3d(5, 1, 2) == Vector3d(5, 1, 2) && Vector3d(5, 1, 2) != Vector3d(5, 1, 2.5));
}

}  // namespace
}  // namespace ormix::geom
