#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(extern, Line3dEstimator)

namespace ormix::geom {

/// Line of points (x, y, z): their mean, and the direction of largest variance, of length 1 (Pearson1901).
///
/// The one with the least sum of squared distances, see lineFromSamples(), which also says when it fails (message 23).
/// The residual of a point is its distance from the line, not negative.
class ORMIX_GEOMETRY_API Line3dEstimator : public GeometryEstimator<Line3dEstimator> {
 public:
  static constexpr const char* s_className = "ormix::geom::Line3dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 2;                         ///< points
  static constexpr std::size_t s_nbParams = 6;                                ///< point x, y, z, direction x, y, z
  static constexpr std::size_t s_sampleDimension = 3;                         ///< x, y, z

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;
};

}  // namespace ormix::geom
