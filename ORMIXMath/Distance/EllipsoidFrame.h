#pragma once

#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Distance/EllipsoidDistance.h>

#include <cmath>

/// \file
/// Coordinates in the frame of an ellipsoid; not installed.

namespace ormix::detail {

inline omReal64 normOf(const SpatialPoint& p) { return std::sqrt(dot(p, p)); }

/// The point in units of the radii: the ellipsoid is the unit sphere there.
inline SpatialPoint toUnitSphere(const SpatialEllipsoid& e, const SpatialPoint& p) {
  const SpatialPoint d = p - e.center;
  return {dot(e.axes[0], d) / e.radii[0], dot(e.axes[1], d) / e.radii[1], dot(e.axes[2], d) / e.radii[2]};
}
inline SpatialPoint fromUnitSphere(const SpatialEllipsoid& e, const SpatialPoint& u) {
  return e.center +
         (e.axes[0] * (u.x * e.radii[0]) + (e.axes[1] * (u.y * e.radii[1]) + e.axes[2] * (u.z * e.radii[2])));
}

/// The product of the ellipsoid's matrix, of squared radii along the axes, with a vector.
inline SpatialPoint timesSquares(const SpatialEllipsoid& e, const SpatialPoint& n) {
  const auto part = [&](std::size_t k) { return e.axes[k] * (e.radii[k] * e.radii[k] * dot(e.axes[k], n)); };
  return part(0) + (part(1) + part(2));
}

}  // namespace ormix::detail
