#pragma once

#include <ORMIXGeometry/Estimation/GeometryEstimator.h>

namespace ormix::geom {
class ORMIX_GEOMETRY_API Plan3dEstimator;
}  // namespace ormix::geom

namespace ormix {
extern template class VersionedLevel<geom::Plan3dEstimator, BaseEstimator>;
extern template class RegisteredObject<geom::Plan3dEstimator, BaseEstimator>;
}  // namespace ormix

namespace ormix::geom {

extern template class GeometryEstimator<Plan3dEstimator>;

/// Plan x nx + y ny + z nz = d of points (x, y, z): theta, phi, d with the unit normal (sin theta cos phi,
/// sin theta sin phi, cos theta), theta in [0, pi) from the z axis, phi in (-pi, pi] about it, as Plan3d holds it.
///
/// Three points give the plan through them. More give the plan of least squared distances, across the direction of
/// least variance (Pearson 1901). d >= 0, unless the normal would point straight down and is turned up instead, and
/// through the origin the first component of the normal that is not zero, from z to x, is positive. Fails with message
/// 12 for points without a privileged direction: those that coincide or are collinear, and those whose two smallest
/// variances differ by no more than sqrt(epsilon) of the largest, which includes strips ten thousand times as long as
/// they are wide. The residual of a point is its signed distance. O(points), no allocation.
class ORMIX_GEOMETRY_API Plan3dEstimator : public GeometryEstimator<Plan3dEstimator> {
 public:
  static constexpr const char* s_className = "ormix::geom::Plan3dEstimator";
  static constexpr std::size_t s_minimalDataSize = 3;
  static constexpr std::size_t s_nbParams = 3;
  static constexpr std::size_t s_sampleDimension = 3;

  BoolResult processViewEstimation(const SampleView& samples, RealVector& params) override;
  BoolResult processViewResiduals(const SampleView& samples, const RealVector& params,
                                  RealVector& residuals) const override;
};

}  // namespace ormix::geom
