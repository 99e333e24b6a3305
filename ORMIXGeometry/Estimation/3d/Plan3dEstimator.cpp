#include <ORMIXGeometry/Estimation/3d/Plan3dEstimator.h>
#include <ORMIXGeometry/Estimation/CentredSums.h>
#include <ORMIXMath/Algebra/EigenDecomposition.h>
#include <ORMIXMath/Fitting/ShapesFromPoints.h>
#include <ORMIXUtil/NumericLimits.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

namespace ormix {
template class VersionedLevel<geom::Plan3dEstimator, BaseEstimator>;
template class RegisteredObject<geom::Plan3dEstimator, BaseEstimator>;
}  // namespace ormix

namespace ormix::geom {

template class GeometryEstimator<Plan3dEstimator>;

namespace {
const DynamicRegistrator<Plan3dEstimator> g_classRegistrator;

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

/// The normal once more from the samples: the heights over the plan that the eigenvectors give, as linear functions of
/// the places in it, say by how much to turn it. A cloud a hundred times as long as wide loses four digits of its
/// normal to the squares of the covariance, and only two of the length to the heights.
void sharpenNormal(const SampleView& samples, const Vector& mean, const omReal64 (&axes)[9], Vector& normal) {
  omReal64 byPlace[2] = {0, 0};
  omReal64 spread[2] = {0, 0};
  for (std::size_t i = 0; i < samples.nbSamples; ++i) {
    const omReal64* p = samples[i];
    const omReal64 x = p[0] - mean[0];
    const omReal64 y = p[1] - mean[1];
    const omReal64 z = p[2] - mean[2];
    const omReal64 height = axes[0] * x + axes[1] * y + axes[2] * z;
    for (std::size_t k = 0; k < 2; ++k) {
      const omReal64 place = axes[3 * k + 3] * x + axes[3 * k + 4] * y + axes[3 * k + 5] * z;
      byPlace[k] += height * place;
      spread[k] += place * place;
    }
  }
  for (std::size_t k = 0; k < 2; ++k)
    for (std::size_t d = 0; d < 3; ++d) normal[d] -= byPlace[k] / spread[k] * axes[3 * k + 3 + d];
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
  if (!(values[1] - values[0] > NumericLimits<omReal64>::s_sqrt_eps * values[2])) return false;
  Vector normal{vectors[0], vectors[1], vectors[2]};
  if (values[2] > s_elongated * values[1]) sharpenNormal(samples, all.mean, vectors, normal);
  return planFromNormal(all.mean[0], all.mean[1], all.mean[2], normal[0], normal[1], normal[2], rho, theta, phi);
}

}  // namespace

BoolResult Plan3dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  const omReal64* p = samples.data;
  const bool found =
      samples.nbSamples == s_minimalDataSize
          ? planFromPoints(p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7], p[8], params(2), params(0), params(1))
          : planFromSamples(samples, params(2), params(0), params(1));
  return found ? BoolResult() : detail::estimationFailure(eEstimationMessage::eEsM_PlanNoDirection);
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
