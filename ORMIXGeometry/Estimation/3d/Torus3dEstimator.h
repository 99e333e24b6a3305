#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>
#include <ORMIXMath/Estimation/RobustModel.h>

#include <vector>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(extern, Torus3dEstimator)

namespace ormix::geom {

/// Torus of points (x, y, z): its centre, its axis, of length 1, the radius of the circle in the middle of the tube,
/// and that of the tube, which is smaller.
///
/// The one with the least sum of squared distances, see torusFromSamples(), which also says when it fails (message 23).
/// The residual of a point is its distance from the surface: positive outside.
class ORMIX_GEOMETRY_API Torus3dEstimator : public GeometryEstimator<Torus3dEstimator>, public RobustModel {
 public:
  static constexpr const char* s_className = "ormix::geom::Torus3dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 7;                          ///< points
  static constexpr std::size_t s_nbParams = 8;         ///< center x, y, z, axis x, y, z, major radius, minor radius
  static constexpr std::size_t s_sampleDimension = 3;  ///< x, y, z

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;

  /// For robust loops: tori through the fewest points, and steps from a near one.
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
