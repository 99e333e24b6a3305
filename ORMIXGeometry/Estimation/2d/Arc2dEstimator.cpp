#include <ORMIXGeometry/Estimation/2d/Arc2dEstimator.h>
#include <ORMIXGeometry/Estimation/ShapeParams.h>
#include <ORMIXMath/Fitting/SpatialShapesFromSamples.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(, Arc2dEstimator)

namespace ormix::geom {

namespace {

/// The samples that lie on a circle with many others, without wide gaps between them: runs of at least an eighth.
std::vector<omReal64> withoutThoseApart(const SampleView& samples, const PlanarPoint& center) {
  // A gap of eight times the usual one occurs once in 3,000 gaps by accident.
  constexpr omReal64 wide = 8;
  constexpr omReal64 ln2 = 0.6931471805599453;
  const std::size_t n = samples.nbSamples;
  std::vector<std::pair<omReal64, std::size_t>> turns;
  for (std::size_t i = 0; i < n; ++i)
    turns.emplace_back(std::atan2(samples[i][1] - center.y, samples[i][0] - center.x), i);
  std::sort(turns.begin(), turns.end());
  std::vector<omReal64> gaps(n);
  for (std::size_t k = 0; k < n; ++k)
    gaps[k] = k + 1 < n ? turns[k + 1].first - turns[k].first : turns[0].first + 2 * s_pi - turns[k].first;
  std::vector<omReal64> sorted = gaps;
  std::nth_element(sorted.begin(), sorted.begin() + static_cast<std::ptrdiff_t>(n / 2), sorted.end());
  // The median of gaps between points at random is ln 2 times their mean.
  const omReal64 limit = wide * sorted[n / 2] / ln2;
  // From behind the widest gap on, which no run goes over.
  const auto first = static_cast<std::size_t>(std::max_element(gaps.begin(), gaps.end()) - gaps.begin()) + 1;
  std::vector<omReal64> kept;
  std::size_t begin = 0;
  for (std::size_t k = 0; k < n; ++k) {
    if (k + 1 < n && !(gaps[(first + k) % n] > limit)) continue;
    for (std::size_t run = begin; run <= k && 8 * (k + 1 - begin) >= n; ++run) {
      const omReal64* sample = samples[turns[(first + run) % n].second];
      kept.insert(kept.end(), sample, sample + 2);
    }
    begin = k + 1;
  }
  return kept;
}

}  // namespace

BoolResult Arc2dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  PlanarArc arc;
  const EstimationStatus status = arcFromSamples(samples, arc);
  if (!status)
    return fail(status.code, status.quantity, status.value, status.threshold, detail::shapeFailure("an arc", status));
  detail::setParams(arc, params);
  return {};
}

BoolResult Arc2dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                RealVector& residuals) const {
  const PlanarArc arc = detail::shapeOf<PlanarArc>(params);
  return detail::fillResiduals<s_sampleDimension>(samples, residuals, [&arc](const omReal64* p) {
    return std::hypot(p[0] - arc.center.x, p[1] - arc.center.y) - arc.radius;
  });
}

bool Arc2dEstimator::estimateRoughly(const SampleView& samples, RealVector& params) const {
  PlanarArc arc;
  if (!arcFromSamples(samples, arc)) return false;
  detail::setParams(arc, params);
  return true;
}

bool Arc2dEstimator::refineRoughly(const SampleView& samples, RealVector& params) const {
  const std::vector<omReal64> kept = withoutThoseApart(samples, detail::shapeOf<PlanarArc>(params).center);
  return estimateRoughly({kept.data(), kept.size() / 2, 2}, params);
}

}  // namespace ormix::geom
