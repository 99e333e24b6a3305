#include <ORMIXGeometry/Estimation/3d/Ellipsoid3dEstimator.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Shape/EllipsoidQuadric.h>

#include <array>
#include <limits>

#include "../EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

Values onEllipsoid(const RealVector& e, std::size_t count, unsigned seed, omReal64 noise = 0) {
  Random random(seed);
  const RotationMatrix axes = eulerToMatrix(e(6), e(7), e(8));
  Values values;
  for (std::size_t i = 0; i < count; ++i) {
    const omReal64 z = random.uniform(-1, 1);
    const omReal64 t = random.uniform(0, 6.28318);
    const omReal64 across = std::sqrt((1 - z) * (1 + z));
    const omReal64 p[3] = {e(3) * across * std::cos(t) + noise * random.noise(),
                           e(4) * across * std::sin(t) + noise * random.noise(), e(5) * z + noise * random.noise()};
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
  const omReal64 minor = random.uniform(1, 2);
  const omReal64 medium = minor + random.uniform(0, 1);
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
    const RealVector flat = vectorOf({1, 2, 3, 1.5, 1, 0.01, ellipsoid(6), ellipsoid(7), ellipsoid(8)});
    EXPECT_LE(error(fitted<Ellipsoid3dEstimator>(onEllipsoid(flat, 200, seed)), flat), 1e-11);
  }
}

TEST(Ellipsoid3dEstimator, NinePointsAreEnough) {
  // The tenth row of the system is zeros: the quadric through the points stays what it is.
  const RealVector ellipsoid = vectorOf({1, 2, -1, 3, 2.5, 2, 0.3, -0.2, 0.6});
  const Values values = onEllipsoid(ellipsoid, 9, 2);
  const RealVector params = fitted<Ellipsoid3dEstimator>(values);
  EXPECT_LE(error(params, ellipsoid), 1e-11);
  EXPECT_LE(largestResidual<Ellipsoid3dEstimator>(values, params), 1e-11);
}

TEST(Ellipsoid3dEstimator, AnswersTheSameAtEveryScaleAndPlace) {
  const RealVector ellipsoid = vectorOf({3, 0, 0, 3, 2, 1, 0, 0, 0});
  const RealVector params = fitted<Ellipsoid3dEstimator>(onEllipsoid(ellipsoid, 60, 5, 0.01));
  for (const omReal64 scale : {0x1p-300, 0x1p-40, 0x1p300}) {
    Values values = onEllipsoid(ellipsoid, 60, 5, 0.01);
    for (omReal64& value : values) value *= scale;
    RealVector result = fitted<Ellipsoid3dEstimator>(values);
    for (std::size_t k = 0; k < 6; ++k) result(k) /= scale;
    EXPECT_LE(error(result, params), 1e-13) << scale;
  }
}

TEST(Ellipsoid3dEstimator, SaysWhatIsMissing) {
  const std::string cloud = "Can't estimate ellipsoid 3d from cloud of points, ";
  const std::string rank = cloud + "insufficient matrix rank for estimation";
  const std::string shape = cloud + "estimation does not lead to an ellipsoid representation";
  for (const omReal64 offset : {0.0, 1e6}) {
    Random random(7);
    Values line;
    Values plan;
    Values paraboloid;
    Values hyperboloid;
    for (int i = 0; i < 30; ++i) {
      const omReal64 x = random.uniform(-2, 2);
      const omReal64 y = random.uniform(-2, 2);
      line.insert(line.end(), {offset + x, 0.5 * x, offset - x});
      plan.insert(plan.end(), {offset + x, y, offset + x - 0.5 * y});
      paraboloid.insert(paraboloid.end(), {offset + x, y, x * x + y * y});
      hyperboloid.insert(hyperboloid.end(), {offset + x, y, std::sqrt(1 + x * x + y * y)});
    }
    EXPECT_EQ(failureOf<Ellipsoid3dEstimator>(Values(60, offset)), rank) << offset;
    EXPECT_EQ(failureOf<Ellipsoid3dEstimator>(line), rank) << offset;
    EXPECT_EQ(failureOf<Ellipsoid3dEstimator>(plan), shape) << offset;
    EXPECT_EQ(failureOf<Ellipsoid3dEstimator>(hyperboloid), shape) << offset;
    if (offset == 0) {
      EXPECT_EQ(failureOf<Ellipsoid3dEstimator>(paraboloid), shape);
    }
  }
}

/// The smallest distance to points of the ellipsoid: a coarse search over both parameters, then ever finer about the
/// best few. In long double.
long double oracle(const RealVector& e, const omReal64* point) {
  const RotationMatrix axes = eulerToMatrix(e(6), e(7), e(8));
  std::array<long double, 3> q{};
  for (std::size_t axis = 0; axis < 3; ++axis)
    for (std::size_t k = 0; k < 3; ++k)
      q[axis] += static_cast<long double>(axes[k][axis]) * (static_cast<long double>(point[k]) - e(k));
  const auto at = [&](long double s, long double t) {
    return std::hypot(e(3) * std::sin(s) * std::cos(t) - q[0], e(4) * std::sin(s) * std::sin(t) - q[1],
                      e(5) * std::cos(s) - q[2]);
  };
  long double best = std::numeric_limits<long double>::infinity();
  for (const auto& start :
       {std::array{0.8L, 0.8L}, std::array{0.8L, 2.4L}, std::array{0.8L, 4.0L}, std::array{0.8L, 5.5L},
        std::array{2.4L, 0.8L}, std::array{2.4L, 2.4L}, std::array{2.4L, 4.0L}, std::array{2.4L, 5.5L}}) {
    long double s = start[0];
    long double t = start[1];
    for (long double width = 0.9L; width > 1e-9L; width /= 2) {
      long double nearS = s;
      long double nearT = t;
      long double least = at(s, t);
      for (int i = -2; i <= 2; ++i)
        for (int j = -2; j <= 2; ++j) {
          const long double distance = at(s + width * i / 2, t + width * j / 2);
          if (distance < least) {
            least = distance;
            nearS = s + width * i / 2;
            nearT = t + width * j / 2;
          }
        }
      s = nearS;
      t = nearT;
    }
    best = std::min(best, at(s, t));
  }
  return best;
}

TEST(Ellipsoid3dEstimator, ResidualsAreDistancesWhereverThePointIs) {
  Random random(11);
  for (const auto& radii : {std::array{5.0, 4.0, 3.0}, std::array{5.0, 5.0, 1.0}, std::array{5.0, 2.0, 2.0},
                            std::array{4.0, 4.0, 4.0}, std::array{2.0, 0.5, 4.0}}) {
    const RealVector e = vectorOf({1, -2, 3, radii[0], radii[1], radii[2], 0.6, -0.4, 0.9});
    const RotationMatrix axes = eulerToMatrix(0.6, -0.4, 0.9);
    Values points{1, -2, 3};
    for (int i = 0; i < 20; ++i) {
      // In the planes of two axes, on an axis, anywhere, far away.
      const omReal64 size = i % 5 == 4 ? std::pow(10.0, random.uniform(1, 5)) : 5;
      std::array<omReal64, 3> q{};
      for (omReal64& value : q) value = size * random.uniform(-1, 1);
      if (i % 5 < 3) q[static_cast<std::size_t>(i % 5)] = 0;
      if (i % 10 < 3) q[static_cast<std::size_t>((i + 1) % 3)] = 0;
      for (std::size_t k = 0; k < 3; ++k)
        points.push_back(e(k) + axes[k][0] * q[0] + axes[k][1] * q[1] + axes[k][2] * q[2]);
    }
    const RealVector residuals = residualsOf<Ellipsoid3dEstimator>(points, e);
    for (std::size_t i = 0; i < residuals.size(); ++i)
      EXPECT_NEAR(residuals(i), static_cast<omReal64>(oracle(e, points.data() + 3 * i)), 1e-14 * (5 + residuals(i)))
          << points[3 * i] << ' ' << points[3 * i + 1] << ' ' << points[3 * i + 2] << " to " << radii[2];
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
  const Values swapped{0, 0, 0, 3, 1, 1, 0, 0, -7, 2, 0, 0, 2, 0, 7};
  const Values one = residuals(points, 5, 4, 3);
  const Values other = residuals(swapped, -3, 4, -5);
  for (std::size_t i = 0; i < one.size(); ++i) EXPECT_NEAR(one[i], other[i], 1e-14);
  EXPECT_EQ(one[0], 3);
  const omReal64 infinity = std::numeric_limits<omReal64>::infinity();
  EXPECT_EQ(residuals({infinity, 0, 1}, 5, 4, 3)[0], infinity);
  EXPECT_TRUE(std::isnan(residuals({0, std::numeric_limits<omReal64>::quiet_NaN(), 1}, 5, 4, 3)[0]));
}

}  // namespace
