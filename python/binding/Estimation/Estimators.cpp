#include "Estimators.h"

#include "Models.h"

#include <algorithm>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <cmath>

namespace ormix::python {
namespace {

using Estimator = BaseEstimator;

template <class Class>
py::class_<Class, Estimator, boost::shared_ptr<Class>> bindEstimator(py::module_& module, const char* doc) {
  const std::string name = std::string(Class::s_className).substr(std::string("ormix::geom::").size());
  return py::class_<Class, Estimator, boost::shared_ptr<Class>>(module, name.c_str(), doc).def(py::init<>());
}

void bindBase(py::module_& module) {
  py::class_<Estimator, BaseSerializationObject, EstimatorPtr>(
      module, "Estimator",
      "Computes the parameters of a model from samples, and residuals of samples for a model. Samples are rows of an\n"
      "array; of pairs, a row is a source and its target: numpy.hstack([sources, targets]).\n\n"
      ">>> estimator = og.Circle2dEstimator()\n"
      ">>> params = estimator.compute_estimation([[1, 0], [0, 1], [-1, 0], [0, -1]])\n"
      ">>> estimator.model(params)\n"
      "Circle2d(center=(0.0, 0.0), radius=1.0)\n"
      ">>> estimator.compute_residuals([[2, 0]], params)\n"
      "array([3.])")
      .def_property_readonly("minimal_data_size", &Estimator::getMinimalDataSize,
                             "The smallest number of samples that determines a model.")
      .def_property_readonly("nb_params", &Estimator::getNbParams, "The number of parameters of a model.")
      .def_property_readonly("sample_dimension", &Estimator::getSampleDimension, "The number of values of a sample.")
      .def_property_readonly(
          "status", [](const Estimator& self) { return self.getStatus(); },
          "How the last compute_estimation() ended, an EstimationStatus.")
      .def(
          "compute_estimation",
          [](Estimator& self, const py::object& samples) {
            const SampleArray rows = samplesFor(self, samples);
            RealVector params;
            const BoolResult result = [&] {
              const Reading reading;
              return self.computeEstimation(samplesOf(rows), params);
            }();
            checkFit(result, rows, self.getClassName());
            return arrayOf(params);
          },
          "samples"_a,
          "The parameters that fit samples, an array of shape (n, sample_dimension), best by the criterion of the\n"
          "estimator. Error for too few or degenerate samples.")
      .def(
          "compute_residuals",
          [](const Estimator& self, const py::object& samples, const py::object& params) {
            const SampleArray rows = samplesFor(self, samples);
            const RealVector given = vectorOf(params, "params");
            RealVector residuals;
            const BoolResult result = [&] {
              const Reading reading;
              return self.computeResiduals(samplesOf(rows), given, residuals);
            }();
            check(result, self.getClassName());
            return arrayOf(residuals);
          },
          "samples"_a, "params"_a,
          "One residual for each sample. Some are algebraic: residuals / residual_scale(params) are distances to "
          "first\n"
          "order.")
      .def(
          "residual_scale",
          [](const Estimator& self, const py::object& params) {
            const RealVector given = vectorOf(params, "params");
            if (given.size() != self.getNbParams())
              throw py::value_error("params: " + std::to_string(self.getNbParams()) + " numbers were wanted, not " +
                                    std::to_string(given.size()));
            return self.getResidualScale(given);
          },
          "params"_a, "The number by which residuals are divided to give distances.")
      .def(
          "model",
          [](const Estimator& self, const py::object& params) { return modelOf(self, vectorOf(params, "params")); },
          "params"_a, "The entity or transform with these parameters.");
}

}  // namespace

void checkFit(const BoolResult& result, const SampleArray& rows, const std::string& className, const char* name) {
  if (result) return;
  const auto* const end = rows.data() + rows.size();
  const auto* const found = std::find_if_not(rows.data(), end, [](omReal64 value) { return std::isfinite(value); });
  if (found == end) return check(result, className);
  const std::string row = std::to_string((found - rows.data()) / rows.shape(1));
  raiseError(result.getMessage() + " (" + name + "[" + row + "] is not finite)", className);
}

RealVector vectorOf(const py::object& values, const char* name) {
  const auto numbers = numbersOf<omReal64>(values, name);
  if (numbers.ndim() != 1)
    throw py::value_error(std::string(name) + ": an array of one dimension was wanted, not of shape " +
                          py::cast<std::string>(py::repr(numbers.attr("shape"))));
  RealVector vector(static_cast<std::size_t>(numbers.size()));
  std::copy_n(numbers.data(), vector.size(), vector.begin());
  return vector;
}

py::array_t<omReal64> arrayOf(const RealVector& values) {
  py::array_t<omReal64> array(static_cast<py::ssize_t>(values.size()));
  std::copy(values.begin(), values.end(), array.mutable_data());
  return array;
}

py::object modelOf(const BaseEstimator& estimator, const RealVector& params) {
  if (params.size() != estimator.getNbParams())
    throw py::value_error("params: " + std::to_string(estimator.getNbParams()) + " numbers were wanted, not " +
                          std::to_string(params.size()));
  py::object model = py::none();
  geom::forEachClass(geom::EstimatorList(), [&](auto tag) {
    using Class = typename decltype(tag)::Type;
    if (dynamic_cast<const Class*>(&estimator) != nullptr) model = py::cast(makeModel(tag, params));
  });
  return model;
}

void bindEstimators(py::module_& module) {
  using namespace geom;
  bindBase(module);
  bindEstimator<Circle2dEstimator>(module, "Circle of points (x, y): cx, cy, r. See `fit_circle()`.");
  bindEstimator<Ellipse2dEstimator>(
      module, "Ellipse of points (x, y): cx, cy, major and minor radius, theta. See `fit_ellipse()`.");
  bindEstimator<Line2dEstimator>(module, "Line of points (x, y): theta, rho. See `fit_line()`.");
  bindEstimator<Line2dIntersectionEstimator>(
      module, "Common point of lines (theta, rho), homogeneous: a, b, c. See `fit_intersection()`.");
  bindEstimator<TranslationTransform2dEstimator>(
      module, "Translation of pairs (x1, y1, x2, y2): tx, ty. See `fit_translation2d()`.");
  bindEstimator<RigidTransform2dEstimator>(
      module, "Rotation and translation of pairs (x1, y1, x2, y2): theta, tx, ty. See `fit_rigid2d()`.");
  bindEstimator<SimilarityTransform2dEstimator>(
      module, "Similarity of pairs (x1, y1, x2, y2): scale, theta, tx, ty. See `fit_similarity2d()`.");
  bindEstimator<HomographyTransform2dEstimator>(
      module, "Projective map of pairs (x1, y1, x2, y2): the 9 elements of its matrix. See `fit_homography2d()`.");
  bindEstimator<Plan3dEstimator>(module, "Plane of points (x, y, z): theta, phi, d. See `fit_plan()`.");
  bindEstimator<Sphere3dEstimator>(module, "Sphere of points (x, y, z): cx, cy, cz, r. See `fit_sphere()`.");
  bindEstimator<Ellipsoid3dEstimator>(
      module, "Ellipsoid of points (x, y, z): cx, cy, cz, three radii, alpha, beta, chi. See `fit_ellipsoid()`.");
  bindEstimator<Arc2dEstimator>(module, "Arc of points (x, y): cx, cy, r, start angle, sweep. See `fit_arc()`.");
  bindEstimator<Cylinder3dEstimator>(
      module, "Cylinder of points (x, y, z): point and direction of its axis, r. See `fit_cylinder()`.");
  bindEstimator<Cone3dEstimator>(
      module, "Cone of points (x, y, z): apex, direction of its axis, half angle. See `fit_cone()`.");
  bindEstimator<Torus3dEstimator>(
      module, "Torus of points (x, y, z): center, axis, major and minor radius. See `fit_torus()`.");
  bindEstimator<Line3dEstimator>(module, "Line of points (x, y, z): a point, its direction. See `fit_line3d()`.");
  bindEstimator<Circle3dEstimator>(module, "Circle of points (x, y, z): center, normal, r. See `fit_circle3d()`.");
  bindEstimator<TranslationTransform3dEstimator>(
      module, "Translation of pairs (x1, y1, z1, x2, y2, z2): tx, ty, tz and three zeros. See `fit_translation3d()`.");
  bindEstimator<RigidTransform3dEstimator>(
      module,
      "Rotation and translation of pairs (x1, y1, z1, x2, y2, z2): alpha, beta, chi, tx, ty, tz. See "
      "`fit_rigid3d()`.");
  bindEstimator<SimilarityTransform3dEstimator>(
      module,
      "Similarity of pairs (x1, y1, z1, x2, y2, z2): scale, alpha, beta, chi, tx, ty, tz. See "
      "`fit_similarity3d()`.");
  bindEstimator<HomographyTransform3dEstimator>(
      module,
      "Projective map of pairs (x1, y1, z1, x2, y2, z2): the 16 elements of its matrix. See "
      "`fit_homography3d()`.");
}

}  // namespace ormix::python
