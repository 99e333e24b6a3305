#pragma once

#include <ORMIXGeometry/Estimation/AxesDistance.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Shape/EllipsoidQuadric.h>

#include <array>

/// \file
/// Distance of points to an ellipsoid, for residuals; not installed.

namespace ormix::geom::detail {

/// Distance to an ellipsoid, the surface and not the solid. The order of the radii is arbitrary, and their signs are
/// ignored; with one radius 0 the set is a solid disk, with two a segment, with three a point. For the accuracy see
/// AxesDistance.
class EllipsoidDistance {
 public:
  explicit EllipsoidDistance(const EllipsoidParameters& ellipsoid);

  /// The distance of a point.
  omReal64 operator()(omReal64 x, omReal64 y, omReal64 z) const;

 private:
  EllipsoidDistance(const EllipsoidParameters& ellipsoid, const std::array<std::size_t, 3>& order);

  std::array<omReal64, 3> _center;
  RotationMatrix _axes;  ///< rows: the directions of the radii from the largest to the smallest
  AxesDistance<3> _alongAxes;
};

}  // namespace ormix::geom::detail
