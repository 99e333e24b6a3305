#include <ORMIXGeometry/Estimation/3d/Ellipsoid3dEstimator.h>
#include <ORMIXGeometry/Message/EstimationMessage.h>
#include <ORMIXMath/Rotation/EulerAngles.h>

#include "support/EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

Values onEllipsoid(const RealVector& e, std::size_t count, unsigned seed) {
  Random random(seed);
  const RotationMatrix axes = eulerToMatrix(e(6), e(7), e(8));
  Values values;
  for (std::size_t i = 0; i < count; ++i) {
    const omReal64 z = random.uniform(-1, 1), t = random.uniform(0, 6.28318), across = std::sqrt((1 - z) * (1 + z));
    const omReal64 p[3] = {e(3) * across * std::cos(t), e(4) * across * std::sin(t), e(5) * z};
    for (std::size_t k = 0; k < 3; ++k)
      values.push_back(e(k) + (axes[k][0] * p[0] + axes[k][1] * p[1] + axes[k][2] * p[2]));
  }
  return values;
}

/// Of centre and radii, and of the axes' ends up to sign, relative to the largest radius.
omReal64 error(const RealVector& found, const RealVector& exact) {
  omReal64 largest = 0;
  for (std::size_t k = 0; k < 6; ++k) largest = std::max(largest, std::abs(found(k) - exact(k)));
  const RotationMatrix f = eulerToMatrix(found(6), found(7), found(8));
  const RotationMatrix e = eulerToMatrix(exact(6), exact(7), exact(8));
  for (std::size_t axis = 0; axis < 3; ++axis) {
    // An axis is as well determined as its radius differs from the next one.
    omReal64 weight = exact(3);
    for (std::size_t other = 0; other < 3; ++other)
      if (other != axis) weight = std::min(weight, std::abs(exact(3 + axis) - exact(3 + other)));
    const omReal64 cosine = f[0][axis] * e[0][axis] + f[1][axis] * e[1][axis] + f[2][axis] * e[2][axis];
    for (std::size_t k = 0; k < 3; ++k)
      largest = std::max(largest, weight * std::abs(f[k][axis] - std::copysign(1, cosine) * e[k][axis]));
  }
  return largest / exact(3);
}

RealVector randomEllipsoid(Random& random) {
  const omReal64 minor = random.uniform(1, 2), medium = minor + random.uniform(0, 1);
  return vectorOf({random.uniform(-2, 2), random.uniform(-2, 2), random.uniform(-2, 2), medium + random.uniform(0, 1),
                   medium, minor, random.uniform(-3, 3), random.uniform(-1.5, 1.5), random.uniform(-3, 3)});
}

TEST(Ellipsoid3dEstimator, IsExactOnExactData) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    RealVector ellipsoid = randomEllipsoid(random);
    EXPECT_LE(error(fitted<Ellipsoid3dEstimator>(onEllipsoid(ellipsoid, 100, seed)), ellipsoid), 1e-12);
    const RealVector far = vectorOf({1e6, -1e6, 1e6, 5, 4, 3, ellipsoid(6), ellipsoid(7), ellipsoid(8)});
    EXPECT_LE(error(fitted<Ellipsoid3dEstimator>(onEllipsoid(far, 100, seed)), far), 1e-9);
    for (const omReal64 unit : {1e-90, 1e90}) {
      const RealVector sized = vectorOf({0, unit, 2 * unit, 5 * unit, 4 * unit, 3 * unit, ellipsoid(6), 0.5, -2});
      EXPECT_LE(error(fitted<Ellipsoid3dEstimator>(onEllipsoid(sized, 100, seed)), sized), 1e-12);
    }
    const RealVector flat = vectorOf({1, 2, 3, 1.5, 1, 0.01, ellipsoid(6), ellipsoid(7), ellipsoid(8)});
    EXPECT_LE(error(fitted<Ellipsoid3dEstimator>(onEllipsoid(flat, 200, seed)), flat), 1e-11);
  }
}

TEST(Ellipsoid3dEstimator, SaysWhatIsMissing) {
  const std::string rank = formatMessage<eEstimationMessage>(eEstimationMessage::eEsM_EllipsoidRank);
  const std::string shape = formatMessage<eEstimationMessage>(eEstimationMessage::eEsM_EllipsoidNotAnEllipsoid);
  for (const omReal64 offset : {0.0, 1e6}) {
    Random random(7);
    Values line, plan, hyperboloid;
    for (int i = 0; i < 30; ++i) {
      const omReal64 x = random.uniform(-2, 2), y = random.uniform(-2, 2);
      line.insert(line.end(), {offset + x, 0.5 * x, offset - x});
      plan.insert(plan.end(), {offset + x, y, offset + x - 0.5 * y});
      hyperboloid.insert(hyperboloid.end(), {offset + x, y, std::sqrt(1 + x * x + y * y)});
    }
    for (const Values& values : {Values(60, offset), line}) EXPECT_EQ(failureOf<Ellipsoid3dEstimator>(values), rank);
    for (const Values& values : {plan, hyperboloid}) EXPECT_EQ(failureOf<Ellipsoid3dEstimator>(values), shape);
  }
}

// Along the normal of the surface the foot is the nearest point: outside everywhere, inside up to the smallest radius
// of curvature. Nearer to the axes the distance is that of ellipses, and tested with them.
TEST(Ellipsoid3dEstimator, ResidualsAreDistancesAlongTheNormal) {
  Random random(11);
  const RotationMatrix axes = eulerToMatrix(0.6, -0.4, 0.9);
  for (const auto& radii : {std::array{5.0, 4.0, 3.0}, std::array{5.0, 5.0, 1.0}, std::array{5.0, 2.0, 2.0},
                            std::array{4.0, 4.0, 4.0}, std::array{2.0, 0.5, 4.0}}) {
    const RealVector e = vectorOf({1, -2, 3, radii[0], radii[1], radii[2], 0.6, -0.4, 0.9});
    const auto [shortest, longest] = std::minmax_element(radii.begin(), radii.end());
    const omReal64 sharpest = *shortest * *shortest / *longest;
    Values points, expected;
    for (int i = 0; i < 100; ++i) {
      const omReal64 z = i % 5 == 0 ? 0 : random.uniform(), t = i % 7 == 0 ? 0 : random.uniform(0, 6.3);
      const omReal64 unit[] = {std::sqrt(1 - z * z) * std::cos(t), std::sqrt(1 - z * z) * std::sin(t), z};
      const omReal64 n[] = {unit[0] / radii[0], unit[1] / radii[1], unit[2] / radii[2]};
      const omReal64 distance = i % 3 == 0 ? -sharpest * random.uniform(0, 1) : std::pow(10.0, random.uniform(-9, 5));
      const omReal64 step = distance / std::hypot(n[0], n[1], n[2]);
      for (std::size_t k = 0; k < 3; ++k) {
        omReal64 coordinate = e(k);
        for (std::size_t axis = 0; axis < 3; ++axis)
          coordinate += axes[k][axis] * (radii[axis] * unit[axis] + step * n[axis]);
        points.push_back(coordinate);
      }
      expected.push_back(std::abs(distance));
    }
    const RealVector residuals = residualsOf<Ellipsoid3dEstimator>(points, e);
    for (std::size_t i = 0; i < residuals.size(); ++i)
      EXPECT_NEAR(residuals(i), expected[i], 2e-14 * (5 + expected[i])) << i << " to " << radii[2];
  }
}

TEST(Ellipsoid3dEstimator, ResidualsOfFlatAndSwappedEllipsoids) {
  const auto residuals = [](const Values& points, omReal64 a, omReal64 b, omReal64 c) {
    return valuesOf(residualsOf<Ellipsoid3dEstimator>(points, vectorOf({0, 0, 0, a, b, c, 0, 0, 0})));
  };
  const Values points{0, 0, 0, 1, 1, 3, -7, 0, 0, 0, 0, 2, 7, 0, 2};
  EXPECT_EQ(residuals(points, 5, 4, 0), (Values{0, 3, 2, 2, std::hypot(2.0, 2.0)}));
  EXPECT_EQ(residuals(points, 5, 0, 0), (Values{0, std::hypot(1.0, 3.0), 2, 2, std::hypot(2.0, 2.0)}));
  EXPECT_DOUBLE_EQ(residuals(points, 0, 0, 0)[1], std::sqrt(11.0));
  // The same in any order of the axes, and for negative radii.
  const Values swapped{0, 0, 0, 3, 1, 1, 0, 0, -7, 2, 0, 0, 2, 0, 7}, one = residuals(points, 5, 4, 3);
  const Values other = residuals(swapped, -3, 4, -5);
  for (std::size_t i = 0; i < one.size(); ++i) EXPECT_NEAR(one[i], other[i], 1e-14);
  EXPECT_EQ(one[0], 3);
  EXPECT_EQ(residuals({s_infinity, 0, 1}, 5, 4, 3)[0], s_infinity);
  EXPECT_TRUE(std::isnan(residuals({0, s_nan, 1}, 5, 4, 3)[0]));
}

}  // namespace
