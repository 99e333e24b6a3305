#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>
#include <ORMIXMath/Estimation/RobustModel.h>

#include <vector>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(extern, Ellipsoid3dEstimator)

namespace ormix::geom {

/// Ellipsoid of points (x, y, z): centre x, centre y, centre z, major, medium and minor radius, alpha, beta, chi, in
/// the order and meaning of Ellipsoid3d: the axes are the columns of Rz(alpha)·Ry(beta)·Rx(chi).
///
/// The quadric of least squared algebraic distances, in coordinates shifted and scaled to the extent of the points,
/// under a constraint that is invariant to rigid motions. Nine points give the quadric through them. Fails with message
/// 5 when the rank of the system is at most 4 (points that coincide or are collinear), 6 when the quadric is not unique
/// (coplanar points) or not an ellipsoid, 7 when a radius is 0. The residual of a point is its unsigned distance to the
/// surface. O(points); nothing is allocated.
class ORMIX_GEOMETRY_API Ellipsoid3dEstimator : public GeometryEstimator<Ellipsoid3dEstimator>, public RobustModel {
 public:
  static constexpr const char* s_className = "ormix::geom::Ellipsoid3dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 9;                              ///< points
  static constexpr std::size_t s_nbParams = 9;         ///< cx, cy, cz, a, b, c, alpha, beta, chi
  static constexpr std::size_t s_sampleDimension = 3;  ///< x, y, z

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;

  /// For robust loops: the one through the fewest points, without the tests of processViewEstimation(), and its fit.
  /// @{
  bool hasRoughEstimation() const override { return true; }
  std::size_t estimateMinimal(const SampleView& samples, std::size_t nbParams,
                              std::vector<RealVector>& models) const override;
  bool refineRoughly(const SampleView& samples, RealVector& params) const override;
  bool isLocal() const override { return true; }
  /// @}
};

}  // namespace ormix::geom
