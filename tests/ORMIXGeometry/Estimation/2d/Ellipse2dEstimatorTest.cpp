#include <ORMIXGeometry/Estimation/2d/Ellipse2dEstimator.h>
#include <ORMIXMath/Algebra/QrDecomposition.h>
#include <ORMIXMath/Shape/EllipseConic.h>

#include <array>
#include <boost/numeric/ublas/matrix.hpp>
#include <limits>

#include "../EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

constexpr omReal64 s_degree = 3.141592653589793 / 180;

/// Rounded once.
Values onEllipse(const RealVector& ellipse, omReal64 from, omReal64 to, std::size_t count, unsigned seed,
                 omReal64 noise = 0) {
  Random random(seed);
  Values values;
  const long double co = std::cos(static_cast<long double>(ellipse(4)));
  const long double si = std::sin(static_cast<long double>(ellipse(4)));
  for (std::size_t i = 0; i < count; ++i) {
    const long double t = random.uniform(from, to);
    const long double u = ellipse(2) * std::cos(t) + noise * random.noise();
    const long double v = ellipse(3) * std::sin(t) + noise * random.noise();
    values.push_back(static_cast<omReal64>(ellipse(0) + u * co - v * si));
    values.push_back(static_cast<omReal64>(ellipse(1) + u * si + v * co));
  }
  return values;
}

/// Of centre, radii and direction, all as lengths, relative to the largest radius.
omReal64 error(const RealVector& found, const RealVector& exact) {
  const omReal64 turn = std::remainder(found(4) - exact(4), 180 * s_degree) * (exact(2) - exact(3));
  return std::max({std::abs(found(0) - exact(0)), std::abs(found(1) - exact(1)), std::abs(found(2) - exact(2)),
                   std::abs(found(3) - exact(3)), std::abs(turn)}) /
         exact(2);
}

TEST(Ellipse2dEstimator, IsExactOnExactData) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const RealVector ellipse = vectorOf({random.uniform(-2, 2), random.uniform(-2, 2), random.uniform(2, 4),
                                         random.uniform(1, 2), random.uniform(0, 3.14)});
    EXPECT_LE(error(fitted<Ellipse2dEstimator>(onEllipse(ellipse, 0, 6.28, 60, seed)), ellipse), 1e-13);
    const RealVector far = vectorOf({1e6, -1e6, 5, 3, ellipse(4)});
    EXPECT_LE(error(fitted<Ellipse2dEstimator>(onEllipse(far, 0, 6.28, 60, seed)), far), 1e-9);
  }
}

/// What rounding of the points' coordinates alone makes of the error, to first order and root mean square: the points
/// pull at the ellipse F = 0 with the derivatives of F by its five parameters, all as in error().
omReal64 effectOfRounding(const RealVector& ellipse, const Values& points) {
  const auto n = points.size() / 2;
  RealMatrix derivatives(n, 5), q, r, inverse;
  RealVector roundings(n);
  for (std::size_t i = 0; i < n; ++i) {
    const omReal64 x = points[2 * i] - ellipse(0);
    const omReal64 y = points[2 * i + 1] - ellipse(1);
    const omReal64 u = x * std::cos(ellipse(4)) + y * std::sin(ellipse(4));
    const omReal64 v = y * std::cos(ellipse(4)) - x * std::sin(ellipse(4));
    const omReal64 fu = 2 * u / (ellipse(2) * ellipse(2));
    const omReal64 fv = 2 * v / (ellipse(3) * ellipse(3));
    const std::array<omReal64, 5> row{fu, fv, fu * u / ellipse(2), fv * v / ellipse(3),
                                      (fu * v - fv * u) / (ellipse(2) - ellipse(3))};
    for (std::size_t k = 0; k < row.size(); ++k) derivatives(i, k) = row[k];
    const omReal64 ulp =
        std::ldexp(1.0, std::ilogb(std::max(std::abs(points[2 * i]), std::abs(points[2 * i + 1]))) - 52);
    roundings(i) = std::hypot(fu, fv) * ulp / std::sqrt(12.0);
  }
  EXPECT_TRUE(qrDecomposition(derivatives, q, r));
  EXPECT_TRUE(upperTriangularInverse(r, inverse));
  const RealMatrix effects = prod(inverse, trans(q));
  omReal64 largest = 0;
  for (std::size_t k = 0; k < 5; ++k) {
    omReal64 sum = 0;
    for (std::size_t i = 0; i < n; ++i) sum += effects(k, i) * effects(k, i) * roundings(i) * roundings(i);
    largest = std::max(largest, std::sqrt(sum));
  }
  return largest / ellipse(2);
}

TEST(Ellipse2dEstimator, IsAsExactOnShortArcsAsTheirPointsAre) {
  for (const omReal64 minor : {3.0, 0.5, 0.15})
    for (const std::size_t count : {20, 100, 1000})
      for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(testing::Message() << minor << ' ' << count << ' ' << seed);
        const omReal64 from = Random(seed).uniform(0, 6);
        const RealVector ellipse = vectorOf({0, 0, 5, minor, 0.1 * seed});
        const Values values = onEllipse(ellipse, from, from + 30 * s_degree, count, seed);
        const omReal64 found = error(fitted<Ellipse2dEstimator>(values), ellipse);
        EXPECT_LE(found, 5 * effectOfRounding(ellipse, values));
        EXPECT_LE(found, minor == 3 && count >= 100 ? 1e-12 : 1e-11);
      }
}

TEST(Ellipse2dEstimator, ConicsThroughTheOriginAreAsGoodAsOthers) {
  for (const omReal64 scale : {0x1p-300, 1.0, 0x1p300}) {
    const RealVector ellipse = vectorOf({3 * std::cos(0.7) * scale, 3 * std::sin(0.7) * scale, 3 * scale, scale, 0.7});
    EXPECT_LE(error(fitted<Ellipse2dEstimator>(onEllipse(ellipse, 0, 6.28, 40, 5)), ellipse), 1e-13) << scale;
  }
}

TEST(Ellipse2dEstimator, FivePointsAreEnough) {
  const RealVector ellipse = vectorOf({1, 2, 3, 2, 0.3});
  const Values values = onEllipse(ellipse, 0, 6, 5, 2);
  const RealVector params = fitted<Ellipse2dEstimator>(values);
  EXPECT_LE(error(params, ellipse), 1e-12);
  EXPECT_LE(largestResidual<Ellipse2dEstimator>(values, params), 1e-12);
}

/// Sum of squares of the conic's values over the points, under the constraint of the fit.
omReal64 algebraicSum(std::array<omReal64, 6> q, const Values& points) {
  const omReal64 length = std::sqrt(q[0] * q[0] + q[1] * q[1] / 2 + q[2] * q[2]);
  omReal64 sum = 0;
  for (std::size_t i = 0; i < points.size(); i += 2) {
    const omReal64 x = points[i];
    const omReal64 y = points[i + 1];
    const omReal64 value = (q[0] * x * x + q[1] * x * y + q[2] * y * y + q[3] * x + q[4] * y + q[5]) / length;
    sum += value * value;
  }
  return sum;
}

void expectBestConic(const Values& points) {
  const RealVector p = fitted<Ellipse2dEstimator>(points);
  EXPECT_GE(p(2), p(3));
  EllipseConic conic;
  ASSERT_TRUE(conicFromEllipse(p(0), p(1), p(2), p(3), p(4), conic));
  conic = conicAbout(conic, 0, 0);
  const std::array<omReal64, 6> best{conic.a, conic.b, conic.c, conic.d, conic.e, conic.f};
  const omReal64 least = algebraicSum(best, points);
  for (std::size_t k = 0; k < best.size(); ++k)
    for (const omReal64 step : {1e-2, -1e-2, 1e-4, -1e-4, 1e-6, -1e-6}) {
      auto changed = best;
      changed[k] += step;
      EXPECT_GE(algebraicSum(changed, points), least * (1 - 1e-11)) << k << " by " << step;
    }
}

TEST(Ellipse2dEstimator, NoOtherConicIsBetterOnPublishedPoints) {
  // Gander, Golub and Strebel 1994, Least-Squares Fitting of Circles and Ellipses, BIT 34, 558-578.
  const Values published{1, 7, 2, 6, 5, 8, 7, 7, 9, 5, 3, 7, 6, 2, 8, 4};
  expectBestConic(published);
  // The same made flat, along some direction and across it.
  for (const bool isSteep : {false, true}) {
    Values flat = published;
    for (std::size_t i = 0; i < flat.size(); i += 2) {
      flat[i + 1] = flat[i + 1] / 8 + 0.6 * flat[i];
      if (isSteep) std::swap(flat[i], flat[i + 1]);
    }
    expectBestConic(flat);
  }
}

TEST(Ellipse2dEstimator, SaysWhatIsMissing) {
  EXPECT_EQ(failureOf<Ellipse2dEstimator>(Values(20, 3.5)),
            "Can't estimate ellipse 2d from cloud of points, insufficient matrix rank for estimation");
  const std::string notAnEllipse =
      "Can't estimate ellipse 2d from cloud of points, estimation does not lead to an ellipse representation";
  Values line;
  Values parabola;
  Values hyperbola;
  for (int i = -5; i <= 5; ++i) {
    line.insert(line.end(), {1.0 * i, 2.0 * i + 1});
    parabola.insert(parabola.end(), {1.0 * i, 1.0 * i * i});
    hyperbola.insert(hyperbola.end(), {std::sinh(0.3 * i), std::cosh(0.3 * i)});
  }
  for (const Values& values : {line, parabola, hyperbola})
    EXPECT_EQ(failureOf<Ellipse2dEstimator>(values), notAnEllipse);
}

/// The smallest distance to points of the ellipse: a coarse search, then ever finer about the best. In long double.
long double oracle(const RealVector& e, long double x, long double y) {
  const long double co = std::cos(static_cast<long double>(e(4)));
  const long double si = std::sin(static_cast<long double>(e(4)));
  const long double u = (x - e(0)) * co + (y - e(1)) * si;
  const long double v = (y - e(1)) * co - (x - e(0)) * si;
  const auto at = [&](long double t) { return std::hypot(e(2) * std::cos(t) - u, e(3) * std::sin(t) - v); };
  long double best = 0;
  long double width = 3.2L;
  for (int round = 0; round < 20; ++round, width /= 16) {
    long double nearest = best;
    for (int k = -200; k <= 200; ++k)
      if (at(best + width * k / 200) < at(nearest)) nearest = best + width * k / 200;
    best = nearest;
  }
  return at(best);
}

TEST(Ellipse2dEstimator, ResidualsAreDistancesWhereverThePointIs) {
  Random random(11);
  for (const omReal64 minor : {5.0, 4.999999, 3.0, 0.1, 1e-4}) {
    const RealVector ellipse = vectorOf({1, -2, 5, minor, 0.6});
    Values points{1, -2};
    for (int i = 0; i < 60; ++i) {
      // On both axes, on their evolute's ends, anywhere, far away.
      const omReal64 s = i % 4 == 3 ? std::pow(10.0, random.uniform(1, 8)) : random.uniform(-6, 6);
      const omReal64 angle = i % 4 == 0 ? 0.6 : i % 4 == 1 ? 0.6 + 90 * s_degree : random.uniform(0, 6.28);
      points.insert(points.end(), {1 + s * std::cos(angle), -2 + s * std::sin(angle)});
    }
    const RealVector residuals = residualsOf<Ellipse2dEstimator>(points, ellipse);
    for (std::size_t i = 0; i < residuals.size(); ++i) {
      const long double expected = oracle(ellipse, points[2 * i], points[2 * i + 1]);
      EXPECT_NEAR(residuals(i), static_cast<omReal64>(expected), 4e-15 * (5 + residuals(i)))
          << points[2 * i] << ' ' << points[2 * i + 1] << " to b = " << minor;
    }
  }
}

// About the centres of curvature of the vertices the nearest point changes fastest, and a distance has the worst start.
TEST(Ellipse2dEstimator, ResidualsNearTheCuspsOfTheEvolute) {
  const RealVector ellipse = vectorOf({0, 0, 5, 3, 0});
  Values points;
  for (omReal64 step = 1; step > 1e-17; step /= 7)
    for (const omReal64 side : {-step, 0.0, step}) {
      points.insert(points.end(), {16.0 / 5 + side, step * step});
      points.insert(points.end(), {16.0 / 5 + side, 0});
      points.insert(points.end(), {step, 16.0 / 3 + side});
      points.insert(points.end(), {step, side});
    }
  const RealVector residuals = residualsOf<Ellipse2dEstimator>(points, ellipse);
  for (std::size_t i = 0; i < residuals.size(); ++i)
    EXPECT_NEAR(residuals(i), static_cast<omReal64>(oracle(ellipse, points[2 * i], points[2 * i + 1])), 8e-15)
        << points[2 * i] << ' ' << points[2 * i + 1];
}

TEST(Ellipse2dEstimator, ResidualsOfFlatAndSwappedEllipses) {
  const Values points{0, 0, 3, 1, -7, 0, 0, 2};
  EXPECT_EQ(valuesOf(residualsOf<Ellipse2dEstimator>(points, vectorOf({0, 0, 5, 0, 0}))), (Values{0, 1, 2, 2}));
  EXPECT_EQ(valuesOf(residualsOf<Ellipse2dEstimator>(points, vectorOf({0, 0, 0, 0, 0}))),
            (Values{0, std::hypot(3.0, 1.0), 7, 2}));
  const RealVector one = residualsOf<Ellipse2dEstimator>(points, vectorOf({0, 0, 2, 4, 0}));
  const RealVector other = residualsOf<Ellipse2dEstimator>(points, vectorOf({0, 0, -4, 2, 90 * s_degree}));
  for (std::size_t i = 0; i < one.size(); ++i) EXPECT_NEAR(one(i), other(i), 1e-14);
  EXPECT_EQ(one(0), 2);
  const omReal64 infinity = std::numeric_limits<omReal64>::infinity();
  EXPECT_EQ(residualsOf<Ellipse2dEstimator>({infinity, 0, 1, 1}, vectorOf({0, 0, 2, 1, 0}))(0), infinity);
}

}  // namespace
