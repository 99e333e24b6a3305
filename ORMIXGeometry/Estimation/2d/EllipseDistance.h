#pragma once

#include <ORMIXGeometry/Estimation/AxesDistance.h>

/// \file
/// Distance of points to an ellipse, for residuals; not installed.

namespace ormix::geom::detail {

/// Distance to an ellipse, the curve and not the disk: centre (cx, cy), radius a in the direction theta (radians),
/// radius b across it. Signs of radii are ignored; with one radius 0 the set is a segment, with two a point. For the
/// accuracy see AxesDistance.
class EllipseDistance {
 public:
  EllipseDistance(omReal64 cx, omReal64 cy, omReal64 a, omReal64 b, omReal64 theta);

  /// The distance of a point.
  omReal64 operator()(omReal64 x, omReal64 y) const;

 private:
  omReal64 _cx;
  omReal64 _cy;
  omReal64 _cosTheta;  ///< of the direction of the larger radius
  omReal64 _sinTheta;
  AxesDistance<2> _alongAxes;
};

}  // namespace ormix::geom::detail
