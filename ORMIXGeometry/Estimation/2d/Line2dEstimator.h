#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(extern, Line2dEstimator)

namespace ormix::geom {

/// Line x cos theta + y sin theta = rho of points (x, y): theta, rho.
///
/// Two points give the line through them. More give the line of least squared distances, the principal axis of the
/// cloud (Pearson 1901), with theta in [0, 3pi/2) and rho of either sign, so that one line has two representations.
/// Fails with message 11 for points without a preferred direction: those that coincide, and those whose moments about
/// the mean have |Sxx - Syy| below sqrt(epsilon) max(Sxx, Syy) and |Sxy| below sqrt(epsilon). The latter threshold is
/// absolute (intended): points of extent 1e-5 along a diagonal fail, too. The residual of a point is its signed
/// distance. O(points); nothing is allocated.
class ORMIX_GEOMETRY_API Line2dEstimator : public GeometryEstimator<Line2dEstimator> {
 public:
  static constexpr const char* s_className = "ormix::geom::Line2dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 2;                         ///< points
  static constexpr std::size_t s_nbParams = 2;                                ///< theta, rho
  static constexpr std::size_t s_sampleDimension = 2;                         ///< x, y

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;
};

}  // namespace ormix::geom
