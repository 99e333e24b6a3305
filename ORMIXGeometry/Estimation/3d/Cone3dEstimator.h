#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>
#include <ORMIXMath/Estimation/RobustModel.h>

#include <vector>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(extern, Cone3dEstimator)

namespace ormix::geom {

/// Cone of points (x, y, z): its apex, the direction of its axis from there into it, of length 1, and the angle between
/// axis and side, in radians. One nappe, without end; fitCone() answers the frustum that the samples reach.
///
/// The one with the least sum of squared distances, see coneFromSamples(), which also says when it fails (message 23).
/// The residual of a point is its distance from the side: positive outside.
class ORMIX_GEOMETRY_API Cone3dEstimator : public GeometryEstimator<Cone3dEstimator>, public RobustModel {
 public:
  static constexpr const char* s_className = "ormix::geom::Cone3dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 6;                         ///< points
  static constexpr std::size_t s_nbParams = 7;         ///< apex x, y, z, direction x, y, z, half angle
  static constexpr std::size_t s_sampleDimension = 3;  ///< x, y, z

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;

  /// For robust loops: cones through the fewest points, and steps from a near one.
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
