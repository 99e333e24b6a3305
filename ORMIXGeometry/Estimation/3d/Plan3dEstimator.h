#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>

ORMIX_GEOMETRY_ESTIMATOR_LEVELS(extern, Plan3dEstimator)

namespace ormix::geom {

/// Plan x nx + y ny + z nz = d of points (x, y, z): theta, phi, d with the unit normal (sin theta cos phi,
/// sin theta sin phi, cos theta), theta in [0, pi) from the z axis, phi in (-pi, pi] about it, as Plan3d holds it.
///
/// Three points give the plane through them. More give the plane of least squared distances, whose normal is the
/// direction of least variance (Pearson 1901). d >= 0, except where the normal would be (0, 0, -1), which is replaced
/// by (0, 0, 1). For a plane through the origin the first nonzero component of the normal, in the order z, y, x, is
/// positive. Fails with message 12 for points without a preferred direction: those that coincide or are collinear, to
/// rounding of their coordinates, and those whose two smallest standard deviations differ by at most sqrt(epsilon) of
/// the largest, which includes strips sixty million times as long as they are wide. The residual of a point is its
/// signed distance. O(points); nothing is allocated.
class ORMIX_GEOMETRY_API Plan3dEstimator : public GeometryEstimator<Plan3dEstimator> {
 public:
  static constexpr const char* s_className = "ormix::geom::Plan3dEstimator";  ///< registered name
  static constexpr std::size_t s_minimalDataSize = 3;                         ///< points
  static constexpr std::size_t s_nbParams = 3;                                ///< theta, phi, d
  static constexpr std::size_t s_sampleDimension = 3;                         ///< x, y, z

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;
};

}  // namespace ormix::geom
