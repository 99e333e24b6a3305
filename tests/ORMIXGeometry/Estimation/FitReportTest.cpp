// Fits that answer a report: that uncertainties are those of repeated measurements, and what weights, losses, offsets
// and scales do.

#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Estimation/2d/Fit2d.h>
#include <ORMIXGeometry/Estimation/3d/Fit3d.h>
#include <ORMIXGeometry/Estimation/AxesModel.h>
#include <ORMIXGeometry/Estimation/PlaneModel.h>
#include <ORMIXGeometry/Estimation/SphereModel.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXMath/Estimation/RobustEstimation.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <functional>

#include "support/EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

// -- models

/// The derivatives of a model at a state are those of differences, of distances and of what is reported.
template <class Model>
void expectDerivatives(const Model& model, const DistanceModel::State& state, std::size_t dimension,
                       const Values& points, bool isReportSmooth = true) {
  constexpr omReal64 h = 1e-5;
  constexpr std::size_t nbRows = DistanceBlock::s_nbRows;
  const std::size_t nb = model.nbSamples, n = model.nbUnknowns;
  Values distances(nbRows), derivatives(9 * nbRows), normals(3 * nbRows), sides[2] = {distances, distances};
  model.evaluate(state, 0, nb, {distances.data(), derivatives.data(), normals.data(), nullptr});
  Values params(9), jacobian(81), reported[2] = {params, params};
  model.report(state, params.data(), jacobian.data());
  for (std::size_t k = 0; k < n; ++k) {
    for (int side = 0; side < 2; ++side) {
      DistanceModel::Step step{};
      step[k] = side == 0 ? -h : h;
      DistanceModel::State moved;
      ASSERT_TRUE(model.move(state, step, moved));
      model.evaluate(moved, 0, nb, {sides[side].data(), nullptr, nullptr, nullptr});
      Values unused(81);
      model.report(moved, reported[side].data(), unused.data());
    }
    for (std::size_t i = 0; i < nb; ++i)
      EXPECT_NEAR(derivatives[k * nbRows + i], (sides[1][i] - sides[0][i]) / (2 * h), 1e-6) << "unknown " << k;
    for (std::size_t i = 0; isReportSmooth && i < model.nbReported; ++i) {
      const omReal64 slope = (reported[1][i] - reported[0][i]) / (2 * h);
      EXPECT_NEAR(jacobian[i * n + k], slope, 1e-6 * (1 + std::abs(slope))) << i << " by " << k;
    }
  }
  for (std::size_t d = 0; d < dimension; ++d) {
    for (int side = 0; side < 2; ++side) {
      Values shifted = points;
      for (std::size_t i = 0; i < nb; ++i) shifted[dimension * i + d] += (side == 0 ? -h : h) * model.unit;
      Model other = model;
      other.use(viewOf(shifted, dimension));
      other.evaluate(state, 0, nb, {sides[side].data(), nullptr, nullptr, nullptr});
    }
    for (std::size_t i = 0; i < nb; ++i)
      EXPECT_NEAR(normals[d * nbRows + i], (sides[1][i] - sides[0][i]) / (2 * h), 1e-6);
  }
}

TEST(DistanceModels, HaveTheDerivativesOfDifferences) {
  Random random(71);
  for (int trial = 0; trial < 20; ++trial) {
    Values planar, spatial;
    for (int i = 0; i < 100; ++i) planar.push_back(3 * random.uniform());
    for (int i = 0; i < 150; ++i) spatial.push_back(3 * random.uniform());
    const SampleView in2d = viewOf(planar, 2), in3d = viewOf(spatial, 3);
    geom::detail::SphereModel<2> circle(in2d);
    expectDerivatives(circle, circle.stateOf({0.25, random.uniform()}, 1.5), 2, planar);
    geom::detail::SphereModel<3> sphere(in3d);
    expectDerivatives(sphere, sphere.stateOf({0.25, random.uniform(), -0.5}, 1.5), 3, spatial);
    const omReal64 angle = random.uniform(0.1, 1.5), co = std::cos(angle), si = std::sin(angle);
    geom::detail::PlaneModel<2> line(in2d);
    expectDerivatives(line, line.stateOf({co, si}, {1.5, 1}), 2, planar);
    geom::detail::PlaneModel<3> plan(in3d);
    expectDerivatives(plan, plan.stateOf({0.6 * co, 0.6 * si, 0.8}, {0.5, 1.5, 1}), 3, spatial);
    // Also with equal radii, whose order and axes jump; not of points near the evolute, where the nearest point jumps.
    const omReal64 larger = trial % 2 ? 1.6 : 1.4;
    Values near2d, near3d;
    for (int i = 0; i < 50; ++i) {
      const omReal64 t = random.uniform(0, 6), z = random.uniform(), r = std::sqrt(1 - z * z);
      const omReal64 far = random.uniform(1.2, 2.2);
      near2d.insert(near2d.end(), {far * std::cos(t), far * std::sin(t)});
      near3d.insert(near3d.end(), {far * r * std::cos(t), far * r * std::sin(t), far * z});
    }
    geom::detail::AxesModel<2> ellipse(viewOf(near2d, 2));
    expectDerivatives(ellipse, ellipse.stateOf({0.1, 0.05}, {larger, 1.4}, {{{co, si}, {-si, co}}}), 2, near2d,
                      larger > 1.4);
    const RotationMatrix matrix = eulerToMatrix(random.uniform(), random.uniform(), random.uniform());
    geom::detail::AxesModel<3>::Axes axes;
    for (std::size_t k = 0; k < 3; ++k)
      for (std::size_t d = 0; d < 3; ++d) axes[k][d] = matrix[d][k];
    geom::detail::AxesModel<3> ellipsoid(viewOf(near3d, 3));
    expectDerivatives(ellipsoid, ellipsoid.stateOf({0.1, 0.05, 0}, {1.8, larger, 1.4}, axes), 3, near3d, larger > 1.4);
  }
}

// -- Monte Carlo

using Draw = std::function<void(Random&, omReal64 sigma, Values& points)>;
using Fit = std::function<BoolResult(const SampleView&, const FitOptions&, FitReport&)>;

/// A shape that is measured again and again, its true parameters, and those that are checked together.
struct Shape {
  std::string name;
  std::size_t dimension, nbPoints;
  Fit fit;
  Draw draw;
  Values truth;
  std::vector<std::size_t> checked;
};

template <class Entity>
Fit fitBy(BoolResult (*fit)(const SampleView&, const FitOptions&, Entity&, FitReport&)) {
  return [fit](const SampleView& samples, const FitOptions& options, FitReport& report) {
    Entity entity;
    return fit(samples, options, entity, report);
  };
}

/// Points on an ellipse about (3, 4) with its larger radius 1, from -degrees/2 to degrees/2 about the larger axis.
Draw onEllipse(omReal64 degrees, omReal64 minor, omReal64 theta) {
  return [=](Random& random, omReal64 sigma, Values& points) {
    const omReal64 t = degrees / 360 * random.uniform(-s_pi, s_pi);
    const omReal64 x = std::cos(t), y = minor * std::sin(t);
    points.push_back(3 + x * std::cos(theta) - y * std::sin(theta) + sigma * random.noise());
    points.push_back(4 + x * std::sin(theta) + y * std::cos(theta) + sigma * random.noise());
  };
}

/// The same of an ellipsoid along the axes of the coordinates, or the part of it above a height.
Draw onEllipsoid(std::array<omReal64, 3> radii, omReal64 lowest) {
  return [=](Random& random, omReal64 sigma, Values& points) {
    const omReal64 z = random.uniform(lowest, 1), t = random.uniform(0, 2 * s_pi), r = std::sqrt(1 - z * z);
    const omReal64 unit[3] = {r * std::cos(t), r * std::sin(t), z};
    for (std::size_t d = 0; d < 3; ++d) points.push_back(3 + radii[d] * unit[d] + sigma * random.noise());
  };
}

std::vector<Shape> shapes() {
  std::vector<Shape> all;
  for (const int degrees : {360, 90, 60, 30})
    all.push_back({"circle, " + std::to_string(degrees) + " degrees",
                   2,
                   100,
                   fitBy<Circle2d<omReal64>>(fitCircle),
                   onEllipse(degrees, 1, 0),
                   {3, 4, 1},
                   {0, 1, 2}});
  all.push_back({"sphere",
                 3,
                 100,
                 fitBy<Sphere3d<omReal64>>(fitSphere),
                 onEllipsoid({1, 1, 1}, 0.5),
                 {3, 3, 3, 1},
                 {0, 1, 2, 3}});
  for (const int degrees : {360, 200})
    all.push_back({"ellipse, " + std::to_string(degrees) + " degrees",
                   2,
                   100,
                   fitBy<Ellipse2d<omReal64>>(fitEllipse),
                   onEllipse(degrees, 0.5, 0.7),
                   {3, 4, 1, 0.5, 0.7},
                   {0, 1, 2, 3, 4}});
  all.push_back({"ellipsoid",
                 3,
                 200,
                 fitBy<Ellipsoid3d<omReal64>>(fitEllipsoid),
                 onEllipsoid({1, 0.7, 0.5}, -1),
                 {3, 3, 3, 1, 0.7, 0.5, 0, 0, 0},
                 {0, 1, 2, 3, 4, 5, 6, 7, 8}});
  all.push_back({"line",
                 2,
                 50,
                 fitBy<Line2d>(fitLine),
                 [](Random& random, omReal64 sigma, Values& points) {
                   const omReal64 t = random.uniform();
                   points.insert(points.end(), {3 + sigma * random.noise(), 5 + t + sigma * random.noise()});
                 },
                 {3, 0},
                 {0, 1}});
  all.push_back({"plane",
                 3,
                 50,
                 fitBy<Plan3d>(fitPlan),
                 [](Random& random, omReal64 sigma, Values& points) {
                   points.insert(points.end(), {5 + random.uniform(), random.uniform(), 3 + sigma * random.noise()});
                 },
                 {0, 0, 1, 3},
                 {0, 1, 3}});
  return all;
}

/// The squared length of a difference by a covariance.
omReal64 mahalanobis(Values covariance, Values difference) {
  const std::size_t n = difference.size();
  omReal64 sum = 0;
  for (std::size_t j = 0; j < n; ++j) {
    const omReal64 pivot = covariance[j * n + j];
    sum += difference[j] * difference[j] / pivot;
    for (std::size_t i = j + 1; i < n; ++i) {
      const omReal64 factor = covariance[i * n + j] / pivot;
      difference[i] -= factor * difference[j];
      for (std::size_t k = j; k < n; ++k) covariance[i * n + k] -= factor * covariance[j * n + k];
    }
  }
  return sum;
}

/// Fits each shape to new measurements, and compares the standard deviations that are reported with those of what was
/// found, and how often the truth is in the region of 95 %.
void compareWithTrials(int nbTrials, omReal64 tolerance, omReal64 coverageTolerance) {
  // Quantiles of chi-squared by the number of parameters.
  const omReal64 quantile[] = {0, 3.841, 5.991, 7.815, 9.488, 11.070, 12.592, 14.067, 15.507, 16.919};
  constexpr omReal64 sigma = 1.0 / 500;
  for (const Shape& shape : shapes())
    for (const eFitMethod method : {eFM_Orthogonal, eFM_Algebraic}) {
      SCOPED_TRACE(shape.name + ", " + toString(method));
      Random random(4109);
      const std::size_t n = shape.checked.size();
      Values sum(n), squares(n), predicted(n);
      int nbInside = 0;
      FitOptions options;
      options.method = method;
      for (int trial = 0; trial < nbTrials; ++trial) {
        Values points, difference(n);
        for (std::size_t i = 0; i < shape.nbPoints; ++i) shape.draw(random, sigma, points);
        FitReport report;
        ASSERT_TRUE(shape.fit(viewOf(points, shape.dimension), options, report));
        Values covariance = report.marginal(shape.checked);
        for (std::size_t k = 0; k < n; ++k) {
          difference[k] = report.params[shape.checked[k]] - shape.truth[shape.checked[k]];
          sum[k] += difference[k];
          squares[k] += difference[k] * difference[k];
          predicted[k] += covariance[k * n + k];
        }
        for (omReal64& value : covariance) value *= sigma * sigma / (report.sigma0 * report.sigma0);
        nbInside += mahalanobis(covariance, difference) <= quantile[n];
      }
      for (std::size_t k = 0; k < n; ++k) {
        const omReal64 real = std::sqrt((squares[k] - sum[k] * sum[k] / nbTrials) / nbTrials);
        EXPECT_NEAR(std::sqrt(predicted[k] / nbTrials) / real, 1, tolerance) << "parameter " << shape.checked[k];
      }
      // Where the algebraic fit is biased by more than its noise, no region is right.
      if (method == eFM_Algebraic && shape.name == "circle, 30 degrees") continue;
      EXPECT_NEAR(1.0 * nbInside / nbTrials, 0.95, coverageTolerance);
    }
}

// docs/accuracy.md says what this holds. Not optimised, many trials take minutes.
TEST(FitReports, HaveTheUncertaintyOfTrials) {
#ifdef NDEBUG
  compareWithTrials(4000, 0.05, 0.02);
#else
  compareWithTrials(120, 0.22, 0.06);
#endif
}

TEST(FitReports, OrthogonalCirclesDoNotCollapseOnShortArcs) {
  const struct { omReal64 degrees, algebraic, orthogonal; } rows[] = {{45, 0.84, 0.996}, {30, 0.52, 1.05}};
  for (const auto& row : rows) {
    Random random(30);
    omReal64 sums[2] = {0, 0};
    constexpr int nbTrials = 150;
    for (int trial = 0; trial < nbTrials; ++trial) {
      Values points;
      for (int i = 0; i < 100; ++i) onEllipse(row.degrees, 1, 0)(random, 0.01, points);
      for (const eFitMethod method : {eFM_Algebraic, eFM_Orthogonal}) {
        FitOptions options;
        options.method = method;
        Circle2d<omReal64> circle;
        FitReport report;
        ASSERT_TRUE(fitCircle(viewOf(points, 2), options, circle, report));
        EXPECT_EQ(report.method, method);
        sums[method] += circle.getRadius() / nbTrials;
      }
    }
    EXPECT_NEAR(sums[eFM_Algebraic], row.algebraic, 0.05);
    EXPECT_NEAR(sums[eFM_Orthogonal], row.orthogonal, 0.05);
  }
}

// -- places, weights, losses

TEST(FitReports, AreTheSameAtAllScalesAndPlaces) {
  for (const Shape& shape : shapes())
    for (const omReal64 scale : {1e-6, 1e6, 1.0}) {
      SCOPED_TRACE(shape.name + ", scale " + std::to_string(scale));
      const omReal64 offset = scale == 1 ? 1e9 : 0;
      Random random(9);
      Values points;
      for (std::size_t i = 0; i < shape.nbPoints; ++i) shape.draw(random, 0.002, points);
      Values moved = points;
      for (omReal64& value : moved) value = scale * value + offset;
      FitReport report, ofMoved;
      ASSERT_TRUE(shape.fit(viewOf(points, shape.dimension), {}, report));
      ASSERT_TRUE(shape.fit(viewOf(moved, shape.dimension), {}, ofMoved));
      // Rounding of coordinates at the offset is 1e-7.
      const omReal64 tolerance = offset > 0 ? 1e-4 : 1e-8;
      EXPECT_NEAR(ofMoved.sigma0 / scale, report.sigma0, tolerance * report.sigma0);
      EXPECT_EQ(ofMoved.rank, report.rank);
      EXPECT_EQ(ofMoved.degreesOfFreedom, report.degreesOfFreedom);
      for (const char* length : {"radius", "major radius", "minor radius"})
        for (std::size_t i = 0; i < report.params.size(); ++i) {
          if (report.parameterNames[i] != length) continue;
          EXPECT_NEAR(ofMoved.params[i] / scale, report.params[i], tolerance * 0.01);
          EXPECT_NEAR(ofMoved.standardUncertainty(i) / scale / report.standardUncertainty(i), 1, 30 * tolerance);
        }
    }
}

struct WeightedFits : ::testing::Test {
  void SetUp() override {
    Random random(5);
    for (int i = 0; i < 60; ++i) onEllipse(360, 0.5, 0.7)(random, 0.002, points);
  }
  FitReport fitted(const FitOptions& options) {
    FitReport report;
    EXPECT_TRUE(fitEllipse(viewOf(points, 2), options, ellipse, report));
    return report;
  }
  static void expectSame(const FitReport& a, const FitReport& b, omReal64 tolerance) {
    for (std::size_t i = 0; i < 5; ++i) {
      EXPECT_NEAR(a.params[i], b.params[i], tolerance);
      EXPECT_NEAR(a.standardUncertainty(i) / b.standardUncertainty(i), 1, 1000 * tolerance);
    }
  }
  Values points;
  Ellipse2d<omReal64> ellipse;
};

TEST_F(WeightedFits, CountSamplesAsOftenAsTheirWeightSays) {
  Values weights(60, 1), covariances;
  weights[3] = 3;
  weights[7] = 0;
  FitOptions options;
  options.sigma = 0.002;
  options.weights = viewOf(weights, 1);
  const FitReport weighted = fitted(options);
  EXPECT_EQ(weighted.weights, weights);
  EXPECT_EQ(weighted.degreesOfFreedom, 54u);
  const Values all = points;
  points.erase(points.begin() + 14, points.begin() + 16);
  points.insert(points.end(), {all[6], all[7], all[6], all[7]});
  options.weights = {};
  expectSame(weighted, fitted(options), 1e-9);
  // The same by covariances; the sample that is left out is nearly so by a large one.
  points = all;
  for (const omReal64 weight : weights) {
    const omReal64 variance = 0.002 * 0.002 / (weight > 0 ? weight : 1e-12);
    covariances.insert(covariances.end(), {variance, 0, 0, variance});
  }
  options.sigma = 1;
  options.weights = viewOf(covariances, 4);
  expectSame(weighted, fitted(options), 1e-9);
}

TEST_F(WeightedFits, ByTheNormalVarianceOfEachSample) {
  // All along x or y only, so that a line across x is found as by samples of the variance along x.
  Random random(6);
  Values onLine, covariances;
  for (int i = 0; i < 400; ++i) {
    const omReal64 u = i % 2 ? 0.01 : 0.04;
    onLine.insert(onLine.end(), {3 + u * random.noise(), 10 * random.uniform() + random.noise()});
    covariances.insert(covariances.end(), {u * u, 0, 0, 1});
  }
  FitOptions options;
  options.weights = viewOf(covariances, 4);
  Line2d line;
  FitReport report;
  ASSERT_TRUE(fitLine(viewOf(onLine, 2), options, line, report));
  EXPECT_NEAR(report.sigma0, 1, 0.1);
  EXPECT_NEAR(report.standardUncertainty(0), 1 / std::sqrt(200 / 1e-4 + 200 / 16e-4), 0.002);
  EXPECT_LT(std::abs(line.getTheta()), 4 * report.standardUncertainty(1));
}

TEST_F(WeightedFits, LossesResistOutliersAndCostLittleWithoutThem) {
  const FitReport squares = fitted({});
  const Values clean = points;
  for (const eLoss loss : {eLS_Huber, eLS_Tukey, eLS_Welsch, eLS_Cauchy}) {
    SCOPED_TRACE(loss);
    FitOptions options;
    options.loss = loss;
    points = clean;
    const FitReport report = fitted(options);
    for (std::size_t i = 0; i < 5; ++i) {
      EXPECT_NEAR(report.params[i], squares.params[i], squares.standardUncertainty(i));
      EXPECT_NEAR(report.standardUncertainty(i) / squares.standardUncertainty(i), 1, 0.4);
    }
    for (std::size_t i = 0; i < 60; i += 12) points[2 * i] += 0.05;
    const FitReport resisting = fitted(options);
    for (std::size_t i = 0; i < 5; ++i)
      EXPECT_NEAR(resisting.params[i], squares.params[i], 4 * squares.standardUncertainty(i));
    EXPECT_NEAR(resisting.sigma0, 0.002, 0.0015);
    EXPECT_LT(resisting.weights[12], 0.5);
  }
}

TEST_F(WeightedFits, LeaveOutWhatTheRobustLoopCallsOutliers) {
  for (std::size_t i = 0; i < 60; i += 4) points[2 * i] += 1 + 0.01 * static_cast<omReal64>(i);
  RobustOptions robust;
  robust.threshold = 0.01;
  FitOptions options;
  options.robust = &robust;
  const FitReport report = fitted(options);
  for (std::size_t i = 0; i < 60; ++i) {
    EXPECT_EQ(report.inliers[i], i % 4 != 0) << i;
    EXPECT_EQ(report.weights[i], i % 4 != 0 ? 1 : 0);
    EXPECT_EQ(std::abs(report.residuals[i]) < 0.01, i % 4 != 0);
  }
  EXPECT_NEAR(report.params[2], 1, 5 * report.standardUncertainty(2));
}

// -- failures and texts

TEST_F(WeightedFits, FailWithAStatusAndChangeNothing) {
  const auto expectStatus = [&](const FitOptions& options, eEstimationCode code, const std::vector<std::size_t>& who) {
    Ellipse2d<omReal64> kept({1, 2}, 5, 3, 0.25);
    FitReport report;
    const BoolResult result = fitEllipse(viewOf(points, 2), options, kept, report);
    EXPECT_FALSE(result);
    EXPECT_EQ(report.status.code, code) << report.status;
    EXPECT_EQ(report.status.indices, who);
    EXPECT_EQ(report.status.message, result.getMessage());
    EXPECT_FALSE(report.status.advice.empty());
    EXPECT_TRUE(report.params.empty() && report.residuals.empty());
    EXPECT_EQ(kept.getTheta(), 0.25);
  };
  Values weights(60, 1), covariances(240, 1);
  weights[5] = -1;
  weights[9] = s_nan;
  FitOptions options;
  options.weights = viewOf(weights, 1);
  expectStatus(options, eEC_InvalidInput, {5, 9});
  options.weights.nbSamples = 59;
  expectStatus(options, eEC_InvalidInput, {});
  covariances[1] = covariances[2] = 0.5;
  options.weights = viewOf(covariances, 4);
  options.weights.nbSamples = 1;
  points.resize(2);
  covariances[1] = 0.25;
  expectStatus(options, eEC_InvalidInput, {0});
  expectStatus({}, eEC_TooFewSamples, {});
  points = {0, 0, 1, 0, 2, 0, 3, s_nan, 4, 0, s_infinity, 1};
  expectStatus({}, eEC_InvalidInput, {3, 5});
  SetUp();
  points.erase(points.begin(), points.begin() + 12);
  options = {};
  options.progress = [](omReal64) { return false; };
  expectStatus(options, eEC_Stopped, {});
  options = {};
  options.nbMaxIterations = 1;
  expectStatus(options, eEC_NoConvergence, {});
}

TEST(FitReports, PrintAsManyDigitsAsTheyKnow) {
  EXPECT_EQ(withUncertainty(4.1093, 0.0155), "4.109 ± 0.031 (k = 2)");
  EXPECT_EQ(withUncertainty(4.1093, 0.0498), "4.11 ± 0.10 (k = 2)");
  EXPECT_EQ(withUncertainty(123456, 617), "123500 ± 1200 (k = 2)");
  EXPECT_EQ(withUncertainty(-0.0001, 0.01), "0.000 ± 0.020 (k = 2)");
  EXPECT_EQ(withUncertainty(4e-12, 3e-15), "(4.0000 ± 0.0060)e-12 (k = 2)");
  EXPECT_EQ(withUncertainty(2, 0, 3), "2 ± 0 (k = 3)");
  EXPECT_EQ(withUncertainty(3, s_nan), "3 ± unknown");
  EXPECT_EQ(withUncertainty(3, -1), "3 ± unknown");
  EXPECT_EQ(withUncertainty(3, 5e-16), "3.0000000000000000 ± 0.0000000000000010 (k = 2)");
  FitReport report;
  EXPECT_EQ(toString(report), "nothing fitted, eFM_Orthogonal");
  Circle2d<omReal64> circle;
  const Values three{1, 0, 0, 1, -1, 0};
  ASSERT_TRUE(fitCircle(viewOf(three, 2), {}, circle, report));
  EXPECT_NE(toString(report).find("\nradius 1 ± unknown\n"), std::string::npos) << report;
  EXPECT_THROW(report.standardUncertainty(3), ORMIXGeometryException);
  EXPECT_THROW(report.indexOf("rho"), ORMIXGeometryException);
  EXPECT_EQ(report.indexOf("radius"), 2u);
}

}  // namespace
