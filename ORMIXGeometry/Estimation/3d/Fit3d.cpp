#include <ORMIXGeometry/Entity/3d/Ellipsoid/Ellipsoid3d.h>
#include <ORMIXGeometry/Entity/3d/Plan/Plan3d.h>
#include <ORMIXGeometry/Entity/3d/Sphere/Sphere3d.h>
#include <ORMIXGeometry/Estimation/3d/Ellipsoid3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Fit3d.h>
#include <ORMIXGeometry/Estimation/3d/HomographyTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Plan3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/RigidTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/SimilarityTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Sphere3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/TranslationTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/AxesModel.h>
#include <ORMIXGeometry/Estimation/FitOf.h>
#include <ORMIXGeometry/Estimation/FitWithReport.h>
#include <ORMIXGeometry/Estimation/PlaneModel.h>
#include <ORMIXGeometry/Estimation/SphereModel.h>
#include <ORMIXGeometry/Transform/3d/HomographyTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RigidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SimilarityTransform3d.h>
#include <ORMIXGeometry/Transform/3d/TranslationTransform3d.h>
#include <ORMIXMath/Rotation/EulerAngles.h>

#include <boost/numeric/ublas/matrix.hpp>
#include <cmath>

namespace ormix::geom {

using detail::fitOf;

BoolResult fitPlan(const SampleView& points, Plan3d& plan) {
  return fitOf<Plan3dEstimator>([&](const RealVector& p) { plan.setCoords(p(2), p(0), p(1)); }, points);
}

BoolResult fitSphere(const SampleView& points, Sphere3d<omReal64>& sphere) {
  return fitOf<Sphere3dEstimator>([&](const RealVector& p) { sphere.setCoords({p(0), p(1), p(2)}, p(3)); }, points);
}

BoolResult fitEllipsoid(const SampleView& points, Ellipsoid3d<omReal64>& ellipsoid) {
  return fitOf<Ellipsoid3dEstimator>(
      [&](const RealVector& p) {
        ellipsoid.setCoords({p(0), p(1), p(2)}, p(3), p(4), p(5), p(6), p(7), p(8));
      },
      points);
}

namespace {

/// What each takes from the parameters.
auto into(TranslationTransform3d& transform) {
  return [&](const RealVector& p) { transform = TranslationTransform3d(p(0), p(1), p(2)); };
}

auto into(RigidTransform3d& transform) {
  return [&](const RealVector& p) { transform = RigidTransform3d(p(0), p(1), p(2), p(3), p(4), p(5)); };
}

auto into(SimilarityTransform3d& transform) {
  return [&](const RealVector& p) { transform = SimilarityTransform3d(p(0), p(1), p(2), p(3), p(4), p(5), p(6)); };
}

}  // namespace

BoolResult fitTranslation(const SampleView& pairs, TranslationTransform3d& transform) {
  return fitOf<TranslationTransform3dEstimator>(into(transform), pairs);
}

BoolResult fitTranslation(const SampleView& sources, const SampleView& targets, TranslationTransform3d& transform) {
  return fitOf<TranslationTransform3dEstimator>(into(transform), sources, targets);
}

BoolResult fitRigid(const SampleView& pairs, RigidTransform3d& transform) {
  return fitOf<RigidTransform3dEstimator>(into(transform), pairs);
}

BoolResult fitRigid(const SampleView& sources, const SampleView& targets, RigidTransform3d& transform) {
  return fitOf<RigidTransform3dEstimator>(into(transform), sources, targets);
}

BoolResult fitSimilarity(const SampleView& pairs, SimilarityTransform3d& transform) {
  return fitOf<SimilarityTransform3dEstimator>(into(transform), pairs);
}

BoolResult fitSimilarity(const SampleView& sources, const SampleView& targets, SimilarityTransform3d& transform) {
  return fitOf<SimilarityTransform3dEstimator>(into(transform), sources, targets);
}

BoolResult fitHomography(const SampleView& pairs, HomographyTransform3d& transform) {
  Matrix4x4 matrix;
  BoolResult result = HomographyTransform3dEstimator().computeEstimation(pairs, matrix);
  if (result) transform.init(matrix);
  return result;
}

BoolResult fitPlan(const SampleView& points, const FitOptions& options, Plan3d& plan, FitReport& report) {
  using Model = detail::PlaneModel<3>;
  Plan3dEstimator estimator;
  return detail::fitWithReport<Model>(
      estimator, "Plan3d", {"normal x", "normal y", "normal z", "rho"}, points, options, report,
      [](const Model& model, const RealVector& p) {
        const Model::Direction n{std::sin(p(0)) * std::cos(p(1)), std::sin(p(0)) * std::sin(p(1)), std::cos(p(0))};
        return model.stateOf(n, {p(2) * n[0], p(2) * n[1], p(2) * n[2]});
      },
      [&](const std::vector<omReal64>& p) {
        plan.setCoords(p[3], std::atan2(std::hypot(p[0], p[1]), p[2]), std::atan2(p[1], p[0]));
      });
}

BoolResult fitSphere(const SampleView& points, const FitOptions& options, Sphere3d<omReal64>& sphere,
                     FitReport& report) {
  using Model = detail::SphereModel<3>;
  Sphere3dEstimator estimator;
  return detail::fitWithReport<Model>(
      estimator, "Sphere3d", {"center x", "center y", "center z", "radius"}, points, options, report,
      [](const Model& model, const RealVector& p) {
        return model.stateOf({p(0), p(1), p(2)}, p(3));
      },
      [&](const std::vector<omReal64>& p) {
        sphere.setCoords({p[0], p[1], p[2]}, p[3]);
      });
}

namespace {

/// The angles of the axes that a rotation vector turns from those of the coordinates.
EulerAngles anglesOf(omReal64 x, omReal64 y, omReal64 z) {
  const omReal64 angle = std::hypot(x, y, z);
  if (!(angle > 0)) return {};
  const omReal64 factor = std::sin(angle / 2) / angle;
  EulerAngles angles;
  quaternionToEuler(std::cos(angle / 2), factor * x, factor * y, factor * z, angles.alpha, angles.beta, angles.chi);
  return angles;
}

}  // namespace

BoolResult fitEllipsoid(const SampleView& points, const FitOptions& options, Ellipsoid3d<omReal64>& ellipsoid,
                        FitReport& report) {
  using Model = detail::AxesModel<3>;
  Ellipsoid3dEstimator estimator;
  return detail::fitWithReport<Model>(
      estimator, "Ellipsoid3d",
      {"center x", "center y", "center z", "major radius", "medium radius", "minor radius", "rotation x", "rotation y",
       "rotation z"},
      points, options, report,
      [](const Model& model, const RealVector& p) {
        const RotationMatrix matrix = eulerToMatrix(p(6), p(7), p(8));
        Model::Axes axes;
        for (std::size_t k = 0; k < 3; ++k)
          for (std::size_t d = 0; d < 3; ++d) axes[k][d] = matrix[d][k];
        return model.stateOf({p(0), p(1), p(2)}, {p(3), p(4), p(5)}, axes);
      },
      [&](const std::vector<omReal64>& p) {
        const EulerAngles angles = anglesOf(p[6], p[7], p[8]);
        ellipsoid.setCoords({p[0], p[1], p[2]}, p[3], p[4], p[5], angles.alpha, angles.beta, angles.chi);
      });
}

}  // namespace ormix::geom
