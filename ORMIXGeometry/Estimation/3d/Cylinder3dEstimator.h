#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>
#include <ORMIXMath/Estimation/RobustModel.h>

#include <vector>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(extern, Cylinder3dEstimator)

namespace ormix::geom {

/// Cylinder of points (x, y, z): a point of its axis, the direction of that, of length 1, and the radius. It does not
/// end, as samples of its side do not tell where; fitCylinder() answers the part that they reach.
///
/// The one with the least sum of squared distances, see cylinderFromSamples(), which also says when it fails (message
/// 23). The residual of a point is its distance from the axis, its radius and side: positive outside.
class ORMIX_GEOMETRY_API Cylinder3dEstimator : public GeometryEstimator<Cylinder3dEstimator>, public RobustModel {
 public:
  static constexpr const char* s_className = "ormix::geom::Cylinder3dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 5;                             ///< points
  static constexpr std::size_t s_nbParams = 7;         ///< point x, y, z, direction x, y, z, radius
  static constexpr std::size_t s_sampleDimension = 3;  ///< x, y, z

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;

  /// For robust loops: the cylinders through the fewest points, and steps from a near one.
  /// @{
  bool hasRoughEstimation() const override { return true; }
  std::size_t estimateMinimal(const SampleView& samples, std::size_t nbParams,
                              std::vector<RealVector>& models) const override;
  bool refineRoughly(const SampleView& samples, RealVector& params) const override;
  bool isRefinedFully() const override { return true; }
  bool isLocal() const override { return true; }
  /// @}
};

}  // namespace ormix::geom
