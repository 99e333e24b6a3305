#include <ORMIXGeometry/Entity/2d/Arc/Arc2d.h>
#include <ORMIXGeometry/Estimation/2d/Arc2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Fit2d.h>
#include <ORMIXGeometry/Estimation/FitWithReport.h>
#include <ORMIXGeometry/Estimation/SphereModel.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <cmath>

namespace ormix::geom {

namespace {

/// The arc of a circle that holds the feet of the samples with a weight: the rest of the widest gap between two.
Arc2d<omReal64> arcAround(const std::vector<omReal64>& circle, const SampleView& points,
                          const std::vector<omReal64>& weights) {
  std::vector<omReal64> angles;
  for (std::size_t i = 0; i < points.nbSamples; ++i)
    if (weights.empty() || weights[i] > 0)
      angles.push_back(std::atan2(points[i][1] - circle[1], points[i][0] - circle[0]));
  std::sort(angles.begin(), angles.end());
  std::size_t start = 0;
  omReal64 widest = angles.front() + s_twoPi - angles.back();
  for (std::size_t i = 1; i < angles.size(); ++i) {
    const omReal64 gap = angles[i] - angles[i - 1];
    if (!(gap > widest)) continue;
    widest = gap;
    start = i;
  }
  return {{circle[0], circle[1]}, circle[2], angles[start], s_twoPi - widest};
}

}  // namespace

BoolResult fitArc(const SampleView& points, const FitOptions& options, Arc2d<omReal64>& arc, FitReport& report) {
  using Model = detail::SphereModel<2>;
  Arc2dEstimator estimator;
  std::vector<omReal64> circle;
  const BoolResult result = detail::fitWithReport<Model>(
      estimator, "Arc2d", {"center x", "center y", "radius"}, points, options, report,
      [](const Model& model, const RealVector& p) {
        return model.stateOf({p(0), p(1)}, p(2));
      },
      [&](const std::vector<omReal64>& p) { circle = p; });
  // The weights of the report are 0 where a sample was left out.
  if (result) arc = arcAround(circle, points, report.weights);
  return result;
}

}  // namespace ormix::geom
