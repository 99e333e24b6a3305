#include "FitArguments.h"
#include "Models.h"

#include <ORMIXGeometry/Estimation/2d/Fit2d.h>
#include <ORMIXGeometry/Estimation/3d/Fit3d.h>
#include <ORMIXGeometry/Message/EstimationMessage.h>

#include <pybind11/stl.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace ormix::python {
namespace {

/// The model of points, or other samples of one row each.
template <class Estimator>
auto fit(const py::object& samples) {
  Estimator estimator;
  const SampleArray rows = samplesFor(estimator, samples);
  RealVector params;
  const BoolResult result = [&] {
    const Reading reading;
    return estimator.computeEstimation(samplesOf(rows), params);
  }();
  checkFit(result, rows, Estimator::s_className);
  return makeModel(TagOf<Estimator>(), params);
}

/// A shape of points that has more than the parameters of its estimator, as the ends of a cylinder.
template <class Estimator, class Entity, BoolResult (*fitEntity)(const SampleView&, Entity&)>
auto fitWhole(const py::object& points) {
  const SampleArray rows = samplesFor(Estimator(), points);
  auto entity = boost::make_shared<Entity>();
  const BoolResult result = [&] {
    const Reading reading;
    return fitEntity(samplesOf(rows), *entity);
  }();
  checkFit(result, rows, Estimator::s_className);
  return entity;
}

template <class Entity>
using FitOf = BoolResult (*)(const SampleView&, const FitOptions&, Entity&, geom::FitReport&);

/// The same with options, and a report where it is asked for; `fitPlain` is the fit without both.
template <class Estimator, class Entity, FitOf<Entity> fitEntity, auto fitPlain = &fit<Estimator>>
py::object fitWithOptions(const py::object& samples, bool report, const py::object& method, const py::object& weights,
                          omReal64 sigma, eLoss loss, omReal64 lossScale, const py::object& robust,
                          std::size_t nbMaxIterations, const py::object& progress) {
  const FitArguments arguments({report, method, weights, sigma, loss, lossScale, robust, nbMaxIterations, progress},
                               Estimator::s_sampleDimension);
  if (arguments.isPlain()) return py::cast(fitPlain(samples));
  const SampleArray rows = samplesFor(Estimator(), samples);
  const auto entity = boost::make_shared<Entity>();
  geom::FitReport found;
  const BoolResult result = [&] {
    const Reading reading;
    return fitEntity(samplesOf(rows), arguments.options(), *entity, found);
  }();
  arguments.checkProgress();
  checkFit(result, rows, Estimator::s_className);
  return arguments.answer(py::cast(entity), std::move(found));
}

/// The text of a fit with what all of them say of their options, and an example.
std::string withOptions(const char* text, const char* example = "") {
  return std::string(text) +
         "\n\n"
         "With `report=True` it is a tuple with a FitReport; with that or any other option the fit is that of least\n"
         "distances (`method=\"eFM_Orthogonal\"`), or again the one above (`method=\"eFM_Algebraic\"`). `weights` has "
         "an\n"
         "inverse variance, up to a factor, or a covariance matrix for each point; `sigma` is the standard deviation\n"
         "of a point of weight 1 where it is known; `loss` resists outliers beyond `loss_scale`. `robust=True`, or a\n"
         "dict of options of robust_estimation(), leaves outliers out first. `progress` may return False to stop.\n"
         "Error also when the refinement does not settle." +
         example;
}

// Whether an estimator reads sources and targets where they are.
template <class Estimator, class = void>
constexpr bool s_takesBoth = false;
template <class Estimator>
constexpr bool s_takesBoth<Estimator, std::void_t<decltype(std::declval<Estimator&>().computeEstimation(
                                          SampleView(), SampleView(), std::declval<RealVector&>()))>> = true;

BoolResult sizesDiffer(const SampleView& sources, const SampleView& targets) {
  using Message = geom::eEstimationMessage;
  return failure(formatMessage<Message>(Message::eEsM_CollectionSizeMismatch, sources.nbSamples, targets.nbSamples));
}

// Each source followed by its target.
std::vector<omReal64> joinedRows(const SampleView& sources, const SampleView& targets) {
  std::vector<omReal64> values(2 * sources.dimension * sources.nbSamples);
  omReal64* to = values.data();
  for (std::size_t i = 0; i < sources.nbSamples; ++i) {
    to = std::copy_n(sources[i], sources.dimension, to);
    to = std::copy_n(targets[i], targets.dimension, to);
  }
  return values;
}

template <class Estimator>
void checkPairFit(const BoolResult& result, const SampleArray& sources, const SampleArray& targets) {
  if (result) return;
  const bool areSourcesFinite =
      std::all_of(sources.data(), sources.data() + sources.size(), [](omReal64 value) { return std::isfinite(value); });
  checkFit(result, areSourcesFinite ? targets : sources, Estimator::s_className,
           areSourcesFinite ? "targets" : "sources");
}

/// The transform that maps sources to targets.
template <class Estimator>
auto fitPairs(const py::object& sources, const py::object& targets) {
  constexpr py::ssize_t dimension = Estimator::s_sampleDimension / 2;
  const SampleArray from = matrixOf<omReal64>(sources, dimension, "sources");
  const SampleArray to = matrixOf<omReal64>(targets, dimension, "targets");
  RealVector params;
  const BoolResult result = [&]() -> BoolResult {
    const Reading reading;
    Estimator estimator;
    const SampleView first = samplesOf(from);
    const SampleView second = samplesOf(to);
    if (first.nbSamples != second.nbSamples) return sizesDiffer(first, second);
    if constexpr (s_takesBoth<Estimator>) {
      return estimator.computeEstimation(first, second, params);
    } else {
      const std::vector<omReal64> rows = joinedRows(first, second);
      return estimator.computeEstimation(SampleView{rows.data(), first.nbSamples, Estimator::s_sampleDimension},
                                         params);
    }
  }();
  checkPairFit<Estimator>(result, from, to);
  return makeModel(TagOf<Estimator>(), params);
}

/// The same with options, and a report where it is asked for.
template <class Estimator, class Transform, FitOf<Transform> fitTransform>
py::object fitPairsWithOptions(const py::object& sources, const py::object& targets, bool report,
                               const py::object& method, const py::object& weights, omReal64 sigma, eLoss loss,
                               omReal64 lossScale, const py::object& robust, std::size_t nbMaxIterations,
                               const py::object& progress) {
  const FitArguments arguments({report, method, weights, sigma, loss, lossScale, robust, nbMaxIterations, progress},
                               Estimator::s_sampleDimension);
  if (arguments.isPlain()) return py::cast(fitPairs<Estimator>(sources, targets));
  constexpr py::ssize_t dimension = Estimator::s_sampleDimension / 2;
  const SampleArray from = matrixOf<omReal64>(sources, dimension, "sources");
  const SampleArray to = matrixOf<omReal64>(targets, dimension, "targets");
  const auto transform = boost::make_shared<Transform>();
  geom::FitReport found;
  const BoolResult result = [&]() -> BoolResult {
    const Reading reading;
    const SampleView first = samplesOf(from);
    const SampleView second = samplesOf(to);
    if (first.nbSamples != second.nbSamples) return sizesDiffer(first, second);
    const std::vector<omReal64> rows = joinedRows(first, second);
    return fitTransform({rows.data(), first.nbSamples, Estimator::s_sampleDimension}, arguments.options(), *transform,
                        found);
  }();
  arguments.checkProgress();
  checkPairFit<Estimator>(result, from, to);
  return arguments.answer(py::cast(transform), std::move(found));
}

// Rows (theta, rho) as they are, or of a sequence of lines.
py::object lineRows(const py::object& lines) {
  if (py::isinstance<py::array>(lines) || !py::isinstance<py::sequence>(lines)) return lines;
  const auto sequence = py::reinterpret_borrow<py::sequence>(lines);
  if (sequence.empty() || !py::isinstance<geom::Line2d>(sequence[0])) return lines;
  py::array_t<omReal64> rows({static_cast<py::ssize_t>(sequence.size()), py::ssize_t(2)});
  omReal64* to = rows.mutable_data();
  for (const py::handle line : sequence) {
    if (!py::isinstance<geom::Line2d>(line)) throw py::type_error("lines: a Line2d was wanted for each element");
    const auto& typed = py::cast<const geom::Line2d&>(line);
    *to++ = typed.getTheta();
    *to++ = typed.getRho();
  }
  return std::move(rows);
}

void bindPlanarShapes(py::module_& module) {
  using namespace geom;
  defineFit(
      module, "fit_circle", &fitWithOptions<Circle2dEstimator, Circle2d<omReal64>, fitCircle>,
      withOptions("The circle of least squared algebraic residuals of points, an array of shape (n, 2), n >= 3.\n\n"
                  "Error for too few points, and for points that are collinear or coincide. Arrays of float64 are not "
                  "copied.",
                  "\n\n"
                  ">>> og.fit_circle([[1, 0], [0, 1], [-1, 0], [0, -1]])\n"
                  "Circle2d(center=(0.0, 0.0), radius=1.0)"),
      "points"_a);
  defineFit(
      module, "fit_ellipse", &fitWithOptions<Ellipse2dEstimator, Ellipse2d<omReal64>, fitEllipse>,
      withOptions("The ellipse of least squared algebraic residuals of points, an array of shape (n, 2), n >= 5.\n\n"
                  "Error for too few points and where the best conic is none. theta is in [0, pi)."),
      "points"_a);
  defineFit(module, "fit_line", &fitWithOptions<Line2dEstimator, Line2d, fitLine>,
            withOptions("The line of least squared distances of points, an array of shape (n, 2), n >= 2.\n\n"
                        "Error for points without a preferred direction."),
            "points"_a);
  defineFit(
      module, "fit_intersection",
      [](const py::object& lines, bool report, const py::object& method, const py::object& weights, omReal64 sigma,
         eLoss loss, omReal64 lossScale, const py::object& robust, std::size_t nbMaxIterations,
         const py::object& progress) {
        return fitWithOptions<Line2dIntersectionEstimator, Point2d<omReal64>, fitIntersection>(
            lineRows(lines), report, method, weights, sigma, loss, lossScale, robust, nbMaxIterations, progress);
      },
      withOptions("The point of least squared distances to lines: a sequence of Line2d, or rows (theta, rho).\n\n"
                  "Error for lines that are parallel."),
      "lines"_a);
  defineFit(module, "fit_arc", &fitWithOptions<Arc2dEstimator, Arc2d<omReal64>, fitArc>,
            withOptions("The arc of least squared distances of points, an array of shape (n, 2), n >= 3, from its\n"
                        "circle; it ends at the outermost of them. Error for points on a line."),
            "points"_a);
}

void bindSpatialShapes(py::module_& module) {
  using namespace geom;
  defineFit(module, "fit_plan", &fitWithOptions<Plan3dEstimator, Plan3d, fitPlan>,
            withOptions("The plane of least squared distances of points, an array of shape (n, 3), n >= 3.\n\n"
                        "Error for points without a preferred direction."),
            "points"_a);
  defineFit(
      module, "fit_sphere", &fitWithOptions<Sphere3dEstimator, Sphere3d<omReal64>, fitSphere>,
      withOptions("The sphere of least squared algebraic residuals of points, an array of shape (n, 3), n >= 4.\n\n"
                  "Error for points that are coplanar."),
      "points"_a);
  using Cylinder = Cylinder3d<omReal64>;
  defineFit(
      module, "fit_cylinder",
      &fitWithOptions<Cylinder3dEstimator, Cylinder, fitCylinder,
                      &fitWhole<Cylinder3dEstimator, Cylinder, fitCylinder>>,
      withOptions("The part that points, an array of shape (n, 3), n >= 5, reach of the cylinder of least squared\n"
                  "distances from its side. Error for points in a plane."),
      "points"_a);
  using Cone = Cone3d<omReal64>;
  defineFit(module, "fit_cone",
            &fitWithOptions<Cone3dEstimator, Cone, fitCone, &fitWhole<Cone3dEstimator, Cone, fitCone>>,
            withOptions("The part that points, an array of shape (n, 3), n >= 6, reach of the cone of least squared\n"
                        "distances from its side. Error for points near a cylinder or a plane."),
            "points"_a);
  defineFit(module, "fit_torus", &fitWithOptions<Torus3dEstimator, Torus3d<omReal64>, fitTorus>,
            withOptions("The torus of least squared distances of points, an array of shape (n, 3), n >= 7.\n\n"
                        "Error where the tube would be as wide as the ring."),
            "points"_a);
  defineFit(module, "fit_line3d", &fitWithOptions<Line3dEstimator, Line3d, fitLine>,
            withOptions("The line of space of least squared distances of points, an array of shape (n, 3), n >= 2."),
            "points"_a);
  defineFit(
      module, "fit_circle3d", &fitWithOptions<Circle3dEstimator, Circle3d<omReal64>, fitCircle>,
      withOptions("The circle of space of least squared distances of points, an array of shape (n, 3), n >= 3.\n\n"
                  "Error for points on a line."),
      "points"_a);
  defineFit(
      module, "fit_ellipsoid", &fitWithOptions<Ellipsoid3dEstimator, Ellipsoid3d<omReal64>, fitEllipsoid>,
      withOptions("The ellipsoid of least squared algebraic residuals of points, an array of shape (n, 3), n >= 9.\n\n"
                  "Error where the best quadric is none."),
      "points"_a);
}

void bindTransforms(py::module_& module) {
  using namespace geom;
  const auto bind = [&module](const char* name, auto* function, const char* text, const char* example = "") {
    defineFit(module, name, function, withOptions(text, example), "sources"_a, "targets"_a);
  };
  bind("fit_translation2d",
       &fitPairsWithOptions<TranslationTransform2dEstimator, TranslationTransform2d, fitTranslation>,
       "The translation of sources to targets, arrays of shape (n, 2), n >= 2, paired by index.\n\n"
       "Error when all sources or all targets coincide.");
  bind("fit_rigid2d", &fitPairsWithOptions<RigidTransform2dEstimator, RigidTransform2d, fitRigid>,
       "The rotation and translation of sources to targets, arrays of shape (n, 2), n >= 2, of least squares.",
       "\n\n>>> og.fit_rigid2d([[0, 0], [1, 0], [0, 1]], [[5, 0], [6, 0], [5, 1]]).params.round(12).tolist()\n"
       "[-0.0, 5.0, 0.0]");
  bind("fit_similarity2d", &fitPairsWithOptions<SimilarityTransform2dEstimator, SimilarityTransform2d, fitSimilarity>,
       "The similarity of sources to targets, arrays of shape (n, 2), n >= 2, of least squares.");
  bind("fit_homography2d", &fitPairsWithOptions<HomographyTransform2dEstimator, HomographyTransform2d, fitHomography>,
       "The projective map of sources to targets, arrays of shape (n, 2), n >= 4, no three collinear.");
  bind("fit_translation3d",
       &fitPairsWithOptions<TranslationTransform3dEstimator, TranslationTransform3d, fitTranslation>,
       "The translation of sources to targets, arrays of shape (n, 3), n >= 3, paired by index.\n\n"
       "Error when sources or targets coincide or are collinear.");
  bind("fit_rigid3d", &fitPairsWithOptions<RigidTransform3dEstimator, RigidTransform3d, fitRigid>,
       "The rotation and translation of sources to targets, arrays of shape (n, 3), n >= 3, of least squares.\n\n"
       "Always a proper rotation. Error when sources or targets are collinear.");
  bind(
      "fit_similarity3d", &fitPairsWithOptions<SimilarityTransform3dEstimator, SimilarityTransform3d, fitSimilarity>,
      "The similarity of sources to targets, arrays of shape (n, 3), n >= 3, of least squares; its scale is positive.");
  bind("fit_homography3d", &fitPairsWithOptions<HomographyTransform3dEstimator, HomographyTransform3d, fitHomography>,
       "The projective map of sources to targets, arrays of shape (n, 3), n >= 5, no four coplanar.");
}

}  // namespace

void bindFits(py::module_& module) {
  bindPlanarShapes(module);
  bindSpatialShapes(module);
  bindTransforms(module);
}

}  // namespace ormix::python
