#include <ORMIXGeometry/Estimation/2d/Ellipse2dEstimator.h>
#include <ORMIXGeometry/Message/EstimationMessage.h>
#include <ORMIXMath/Shape/EllipseConic.h>

#include "support/EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

using Conic = std::array<omReal64, 6>;

/// Sum of squares of the conic's values over the points, under the constraint of the fit.
omReal64 algebraicSum(const Conic& q, const Values& points) {
  omReal64 sum = 0;
  for (std::size_t i = 0; i < points.size(); i += 2) {
    const omReal64 x = points[i], y = points[i + 1];
    sum += std::pow(q[0] * x * x + q[1] * x * y + q[2] * y * y + q[3] * x + q[4] * y + q[5], 2);
  }
  return sum / (q[0] * q[0] + q[1] * q[1] / 2 + q[2] * q[2]);
}

void expectBestConic(const Values& points) {
  const RealVector p = fitted<Ellipse2dEstimator>(points);
  EXPECT_GE(p(2), p(3));
  EllipseConic conic;
  ASSERT_TRUE(conicFromEllipse(p(0), p(1), p(2), p(3), p(4), conic));
  conic = conicAbout(conic, 0, 0);
  const Conic best{conic.a, conic.b, conic.c, conic.d, conic.e, conic.f};
  for (std::size_t k = 0; k < best.size(); ++k)
    for (const omReal64 step : {1e-2, -1e-2, 1e-4, -1e-4, 1e-6, -1e-6}) {
      Conic changed = best;
      changed[k] += step;
      EXPECT_GE(algebraicSum(changed, points), algebraicSum(best, points) * (1 - 1e-11)) << k << " by " << step;
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
            formatMessage<eEstimationMessage>(eEstimationMessage::eEsM_EllipseRank));
  const std::string notAnEllipse = formatMessage<eEstimationMessage>(eEstimationMessage::eEsM_EllipseNotAnEllipse);
  Values line, parabola, hyperbola;
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
    const auto add = [&](omReal64 along, omReal64 across) {
      points.insert(points.end(), {1 + along * std::cos(0.6) - across * std::sin(0.6),
                                   -2 + along * std::sin(0.6) + across * std::cos(0.6)});
    };
    // On both axes, anywhere, far away.
    for (int i = 0; i < 15; ++i) {
      const omReal64 far = std::pow(10.0, random.uniform(1, 8));
      add(random.uniform(-6, 6), 0);
      add(0, random.uniform(-6, 6));
      add(random.uniform(-6, 6), random.uniform(-6, 6));
      add(far * random.uniform(), far * random.uniform());
    }
    // About the centres of curvature of the vertices, where the nearest point changes fastest.
    for (omReal64 step = 1; step > 1e-17; step /= 7)
      for (const omReal64 side : {-step, 0.0, step}) {
        add((25 - minor * minor) / 5 + side, step * step);
        add(step, (25 - minor * minor) / minor + side);
        add(step, side);
      }
    const RealVector residuals = residualsOf<Ellipse2dEstimator>(points, ellipse);
    for (std::size_t i = 0; i < residuals.size(); ++i)
      EXPECT_NEAR(residuals(i), static_cast<omReal64>(oracle(ellipse, points[2 * i], points[2 * i + 1])),
                  8e-15 * (5 + residuals(i)))
          << points[2 * i] << ' ' << points[2 * i + 1] << " to b = " << minor;
  }
}

TEST(Ellipse2dEstimator, ResidualsOfFlatAndSwappedEllipses) {
  const auto residuals = [](omReal64 a, omReal64 b, omReal64 theta) {
    return valuesOf(residualsOf<Ellipse2dEstimator>({0, 0, 3, 1, -7, 0, 0, 2}, vectorOf({0, 0, a, b, theta})));
  };
  EXPECT_EQ(residuals(5, 0, 0), (Values{0, 1, 2, 2}));
  EXPECT_EQ(residuals(0, 0, 0), (Values{0, std::hypot(3.0, 1.0), 7, 2}));
  const Values one = residuals(2, 4, 0), other = residuals(-4, 2, std::acos(0.0));
  for (std::size_t i = 0; i < one.size(); ++i) EXPECT_NEAR(one[i], other[i], 1e-14);
  EXPECT_EQ(one[0], 2);
  EXPECT_EQ(residualsOf<Ellipse2dEstimator>({s_infinity, 0, 1, 1}, vectorOf({0, 0, 2, 1, 0}))(0), s_infinity);
}

}  // namespace
