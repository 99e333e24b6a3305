#include <ORMIXGeometry/Estimation/2d/Line2dEstimator.h>
#include <ORMIXGeometry/Estimation/CentredSums.h>
#include <ORMIXMath/Fitting/ShapesFromPoints.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXUtil/NumericLimits.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

#include <algorithm>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(, Line2dEstimator)

namespace ormix::geom {

namespace {

/// Products xx, xy, yy of a centred point.
struct PointProducts2d {
  static constexpr std::size_t dimension = 2;
  static constexpr std::size_t nbProducts = 3;

  [[gnu::always_inline]] static inline void add(const detail::SumLanes* c, detail::SumLanes* sums) {
    sums[0] += c[0] * c[0];
    sums[1] += c[0] * c[1];
    sums[2] += c[1] * c[1];
  }

  static bool isSmall(const omReal64* step, const omReal64* sums) {
    return 2 * (step[0] + step[2]) <= sums[0] + sums[2];
  }
};

struct Moments {
  omReal64 mx, my;         ///< means
  omReal64 sxx, sxy, syy;  ///< means of products of centred coordinates
};

Moments momentsOf(const SampleView& samples) {
  const auto all = detail::centredSums<PointProducts2d>(samples);
  return {all.mean[0], all.mean[1], all.sums[0] / all.nbRows, all.sums[1] / all.nbRows, all.sums[2] / all.nbRows};
}

bool haveDirection(const Moments& m) {
  constexpr omReal64 threshold = NumericLimits<omReal64>::s_sqrt_eps;
  const omReal64 largest = std::max(m.sxx, m.syy);
  // The absolute threshold of Sxy is intended. False for NaN.
  return largest > 0 && std::isfinite(m.sxx + m.syy) && std::isfinite(m.sxy) &&
         (std::abs(m.sxx - m.syy) >= largest * threshold || std::abs(m.sxy) >= threshold);
}

/// The normal's angle: the extremal directions are phi and phi + pi / 2, with |phi| at most pi / 4 up to a half turn,
/// and of these the one with the smaller sum of squared residuals. That sum is
/// n (Sxx cos² + 2 Sxy cos sin + Syy sin²): it is smaller for phi where Sxx is less than Syy.
omReal64 normalAngle(const Moments& m) {
  const omReal64 difference = m.sxx - m.syy;
  omReal64 phi = difference == 0 ? s_pi / 4 : std::atan(2 * m.sxy / difference) / 2;
  if (phi < 0) phi += s_pi;
  const bool isFirst = difference == 0 ? m.sxy <= 0 : difference < 0;
  return isFirst ? phi : phi + s_pi / 2;
}

}  // namespace

BoolResult Line2dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  if (samples.nbSamples == s_minimalDataSize) {
    const omReal64* p = samples.data;
    if (lineFromPoints(p[0], p[1], p[2], p[3], params(0), params(1))) return {};
    return failOf(samples, eEC_NoDirection, detail::estimationFailure(eEstimationMessage::eEsM_LineNoDirection));
  }
  const Moments moments = momentsOf(samples);
  if (!haveDirection(moments)) {
    const omReal64 largest = std::max(moments.sxx, moments.syy), threshold = NumericLimits<omReal64>::s_sqrt_eps;
    BoolResult failed = detail::estimationFailure(eEstimationMessage::eEsM_LineNoDirection);
    // Of what is no direction only by the absolute threshold, that is said.
    if (std::abs(moments.sxy) > threshold * largest)
      return fail(eEC_NoDirection, detail::s_prescribedProduct, std::abs(moments.sxy), threshold, std::move(failed));
    return failOf(samples, eEC_NoDirection, std::move(failed));
  }
  const omReal64 theta = normalAngle(moments);
  params(0) = theta;
  params(1) = moments.mx * std::cos(theta) + moments.my * std::sin(theta);
  return {};
}

BoolResult Line2dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                 RealVector& residuals) const {
  const omReal64 co = std::cos(params(0));
  const omReal64 si = std::sin(params(0));
  const omReal64 rho = params(1);
  return detail::fillResiduals<s_sampleDimension>(samples, residuals,
                                                  [=](const omReal64* p) { return p[0] * co + p[1] * si - rho; });
}

}  // namespace ormix::geom
