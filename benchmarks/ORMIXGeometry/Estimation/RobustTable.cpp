#include <ORMIXGeometry/Estimation/2d/Arc2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Circle2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Ellipse2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/HomographyTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Line2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Line2dIntersectionEstimator.h>
#include <ORMIXGeometry/Estimation/2d/RigidTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/SimilarityTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/TranslationTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Circle3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Cone3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Cylinder3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Ellipsoid3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/HomographyTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Line3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Plan3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/RigidTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/SimilarityTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Sphere3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Torus3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/TranslationTransform3dEstimator.h>
#include <ORMIXMath/Estimation/RobustEstimation.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXUtil/Enumeration.h>

#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <iomanip>
#include <iostream>
#include <memory>
#include <random>
#include <string>

/// \file
/// How often robust loops are right: for each model and share of outliers, with the threshold given and not, how many
/// of many runs end near the fit to the inliers alone, how far from it, how many are confident, rightly and wrongly.
///
///     ormix_robust_table [RUNS [MODEL|all [METHOD [SAMPLES [ITERATIONS [PERCENT]]]]]]

namespace ormix::benchmarks {
namespace {

using namespace ormix::geom;
using Values = std::vector<omReal64>;

/// Numbers in a cube of side 1000, and normally distributed ones.
class Random {
 public:
  explicit Random(unsigned seed) : _engine(seed) {}
  omReal64 uniform(omReal64 low, omReal64 high) {
    return low + (high - low) * (static_cast<omReal64>(_engine()) / 4294967296.0);
  }
  omReal64 anywhere() { return uniform(0, 1000); }
  omReal64 normal() {
    const omReal64 length = std::sqrt(-2 * std::log1p(-uniform(0, 1)));
    return length * std::cos(uniform(0, 2 * s_pi));
  }
  /// A point of the unit sphere.
  Values direction() {
    const omReal64 z = uniform(-1, 1), angle = uniform(0, 2 * s_pi), r = std::sqrt(1 - z * z);
    return {r * std::cos(angle), r * std::sin(angle), z};
  }

 private:
  std::mt19937 _engine;
};

struct Model {
  std::string name;
  std::unique_ptr<BaseEstimator> estimator;
  std::size_t codimension;
  std::function<Values(Random&)> onModel;
  std::size_t firstNoisy = 0;  ///< errors are added from this value of a sample on
  omReal64 lastLow = 0;        ///< the last value of an outlier is uniform from here
};

/// A model of points of which `onModel` draws some.
template <class Estimator, class OnModel>
Model points(const char* name, OnModel onModel) {
  return {name, std::make_unique<Estimator>(), 1, onModel};
}

/// A model of pairs: a source anywhere and its image.
template <class Estimator, std::size_t D, class Map>
Model pairs(const char* name, Map map) {
  return {name, std::make_unique<Estimator>(), D,
          [map](Random& random) {
            Values pair;
            for (std::size_t d = 0; d < D; ++d) pair.push_back(random.anywhere());
            const Values image = map(pair);
            pair.insert(pair.end(), image.begin(), image.end());
            return pair;
          },
          D};
}

Values turned2d(const Values& p, omReal64 scale) {
  return {scale * (0.8 * p[0] - 0.6 * p[1] + 300), scale * (0.6 * p[0] + 0.8 * p[1] - 200)};
}
Values turned3d(const Values& p, omReal64 scale) {
  const omReal64 x = 0.8 * p[0] - 0.6 * p[1], y = 0.6 * p[0] + 0.8 * p[1], z = p[2];
  return {scale * (x + 200), scale * (0.6 * y - 0.8 * z + 400), scale * (0.8 * y + 0.6 * z - 300)};
}

std::vector<Model> planarModels() {
  std::vector<Model> models;
  models.push_back(points<Line2dEstimator>("line", [](Random& random) {
    const omReal64 x = random.anywhere();
    return Values{x, 200 + 0.6 * x};
  }));
  models.push_back(points<Circle2dEstimator>("circle", [](Random& random) {
    const omReal64 angle = random.uniform(0, 2 * s_pi);
    return Values{500 + 300 * std::cos(angle), 450 + 300 * std::sin(angle)};
  }));
  models.push_back(points<Ellipse2dEstimator>("ellipse", [](Random& random) {
    const omReal64 angle = random.uniform(0, 2 * s_pi), x = 400 * std::cos(angle), y = 250 * std::sin(angle);
    return Values{500 + 0.8 * x - 0.6 * y, 450 + 0.6 * x + 0.8 * y};
  }));
  models.push_back(points<Line2dIntersectionEstimator>("intersection", [](Random& random) {
    const omReal64 angle = random.uniform(0, s_pi);
    return Values{angle, 400 * std::cos(angle) + 300 * std::sin(angle)};
  }));
  models.back().firstNoisy = 1;
  models.back().lastLow = -1000;
  models.push_back(pairs<TranslationTransform2dEstimator, 2>("translation2d", [](const Values& p) {
    return Values{p[0] + 40, p[1] - 30};
  }));
  models.push_back(pairs<RigidTransform2dEstimator, 2>("rigid2d", [](const Values& p) { return turned2d(p, 1); }));
  models.push_back(
      pairs<SimilarityTransform2dEstimator, 2>("similarity2d", [](const Values& p) { return turned2d(p, 0.9); }));
  models.push_back(pairs<HomographyTransform2dEstimator, 2>("homography2d", [](const Values& p) {
    const omReal64 w = 1 + 2e-4 * p[0] - 1e-4 * p[1];
    return Values{(0.9 * p[0] + 0.1 * p[1] + 30) / w, (-0.1 * p[0] + 0.95 * p[1] + 50) / w};
  }));
  return models;
}

/// A point at a radius from an oblique axis through the middle, and a height along it.
Values aboutAxis(omReal64 radius, omReal64 angle, omReal64 height) {
  const omReal64 x = radius * std::cos(angle), y = radius * std::sin(angle);
  return {500 + 0.8 * x + 0.48 * y + 0.36 * height, 500 - 0.6 * x + 0.64 * y + 0.48 * height,
          500 - 0.6 * y + 0.8 * height};
}

/// Lines, circles and surfaces about an axis of space, and arcs.
std::vector<Model> shapesWithAxis() {
  std::vector<Model> models;
  models.push_back(points<Arc2dEstimator>("arc", [](Random& random) {
    const omReal64 angle = random.uniform(0.5, 3);
    return Values{500 + 400 * std::cos(angle), 300 + 400 * std::sin(angle)};
  }));
  models.push_back(
      points<Line3dEstimator>("line3d", [](Random& random) { return aboutAxis(0, 0, random.uniform(-500, 500)); }));
  models.back().codimension = 2;
  models.push_back(points<Circle3dEstimator>(
      "circle3d", [](Random& random) { return aboutAxis(300, random.uniform(0, 2 * s_pi), 0); }));
  models.back().codimension = 2;
  models.push_back(points<Cylinder3dEstimator>("cylinder", [](Random& random) {
    return aboutAxis(200, random.uniform(0, 2 * s_pi), random.uniform(-400, 400));
  }));
  models.push_back(points<Cone3dEstimator>("cone", [](Random& random) {
    const omReal64 height = random.uniform(100, 800);
    return aboutAxis(0.5 * height, random.uniform(0, 2 * s_pi), height - 450);
  }));
  models.push_back(points<Torus3dEstimator>("torus", [](Random& random) {
    const omReal64 angle = random.uniform(0, 2 * s_pi);
    return aboutAxis(300 + 100 * std::cos(angle), random.uniform(0, 2 * s_pi), 100 * std::sin(angle));
  }));
  return models;
}

std::vector<Model> spatialModels() {
  std::vector<Model> models;
  models.push_back(points<Plan3dEstimator>("plane", [](Random& random) {
    const omReal64 x = random.anywhere(), y = random.anywhere();
    return Values{x, y, 200 + 0.3 * x + 0.2 * y};
  }));
  models.push_back(points<Sphere3dEstimator>("sphere", [](Random& random) {
    const Values u = random.direction();
    return Values{500 + 300 * u[0], 500 + 300 * u[1], 500 + 300 * u[2]};
  }));
  models.push_back(points<Ellipsoid3dEstimator>("ellipsoid", [](Random& random) {
    const Values u = random.direction();
    return Values{500 + 400 * u[0], 450 + 300 * u[1], 550 + 220 * u[2]};
  }));
  models.push_back(pairs<TranslationTransform3dEstimator, 3>("translation3d", [](const Values& p) {
    return Values{p[0] + 40, p[1] - 30, p[2] + 20};
  }));
  models.push_back(pairs<RigidTransform3dEstimator, 3>("rigid3d", [](const Values& p) { return turned3d(p, 1); }));
  models.push_back(
      pairs<SimilarityTransform3dEstimator, 3>("similarity3d", [](const Values& p) { return turned3d(p, 0.8); }));
  models.push_back(pairs<HomographyTransform3dEstimator, 3>("homography3d", [](const Values& p) {
    const omReal64 w = 1 + 2e-4 * p[0] - 1e-4 * p[1] + 1e-4 * p[2];
    return Values{(0.9 * p[0] + 0.1 * p[1] + 30) / w, (-0.1 * p[0] + 0.95 * p[1] + 0.05 * p[2] + 50) / w,
                  (0.05 * p[0] + p[2] + 20) / w};
  }));
  return models;
}

struct Settings {
  unsigned nbRuns = 100;
  eRobustMethod method = eRM_Acontrario;
  std::size_t nbSamples = 200;
  std::size_t nbMaxIterations = RobustOptions().nbMaxIterations;
  std::vector<omReal64> shares{0.3, 0.5, 0.7, 1};  ///< of outliers
};

/// Samples with errors of variance 1, the outliers first; the inliers alone, and without errors.
struct Samples {
  Values all, inliers, exact;

  Samples(const Model& model, std::size_t nbSamples, omReal64 share, unsigned seed) {
    Random random(seed);
    const std::size_t dimension = model.estimator->getSampleDimension();
    for (std::size_t i = 0; i < nbSamples; ++i) {
      Values row = model.onModel(random);
      const bool isOutlier = static_cast<omReal64>(i) < share * static_cast<omReal64>(nbSamples);
      if (!isOutlier) exact.insert(exact.end(), row.begin(), row.end());
      for (std::size_t d = model.firstNoisy; d < dimension; ++d)
        row[d] = !isOutlier           ? row[d] + random.normal()
                 : d + 1 == dimension ? random.uniform(model.lastLow, 1000)
                                      : random.anywhere();
      all.insert(all.end(), row.begin(), row.end());
      if (!isOutlier) inliers.insert(inliers.end(), row.begin(), row.end());
    }
  }
};

SampleView viewOf(const Model& model, const Values& rows) {
  const std::size_t dimension = model.estimator->getSampleDimension();
  return {rows.data(), rows.size() / dimension, dimension};
}

/// The root of the mean squared distance of samples without errors from a model.
omReal64 errorOf(const Model& model, const Values& exact, const RealVector& params) {
  RealVector residuals;
  if (!model.estimator->computeResiduals(viewOf(model, exact), params, residuals)) return HUGE_VAL;
  omReal64 sum = 0;
  for (const omReal64 residual : residuals) sum += residual * residual;
  return std::sqrt(sum / static_cast<omReal64>(residuals.size())) / model.estimator->getResidualScale(params);
}

omReal64 milliseconds() { return 1e3 * static_cast<omReal64>(std::clock()) / CLOCKS_PER_SEC; }

/// One line of the table. With outliers only there is nothing to be near to.
void measure(const Model& model, const Settings& settings, omReal64 share, bool isGiven) {
  // All but 0.27 % of inliers are within these.
  constexpr omReal64 thresholds[] = {0, 3, 3.44, 3.76};
  unsigned nbNear = 0, nbConfident = 0, nbWrong = 0;
  omReal64 squares = 0, squaresOfInliers = 0, sigma = 0, time = 0;
  std::size_t nbDraws = 0;
  for (unsigned run = 0; run < settings.nbRuns; ++run) {
    const Samples samples(model, settings.nbSamples, share, 7919 * run + 13);
    RobustOptions options;
    options.method = settings.method;
    options.nbMaxIterations = settings.nbMaxIterations;
    options.seed = run;
    options.threshold = isGiven ? thresholds[model.codimension] : 0;
    RobustResult found;
    const omReal64 start = milliseconds();
    const BoolResult result = robustEstimation(*model.estimator, viewOf(model, samples.all), options, found);
    time += milliseconds() - start;
    const bool isConfident = result && found.end == eRO_Confident;
    nbConfident += isConfident;
    nbDraws += found.nbIterations;
    sigma += found.sigma;
    RealVector ofInliers;
    const bool isRight = result && !samples.exact.empty() &&
                         model.estimator->computeEstimation(viewOf(model, samples.inliers), ofInliers) &&
                         errorOf(model, samples.exact, found.params) <= 3;
    nbWrong += isConfident && !isRight;
    if (!isRight) continue;
    ++nbNear;
    const omReal64 error = errorOf(model, samples.exact, found.params);
    const omReal64 errorOfInliers = errorOf(model, samples.exact, ofInliers);
    squares += error * error;
    squaresOfInliers += errorOfInliers * errorOfInliers;
  }
  const auto percent = [&](unsigned count) { return 100.0 * count / settings.nbRuns; };
  const auto mean = [&](omReal64 sum) { return sum / settings.nbRuns; };
  std::cout << std::left << std::setw(14) << model.name << std::right << std::fixed << std::setprecision(0)
            << std::setw(5) << 100 * share << " %" << std::setw(6) << (isGiven ? "given" : "none")
            << std::setprecision(1) << std::setw(9) << percent(nbNear) << std::setprecision(3) << std::setw(8)
            << (nbNear > 0 ? std::sqrt(squares / squaresOfInliers) : 0) << std::setprecision(1) << std::setw(11)
            << percent(nbConfident) << std::setw(8) << percent(nbWrong) << std::setprecision(3) << std::setw(9)
            << mean(sigma) << std::setprecision(0) << std::setw(8) << mean(static_cast<omReal64>(nbDraws))
            << std::setprecision(3) << std::setw(10) << mean(time) << std::endl;
}

int run(const std::vector<std::string>& arguments) {
  Settings settings;
  const auto has = [&](std::size_t i) { return i < arguments.size(); };
  const auto numberOf = [&](std::size_t i) { return std::strtoul(arguments[i].c_str(), nullptr, 10); };
  if (has(0)) settings.nbRuns = static_cast<unsigned>(numberOf(0));
  if (has(2)) settings.method = enumerationFromString<eRobustMethod>(arguments[2]).value_or(eRM_Acontrario);
  if (has(3)) settings.nbSamples = numberOf(3);
  if (has(4)) settings.nbMaxIterations = numberOf(4);
  if (has(5)) settings.shares = {static_cast<omReal64>(numberOf(5)) / 100};
  std::cout << "model      outliers   threshold  right   error  confident   wrong    sigma   draws        ms\n";
  for (const auto& models : {planarModels, shapesWithAxis, spatialModels})
    for (const Model& model : models()) {
      if (has(1) && arguments[1] != "all" && arguments[1] != model.name) continue;
      for (const omReal64 share : settings.shares)
        for (const bool isGiven : {false, true}) measure(model, settings, share, isGiven);
    }
  return 0;
}

}  // namespace
}  // namespace ormix::benchmarks

int main(int nbArguments, char** arguments) {
  return ormix::benchmarks::run(std::vector<std::string>(arguments + 1, arguments + nbArguments));
}
