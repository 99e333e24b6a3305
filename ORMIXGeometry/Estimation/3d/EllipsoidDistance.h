#pragma once

#include <ORMIXGeometry/Estimation/AxesDistance.h>
#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Shape/EllipsoidQuadric.h>

#include <array>

/// \file
/// Distance of points to an ellipsoid, as residuals need it; not installed.

namespace ormix::geom::detail {

/// Distance to the surface (not the solid). Radii may stand in any order and their signs are ignored; a radius 0 leaves
/// a disk, two a segment, three a point. Accuracy as of AxesDistance.
class EllipsoidDistance {
 public:
  explicit EllipsoidDistance(const EllipsoidParameters& ellipsoid);

  omReal64 operator()(omReal64 x, omReal64 y, omReal64 z) const;

 private:
  EllipsoidDistance(const EllipsoidParameters& ellipsoid, const std::array<std::size_t, 3>& order);

  std::array<omReal64, 3> _centre;
  RotationMatrix _axes;  ///< The directions of the radii from the largest to the smallest, one a row.
  AxesDistance<3> _alongAxes;
};

}  // namespace ormix::geom::detail
