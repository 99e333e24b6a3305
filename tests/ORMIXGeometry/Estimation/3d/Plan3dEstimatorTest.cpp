#include <ORMIXGeometry/Estimation/3d/Plan3dEstimator.h>
#include <ORMIXGeometry/Message/EstimationMessage.h>

#include "support/EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

const std::string s_noDirection = formatMessage<eEstimationMessage>(eEstimationMessage::eEsM_PlanNoDirection);

using Vector = std::array<omReal64, 3>;

/// Two vectors that are perpendicular to each other and to the returned normal, of length 1 to rounding.
Vector frame(Random& random, Vector& u, Vector& v) {
  const long double t = random.uniform(0, 3.14);
  const long double p = random.uniform(-3.14, 3.14);
  u = {static_cast<omReal64>(std::cos(t) * std::cos(p)), static_cast<omReal64>(std::cos(t) * std::sin(p)),
       static_cast<omReal64>(-std::sin(t))};
  v = {static_cast<omReal64>(-std::sin(p)), static_cast<omReal64>(std::cos(p)), 0};
  return {static_cast<omReal64>(std::sin(t) * std::cos(p)), static_cast<omReal64>(std::sin(t) * std::sin(p)),
          static_cast<omReal64>(std::cos(t))};
}

Values onPlan(const Vector& center, const Vector& u, const Vector& v, omReal64 extent, std::size_t count,
              unsigned seed) {
  Random random(seed);
  Values values;
  for (std::size_t i = 0; i < count; ++i) {
    const omReal64 a = random.uniform(-extent, extent), b = random.uniform(-extent, extent);
    for (std::size_t k = 0; k < 3; ++k) values.push_back(center[k] + (a * u[k] + b * v[k]));
  }
  return values;
}

/// Length of the difference of the unoriented normals.
omReal64 error(const RealVector& plan, const Vector& n) {
  const Vector m{std::sin(plan(0)) * std::cos(plan(1)), std::sin(plan(0)) * std::sin(plan(1)), std::cos(plan(0))};
  return std::min(std::hypot(m[0] + n[0], m[1] + n[1], m[2] + n[2]), std::hypot(m[0] - n[0], m[1] - n[1], m[2] - n[2]));
}

TEST(Plan3dEstimator, IsExactOnExactData) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    Random random(seed);
    Vector u, v;
    const Vector normal = frame(random, u, v);
    EXPECT_LE(error(fitted<Plan3dEstimator>(onPlan({0, 0, 0}, u, v, 10, 5 + seed, seed)), normal), 1e-14);
    EXPECT_LE(error(fitted<Plan3dEstimator>(onPlan({1, -2, 3}, u, v, 10, 100, seed)), normal), 1e-14);
    const RealVector far = fitted<Plan3dEstimator>(onPlan({1e6, -1e6, 1e6}, u, v, 100, 1000, seed));
    EXPECT_LE(error(far, normal), 1e-12);
    EXPECT_GE(far(2), 0);
    for (const omReal64 unit : {1e-140, 1e140})
      EXPECT_LE(error(fitted<Plan3dEstimator>(onPlan({unit, unit, 0}, u, v, unit, 100, seed)), normal), 1e-13);
    // On a strip, rounding of the coordinates along it is this much of its width.
    for (const omReal64 length : {300.0, 18000.0, 1e6}) {
      Vector along = u;
      for (omReal64& component : along) component *= length;
      EXPECT_LE(error(fitted<Plan3dEstimator>(onPlan({0, 0, 0}, along, v, 1, 100, seed)), normal), 3e-16 * length);
    }
  }
}

TEST(Plan3dEstimator, RefusesPointsWithoutAPrivilegedDirection) {
  Random random(3);
  for (const omReal64 offset : {0.0, 1e6, 1e9}) {
    Values line, point;
    for (int i = 0; i < 50; ++i) {
      const omReal64 t = random.uniform(-10, 10);
      line.insert(line.end(), {offset + t, 0.3 * t - offset, 7 - 0.2 * t});
      point.insert(point.end(), {offset, -offset, 3});
    }
    EXPECT_EQ(failureOf<Plan3dEstimator>(line), s_noDirection) << offset;
    EXPECT_EQ(failureOf<Plan3dEstimator>(point), s_noDirection) << offset;
  }
  // The corners of a cube: as good in all directions.
  Values cube;
  for (int i = 0; i < 8; ++i) cube.insert(cube.end(), {1.0 * (i & 1), 1.0 * (i / 2 & 1), 1.0 * (i / 4)});
  EXPECT_EQ(failureOf<Plan3dEstimator>(cube), s_noDirection);
  EXPECT_EQ(failureOf<Plan3dEstimator>({0, 0, 0, 1, 1, 1, 2, 2, 2}), s_noDirection);
}

TEST(Plan3dEstimator, HasOneNormalOfTwo) {
  // Through the origin, exactly: the last component that is not zero is positive.
  EXPECT_EQ(valuesOf(fitted<Plan3dEstimator>({1, 0, 0, 0, 1, 0, -1, -1, 0, 2, 1, 0})), (Values{0, 0, 0}));
  const omReal64 halfPi = std::acos(0.0);
  EXPECT_EQ(valuesOf(fitted<Plan3dEstimator>({1, 0, 0, 0, 0, 1, -1, 0, -1, 2, 0, 1})), (Values{halfPi, halfPi, 0}));
  EXPECT_EQ(valuesOf(fitted<Plan3dEstimator>({0, 1, 0, 0, 0, 1, 0, -1, -1})), (Values{halfPi, 0, 0}));
  // Off the origin the normal points away from it, whatever the order of the points.
  const RealVector left = fitted<Plan3dEstimator>({-2, 1, 0, -2, 0, 1, -2, -1, -1, -2, 2, 1});
  EXPECT_EQ(left(2), 2);
  EXPECT_NEAR(std::sin(left(0)) * std::cos(left(1)), -1, 1e-15);
  // But for straight down, an angle that vectors do not keep.
  EXPECT_EQ(valuesOf(fitted<Plan3dEstimator>({1, 0, -2, 0, 1, -2, -1, -1, -2, 2, 1, -2})), (Values{0, 0, -2}));
  EXPECT_EQ(valuesOf(fitted<Plan3dEstimator>({1, 0, -2, 0, 1, -2, -1, -1, -2})), (Values{0, 0, -2}));
}

TEST(Plan3dEstimator, MinimisesItsResidualsWhichAreSignedDistances) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    Random random(seed);
    Vector u, v;
    frame(random, u, v);
    Values values = onPlan({1, 2, 3}, u, v, 4, 25, seed);
    for (omReal64& value : values) value += 0.3 * random.noise();
    expectLeastSquares<Plan3dEstimator>(values, fitted<Plan3dEstimator>(values));
  }
  const omReal64 halfPi = std::acos(0.0);
  EXPECT_EQ(valuesOf(residualsOf<Plan3dEstimator>({1, 2, 3, 4, 5, 6}, vectorOf({0, 0.3, 4}))), (Values{-1, 2}));
  EXPECT_NEAR(residualsOf<Plan3dEstimator>({1, 2, 3}, vectorOf({halfPi, halfPi, 1}))(0), 1, 1e-15);
}

}  // namespace
