#include <ORMIXGeometry/Entity/2d/Arc/Arc2d.h>
#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Entity/2d/Line/Line2d.h>
#include <ORMIXGeometry/Entity/3d/Circle/Circle3d.h>
#include <ORMIXGeometry/Entity/3d/Cone/Cone3d.h>
#include <ORMIXGeometry/Entity/3d/Cylinder/Cylinder3d.h>
#include <ORMIXGeometry/Entity/3d/Ellipsoid/Ellipsoid3d.h>
#include <ORMIXGeometry/Entity/3d/Line/Line3d.h>
#include <ORMIXGeometry/Entity/3d/Plan/Plan3d.h>
#include <ORMIXGeometry/Entity/3d/Sphere/Sphere3d.h>
#include <ORMIXGeometry/Entity/3d/Torus/Torus3d.h>
#include <ORMIXGeometry/Estimation/2d/Circle2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Ellipse2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Fit2d.h>
#include <ORMIXGeometry/Estimation/2d/HomographyTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Line2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/RigidTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/SimilarityTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/TranslationTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Ellipsoid3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Fit3d.h>
#include <ORMIXGeometry/Estimation/3d/HomographyTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Plan3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/RigidTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/SimilarityTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Sphere3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/TranslationTransform3dEstimator.h>
#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>
#include <ORMIXGeometry/Transform/3d/HomographyTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RigidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SimilarityTransform3d.h>
#include <ORMIXGeometry/Transform/3d/TranslationTransform3d.h>
#include <command/FitModels.h>

#include <boost/numeric/ublas/matrix.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <cmath>
#include <type_traits>
#include <utility>

namespace ormix::command {

namespace {

using namespace geom;

template <class Estimator>
std::unique_ptr<BaseEstimator> make() {
  return std::make_unique<Estimator>();
}

/// The transform whose constructor takes the parameters, in their order.
template <class Transform, std::size_t... i>
SerializationObjectPtr transformOf(const RealVector& p, std::index_sequence<i...>) {
  return boost::make_shared<Transform>(p(i)...);
}
template <class Transform, std::size_t n>
SerializationObjectPtr transform(const RealVector& p) {
  return transformOf<Transform>(p, std::make_index_sequence<n>());
}

template <class Transform, std::size_t n>
SerializationObjectPtr homography(const RealVector& p) {
  std::conditional_t<n == 3, Matrix3x3, Matrix4x4> matrix(n, n);
  for (std::size_t i = 0; i < n * n; ++i) matrix(i / n, i % n) = p(i);
  return boost::make_shared<Transform>(matrix);
}

template <class Entity, class Set>
SerializationObjectPtr entity(const Set& set) {
  const auto made = boost::make_shared<Entity>();
  set(*made);
  return made;
}

SerializationObjectPtr circle(const RealVector& p) {
  return entity<Circle2d<omReal64>>([&](auto& made) { made.setCoords({p(0), p(1)}, p(2)); });
}
SerializationObjectPtr ellipse(const RealVector& p) {
  return entity<Ellipse2d<omReal64>>([&](auto& made) { made.setCoords({p(0), p(1)}, p(2), p(3), p(4)); });
}
SerializationObjectPtr line(const RealVector& p) {
  return entity<Line2d>([&](auto& made) { made.setCoords(p(1), p(0)); });
}
SerializationObjectPtr plane(const RealVector& p) {
  return entity<Plan3d>([&](auto& made) { made.setCoords(p(2), p(0), p(1)); });
}
SerializationObjectPtr sphere(const RealVector& p) {
  return entity<Sphere3d<omReal64>>([&](auto& made) { made.setCoords({p(0), p(1), p(2)}, p(3)); });
}
SerializationObjectPtr ellipsoid(const RealVector& p) {
  return entity<Ellipsoid3d<omReal64>>([&](auto& made) {
    made.setCoords({p(0), p(1), p(2)}, p(3), p(4), p(5), p(6), p(7), p(8));
  });
}

template <class Entity>
using FitOf = BoolResult (*)(const SampleView&, const FitOptions&, Entity&, FitReport&);

template <class Entity, FitOf<Entity> fit>
BoolResult reported(const SampleView& samples, const FitOptions& options, SerializationObjectPtr& entity,
                    FitReport& report) {
  const auto made = boost::make_shared<Entity>();
  entity = made;
  return fit(samples, options, *made, report);
}

/// A model that is fitted by least distances in any case.
template <class Entity, FitOf<Entity> fit>
FitModel onlyReported(std::string_view name, std::size_t dimension) {
  return {name, dimension, {}, false, nullptr, nullptr, reported<Entity, fit>};
}

}  // namespace

omReal64 FitModel::distance(omReal64 residual, const RealVector& params) const {
  if (!isAlgebraic) return std::abs(residual);
  const omReal64 radius = params(params.size() - 1);
  return std::abs(std::sqrt(std::max(residual + radius * radius, 0.0)) - radius);
}

const std::vector<FitModel>& fitModels() {
  static const std::vector<FitModel> models{
      {"circle",
       2,
       {"center_x", "center_y", "radius"},
       true,
       make<Circle2dEstimator>,
       circle,
       reported<Circle2d<omReal64>, fitCircle>},
      {"ellipse",
       2,
       {"center_x", "center_y", "major_radius", "minor_radius", "theta"},
       false,
       make<Ellipse2dEstimator>,
       ellipse,
       reported<Ellipse2d<omReal64>, fitEllipse>},
      {"line", 2, {"theta", "rho"}, false, make<Line2dEstimator>, line, reported<Line2d, fitLine>},
      {"plane", 3, {"theta", "phi", "rho"}, false, make<Plan3dEstimator>, plane, reported<Plan3d, fitPlan>},
      {"sphere",
       3,
       {"center_x", "center_y", "center_z", "radius"},
       true,
       make<Sphere3dEstimator>,
       sphere,
       reported<Sphere3d<omReal64>, fitSphere>},
      {"ellipsoid",
       3,
       {"center_x", "center_y", "center_z", "major_radius", "medium_radius", "minor_radius", "alpha", "beta", "chi"},
       false,
       make<Ellipsoid3dEstimator>,
       ellipsoid,
       reported<Ellipsoid3d<omReal64>, fitEllipsoid>},
      {"translation",
       4,
       {"tx", "ty"},
       false,
       make<TranslationTransform2dEstimator>,
       transform<TranslationTransform2d, 2>,
       reported<TranslationTransform2d, fitTranslation>},
      {"translation",
       6,
       {"tx", "ty", "tz"},
       false,
       make<TranslationTransform3dEstimator>,
       transform<TranslationTransform3d, 3>,
       reported<TranslationTransform3d, fitTranslation>},
      {"rigid",
       4,
       {"theta", "tx", "ty"},
       false,
       make<RigidTransform2dEstimator>,
       transform<RigidTransform2d, 3>,
       reported<RigidTransform2d, fitRigid>},
      {"rigid",
       6,
       {"alpha", "beta", "chi", "tx", "ty", "tz"},
       false,
       make<RigidTransform3dEstimator>,
       transform<RigidTransform3d, 6>,
       reported<RigidTransform3d, fitRigid>},
      {"similarity",
       4,
       {"scale", "theta", "tx", "ty"},
       false,
       make<SimilarityTransform2dEstimator>,
       transform<SimilarityTransform2d, 4>,
       reported<SimilarityTransform2d, fitSimilarity>},
      {"similarity",
       6,
       {"scale", "alpha", "beta", "chi", "tx", "ty", "tz"},
       false,
       make<SimilarityTransform3dEstimator>,
       transform<SimilarityTransform3d, 7>,
       reported<SimilarityTransform3d, fitSimilarity>},
      {"homography",
       4,
       {"m11", "m12", "m13", "m21", "m22", "m23", "m31", "m32", "m33"},
       false,
       make<HomographyTransform2dEstimator>,
       homography<HomographyTransform2d, 3>,
       reported<HomographyTransform2d, fitHomography>},
      {"homography",
       6,
       {"m11", "m12", "m13", "m14", "m21", "m22", "m23", "m24", "m31", "m32", "m33", "m34", "m41", "m42", "m43", "m44"},
       false,
       make<HomographyTransform3dEstimator>,
       homography<HomographyTransform3d, 4>,
       reported<HomographyTransform3d, fitHomography>},
      onlyReported<Arc2d<omReal64>, fitArc>("arc", 2),
      onlyReported<Line3d, fitLine>("line", 3),
      onlyReported<Circle3d<omReal64>, fitCircle>("circle", 3),
      onlyReported<Cylinder3d<omReal64>, fitCylinder>("cylinder", 3),
      onlyReported<Cone3d<omReal64>, fitCone>("cone", 3),
      onlyReported<Torus3d<omReal64>, fitTorus>("torus", 3)};
  return models;
}

}  // namespace ormix::command
