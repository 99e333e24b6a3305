#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(extern, Ellipse2dEstimator)

namespace ormix::geom {

/// Ellipse of points (x, y): centre x, centre y, major radius a, minor radius b, the direction theta of a in [0, pi).
///
/// The conic of least squared algebraic distances, in coordinates shifted and scaled to the extent of the points, under
/// a constraint that is invariant to rigid motions (Bookstein 1979; solved as in Gander, Golub and Strebel 1994). Fails
/// with message 2 when the rank of the system is below 2 (points that coincide), 3 when there is no conic or it is not
/// an ellipse, 4 when a radius is 0. The residual of a point is its unsigned distance to the curve. O(points); nothing
/// is allocated.
class ORMIX_GEOMETRY_API Ellipse2dEstimator : public GeometryEstimator<Ellipse2dEstimator> {
 public:
  static constexpr const char* s_className = "ormix::geom::Ellipse2dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 5;                            ///< points
  static constexpr std::size_t s_nbParams = 5;                                   ///< cx, cy, a, b, theta
  static constexpr std::size_t s_sampleDimension = 2;                            ///< x, y

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;
};

}  // namespace ormix::geom
