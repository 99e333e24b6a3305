#include <ORMIXGeometry/Entity/2d/Line/Line2d.h>

#include <boost/multiprecision/cpp_bin_float.hpp>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix::geom {
namespace {

using Wide = boost::multiprecision::number<boost::multiprecision::cpp_bin_float<100>, boost::multiprecision::et_off>;
constexpr omReal64 s_pi = 3.141592653589793;
constexpr omReal64 s_eps = std::numeric_limits<omReal64>::epsilon();

void expectNormal(const Line2d& line) {
  EXPECT_GE(line.getRho(), 0) << line;
  EXPECT_FALSE(std::signbit(line.getRho())) << line;
  if (line.getRho() == 0) {
    EXPECT_GE(line.getTheta(), 0) << line;
    EXPECT_LT(line.getTheta(), s_pi) << line;
  } else {
    EXPECT_GT(line.getTheta(), -s_pi) << line;
    EXPECT_LE(line.getTheta(), s_pi) << line;
  }
}

void expectLine(const Line2d& line, omReal64 rho, omReal64 theta) {
  expectNormal(line);
  EXPECT_NEAR(line.getRho(), rho, 4 * s_eps * std::abs(rho)) << line;
  EXPECT_NEAR(line.getTheta(), theta, 4 * s_eps * std::abs(theta)) << line;
}

template <class T>
class Line2dTest : public testing::Test {};
TYPED_TEST_SUITE(Line2dTest, support::Scalars);

TYPED_TEST(Line2dTest, ThroughPointsInAnyOrder) {
  using T = TypeParam;
  using P = Point2d<T>;
  const std::tuple<P, P, omReal64, omReal64> cases[] = {
      {P(100, 2), P(200, 2), 2, s_pi / 2},            // horizontal
      {P(3, 100), P(3, 0), 3, 0},                     // vertical
      {P(4, 0), P(0, 3), 2.4, std::atan2(4.0, 3.0)},  // the normal of length 5 is (3, 4)
      {P(1, 1), P(20, 20), 0, 3 * s_pi / 4},          // through the origin
      {P(0, 0), P(0, 7), 0, 0},
      {P(0, 0), P(7, 0), 0, s_pi / 2},
      {P(5, 7), P(5, 7), 7, s_pi / 2}};  // equal points: horizontal
  for (const auto& [first, second, rho, theta] : cases) {
    expectLine(Line2d(first, second), rho, theta);
    expectLine(Line2d(second.getCoords(), first.getCoords()), rho, theta);
  }
}

TYPED_TEST(Line2dTest, ThroughAPointAlongADirection) {
  using T = TypeParam;
  using P = Point2d<T>;
  expectLine(Line2d(P(5, 2), Vector2d(3, 0)), 2, s_pi / 2);
  expectLine(Line2d(P(5, 2), Vector2d(-3, 0)), 2, s_pi / 2);
  expectLine(Line2d(P(5, 0), Vector2d(1, s_pi / 2)), 5, 0);
  expectLine(Line2d(P(5, 2).getCoords(), Vector2d()), 2, s_pi / 2);
  expectLine(Line2d(P(0, 2), Vector2d(0, s_pi / 4)), std::sqrt(2.0), 3 * s_pi / 4);
  // Through the origin whatever the rounding of the angle, and of its cosine and sine.
  for (const Vector2d& diagonal : {Vector2d(1, s_pi / 4), Vector2d(1, -3 * s_pi / 4), Vector2d(1, 9 * s_pi / 4)})
    expectLine(Line2d(P(3, 3), diagonal), 0, 3 * s_pi / 4);
  expectLine(Line2d(P(300, 0), Vector2d(1, s_pi)), 0, s_pi / 2);
}

TEST(Line2d, RhoIsRightAndThePointsLieOnTheLine) {
  support::Random draw(1618);
  constexpr std::pair<omReal64, omReal64> sizes[] = {{0, 1},      {1e8, 1},    {1e8, 1e-3},
                                                     {1e-6, 1e6}, {0, 1e-200}, {0, 1e307}};
  for (int i = 0; i < 12000; ++i) {
    const auto [offset, spread] = sizes[i % 6];
    const auto coordinate = [&, offset = offset, spread = spread] {
      return offset * draw.uniform() + spread * draw.uniform();
    };
    const Point2dData<omReal64> a(coordinate(), coordinate());
    // Close to the first one, so that the line passes the origin anywhere.
    const Point2dData<omReal64> b(a.getX() + spread * draw.uniform(), a.getY() + spread * draw.uniform());
    const Line2d line(a, b);
    expectNormal(line);
    const Wide dx = Wide(b.getX()) - a.getX(), dy = Wide(b.getY()) - a.getY();
    const Wide rho = abs(Wide(a.getX()) * b.getY() - Wide(a.getY()) * b.getX()) / sqrt(dx * dx + dy * dy);
    ASSERT_LE(abs(line.getRho() - rho), 16 * s_eps * rho) << a << b << line;
    const omReal64 size = std::max({std::abs(a.getX()), std::abs(a.getY()), std::abs(b.getX()), std::abs(b.getY())});
    ASSERT_LE(std::abs(line.signedDistance(a)), 8 * s_eps * size) << a << b << line;
    ASSERT_LE(std::abs(line.signedDistance(b)), 8 * s_eps * size) << a << b << line;
    Vector2d direction;
    direction.setCoords(b, a);
    ASSERT_LE(std::abs(Line2d(a, direction).signedDistance(a)), 8 * s_eps * size) << a << direction;
  }
}

TEST(Line2d, OnlySetCoordsNormalises) {
  Line2d kept(-2, 9);
  EXPECT_TRUE(kept.getRho() == -2 && kept.getTheta() == 9);
  kept.setTheta(1);
  kept.setRho(-3);
  EXPECT_TRUE(kept.getRho() == -3 && kept.getCosTheta() == std::cos(1.0) && kept.getSinTheta() == std::sin(1.0));
  const auto normalised = [](omReal64 rho, omReal64 theta) {
    Line2d line;
    line.setCoords(rho, theta);
    return line;
  };
  expectLine(normalised(-2, 1), 2, 1 - s_pi);
  expectLine(normalised(-2, 0), 2, s_pi);
  expectLine(normalised(2, -s_pi), 2, s_pi);
  expectLine(normalised(2, 3 * s_pi), 2, s_pi);
  expectLine(normalised(0, s_pi), 0, 0);
  expectLine(normalised(-0.0, -1), 0, s_pi - 1);
  expectLine(normalised(0, -1e-300), 0, 0);
}

TEST(Line2d, NearestPointNormalAndDirection) {
  EXPECT_DOUBLE_EQ(Line2d(2, 0).signedDistance(Point2d<omInt32>(5, 9)), 3);
  EXPECT_DOUBLE_EQ(Line2d(-2, s_pi).signedDistance(Point2dData<omUInt32>(5, 9)), -3);
  for (const omReal64 theta : {-3.0, -1.0, 0.0, 1.0, 2.0, s_pi}) {
    const Line2d line(2.5, theta);
    const auto nearest = line.getNearestPointFromOrigin();
    EXPECT_NEAR(line.signedDistance(nearest), 0, 1e-15);
    EXPECT_NEAR(normL2(nearest), 2.5, 1e-15);
    const Vector2d normal = line.getNormal();
    const Vector2d direction = line.getDirection();
    EXPECT_EQ(direction.getRho(), 1.0);
    EXPECT_TRUE(direction.getTheta() > -s_pi && direction.getTheta() <= s_pi) << direction.getTheta();
    EXPECT_NEAR(direction.getX(), -normal.getY(), 1e-15);
    EXPECT_NEAR(direction.getY(), normal.getX(), 1e-15);
    EXPECT_NEAR(normal.getX(), std::cos(theta), 1e-15);
  }
}

TEST(Line2d, TranslationsMoveItsPoints) {
  const Vector2d offset(5, 0.3);
  Line2d moved = Line2d(2, 1) + offset;
  const Point2d<omReal64> point(2 * std::cos(1.0) - 7 * std::sin(1.0), 2 * std::sin(1.0) + 7 * std::cos(1.0));
  EXPECT_NEAR(moved.signedDistance(point + offset), 0, 1e-14);
  moved -= offset;
  expectLine(moved, 2, 1);
  // Across the origin the normal turns round; onto it, rho is 0 in spite of rounding.
  expectLine(Line2d(2, 1) - Vector2d(3, 1), 1, 1 - s_pi);
  expectLine(Line2d(2, 2.5) - Vector2d(2, 2.5), 0, 2.5);
}

TEST(Line2d, CoordinatesThatAreNotFiniteShowInRho) {
  const omReal64 infinity = support::s_infinity;
  for (const omReal64 bad : {infinity, -infinity, support::s_nan}) {
    EXPECT_FALSE(std::isfinite(Line2d(Point2dData<omReal64>(bad, 1), Point2dData<omReal64>(2, 3)).getRho()));
    EXPECT_FALSE(std::isfinite(Line2d(Point2dData<omReal64>(1, bad), Vector2d(1, 0.5)).getRho()));
  }
}

}  // namespace
}  // namespace ormix::geom
