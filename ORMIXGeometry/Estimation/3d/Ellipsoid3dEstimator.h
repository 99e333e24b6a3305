#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>

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
class ORMIX_GEOMETRY_API Ellipsoid3dEstimator : public GeometryEstimator<Ellipsoid3dEstimator> {
 public:
  static constexpr const char* s_className = "ormix::geom::Ellipsoid3dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 9;                              ///< points
  static constexpr std::size_t s_nbParams = 9;         ///< cx, cy, cz, a, b, c, alpha, beta, chi
  static constexpr std::size_t s_sampleDimension = 3;  ///< x, y, z

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;
};

}  // namespace ormix::geom
