#include <ORMIXGeometry/Entity/2d/Parabola/Parabola2d.h>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix::geom {
namespace {

using P = Point2dData<omReal64>;
constexpr omReal64 s_pi = 3.141592653589793;
using support::s_infinity;

/// y = x² / 4: the focus (0, 1) and the directrix y = -1.
const Parabola2d s_upright(P(0, 1), Line2d(P(0, -1), P(1, -1)));

/// Parabolas in all positions and with both normals of the directrix, about a centre.
class ParabolaDraw {
 public:
  ParabolaDraw(unsigned seed, omReal64 offset) : _draw(seed), _offset(offset) {}
  omReal64 unit() { return _draw.uniform(); }
  Parabola2d parabola() {
    const P focus(_offset + 10 * unit(), -_offset + 10 * unit());
    Line2d directrix(P(focus.getX() + 5 * unit(), focus.getY() + 5 * unit()), Vector2d(1, 4 * unit()));
    if (unit() > 0) directrix = Line2d(-directrix.getRho(), directrix.getTheta() + s_pi);
    return {focus, directrix};
  }

 private:
  support::Random _draw;
  omReal64 _offset;
};

TEST(Parabola2d, OfTheUnitFocalLength) {
  Parabola2d parabola;
  parabola.setFocus(Point2d<omUInt32>(3, 4));
  parabola.setDirectrix(Line2d(1, 0));
  EXPECT_EQ(parabola.getVertex(), P(2, 4));
  parabola.setCoords(Point2dData<omInt32>(5, 4), Line2d(-1, s_pi));
  EXPECT_DOUBLE_EQ(parabola.getFocalLength(), 2);
  EXPECT_EQ(s_upright.getFocalLength(), 1.0);
  EXPECT_NEAR(s_upright.getVertex().getX(), 0, 1e-15);
  EXPECT_EQ(s_upright.getVertex().getY(), 0.0);
  EXPECT_NEAR(s_upright.getSymmetryAxis().signedDistance(P(0, 77)), 0, 1e-14);
  EXPECT_NEAR(s_upright.getSymmetryAxis().signedDistance(P(0, -77)), 0, 1e-14);
  EXPECT_TRUE(s_upright.isInside(P(0, 0)) && !s_upright.isStrictlyInside(P(0, 0)));
  EXPECT_TRUE(s_upright.isInside(P(2, 1)) && !s_upright.isStrictlyInside(P(2, 1)));
  EXPECT_TRUE(s_upright.isStrictlyInside(P(0, 1)) && s_upright.isStrictlyInside(P(3, 2.26)));
  EXPECT_FALSE(s_upright.isInside(P(3, 2.24)) || s_upright.isInside(P(0, -1)) || s_upright.isInside(P(0, -50)));
}

void expectEquidistant(omReal64 offset) {
  ParabolaDraw draw(1123, offset);
  // Units in the last place of the coordinates.
  const omReal64 tolerance = 1e-13 + 1e-15 * offset;
  for (int i = 0; i < 2000; ++i) {
    const Parabola2d parabola = draw.parabola();
    const omReal64 f = parabola.getFocalLength();
    if (f < 0.05) continue;
    const omReal64 t = 4 * f * draw.unit();
    const P point = parabola.getPoint(t);
    ASSERT_TRUE(parabola.isInside(point) && !parabola.isStrictlyInside(point)) << parabola << t;
    ASSERT_NEAR(distance(point, parabola.getFocus()), std::abs(parabola.getDirectrix().signedDistance(point)),
                20 * tolerance)
        << parabola << t;
    ASSERT_NEAR(parabola.getAbscissa(point), t, 20 * tolerance) << parabola << t;
    // Towards the focus is inside, away from it outside.
    const auto beside = [&](omReal64 share) {
      return P(point.getX() + share * (parabola.getFocus().getX() - point.getX()),
               point.getY() + share * (parabola.getFocus().getY() - point.getY()));
    };
    ASSERT_TRUE(parabola.isStrictlyInside(beside(0.01))) << parabola << t;
    ASSERT_FALSE(parabola.isInside(beside(-0.01))) << parabola << t;
    const P vertex = parabola.getVertex();
    ASSERT_NEAR(distance(vertex, parabola.getFocus()), f, tolerance) << parabola;
    ASSERT_NEAR(distance(vertex, parabola.getPoint(0)), 0, tolerance) << parabola;
    ASSERT_NEAR(parabola.getSymmetryAxis().signedDistance(vertex), 0, 10 * tolerance) << parabola;
  }
}

TEST(Parabola2d, ItsPointsAreEquidistant) {
  for (const omReal64 offset : {0.0, 1e4, 1e8}) expectEquidistant(offset);
}

TEST(Parabola2dArc, LengthAgreesWithSimpsonsRule) {
  ParabolaDraw draw(8128, 0);
  for (int i = 0; i < 200; ++i) {
    const Parabola2d parabola = draw.parabola();
    const omReal64 f = parabola.getFocalLength();
    if (f < 0.05) continue;
    const omReal64 from = 5 * f * draw.unit(), to = 5 * f * draw.unit();
    const int nbSteps = 2000;
    const omReal64 step = (to - from) / nbSteps;
    omReal64 sum = 0;
    for (int k = 0; k <= nbSteps; ++k) {
      const int weight = k == 0 || k == nbSteps ? 1 : 2 + 2 * (k % 2);
      sum += weight * std::hypot(1.0, (from + k * step) / (2 * f));
    }
    ASSERT_NEAR(parabola.computeArcLength(from, to), std::abs(sum * step / 3), 1e-10 * f) << parabola;
    ASSERT_EQ(parabola.computeArcLength(from, from), 0.0);
  }
  EXPECT_DOUBLE_EQ(s_upright.computeArcLength(0, 2), std::sqrt(2.0) + std::asinh(1.0));
  EXPECT_DOUBLE_EQ(s_upright.computeArcLength(2, 0), std::sqrt(2.0) + std::asinh(1.0));
  // The antiderivative is about 2.5e17 there; the arc about t dt / 2f.
  EXPECT_NEAR(s_upright.computeArcLength(1e9, 1e9 + 1) / (5e8 + 0.25), 1, 1e-15);
}

TEST(Parabola2dArc, SamplesDivideItEvenly) {
  ParabolaDraw draw(6174, 0);
  for (int i = 0; i < 200; ++i) {
    const Parabola2d parabola = draw.parabola();
    const omReal64 f = parabola.getFocalLength();
    if (f < 0.01) continue;
    const omReal64 from = 20 * f * draw.unit(), to = 20 * f * draw.unit();
    const auto points = parabola.sampleArc(from, to, 17);
    ASSERT_EQ(points.size(), 17u);
    ASSERT_EQ(points.front(), parabola.getPoint(from));
    ASSERT_EQ(points.back(), parabola.getPoint(to));
    const omReal64 part = parabola.computeArcLength(from, to) / 16;
    for (std::size_t k = 1; k < points.size(); ++k) {
      const omReal64 length =
          parabola.computeArcLength(parabola.getAbscissa(points[k - 1]), parabola.getAbscissa(points[k]));
      ASSERT_NEAR(length, part, 1e-11 * (f + part)) << parabola << from << ' ' << to;
    }
  }
}

TEST(Parabola2dArc, SamplesOfFewPoints) {
  EXPECT_TRUE(s_upright.sampleArc(0, 1, 0).empty());
  EXPECT_EQ(s_upright.sampleArc(1, 2, 1), std::vector<P>{s_upright.getPoint(1)});
  EXPECT_EQ(s_upright.sampleArc(1, 1, 3).size(), 3u);
  EXPECT_TRUE(s_upright.sampleArc(0, s_infinity, 5).empty());
  EXPECT_TRUE(s_upright.sampleArc(0, std::nan(""), 5).empty());
}

TEST(Parabola2d, WithItsFocusOnTheDirectrixIsItsAxis) {
  const Parabola2d degenerated(P(3, 7), Line2d(3, 0));
  EXPECT_TRUE(degenerated.isDegenerated());
  EXPECT_EQ(degenerated.getFocalLength(), 0.0);
  EXPECT_EQ(degenerated.getVertex(), P(3, 7));
  EXPECT_TRUE(degenerated.isInside(P(-50, 7)) && degenerated.isInside(P(50, 7)));
  EXPECT_FALSE(degenerated.isInside(P(3, 8)) || degenerated.isStrictlyInside(P(50, 7)));
  EXPECT_EQ(degenerated.computeArcLength(1, 2), s_infinity);
  EXPECT_EQ(degenerated.computeArcLength(2, 2), 0.0);
  EXPECT_TRUE(degenerated.sampleArc(1, 2, 5).empty());
  EXPECT_TRUE(Parabola2d().isDegenerated());
  EXPECT_FALSE(Parabola2d(P(std::nan(""), 0), Line2d(3, 0)).isDegenerated());
}

}  // namespace
}  // namespace ormix::geom
