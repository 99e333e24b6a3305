#include <ORMIXMath/Fitting/ShapesFromSamples.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace ormix {
namespace {

using Rows = std::vector<omReal64>;

struct Fit {
  bool isFound = false;
  std::size_t rank = 77;
  omReal64 cx = 7, cy = 7, a = 7, b = 7, theta = 7;
};

SampleView viewOf(const Rows& rows) { return {rows.data(), rows.size() / 2, 2}; }

Fit fitCircle(const Rows& rows) {
  Fit fit;
  fit.isFound = circleFromSamples(viewOf(rows), fit.cx, fit.cy, fit.a, fit.rank);
  return fit;
}

Fit fitEllipse(const Rows& rows) {
  Fit fit;
  fit.isFound = ellipseFromSamples(viewOf(rows), fit.cx, fit.cy, fit.a, fit.b, fit.theta, fit.rank);
  return fit;
}

Rows arc(omReal64 cx, omReal64 cy, omReal64 a, omReal64 b, omReal64 theta, omReal64 from, omReal64 to, std::size_t n) {
  Rows rows;
  for (std::size_t i = 0; i < n; ++i) {
    const omReal64 t = from + (to - from) * static_cast<omReal64>(i) / static_cast<omReal64>(n);
    const omReal64 u = a * std::cos(t), v = b * std::sin(t);
    rows.push_back(cx + u * std::cos(theta) - v * std::sin(theta));
    rows.push_back(cy + u * std::sin(theta) + v * std::cos(theta));
  }
  return rows;
}

TEST(CircleFromSamples, ReachesTheAccuracyOfTheData) {
  for (const std::size_t n : {4U, 100U, 5000U}) {
    const Fit near = fitCircle(arc(3, -2, 5, 5, 0, 0, 2 * s_pi, n));
    ASSERT_TRUE(near.isFound);
    EXPECT_EQ(near.rank, 3U);
    EXPECT_NEAR(near.cx, 3, 5e-14);
    EXPECT_NEAR(near.a, 5, 5e-14);
    const Fit far = fitCircle(arc(1e6, -1e6, 1, 1, 0, 0, 2 * s_pi, n));
    ASSERT_TRUE(far.isFound);
    EXPECT_NEAR(far.cx, 1e6, 1e-9);
    EXPECT_NEAR(far.a, 1, 1e-9);
  }
  for (const omReal64 start : {0.0, 0.7, 2.0}) {
    const Fit narrow = fitCircle(arc(0, 0, 1, 1, 0, start, start + 5 * s_pi / 180, 200));
    ASSERT_TRUE(narrow.isFound);
    EXPECT_NEAR(narrow.a, 1, 1e-11);
    EXPECT_NEAR(narrow.cx, 0, 1e-11);
  }
}

TEST(CircleFromSamples, MinimisesTheAlgebraicDistance) {
  std::mt19937 draw(61);
  std::uniform_real_distribution<omReal64> unit(-1, 1);
  Rows rows = arc(3, -2, 5, 5, 0, 0, 4, 500);
  for (omReal64& value : rows) value += 0.2 * unit(draw);
  const Fit fit = fitCircle(rows);
  ASSERT_TRUE(fit.isFound);
  // The gradient of the sum of squares of q = (x - cx)² + (y - cy)² - r² vanishes.
  omReal64 sum = 0, sumX = 0, sumY = 0;
  for (std::size_t i = 0; i < rows.size(); i += 2) {
    const omReal64 x = rows[i] - fit.cx, y = rows[i + 1] - fit.cy, q = x * x + y * y - fit.a * fit.a;
    sum += q;
    sumX += q * x;
    sumY += q * y;
  }
  EXPECT_NEAR(sum, 0, 1e-9);
  EXPECT_NEAR(sumX, 0, 1e-9);
  EXPECT_NEAR(sumY, 0, 1e-9);
}

TEST(CircleFromSamples, IsNotMisledByCrowdedOrPeriodicSamples) {
  for (const omReal64 spread : {0.0, 1e-12, 1e-5}) {
    Rows rows;
    for (int i = 0; i < 100000; ++i) rows.insert(rows.end(), {5, spread * (i % 3)});
    const Rows ring = arc(0, 0, 5, 5, 0, 0, 2 * s_pi, 100);
    rows.insert(rows.begin() + 50000, ring.begin(), ring.end());
    const Fit fit = fitCircle(rows);
    ASSERT_TRUE(fit.isFound) << spread;
    EXPECT_NEAR(fit.a, 5, 1e-8 + spread);
  }
  Rows periodic;
  const Rows ring = arc(1, 0, 5, 3, 0, 0, 2 * s_pi, 100);
  for (int i = 0; i < 64; ++i) periodic.insert(periodic.end(), ring.begin(), ring.end());
  EXPECT_NEAR(fitEllipse(periodic).a, 5, 1e-12);
}

TEST(CircleFromSamples, RefusesWhatIsNoCircle) {
  EXPECT_EQ(fitCircle({}).rank, 0U);
  const Fit points = fitCircle({1, 2, 1, 2, 1, 2, 1, 2});
  EXPECT_FALSE(points.isFound);
  EXPECT_EQ(points.rank, 1U);
  EXPECT_EQ(points.a, 7);
  for (const omReal64 offset : {0.0, 1e9})
    for (const omReal64 slope : {0.0, 0.3, -7.1}) {
      Rows line;
      for (int i = 0; i < 300; ++i) line.insert(line.end(), {offset + 0.1 * i, offset + slope * 0.1 * i});
      const Fit fit = fitCircle(line);
      EXPECT_FALSE(fit.isFound) << offset << ' ' << slope;
      EXPECT_EQ(fit.rank, 2U) << offset << ' ' << slope;
    }
  for (const omReal64 bad : {std::numeric_limits<omReal64>::quiet_NaN(), HUGE_VAL}) {
    for (const std::size_t place : {0U, 501U, 1999U}) {
      Rows rows = arc(0, 0, 1, 1, 0, 0, 6, 1000);
      rows[place] = bad;
      EXPECT_FALSE(fitCircle(rows).isFound);
      EXPECT_FALSE(fitEllipse(rows).isFound);
      EXPECT_EQ(fitEllipse(rows).rank, 0U);
    }
  }
}

TEST(CircleFromSamples, MovesAndScalesWithItsData) {
  for (const omReal64 scale : {1e-150, 1e-12, 1e12, 1e150}) {
    const Fit fit = fitCircle(arc(3 * scale, 2 * scale, scale, scale, 0, 0, 6, 50));
    ASSERT_TRUE(fit.isFound) << scale;
    EXPECT_NEAR(fit.a / scale, 1, 1e-14);
    EXPECT_NEAR(fit.cx / scale, 3, 1e-14);
  }
}

TEST(EllipseFromSamples, ReachesTheAccuracyOfTheData) {
  for (const std::size_t n : {5U, 6U, 50U, 4000U}) {
    const Fit fit = fitEllipse(arc(3, -2, 5, 3, 0.7, 0, 2 * s_pi, n));
    ASSERT_TRUE(fit.isFound) << n;
    EXPECT_NEAR(fit.cx, 3, 5e-13);
    EXPECT_NEAR(fit.cy, -2, 5e-13);
    EXPECT_NEAR(fit.a, 5, 5e-13);
    EXPECT_NEAR(fit.b, 3, 5e-13);
    EXPECT_NEAR(fit.theta, 0.7, 5e-13);
    const Fit far = fitEllipse(arc(1e6, 1e6, 5, 3, 0.7, 0, 2 * s_pi, n));
    ASSERT_TRUE(far.isFound) << n;
    EXPECT_NEAR(far.a, 5, 5e-9);
    EXPECT_NEAR(far.cx, 1e6, 5e-9);
  }
  for (const omReal64 start : {0.0, 0.5, 1.4}) {
    const Fit narrow = fitEllipse(arc(0, 0, 5, 3, 0.3, start, start + s_pi / 6, 200));
    ASSERT_TRUE(narrow.isFound) << start;
    EXPECT_NEAR(narrow.a, 5, 5e-12) << start;
    EXPECT_NEAR(narrow.b, 3, 5e-12) << start;
  }
}

TEST(EllipseFromSamples, AdmitsConicsThroughTheOriginAndAnyScale) {
  const Fit through = fitEllipse(arc(5, 0, 5, 3, 0, 0, 2 * s_pi, 40));
  ASSERT_TRUE(through.isFound);
  EXPECT_NEAR(through.a, 5, 1e-13);
  for (const omReal64 scale : {1e-150, 1e-12, 1e12, 1e150}) {
    const Fit fit = fitEllipse(arc(scale, scale, 5 * scale, 3 * scale, 2, 0, 6, 50));
    ASSERT_TRUE(fit.isFound) << scale;
    EXPECT_NEAR(fit.a / scale, 5, 1e-13);
    EXPECT_NEAR(fit.b / scale, 3, 1e-13);
    EXPECT_NEAR(fit.theta, 2, 1e-13);
  }
}

TEST(EllipseFromSamples, TurnsWithItsData) {
  std::mt19937 draw(62);
  std::uniform_real_distribution<omReal64> unit(-0.2, 0.2);
  Rows rows = arc(0, 0, 5, 3, 0, 0, 5, 60);
  for (omReal64& value : rows) value += unit(draw);
  const Fit fit = fitEllipse(rows);
  Rows turned;
  for (std::size_t i = 0; i < rows.size(); i += 2)
    turned.insert(turned.end(), {1000 + rows[i] * 0.6 - rows[i + 1] * 0.8, rows[i] * 0.8 + rows[i + 1] * 0.6});
  const Fit again = fitEllipse(turned);
  ASSERT_TRUE(fit.isFound && again.isFound);
  EXPECT_NEAR(again.a, fit.a, 1e-11);
  EXPECT_NEAR(again.b, fit.b, 1e-11);
  EXPECT_NEAR(again.cx, 1000 + fit.cx * 0.6 - fit.cy * 0.8, 1e-11);
}

TEST(EllipseFromSamples, FitsThePointsOfGanderGolubAndStrebel) {
  // The example of their paper (BIT 34, 1994): a point set whose best algebraic conic under this constraint is an
  // ellipse.
  const Fit fit = fitEllipse({1, 7, 2, 6, 5, 8, 7, 7, 9, 5, 3, 7, 6, 2, 8, 4});
  ASSERT_TRUE(fit.isFound);
  EXPECT_EQ(fit.rank, 6U);
  EXPECT_GT(fit.a, fit.b);
}

TEST(EllipseFromSamples, RefusesWhatIsNoEllipse) {
  Rows hyperbola, line, parabola;
  for (int i = 1; i <= 50; ++i) {
    hyperbola.insert(hyperbola.end(), {0.1 * i, 10.0 / i});
    line.insert(line.end(), {0.1 * i, 0.3 * i});
    parabola.insert(parabola.end(), {0.1 * i, 0.01 * i * i});
  }
  EXPECT_FALSE(fitEllipse(hyperbola).isFound);
  EXPECT_FALSE(fitEllipse(line).isFound);
  EXPECT_LT(fitEllipse(line).rank, 5U);
  const Fit fit = fitEllipse(parabola);
  // To rounding a parabola is an ellipse of any length.
  EXPECT_TRUE(!fit.isFound || fit.a > 1e3);
  EXPECT_FALSE(fitEllipse({0, 0, 1, 0, 0, 1, 0, 1, 1, 0, 0, 0}).isFound);
  EXPECT_EQ(fitEllipse({0, 0, 1, 0, 0, 1, 1, 1}).theta, 7);
}

TEST(SphereFromSamples, FindsSpheresAndRefusesPlanes) {
  std::mt19937 draw(63);
  std::uniform_real_distribution<omReal64> unit(-1, 1);
  Rows sphere, plane;
  for (int i = 0; i < 400; ++i) {
    const omReal64 x = unit(draw), y = unit(draw), z = unit(draw), length = std::sqrt(x * x + y * y + z * z);
    sphere.insert(sphere.end(), {1e4 + 2 * x / length, 2 * y / length, -5 + 2 * z / length});
    plane.insert(plane.end(), {x, y, 0.5 * x - 3 * y});
  }
  omReal64 cx = 0, cy = 0, cz = 0, r = 0;
  std::size_t rank = 0;
  ASSERT_TRUE(sphereFromSamples(SampleView{sphere.data(), 400, 3}, cx, cy, cz, r, rank));
  EXPECT_NEAR(cx, 1e4, 1e-11);
  EXPECT_NEAR(cz, -5, 1e-11);
  EXPECT_NEAR(r, 2, 1e-11);
  EXPECT_FALSE(sphereFromSamples(SampleView{plane.data(), 400, 3}, cx, cy, cz, r, rank));
  EXPECT_EQ(rank, 3U);
}

TEST(EllipsoidFromSamples, TellsHowMuchIsDetermined) {
  std::mt19937 engine(5);
  std::uniform_real_distribution<omReal64> unit(-1, 1);
  Rows line, plane, surface;
  for (int i = 0; i < 40; ++i) {
    const omReal64 x = unit(engine);
    const omReal64 y = unit(engine) * std::sqrt(1 - x * x);
    const omReal64 z = (i % 2 == 0 ? 1 : -1) * std::sqrt(std::max(0.0, 1 - x * x - y * y));
    line.insert(line.end(), {x, 2 * x + 1, -x});
    plane.insert(plane.end(), {x, y, x + 0.5 * y});
    surface.insert(surface.end(), {1 + 3 * x, 2 - 4 * y, 5 * z});
  }
  const auto fit = [](const Rows& rows, std::size_t count, EllipsoidParameters& found) {
    std::size_t rank = 77;
    const bool isFound = ellipsoidFromSamples({rows.data(), count, 3}, found, rank);
    EXPECT_EQ(isFound, rank >= 9);
    return rank;
  };
  EllipsoidParameters found;
  EXPECT_EQ(fit(line, 40, found), 3U);
  EXPECT_EQ(fit(plane, 40, found), 6U);
  EXPECT_EQ(fit(Rows(120, 3.0), 40, found), 1U);
  EXPECT_EQ(fit(surface, 8, found), 8U);
  EXPECT_EQ(found.a, 0);
  for (const std::size_t count : {9, 10, 40}) {
    EXPECT_EQ(fit(surface, count, found), 9U);
    EXPECT_NEAR(found.cx, 1, 1e-12);
    EXPECT_NEAR(found.a, 5, 1e-11);
    EXPECT_NEAR(found.b, 4, 1e-11);
    EXPECT_NEAR(found.c, 3, 1e-11);
  }
  surface[7] = std::nan("");
  std::size_t rank = 77;
  EXPECT_FALSE(ellipsoidFromSamples({surface.data(), 40, 3}, found, rank));
  EXPECT_EQ(rank, 0U);
}

}  // namespace
}  // namespace ormix
