#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Estimation/2d/Circle2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Ellipse2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Fit2d.h>
#include <ORMIXGeometry/Estimation/2d/HomographyTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Line2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Line2dIntersectionEstimator.h>
#include <ORMIXGeometry/Estimation/2d/RigidTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/SimilarityTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/TranslationTransform2dEstimator.h>
#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>

#include <boost/numeric/ublas/matrix.hpp>
#include <boost/numeric/ublas/vector.hpp>

namespace ormix::geom {
namespace {

/// Estimates, and hands the parameters on when that succeeded.
template <class Estimator, class Use>
BoolResult fit(const SampleView& samples, const Use& use) {
  RealVector params;
  BoolResult result = Estimator().computeEstimation(samples, params);
  if (result) use(params);
  return result;
}

}  // namespace

BoolResult fitCircle(const SampleView& points, Circle2d<omReal64>& circle) {
  return fit<Circle2dEstimator>(points, [&](const RealVector& p) { circle.setCoords({p(0), p(1)}, p(2)); });
}

BoolResult fitEllipse(const SampleView& points, Ellipse2d<omReal64>& ellipse) {
  return fit<Ellipse2dEstimator>(points, [&](const RealVector& p) {
    ellipse.setCoords({p(0), p(1)}, p(2), p(3), p(4));
  });
}

BoolResult fitLine(const SampleView& points, Line2d& line) {
  return fit<Line2dEstimator>(points, [&](const RealVector& p) { line.setCoords(p(1), p(0)); });
}

BoolResult fitIntersection(const SampleView& lines, Point2d<omReal64>& point) {
  return fit<Line2dIntersectionEstimator>(lines,
                                          [&](const RealVector& p) { point.setCoords(p(0) / p(2), p(1) / p(2)); });
}

BoolResult fitTranslation(const SampleView& pairs, TranslationTransform2d& transform) {
  return fit<TranslationTransform2dEstimator>(
      pairs, [&](const RealVector& p) { transform = TranslationTransform2d(p(0), p(1)); });
}

BoolResult fitRigid(const SampleView& pairs, RigidTransform2d& transform) {
  return fit<RigidTransform2dEstimator>(pairs,
                                        [&](const RealVector& p) { transform = RigidTransform2d(p(0), p(1), p(2)); });
}

BoolResult fitSimilarity(const SampleView& pairs, SimilarityTransform2d& transform) {
  return fit<SimilarityTransform2dEstimator>(
      pairs, [&](const RealVector& p) { transform = SimilarityTransform2d(p(0), p(1), p(2), p(3)); });
}

BoolResult fitHomography(const SampleView& pairs, HomographyTransform2d& transform) {
  Matrix3x3 matrix;
  HomographyTransform2dEstimator estimator;
  BoolResult result = estimator.computeEstimation(pairs, matrix);
  if (result) transform.init(matrix);
  return result;
}

}  // namespace ormix::geom
