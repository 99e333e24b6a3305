// Transforms and points of lines with a report: what it predicts is what repeated measurements show.

#include <ORMIXGeometry/ORMIXGeometry.h>
#include <ORMIXMath/Algebra/SvdSolve.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <functional>
#include <map>

#include "support/EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;

#ifndef ORMIX_NB_TRIALS
#define ORMIX_NB_TRIALS 150
#endif
constexpr int s_nbTrials = ORMIX_NB_TRIALS;

/// A number whose distribution is normal to five standard deviations.
omReal64 normal(Random& random) {
  const omReal64 radius = std::sqrt(-2 * std::log(random.uniform(1e-12, 1)));
  return radius * std::cos(2 * s_pi * random.uniform(0, 1));
}

/// A covariance with the squared root in a row and column order.
Values anyCovariance(std::size_t m, omReal64 sigma, Random& random, Values& root) {
  root.assign(m * m, 0);
  for (std::size_t r = 0; r < m; ++r)
    for (std::size_t c = 0; c <= r; ++c)
      root[r * m + c] = sigma * (r == c ? random.uniform(0.5, 1.5) : random.uniform(-0.5, 0.5));
  Values covariance(m * m, 0);
  for (std::size_t r = 0; r < m; ++r)
    for (std::size_t c = 0; c < m; ++c)
      for (std::size_t k = 0; k < m; ++k) covariance[r * m + c] += root[r * m + k] * root[c * m + k];
  return covariance;
}

using Fit = std::function<BoolResult(const SampleView&, const FitOptions&, FitReport&)>;

template <class Transform, class Function>
Fit fitBy(Function function) {
  return [=](const SampleView& samples, const FitOptions& options, FitReport& report) {
    Transform transform;
    return function(samples, options, transform, report);
  };
}

/// A model with its true parameters and exact samples.
struct Case {
  const char* name;
  std::size_t m;  ///< values of a sample
  std::size_t n;  ///< parameters that a region is formed of
  Values exact;
  Values truth;
  Fit fit;
};

template <class Transform2, class Transform3, class Fit2, class Fit3>
void addCases(std::vector<Case>& cases, const char* name, const Transform2& planar, const Values& planarTruth,
              std::size_t n2, const Transform3& spatial, const Values& spatialTruth, std::size_t n3, Fit2 fit2,
              Fit3 fit3) {
  Random random(7);
  Values plane, space;
  for (int i = 0; i < 24; ++i) {
    const omReal64 x = random.uniform(-3, 5), y = random.uniform(-4, 4), z = random.uniform(1, 6);
    omReal64 u, v, w;
    ASSERT_TRUE(planar.apply(x, y, u, v));
    plane.insert(plane.end(), {x, y, u, v});
    ASSERT_TRUE(spatial.apply(x, y, z, u, v, w));
    space.insert(space.end(), {x, y, z, u, v, w});
  }
  cases.push_back({name, 4, n2, plane, planarTruth, fit2});
  cases.push_back({name, 6, n3, space, spatialTruth, fit3});
}

Values ofLengthOne(Values elements) {
  omReal64 square = 0;
  for (const omReal64 element : elements) square += element * element;
  for (omReal64& element : elements) element /= std::sqrt(square);
  return elements;
}

template <class Matrix>
Matrix matrixOf(const Values& elements, std::size_t side) {
  Matrix matrix(side, side);
  std::copy(elements.begin(), elements.end(), matrix.data().begin());
  return matrix;
}

std::vector<Case> allCases() {
  std::vector<Case> cases;
  using View = const SampleView&;
  using Options = const FitOptions&;
#define ORMIX_FIT(Name, D) \
  fitBy<Name##Transform##D##d>([](View s, Options o, auto& t, FitReport& r) { return fit##Name(s, o, t, r); })
  addCases(cases, "translation", Translation2d(3, -4), {3, -4}, 2, Translation3d(3, -4, 5), {3, -4, 5}, 3,
           ORMIX_FIT(Translation, 2), ORMIX_FIT(Translation, 3));
  addCases(cases, "rigid", Rigid2d(2, 3, -4), {2, 3, -4}, 3, Rigid3d(2, 0.7, -1, 3, -4, 5), {2, 0.7, -1, 3, -4, 5}, 6,
           ORMIX_FIT(Rigid, 2), ORMIX_FIT(Rigid, 3));
  addCases(cases, "similarity", Similarity2d(2.5, 2, 3, -4), {2.5, 2, 3, -4}, 4,
           Similarity3d(2.5, 2, 0.7, -1, 3, -4, 5), {2.5, 2, 0.7, -1, 3, -4, 5}, 7, ORMIX_FIT(Similarity, 2),
           ORMIX_FIT(Similarity, 3));
  const Values planar = ofLengthOne({1.2, 0.3, 2, -0.2, 0.9, -1, 0.03, -0.02, 1});
  const Values spatial = ofLengthOne({1.2, 0.3, 0.1, 2, -0.2, 0.9, 0.2, -1, 0.1, -0.3, 1.1, 3, 0.03, -0.02, 0.01, 1});
  addCases(cases, "homography", Homography2d(matrixOf<Matrix3x3>(planar, 3)), planar, 8,
           Homography3d(matrixOf<Matrix4x4>(spatial, 4)), spatial, 15, ORMIX_FIT(Homography, 2),
           ORMIX_FIT(Homography, 3));
#undef ORMIX_FIT
  Random random(9);
  Values lines;
  for (int i = 0; i < 24; ++i) {
    const omReal64 theta = random.uniform(-1, 2);
    lines.insert(lines.end(), {theta, 3 * std::cos(theta) - 4 * std::sin(theta)});
  }
  cases.push_back({"intersection", 2, 2, lines, {3, -4}, [](View samples, Options options, FitReport& report) {
                     Point2d<omReal64> point;
                     return fitIntersection(samples, options, point, report);
                   }});
  return cases;
}

/// How samples are measured and fitted.
enum eMode { eMD_Plain, eMD_Weights, eMD_Covariances, eMD_Tukey, eMD_Algebraic };

/// Repeats a measurement: the predicted standard deviation of each parameter against that of its values, and how often
/// the region of 95 % has the truth.
void expectTrueUncertainty(const Case& model, eMode mode) {
  SCOPED_TRACE(std::string(model.name) + " from " + std::to_string(model.m) + " values, mode " + std::to_string(mode));
  static const std::map<std::size_t, omReal64> quantiles{{2, 5.991},  {3, 7.815},  {4, 9.488},  {6, 12.592},
                                                         {7, 14.067}, {8, 15.507}, {15, 24.996}};
  constexpr omReal64 sigma = 0.008;
  Random random(100 + static_cast<unsigned>(model.m));
  const std::size_t nbSamples = model.exact.size() / model.m, n = model.truth.size();
  FitOptions options;
  Values weights, roots;
  for (std::size_t i = 0; i < nbSamples; ++i) {
    if (mode == eMD_Weights) weights.push_back(random.uniform(0.2, 4));
    if (mode != eMD_Covariances) continue;
    Values root;
    const Values covariance = anyCovariance(model.m, sigma, random, root);
    weights.insert(weights.end(), covariance.begin(), covariance.end());
    roots.insert(roots.end(), root.begin(), root.end());
  }
  options.sigma = mode == eMD_Covariances ? 1 : sigma;
  if (!weights.empty()) options.weights = {weights.data(), nbSamples, weights.size() / nbSamples};
  if (mode == eMD_Tukey) options.loss = eLS_Tukey;
  if (mode == eMD_Algebraic) options.method = eFM_Algebraic;
  Values predicted(n, 0), sums(n, 0), squares(n, 0);
  int nbInside = 0;
  for (int trial = 0; trial < s_nbTrials; ++trial) {
    Values measured = model.exact;
    for (std::size_t i = 0; i < nbSamples; ++i) {
      omReal64* sample = measured.data() + i * model.m;
      Values noise(model.m);
      for (omReal64& value : noise) value = normal(random);
      if (mode == eMD_Covariances) {
        for (std::size_t r = 0; r < model.m; ++r)
          for (std::size_t c = 0; c <= r; ++c) sample[r] += roots[(i * model.m + r) * model.m + c] * noise[c];
        continue;
      }
      const omReal64 spread = mode == eMD_Weights ? sigma / std::sqrt(weights[i]) : sigma;
      for (std::size_t r = model.m / 2; r < model.m; ++r) sample[r] += spread * noise[r];
    }
    FitReport report;
    const BoolResult result = model.fit(viewOf(measured, model.m), options, report);
    ASSERT_TRUE(result) << result.getMessage();
    ASSERT_EQ(report.params.size(), n);
    RealMatrix covariance(model.n, model.n);
    RealVector off(model.n), solved;
    for (std::size_t k = 0; k < n; ++k) {
      const omReal64 error = report.params[k] - model.truth[k];
      predicted[k] += report.covariance[k * (n + 1)];
      sums[k] += error;
      squares[k] += error * error;
      if (k >= model.n) continue;
      off(k) = error;
      for (std::size_t c = 0; c < model.n; ++c) covariance(k, c) = report.covariance[k * n + c];
    }
    std::size_t rank = 0;
    ASSERT_TRUE(svdSolve(covariance, off, solved, rank));
    ASSERT_EQ(rank, model.n);
    // M-estimators take the variance from the residuals: Fisher's quantile, expanded in the degrees of freedom.
    const omReal64 quantile = quantiles.at(model.n), p = static_cast<omReal64>(model.n);
    const omReal64 widened = 1 + (quantile - p + 2) / (2 * static_cast<omReal64>(report.degreesOfFreedom));
    nbInside += inner_prod(off, solved) <= quantile * (mode == eMD_Tukey ? widened : 1);
  }
  // Standard deviations of what is counted, four of them.
  const omReal64 few = 4 / std::sqrt(2.0 * s_nbTrials);
  const omReal64 tolerance = std::max(0.05, few);
  for (std::size_t k = 0; k < n; ++k) {
    const omReal64 ratio = std::sqrt(predicted[k] / (squares[k] - sums[k] * sums[k] / s_nbTrials));
    EXPECT_NEAR(ratio, 1, tolerance) << "parameter " << k;
  }
  const omReal64 inside = static_cast<omReal64>(nbInside) / s_nbTrials;
  EXPECT_NEAR(inside, 0.95, std::max(0.02, 4 * std::sqrt(0.95 * 0.05 / s_nbTrials)));
}

TEST(FitTransforms, PredictTheirUncertainty) {
  for (const Case& model : allCases())
    for (const eMode mode : {eMD_Plain, eMD_Weights, eMD_Covariances, eMD_Tukey, eMD_Algebraic})
      expectTrueUncertainty(model, mode);
}

TEST(FitTransforms, HoldAlphaAtGimbalLock) {
  // Turned by (alpha, pi / 2, chi): only chi - alpha is determined.
  Random random(31);
  const Rigid3d lock(0, s_pi / 2, 0.4, 1, 2, 3);
  Values pairs;
  for (int i = 0; i < 20; ++i) {
    const omReal64 x = random.uniform(), y = random.uniform(), z = random.uniform();
    omReal64 u, v, w;
    ASSERT_TRUE(lock.apply(x, y, z, u, v, w));
    pairs.insert(pairs.end(), {x, y, z, u, v, w});
  }
  RigidTransform3d transform;
  FitReport report;
  FitOptions options;
  options.sigma = 0.01;
  ASSERT_TRUE(fitRigid(viewOf(pairs, 6), options, transform, report));
  for (const omReal64 element : report.covariance) EXPECT_TRUE(std::isfinite(element));
  EXPECT_EQ(report.standardUncertainty(0), 0);
  EXPECT_GT(report.standardUncertainty(1), 1e-3);
  EXPECT_LT(report.standardUncertainty(1), 1e-2);
  EXPECT_GT(report.standardUncertainty(2), 1e-3);
  EXPECT_LT(report.standardUncertainty(2), 1e-2);
}

TEST(FitTransforms, KeepThePrescribedResultsAndLeaveOut) {
  for (const Case& model : allCases()) {
    SCOPED_TRACE(model.name);
    Random random(41);
    Values measured = model.exact;
    for (omReal64& value : measured) value += 0.01 * random.uniform();
    const std::size_t nb = measured.size() / model.m;
    FitReport all, some, robust;
    FitOptions algebraic;
    algebraic.method = eFM_Algebraic;
    ASSERT_TRUE(model.fit(viewOf(measured, model.m), algebraic, all));
    // A sample without a weight may be anything; so may an outlier.
    Values more = measured, weights(nb, 1);
    more.insert(more.end(), model.m, s_nan);
    weights.push_back(0);
    FitOptions options;
    ASSERT_TRUE(model.fit(viewOf(measured, model.m), options, all));
    options.weights = viewOf(weights, 1);
    ASSERT_TRUE(model.fit(viewOf(more, model.m), options, some));
    RobustOptions loop;
    loop.threshold = 0.2;
    FitOptions withLoop;
    withLoop.robust = &loop;
    std::fill(more.end() - static_cast<std::ptrdiff_t>(model.m), more.end(), 40);
    ASSERT_TRUE(model.fit(viewOf(more, model.m), withLoop, robust));
    EXPECT_FALSE(robust.inliers.back());
    EXPECT_EQ(robust.weights.back(), 0);
    EXPECT_GT(std::abs(robust.residuals.back()), 1);
    for (std::size_t k = 0; k < all.params.size(); ++k) {
      EXPECT_NEAR(some.params[k], all.params[k], 1e-12);
      EXPECT_NEAR(robust.params[k], all.params[k], 1e-12);
      EXPECT_NEAR(some.standardUncertainty(k), all.standardUncertainty(k), 1e-9 * all.standardUncertainty(k));
    }
    // The estimator's own result, where that has least distances.
    if (std::string(model.name) == "rigid" && model.m == 6) {
      RigidTransform3d prescribed, fitted;
      ASSERT_TRUE(fitRigid(viewOf(measured, 6), prescribed));
      ASSERT_TRUE(fitRigid(viewOf(measured, 6), FitOptions(), fitted, all));
      EXPECT_EQ(valuesOf(prescribed.getGeometricTransform().getParams()),
                valuesOf(fitted.getGeometricTransform().getParams()));
    }
    // Without degrees of freedom or with options that are none the report says so.
    weights[0] = -1;
    EXPECT_FALSE(model.fit(viewOf(more, model.m), options, some));
    EXPECT_EQ(some.status.code, eEC_InvalidInput);
    EXPECT_EQ(some.status.indices, std::vector<std::size_t>{0});
    EXPECT_TRUE(some.params.empty());
  }
}

TEST(FitTransforms, AreAsSureAtEveryScaleAndPlace) {
  for (const Case& model : allCases()) {
    if (model.m == 2) continue;
    SCOPED_TRACE(model.name);
    Random random(43);
    Values measured = model.exact;
    for (omReal64& value : measured) value = std::round((value + 0.01 * random.uniform()) * 0x1p18) * 0x1p-18;
    FitReport near, far;
    ASSERT_TRUE(model.fit(viewOf(measured, model.m), FitOptions(), near));
    for (const omReal64 scale : {0x1p-12, 0x1p20})
      for (const omReal64 offset : {0.0, 0x1p30}) {
        Values moved = measured;
        for (omReal64& value : moved) value = (value + offset) * scale;
        const BoolResult result = model.fit(viewOf(moved, model.m), FitOptions(), far);
        ASSERT_TRUE(result) << result.getMessage();
        EXPECT_NEAR(far.sigma0 / scale, near.sigma0, 1e-6 * near.sigma0) << scale << " " << offset;
        EXPECT_NEAR(far.conditionNumber, near.conditionNumber, 1e-5 * near.conditionNumber);
      }
  }
}

}  // namespace
