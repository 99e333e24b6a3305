#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>
#include <ORMIXMath/Estimation/RobustModel.h>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(extern, Line2dIntersectionEstimator)

namespace ormix::geom {

/// Common point of lines (theta, rho), as the homogeneous vector (a, b, c) with c = 1: the finite point (a, b) that
/// minimises the sum of squared distances to the lines.
///
/// Fails with message 10 when all lines are parallel to the rounding of their angles. The residual of a line is
/// a cos theta + b sin theta - c rho. O(lines); nothing is allocated.
class ORMIX_GEOMETRY_API Line2dIntersectionEstimator : public GeometryEstimator<Line2dIntersectionEstimator>,
                                                       public RobustModel {
 public:
  static constexpr const char* s_className = "ormix::geom::Line2dIntersectionEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 2;                                     ///< lines
  static constexpr std::size_t s_nbParams = 3;                                            ///< a, b, c
  static constexpr std::size_t s_sampleDimension = 2;                                     ///< theta, rho

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;
  /// |c|: with c = 1 residuals are distances.
  omReal64 getResidualScale(const RealVector& params) const override;
  /// An angle and a length.
  std::size_t getUnitOfCoordinate(std::size_t coordinate, std::size_t) const override { return coordinate; }
};

}  // namespace ormix::geom
