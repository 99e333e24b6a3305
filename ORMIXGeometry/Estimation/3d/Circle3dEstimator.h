#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(extern, Circle3dEstimator)

namespace ormix::geom {

/// Circle of points (x, y, z): its centre, the normal of its plane, of length 1, and its radius.
///
/// The one with the least sum of squared distances, see circleFromSamples(), which also says when it fails (message
/// 23). The residual of a point is its distance from the curve, not negative.
class ORMIX_GEOMETRY_API Circle3dEstimator : public GeometryEstimator<Circle3dEstimator> {
 public:
  static constexpr const char* s_className = "ormix::geom::Circle3dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 3;                           ///< points
  static constexpr std::size_t s_nbParams = 7;         ///< center x, y, z, normal x, y, z, radius
  static constexpr std::size_t s_sampleDimension = 3;  ///< x, y, z

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;
};

}  // namespace ormix::geom
