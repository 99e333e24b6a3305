#include <ORMIXGeometry/Entity/3d/Plan/Plan3d.h>
#include <gtest/gtest.h>

#include <cmath>

#include "support/Random.h"

namespace ormix::geom {
namespace {

constexpr omReal64 s_pi = 3.141592653589793;
using P = Point3dData<omReal64>;

/// n·p − rho, which is 0 in the plane.
omReal64 height(const Plan3d& plan, const P& p) {
  const P n = convert<omReal64>(plan.getNormal());
  return n.getX() * p.getX() + n.getY() * p.getY() + n.getZ() * p.getZ() - plan.getRho();
}

TEST(Plan3d, SignedDistanceTakesYForZ) {
  EXPECT_EQ(Plan3d(0, 0, 0).signedDistance(P(0, 5, 7)), 5.0);
  EXPECT_EQ(Plan3d(2, 0, 0).signedDistance(Point3d<omInt32>(9, 5, 7)), 3.0);
  const Plan3d plan(1.5, 0.75, -2);
  const P n = convert<omReal64>(plan.getNormal());
  EXPECT_NEAR(plan.signedDistance(P(4, 5, 6)), 4 * n.getX() + 5 * n.getY() + 5 * n.getZ() - 1.5, 1e-14);
  // Upright plans have no third term.
  EXPECT_NEAR(Plan3d(3, s_pi / 2, 0).signedDistance(P(5, 6, 7)), 2, 1e-14);
}

TEST(Plan3d, NearestPointLiesAlongTheNormal) {
  // Negative thetas too, whose normal is a folded vector.
  support::Random draw(5);
  for (int i = 0; i < 1000; ++i) {
    const Plan3d plan(draw.uniform(-10, 10), draw.uniform(-10, 10), draw.uniform(-10, 10));
    const P nearest = plan.getNearestPointFromOrigin();
    ASSERT_EQ(plan.getNormal(), Vector3d(1, plan.getTheta(), plan.getPhi()));
    ASSERT_NEAR(height(plan, nearest), 0, 1e-13) << plan;
    ASSERT_NEAR(nearest.normL2(), std::abs(plan.getRho()), 1e-13) << plan;
    const Vector3d offset(draw.uniform(-10, 10), draw.uniform(-10, 10), draw.uniform(-10, 10));
    ASSERT_NEAR(height(plan + offset, nearest + offset), 0, 1e-13) << plan << offset;
    ASSERT_NEAR(height(plan - offset, nearest - offset), 0, 1e-13) << plan << offset;
    Plan3d through;
    through.setCoords(nearest, offset);
    ASSERT_NEAR(height(through, nearest), 0, 1e-13) << plan << offset;
    ASSERT_EQ(through.getTheta(), offset.getTheta()) << offset;
  }
}

TEST(Plan3d, GoesThroughThreePointsOrIsLevelWhereTheyTellNothing) {
  Plan3d through;
  through.setCoords(Point3d<omInt32>(1, 0, 0), Point3d<omInt32>(0, 2, 0), Point3d<omInt32>(0, 0, 3));
  for (const P& point : {P(1, 0, 0), P(0, 2, 0), P(0, 0, 3)}) EXPECT_NEAR(height(through, point), 0, 1e-15) << point;
  // Below the origin, where the normal cannot point straight down.
  through.setCoords(P(0, 0, -5), P(1, 0, -5), P(0, 1, -5));
  EXPECT_EQ(through.getNearestPointFromOrigin(), P(0, 0, -5));
  for (const P& last : {P(3, 3, 3), P(1, 1, 1)}) {
    Plan3d plan(1, 2, 3);
    plan.setCoords(P(1, 1, 1), P(2, 2, 2), last);
    EXPECT_TRUE(compare(plan, Plan3d(), 0)) << plan;
  }
  Plan3d plan;
  plan.setCoords(P(1, 2, 3), Vector3d());
  EXPECT_TRUE(compare(plan, Plan3d(3, 0, 0), 0)) << plan;
}

TEST(Plan3d, ComparesFieldByFieldAndBringsAnglesIntoOneTurn) {
  const Plan3d plan(1, 0.5, 0.25);
  EXPECT_TRUE(compare(plan, Plan3d(1.125, 0.625, 0.125), 0.125));
  EXPECT_FALSE(compare(plan, Plan3d(1.25, 0.5, 0.25), 0.125));
  EXPECT_FALSE(compare(plan, Plan3d(1, 0.75, 0.25), 0.125));
  EXPECT_FALSE(compare(plan, Plan3d(1, 0.5, 0.5), 0.125));
  EXPECT_FALSE(compare(plan, Plan3d(1, 0.5, NAN), 10));
  const Plan3d turned(-2, 1.5 * s_pi, s_pi);
  EXPECT_TRUE(turned.getRho() == -2 && turned.getTheta() == -s_pi / 2 && turned.getPhi() == -s_pi) << turned;
  EXPECT_TRUE(std::isnan(Plan3d(0, INFINITY, 0).getTheta()));
}

}  // namespace
}  // namespace ormix::geom
