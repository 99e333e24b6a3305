#include <ORMIXGeometry/Estimation/2d/Line2dIntersectionEstimator.h>
#include <ORMIXMath/Algebra/SvdSolve.h>
#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXUtil/NumericLimits.h>
#include <ORMIXGeometry/Estimation/GeometryEstimator.ipp>

#include <algorithm>
#include <utility>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(, Line2dIntersectionEstimator)

namespace ormix::geom {

namespace {

/// The power of two by which distances are divided so that their squares neither overflow nor underflow; 1 when all are
/// 0, NaN or infinite when one of them is.
omReal64 unitOf(const SampleView& lines) {
  omReal64 largest = 0;
  for (std::size_t i = 0; i < lines.nbSamples; ++i) {
    const omReal64 distance = std::abs(lines[i][1]);
    // Not std::max, which ignores NaN.
    if (std::isnan(distance) || distance > largest) largest = distance;
  }
  if (!(largest > 0) || !std::isfinite(largest)) return largest == 0 ? 1 : largest;
  return std::ldexp(1.0, std::max(std::ilogb(largest), -1000));
}

/// The system (cos theta, sin theta | rho / unit), reduced to triangular form.
TallQr<3> reducedSystem(const SampleView& lines, omReal64 unit) {
  TallQr<3> qr;
  for (std::size_t start = 0; start < lines.nbSamples; start += TallQr<3>::s_blockRows) {
    const std::size_t nbRows = std::min(TallQr<3>::s_blockRows, lines.nbSamples - start);
    for (std::size_t i = 0; i < nbRows; ++i) {
      const omReal64* line = lines[start + i];
      qr.block(0)[i] = std::cos(line[0]);
      qr.block(1)[i] = std::sin(line[0]);
      qr.block(2)[i] = line[1] / unit;
    }
    qr.fold(nbRows);
  }
  return qr;
}

/// The rounding errors of the angles, up to pi, and of the reduction.
omReal64 roundingOf(std::size_t nbLines) {
  return NumericLimits<omReal64>::s_eps * static_cast<omReal64>(std::max(nbLines, std::size_t{4}));
}

/// Whether the two columns are parallel within these.
bool areParallel(const TallQr<3>& qr, std::size_t nbLines) {
  const omReal64 a = qr(0, 0);
  const omReal64 b = qr(0, 1);
  const omReal64 c = qr(1, 1);
  return !(std::abs(a * c) > roundingOf(nbLines) * (a * a + b * b + c * c));
}

}  // namespace

BoolResult Line2dIntersectionEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  const omReal64 unit = unitOf(samples);
  const TallQr<3> qr = reducedSystem(samples, unit);
  const omReal64 system[4] = {qr(0, 0), qr(0, 1), 0, qr(1, 1)};
  const omReal64 rightSide[2] = {qr(0, 2), qr(1, 2)};
  omReal64 point[2] = {0, 0};
  constexpr std::size_t neededRank = 2;
  const bool found = std::isfinite(unit) && !areParallel(qr, samples.nbSamples) &&
                     svdSolveSmall(system, 2, 2, rightSide, point) >= neededRank;
  params(0) = point[0] * unit;
  params(1) = point[1] * unit;
  params(2) = 1;
  if (found && std::isfinite(params(0)) && std::isfinite(params(1))) return {};
  BoolResult failed = detail::estimationFailure(eEstimationMessage::eEsM_IntersectionUndefined);
  if (!std::isfinite(unit) || !areParallel(qr, samples.nbSamples))
    return fail(eEC_NotFinite, {}, 0, 0, std::move(failed));
  const omReal64 lengths = qr(0, 0) * qr(0, 0) + qr(0, 1) * qr(0, 1) + qr(1, 1) * qr(1, 1);
  return fail(eEC_RankDeficient, "product of the singular values of the directions over the sum of their squares",
              std::abs(qr(0, 0) * qr(1, 1)) / lengths, roundingOf(samples.nbSamples), std::move(failed));
}

BoolResult Line2dIntersectionEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                             RealVector& residuals) const {
  const omReal64 a = params(0);
  const omReal64 b = params(1);
  const omReal64 c = params(2);
  return detail::fillResiduals<s_sampleDimension>(samples, residuals, [=](const omReal64* line) {
    return a * std::cos(line[0]) + b * std::sin(line[0]) - c * line[1];
  });
}

omReal64 Line2dIntersectionEstimator::getResidualScale(const RealVector& params) const { return std::abs(params(2)); }

}  // namespace ormix::geom
