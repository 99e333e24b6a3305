#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>
#include <ORMIXMath/Estimation/RobustModel.h>

#include <vector>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(extern, Ellipse2dEstimator)

namespace ormix::geom {

/// Ellipse of points (x, y): centre x, centre y, major radius a, minor radius b, the direction theta of a in [0, pi).
///
/// The conic of least squared algebraic distances, in coordinates shifted and scaled to the extent of the points, under
/// a constraint that is invariant to rigid motions (Bookstein 1979; solved as in Gander, Golub and Strebel 1994). Fails
/// with message 2 when the rank of the system is below 2 (points that coincide), 3 when there is no conic or it is not
/// an ellipse, 4 when a radius is 0. The residual of a point is its unsigned distance to the curve. O(points); nothing
/// is allocated.
class ORMIX_GEOMETRY_API Ellipse2dEstimator : public GeometryEstimator<Ellipse2dEstimator>, public RobustModel {
 public:
  static constexpr const char* s_className = "ormix::geom::Ellipse2dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 5;                            ///< points
  static constexpr std::size_t s_nbParams = 5;                                   ///< cx, cy, a, b, theta
  static constexpr std::size_t s_sampleDimension = 2;                            ///< x, y

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;

  /// For robust loops: the one through the fewest points, without the tests of processViewEstimation(), and its fit.
  /// @{
  bool hasRoughEstimation() const override { return true; }
  std::size_t estimateMinimal(const SampleView& samples, std::size_t nbParams,
                              std::vector<RealVector>& models) const override;
  bool refineRoughly(const SampleView& samples, RealVector& params) const override;
  /// @}
};

}  // namespace ormix::geom
