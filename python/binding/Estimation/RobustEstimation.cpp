#include "../Frame/Enumerations.h"
#include "../Frame/Progress.h"
#include "../Frame/Result.h"
#include "Estimators.h"

#include <ORMIXGeometry/Estimation/2d/Circle2dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Sphere3dEstimator.h>
#include <ORMIXMath/Estimation/RobustEstimation.h>
#include <ORMIXUtil/Object/DynamicObjectFactory.h>

#include <string>

namespace ormix::python {
namespace {

// A result with the estimator that knows what its parameters are those of.
template <class Result>
struct Estimated : Result {
  EstimatorPtr estimator;
};
using RobustEstimate = Estimated<RobustResult>;
using RefinedEstimate = Estimated<RefinementResult>;

// An estimator, or the one whose class has the name, with or without its namespaces.
EstimatorPtr estimatorOf(const py::object& given) {
  if (py::isinstance<BaseEstimator>(given)) return py::cast<EstimatorPtr>(given);
  if (!py::isinstance<py::str>(given)) throw py::type_error("estimator: an Estimator or its name was wanted");
  std::string name = py::cast<std::string>(given);
  if (name.find("::") == std::string::npos) name = "ormix::geom::" + name;
  const auto names = DynamicObjectFactory::getInstance().getRegisteredNames();
  EstimatorPtr estimator;
  if (std::find(names.begin(), names.end(), name) != names.end())
    estimator = boost::dynamic_pointer_cast<BaseEstimator>(DynamicObjectFactory::getInstance().createShared(name));
  if (!estimator)
    throw py::value_error("estimator: there is none of the name " + py::cast<std::string>(py::repr(given)));
  return estimator;
}

RobustEstimate estimateRobustly(const py::object& given, const py::object& samples, eRobustMethod method,
                                omReal64 threshold, omUInt32 seed, omReal64 confidence, std::size_t nbMaxIterations,
                                bool localOptimisation, omReal64 maxFalseAlarms, bool isRanked,
                                const py::object& progress) {
  RobustEstimate estimate;
  estimate.estimator = estimatorOf(given);
  const SampleArray rows = samplesFor(*estimate.estimator, samples);
  Progress asked(progress);
  RobustOptions options;
  options.method = method;
  options.seed = seed;
  options.threshold = threshold;
  options.confidence = confidence;
  options.nbMaxIterations = nbMaxIterations;
  options.localOptimisation = localOptimisation;
  options.maxFalseAlarms = maxFalseAlarms;
  options.isRanked = isRanked;
  options.progress = asked.callback();
  asked.run([&] { return robustEstimation(*estimate.estimator, samplesOf(rows), options, estimate); },
            estimate.estimator->getClassName());
  return estimate;
}

template <class Estimator>
RefinedEstimate refine(const boost::shared_ptr<Estimator>& estimator, const py::object& samples,
                       const py::object& start, std::size_t nbMaxIterations, omReal64 tolerance,
                       const py::object& progress) {
  RefinedEstimate estimate;
  estimate.estimator = estimator;
  const SampleArray rows = samplesFor(*estimator, samples);
  const RealVector params = vectorOf(start, "start");
  Progress asked(progress);
  RefinementOptions options;
  options.nbMaxIterations = nbMaxIterations;
  options.tolerance = tolerance;
  options.progress = asked.callback();
  const auto refineFrom = [&] {
    const SampleView view = samplesOf(rows);
    DataSet dataSet(view.nbSamples, RealVector(view.dimension));
    for (std::size_t i = 0; i < view.nbSamples; ++i) std::copy_n(view[i], view.dimension, dataSet[i].begin());
    return estimator->refineEstimation(dataSet, params, estimate, options);
  };
  asked.run(refineFrom, estimator->getClassName());
  return estimate;
}

template <class Estimator>
void bindRefinement(py::module_& module, const char* name) {
  py::reinterpret_borrow<py::class_<Estimator, BaseEstimator, boost::shared_ptr<Estimator>>>(module.attr(name))
      .def("refine_estimation", &refine<Estimator>, "samples"_a, "start"_a, py::kw_only(),
           "nb_max_iterations"_a = RefinementOptions().nbMaxIterations, "tolerance"_a = RefinementOptions().tolerance,
           "progress"_a = py::none(),
           "Improve the parameters `start` on samples, step by step: a RefinementResult, whose cost is never larger "
           "than\n"
           "at the start. `progress` is called with a fraction and may return False to stop.");
}

// The mask of inliers.
py::array_t<bool> maskOf(const std::vector<bool>& values) {
  py::array_t<bool> mask(static_cast<py::ssize_t>(values.size()));
  std::copy(values.begin(), values.end(), mask.mutable_data());
  return mask;
}

template <class Estimate>
py::object entityOf(const Estimate& self) {
  return modelOf(*self.estimator, self.params);
}

void bindResults(py::module_& module) {
  bindEnumeration<eRobustMethod>(module, "The criterion by which robust_estimation() chooses the best model.");
  bindEnumeration<eRobustEnd>(module, "Why a robust loop ended.");
  bindEnumeration<eRefinementEnd>(module, "Why a refinement ended.");
  Result<RobustEstimate>(module, "RobustResult", "What robust_estimation() found.")
      .value(
          "params", [](const RobustEstimate& self) { return arrayOf(self.params); }, "The parameters of the model.")
      .hidden("entity", &entityOf<RobustEstimate>, "The model: the entity or transform with these parameters.")
      .hidden(
          "inliers", [](const RobustEstimate& self) { return maskOf(self.inliers); },
          "For each sample whether it is within the threshold, a mask.")
      .value("nb_inliers", &RobustEstimate::nbInliers, "How many samples are.")
      .value("score", &RobustEstimate::score,
             "The number of inliers (eRM_Ransac), the mean of squared distances, each cut off at the threshold\n"
             "(eRM_Msac), their median (eRM_LMedS), or the decimal logarithm of nb_false_alarms (eRM_Acontrario).")
      .value("threshold", &RobustEstimate::threshold, "The largest distance of an inlier, as given or as estimated.")
      .value("nb_iterations", &RobustEstimate::nbIterations, "Sets of samples that were drawn.")
      .value("nb_degenerate", &RobustEstimate::nbDegenerate, "Those of them that determined no model.")
      .value("end", &RobustEstimate::end, "Why the loop ended.")
      .value("sigma", &RobustEstimate::sigma, "The standard deviation of one coordinate of the errors of inliers.")
      .value("nb_false_alarms", &RobustEstimate::nbFalseAlarms,
             "How many models with as many inliers are expected by accident; above max_false_alarms `end` is not\n"
             "eRO_Confident.");
  Result<RefinedEstimate>(module, "RefinementResult", "What refine_estimation() found.")
      .value(
          "params", [](const RefinedEstimate& self) { return arrayOf(self.params); }, "The best parameters found.")
      .hidden("entity", &entityOf<RefinedEstimate>, "The model: the entity with these parameters.")
      .value("initial_cost", &RefinedEstimate::initialCost, "Half the sum of squared residuals at the start.")
      .value("cost", &RefinedEstimate::cost, "The same at the end.")
      .value("nb_iterations", &RefinedEstimate::nbIterations, "Steps tried.")
      .value("end", &RefinedEstimate::end, "Why it ended.");
}

}  // namespace

void bindRobustEstimation(py::module_& module) {
  const RobustOptions defaults;
  bindResults(module);
  module.def(
      "robust_estimation", &estimateRobustly, "estimator"_a, "samples"_a, py::kw_only(),
      enumerator("method", defaults.method), "threshold"_a = defaults.threshold, "seed"_a = defaults.seed,
      "confidence"_a = defaults.confidence, "nb_max_iterations"_a = defaults.nbMaxIterations,
      "local_optimisation"_a = defaults.localOptimisation, "max_false_alarms"_a = defaults.maxFalseAlarms,
      "is_ranked"_a = defaults.isRanked, "progress"_a = py::none(),
      "A model of samples of which many are outliers: a RobustResult.\n\n"
      "`estimator` is an Estimator or the name of its class. `threshold` is the largest distance of an inlier; 0\n"
      "estimates it, for up to about one half of outliers, or for any share with the method eRM_Acontrario. A\n"
      "consensus counts as confident where at most `max_false_alarms` are expected by accident. With `is_ranked` the\n"
      "samples come in order of their quality, the best first. The same seed gives the same bits. `progress` is "
      "called\n"
      "with a fraction, 0 to 1, and may return False to stop; Ctrl-C stops as well. Error for too few samples and\n"
      "where no model was found.\n\n"
      ">>> angles = np.linspace(0, 6, 40)\n"
      ">>> points = np.c_[5 + np.cos(angles), np.sin(angles)]\n"
      ">>> points[::4] += 7\n"
      ">>> found = og.robust_estimation(\"Circle2dEstimator\", points, threshold=0.01)\n"
      ">>> found.nb_inliers, round(found.entity.radius, 9)\n"
      "(30, 1.0)\n\n"
      ">>> noise = np.random.default_rng(1).uniform(0, 100, (200, 2))\n"
      ">>> found = og.robust_estimation(\"Line2dEstimator\", noise, method=\"eRM_Acontrario\")\n"
      ">>> found.end == og.eRobustEnd.eRO_Confident\n"
      "False");
  bindRefinement<geom::Circle2dEstimator>(module, "Circle2dEstimator");
  bindRefinement<geom::Sphere3dEstimator>(module, "Sphere3dEstimator");
}

}  // namespace ormix::python
