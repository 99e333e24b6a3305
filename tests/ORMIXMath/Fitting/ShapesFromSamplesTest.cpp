#include <ORMIXMath/Fitting/ShapesFromSamples.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <array>
#include <boost/multiprecision/cpp_bin_float.hpp>

#include "support/Checks.h"
#include "support/Random.h"

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

using Exact = boost::multiprecision::number<boost::multiprecision::cpp_bin_float<100>, boost::multiprecision::et_off>;

/// The determinant of three columns, from which Cramer's rule makes the solution of a system.
Exact determinant(const std::array<std::array<Exact, 3>, 3>& c) {
  return c[0][0] * (c[1][1] * c[2][2] - c[1][2] * c[2][1]) - c[1][0] * (c[0][1] * c[2][2] - c[0][2] * c[2][1]) +
         c[2][0] * (c[0][1] * c[1][2] - c[0][2] * c[1][1]);
}

/// The solution of the normal equations, in 100 digits: centre and radius.
std::array<Exact, 3> exactCircle(const Rows& rows) {
  std::array<std::array<Exact, 3>, 3> columns{};
  std::array<Exact, 3> right{};
  for (std::size_t i = 0; i < rows.size(); i += 2) {
    const std::array<Exact, 3> row{Exact(rows[i]) - rows[0], Exact(rows[i + 1]) - rows[1], 1};
    for (std::size_t k = 0; k < 3; ++k) {
      for (std::size_t j = 0; j < 3; ++j) columns[j][k] += row[j] * row[k];
      right[k] += row[k] * (row[0] * row[0] + row[1] * row[1]);
    }
  }
  std::array<Exact, 3> solution;
  for (std::size_t k = 0; k < 3; ++k) {
    auto replaced = columns;
    replaced[k] = right;
    solution[k] = determinant(replaced) / determinant(columns);
  }
  const Exact x = solution[0] / 2, y = solution[1] / 2;
  return {x + rows[0], y + rows[1], sqrt(solution[2] + x * x + y * y)};
}

TEST(CircleFromSamples, IsTheExactSolutionToRounding) {
  support::Random random(18);
  for (int i = 0; i < 3000; ++i) {
    const omReal64 scale = std::pow(10.0, 6 * random.uniform());
    const omReal64 offset = i % 3 == 0 ? 1e9 * scale * random.uniform() : 0;
    Rows rows = arc(offset, -offset, scale, scale, 0, random.uniform(), 7, 4 + random.below(40));
    for (omReal64& value : rows) value += 0.05 * scale * random.uniform();
    const Fit fit = fitCircle(rows);
    ASSERT_TRUE(fit.isFound);
    const auto [x, y, radius] = exactCircle(rows);
    const omReal64 allowed = 4e-15 * scale + 0x1p-52 * std::abs(offset);
    for (const Exact& error : {fit.cx - x, fit.cy - y, fit.a - radius})
      ASSERT_LE(std::abs(error.convert_to<omReal64>()), allowed) << "case " << i;
  }
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
  for (const omReal64 bad : {support::s_nan, HUGE_VAL}) {
    for (const std::size_t place : {0U, 501U, 1999U}) {
      Rows rows = arc(0, 0, 1, 1, 0, 0, 6, 1000);
      rows[place] = bad;
      EXPECT_FALSE(fitCircle(rows).isFound);
      EXPECT_FALSE(fitEllipse(rows).isFound);
      EXPECT_EQ(fitEllipse(rows).rank, 0U);
    }
  }
}

TEST(EllipseFromSamples, ReachesTheAccuracyOfTheData) {
  for (const std::size_t n : {5U, 6U, 50U, 4000U}) {
    const Fit fit = fitEllipse(arc(3, -2, 5, 3, 0.7, 0, 2 * s_pi, n));
    ASSERT_TRUE(fit.isFound) << n;
    for (const omReal64 error : {fit.cx - 3, fit.cy + 2, fit.a - 5, fit.b - 3, fit.theta - 0.7})
      EXPECT_NEAR(error, 0, 5e-13);
    const Fit far = fitEllipse(arc(1e6, 1e6, 5, 3, 0.7, 0, 2 * s_pi, n));
    ASSERT_TRUE(far.isFound) << n;
    EXPECT_NEAR(far.a, 5, 5e-9);
    EXPECT_NEAR(far.cx, 1e6, 5e-9);
  }
  for (const omReal64 start : {0.0, 0.5, 1.4})
    for (const omReal64 minor : {3.0, 0.5, 0.15}) {
      const Fit narrow = fitEllipse(arc(0, 0, 5, minor, 0.3, start, start + s_pi / 6, 200));
      ASSERT_TRUE(narrow.isFound) << start;
      EXPECT_NEAR(narrow.a, 5, 5e-11) << start;
      EXPECT_NEAR(narrow.b, minor, 5e-11) << start;
      EXPECT_NEAR(std::hypot(narrow.cx, narrow.cy), 0, 5e-11) << start;
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

TEST(EllipsoidFromSamples, TellsHowMuchIsDetermined) {
  support::Random engine(5);
  Rows line, plane, surface;
  for (int i = 0; i < 40; ++i) {
    const omReal64 x = engine.uniform(), y = engine.uniform() * std::sqrt(1 - x * x);
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
    for (const omReal64 error : {found.cx - 1, found.a - 5, found.b - 4, found.c - 3}) EXPECT_NEAR(error, 0, 1e-11);
  }
  surface[7] = std::nan("");
  std::size_t rank = 77;
  EXPECT_FALSE(ellipsoidFromSamples({surface.data(), 40, 3}, found, rank));
  EXPECT_EQ(rank, 0U);
}

}  // namespace
}  // namespace ormix
