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
#include <ORMIXGeometry/Estimation/FitOf.h>
#include <ORMIXGeometry/Transform/3d/HomographyTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RigidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SimilarityTransform3d.h>
#include <ORMIXGeometry/Transform/3d/TranslationTransform3d.h>

#include <boost/numeric/ublas/matrix.hpp>

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

}  // namespace ormix::geom
