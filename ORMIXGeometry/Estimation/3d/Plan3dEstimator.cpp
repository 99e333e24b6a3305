#include <ORMIXGeometry/Estimation/3d/Plan3dEstimator.h>
#include <ORMIXGeometry/Estimation/CentredSums.h>
#include <ORMIXMath/Algebra/EigenDecomposition.h>
#include <ORMIXMath/Fitting/ShapesFromPoints.h>
#include <ORMIXUtil/NumericLimits.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(, Plan3dEstimator)

namespace ormix::geom {

namespace {
/// Products xx, xy, xz, yy, yz, zz of a centred point.
struct PointProducts3d {
  static constexpr std::size_t dimension = 3;
  static constexpr std::size_t nbProducts = 6;

  [[gnu::always_inline]] static inline void add(const detail::SumLanes* c, detail::SumLanes* sums) {
    sums[0] += c[0] * c[0];
    sums[1] += c[0] * c[1];
    sums[2] += c[0] * c[2];
    sums[3] += c[1] * c[1];
    sums[4] += c[1] * c[2];
    sums[5] += c[2] * c[2];
  }

  static bool isSmall(const omReal64* step, const omReal64* sums) {
    return 2 * (step[0] + step[3] + step[5]) <= sums[0] + sums[3] + sums[5];
  }
};

using Vector = std::array<omReal64, 3>;

// Beyond this ratio of variances in the plan what squaring took from the eigenvectors is brought back.
constexpr omReal64 s_elongated = 16;

/// How far a cloud reaches over its plan, and in it across and along, as standard deviations.
struct Spreads {
  omReal64 height;
  omReal64 width;
  omReal64 length;
};

/// The normal and the spreads once more from the samples. A cloud a hundred times as long as wide loses four digits of
/// both to the squares of the covariance. In the coordinates of its eigenvectors the products with the length are small
/// and are taken out, and what remains is the covariance of the other two, as exact as they are.
Spreads sharpen(const SampleView& samples, const Vector& mean, const omReal64 (&axes)[9], Vector& normal) {
  omReal64 hh = 0, hw = 0, ww = 0;
  omReal64 hl = 0, wl = 0, ll = 0;
  for (std::size_t i = 0; i < samples.nbSamples; ++i) {
    const omReal64* p = samples[i];
    const omReal64 x = p[0] - mean[0];
    const omReal64 y = p[1] - mean[1];
    const omReal64 z = p[2] - mean[2];
    const omReal64 h = axes[0] * x + axes[1] * y + axes[2] * z;
    const omReal64 w = axes[3] * x + axes[4] * y + axes[5] * z;
    const omReal64 l = axes[6] * x + axes[7] * y + axes[8] * z;
    hh += h * h;
    hw += h * w;
    ww += w * w;
    hl += h * l;
    wl += w * l;
    ll += l * l;
  }
  hh -= hl * hl / ll;
  hw -= hl * wl / ll;
  ww -= wl * wl / ll;
  const omReal64 angle = std::atan2(2 * hw, ww - hh) / 2;
  const omReal64 co = std::cos(angle);
  const omReal64 si = std::sin(angle);
  const omReal64 slope = (co * hl - si * wl) / ll;
  for (std::size_t d = 0; d < 3; ++d) normal[d] = co * axes[d] - si * axes[3 + d] - slope * axes[6 + d];
  const omReal64 largest = (hh + ww) / 2 + std::hypot((ww - hh) / 2, hw);
  const omReal64 smallest = largest > 0 ? std::max((hh * (ww / largest) - hw * (hw / largest)), 0.0) : 0.0;
  const auto spread = [&](omReal64 square) { return std::sqrt(square / static_cast<omReal64>(samples.nbSamples)); };
  return {spread(smallest), spread(largest), spread(ll)};
}

/// Whether a width is more than what rounding of coordinates about the mean makes of none.
bool exceedsRounding(omReal64 width, const Vector& mean) {
  const omReal64 largest = std::max({std::abs(mean[0]), std::abs(mean[1]), std::abs(mean[2])});
  return width > 4 * NumericLimits<omReal64>::s_eps * largest;
}

/// The plan of least squared distances; false when the points have no privileged direction.
bool planFromSamples(const SampleView& samples, omReal64& rho, omReal64& theta, omReal64& phi) {
  const auto all = detail::centredSums<PointProducts3d>(samples);
  const auto& s = all.sums;
  const omReal64 largest = std::max({s[0], s[3], s[5]});
  if (!(largest > 0) || !std::isfinite(largest)) return false;
  // Relative to the largest, so that nothing of the covariance over- or underflows.
  omReal64 values[3];
  omReal64 vectors[9];
  if (!eigenDecomposition<omReal64>(s[0] / largest, s[1] / largest, s[2] / largest, s[3] / largest, s[4] / largest,
                                    s[5] / largest, values, vectors))
    return false;
  Vector normal{vectors[0], vectors[1], vectors[2]};
  Spreads spreads{std::sqrt(std::max(values[0], 0.0)), std::sqrt(std::max(values[1], 0.0)), std::sqrt(values[2])};
  if (values[2] > s_elongated * values[1]) {
    spreads = sharpen(samples, all.mean, vectors, normal);
    if (!exceedsRounding(spreads.width, all.mean)) return false;
  }
  if (!(spreads.width - spreads.height > NumericLimits<omReal64>::s_sqrt_eps * spreads.length)) return false;
  return planFromNormal(all.mean[0], all.mean[1], all.mean[2], normal[0], normal[1], normal[2], rho, theta, phi);
}

}  // namespace

BoolResult Plan3dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  const omReal64* p = samples.data;
  const bool found =
      samples.nbSamples == s_minimalDataSize
          ? planFromPoints(p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7], p[8], params(2), params(0), params(1))
          : planFromSamples(samples, params(2), params(0), params(1));
  if (found) return {};
  return failOf(samples, eEC_NoDirection, detail::estimationFailure(eEstimationMessage::eEsM_PlanNoDirection));
}

BoolResult Plan3dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                 RealVector& residuals) const {
  const omReal64 nx = std::sin(params(0)) * std::cos(params(1));
  const omReal64 ny = std::sin(params(0)) * std::sin(params(1));
  const omReal64 nz = std::cos(params(0));
  const omReal64 d = params(2);
  return detail::fillResiduals<s_sampleDimension>(
      samples, residuals, [=](const omReal64* p) { return p[0] * nx + p[1] * ny + p[2] * nz - d; });
}

}  // namespace ormix::geom
