// How covariances follow entities: against samples of the parameters.

#include <ORMIXGeometry/ORMIXGeometry.h>
#include <ORMIXMath/Algebra/EigenDecomposition.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <array>
#include <functional>
#include <optional>

#include "support/EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

#ifndef ORMIX_NB_TRIALS
#define ORMIX_NB_TRIALS 100
#endif
constexpr int s_nbTrials = ORMIX_NB_TRIALS;

omReal64 normal(Random& random) {
  return std::sqrt(-2 * std::log(random.uniform(1e-12, 1))) * std::cos(2 * s_pi * random.uniform(0, 1));
}

/// A report with correlated parameters, and the root of its covariance, which keeps the length of some parameters.
struct Uncertain {
  FitReport report;
  Values root;

  Uncertain(const char* model, const Values& params, std::size_t nbOfUnitLength = 0, std::size_t first = 0) {
    Random random(17 + static_cast<unsigned>(params.size()));
    const std::size_t n = params.size();
    report.model = model;
    report.params = params;
    root.resize(n * n);
    for (omReal64& value : root) value = 5e-4 * random.uniform();
    for (std::size_t c = 0; c < n; ++c) {
      omReal64 along = 0;
      for (std::size_t r = first; r < first + nbOfUnitLength; ++r) along += params[r] * root[r * n + c];
      for (std::size_t r = first; r < first + nbOfUnitLength; ++r) root[r * n + c] -= along * params[r];
    }
    report.covariance.assign(n * n, 0);
    for (std::size_t r = 0; r < n; ++r)
      for (std::size_t c = 0; c < n; ++c)
        for (std::size_t k = 0; k < n; ++k) report.covariance[r * n + c] += root[r * n + k] * root[c * n + k];
  }
  /// With parameters drawn from the covariance, and that none.
  FitReport drawn(Random& random) const {
    FitReport result = report;
    const std::size_t n = report.params.size();
    for (std::size_t k = 0; k < n; ++k) {
      const omReal64 by = normal(random);
      for (std::size_t r = 0; r < n; ++r) result.params[r] += by * root[r * n + k];
    }
    result.covariance.assign(n * n, 0);
    return result;
  }
};

Values ofLengthOne(Values elements) {
  omReal64 square = 0;
  for (const omReal64 element : elements) square += element * element;
  for (omReal64& element : elements) element /= std::sqrt(square);
  return elements;
}

/// At a place.
std::vector<Uncertain> entities(omReal64 x) {
  const Values along = ofLengthOne({1, x / 13, 2});
  const auto around = [&](Values point, const Values& sizes) {
    point.insert(point.end(), along.begin(), along.end());
    point.insert(point.end(), sizes.begin(), sizes.end());
    return point;
  };
  return {{"Point2d", {x + 3, 4}},
          {"Line2d", {5, 0.7}},
          {"Circle2d", {x - 4, 2, 1.5}},
          {"Ellipse2d", {x + 2, -6, 3, 1, 0.4}},
          {"Plan3d", {1 / 3.0, 2 / 3.0, 2 / 3.0, 20}, 3},
          {"Sphere3d", {x - 4, 2, 9, 1.5}},
          {"Ellipsoid3d", {x + 2, -6, 1, 3, 2, 1, 0.3, -0.5, 0.8}},
          {"Cylinder3d", around({x + 3, -8, 4}, {1.5}), 3, 3},
          {"Cone3d", around({x + 3, -8, 4}, {0.4}), 3, 3},
          {"Torus3d", around({x + 1, -6, 2}, {3, 1}), 3, 3},
          {"Line3d", around({x + 3, -8, 4}, {}), 3, 3},
          {"Circle3d", around({x + 2, 5, -7}, {2}), 3, 3},
          {"Arc2d", {x - 4, 2, 1.5}}};
}

std::vector<Uncertain> transforms() {
  return {{"TranslationTransform2d", {3, -4}},
          {"RigidTransform2d", {2, 3, -4}},
          {"SimilarityTransform2d", {1.5, 2, 3, -4}},
          {"HomographyTransform2d", ofLengthOne({1.2, 0.3, 2, -0.2, 0.9, -1, 0.03, -0.02, 1}), 9},
          {"TranslationTransform3d", {3, -4, 5}},
          {"RigidTransform3d", {2, 0.7, -1, 3, -4, 5}},
          {"SimilarityTransform3d", {1.5, 2, 0.7, -1, 3, -4, 5}},
          {"HomographyTransform3d", ofLengthOne({1.2, .3, .1, 2, -.2, .9, .2, -1, .1, -.3, 1.1, 3, .03, -.02, .01, 1}),
           16}};
}

/// The values of a function of two reports against those of drawn ones; false where the function is not supported.
using Function = std::function<BoolResult(const FitReport&, const FitReport&, Values& values, Values& variances)>;

bool expectVariances(const std::string& what, const Uncertain& a, const Uncertain& b, const Function& function) {
  SCOPED_TRACE(what + " of " + a.report.model + " and " + b.report.model);
  Values values, variances, ignored;
  if (!function(a.report, b.report, values, variances)) return false;
  Values sums(values.size(), 0), squares(values.size(), 0), drawn;
  Random random(23);
  for (int trial = 0; trial < s_nbTrials; ++trial) {
    const BoolResult result = function(a.drawn(random), b.drawn(random), drawn, ignored);
    EXPECT_TRUE(result) << result.getMessage();
    for (std::size_t k = 0; k < values.size(); ++k) {
      const omReal64 off = drawn[k] - values[k];
      sums[k] += off;
      squares[k] += off * off;
    }
  }
  for (std::size_t k = 0; k < values.size(); ++k) {
    const omReal64 variance = squares[k] / s_nbTrials - std::pow(sums[k] / s_nbTrials, 2);
    EXPECT_NEAR(std::sqrt(variances[k] / variance), 1, std::max(0.05, 4 / std::sqrt(2.0 * s_nbTrials)))
        << "value " << k;
  }
  return true;
}

BoolResult imageValues(const FitReport& entity, const FitReport& transform, Values& values, Values& variances) {
  FitReport image;
  const BoolResult result = transformed(entity, transform, image);
  values = image.params;
  variances.clear();
  for (std::size_t k = 0; k < values.size(); ++k) variances.push_back(image.covariance[k * (values.size() + 1)]);
  return result;
}

template <class Measure>
Function valueOf(const Measure& measure) {
  return [=](const FitReport& a, const FitReport& b, Values& values, Values& variances) {
    UncertainValue value;
    const BoolResult result = measure(a, b, value);
    values = {value.value};
    variances = {value.standardUncertainty * value.standardUncertainty};
    return result;
  };
}

/// Plans meet each other and lines.
bool meet(const std::string& a, const std::string& b) {
  return (a == "Plan3d" && (b == "Plan3d" || b == "Line3d")) || (a == "Line3d" && b == "Plan3d");
}

TEST(Uncertainty, FollowsEntitiesThroughAllThatSupportsThem) {
  using Report = const FitReport&;
  const std::vector<Uncertain> all = entities(0);
  int nbImages = 0, nbMeasures = 0, nbDistances = 0;
  for (const Uncertain& a : all) {
    for (const Uncertain& by : transforms()) nbImages += expectVariances("image", a, by, imageValues);
    // A point has no size, nor has a measure of it a variance.
    if (a.report.model != "Point2d") {
      nbMeasures +=
          expectVariances("area", a, a, valueOf([](Report r, Report, UncertainValue& v) { return area(r, v); }));
      nbMeasures += expectVariances("perimeter", a, a,
                                    valueOf([](Report r, Report, UncertainValue& v) { return perimeter(r, v); }));
      nbMeasures +=
          expectVariances("volume", a, a, valueOf([](Report r, Report, UncertainValue& v) { return volume(r, v); }));
    }
    for (const Uncertain& b : entities(-13))
      if (!meet(a.report.model, b.report.model))
        nbDistances += expectVariances(
            "distance", a, b, valueOf([](Report r, Report s, UncertainValue& v) { return distance(r, s, v); }));
  }
  // Points through four maps, lines of the plane through two, plans through none, all others through three.
  EXPECT_EQ(nbImages, 4 + 2 + 10 * 3);
  EXPECT_EQ(nbMeasures, 2 + 2 + 2 + 2 + 2);
  // Of points, circles and ellipses of the plane; of plans, spheres, ellipsoids, tori, lines and circles of space.
  EXPECT_EQ(nbDistances, 3 * 3 + 6 * 6 - 3);
}

/// Points of a shape around the z axis, by an angle and a height.
using Place = std::function<std::array<omReal64, 3>(omReal64 t, omReal64 z)>;

/// What a fit reports of moved points is the image of what it reports of them where they were.
template <class Entity>
void expectEquivariant(BoolResult (*fit)(const SampleView&, const FitOptions&, Entity&, FitReport&),
                       const Place& place) {
  const SimilarityTransform3d similarity(2, 0.3, -0.2, 0.4, 50, -30, 20);
  Random random(31);
  Values points, moved;
  for (int i = 0; i < 60; ++i) {
    std::array<omReal64, 3> p = place(random.uniform(-s_pi, s_pi), random.uniform());
    for (omReal64& value : p) value += 0.01 * normal(random);
    Point3d<omReal64> q(p[0], p[1], p[2]);
    ASSERT_TRUE(similarity.applyInSitu(q));
    points.insert(points.end(), p.begin(), p.end());
    moved.insert(moved.end(), {q.getX(), q.getY(), q.getZ()});
  }
  Entity entity;
  FitReport before, after, image;
  ASSERT_TRUE(fit({points.data(), 60, 3}, {}, entity, before));
  ASSERT_TRUE(fit({moved.data(), 60, 3}, {}, entity, after));
  const BoolResult result = transformed(before, similarity, image);
  ASSERT_TRUE(result) << result.getMessage();
  ASSERT_EQ(image.params.size(), after.params.size());
  for (std::size_t k = 0; k < after.params.size(); ++k) {
    SCOPED_TRACE(after.model + ": " + after.parameterNames[k]);
    const omReal64 sigma = after.standardUncertainty(k);
    EXPECT_NEAR(image.params[k], after.params[k], 1e-3 * sigma + 1e-9);
    EXPECT_NEAR(image.standardUncertainty(k), sigma, 2e-3 * sigma + 1e-9);
  }
}

TEST(Uncertainty, MovesReportsAsThePointsAreMoved) {
  const auto at = [](omReal64 r, omReal64 t, omReal64 z) {
    return std::array<omReal64, 3>{r * std::cos(t), r * std::sin(t), z};
  };
  expectEquivariant<Cylinder3d<omReal64>>(fitCylinder, [&](omReal64 t, omReal64 z) { return at(2, t, 3 * z); });
  expectEquivariant<Cone3d<omReal64>>(fitCone, [&](omReal64 t, omReal64 z) { return at(4 + z, t, 2 * z); });
  expectEquivariant<Torus3d<omReal64>>(
      fitTorus, [&](omReal64 t, omReal64 z) { return at(5 + std::cos(7 * z), t, std::sin(7 * z)); });
  expectEquivariant<Line3d>(fitLine, [&](omReal64, omReal64 z) { return at(0, 0, 9 * z); });
  expectEquivariant<Circle3d<omReal64>>(fitCircle, [&](omReal64 t, omReal64) { return at(2, t, 0); });
}

TEST(Uncertainty, RefusesWhatHasNoneAndKeepsWhatIsUnknown) {
  const Uncertain circle("Circle2d", {0, 0, 2}), sphere("Sphere3d", {0, 0, 0, 2}), line("Line2d", {1, 0});
  UncertainValue value{1, 2};
  FitReport image;
  EXPECT_FALSE(volume(circle.report, value));
  EXPECT_FALSE(area(line.report, value));
  EXPECT_FALSE(distance(circle.report, sphere.report, value));
  EXPECT_FALSE(distance(circle.report, line.report, value));
  EXPECT_FALSE(area(FitReport(), value));
  EXPECT_FALSE(transformed(sphere.report, RigidTransform2d(), image));
  EXPECT_FALSE(transformed(circle.report, HomographyTransform2d(), image));
  const Uncertain cylinder("Cylinder3d", {0, 0, 0, 0, 0, 1, 2}), cone("Cone3d", {0, 0, 0, 0, 0, 1, 0.5});
  const Uncertain arc("Arc2d", {9, 0, 2});
  const BoolResult open = volume(cylinder.report, value);
  EXPECT_EQ(open.getMessage(), "A \"Cylinder3d\" is fitted without its ends, on which its volume depends");
  EXPECT_FALSE(open);
  EXPECT_FALSE(area(cone.report, value));
  EXPECT_FALSE(perimeter(arc.report, value));
  EXPECT_FALSE(distance(arc.report, circle.report, value));
  EXPECT_FALSE(distance(sphere.report, cylinder.report, value));
  // A direction that is none.
  const Uncertain flat("Torus3d", {0, 0, 9, 0, 0, 0, 2, 1});
  EXPECT_FALSE(area(flat.report, value));
  EXPECT_EQ(value.value, 1);
  // Parallel by chance.
  const Uncertain plan("Plan3d", {0, 0, 1, 4}), across("Line3d", {0, 0, 1, 1, 0, 0});
  ASSERT_TRUE(distance(plan.report, across.report, value));
  EXPECT_NEAR(value.value, 3, 1e-14);
  EXPECT_TRUE(std::isnan(value.standardUncertainty));
  FitReport unknown = circle.report;
  std::fill(unknown.covariance.begin(), unknown.covariance.end(), s_nan);
  ASSERT_TRUE(area(unknown, value));
  EXPECT_NEAR(value.value, 4 * s_pi, 1e-14);
  EXPECT_TRUE(std::isnan(value.standardUncertainty));
  FitReport exact = circle.report;
  exact.covariance = {0, 0, 0, 0, 0, 0, 0, 0, 0.0001};
  ASSERT_TRUE(area(exact, value));
  EXPECT_NEAR(value.standardUncertainty, 4 * s_pi * 0.01, 1e-12) << "a square is exact";
  ASSERT_TRUE(transformed(exact, SimilarityTransform2d(3, 1, 5, 6), image));
  EXPECT_NEAR(image.standardUncertainty(2), 0.03, 1e-12);
  // Far from the origin, and far below a rounding of a sixteenth of it.
  exact.params = {1e9, -1e9, 1};
  exact.covariance = {1e-18, 0, 0, 0, 1e-18, 0, 0, 0, 1e-18};
  ASSERT_TRUE(transformed(exact, TranslationTransform2d(1, 1), image));
  EXPECT_NEAR(image.standardUncertainty(0), 1e-9, 1e-13);
}

}  // namespace
