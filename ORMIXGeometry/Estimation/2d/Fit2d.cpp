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
#include <ORMIXGeometry/Estimation/FitOf.h>
#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>

#include <boost/numeric/ublas/matrix.hpp>
#include <boost/numeric/ublas/vector.hpp>

namespace ormix::geom {

using detail::fitOf;

BoolResult fitCircle(const SampleView& points, Circle2d<omReal64>& circle) {
  return fitOf<Circle2dEstimator>([&](const RealVector& p) { circle.setCoords({p(0), p(1)}, p(2)); }, points);
}

BoolResult fitEllipse(const SampleView& points, Ellipse2d<omReal64>& ellipse) {
  return fitOf<Ellipse2dEstimator>(
      [&](const RealVector& p) {
        ellipse.setCoords({p(0), p(1)}, p(2), p(3), p(4));
      },
      points);
}

BoolResult fitLine(const SampleView& points, Line2d& line) {
  return fitOf<Line2dEstimator>([&](const RealVector& p) { line.setCoords(p(1), p(0)); }, points);
}

BoolResult fitIntersection(const SampleView& lines, Point2d<omReal64>& point) {
  return fitOf<Line2dIntersectionEstimator>([&](const RealVector& p) { point.setCoords(p(0) / p(2), p(1) / p(2)); },
                                            lines);
}

BoolResult fitTranslation(const SampleView& pairs, TranslationTransform2d& transform) {
  return fitOf<TranslationTransform2dEstimator>(
      [&](const RealVector& p) { transform = TranslationTransform2d(p(0), p(1)); }, pairs);
}

BoolResult fitRigid(const SampleView& pairs, RigidTransform2d& transform) {
  return fitOf<RigidTransform2dEstimator>([&](const RealVector& p) { transform = RigidTransform2d(p(0), p(1), p(2)); },
                                          pairs);
}

BoolResult fitSimilarity(const SampleView& pairs, SimilarityTransform2d& transform) {
  return fitOf<SimilarityTransform2dEstimator>(
      [&](const RealVector& p) { transform = SimilarityTransform2d(p(0), p(1), p(2), p(3)); }, pairs);
}

BoolResult fitHomography(const SampleView& pairs, HomographyTransform2d& transform) {
  Matrix3x3 matrix;
  HomographyTransform2dEstimator estimator;
  BoolResult result = estimator.computeEstimation(pairs, matrix);
  if (result) transform.init(matrix);
  return result;
}

}  // namespace ormix::geom
