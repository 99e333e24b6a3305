#include <ORMIXGeometry/Entity/2d/Arc/Arc2d.h>
#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Estimation/2d/Arc2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Circle2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Ellipse2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Fit2d.h>
#include <ORMIXGeometry/Estimation/2d/HomographyTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Line2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Line2dIntersectionEstimator.h>
#include <ORMIXGeometry/Estimation/2d/RigidTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/SimilarityTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/TranslationTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/AxesModel.h>
#include <ORMIXGeometry/Estimation/FitOf.h>
#include <ORMIXGeometry/Estimation/FitWithReport.h>
#include <ORMIXGeometry/Estimation/PlaneModel.h>
#include <ORMIXGeometry/Estimation/SphereModel.h>
#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>

#include <boost/numeric/ublas/matrix.hpp>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>

namespace ormix::geom {

using detail::fitOf;

BoolResult fitCircle(const SampleView& points, Circle2d<omReal64>& circle) {
  return fitOf<Circle2dEstimator>([&](const RealVector& p) { circle.setCoords({p(0), p(1)}, p(2)); }, points);
}

BoolResult fitArc(const SampleView& points, Arc2d<omReal64>& arc) {
  return fitOf<Arc2dEstimator>([&](const RealVector& p) { arc.setCoords({p(0), p(1)}, p(2), p(3), p(4)); }, points);
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

BoolResult fitCircle(const SampleView& points, const FitOptions& options, Circle2d<omReal64>& circle,
                     FitReport& report) {
  using Model = detail::SphereModel<2>;
  Circle2dEstimator estimator;
  return detail::fitWithReport<Model>(
      estimator, "Circle2d", {"center x", "center y", "radius"}, points, options, report,
      [](const Model& model, const RealVector& p) {
        return model.stateOf({p(0), p(1)}, p(2));
      },
      [&](const std::vector<omReal64>& p) {
        circle.setCoords({p[0], p[1]}, p[2]);
      });
}

BoolResult fitEllipse(const SampleView& points, const FitOptions& options, Ellipse2d<omReal64>& ellipse,
                      FitReport& report) {
  using Model = detail::AxesModel<2>;
  Ellipse2dEstimator estimator;
  return detail::fitWithReport<Model>(
      estimator, "Ellipse2d", {"center x", "center y", "major radius", "minor radius", "theta"}, points, options,
      report,
      [](const Model& model, const RealVector& p) {
        const omReal64 co = std::cos(p(4));
        const omReal64 si = std::sin(p(4));
        return model.stateOf({p(0), p(1)}, {p(2), p(3)}, {{{co, si}, {-si, co}}});
      },
      [&](const std::vector<omReal64>& p) {
        ellipse.setCoords({p[0], p[1]}, p[2], p[3], p[4]);
      });
}

BoolResult fitLine(const SampleView& points, const FitOptions& options, Line2d& line, FitReport& report) {
  using Model = detail::PlaneModel<2>;
  Line2dEstimator estimator;
  return detail::fitWithReport<Model>(
      estimator, "Line2d", {"rho", "theta"}, points, options, report,
      [](const Model& model, const RealVector& p) {
        const omReal64 co = std::cos(p(0));
        const omReal64 si = std::sin(p(0));
        return model.stateOf({co, si}, {p(1) * co, p(1) * si});
      },
      [&](const std::vector<omReal64>& p) { line.setCoords(p[0], p[1]); });
}

}  // namespace ormix::geom
