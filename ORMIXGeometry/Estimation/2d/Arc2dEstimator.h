#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>
#include <ORMIXMath/Estimation/RobustModel.h>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(extern, Arc2dEstimator)

namespace ormix::geom {

/// Arc of points (x, y): centre and radius of its circle, the angle of its start, and the sweep from there, positive,
/// in radians. It ends at the outermost samples, so that few samples of an arc give a short one.
///
/// The one with the least sum of squared distances, see arcFromSamples(), which also says when it fails (message 23).
/// The residual of a point is its distance from the circle, positive outside; not from the ends, as those of a few
/// samples are not those of all.
class ORMIX_GEOMETRY_API Arc2dEstimator : public GeometryEstimator<Arc2dEstimator>, public RobustModel {
 public:
  static constexpr const char* s_className = "ormix::geom::Arc2dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 3;                        ///< points
  static constexpr std::size_t s_nbParams = 5;         ///< center x, y, radius, start angle, sweep
  static constexpr std::size_t s_sampleDimension = 2;  ///< x, y

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;

  /// For robust loops: the arc, and the one of samples near a circle without those that lie apart on it. Outliers far
  /// from an arc, but near its circle, would turn it more than others.
  /// @{
  bool hasRoughEstimation() const override { return true; }
  bool estimateRoughly(const SampleView& samples, RealVector& params) const override;
  bool refineRoughly(const SampleView& samples, RealVector& params) const override;
  bool isRefinedFully() const override { return true; }
  /// @}
};

}  // namespace ormix::geom
